// Reading and writing 1,000,000 RFC 3339 date-times: RFC3339DateTime beside ICU's SimpleDateFormat parsing
// and formatting the same texts, and beside a plain loop that only reads their digits, in the same run.
//
// The texts ("2008-01-02T10:11:12+05:30", a fifth of them with a fraction of a second, a fifth in "Z") are
// UTF-16 for every contender. The library reads each text into a value and writes the value back (as it
// holds its components: see RFC3339DateTime.hpp); ICU parses each text to an instant with the pattern
// "yyyy-MM-dd'T'HH:mm:ss.SXXX" or "yyyy-MM-dd'T'HH:mm:ssXXX" and formats the instant back; the plain loop
// sums the digits' values, the least any reader must do.
#include <benchmark/benchmark.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "BrevantCocoaExtensions/dates/RFC3339DateTime.hpp"

namespace {

constexpr std::size_t kTexts = 1'000'000;

const std::vector<bv::Text>& texts() {
    static const std::vector<bv::Text> all = [] {
        std::vector<bv::Text> out;
        out.reserve(kTexts);
        std::mt19937 random(7);
        auto pick = [&random](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        for (std::size_t i = 0; i < kTexts; ++i) {
            char zone[8] = "Z";
            if (i % 5 != 0) {
                const int minutes = pick(-12 * 60, 14 * 60);
                std::snprintf(zone, sizeof zone, "%c%02d:%02d", minutes < 0 ? '-' : '+',
                              std::abs(minutes) / 60, std::abs(minutes) % 60);
            }
            char text[48];
            std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d%s%s", pick(1970, 2099),
                          pick(1, 12), pick(1, 28), pick(0, 23), pick(0, 59), pick(0, 59),
                          i % 5 == 1 ? ".250" : "", zone);
            out.emplace_back(text);
        }
        return out;
    }();
    return all;
}

void setItems(benchmark::State& state) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * kTexts));
}

void BM_ReadWrite_RFC3339DateTime(benchmark::State& state) {
    const std::vector<bv::Text>& all = texts();
    for (auto _ : state) {
        std::size_t written = 0;
        for (const bv::Text& text : all) {
            written += bv::RFC3339DateTime::dateTimeWithRFC3339String(text).RFC3339String().length();
        }
        benchmark::DoNotOptimize(written);
    }
    setItems(state);
}

// The two halves of the work apart: reading only, and writing values read beforehand.
void BM_Read_RFC3339DateTime(benchmark::State& state) {
    const std::vector<bv::Text>& all = texts();
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const bv::Text& text : all)
            sum += bv::RFC3339DateTime::dateTimeWithRFC3339String(text).offsetSeconds();
        benchmark::DoNotOptimize(sum);
    }
    setItems(state);
}

void BM_Write_RFC3339DateTime(benchmark::State& state) {
    std::vector<bv::RFC3339DateTime> values;
    values.reserve(kTexts);
    for (const bv::Text& text : texts())
        values.push_back(bv::RFC3339DateTime::dateTimeWithRFC3339String(text));
    for (auto _ : state) {
        std::size_t written = 0;
        for (const bv::RFC3339DateTime& value : values)
            written += value.RFC3339String().length();
        benchmark::DoNotOptimize(written);
    }
    setItems(state);
}

// The allocations alone that reading and writing a text make: one shared components record, one written text
// of the length the library writes (the components read from text have 19 digits).
void BM_AllocationsOnly(benchmark::State& state) {
    const std::size_t length =
        bv::RFC3339DateTime::dateTimeWithRFC3339String(texts().front()).RFC3339String().length();
    for (auto _ : state) {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < kTexts; ++i) {
            auto record = std::make_shared<bv::DateComponents>();
            benchmark::DoNotOptimize(record.get());
            std::u16string written(length, u'0');
            benchmark::DoNotOptimize(written.data());
            sum += written.size();
        }
        benchmark::DoNotOptimize(sum);
    }
    setItems(state);
}

void BM_ReadWrite_IcuSimpleDateFormat(benchmark::State& state) {
    std::vector<icu::UnicodeString> all;
    all.reserve(kTexts);
    for (const bv::Text& text : texts())
        all.emplace_back(text.units().data(), static_cast<std::int32_t>(text.length()));
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale posix("en_US_POSIX");
    icu::SimpleDateFormat whole(u"yyyy-MM-dd'T'HH:mm:ssXXX", posix, status);
    icu::SimpleDateFormat fraction(u"yyyy-MM-dd'T'HH:mm:ss.SSSXXX", posix, status);
    whole.adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
    if (U_FAILURE(status)) state.SkipWithError("ICU formatter");
    for (auto _ : state) {
        std::size_t written = 0;
        for (const icu::UnicodeString& text : all) {
            icu::ParsePosition position(0);
            UDate instant = whole.parse(text, position);
            if (position.getErrorIndex() >= 0) {
                position = icu::ParsePosition(0);
                instant = fraction.parse(text, position);
            }
            icu::UnicodeString out;
            written += whole.format(instant, out).length();
        }
        benchmark::DoNotOptimize(written);
    }
    setItems(state);
}

void BM_ReadDigits_PlainLoop(benchmark::State& state) {
    const std::vector<bv::Text>& all = texts();
    for (auto _ : state) {
        std::uint64_t sum = 0;
        for (const bv::Text& text : all) {
            std::uint64_t value = 0;
            for (char16_t unit : text.view()) {
                if (unit >= u'0' && unit <= u'9') value = value * 10 + (unit - u'0');
            }
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    setItems(state);
}

}  // namespace

BENCHMARK(BM_ReadWrite_RFC3339DateTime)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read_RFC3339DateTime)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Write_RFC3339DateTime)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AllocationsOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadWrite_IcuSimpleDateFormat)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadDigits_PlainLoop)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
