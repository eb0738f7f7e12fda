// Key-value access on Values: what sort keys, list controllers and the list helpers use to read a named
// value out of an element, whether the element is a dictionary or a library object.
//
//   - a dictionary answers the value stored under the key (exact key match);
//   - a shared Object answers its own valueForKey;
//   - any other value answers only the key "self" (the value itself);
//   - null answers nothing.
// Asking a text, a number or another plain value for a key other than "self" throws
// UnrecognizedOperationException, as the platform does for objects that do not know the key.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// The value under the key, or nullopt when the element has none.
[[nodiscard]] std::optional<Value> valueForKey(const Value& element, const Text& key);
// A dotted key path ("address.city"): valueForKey one key after the other; nullopt as soon as one step
// finds nothing.
[[nodiscard]] std::optional<Value> valueForKeyPath(const Value& element, const Text& keyPath);
// Stores the value under the key: into a dictionary (replacing any value there) or through
// Object::setValueForKey. Other kinds throw UnrecognizedOperationException.
void setValueForKey(Value& element, const Value& value, const Text& key);

}  // namespace bv
