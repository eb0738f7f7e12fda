// In-place list helpers: adders, unique adds, the two move operations with their deliberate effects,
// replacements and removals.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"

using bv::Number;
using bv::Text;
using bv::Value;
using bv::ValueArray;
namespace marr = bv::BVNSMutableArray;

namespace {

ValueArray letters(const char* text) {
    ValueArray list;
    for (const char* c = text; *c != 0; ++c)
        list.emplace_back(Text(std::string(1, *c)));
    return list;
}

}  // namespace

TEST(BVNSMutableArray, AddersAppendNumbersButCharactersAsTexts) {
    ValueArray list;
    marr::addChar(list, u'A');
    marr::addChar(list, u'\u0141');  // narrowed to its low byte 0x41
    marr::addShort(list, -2);
    marr::addUnsignedLongLong(list, 5);
    marr::addFloat(list, 1.5F);
    marr::addBool(list, true);
    EXPECT_EQ(list, (ValueArray{Value("A"), Value("A"), Value(-2), Value(5), Value(1.5), Value(true)}));
    EXPECT_EQ((std::vector<Number::Kind>{list[2].number()->kind(), list[3].number()->kind(),
                                         list[4].number()->kind()}),
              (std::vector<Number::Kind>{Number::Kind::Int16, Number::Kind::UInt64, Number::Kind::Float}));

    ValueArray range;
    marr::addASCIICharactersFromTo(range, u'a', u'c');
    marr::addASCIICharactersFromTo(range, u'c', u'a');
    marr::addASCIICharactersFromTo(range, 0xFFFE, 0xFFFF);  // must stop at the last code unit
    EXPECT_EQ(range.size(), 5u);
    EXPECT_EQ(ValueArray(range.begin(), range.begin() + 3), letters("abc"));

    ValueArray numbers;
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    marr::addNumericValuesFromTo(numbers, kMax - 1, kMax);
    marr::addNumericValuesFromTo(numbers, 3, 1);
    marr::addNumericValuesFromTo(numbers, -1, 0);
    EXPECT_EQ(numbers, (ValueArray{Value(kMax - 1), Value(kMax), Value(-1), Value(0)}));

    ValueArray placeholders{Value(1)};
    marr::addNumberOfNullPlaceholders(placeholders, 2);
    marr::addObjects(placeholders, {Value("x"), Value(), Value(2)});
    EXPECT_EQ(placeholders, (ValueArray{Value(1), Value(), Value(), Value("x"), Value(), Value(2)}));
}

TEST(BVNSMutableArray, UniqueAddsCompareAsTheirNamesSay) {
    ValueArray list{Value(1), Value("Apple")};
    EXPECT_FALSE(marr::addUniqueObject(list, Value(1.0)));
    EXPECT_TRUE(marr::addUniqueObject(list, Value("1")));
    EXPECT_FALSE(marr::addUniqueStringCaseInsensitiveCompare(list, Text("APPLE"), true));
    EXPECT_TRUE(marr::addUniqueStringCaseInsensitiveCompare(list, Text("APPLE"), false));
    EXPECT_EQ(list, (ValueArray{Value(1), Value("Apple"), Value("1"), Value("APPLE")}));

    ValueArray empty;
    marr::addUniqueStringsFromArrayCaseInsensitiveCompare(empty, {Text("A"), Text("a"), Text("b")}, true);
    EXPECT_EQ(empty, (ValueArray{Value("A"), Value("b")}));
    ValueArray existing{Value("b"), Value(2)};
    marr::addUniqueStringsFromArrayCaseInsensitiveCompare(
        existing, {Text("A"), Text("a"), Text("B"), Text("A")}, false);
    EXPECT_EQ(existing, (ValueArray{Value("b"), Value(2), Value("A"), Value("a"), Value("B")}));
}

TEST(BVNSMutableArray, MoveObjectRemovesEveryEqualElementFirst) {
    struct Case {
        const char* list;
        char object;
        std::uint64_t to;
        const char* expected;
    };
    const Case cases[] = {{"ABCD", 'B', 3, "ACBD"}, {"BAB", 'B', 0, "BA"},   {"ABC", 'C', 0, "CAB"},
                          {"ABC", 'A', 3, "BCA"},   {"ABC", 'X', 1, "AXBC"}, {"ABAC", 'A', 2, "BAC"},
                          {"ABCB", 'B', 3, "ACB"}};
    for (const Case& c : cases) {
        ValueArray list = letters(c.list);
        marr::moveObjectToIndex(list, Value(Text(std::string(1, c.object))), c.to);
        EXPECT_EQ(list, letters(c.expected)) << c.list << " " << c.object << " to " << c.to;
    }
    ValueArray list = letters("ABCD");
    marr::moveObjectAtIndexToIndex(list, 1, 3);
    EXPECT_EQ(list, letters("ACBD"));
    marr::moveObjectAtIndexToIndex(list, 0, 0);  // the element passed in is also the one removed
    EXPECT_EQ(list, letters("ACBD"));
}

TEST(BVNSMutableArray, MoveObjectOutOfRangeChangesNothing) {
    ValueArray list = letters("ABA");
    EXPECT_THROW(marr::moveObjectToIndex(list, Value("A"), 3), bv::RangeException);  // [B] has no index 2
    EXPECT_THROW(marr::moveObjectToIndex(list, Value("X"), 4), bv::RangeException);
    EXPECT_THROW(marr::moveObjectAtIndexToIndex(list, 3, 0), bv::RangeException);
    EXPECT_EQ(list, letters("ABA"));
}

TEST(BVNSMutableArray, MoveObjectsRemovesFromTheOldPositionsUnadjusted) {
    struct Case {
        const char* list;
        const char* objects;
        bv::IndexSet indexes;
        const char* expected;
    };
    const Case cases[] = {
        {"ABCD", "A", {3}, "BCAD"},       {"ABCDE", "A", {4}, "BCDAE"}, {"ABCD", "AB", {2, 3}, "ABCD"},
        {"ABCDE", "BA", {3, 4}, "CBADE"},  // objects land in their order at ascending indexes
        {"ABCD", "D", {0}, "DABD"},        // moving down: the unadjusted removal drops C, as callers accept
    };
    for (const Case& c : cases) {
        ValueArray list = letters(c.list);
        marr::moveObjectsToIndexes(list, letters(c.objects), c.indexes);
        EXPECT_EQ(list, letters(c.expected)) << c.list << " " << c.objects;
    }
    ValueArray list = letters("ABCD");
    EXPECT_THROW(marr::moveObjectsToIndexes(list, letters("X"), {1}), bv::RangeException);
    EXPECT_THROW(marr::moveObjectsToIndexes(list, letters("AB"), {1}), bv::InvalidArgumentException);
    EXPECT_THROW(marr::moveObjectsToIndexes(list, letters("A"), {5}), bv::RangeException);
    EXPECT_EQ(list, letters("ABCD"));
    marr::moveObjectsToIndexes(list, list, {4, 5, 6, 7});  // the receiver as its own argument
    EXPECT_EQ(list, letters("ABCD"));
}

TEST(BVNSMutableArray, ReplacementsAndRemovalsTouchOnlyWhatTheySay) {
    ValueArray list{Value("a"), Value(1), Value("A"), Value("a")};
    EXPECT_TRUE(marr::replaceObjectWithObject(list, Value(1.0), Value("one")));
    EXPECT_FALSE(marr::replaceObjectWithObject(list, Value(2), Value("two")));
    EXPECT_TRUE(marr::replaceFirstOccurrenceOfStringWithStringCaseInsensitiveCompare(list, Text("A"),
                                                                                     Text("x"), false));
    EXPECT_EQ(list, (ValueArray{Value("a"), Value("one"), Value("x"), Value("a")}));
    EXPECT_TRUE(marr::replaceFirstOccurrenceOfStringWithStringCaseInsensitiveCompare(list, Text("A"),
                                                                                     Text("y"), true));
    EXPECT_FALSE(marr::replaceFirstOccurrenceOfStringWithStringCaseInsensitiveCompare(list, Text("z"),
                                                                                      Text("y"), true));
    marr::removeObjectWithStringCaseInsensitiveCompare(list, Text("A"), true);  // only the first match
    EXPECT_EQ(list, (ValueArray{Value("y"), Value("one"), Value("x")}));
    marr::removeObjectWithStringCaseInsensitiveCompare(list, Text("X"), false);
    EXPECT_EQ(list, (ValueArray{Value("y"), Value("one"), Value("x")}));

    ValueArray blanks{Value("a"), Value(" "), Value(""), Value(5), Value("\n\t"), Value(" b ")};
    marr::removeEmptyStrings(blanks);
    EXPECT_EQ(blanks, (ValueArray{Value("a"), Value(5), Value(" b ")}));

    ValueArray files{Value("a.txt"), Value("b.TXT"), Value("c.txt"),
                     Value(5),       Value("a.txt"), Value("d.rtf")};
    marr::removeObjectsWithPathExtensions(files, {Text("txt"), Text("rtf")});
    EXPECT_EQ(files, (ValueArray{Value("b.TXT"), Value(5)}));
    marr::removeObjectsWithPathExtension(files, Text("TXT"));
    EXPECT_EQ(files, (ValueArray{Value(5)}));
}

TEST(BVNSMutableArray, ConversionsInPlace) {
    ValueArray list{Value("a"), Value(5), Value(true), Value(1.5), Value(bv::ValueArray{})};
    marr::convertNumbersToStrings(list);
    EXPECT_EQ(list, (ValueArray{Value("a"), Value("5"), Value("1"), Value("1.5"), Value(bv::ValueArray{})}));
    marr::appendPathExtensionToStrings(list, Text("txt"));
    EXPECT_EQ(list, (ValueArray{Value("a.txt"), Value("5.txt"), Value("1.txt"), Value("1.5.txt"),
                                Value(bv::ValueArray{})}));
}
