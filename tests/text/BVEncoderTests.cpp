// BVEncoder: the repeating-key XOR coder.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVEncoder.hpp"

using bv::BVEncoder;
using bv::ByteData;
using bv::Text;

TEST(BVEncoder, XorsWithTheKeyRepeatedFromItsFirstByte) {
    EXPECT_EQ(BVEncoder::encodedDataForStringUsingKey(Text("AB"), ByteData{0x01}), (ByteData{0x40, 0x43}));
    EXPECT_EQ(BVEncoder::newEncodedDataForStringUsingKey(Text("abcdefg"), ByteData{1, 2, 3}),
              (ByteData{'a' ^ 1, 'b' ^ 2, 'c' ^ 3, 'd' ^ 1, 'e' ^ 2, 'f' ^ 3, 'g' ^ 1}));
    // A key longer than the text uses only its first bytes.
    EXPECT_EQ(BVEncoder::encodedDataForStringUsingKey(Text("A"), ByteData{0x02, 0xFF, 0xFF}),
              (ByteData{0x43}));
    // Text beyond ASCII is coded from its UTF-8 bytes.
    EXPECT_EQ(BVEncoder::encodedDataForStringUsingKey(Text("\xC3\xA9"), ByteData{0x00}),
              (ByteData{0xC3, 0xA9}));
    EXPECT_TRUE(BVEncoder::encodedDataForStringUsingKey(Text(""), ByteData{9}).empty());
}

TEST(BVEncoder, DecodingUndoesEncoding) {
    const ByteData key{0x5A, 0x00, 0xC3, 0x11};
    const Text text("Brevant \xE2\x80\x94 caf\xC3\xA9 quiz, round 12");
    const ByteData encoded = BVEncoder::encodedDataForStringUsingKey(text, key);
    EXPECT_EQ(BVEncoder::decodedStringForEncodedDataUsingKey(encoded, key), text);
    EXPECT_EQ(BVEncoder::newDecodedDataForEncodedDataUsingKey(ByteData{0x40, 0x43}, ByteData{0x01}),
              (ByteData{'A', 'B'}));
    EXPECT_EQ(BVEncoder::decodedDataForEncodedDataUsingKey(encoded, key),
              BVEncoder::newDecodedDataForEncodedDataUsingKey(encoded, key));
}

TEST(BVEncoder, DecodedStringIsNullForInvalidUtf8AndAnEmptyKeyIsRefused) {
    EXPECT_EQ(BVEncoder::decodedStringForEncodedDataUsingKey(ByteData{0xC3 ^ 0x01}, ByteData{0x01}),
              std::nullopt);
    EXPECT_EQ(BVEncoder::decodedStringForEncodedDataUsingKey(ByteData{}, ByteData{0x01}), Text(""));
    EXPECT_THROW((void)BVEncoder::decodedDataForEncodedDataUsingKey(ByteData{1, 2}, ByteData{}),
                 bv::InvalidArgumentException);
    EXPECT_THROW((void)BVEncoder::encodedDataForStringUsingKey(Text("x"), ByteData{}),
                 bv::InvalidArgumentException);
}
