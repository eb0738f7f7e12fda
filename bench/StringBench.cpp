// Throughput of the string toolbox beside the plain loop over std::u16string doing the same work, on
// texts of 64 KiB and 1 MiB of UTF-16 (the same bytes/s at both sizes shows linear growth).
//
//   build/h1-bench/bench/StringBench --benchmark_min_time=0.5
#include <benchmark/benchmark.h>

#include <array>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace {

using bv::Text;

// Words, spaces, punctuation, the XML special characters and line breaks, with white space at both ends
// so that trimming has something to do; `bytes` of UTF-16 in all.
std::u16string sampleUnits(std::size_t bytes) {
    static const std::u16string kPieces[] = {u"answer", u" ",          u"Tolvern", u", ", u"a<b",
                                             u"; ",     u"\"quoted\"", u"&",       u"\n", u"caf\u00E9",
                                             u"'s",     u"  ",         u"42",      u"-x-"};
    std::mt19937 random(42);
    const std::size_t length = bytes / sizeof(char16_t);
    std::u16string units = u" \t\r\n";
    while (units.size() < length - 4)
        units += kPieces[random() % std::size(kPieces)];
    units.resize(length - 4);
    units += u"\n \t ";
    return units;
}

const Text& sample(std::size_t bytes) {
    static std::map<std::size_t, Text> cache;
    auto found = cache.find(bytes);
    if (found == cache.end()) found = cache.emplace(bytes, Text(sampleUnits(bytes))).first;
    return found->second;
}

// A flat membership table of a character set, as a hand-written loop would use.
std::unique_ptr<std::array<bool, 0x10000>> tableOf(const bv::CharacterSet& set) {
    auto table = std::make_unique<std::array<bool, 0x10000>>();
    for (std::size_t unit = 0; unit < table->size(); ++unit)
        (*table)[unit] = set.contains(static_cast<char16_t>(unit));
    return table;
}

void finish(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

// --- trimmedString ------------------------------------------------------------------------------------

void BM_TrimmedString(benchmark::State& state) {
    const Text& text = sample(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSString::trimmedString(text));
    finish(state);
}

void BM_PlainTrim(benchmark::State& state) {
    const std::u16string& units = sample(static_cast<std::size_t>(state.range(0))).units();
    const auto table = tableOf(bv::CharacterSet::whitespaceAndNewlineCharacterSet());
    for (auto _ : state) {
        std::size_t begin = 0;
        std::size_t end = units.size();
        while (begin < end && (*table)[units[begin]])
            ++begin;
        while (end > begin && (*table)[units[end - 1]])
            --end;
        benchmark::DoNotOptimize(std::u16string(units, begin, end - begin));
    }
    finish(state);
}

// --- stringByEscapingEntities -------------------------------------------------------------------------

void BM_StringByEscapingEntities(benchmark::State& state) {
    const Text& text = sample(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSString::stringByEscapingEntities(text));
    finish(state);
}

void BM_PlainEscapeEntities(benchmark::State& state) {
    const std::u16string& units = sample(static_cast<std::size_t>(state.range(0))).units();
    for (auto _ : state) {
        std::u16string out;
        out.reserve(units.size() + units.size() / 8);
        for (char16_t unit : units) {
            switch (unit) {
                case u'&':
                    out += u"&amp;";
                    break;
                case u'<':
                    out += u"&lt;";
                    break;
                case u'>':
                    out += u"&gt;";
                    break;
                case u'"':
                    out += u"&quot;";
                    break;
                case u'\'':
                    out += u"&apos;";
                    break;
                default:
                    out.push_back(unit);
            }
        }
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}

// --- stringByRemovingCharactersInSet ------------------------------------------------------------------

void BM_StringByRemovingCharactersInSet(benchmark::State& state) {
    const Text& text = sample(static_cast<std::size_t>(state.range(0)));
    const bv::CharacterSet punctuation = bv::CharacterSet::punctuationCharacterSet();
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSString::stringByRemovingCharactersInSet(text, punctuation));
    finish(state);
}

void BM_PlainRemoveCharactersInSet(benchmark::State& state) {
    const std::u16string& units = sample(static_cast<std::size_t>(state.range(0))).units();
    const auto table = tableOf(bv::CharacterSet::punctuationCharacterSet());
    for (auto _ : state) {
        std::u16string out;
        out.reserve(units.size());
        for (char16_t unit : units) {
            if (!(*table)[unit]) out.push_back(unit);
        }
        benchmark::DoNotOptimize(out);
    }
    finish(state);
}

// --- componentsSeparatedByStrings ---------------------------------------------------------------------

void BM_ComponentsSeparatedByStrings(benchmark::State& state) {
    const Text& text = sample(static_cast<std::size_t>(state.range(0)));
    const std::vector<Text> separators{Text(", "), Text(";"), Text("\n")};
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSString::componentsSeparatedByStrings(text, separators));
    finish(state);
}

void BM_PlainSplitBySeparators(benchmark::State& state) {
    const std::u16string& units = sample(static_cast<std::size_t>(state.range(0))).units();
    const std::u16string separators[] = {u", ", u";", u"\n"};
    for (auto _ : state) {
        std::vector<std::u16string> parts{units};
        for (const std::u16string& separator : separators) {
            std::vector<std::u16string> split;
            for (const std::u16string& part : parts) {
                std::size_t from = 0;
                for (std::size_t at = part.find(separator); at != std::u16string::npos;
                     at = part.find(separator, from)) {
                    split.emplace_back(part, from, at - from);
                    from = at + separator.size();
                }
                split.emplace_back(part, from);
            }
            parts = std::move(split);
        }
        benchmark::DoNotOptimize(parts);
    }
    finish(state);
}

// --- The rescanning unescaper on text dense with references (linear despite rescanning) ---------------

void BM_UnescapingEntitiesAndControlCharacters(benchmark::State& state) {
    std::u16string units;
    while (units.size() * sizeof(char16_t) < static_cast<std::size_t>(state.range(0)))
        units += u"&#x26;#x41;ab";
    const Text text(units);
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSString::stringByUnescapingEntitiesAndControlCharacters(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * units.size() * sizeof(char16_t)));
}

constexpr std::int64_t kSmall = 64 << 10;
constexpr std::int64_t kLarge = 1 << 20;

BENCHMARK(BM_TrimmedString)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_PlainTrim)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_StringByEscapingEntities)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_PlainEscapeEntities)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_StringByRemovingCharactersInSet)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_PlainRemoveCharactersInSet)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_ComponentsSeparatedByStrings)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_PlainSplitBySeparators)->Arg(kSmall)->Arg(kLarge);
BENCHMARK(BM_UnescapingEntitiesAndControlCharacters)->Arg(kSmall)->Arg(kLarge);

}  // namespace

BENCHMARK_MAIN();
