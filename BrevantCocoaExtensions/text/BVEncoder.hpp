// BVEncoder: a repeating-key XOR coder that obscures bytes.
//
// Byte i of the output is byte i of the input XOR key byte (i mod key length); XOR is its own inverse, so
// encoding and decoding are the same operation. It gives no secrecy and no integrity check. The key must
// hold at least one byte: an empty key throws InvalidArgumentException.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVEncoder {
  public:
    // The text's bytes (ASCII when every character is ASCII, otherwise UTF-8) XORed with the key.
    [[nodiscard]] static ByteData newEncodedDataForStringUsingKey(const Text& string, const ByteData& key);
    [[nodiscard]] static ByteData encodedDataForStringUsingKey(const Text& string, const ByteData& key);

    // The bytes XORed with the key.
    [[nodiscard]] static ByteData newDecodedDataForEncodedDataUsingKey(const ByteData& data,
                                                                       const ByteData& key);
    [[nodiscard]] static ByteData decodedDataForEncodedDataUsingKey(const ByteData& data,
                                                                    const ByteData& key);

    // The decoded bytes read as UTF-8; null when they are not valid UTF-8.
    [[nodiscard]] static std::optional<Text> decodedStringForEncodedDataUsingKey(const ByteData& data,
                                                                                 const ByteData& key);
};

}  // namespace bv
