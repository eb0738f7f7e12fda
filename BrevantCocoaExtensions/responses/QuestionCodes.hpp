// Question type codes: the predicates that tell which family a numeric question type code belongs to,
// whether its answers can be scored and whether it needs the advanced answer entry.
//
// Codes are grouped by their high hexadecimal digit (0x2_ simple sequences, 0x4_/0x5_/0x6_ multiple choice
// and multiple mark, 0x9_ rating scales, 0xA_ sequences, ...). Callers never compare codes themselves;
// they ask these functions. Every function is pure, has no state and accepts any 32-bit value: codes
// that no family lists simply answer false (or true for IsQuestionCodeScorable).
#pragma once

#include <cstdint>

namespace bv {

// True/false questions: 16 and 17.
[[nodiscard]] bool IsQuestionCodeBoolean(std::int32_t code);
// Rating scales: 144 to 148.
[[nodiscard]] bool IsQuestionCodeRatingScale(std::int32_t code);
// Sequences: 162 to 165. These are not simple sequences; see SimpleSequenceForSequence.
[[nodiscard]] bool IsQuestionCodeSequence(std::int32_t code);
// Simple sequences: 34 to 41.
[[nodiscard]] bool IsQuestionCodeSimpleSequence(std::int32_t code);
// Multiple choice, lettered or not: 66 to 70, 82 to 86 and 98 to 102.
[[nodiscard]] bool IsQuestionCodeMultipleChoice(std::int32_t code);
// Lettered multiple choice only: 66 to 70 and 82 to 86 (98 to 102 are multiple choice but not lettered).
[[nodiscard]] bool IsQuestionCodeMultipleChoiceAlpha(std::int32_t code);
// Multiple mark: 74 to 78, 90 to 94 and 106 to 110.
[[nodiscard]] bool IsQuestionCodeMultipleMark(std::int32_t code);
// Fill in the blank: 129 to 131.
[[nodiscard]] bool IsQuestionCodeFillInTheBlank(std::int32_t code);
// Every code is scorable except 33 and the rating scales; unknown, zero and negative codes are scorable.
[[nodiscard]] bool IsQuestionCodeScorable(std::int32_t code);
// Simple sequences, multiple choice, multiple mark, and the single codes 32, 50 and 113. The sequence
// codes 162 to 165 are not advanced until mapped with SimpleSequenceForSequence.
[[nodiscard]] bool IsQuestionCodeAdvancedAnswer(std::int32_t code);

// Maps the sequence codes 162..165 onto the simple sequences 34..37; any other code comes back unchanged
// (the simple sequences 38 to 41 have no sequence counterpart).
[[nodiscard]] std::uint32_t SimpleSequenceForSequence(std::uint32_t code);

}  // namespace bv
