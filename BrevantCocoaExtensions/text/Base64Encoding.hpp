// Base64Encoding: the library's own lenient Base64 decoder for ByteData.
//
// The decoder never fails; bad input gives shorter or empty data:
//   - characters outside the RFC 4648 alphabet (line breaks, spaces, "-", anything) are skipped wherever
//     they stand;
//   - the first "=" ends the data: nothing after it is looked at, so "==" in the middle cuts the data there;
//   - a last group of 1 to 3 characters without "=" padding is dropped ("QUI" gives nothing, "QUI=" gives
//     "AB");
//   - a lone character followed by "=" still gives one byte, whose two low bits are set;
//   - a text holding any non-ASCII character gives empty data, wherever that character stands.
// The standard encoder is BVNSData's encodedBase64StringWithNewLines.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::Base64Encoding {

// True for the 64 alphabet characters ("A"-"Z", "a"-"z", "0"-"9", "+", "/"); false for "=" and all else.
[[nodiscard]] bool isCharacterPartOfBase64Encoding(char16_t character) noexcept;

// Decodes Base64 text by the rules above; a null or empty text gives empty data.
[[nodiscard]] ByteData initWithBase64EncodedString(const std::optional<Text>& string);
[[nodiscard]] ByteData initWithBase64EncodedString(const Text& string);

// The same decoding.
[[nodiscard]] ByteData dataWithBase64EncodedString(const Text& string);

// The same decoding; the caller owns the result.
[[nodiscard]] ByteData newDataWithBase64EncodedString(const Text& string);

}  // namespace bv::Base64Encoding
