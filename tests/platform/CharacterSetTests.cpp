// The named character sets: the boundaries that are easy to get wrong (U+0085, U+00A0, U+2028, U+2029,
// U+FEFF, the tab), checked by hand, plus copy-on-write independence.
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"

#include <gtest/gtest.h>

using bv::CharacterSet;

namespace {

struct Membership {
    char16_t unit;
    bool whitespace, whitespaceAndNewline, newline, alphanumeric, punctuation, symbol;
};

}  // namespace

TEST(CharacterSet, NamedSetBoundaries) {
    const Membership table[] = {
        //  unit      ws     ws+nl  nl     alnum  punct  symbol
        {u'\t', true, true, false, false, false, false},
        {u'\n', false, true, true, false, false, false},
        {u'\r', false, true, true, false, false, false},
        {0x0B, false, true, true, false, false, false},
        {0x0C, false, true, true, false, false, false},
        {0x0E, false, false, false, false, false, false},
        {u' ', true, true, false, false, false, false},
        {0x85, false, true, true, false, false, false},      // next line: a control, yet a line break
        {0xA0, true, true, false, false, false, false},      // no-break space (Zs)
        {0x1680, true, true, false, false, false, false},    // ogham space mark (Zs)
        {0x200B, false, false, false, false, false, false},  // zero width space is Cf
        {0x2028, false, true, true, false, false, false},    // line separator (Zl)
        {0x2029, false, true, true, false, false, false},    // paragraph separator (Zp)
        {0x3000, true, true, false, false, false, false},
        {0xFEFF, false, false, false, false, false, false},  // byte order mark is Cf
        {u'0', false, false, false, true, false, false},
        {u'z', false, false, false, true, false, false},
        {0x00B2, false, false, false, true, false, false},  // superscript two (No)
        {0x0301, false, false, false, true, false, false},  // combining acute (Mn)
        {0x4E00, false, false, false, true, false, false},
        {u'_', false, false, false, false, true, false},  // connector punctuation
        {u'-', false, false, false, false, true, false},
        {u'"', false, false, false, false, true, false},
        {0x00BF, false, false, false, false, true, false},  // inverted question mark
        {u'$', false, false, false, false, false, true},
        {u'+', false, false, false, false, false, true},
        {u'^', false, false, false, false, false, true},    // Sk
        {0x00A9, false, false, false, false, false, true},  // copyright sign (So)
        {0x263A, false, false, false, false, false, true},
        {0xD800, false, false, false, false, false, false},  // a surrogate half is in no named set
    };
    const CharacterSet whitespace = CharacterSet::whitespaceCharacterSet();
    const CharacterSet whitespaceAndNewline = CharacterSet::whitespaceAndNewlineCharacterSet();
    const CharacterSet newline = CharacterSet::newlineCharacterSet();
    const CharacterSet alphanumeric = CharacterSet::alphanumericCharacterSet();
    const CharacterSet punctuation = CharacterSet::punctuationCharacterSet();
    const CharacterSet symbol = CharacterSet::symbolCharacterSet();
    for (const Membership& row : table) {
        SCOPED_TRACE(::testing::Message() << "U+" << std::hex << static_cast<int>(row.unit));
        EXPECT_EQ(whitespace.contains(row.unit), row.whitespace);
        EXPECT_EQ(whitespaceAndNewline.contains(row.unit), row.whitespaceAndNewline);
        EXPECT_EQ(newline.contains(row.unit), row.newline);
        EXPECT_EQ(alphanumeric.contains(row.unit), row.alphanumeric);
        EXPECT_EQ(punctuation.contains(row.unit), row.punctuation);
        EXPECT_EQ(symbol.contains(row.unit), row.symbol);
    }
    // Zs has 17 members in the BMP; with the tab that makes 18.
    EXPECT_EQ(whitespace.count(), 18u);
}

TEST(CharacterSet, CopiesAreIndependent) {
    CharacterSet mine = CharacterSet::whitespaceCharacterSet();
    mine.add(u'x');
    mine.remove(u' ');
    EXPECT_TRUE(mine.contains(u'x'));
    EXPECT_FALSE(mine.contains(u' '));
    const CharacterSet fresh = CharacterSet::whitespaceCharacterSet();
    EXPECT_FALSE(fresh.contains(u'x'));
    EXPECT_TRUE(fresh.contains(u' '));
    CharacterSet inverted = fresh;
    inverted.invert();
    EXPECT_EQ(inverted.count() + fresh.count(), 0x10000u);
    EXPECT_FALSE(fresh == inverted);
}
