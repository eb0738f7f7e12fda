// Harness: the number readings of text (decimal and C-style base 0).
#pragma once

#include <algorithm>
#include <cstdint>

#include "BrevantCocoaExtensions/platform/NumberReading.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Every reading accepts any text; the 32-bit decimal reading is the 64-bit one saturated to 32 bits, and
// the long and long long readings agree (both are 64 bits wide here).
inline void numberReading(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    const std::int64_t wide = integerValue(text);
    const std::int32_t narrow = intValue(text);
    const std::int64_t clamped = std::clamp<std::int64_t>(wide, INT32_MIN, INT32_MAX);
    check(narrow == clamped, "intValue is integerValue saturated to 32 bits");
    check(longValue(text) == longLongValue(text), "strtol and strtoll agree on 64-bit longs");
    check(unsignedLongValue(text) == unsignedLongLongValue(text), "strtoul and strtoull agree");
    (void)boolValue(text);
    (void)doubleValue(text);
    (void)floatValue(text);
}

}  // namespace bv::fuzz
