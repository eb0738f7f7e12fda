// BVNSDictionary: typed reading of a ValueDictionary, its XML property-list form, and the file-attribute
// dictionary that makes files writable by everyone.
//
// Getters look the key up exactly. An absent key or a null value reads as false, 0, 0.0 or an all-zero
// structure. A number value converts to the getter's type as C does (truncation toward zero, wrap-around
// to narrower integers). Text values convert only where a getter says so; asking a text (or a date, a
// list, ...) for a conversion it lacks throws UnrecognizedOperationException. Only boolForKey and
// unsignedIntegerForKey look at the kind first and answer false or 0 for kinds they cannot read.
#pragma once

#include <cstdint>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSDictionary {

// Numbers: not zero. Texts: false for "False", "F", "No" or "N" in any case, for exactly "0" and for the
// empty text, true otherwise ("00", " 0" and "no " are true: nothing is trimmed). Other kinds: false.
[[nodiscard]] bool boolForKey(const ValueDictionary& self, const Text& key);
// Numbers only (a text throws).
[[nodiscard]] std::int8_t charForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::uint8_t unsignedCharForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::int16_t shortForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::uint16_t unsignedShortForKey(const ValueDictionary& self, const Text& key);
// A text is read in decimal: "012" is 12.
[[nodiscard]] std::int64_t integerForKey(const ValueDictionary& self, const Text& key);
// A text is read in base 0: "012" is 10, "0x1f" is 31, "-1" is 2^64 - 1. Dates, lists, ... give 0.
[[nodiscard]] std::uint64_t unsignedIntegerForKey(const ValueDictionary& self, const Text& key);
// A text is read by the C reading of the same name, in base 0.
[[nodiscard]] std::int64_t longForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::int64_t longLongForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::uint64_t unsignedLongForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] std::uint64_t unsignedLongLongForKey(const ValueDictionary& self, const Text& key);
// A text is read in decimal ("1.5e2" is 150).
[[nodiscard]] float floatForKey(const ValueDictionary& self, const Text& key);
// Structure values of the same kind; anything else but absence throws.
[[nodiscard]] Point pointForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] Size sizeForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] Range rangeForKey(const ValueDictionary& self, const Text& key);
[[nodiscard]] Rect rectForKey(const ValueDictionary& self, const Text& key);

// The dictionary as a complete XML property-list document (UTF-8). Throws InvalidArgumentException when
// it holds a value a property list cannot (null, structures, objects).
[[nodiscard]] ByteData xmlDataRepresentation(const ValueDictionary& self);
// xmlDataRepresentation read as UTF-8.
[[nodiscard]] Text xmlDescription(const ValueDictionary& self);

// {"NSFilePosixPermissions": 511}: file attributes making a file readable, writable and executable by
// everyone (octal 0777).
[[nodiscard]] ValueDictionary universallyWritablePermissions();

}  // namespace bv::BVNSDictionary
