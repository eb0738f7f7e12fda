// Harness: the platform's standard Base64 decoder, strict and skipping unknown characters.
#pragma once

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Whatever decodes re-encodes to standard Base64 that decodes to the same bytes; what decodes strictly
// decodes the same way when unknown characters are skipped (there are none to skip).
inline void platformBase64(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = asChars(data, size);
    const std::optional<ByteData> strict = base64::decode(text, false);
    const std::optional<ByteData> lenient = base64::decode(text, true);
    if (strict) check(lenient == strict, "strict success implies the same lenient result");
    for (const auto* decoded : {&strict, &lenient}) {
        if (!*decoded) continue;
        check((*decoded)->size() <= size * 3 / 4 + 3, "decoded length is bounded by the text");
        const std::string again = base64::encode(**decoded);
        check(base64::decode(again, false) == *decoded, "encoding a decoded result decodes back");
    }
}

}  // namespace bv::fuzz
