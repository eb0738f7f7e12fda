// BVNSCountedSet: modes and their share, popularity with rank and the "other" entry, duplicates, the
// partial case-insensitive count, and the 32-bit arithmetic.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"

using bv::Number;
using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueCountedSet;
using bv::ValueDictionary;
namespace counted = bv::BVNSCountedSet;

namespace {

ValueCountedSet setOf(const std::vector<std::pair<Value, std::size_t>>& counts) {
    ValueCountedSet set;
    for (const auto& [value, count] : counts)
        set.add(value, count);
    return set;
}

// "object:count" for each popularity entry, checking that every count is a signed 32-bit number.
std::vector<std::string> describe(const ValueArray& popularity) {
    std::vector<std::string> out;
    for (const Value& entry : popularity) {
        const ValueDictionary& dictionary = *entry.dictionary();
        EXPECT_EQ(dictionary.size(), 2u);
        const Number& count = *dictionary.at(Text("count")).number();
        EXPECT_EQ(count.kind(), Number::Kind::Int32);
        out.push_back(dictionary.at(Text("object")).description().toUtf8() + ":" +
                      count.stringValue().toUtf8());
    }
    return out;
}

std::int64_t numberAt(const ValueDictionary& dictionary, const char* key) {
    const Number& number = *dictionary.at(Text(key)).number();
    EXPECT_EQ(number.kind(), Number::Kind::Int32) << key;
    return number.int64Value();
}

using Lines = std::vector<std::string>;

}  // namespace

TEST(BVNSCountedSet, ModeSummaryCountsEveryModeInItsShare) {
    struct Case {
        const char* name;
        ValueCountedSet set;
        ValueArray modes;
        std::int64_t total, modeCount, percent;
    };
    const std::vector<Case> cases{
        {"two modes of six", ValueCountedSet(ValueArray{"A", "A", "B", "C", "C", "D"}), {"A", "C"}, 6, 2, 66},
        {"one answer", ValueCountedSet(ValueArray{"only"}), {"only"}, 1, 1, 100},
        {"two modes of 3 in 10", setOf({{"x", 3}, {"y", 2}, {"z", 3}, {"w", 2}}), {"x", "z"}, 10, 3, 60},
        {"all tie", setOf({{1, 1}, {2, 1}, {3, 1}}), {1, 2, 3}, 3, 1, 100},
        {"truncated toward zero", setOf({{"a", 1}, {"b", 2}}), {"b"}, 3, 2, 66},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto summary = counted::modeDictionary(c.set);
        ASSERT_TRUE(summary.has_value());
        EXPECT_EQ(summary->size(), 4u);
        EXPECT_EQ(*summary->at(Text("modes")).array(), c.modes);
        EXPECT_EQ(numberAt(*summary, "totalCount"), c.total);
        EXPECT_EQ(numberAt(*summary, "modeCount"), c.modeCount);
        EXPECT_EQ(numberAt(*summary, "modePercent"), c.percent);
    }
}

TEST(BVNSCountedSet, ThirtyTwoBitArithmeticWraps) {
    // 30,000,000 answers: the modes' share times 100 overflows 32 bits and wraps, as the charts compute it.
    auto summary = counted::modeDictionary(setOf({{"a", 30'000'000}}));
    ASSERT_TRUE(summary.has_value());
    EXPECT_EQ(numberAt(*summary, "modePercent"), static_cast<std::int32_t>(3'000'000'000u) / 30'000'000);
    // A count of 2^32 reads as 0: no mode at all.
    EXPECT_FALSE(counted::modeDictionary(setOf({{"a", std::size_t{1} << 32}})).has_value());
    // A count of 2^31 reads as negative: never a mode; the other value is.
    summary = counted::modeDictionary(setOf({{"big", std::size_t{1} << 31}, {"b", 1}}));
    ASSERT_TRUE(summary.has_value());
    EXPECT_EQ(*summary->at(Text("modes")).array(), ValueArray{"b"});
    EXPECT_EQ(numberAt(*summary, "totalCount"), std::int64_t{INT32_MIN} + 1);
    EXPECT_EQ(numberAt(*summary, "modePercent"), 100 / (INT32_MIN + 1));
    // The negative count sorts last in popularity.
    EXPECT_EQ(describe(counted::objectsByPopularity(setOf({{"big", std::size_t{1} << 31}, {"b", 1}}))),
              (Lines{"b:1", "big:-2147483648"}));
    EXPECT_EQ(counted::countForStringCaseInsensitive(setOf({{"Yes", (std::size_t{1} << 32) + 2}}), "Yes"),
              2u);
}

TEST(BVNSCountedSet, EmptySetGivesNullSummariesAndEmptyLists) {
    ValueCountedSet empty;
    EXPECT_FALSE(counted::modeDictionary(empty).has_value());
    EXPECT_FALSE(counted::duplicates(empty).has_value());
    EXPECT_TRUE(counted::objectsByPopularity(empty).empty());
    for (int rank : {-1, 0, 1, 5})
        EXPECT_TRUE(counted::objectsByPopularityWithRank(empty, rank).empty()) << rank;
}

TEST(BVNSCountedSet, PopularityIsStableHighestFirst) {
    auto set = setOf({{"c", 2}, {"a", 5}, {"d", 2}, {"b", 3}, {"e", 5}, {7, 2}});
    EXPECT_EQ(describe(counted::objectsByPopularity(set)), (Lines{"a:5", "e:5", "b:3", "c:2", "d:2", "7:2"}));
}

TEST(BVNSCountedSet, RankFoldsTheTailIntoOther) {
    auto set = setOf({{"A", 5}, {"B", 3}, {"C", 2}, {"D", 1}});
    const Lines whole{"A:5", "B:3", "C:2", "D:1"};
    struct Case {
        std::int32_t rank;
        Lines expected;
    };
    const std::vector<Case> cases{
        {2, {"A:5", "B:3", "other:3"}},
        {0, {"other:11"}},
        {1, {"A:5", "other:6"}},
        {3, {"A:5", "B:3", "C:2", "other:1"}},  // one entry folded still becomes "other"
        {4, whole},                             // rank equal to the count
        {5, whole},
        {INT32_MAX, whole},
        {-1, whole},  // negative ranks widen to huge unsigned ranks
        {INT32_MIN, whole},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(describe(counted::objectsByPopularityWithRank(set, c.rank)), c.expected)
            << "rank " << c.rank;
    }
}

TEST(BVNSCountedSet, DuplicatesAreTheRepeatedValuesOrNull) {
    EXPECT_EQ(counted::duplicates(ValueCountedSet(ValueArray{"a", "b", "b", 1, 1.0, "c", "a"})),
              (ValueArray{"a", "b", 1}));
    EXPECT_FALSE(counted::duplicates(ValueCountedSet(ValueArray{"a", "b"})).has_value());
}

TEST(BVNSCountedSet, CaseInsensitiveCountTriesOnlyLowerThenUpper) {
    auto set = setOf({{"yes", 4},
                      {"Maybe", 2},
                      {"NO", 3},
                      {"stra\xC3\x9F"
                       "e",
                       1}});
    struct Case {
        const char* text;
        std::uint32_t expected;
    };
    const std::vector<Case> cases{
        {"yes", 4},
        {"YES", 4},
        {"Yes", 4},  // lowercase form found
        {"no", 3},   // uppercase of the lowercase form
        {"Maybe", 2},
        {"maybe", 0},
        {"MAYBE", 0},    // a mixed-case entry is only found as itself
        {"STRASSE", 0},  // lowercase "strasse" and "STRASSE" miss "straße"
        {"Stra\xC3\x9F"
         "e",
         1},
        {"absent", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(counted::countForStringCaseInsensitive(set, Text(c.text)), c.expected) << c.text;
    }
    // Only texts count: the number 1 is not found by the text "1".
    EXPECT_EQ(counted::countForStringCaseInsensitive(setOf({{1, 2}}), Text("1")), 0u);
}
