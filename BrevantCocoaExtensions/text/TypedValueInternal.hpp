// Typed readings of one Value, shared by the dictionary getters (BVNSDictionary) and the list getters
// (BVNSArray), so that a key lookup and an index lookup convert alike.
//
// Every reading takes a pointer: nullptr stands for an absent key. An absent value and a null value read
// as false, 0, 0.0 or an all-zero structure. A number converts to the requested type as C does
// (truncation toward zero from floating values, wrap-around to narrower integers). A text converts only
// where a reading says so; asking a text, or any other kind, for a conversion it lacks throws
// UnrecognizedOperationException. toBool and toUnsignedInteger are the exceptions: they test the kind and
// answer false or 0 for kinds they do not read.
#pragma once

#include <cstdint>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::typedValue {

// Numbers: not zero. Texts: false for "False", "F", "No", "N" in any case, for exactly "0" and for the
// empty text; true for any other text (no trimming: "no " and " 0" are true). Other kinds: false.
[[nodiscard]] bool toBool(const Value* value);
// Numbers only; texts and other kinds throw.
[[nodiscard]] std::int8_t toChar(const Value* value);
[[nodiscard]] std::uint8_t toUnsignedChar(const Value* value);
[[nodiscard]] std::int16_t toShort(const Value* value);
[[nodiscard]] std::uint16_t toUnsignedShort(const Value* value);
// Texts are read in decimal ("012" is 12).
[[nodiscard]] std::int64_t toInteger(const Value* value);
// Texts are read by unsignedLongLongValue in base 0 ("0x1f" is 31, "012" is 10, "-1" is 2^64 - 1); kinds
// other than numbers and texts give 0.
[[nodiscard]] std::uint64_t toUnsignedInteger(const Value* value);
// Texts are read in base 0 by the C readings (longValue, longLongValue, ...).
[[nodiscard]] std::int64_t toLong(const Value* value);
[[nodiscard]] std::int64_t toLongLong(const Value* value);
[[nodiscard]] std::uint64_t toUnsignedLong(const Value* value);
[[nodiscard]] std::uint64_t toUnsignedLongLong(const Value* value);
// Texts are read by the decimal floating reading (floatValue).
[[nodiscard]] float toFloat(const Value* value);
// Structure values of the same kind only; texts, numbers and other structures throw.
[[nodiscard]] Point toPoint(const Value* value);
[[nodiscard]] Size toSize(const Value* value);
[[nodiscard]] Range toRange(const Value* value);
[[nodiscard]] Rect toRect(const Value* value);

// A short name of the value's kind for messages: "text", "number", "date", "list", ...
[[nodiscard]] const char* kindName(const Value& value);

}  // namespace bv::typedValue
