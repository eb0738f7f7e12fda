// Harness: building a Text from UTF-8 (and Latin-1) bytes and writing it back.
#pragma once

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Valid UTF-8 survives the round trip unchanged; anything else comes back as valid UTF-8 (each bad
// sequence replaced). A UTF-8 text never has more code units than bytes; Latin-1 has exactly one per byte.
inline void textUtf8(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = asChars(data, size);
    const Text text = Text::fromUtf8(bytes);
    check(text.length() <= size, "a UTF-8 text has no more code units than bytes");
    const std::string back = text.toUtf8();
    if (isValidUtf8(data, size)) {
        check(back == bytes, "valid UTF-8 round-trips unchanged");
    } else {
        check(isValidUtf8(reinterpret_cast<const std::uint8_t*>(back.data()), back.size()),
              "invalid UTF-8 is written back as valid UTF-8");
    }

    const Text latin1 = Text::fromLatin1(bytes);
    check(latin1.length() == size, "Latin-1 gives one code unit per byte");
    for (std::size_t i = 0; i < size; ++i)
        check(latin1[i] == data[i], "Latin-1 code unit equals its byte");
}

}  // namespace bv::fuzz
