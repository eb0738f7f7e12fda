// BVNSMutableArray: in-place helpers over a ValueArray: typed adders, unique adds, moves, replacements and
// removals.
//
// Pitfalls callers rely on:
//   - addChar appends a one-character text (the code unit narrowed to its low byte, read as Latin-1), not a
//     number as the other adders do.
//   - moveObjectToIndex removes every element equal to the object before inserting it once, so a list with
//     duplicates shrinks.
//   - moveObjectsToIndexes removes from the positions the objects had before the insertion, without
//     adjusting them; it is meant for target indexes above the old positions.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "BrevantCocoaExtensions/platform/IndexSet.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSMutableArray {

// Appends each object in order (null values are appended as null placeholders).
void addObjects(ValueArray& self, std::initializer_list<Value> objects);

// Append a number of the named kind.
void addBool(ValueArray& self, bool value);
void addShort(ValueArray& self, std::int16_t value);
void addUnsignedShort(ValueArray& self, std::uint16_t value);
void addInteger(ValueArray& self, std::int64_t value);
void addUnsignedInteger(ValueArray& self, std::uint64_t value);
void addLong(ValueArray& self, std::int64_t value);
void addLongLong(ValueArray& self, std::int64_t value);
void addUnsignedLong(ValueArray& self, std::uint64_t value);
void addUnsignedLongLong(ValueArray& self, std::uint64_t value);
void addFloat(ValueArray& self, float value);
// Appends a one-character text, not a number: 65 appends "A"; a code unit above U+00FF keeps only its low
// byte.
void addChar(ValueArray& self, char16_t character);
// addChar for every code unit from `first` to `last` inclusive; nothing when first > last.
void addASCIICharactersFromTo(ValueArray& self, char16_t first, char16_t last);
// addInteger for every value from `first` to `last` inclusive; nothing when first > last.
void addNumericValuesFromTo(ValueArray& self, std::int64_t first, std::int64_t last);
// Appends `count` null placeholders.
void addNumberOfNullPlaceholders(ValueArray& self, std::uint64_t count);

// Appends the object unless an equal element is there; true when appended.
bool addUniqueObject(ValueArray& self, const Value& object);
// Appends the text unless an equal text element is there (whole texts); true when appended.
bool addUniqueStringCaseInsensitiveCompare(ValueArray& self, const Text& text, bool caseInsensitive);
// addUniqueStringCaseInsensitiveCompare for each text in order, so duplicates among the texts collapse too
// and the first spelling wins.
void addUniqueStringsFromArrayCaseInsensitiveCompare(ValueArray& self, const std::vector<Text>& texts,
                                                     bool caseInsensitive);

// Appends "." and the extension to every text element; other elements stay.
void appendPathExtensionToStrings(ValueArray& self, const Text& extension);
// Replaces every number element by its decimal text ("1" for true).
void convertNumbersToStrings(ValueArray& self);

// moveObjectToIndex with the element at `from` (RangeException past the end).
void moveObjectAtIndexToIndex(ValueArray& self, std::uint64_t from, std::uint64_t to);
// Removes every element equal to the object, then inserts the object at to - 1 when its first position was
// before `to`, else at `to`: B to 3 in [A, B, C, D] gives [A, C, B, D]; B to 0 in [B, A, B] gives [B, A].
// An insertion index past the end throws RangeException and leaves the list unchanged.
void moveObjectToIndex(ValueArray& self, const Value& object, std::uint64_t to);
// Inserts the objects at the indexes (ascending, one object per index, each index counted in the list as it
// grows), then removes the elements at the objects' old positions (indexesOfObjects, taken before the
// insertion and not adjusted). A missing object, a count mismatch or an index past the end throws and
// leaves the list unchanged.
void moveObjectsToIndexes(ValueArray& self, const ValueArray& objects, const IndexSet& indexes);

// Replaces the first element equal to `object`; false when there is none.
bool replaceObjectWithObject(ValueArray& self, const Value& object, const Value& replacement);
// Replaces the first text element equal to `text`; false when there is none.
bool replaceFirstOccurrenceOfStringWithStringCaseInsensitiveCompare(ValueArray& self, const Text& text,
                                                                    const Text& replacement,
                                                                    bool caseInsensitive);
// Removes the first text element equal to `text`, if any.
void removeObjectWithStringCaseInsensitiveCompare(ValueArray& self, const Text& text, bool caseInsensitive);
// Removes every text element that is empty after trimming white space and line breaks; other kinds stay.
void removeEmptyStrings(ValueArray& self);
// Removes every text element whose path extension equals one of the extensions exactly (case-sensitive).
void removeObjectsWithPathExtensions(ValueArray& self, const std::vector<Text>& extensions);
void removeObjectsWithPathExtension(ValueArray& self, const Text& extension);

}  // namespace bv::BVNSMutableArray
