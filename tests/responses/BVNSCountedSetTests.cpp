// BVNSCountedSet: modes and their share, popularity with rank and the "other" entry, duplicates, the
// partial case-insensitive count, and the 32-bit arithmetic.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"

using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueCountedSet;
using Lines = std::vector<std::string>;
namespace counted = bv::BVNSCountedSet;

namespace {

ValueCountedSet setOf(const std::vector<std::pair<Value, std::size_t>>& counts) {
    ValueCountedSet set;
    for (const auto& [value, count] : counts)
        set.add(value, count);
    return set;
}

// "object:count" for each popularity entry; every count must be a signed 32-bit number.
Lines describe(const ValueArray& popularity) {
    Lines out;
    for (const Value& entry : popularity) {
        const auto& dictionary = *entry.dictionary();
        const auto& count = *dictionary.at(Text("count")).number();
        EXPECT_EQ(dictionary.size(), 2u);
        EXPECT_EQ(count.kind(), bv::Number::Kind::Int32);
        out.push_back(dictionary.at(Text("object")).description().toUtf8() + ":" +
                      count.stringValue().toUtf8());
    }
    return out;
}

// modes, then "totalCount", "modeCount" and "modePercent"; each number must be signed 32-bit.
std::pair<ValueArray, std::vector<std::int64_t>> summary(const ValueCountedSet& set) {
    auto modes = counted::modeDictionary(set);
    if (!modes) return {};
    EXPECT_EQ(modes->size(), 4u);
    std::vector<std::int64_t> numbers;
    for (const char* key : {"totalCount", "modeCount", "modePercent"}) {
        const auto& number = *modes->at(Text(key)).number();
        EXPECT_EQ(number.kind(), bv::Number::Kind::Int32) << key;
        numbers.push_back(number.int64Value());
    }
    return {*modes->at(Text("modes")).array(), numbers};
}

using Numbers = std::vector<std::int64_t>;

}  // namespace

TEST(BVNSCountedSet, ModeSummaryCountsEveryModeInItsShare) {
    EXPECT_EQ(summary(ValueCountedSet(ValueArray{"A", "A", "B", "C", "C", "D"})),
              std::make_pair(ValueArray{"A", "C"}, Numbers{6, 2, 66}));
    EXPECT_EQ(summary(ValueCountedSet(ValueArray{"only"})),
              std::make_pair(ValueArray{"only"}, Numbers{1, 1, 100}));
    EXPECT_EQ(summary(setOf({{"x", 3}, {"y", 2}, {"z", 3}, {"w", 2}})),
              std::make_pair(ValueArray{"x", "z"}, Numbers{10, 3, 60}));
    EXPECT_EQ(summary(setOf({{1, 1}, {2, 1}, {3, 1}})),
              std::make_pair(ValueArray{1, 2, 3}, Numbers{3, 1, 100}));
}

TEST(BVNSCountedSet, ThirtyTwoBitArithmeticWraps) {
    // 30,000,000 answers: the share times 100 wraps past 2^31 before the division.
    EXPECT_EQ(summary(setOf({{"a", 30'000'000}})).second,
              (Numbers{30'000'000, 30'000'000, static_cast<std::int32_t>(3'000'000'000u) / 30'000'000}));
    // A count of 2^32 reads as 0: no mode at all.
    EXPECT_FALSE(counted::modeDictionary(setOf({{"a", std::size_t{1} << 32}})).has_value());
    // A count of 2^31 reads as negative: never a mode, and it sorts last.
    auto set = setOf({{"big", std::size_t{1} << 31}, {"b", 1}});
    EXPECT_EQ(summary(set),
              std::make_pair(ValueArray{"b"}, Numbers{INT32_MIN + 1, 1, 100 / (INT32_MIN + 1)}));
    EXPECT_EQ(describe(counted::objectsByPopularity(set)), (Lines{"b:1", "big:-2147483648"}));
    EXPECT_EQ(counted::countForStringCaseInsensitive(setOf({{"Yes", (std::size_t{1} << 32) + 2}}), "Yes"),
              2u);
}

TEST(BVNSCountedSet, EmptySetsAndDuplicates) {
    ValueCountedSet empty;
    EXPECT_FALSE(counted::modeDictionary(empty).has_value());
    EXPECT_FALSE(counted::duplicates(empty).has_value());
    EXPECT_TRUE(counted::objectsByPopularity(empty).empty());
    for (int rank : {-1, 0, 1})
        EXPECT_TRUE(counted::objectsByPopularityWithRank(empty, rank).empty()) << rank;
    EXPECT_EQ(counted::duplicates(ValueCountedSet(ValueArray{"a", "b", "b", 1, 1.0, "c", "a"})),
              (ValueArray{"a", "b", 1}));
    EXPECT_FALSE(counted::duplicates(ValueCountedSet(ValueArray{"a", "b"})).has_value());
}

TEST(BVNSCountedSet, PopularityIsStableHighestFirst) {
    auto set = setOf({{"c", 2}, {"a", 5}, {"d", 2}, {"b", 3}, {"e", 5}, {7, 2}});
    EXPECT_EQ(describe(counted::objectsByPopularity(set)), (Lines{"a:5", "e:5", "b:3", "c:2", "d:2", "7:2"}));
}

TEST(BVNSCountedSet, RankFoldsTheTailIntoOther) {
    auto set = setOf({{"A", 5}, {"B", 3}, {"C", 2}, {"D", 1}});
    const Lines whole{"A:5", "B:3", "C:2", "D:1"};
    const std::vector<std::pair<std::int32_t, Lines>> cases{
        {2, {"A:5", "B:3", "other:3"}},
        {0, {"other:11"}},
        {3, {"A:5", "B:3", "C:2", "other:1"}},  // a single folded entry still becomes "other"
        {4, whole},                             // rank equal to the count
        {INT32_MAX, whole},
        {-1, whole},  // negative ranks widen to huge unsigned ranks
        {INT32_MIN, whole},
    };
    for (const auto& [rank, expected] : cases) {
        EXPECT_EQ(describe(counted::objectsByPopularityWithRank(set, rank)), expected) << "rank " << rank;
    }
}

TEST(BVNSCountedSet, CaseInsensitiveCountTriesOnlyLowerThenUpper) {
    auto set = setOf({{"yes", 4}, {"Maybe", 2}, {"NO", 3}, {"stra\u00DFe", 1}, {1, 2}});
    const std::vector<std::pair<const char*, std::uint32_t>> cases{
        {"yes", 4},     {"YES", 4},    {"Yes", 4},    // the lowercase form is found
        {"no", 3},                                    // the uppercase of the lowercase form
        {"Maybe", 2},   {"maybe", 0},  {"MAYBE", 0},  // a mixed-case entry only as itself
        {"STRASSE", 0}, {"absent", 0}, {"1", 0},      // no full folding; only texts count
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(counted::countForStringCaseInsensitive(set, Text(text)), expected) << text;
    }
}
