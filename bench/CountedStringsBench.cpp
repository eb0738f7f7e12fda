// Tallying answers: BVCountedStrings (case-insensitive) against a plain hash map doing the same count,
// and the popularity and mode statistics of BVNSCountedSet as the number of distinct values grows.
//
// The tally workload is 1,000,000 answers drawn from 10,000 distinct texts, half of them upper-cased.
// Each round counts them, then asks for the highest-count entries and both sorted lists. The peers keep
// the same first-added order and do the same three queries:
//   - PlainMapIcuFolded: std::unordered_map keyed by the ICU case-folded text (Text::caseFolded);
//   - PlainMapAsciiFolded: the same map keyed by the ASCII folding the tally itself uses for ASCII
//     texts, which is the limit of a hash-map tally.
// The *Accented rows draw half the distinct texts with non-ASCII letters, where the tally's key comes
// from ICU.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"
#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"

namespace {

constexpr std::size_t kAnswers = 1'000'000;
constexpr std::size_t kDistinct = 10'000;

// Answers as a class would type them: a few words and a number, in mixed case.
std::vector<bv::Text> distinctTexts(bool accented) {
    static const char* const kWords[] = {"Paris",        "the Nile",    "Photosynthesis", "Mount Everest",
                                         "Jupiter",      "Shakespeare", "Oxygen",         "Pythagoras",
                                         "Amazon river", "Mitochondria"};
    static const char* const kAccented[] = {"Caf\xC3\xA9",
                                            "\xC3\x89"
                                            "cole",
                                            "Stra\xC3\x9F"
                                            "e",
                                            "Na\xC3\xAF"
                                            "ve",
                                            "Z\xC3\xBCrich"};
    std::vector<bv::Text> texts;
    texts.reserve(kDistinct);
    for (std::size_t i = 0; i < kDistinct; ++i) {
        std::string text = (accented && i % 2 == 1) ? kAccented[i % 5] : kWords[i % 10];
        text += " answer " + std::to_string(i);
        texts.emplace_back(text);
    }
    return texts;
}

// 1,000,000 answers drawn (skewed, so counts differ) from the distinct texts, every other one upper-cased.
const std::vector<bv::Text>& answers(bool accented) {
    static const auto build = [](bool withAccents) {
        std::vector<bv::Text> distinct = distinctTexts(withAccents);
        std::vector<bv::Text> upper;
        upper.reserve(distinct.size());
        for (const bv::Text& text : distinct)
            upper.push_back(text.uppercased());
        std::mt19937_64 random(42);
        std::geometric_distribution<std::size_t> skew(0.0005);
        std::vector<bv::Text> all;
        all.reserve(kAnswers);
        for (std::size_t i = 0; i < kAnswers; ++i) {
            std::size_t pick = skew(random) % kDistinct;
            all.push_back(i % 2 == 0 ? distinct[pick] : upper[pick]);
        }
        return all;
    };
    static const std::vector<bv::Text> plain = build(false);
    static const std::vector<bv::Text> withAccents = build(true);
    return accented ? withAccents : plain;
}

void tallyWithCountedStrings(benchmark::State& state, bool accented) {
    const auto& all = answers(accented);
    for (auto _ : state) {
        bv::BVCountedStrings counted(true);
        for (const bv::Text& answer : all)
            counted.addString(answer);
        benchmark::DoNotOptimize(counted.countedStringsWithHighestCount());
        benchmark::DoNotOptimize(counted.countedStringsSortedByCountInAscendingOrder());
        benchmark::DoNotOptimize(counted.countedStringsSortedByCountInDescendingOrder());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * all.size()));
}

// The peer: a hash map from a folded key to a position in a first-added list of (text, count).
struct PlainEntry {
    bv::Text text;
    std::uint64_t count;
};

template <class KeyOf>
void tallyWithPlainMap(benchmark::State& state, bool accented, KeyOf keyOf) {
    const auto& all = answers(accented);
    for (auto _ : state) {
        std::unordered_map<std::u16string, std::size_t> index;
        std::vector<PlainEntry> entries;
        for (const bv::Text& answer : all) {
            auto [position, added] = index.try_emplace(keyOf(answer), entries.size());
            if (added) {
                entries.push_back(PlainEntry{answer, 1});
            } else {
                ++entries[position->second].count;
            }
        }
        std::uint64_t highest = 0;
        for (const PlainEntry& entry : entries)
            highest = std::max(highest, entry.count);
        std::vector<const PlainEntry*> top;
        for (const PlainEntry& entry : entries) {
            if (entry.count == highest) top.push_back(&entry);
        }
        std::vector<const PlainEntry*> byCount;
        for (const PlainEntry& entry : entries)
            byCount.push_back(&entry);
        std::vector<const PlainEntry*> reversed = byCount;
        std::stable_sort(byCount.begin(), byCount.end(), [](auto a, auto b) { return a->count > b->count; });
        std::stable_sort(reversed.begin(), reversed.end(),
                         [](auto a, auto b) { return a->count < b->count; });
        benchmark::DoNotOptimize(top);
        benchmark::DoNotOptimize(byCount);
        benchmark::DoNotOptimize(reversed);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * all.size()));
}

std::u16string icuFolded(const bv::Text& text) {
    return text.caseFolded().units();
}

std::u16string asciiFolded(const bv::Text& text) {
    std::u16string key(text.units());
    for (char16_t& unit : key) {
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    }
    return key;
}

void BM_Tally_CountedStrings(benchmark::State& state) {
    tallyWithCountedStrings(state, false);
}
void BM_Tally_PlainMapIcuFolded(benchmark::State& state) {
    tallyWithPlainMap(state, false, icuFolded);
}
void BM_Tally_PlainMapAsciiFolded(benchmark::State& state) {
    tallyWithPlainMap(state, false, asciiFolded);
}
void BM_TallyAccented_CountedStrings(benchmark::State& state) {
    tallyWithCountedStrings(state, true);
}
void BM_TallyAccented_PlainMapIcuFolded(benchmark::State& state) {
    tallyWithPlainMap(state, true, icuFolded);
}

BENCHMARK(BM_Tally_CountedStrings)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Tally_PlainMapIcuFolded)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Tally_PlainMapAsciiFolded)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TallyAccented_CountedStrings)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TallyAccented_PlainMapIcuFolded)->Unit(benchmark::kMillisecond);

// A counted set of n distinct texts with counts from 1 to 50.
bv::ValueCountedSet countedSet(std::size_t distinct) {
    std::mt19937 random(7);
    bv::ValueCountedSet set;
    for (std::size_t i = 0; i < distinct; ++i)
        set.add(bv::Value(bv::Text("value " + std::to_string(i))), 1 + random() % 50);
    return set;
}

void BM_ObjectsByPopularityWithRank(benchmark::State& state) {
    bv::ValueCountedSet set = countedSet(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSCountedSet::objectsByPopularityWithRank(set, 10));
    state.SetComplexityN(state.range(0));
}

void BM_ModeDictionary(benchmark::State& state) {
    bv::ValueCountedSet set = countedSet(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSCountedSet::modeDictionary(set));
    state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_ObjectsByPopularityWithRank)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(300'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK(BM_ModeDictionary)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(300'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);  // two passes, no sort

}  // namespace

BENCHMARK_MAIN();
