// bv::stringWithFormat: printf-style formatting of the library's messages, with "%@" for any value.
//
// A directive is "%" [position "$"] [flags "-+ #0"] [width] ["." precision] [length] conversion:
//   %@          the argument's description (a text is itself, a number its stringValue, null "(null)")
//   %d %i       signed integer; without a length (or with h, hh) narrowed to 32 (16, 8) bits as C does;
//               with l, ll, q, z, t, j the full 64 bits
//   %u %o %x %X unsigned integer, narrowed the same way
//   %f %e %g %a and their capitals: floating point     %c %C one character (a UTF-16 code unit)
//   %s %S       the argument's description, like %@     %%    a "%"
// "%1$@" takes the first argument wherever it stands. An unknown conversion is copied as it stands. A
// directive without its argument throws InvalidArgumentException (C would read garbage); surplus
// arguments are ignored. A non-number given to a numeric directive counts as 0.
#pragma once

#include <string>
#include <type_traits>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// Formats with the arguments given as values.
[[nodiscard]] Text stringWithFormatArguments(const Text& format, const ValueArray& arguments);

namespace format_detail {
// One argument as a Value: every arithmetic type keeps its kind, texts and values go as they are.
template <class T>
Value argument(const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return Value(Number::boolean(value));
    } else if constexpr (std::is_floating_point_v<T>) {
        return Value(Number::float64(static_cast<double>(value)));
    } else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>) {
        return Value(Number::int64(static_cast<std::int64_t>(value)));
    } else if constexpr (std::is_integral_v<T>) {
        return Value(Number::uint64(static_cast<std::uint64_t>(value)));
    } else if constexpr (std::is_convertible_v<const T&, Text> && !std::is_same_v<T, Value>) {
        return Value(Text(value));
    } else {
        return Value(value);
    }
}
}  // namespace format_detail

// Formats with the arguments, each turned into a Value.
template <class... Args>
[[nodiscard]] Text stringWithFormat(const Text& format, const Args&... arguments) {
    return stringWithFormatArguments(format, ValueArray{format_detail::argument(arguments)...});
}

}  // namespace bv
