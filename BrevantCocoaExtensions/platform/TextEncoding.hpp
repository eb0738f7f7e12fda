// Text encodings: bytes to Text and back through ICU converters.
//
// The enumerators keep the platform's encoding numbers so that stored settings stay meaningful.
#pragma once

#include <cstdint>
#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

enum class TextEncoding : std::uint32_t {
    ASCII = 1,
    UTF8 = 4,
    ISOLatin1 = 5,
    UTF16 = 10,  // byte-order mark honoured; big-endian without one
    WindowsCP1251 = 11,
    WindowsCP1252 = 12,
    WindowsCP1250 = 15,
    MacOSRoman = 30,
    UTF16BigEndian = 0x90000100,
    UTF16LittleEndian = 0x94000100,
    UTF32 = 0x8c000100,
    UTF32BigEndian = 0x98000100,
    UTF32LittleEndian = 0x9c000100,
};

// Decodes bytes; nullopt when any byte sequence is not valid in the encoding.
[[nodiscard]] std::optional<Text> decodeText(const std::uint8_t* bytes, std::size_t length,
                                             TextEncoding encoding);
[[nodiscard]] inline std::optional<Text> decodeText(const ByteData& data, TextEncoding encoding) {
    return decodeText(data.data(), data.size(), encoding);
}
// Encodes a text; nullopt when a character cannot be represented in the encoding.
[[nodiscard]] std::optional<ByteData> encodeText(const Text& text, TextEncoding encoding);
// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool isValidUtf8(const std::uint8_t* bytes, std::size_t length);

}  // namespace bv
