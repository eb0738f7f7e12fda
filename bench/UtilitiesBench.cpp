// Identifiers and unique numbers per call, beside a plain libuuid call in the same run.
//
// generatedUUID is libuuid's random UUID unparsed in lower case and turned into Text (UTF-16); the peer
// is uuid_generate_random plus uuid_unparse_lower into a stack buffer. dateBasedUniqueNumber reads the
// clock, breaks it into local time and steps past the last number; run back to back it alternates between
// the second's number and one above it, so about half the calls also draw a random step.
#include <benchmark/benchmark.h>
#include <uuid/uuid.h>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

namespace {

void PlainLibuuid(benchmark::State& state) {
    for (auto _ : state) {
        uuid_t uuid;
        uuid_generate_random(uuid);
        char text[37];
        uuid_unparse_lower(uuid, text);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(PlainLibuuid)->Iterations(1'000'000);

void GeneratedUUID(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVUtilities::generatedUUID());
}
BENCHMARK(GeneratedUUID)->Iterations(1'000'000);

void GeneratedUUIDWithBraces(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVUtilities::generatedUUIDWithBraces(true));
}
BENCHMARK(GeneratedUUIDWithBraces)->Iterations(1'000'000);

void DateBasedUniqueNumber(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVUtilities::dateBasedUniqueNumber());
}
BENCHMARK(DateBasedUniqueNumber)->Iterations(1'000'000);

}  // namespace

BENCHMARK_MAIN();
