// BVNSMutableDictionary: typed setters on a ValueDictionary. Each stores under the key, replacing any
// value already there.
//
// The number setters store a Number of the named kind. The "ToString" setters store the number written
// as text by a printf format instead, with three deliberate oddities callers rely on:
//   - setUnsignedCharToStringForKey writes the byte as one character ("%c"): 65 is stored as "A";
//   - setLongToStringForKey and setUnsignedLongToStringForKey keep only the low 32 bits ("%d" and "%u"):
//     4294967297 is stored as "1".
#pragma once

#include <cstdint>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSMutableDictionary {

// --- Numbers and structures of the named kind ---
void setBoolForKey(ValueDictionary& self, bool value, const Text& key);
void setCharForKey(ValueDictionary& self, std::int8_t value, const Text& key);
void setUnsignedCharForKey(ValueDictionary& self, std::uint8_t value, const Text& key);
void setShortForKey(ValueDictionary& self, std::int16_t value, const Text& key);
void setUnsignedShortForKey(ValueDictionary& self, std::uint16_t value, const Text& key);
void setIntForKey(ValueDictionary& self, std::int32_t value, const Text& key);
void setUnsignedIntForKey(ValueDictionary& self, std::uint32_t value, const Text& key);
void setIntegerForKey(ValueDictionary& self, std::int64_t value, const Text& key);
void setUnsignedIntegerForKey(ValueDictionary& self, std::uint64_t value, const Text& key);
void setLongForKey(ValueDictionary& self, std::int64_t value, const Text& key);
void setUnsignedLongForKey(ValueDictionary& self, std::uint64_t value, const Text& key);
void setLongLongForKey(ValueDictionary& self, std::int64_t value, const Text& key);
void setUnsignedLongLongForKey(ValueDictionary& self, std::uint64_t value, const Text& key);
void setFloatForKey(ValueDictionary& self, float value, const Text& key);
void setPointForKey(ValueDictionary& self, Point value, const Text& key);
void setSizeForKey(ValueDictionary& self, Size value, const Text& key);
void setRangeForKey(ValueDictionary& self, Range value, const Text& key);
void setRectForKey(ValueDictionary& self, Rect value, const Text& key);

// --- Numbers written as text ---
// One character: the byte read as Latin-1 (65 is "A", 49 is "1"), not its digits.
void setUnsignedCharToStringForKey(ValueDictionary& self, std::uint8_t value, const Text& key);
void setShortToStringForKey(ValueDictionary& self, std::int16_t value, const Text& key);             // "%hi"
void setUnsignedShortToStringForKey(ValueDictionary& self, std::uint16_t value, const Text& key);    // "%hu"
void setIntToStringForKey(ValueDictionary& self, std::int32_t value, const Text& key);               // "%d"
void setUnsignedIntToStringForKey(ValueDictionary& self, std::uint32_t value, const Text& key);      // "%u"
void setIntegerToStringForKey(ValueDictionary& self, std::int64_t value, const Text& key);           // "%ld"
void setUnsignedIntegerToStringForKey(ValueDictionary& self, std::uint64_t value, const Text& key);  // "%lu"
// Only the low 32 bits, signed: 4294967297 is stored as "1", 2^32 as "0".
void setLongToStringForKey(ValueDictionary& self, std::int64_t value, const Text& key);
// Only the low 32 bits, unsigned.
void setUnsignedLongToStringForKey(ValueDictionary& self, std::uint64_t value, const Text& key);
// "%f": six digits after the point (1.5 is "1.500000").
void setFloatToStringForKey(ValueDictionary& self, float value, const Text& key);

}  // namespace bv::BVNSMutableDictionary
