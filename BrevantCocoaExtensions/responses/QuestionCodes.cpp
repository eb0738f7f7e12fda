// Question type codes: membership tests on the listed code ranges, all inclusive.
#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"

namespace bv {

namespace {

constexpr bool inRange(std::int32_t code, std::int32_t first, std::int32_t last) {
    return code >= first && code <= last;
}

// Codes that need the advanced answer entry without belonging to any family.
constexpr std::int32_t kAdvancedOnlyCodes[] = {50, 32, 113};
// The one code outside the rating scales whose answers are not scored.
constexpr std::int32_t kUnscorableCode = 33;

constexpr std::uint32_t kFirstSequence = 0xA2;
constexpr std::uint32_t kLastSequence = 0xA5;
constexpr std::uint32_t kFirstSimpleSequence = 0x22;

}  // namespace

bool IsQuestionCodeBoolean(std::int32_t code) {
    return inRange(code, 0x10, 0x11);
}

bool IsQuestionCodeRatingScale(std::int32_t code) {
    return inRange(code, 0x90, 0x94);
}

bool IsQuestionCodeSequence(std::int32_t code) {
    return inRange(code, 0xA2, 0xA5);
}

bool IsQuestionCodeSimpleSequence(std::int32_t code) {
    return inRange(code, 0x22, 0x29);
}

bool IsQuestionCodeMultipleChoiceAlpha(std::int32_t code) {
    return inRange(code, 0x42, 0x46) || inRange(code, 0x52, 0x56);
}

bool IsQuestionCodeMultipleChoice(std::int32_t code) {
    return IsQuestionCodeMultipleChoiceAlpha(code) || inRange(code, 0x62, 0x66);
}

bool IsQuestionCodeMultipleMark(std::int32_t code) {
    return inRange(code, 0x4A, 0x4E) || inRange(code, 0x5A, 0x5E) || inRange(code, 0x6A, 0x6E);
}

bool IsQuestionCodeFillInTheBlank(std::int32_t code) {
    return inRange(code, 0x81, 0x83);
}

bool IsQuestionCodeScorable(std::int32_t code) {
    if (IsQuestionCodeRatingScale(code)) return false;
    return code != kUnscorableCode;
}

bool IsQuestionCodeAdvancedAnswer(std::int32_t code) {
    if (IsQuestionCodeSimpleSequence(code) || IsQuestionCodeMultipleChoice(code) ||
        IsQuestionCodeMultipleMark(code))
        return true;
    for (std::int32_t single : kAdvancedOnlyCodes) {
        if (code == single) return true;
    }
    return false;
}

std::uint32_t SimpleSequenceForSequence(std::uint32_t code) {
    if (code < kFirstSequence || code > kLastSequence) return code;
    return kFirstSimpleSequence + (code - kFirstSequence);
}

}  // namespace bv
