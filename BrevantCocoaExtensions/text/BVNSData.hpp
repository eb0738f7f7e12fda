// BVNSData: ByteData as text and on disk.
//
// Standard Base64 out (over the platform's encoder, optionally in 64-character lines joined by "\r\n"),
// hexadecimal text in both directions through two 256-entry tables, and writers that leave the file
// readable and writable by everyone. The lenient Base64 decoder is Base64Encoding's.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSData {

// How writeToUniversallyWritableFileOptionsError writes; the values may be combined.
enum DataWritingOptions : unsigned {
    DataWritingAtomic = 1u << 0,              // through a temporary file renamed over the target
    DataWritingWithoutOverwriting = 1u << 1,  // fail (EEXIST) when the target already exists
};

// Standard Base64 with "=" padding. With newLines, lines of 64 characters joined by "\r\n", with no line
// break after the last line; without, one line.
[[nodiscard]] Text newEncodedBase64StringWithNewLines(const ByteData& self, bool newLines);
[[nodiscard]] Text encodedBase64StringWithNewLines(const ByteData& self, bool newLines);
// Standard Base64 on one line.
[[nodiscard]] Text newEncodedBase64String(const ByteData& self);
[[nodiscard]] Text encodedBase64String(const ByteData& self);

// Two hexadecimal digits per byte, no separators and no prefix ("00AB0F" or "00ab0f"); empty data gives
// the empty text.
[[nodiscard]] Text hexStringRepresentationUppercase(const ByteData& self, bool uppercase);
// Upper-case hexadecimal.
[[nodiscard]] Text hexStringRepresentation(const ByteData& self);

// Reads hexadecimal digits (either case) in pairs. A null text gives null. With ignoreOtherCharacters,
// any other character is skipped, also between the two digits of a pair, and an odd last digit is
// dropped ("0a-FF 1" gives 0x0A 0xFF); without it, any other character or an odd digit count gives null.
// The empty text gives empty data.
[[nodiscard]] std::optional<ByteData> initWithHexStringIgnoreOtherCharacters(
    const std::optional<Text>& string, bool ignoreOtherCharacters);
[[nodiscard]] std::optional<ByteData> initWithHexStringIgnoreOtherCharacters(const Text& string,
                                                                             bool ignoreOtherCharacters);
// Hexadecimal reading that skips other characters.
[[nodiscard]] std::optional<ByteData> dataWithHexString(const Text& string);

// Writes the bytes to the path, then sets the file's permissions to 0777 whatever the write's outcome
// (a failure of that step is ignored); answers the write's result and fills *error when it failed.
bool writeToUniversallyWritableFileOptionsError(const ByteData& self, const Text& path, unsigned options,
                                                Error* error = nullptr);
// The same, atomically or in place.
bool writeToUniversallyWritableFileAtomically(const ByteData& self, const Text& path, bool atomically);
// The same for a "file:" URL ("file:///tmp/a%20b.txt"); permissions are set on the URL's path. Any other
// URL is not written and answers false.
bool writeToUniversallyWritableURLAtomically(const ByteData& self, const Text& url, bool atomically);

}  // namespace bv::BVNSData
