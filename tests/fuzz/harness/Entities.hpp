// Harness: the two entity unescapers.
#pragma once

#include <cstdlib>
#include <string>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// The second pass of stringByUnescapingEntitiesAndControlCharacters done the slow way, searching the
// whole text again after every replacement: the first "&#x" and the first ";" with fewer than 11 units
// from one to the other become one code unit (strtol base 16, low 16 bits). Null where the operation
// raises its range error (the first ";" before the first "&#x").
inline std::optional<std::u16string> referenceHexPass(std::u16string work) {
    while (!work.empty()) {
        const std::size_t marker = work.find(u"&#x");
        const std::size_t semicolon = work.find(u';');
        if (marker == std::u16string::npos || semicolon == std::u16string::npos) break;
        if (semicolon < marker) return std::nullopt;
        const std::size_t span = semicolon + 1 - marker;
        if (span >= 11) break;
        std::string digits;
        for (std::size_t i = marker + 3; i < semicolon; ++i)
            digits += work[i] < 0x80 ? static_cast<char>(work[i]) : '!';
        const long value = std::strtol(digits.c_str(), nullptr, 16);
        work.replace(marker, span, 1, static_cast<char16_t>(static_cast<unsigned long>(value) & 0xFFFF));
    }
    return work;
}

}  // namespace detail

// Unescaping never lengthens a text and undoes escaping exactly; the second pass over hexadecimal
// references matches the slow reference, including where it raises its range error (the only exception
// the operation defines).
inline void entities(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    const Text unescaped = BVNSString::stringByUnescapingEntities(text);
    check(unescaped.length() <= text.length(), "unescaping never lengthens a text");
    check(BVNSString::stringByUnescapingEntities(BVNSString::stringByEscapingEntities(text)) == text,
          "unescaping undoes escaping");
    (void)BVNSString::stringByEscapingEntitiesAndControlCharacters(text);

    const std::optional<std::u16string> expected = detail::referenceHexPass(unescaped.units());
    try {
        const Text both = BVNSString::stringByUnescapingEntitiesAndControlCharacters(text);
        check(expected.has_value() && both.units() == *expected,
              "the hexadecimal pass matches the reference");
    } catch (const RangeException&) {
        check(!expected.has_value(), "the range error only for a \";\" before the first \"&#x\"");
    }
}

}  // namespace bv::fuzz
