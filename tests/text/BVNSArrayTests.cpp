// List reading, whole-text searches, path extensions, number searches and list building.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"

using bv::NotFound;
using bv::Number;
using bv::Text;
using bv::Value;
using bv::ValueArray;
using bv::ValueDictionary;
namespace arr = bv::BVNSArray;

namespace {

using Texts = std::vector<Text>;

}  // namespace

TEST(BVNSArray, ReadingEndsOfEmptyAndFilledLists) {
    ValueArray empty;
    EXPECT_FALSE(arr::firstObject(empty));
    EXPECT_FALSE(arr::randomObject(empty));
    EXPECT_EQ(arr::lastIndex(empty), 0u);
    EXPECT_TRUE(arr::objectIndexes(empty).empty());
    EXPECT_EQ(arr::lastIndex(ValueArray{Value("a")}), 0u);
    ValueArray three{Value("a"), Value(), Value(3)};
    EXPECT_EQ(arr::firstObject(three), Value("a"));
    EXPECT_EQ(arr::lastIndex(three), 2u);
    EXPECT_EQ(arr::objectIndexes(three), (bv::IndexSet{0, 1, 2}));
    // Every element is reachable by the random pick (a miss in 300 draws has probability (2/3)^300).
    std::set<std::string> seen;
    for (int i = 0; i < 300; ++i)
        seen.insert(arr::randomObject(three)->description().toUtf8());
    EXPECT_EQ(seen, (std::set<std::string>{"a", "<null>", "3"}));
}

TEST(BVNSArray, IndexesOfObjectsTakeTheFirstEqualElement) {
    ValueArray list{Value("A"), Value("B"), Value("A"), Value(1)};
    EXPECT_EQ(arr::indexesOfObjects(list, ValueArray{Value("A"), Value(1.0), Value("A")}),
              (bv::IndexSet{0, 3}));
    EXPECT_THROW((void)arr::indexesOfObjects(list, ValueArray{Value("a")}), bv::RangeException);
}

TEST(BVNSArray, ObjectsForKeySkipElementsWithoutAValue) {
    ValueArray records{Value(ValueDictionary{{Text("name"), Value("Ann")}}), Value(ValueDictionary{}),
                       Value(ValueDictionary{{Text("name"), Value("Bob")}, {Text("age"), Value(9)}})};
    EXPECT_EQ(arr::objectsForKey(records, Text("name")), (ValueArray{Value("Ann"), Value("Bob")}));
    EXPECT_EQ(arr::objectsForKey(records, Text("age")), (ValueArray{Value(9)}));
    EXPECT_THROW((void)arr::objectsForKey(ValueArray{Value("text")}, Text("name")),
                 bv::UnrecognizedOperationException);
}

TEST(BVNSArray, TypedGettersConvertAsTheDictionaryGettersDo) {
    ValueArray list{Value("012"), Value("0x10"), Value(300), Value(bv::Date()), Value(), Value(" 2.5")};
    EXPECT_EQ(arr::integerAtIndex(list, 0), 12);  // decimal
    EXPECT_EQ(arr::longAtIndex(list, 0), 10);     // base 0: octal
    EXPECT_EQ(arr::longLongAtIndex(list, 1), 16);
    EXPECT_EQ(arr::unsignedLongAtIndex(list, 1), 16u);
    EXPECT_EQ(arr::unsignedlongLongAtIndex(list, 0), 10u);
    EXPECT_EQ(arr::unsignedIntegerAtIndex(list, 1), 16u);
    EXPECT_EQ(arr::unsignedIntegerAtIndex(list, 3), 0u);  // a date reads as 0 here
    EXPECT_EQ(arr::charAtIndex(list, 2), 44);
    EXPECT_EQ(arr::unsignedCharAtIndex(list, 2), 44);
    EXPECT_EQ(arr::shortAtIndex(list, 2), 300);
    EXPECT_EQ(arr::unsignedShortAtIndex(list, 4), 0);
    EXPECT_FLOAT_EQ(arr::floatAtIndex(list, 5), 2.5F);
    EXPECT_THROW((void)arr::charAtIndex(list, 0), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)arr::integerAtIndex(list, 3), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)arr::integerAtIndex(list, 6), bv::RangeException);
    EXPECT_THROW((void)arr::unsignedIntegerAtIndex(list, NotFound), bv::RangeException);
}

TEST(BVNSArray, TextSearchesCompareWholeTextsAndSkipOtherKinds) {
    ValueArray list{Value(5), Value("abc"), Value("ABC"),
                    Value("Stra\xC3\x9F"
                          "e")};
    EXPECT_EQ(arr::indexOfStringObjectCaseInsensitiveCompare(list, Text("ABC"), false), 2u);
    EXPECT_EQ(arr::indexOfStringObjectCaseInsensitiveCompare(list, Text("ABC"), true), 1u);
    EXPECT_EQ(arr::indexOfStringObjectCaseInsensitiveCompare(list, Text("STRASSE"), true), 3u);
    EXPECT_EQ(arr::indexOfStringObjectCaseInsensitiveCompare(list, Text("5"), true), NotFound);
    EXPECT_EQ(arr::stringObjectCaseInsensitiveCompare(list, Text("aBc"), true), Text("abc"));
    EXPECT_FALSE(arr::stringObjectCaseInsensitiveCompare(list, Text("aBc"), false));
    EXPECT_FALSE(arr::containsStringCaseInsensitiveCompare(ValueArray{Value("abc")}, Text("ab"), true));
    EXPECT_FALSE(arr::containsAnyStringFromCaseInsensitiveCompare(list, {}, true));
    EXPECT_FALSE(arr::containsAnyStringFromCaseInsensitiveCompare(list, (Texts{"x", "Abc"}), false));
    EXPECT_TRUE(arr::containsAnyStringFromCaseInsensitiveCompare(list, (Texts{"x", "Abc"}), true));
    EXPECT_TRUE(arr::containsAnyStringFromCaseInsensitiveCompare(list, (Texts{"x", "ABC"}), false));
}

TEST(BVNSArray, PathExtensionsComeFromTheLastComponent) {
    ValueArray paths{Value("a.txt"),    Value("dir.d/file"), Value("archive.tar.GZ"),
                     Value("noext"),    Value("doc.pdf/"),   Value(5),
                     Value(".profile"), Value("file.")};
    EXPECT_EQ(arr::pathExtensions(paths), (Texts{"txt", "", "GZ", "", "pdf", "profile", ""}));
    EXPECT_TRUE(arr::containsPathExtension(paths, Text("gz")));
    EXPECT_TRUE(arr::containsPathExtension(paths, Text("PDF")));
    EXPECT_FALSE(arr::containsPathExtension(paths, Text("d")));
    EXPECT_FALSE(arr::containsPathExtension(paths, Text("tar")));
    EXPECT_TRUE(arr::containsAnyPathExtensions(paths, (Texts{"zip", "TXT"})));
    EXPECT_FALSE(arr::containsAnyPathExtensions(paths, (Texts{"zip"})));
    EXPECT_FALSE(arr::containsAnyPathExtensions(paths, {}));
}

TEST(BVNSArray, NumberSearchesSkipTextsAndCompareAsSixtyFourBits) {
    ValueArray list{Value("5"), Value(7), Value(-1), Value(2.9)};
    EXPECT_FALSE(arr::containsInt(list, 5));
    EXPECT_TRUE(arr::containsInt(list, 7));
    EXPECT_TRUE(arr::containsInt(list, 2));  // 2.9 truncates
    EXPECT_TRUE(arr::containsLong(list, -1));
    EXPECT_FALSE(arr::containsUnsignedInt(list, 4294967295U));  // -1 is 2^64 - 1, not 2^32 - 1
    EXPECT_TRUE(arr::containsUnsignedLong(list, std::numeric_limits<std::uint64_t>::max()));
    EXPECT_TRUE(arr::containsUnsignedInt(ValueArray{Value(Number::uint32(4294967295U))}, 4294967295U));
}

TEST(BVNSArray, DividingIntoGroups) {
    ValueArray seven{Value(1), Value(2), Value(3), Value(4), Value(5), Value(6), Value(7)};
    EXPECT_EQ(arr::arrayDividedIntoGroupsOf(seven, 3),
              (std::vector<ValueArray>{ValueArray{Value(1), Value(2), Value(3)},
                                       ValueArray{Value(4), Value(5), Value(6)}, ValueArray{Value(7)}}));
    EXPECT_EQ(arr::arrayDividedIntoGroupsOf(ValueArray(seven.begin(), seven.begin() + 6), 3)->size(), 2u);
    EXPECT_EQ(arr::arrayDividedIntoGroupsOf(seven, 100)->front(), seven);
    EXPECT_EQ(arr::arrayDividedIntoGroupsOf(seven, std::numeric_limits<std::uint64_t>::max())->size(), 1u);
    EXPECT_FALSE(arr::arrayDividedIntoGroupsOf(seven, 0));
    EXPECT_FALSE(arr::arrayDividedIntoGroupsOf(ValueArray{}, 3));
}

TEST(BVNSArray, BuildingTextListsDropsOtherKinds) {
    ValueArray receiver{Value("ignored")};
    EXPECT_EQ(
        arr::arrayWithUniqueStringsFromArrayCaseInsensitiveCompare(receiver, (Texts{"A", "a", "b"}), true),
        (ValueArray{Value("A"), Value("b")}));
    EXPECT_EQ(
        arr::arrayWithUniqueStringsFromArrayCaseInsensitiveCompare(receiver, (Texts{"A", "a", "A"}), false),
        (ValueArray{Value("A"), Value("a")}));
    ValueArray mixed{Value(" a-b "), Value(3), Value("\xE2\x98\xBA-x")};  // U+263A narrows to ":"
    EXPECT_EQ(
        arr::arrayByRemovingFromEachObjectCharactersInSet(mixed, bv::CharacterSet::fromCharactersInText("-")),
        (Texts{" ab ", ":x"}));
    EXPECT_EQ(arr::arrayByRemovingFromEachStringLeadingOccurrencesOfCharacter(
                  ValueArray{Value("00120"), Value(0)}, u'0'),
              (Texts{"12"}));
    EXPECT_EQ(
        arr::arrayByTrimmingEachStringCharactersInSet(ValueArray{Value(" x y\n"), Value(1), Value("  ")},
                                                      bv::CharacterSet::whitespaceAndNewlineCharacterSet()),
        (Texts{"x y", ""}));
}

TEST(BVNSArray, SortedOnKeyIsAscendingAndStable) {
    auto record = [](const char* name, int order) {
        return Value(ValueDictionary{{Text("name"), Value(name)}, {Text("order"), Value(order)}});
    };
    ValueArray records{record("b", 1), record("a", 2), record("b", 3), record("a", 4)};
    EXPECT_EQ(arr::arraySortedOnKey(records, Text("name")),
              (ValueArray{record("a", 2), record("a", 4), record("b", 1), record("b", 3)}));
}
