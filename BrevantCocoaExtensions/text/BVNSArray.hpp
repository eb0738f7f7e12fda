// BVNSArray: reading, searching and building helpers over a ValueArray.
//
// Index searches answer bv::NotFound when nothing matches. Text searches compare whole texts: exactly
// (code unit by code unit) or, with caseInsensitiveCompare, after case folding; they skip elements that
// are not texts. Typed getters convert an element as the BVNSDictionary getter of the same type converts a
// dictionary value; an index past the end throws RangeException.
//
// Pitfalls callers rely on:
//   - lastIndex answers 0 for an empty list as for a one-element list.
//   - arrayWithUniqueStringsFromArrayCaseInsensitiveCompare ignores the receiver's own elements.
//   - arrayByRemovingFromEachObjectCharactersInSet narrows every kept character to its low byte.
//   - arrayByRemovingFromEachStringLeadingOccurrencesOfCharacter removes the character everywhere.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/IndexSet.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSArray {

// --- Reading ---------------------------------------------------------------------------------------------

// The first element; nullopt for an empty list.
[[nodiscard]] std::optional<Value> firstObject(const ValueArray& self);
// A uniformly chosen element (a per-thread std::mt19937_64 seeded once from std::random_device); nullopt for
// an empty list.
[[nodiscard]] std::optional<Value> randomObject(const ValueArray& self);
// count - 1, and 0 for an empty list.
[[nodiscard]] std::uint64_t lastIndex(const ValueArray& self);
// Every index 0 to count - 1.
[[nodiscard]] IndexSet objectIndexes(const ValueArray& self);
// The index of the first element equal to each object. Every object must be present: a missing one throws
// RangeException.
[[nodiscard]] IndexSet indexesOfObjects(const ValueArray& self, const ValueArray& objects);
// Each element's value for the key, in order; elements without one are skipped. Elements are dictionaries
// or library objects (see bv::valueForKey).
[[nodiscard]] ValueArray objectsForKey(const ValueArray& self, const Text& key);

// Typed readings of the element at an index (RangeException past the end). Texts convert only where the
// dictionary getter of the same type converts them (integerAtIndex in decimal, the long readings in base 0,
// floatAtIndex in decimal); elsewhere a text throws UnrecognizedOperationException.
[[nodiscard]] std::int8_t charAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::uint8_t unsignedCharAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::int16_t shortAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::uint16_t unsignedShortAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::int64_t integerAtIndex(const ValueArray& self, std::uint64_t index);
// Null 0, a number its unsigned value, a text its base-0 reading ("0x10" is 16), other kinds 0.
[[nodiscard]] std::uint64_t unsignedIntegerAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::int64_t longAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::int64_t longLongAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] std::uint64_t unsignedLongAtIndex(const ValueArray& self, std::uint64_t index);
// The lower-case "l" is part of the name.
[[nodiscard]] std::uint64_t unsignedlongLongAtIndex(const ValueArray& self, std::uint64_t index);
[[nodiscard]] float floatAtIndex(const ValueArray& self, std::uint64_t index);

// --- Searching texts -------------------------------------------------------------------------------------

// The index of the first text element equal to the text (whole texts); NotFound when none.
[[nodiscard]] std::uint64_t indexOfStringObjectCaseInsensitiveCompare(const ValueArray& self,
                                                                      const Text& text, bool caseInsensitive);
// The element found by indexOfStringObjectCaseInsensitiveCompare, or nullopt.
[[nodiscard]] std::optional<Text> stringObjectCaseInsensitiveCompare(const ValueArray& self, const Text& text,
                                                                     bool caseInsensitive);
// Whether some text element equals the text: ["abc"] does not contain "ab".
[[nodiscard]] bool containsStringCaseInsensitiveCompare(const ValueArray& self, const Text& text,
                                                        bool caseInsensitive);
// Whether any of the texts is contained; false for no texts.
[[nodiscard]] bool containsAnyStringFromCaseInsensitiveCompare(const ValueArray& self,
                                                               const std::vector<Text>& texts,
                                                               bool caseInsensitive);
// Each text element's path extension (after the last "." of the last path component; empty when none),
// in order; other elements are skipped.
[[nodiscard]] std::vector<Text> pathExtensions(const ValueArray& self);
// Whether some text element has the extension, ignoring case.
[[nodiscard]] bool containsPathExtension(const ValueArray& self, const Text& extension);
// Whether some text element has one of the extensions, ignoring case.
[[nodiscard]] bool containsAnyPathExtensions(const ValueArray& self, const std::vector<Text>& extensions);
// Whether some number element equals the argument as a 64-bit value (integerValue, unsignedIntegerValue,
// longValue, unsignedLongValue respectively). Texts, even of digits, are skipped.
[[nodiscard]] bool containsInt(const ValueArray& self, std::int32_t value);
[[nodiscard]] bool containsUnsignedInt(const ValueArray& self, std::uint32_t value);
[[nodiscard]] bool containsLong(const ValueArray& self, std::int64_t value);
[[nodiscard]] bool containsUnsignedLong(const ValueArray& self, std::uint64_t value);

// --- Building new lists ----------------------------------------------------------------------------------

// A new list of the texts, each added only when not yet contained (the first spelling wins). The
// receiver's own elements are not used.
[[nodiscard]] ValueArray arrayWithUniqueStringsFromArrayCaseInsensitiveCompare(const ValueArray& self,
                                                                               const std::vector<Text>& texts,
                                                                               bool caseInsensitive);
// Consecutive groups of `size` elements in order, the last holding the remainder; nullopt for an empty
// list or a size of 0.
[[nodiscard]] std::optional<std::vector<ValueArray>> arrayDividedIntoGroupsOf(const ValueArray& self,
                                                                              std::uint64_t size);
// Each text element without the characters of the set, every kept character narrowed to its low byte
// (read as Latin-1); other elements are dropped.
[[nodiscard]] std::vector<Text> arrayByRemovingFromEachObjectCharactersInSet(const ValueArray& self,
                                                                             const CharacterSet& set);
// Each text element without the character anywhere in it (not only in front); other elements are dropped.
[[nodiscard]] std::vector<Text> arrayByRemovingFromEachStringLeadingOccurrencesOfCharacter(
    const ValueArray& self, char16_t character);
// Each text element trimmed of the set's characters at both ends; other elements are dropped.
[[nodiscard]] std::vector<Text> arrayByTrimmingEachStringCharactersInSet(const ValueArray& self,
                                                                         const CharacterSet& set);
// The elements sorted ascending by their values for the key (stable; see bv::SortDescriptor).
[[nodiscard]] ValueArray arraySortedOnKey(const ValueArray& self, const Text& key);

}  // namespace bv::BVNSArray
