// The lenient Base64 decoder: skipped characters, the end of the data at "=", dropped unpadded groups.
#include <gtest/gtest.h>

#include <random>

#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"

using bv::ByteData;
using bv::Text;
namespace Base64Encoding = bv::Base64Encoding;

namespace {
ByteData bytesOf(const std::string& text) {
    return ByteData(text.begin(), text.end());
}
}  // namespace

TEST(Base64Encoding, DecodesByTheLibrarysOwnRules) {
    struct Case {
        const char* input;
        std::string expected;
    };
    const Case cases[] = {
        {"QUJD", "ABC"},
        {"QU JD\r\n", "ABC"},      // white space skipped inside a group
        {"Q-U_J.D", "ABC"},        // so is every other character outside the alphabet
        {"QU\nJDQUJD", "ABCABC"},  // a skipped character, then clean groups again
        {"QUI", ""},               // an unpadded last group is dropped
        {"QUJDQQ", "ABC"},
        {"QUI=", "AB"},
        {"QQ==", "A"},
        {"QU=", "A"},
        {"Q=", "C"},           // a lone character still gives a byte, its two low bits set
        {"QQ==QUJD", "A"},     // "=" ends the data
        {"QUJD=QUJD", "ABC"},  // also at the start of a group
        {"=QUJD", ""},
        {"", ""},
        {"////", "\xFF\xFF\xFF"},
        {"+/+/", "\xFB\xFF\xBF"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Base64Encoding::initWithBase64EncodedString(Text(c.input)), bytesOf(c.expected)) << c.input;
        EXPECT_EQ(Base64Encoding::dataWithBase64EncodedString(Text(c.input)), bytesOf(c.expected)) << c.input;
        EXPECT_EQ(Base64Encoding::newDataWithBase64EncodedString(Text(c.input)), bytesOf(c.expected))
            << c.input;
    }
}

TEST(Base64Encoding, NullAndNonAsciiTextGiveEmptyData) {
    EXPECT_TRUE(Base64Encoding::initWithBase64EncodedString(std::nullopt).empty());
    EXPECT_TRUE(Base64Encoding::initWithBase64EncodedString(Text("QUJD\xC3\xA9")).empty());
    EXPECT_TRUE(Base64Encoding::initWithBase64EncodedString(Text("\xC3\xA9QUJD")).empty());
    // The text as a whole must be ASCII, even past the end of the data.
    EXPECT_TRUE(Base64Encoding::initWithBase64EncodedString(Text("QQ==\xC3\xA9")).empty());
    EXPECT_TRUE(Base64Encoding::initWithBase64EncodedString(Text(u"QUJD\u0100QUJD")).empty());
}

TEST(Base64Encoding, AlphabetMembership) {
    int members = 0;
    for (char16_t c = 0; c < 0x200; ++c)
        members += Base64Encoding::isCharacterPartOfBase64Encoding(c) ? 1 : 0;
    EXPECT_EQ(members, 64);
    EXPECT_TRUE(Base64Encoding::isCharacterPartOfBase64Encoding(u'+'));
    EXPECT_TRUE(Base64Encoding::isCharacterPartOfBase64Encoding(u'/'));
    EXPECT_TRUE(Base64Encoding::isCharacterPartOfBase64Encoding(u'z'));
    EXPECT_FALSE(Base64Encoding::isCharacterPartOfBase64Encoding(u'='));
    EXPECT_FALSE(Base64Encoding::isCharacterPartOfBase64Encoding(u'-'));
    EXPECT_FALSE(Base64Encoding::isCharacterPartOfBase64Encoding(u'\u00C1'));
}

TEST(Base64Encoding, RoundTripsTheEncoderAtEveryLengthAndLineLayout) {
    std::mt19937 random(7);
    for (std::size_t length = 0; length <= 200; ++length) {
        ByteData data(length);
        for (auto& byte : data)
            byte = static_cast<std::uint8_t>(random());
        for (bool newLines : {false, true}) {
            const Text encoded = bv::BVNSData::encodedBase64StringWithNewLines(data, newLines);
            ASSERT_EQ(Base64Encoding::initWithBase64EncodedString(encoded), data)
                << length << " " << newLines;
        }
    }
}
