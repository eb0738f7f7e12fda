// Question type codes: every family's boundaries and neighbours against every predicate, and the
// sequence mapping.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"

namespace {

using Predicate = bool (*)(std::int32_t);

struct Family {
    const char* name;
    Predicate predicate;
    std::vector<std::pair<std::int32_t, std::int32_t>> ranges;  // inclusive
};

const std::vector<Family>& families() {
    static const std::vector<Family> all{
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
    };
    return all;
}

bool inRanges(const Family& family, std::int32_t code) {
    for (auto [first, last] : family.ranges) {
        if (code >= first && code <= last) return true;
    }
    return false;
}

// Every range's first and last code with their neighbours, plus codes far outside.
std::set<std::int32_t> probeCodes() {
    std::set<std::int32_t> codes{0,   -1,  -16, -144,         33,        166,
                                 200, 255, 256, 0x10000 + 16, INT32_MIN, INT32_MAX};
    for (const Family& family : families()) {
        for (auto [first, last] : family.ranges) {
            for (std::int32_t code : {first - 1, first, first + 1, last - 1, last, last + 1})
                codes.insert(code);
        }
    }
    return codes;
}

}  // namespace

TEST(QuestionCodes, FamiliesAreExactlyTheirListedRanges) {
    for (std::int32_t code : probeCodes()) {
        for (const Family& family : families()) {
            EXPECT_EQ(family.predicate(code), inRanges(family, code)) << family.name << " " << code;
        }
    }
    // And across the whole byte range, so no stray code slips into a family between the probes.
    for (std::int32_t code = -2; code < 300; ++code) {
        for (const Family& family : families()) {
            ASSERT_EQ(family.predicate(code), inRanges(family, code)) << family.name << " " << code;
        }
    }
}

TEST(QuestionCodes, OnlyThirtyThreeAndRatingScalesAreNotScorable) {
    for (std::int32_t code : probeCodes()) {
        bool expected = code != 33 && !(code >= 144 && code <= 148);
        EXPECT_EQ(bv::IsQuestionCodeScorable(code), expected) << code;
    }
}

TEST(QuestionCodes, SequencesMapOntoTheFirstFourSimpleSequences) {
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> cases{{162, 34},
                                                                     {163, 35},
                                                                     {164, 36},
                                                                     {165, 37},  // mapped
                                                                     {161, 161},
                                                                     {166, 166},
                                                                     {34, 34},
                                                                     {41, 41},
                                                                     {0, 0},
                                                                     {1000, 1000},  // unchanged
                                                                     {0xFFFFFFFFu, 0xFFFFFFFFu}};
    for (auto [code, expected] : cases)
        EXPECT_EQ(bv::SimpleSequenceForSequence(code), expected) << code;
    // A sequence code is neither simple nor advanced until mapped.
    EXPECT_FALSE(bv::IsQuestionCodeAdvancedAnswer(164));
    auto mapped = static_cast<std::int32_t>(bv::SimpleSequenceForSequence(164));
    EXPECT_TRUE(bv::IsQuestionCodeSimpleSequence(mapped));
    EXPECT_TRUE(bv::IsQuestionCodeAdvancedAnswer(mapped));
}
