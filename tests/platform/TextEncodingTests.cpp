// Text encodings: decoding and encoding in the common encodings, and strictness (invalid bytes or
// unrepresentable characters give null, never replacement characters).
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"

#include <gtest/gtest.h>

using bv::ByteData;
using bv::Text;
using bv::TextEncoding;

namespace {

std::optional<Text> decode(std::initializer_list<std::uint8_t> bytes, TextEncoding encoding) {
    return bv::decodeText(ByteData(bytes), encoding);
}

}  // namespace

TEST(TextEncoding, DecodesEachEncoding) {
    EXPECT_EQ(decode({'h', 'i'}, TextEncoding::ASCII), Text("hi"));
    EXPECT_EQ(decode({0xC3, 0xA9, 0xE2, 0x98, 0xBA}, TextEncoding::UTF8), Text(u"\u00E9\u263A"));
    EXPECT_EQ(decode({0xF0, 0x9F, 0x98, 0x80}, TextEncoding::UTF8), Text(u"\xD83D\xDE00"));
    EXPECT_EQ(decode({0x00, 'a', 0x26, 0x3A}, TextEncoding::UTF16BigEndian), Text(u"a\u263A"));
    EXPECT_EQ(decode({'a', 0x00, 0x3A, 0x26}, TextEncoding::UTF16LittleEndian), Text(u"a\u263A"));
    EXPECT_EQ(decode({0xFF, 0xFE, 'a', 0x00}, TextEncoding::UTF16), Text("a"));  // byte-order mark honoured
    EXPECT_EQ(decode({0xFE, 0xFF, 0x00, 'a'}, TextEncoding::UTF16), Text("a"));
    EXPECT_EQ(decode({0x00, 'a'}, TextEncoding::UTF16), Text("a"));  // big-endian without a mark
    EXPECT_EQ(decode({0xE9, 0x80, 0xFF}, TextEncoding::ISOLatin1), Text(u"\u00E9\u0080\u00FF"));
    EXPECT_EQ(decode({0x80, 0x9F, 0xE9}, TextEncoding::WindowsCP1252), Text(u"\u20AC\u0178\u00E9"));
    EXPECT_EQ(decode({}, TextEncoding::ASCII), Text(""));
}

TEST(TextEncoding, InvalidBytesGiveNull) {
    EXPECT_EQ(decode({'a', 0x80}, TextEncoding::ASCII), std::nullopt);
    EXPECT_EQ(decode({0xC3}, TextEncoding::UTF8), std::nullopt);                       // cut short
    EXPECT_EQ(decode({0xC0, 0x80}, TextEncoding::UTF8), std::nullopt);                 // overlong
    EXPECT_EQ(decode({0xED, 0xA0, 0x80}, TextEncoding::UTF8), std::nullopt);           // an encoded surrogate
    EXPECT_EQ(decode({0xF4, 0x90, 0x80, 0x80}, TextEncoding::UTF8), std::nullopt);     // past U+10FFFF
    EXPECT_EQ(decode({0x00, 'a', 0x00}, TextEncoding::UTF16BigEndian), std::nullopt);  // odd length
    EXPECT_EQ(decode({0xD8, 0x00, 0x00, 'a'}, TextEncoding::UTF16BigEndian), std::nullopt);  // lone surrogate
}

TEST(TextEncoding, EncodesAndRefusesWhatCannotBeRepresented) {
    const Text text(u"caf\u00E9");
    EXPECT_EQ(bv::encodeText(text, TextEncoding::UTF8), (ByteData{'c', 'a', 'f', 0xC3, 0xA9}));
    EXPECT_EQ(bv::encodeText(text, TextEncoding::ISOLatin1), (ByteData{'c', 'a', 'f', 0xE9}));
    EXPECT_EQ(bv::encodeText(Text(u"\u20AC"), TextEncoding::WindowsCP1252), (ByteData{0x80}));
    EXPECT_EQ(bv::encodeText(Text(u"a\u263A"), TextEncoding::UTF16LittleEndian),
              (ByteData{'a', 0, 0x3A, 0x26}));
    EXPECT_EQ(bv::encodeText(Text(u"a\u263A"), TextEncoding::UTF16BigEndian), (ByteData{0, 'a', 0x26, 0x3A}));
    EXPECT_EQ(bv::encodeText(text, TextEncoding::ASCII), std::nullopt);
    EXPECT_EQ(bv::encodeText(Text(u"\u20AC"), TextEncoding::ISOLatin1), std::nullopt);
    EXPECT_EQ(bv::encodeText(Text(u"a\xD800"), TextEncoding::UTF8), std::nullopt);  // a lone surrogate
    EXPECT_EQ(bv::encodeText(Text(u"a\xD800"), TextEncoding::UTF16BigEndian), std::nullopt);
    for (TextEncoding encoding : {TextEncoding::UTF16, TextEncoding::UTF32, TextEncoding::MacOSRoman}) {
        std::optional<ByteData> bytes = bv::encodeText(text, encoding);
        ASSERT_TRUE(bytes.has_value());
        EXPECT_EQ(bv::decodeText(*bytes, encoding), text);
    }
}
