// The platform's standard Base64 (RFC 4648 alphabet, "=" padding), as the system's own data
// encoding offers it. The library's own Base64 coder with its particular rules is BVNSData's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::base64 {

// Standard Base64 with padding and no line breaks.
[[nodiscard]] std::string encode(const std::uint8_t* bytes, std::size_t length);
[[nodiscard]] inline std::string encode(const ByteData& data) {
    return encode(data.data(), data.size());
}
// The same Base64 written as UTF-16 code units at `out`, which has room for (length + 2) / 3 * 4 of them.
void encodeInto(const std::uint8_t* bytes, std::size_t length, char16_t* out);

// Decodes standard Base64. With ignoreUnknownCharacters, characters outside the alphabet (line breaks
// and any other) are skipped; without it, any such character gives nullopt. Padding is optional at the
// end; a "=" anywhere but the end, or a lone last character, gives nullopt.
[[nodiscard]] std::optional<ByteData> decode(std::u16string_view text, bool ignoreUnknownCharacters);
[[nodiscard]] std::optional<ByteData> decode(std::string_view text, bool ignoreUnknownCharacters);

}  // namespace bv::base64
