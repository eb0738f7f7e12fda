// BVNSCountedSet: popularity ranking and mode statistics over a counted set of answers.
//
// A question's answers are collected in a ValueCountedSet; these functions reduce it to the modes (the
// answers given most often) with their share of all answers, and to a list ranked by popularity for a
// chart, with the long tail folded into one "other" entry.
//
// Counts are read as 32-bit integers and summed in 32-bit arithmetic (wrapping), as the suite's charts
// expect. Ties keep the set's enumeration order (first insertion). Oddities callers rely on:
//   - "modePercent" counts every mode: two modes of 3 answers each out of 10 answers give 60, not 30.
//   - A negative rank returns the whole popularity list, as a rank at or above its length does.
//   - countForStringCaseInsensitive tries only the text, its lowercase form and the uppercase of that:
//     a stored "Paris" is not found by "paris".
#pragma once

#include <cstdint>
#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSCountedSet {

// The mode summary: "modes" (every value with the highest count, in enumeration order), "totalCount"
// (the number of answers), "modeCount" (the highest count) and "modePercent" (the modes' combined share,
// in whole percent truncated toward zero), the three numbers signed 32-bit. nullopt for an empty set.
[[nodiscard]] std::optional<ValueDictionary> modeDictionary(const ValueCountedSet& self);

// One entry per distinct value, {"count": signed 32-bit count, "object": the value}, highest count first;
// equal counts stay in enumeration order.
[[nodiscard]] ValueArray objectsByPopularity(const ValueCountedSet& self);

// The popularity list cut after `rank` entries, followed by one {"count": sum of the rest, "object":
// "other"} entry. A list no longer than the rank, and any negative rank, come back whole without "other";
// rank 0 folds everything into "other".
[[nodiscard]] ValueArray objectsByPopularityWithRank(const ValueCountedSet& self, std::int32_t rank);

// The values given more than once, in enumeration order; nullopt (not an empty list) when there are none.
[[nodiscard]] std::optional<ValueArray> duplicates(const ValueCountedSet& self);

// The count of the text; if 0, of its lowercase form; if 0 too, of the uppercase form of that lowercase
// form. Each count is cut to 32 bits before it is tested. Not a full case-insensitive match.
[[nodiscard]] std::uint32_t countForStringCaseInsensitive(const ValueCountedSet& self, const Text& string);

}  // namespace bv::BVNSCountedSet
