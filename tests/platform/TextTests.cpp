// Text: UTF-8 round trips, the three comparison modes and case mapping.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

using bv::CompareMode;
using bv::NotFound;
using bv::Text;

TEST(Text, Utf8RoundTripAndInvalidSequencesBecomeReplacementCharacters) {
    EXPECT_EQ(Text("h\xC3\xA9llo \xE2\x98\xBA").toUtf8(), "h\xC3\xA9llo \xE2\x98\xBA");
    EXPECT_EQ(Text("\xF0\x9F\x98\x80").length(), 2u);  // a surrogate pair is two code units
    Text broken(
        "a\xFF"
        "b\xC3");
    EXPECT_EQ(broken.units(), (std::u16string{u'a', 0xFFFD, u'b', 0xFFFD}));
}

TEST(Text, SearchInEachMode) {
    Text composed("caf\xC3\xA9 au lait");  // é precomposed
    Text decomposed("cafe\xCC\x81");       // e + combining acute
    EXPECT_EQ(composed.find(decomposed, CompareMode::Literal).location, NotFound);
    EXPECT_EQ(composed.find(decomposed, CompareMode::Default), (bv::Range{0, 4}));
    EXPECT_EQ(Text(decomposed).find(Text("caf\xC3\xA9"), CompareMode::Default), (bv::Range{0, 5}));
    // A match never splits a character from its combining marks.
    EXPECT_EQ(decomposed.find(Text("cafe"), CompareMode::Default).location, NotFound);
    EXPECT_EQ(Text("Stra\xC3\x9F"
                   "e")
                  .find(Text("STRASSE"), CompareMode::CaseInsensitive),
              (bv::Range{0, 6}));
    EXPECT_EQ(Text("xxPARIS").find(Text("paris"), CompareMode::CaseInsensitive), (bv::Range{2, 5}));
    EXPECT_EQ(Text("abc").find(Text(""), CompareMode::Literal).location, NotFound);
    EXPECT_EQ(Text("abcabc").find(Text("c"), CompareMode::Literal, 3).location, 5u);
    EXPECT_TRUE(Text("Paris").equals(Text("pArIs"), CompareMode::CaseInsensitive));
    EXPECT_FALSE(Text("Paris").equals(Text("pArIs"), CompareMode::Default));
}

TEST(Text, FullCaseMappingChangesLengths) {
    EXPECT_EQ(Text("stra\xC3\x9F"
                   "e")
                  .uppercased(),
              Text("STRASSE"));
    EXPECT_EQ(Text("\xC3\x9F").caseFolded(), Text("ss"));
    EXPECT_EQ(Text("ABC").lowercased(), Text("abc"));
}

TEST(Text, OutOfBoundsAccessThrowsRangeException) {
    Text text("abc");
    EXPECT_THROW((void)text.at(3), bv::RangeException);
    EXPECT_THROW((void)text.substring(2, 2), std::out_of_range);
    EXPECT_EQ(text.substring(1, 2), Text("bc"));
}
