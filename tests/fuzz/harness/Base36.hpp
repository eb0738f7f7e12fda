// Harness: reading base-36 text, and writing it back.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstring>

#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Any text reads without failing (characters outside the alphabet and overlong texts included), and the
// same text in lower case reads the same. A value made of the first eight input bytes is written with
// at most 13 digits, no leading zero, and reads back as itself in either case.
inline void base36(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    const std::int64_t value = BVNSString::valueForBase36String(text);
    bool digitsOnly = true;
    for (char16_t unit : text.units())
        digitsOnly = digitsOnly && unit < 0x80 && std::isalnum(unit) != 0;
    if (digitsOnly)
        check(BVNSString::valueForBase36String(text.lowercased()) == value,
              "lower-case digits read the same");

    std::uint64_t number = 0;
    if (size != 0)
        std::memcpy(&number, data, std::min(size, sizeof number));  // an empty input has no pointer
    const Text written = BVNSString::base36StringForValue(number);
    check(written.length() <= 13, "at most 13 digits");
    check(written.empty() == (number == 0), "only 0 is written as the empty text");
    check(written.empty() || written[0] != u'0', "no leading zero");
    check(BVNSString::valueForBase36String(written) == static_cast<std::int64_t>(number), "reads back");
    check(BVNSString::valueForBase36String(written.lowercased()) == static_cast<std::int64_t>(number),
          "reads back in lower case");
}

}  // namespace bv::fuzz
