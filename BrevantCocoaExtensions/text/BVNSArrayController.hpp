// BVNSArrayController: helpers over a list controller's arranged objects, among them the "state" helpers
// for lists whose elements carry a check-box state.
//
// Unlike BVNSArray::lastIndex, indexOfLastObject answers bv::NotFound for an empty arrangement.
#pragma once

#include <cstdint>
#include <optional>

#include "BrevantCocoaExtensions/platform/ArrayController.hpp"

namespace bv::BVNSArrayController {

// The number of arranged objects.
[[nodiscard]] std::uint64_t arrangedObjectCount(const ArrayController& self);
// The first or last arranged object; nullopt when there are none.
[[nodiscard]] std::optional<Value> firstObject(const ArrayController& self);
[[nodiscard]] std::optional<Value> lastObject(const ArrayController& self);
// The arranged object at the index; RangeException past the end.
[[nodiscard]] Value objectAtIndex(const ArrayController& self, std::uint64_t index);
// The index of the first arranged object equal to the object; NotFound when none.
[[nodiscard]] std::uint64_t indexOfObject(const ArrayController& self, const Value& object);
// count - 1; NotFound when nothing is arranged.
[[nodiscard]] std::uint64_t indexOfLastObject(const ArrayController& self);
// The index of the first arranged object whose value for the key matches the text. Case-insensitive: the
// value compares as the same text ignoring case, and an object with no value (or a null value) for the key
// matches too; a value that is not a text throws UnrecognizedOperationException. Exact: the value is a text
// equal code unit by code unit. NotFound when nothing matches.
[[nodiscard]] std::uint64_t indexOfObjectWithStringValueCaseInsensitiveCompareForKey(
    const ArrayController& self, const Text& value, bool caseInsensitive, const Text& key);
// The first selected object in arranged order; nullopt when nothing is selected.
[[nodiscard]] std::optional<Value> selectedObject(const ArrayController& self);
// Removes every currently arranged object from the content.
void removeArrangedObjects(ArrayController& self);
// Whether every arranged object's "state" read as an integer (as BVNSDictionary::integerForKey reads it)
// equals the state; true when nothing is arranged.
[[nodiscard]] bool areAllItemsInState(const ArrayController& self, std::int64_t state);
// Stores the state under "state" in every arranged object as a signed 32-bit number (the low 32 bits, as
// BVNSMutableDictionary::setIntForKey stores it). The arrangement is not recomputed.
void setState(ArrayController& self, std::int64_t state);

}  // namespace bv::BVNSArrayController
