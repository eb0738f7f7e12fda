// Question type codes: every predicate against the listed ranges over all codes around them, including
// each family's first and last code and their neighbours, and the sequence mapping.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"

namespace {

struct Family {
    const char* name;
    bool (*predicate)(std::int32_t);
    std::vector<std::pair<std::int32_t, std::int32_t>> ranges;  // inclusive
};

const std::vector<Family> kFamilies{
    {"Boolean", bv::IsQuestionCodeBoolean, {{16, 17}}},
    {"RatingScale", bv::IsQuestionCodeRatingScale, {{144, 148}}},
    {"Sequence", bv::IsQuestionCodeSequence, {{162, 165}}},
    {"SimpleSequence", bv::IsQuestionCodeSimpleSequence, {{34, 41}}},
    {"MultipleChoice", bv::IsQuestionCodeMultipleChoice, {{66, 70}, {82, 86}, {98, 102}}},
    {"MultipleChoiceAlpha", bv::IsQuestionCodeMultipleChoiceAlpha, {{66, 70}, {82, 86}}},
    {"MultipleMark", bv::IsQuestionCodeMultipleMark, {{74, 78}, {90, 94}, {106, 110}}},
    {"FillInTheBlank", bv::IsQuestionCodeFillInTheBlank, {{129, 131}}},
    {"AdvancedAnswer",
     bv::IsQuestionCodeAdvancedAnswer,
     {{32, 32},
      {34, 41},
      {50, 50},
      {66, 70},
      {74, 78},
      {82, 86},
      {90, 94},
      {98, 102},
      {106, 110},
      {113, 113}}},
    {"NotScorable",
     [](std::int32_t code) { return !bv::IsQuestionCodeScorable(code); },
     {{33, 33}, {144, 148}}},
};

bool inRanges(const Family& family, std::int32_t code) {
    for (auto [first, last] : family.ranges) {
        if (code >= first && code <= last) return true;
    }
    return false;
}

}  // namespace

TEST(QuestionCodes, EachPredicateIsExactlyItsListedCodes) {
    std::vector<std::int32_t> codes{INT32_MIN, -16, 256, 0x10000 + 16, 0x10000 + 144, INT32_MAX};
    for (std::int32_t code = -2; code < 300; ++code)
        codes.push_back(code);
    for (std::int32_t code : codes) {
        for (const Family& family : kFamilies) {
            EXPECT_EQ(family.predicate(code), inRanges(family, code)) << family.name << " " << code;
        }
    }
}

TEST(QuestionCodes, SequencesMapOntoTheFirstFourSimpleSequencesOnly) {
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> cases{{162, 34},
                                                                     {163, 35},
                                                                     {164, 36},
                                                                     {165, 37},
                                                                     {161, 161},
                                                                     {166, 166},
                                                                     {34, 34},
                                                                     {41, 41},
                                                                     {0, 0},
                                                                     {1000, 1000},
                                                                     {0xFFFFFFFFu, 0xFFFFFFFFu}};
    for (auto [code, expected] : cases)
        EXPECT_EQ(bv::SimpleSequenceForSequence(code), expected) << code;
    // A sequence code counts as advanced only once mapped.
    EXPECT_FALSE(bv::IsQuestionCodeAdvancedAnswer(164));
    EXPECT_TRUE(
        bv::IsQuestionCodeAdvancedAnswer(static_cast<std::int32_t>(bv::SimpleSequenceForSequence(164))));
}
