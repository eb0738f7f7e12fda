// The number readings of text, defined once for the whole library.
//
// The decimal readings (intValue, integerValue, floatValue, doubleValue) skip leading white space, take
// an optional sign and digits, stop at the first other character and answer 0 when there are no digits;
// integers saturate on overflow. The C readings (longValue and its twins) hand the text, as UTF-8, to
// strtol, strtoul, strtoll or strtoull with base 0: "0x1F" is 31, "010" is 8 (octal), "19" is 19, and
// out-of-range values saturate as the C functions do.
#pragma once

#include <cstdint>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

// False for an empty text; true when the first code unit is "T", "t", "Y" or "y"; otherwise whether
// intValue is not 0 (so "2abc" is true and " true" is false).
[[nodiscard]] bool boolValue(const Text& text);
// Decimal, 32-bit, saturating.
[[nodiscard]] std::int32_t intValue(const Text& text);
// Decimal, 64-bit, saturating.
[[nodiscard]] std::int64_t integerValue(const Text& text);
// Decimal floating reading (digits, ".", exponent); 0 when nothing can be read.
[[nodiscard]] double doubleValue(const Text& text);
[[nodiscard]] float floatValue(const Text& text);
// strtol, strtoul, strtoll and strtoull with base 0 on the UTF-8 form.
[[nodiscard]] std::int64_t longValue(const Text& text);
[[nodiscard]] std::uint64_t unsignedLongValue(const Text& text);
[[nodiscard]] std::int64_t longLongValue(const Text& text);
[[nodiscard]] std::uint64_t unsignedLongLongValue(const Text& text);

}  // namespace bv
