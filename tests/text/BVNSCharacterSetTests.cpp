// BVNSCharacterSet: the online-name set holds exactly five characters; sets from lists of texts.
#include "BrevantCocoaExtensions/text/BVNSCharacterSet.hpp"

#include <gtest/gtest.h>

namespace c = bv::BVNSCharacterSet;
using bv::Text;

TEST(BVNSCharacterSet, IllegalOnlineCharactersAreExactlyFive) {
    const bv::CharacterSet set = c::illegalBrevantOnlineCharacterSet();
    EXPECT_EQ(set.count(), 5u);
    for (char16_t unit : {u'/', u'\\', u':', u'?', u'"'})
        EXPECT_TRUE(set.contains(unit)) << char(unit);
    for (char16_t unit : {u'*', u'\'', u'|', u'<', u'\u2215'})
        EXPECT_FALSE(set.contains(unit));
}

TEST(BVNSCharacterSet, SetFromArrayOfStrings) {
    EXPECT_TRUE(c::characterSetFromArrayOfStrings({}).empty());
    EXPECT_TRUE(c::characterSetFromArrayOfStrings({Text(), Text()}).empty());
    const bv::CharacterSet set =
        c::characterSetFromArrayOfStrings({Text("ab"), Text(u"b\xD83D\xDE00"), Text("")});
    EXPECT_EQ(set.count(), 4u);  // a, b and the two surrogate halves
    EXPECT_TRUE(set.contains(u'\xD83D'));
    EXPECT_TRUE(set.contains(u'\xDE00'));
    EXPECT_FALSE(set.contains(u'c'));
}
