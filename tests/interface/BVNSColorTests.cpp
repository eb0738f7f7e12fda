// Colour hexadecimal texts (reading, truncating writers, every byte round trip), comparison, crayons and
// shadow dictionaries.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/interface/BVNSShadow.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

using namespace bv;

TEST(BVNSColor, ReadsAlphaFirstAfterTrimming) {
    struct Case {
        std::optional<Text> text;
        std::optional<QRgb> rgba;
    };
    const Case cases[] = {
        {Text("#FF000000"), qRgba(0, 0, 0, 255)},
        {Text("  #80FFFFFF\n"), qRgba(255, 255, 255, 128)},
        {Text("80FF0000"), qRgba(255, 0, 0, 128)},
        {Text("##FF0a0B0c#"), qRgba(10, 11, 12, 255)},
        {Text("FFzz1G00"), qRgba(0, 1, 0, 255)},  // a piece stops at its first non-digit
        {Text(""), std::nullopt},
        {Text(" \t\r\n"), std::nullopt},
        {std::nullopt, std::nullopt},
    };
    for (const Case& c : cases) {
        const auto color = BVNSColor::colorForARGBHexString(c.text);
        ASSERT_EQ(color.has_value(), c.rgba.has_value()) << (c.text ? c.text->toUtf8() : "null");
        if (color) {
            EXPECT_EQ(color->rgba(), *c.rgba) << c.text->toUtf8();
        }
    }
    EXPECT_THROW((void)BVNSColor::colorForARGBHexString(Text("FF0000")), RangeException);
}

TEST(BVNSColor, WritersTruncateAndEveryByteRoundTrips) {
    EXPECT_EQ(BVNSColor::ARGBHexString(QColor::fromRgbF(0.999f, 0, 1, 1)), Text("FFFE00FF"));
    EXPECT_EQ(BVNSColor::RGBHexString(QColor::fromRgbF(0.999f, 0, 1, 0.5f)), Text("FE00FF"));
    EXPECT_EQ(BVNSColor::hexStringWithoutPrefix(QColor(1, 2, 3)), Text("010203"));
    // A byte read from text must write back as the same byte despite the ÷ 255 × 255 in floats.
    for (int byte = 0; byte < 256; ++byte) {
        char text[9];
        std::snprintf(text, sizeof text, "%02X%02X%02X%02X", byte, byte, 255 - byte, byte);
        const QColor color = *BVNSColor::colorForARGBHexString(Text(text));
        ASSERT_EQ(BVNSColor::ARGBHexString(color), Text(text));
        ASSERT_EQ(BVNSColor::ARGBHexString(QColor(byte, byte, byte, byte)).toUtf8().substr(0, 2),
                  std::string(text, 2));
    }
}

TEST(BVNSColor, ComparesComponentsExactlyAndAlphaOnlyWhenAsked) {
    const QColor red(255, 0, 0, 255);
    EXPECT_TRUE(BVNSColor::isSameColorAsIncludeAlpha(red, QColor(255, 0, 0, 10), false));
    EXPECT_FALSE(BVNSColor::isSameColorAsIncludeAlpha(red, QColor(255, 0, 0, 10), true));
    EXPECT_FALSE(BVNSColor::isSameColorAsIncludeAlpha(red, QColor(254, 0, 0), false));
    EXPECT_FALSE(BVNSColor::isSameColorAsIncludeAlpha(red, std::nullopt, false));
    EXPECT_TRUE(BVNSColor::isSameColorAsIncludeAlpha(QColor::fromHsv(0, 255, 255), red, true));
}

TEST(BVNSColor, CrayonsByKey) {
    EXPECT_EQ(BVNSColor::crayonColorNamed(Text("Cantaloupe"))->rgb(), qRgb(0xFF, 0xCC, 0x66));
    EXPECT_EQ(BVNSColor::crayonColorNamed(Text("Sea Foam"))->rgb(), qRgb(0x00, 0xFF, 0x80));
    EXPECT_FALSE(BVNSColor::crayonColorNamed(Text("cantaloupe")));
    EXPECT_EQ(BVNSColor::crayonColorKeys().size(), 48u);
}

TEST(BVNSShadow, DictionaryRoundTripTruncatesNumbers) {
    Shadow shadow{QColor(255, 0, 0, 128), QPointF(3.7, -2.2), 4.9};
    const ValueDictionary attributes = BVNSShadow::shadowAttributes(shadow);
    EXPECT_EQ(*attributes.at(Text("Color")).text(), Text("80FF0000"));
    EXPECT_EQ(*attributes.at(Text("HorizontalOffset")).text(), Text("3"));
    EXPECT_EQ(*attributes.at(Text("VerticalOffset")).text(), Text("-2"));
    EXPECT_EQ(*attributes.at(Text("Blur")).text(), Text("4"));
    const Shadow back = BVNSShadow::shadowForAttributes(attributes);
    EXPECT_EQ(back.color->rgba(), qRgba(255, 0, 0, 128));
    EXPECT_EQ(back.offset, QPointF(3, -2));
    EXPECT_EQ(back.blurRadius, 4);

    BVNSShadow::set(shadow);
    BVNSShadow::reset();
    EXPECT_EQ(BVNSShadow::currentShadow(), Shadow{});
}
