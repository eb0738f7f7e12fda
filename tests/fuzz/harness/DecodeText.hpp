// Harness: decoding bytes to Text in each of the platform's text encodings.
#pragma once

#include <array>

#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// The first byte picks the encoding, the rest is decoded. A strict decoder either fails or gives a text
// that encodes back to the same bytes (for the encodings where every text has one form); UTF-8 decodes
// exactly when it is valid, ASCII exactly when no byte has the high bit, Latin-1 always.
inline void decodeText(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array encodings{TextEncoding::ASCII,
                                          TextEncoding::UTF8,
                                          TextEncoding::ISOLatin1,
                                          TextEncoding::UTF16,
                                          TextEncoding::WindowsCP1251,
                                          TextEncoding::WindowsCP1252,
                                          TextEncoding::WindowsCP1250,
                                          TextEncoding::MacOSRoman,
                                          TextEncoding::UTF16BigEndian,
                                          TextEncoding::UTF16LittleEndian,
                                          TextEncoding::UTF32,
                                          TextEncoding::UTF32BigEndian,
                                          TextEncoding::UTF32LittleEndian};
    if (size == 0) return;
    const TextEncoding encoding = encodings[data[0] % encodings.size()];
    const std::uint8_t* bytes = data + 1;
    const std::size_t length = size - 1;

    const std::optional<Text> text = bv::decodeText(bytes, length, encoding);
    bool ascii = true;
    for (std::size_t i = 0; i < length; ++i)
        ascii = ascii && bytes[i] < 0x80;
    switch (encoding) {
        case TextEncoding::UTF8:
            check(text.has_value() == isValidUtf8(bytes, length), "UTF-8 decodes exactly when valid");
            break;
        case TextEncoding::ASCII:
            check(text.has_value() == ascii, "ASCII decodes exactly 7-bit bytes");
            break;
        case TextEncoding::ISOLatin1:
            check(text.has_value() && text->length() == length, "Latin-1 decodes every byte");
            break;
        default:
            break;
    }
    if (!text) return;

    const std::optional<ByteData> encoded = encodeText(*text, encoding);
    switch (encoding) {
        case TextEncoding::ASCII:
        case TextEncoding::UTF8:
        case TextEncoding::ISOLatin1:
        case TextEncoding::UTF16BigEndian:
        case TextEncoding::UTF16LittleEndian:
        case TextEncoding::UTF32BigEndian:
        case TextEncoding::UTF32LittleEndian:
            check(encoded.has_value() && *encoded == ByteData(bytes, bytes + length),
                  "a decoded text encodes back to the same bytes");
            break;
        default:
            break;
    }
}

}  // namespace bv::fuzz
