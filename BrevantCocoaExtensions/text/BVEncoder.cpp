// The repeating-key XOR coder.
#include "BrevantCocoaExtensions/text/BVEncoder.hpp"

#include <string>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"

namespace bv {

namespace {

// XORs the bytes with the key repeated from its first byte.
ByteData xorWithKey(const std::uint8_t* bytes, std::size_t length, const ByteData& key) {
    if (key.empty()) throw InvalidArgumentException("BVEncoder: the key must hold at least one byte");
    ByteData out(bytes, bytes + length);
    std::size_t keyIndex = 0;
    for (std::uint8_t& byte : out) {
        byte ^= key[keyIndex];
        if (++keyIndex == key.size()) keyIndex = 0;
    }
    return out;
}

}  // namespace

ByteData BVEncoder::newEncodedDataForStringUsingKey(const Text& string, const ByteData& key) {
    // ASCII text is its own UTF-8, so the UTF-8 bytes serve both cases.
    const std::string bytes = string.toUtf8();
    return xorWithKey(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), key);
}

ByteData BVEncoder::encodedDataForStringUsingKey(const Text& string, const ByteData& key) {
    return newEncodedDataForStringUsingKey(string, key);
}

ByteData BVEncoder::newDecodedDataForEncodedDataUsingKey(const ByteData& data, const ByteData& key) {
    return xorWithKey(data.data(), data.size(), key);
}

ByteData BVEncoder::decodedDataForEncodedDataUsingKey(const ByteData& data, const ByteData& key) {
    return newDecodedDataForEncodedDataUsingKey(data, key);
}

std::optional<Text> BVEncoder::decodedStringForEncodedDataUsingKey(const ByteData& data,
                                                                   const ByteData& key) {
    return decodeText(decodedDataForEncodedDataUsingKey(data, key), TextEncoding::UTF8);
}

}  // namespace bv
