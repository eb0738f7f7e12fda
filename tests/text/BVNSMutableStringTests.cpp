// BVNSMutableString: the CSV field writer and the in-place set edits.
#include "BrevantCocoaExtensions/text/BVNSMutableString.hpp"

#include <gtest/gtest.h>

namespace m = bv::BVNSMutableString;
using bv::CharacterSet;
using bv::Text;

TEST(BVNSMutableString, AppendCSVQuotesEveryField) {
    Text line;
    m::appendCSV(line, Text());
    EXPECT_EQ(line, Text("\"\""));
    m::appendCSV(line, std::nullopt);
    EXPECT_EQ(line, Text("\"\",\"\""));

    Text fields;
    m::appendCSV(fields, Text("a"));
    m::appendCSV(fields, std::nullopt);
    m::appendCSV(fields, Text("say \"hi\""));
    m::appendCSV(fields, Text(" x,\r\ny "));
    m::appendCSV(fields, Text("\"\""));
    EXPECT_EQ(fields, Text("\"a\",\"\",\"say \"\"hi\"\"\",\" x,\r\ny \",\"\"\"\"\"\""));

    // The separator depends only on the length: a text ending in a line break still gets one.
    Text afterBreak("\"a\"\n");
    m::appendCSV(afterBreak, Text("b"));
    EXPECT_EQ(afterBreak, Text("\"a\"\n,\"b\""));
}

TEST(BVNSMutableString, SetEditsInPlace) {
    const CharacterSet illegal = CharacterSet::fromCharactersInText(Text("/:"));
    Text name("a/b:c/");
    m::replaceCharactersInSetWithChar(name, illegal, u'_');
    EXPECT_EQ(name, Text("a_b_c_"));

    Text narrowed("a/b");
    m::replaceCharactersInSetWithChar(narrowed, illegal, u'\u263A');  // only the low byte 0x3A is written
    EXPECT_EQ(narrowed, Text("a:b"));

    Text wide(u"\u263A-\u00E9/");
    m::deleteCharactersInSet(wide, illegal);
    EXPECT_EQ(wide, Text(u"\u263A-\u00E9"));
    m::deleteCharactersInSet(wide, CharacterSet::punctuationCharacterSet());
    EXPECT_EQ(wide, Text(u"\u263A\u00E9"));
}
