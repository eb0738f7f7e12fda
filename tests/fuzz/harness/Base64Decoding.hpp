// Harness: the library's lenient Base64 decoder, checked against a plain reading of its rules.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// The decoder's rules written out slowly: non-ASCII anywhere gives nothing; other characters outside the
// alphabet are skipped; the first "=" ends the data and completes a partial group with end marks (0xFF);
// a partial group without "=" is dropped.
inline ByteData referenceBase64(const std::u16string& units) {
    for (char16_t unit : units)
        if (unit >= 0x80) return {};
    std::vector<std::uint8_t> sextets;
    bool sawEquals = false;
    for (char16_t unit : units) {
        if (unit == u'=') {
            sawEquals = true;
            break;
        }
        if (Base64Encoding::isCharacterPartOfBase64Encoding(unit)) {
            const std::string_view alphabet =
                "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
            sextets.push_back(static_cast<std::uint8_t>(alphabet.find(static_cast<char>(unit))));
        }
    }
    const std::size_t partial = sextets.size() % 4;
    if (partial != 0 && !sawEquals) sextets.resize(sextets.size() - partial);
    const bool endsInPartialGroup = partial != 0 && sawEquals;
    const std::size_t lastCount = partial == 3 ? 2 : 1;
    while (sextets.size() % 4 != 0)
        sextets.push_back(0xFF);
    ByteData bytes;
    for (std::size_t i = 0; i < sextets.size(); i += 4) {
        const std::uint8_t* s = &sextets[i];
        const std::uint8_t group[3] = {static_cast<std::uint8_t>((s[0] << 2) | ((s[1] & 0x30) >> 4)),
                                       static_cast<std::uint8_t>(((s[1] & 0x0F) << 4) | ((s[2] & 0x3C) >> 2)),
                                       static_cast<std::uint8_t>(((s[2] & 0x03) << 6) | s[3])};
        const bool last = i + 4 == sextets.size() && endsInPartialGroup;
        bytes.insert(bytes.end(), group, group + (last ? lastCount : 3));
    }
    return bytes;
}

}  // namespace detail

// The input, read as UTF-8, is decoded and compared with the reference; the input bytes, encoded as
// standard Base64, decode back to themselves.
inline void base64Decoding(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    const ByteData decoded = Base64Encoding::initWithBase64EncodedString(text);
    check(decoded == detail::referenceBase64(text.units()), "decoding follows the documented rules");
    check(Base64Encoding::dataWithBase64EncodedString(text) == decoded, "the class form decodes the same");

    const ByteData bytes(data, data + size);
    const Text encoded = Text::fromUtf8(base64::encode(bytes));
    check(Base64Encoding::initWithBase64EncodedString(encoded) == bytes, "standard Base64 decodes back");
}

}  // namespace bv::fuzz
