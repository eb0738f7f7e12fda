// Typed getters and setters on ValueDictionary: conversions of numbers and texts, absent values, the
// unsupported conversions, and the text setters with their deliberate oddities.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSDictionary.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableDictionary.hpp"

using bv::Number;
using bv::Text;
using bv::Value;
using bv::ValueDictionary;
namespace dict = bv::BVNSDictionary;
namespace mdict = bv::BVNSMutableDictionary;

namespace {

ValueDictionary with(const Value& value) {
    return ValueDictionary{{Text("k"), value}};
}

}  // namespace

TEST(BVNSDictionary, BoolForKeyReadsFalseWordsIgnoringCaseOnlyWithoutTrimming) {
    struct Case {
        const char* text;
        bool expected;
    };
    const Case cases[] = {{"N", false},     {"n", false},     {"No", false},    {"NO", false}, {"F", false},
                          {"False", false}, {"FALSE", false}, {"0", false},     {"", false},   {"Y", true},
                          {"t", true},      {"2", true},      {"00", true},     {" 0", true},  {"no ", true},
                          {"off", true},    {"nope", true},   {"False ", true}, {"true", true}};
    for (const Case& c : cases) {
        EXPECT_EQ(dict::boolForKey(with(Value(c.text)), Text("k")), c.expected) << '"' << c.text << '"';
    }
    EXPECT_FALSE(dict::boolForKey(with(Value(0)), Text("k")));
    EXPECT_TRUE(dict::boolForKey(with(Value(7)), Text("k")));
    EXPECT_TRUE(dict::boolForKey(with(Value(0.25)), Text("k")));
    EXPECT_FALSE(dict::boolForKey(with(Value(bv::Date::fromTimeIntervalSince1970(5))), Text("k")));
    EXPECT_FALSE(dict::boolForKey(with(Value(bv::ValueArray{Value(1)})), Text("k")));
    EXPECT_FALSE(dict::boolForKey(ValueDictionary{}, Text("k")));
}

TEST(BVNSDictionary, TextsReadInDecimalOrBaseZeroAsEachGetterSays) {
    ValueDictionary d{{Text("dec"), Value("012")},        {Text("hex"), Value("0x1f")},
                      {Text("neg"), Value("-1")},         {Text("junk"), Value("  -7x")},
                      {Text("float"), Value(" 1.5e2kg")}, {Text("twelve"), Value("12")}};
    EXPECT_EQ(dict::integerForKey(d, Text("dec")), 12);
    EXPECT_EQ(dict::integerForKey(d, Text("junk")), -7);
    EXPECT_EQ(dict::integerForKey(d, Text("hex")), 0);  // decimal reading stops at the "x"
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("twelve")), 12u);
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("dec")), 10u);
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("hex")), 31u);
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("neg")), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(dict::longForKey(d, Text("dec")), 10);
    EXPECT_EQ(dict::longLongForKey(d, Text("hex")), 31);
    EXPECT_EQ(dict::unsignedLongForKey(d, Text("hex")), 31u);
    EXPECT_EQ(dict::unsignedLongLongForKey(d, Text("dec")), 10u);
    EXPECT_EQ(dict::longForKey(d, Text("neg")), -1);
    EXPECT_FLOAT_EQ(dict::floatForKey(d, Text("float")), 150.0F);
}

TEST(BVNSDictionary, NumbersConvertByTruncationAndWrapAround) {
    EXPECT_EQ(dict::charForKey(with(Value(300)), Text("k")), 44);
    EXPECT_EQ(dict::charForKey(with(Value(-3.7)), Text("k")), -3);
    EXPECT_EQ(dict::unsignedCharForKey(with(Value(-1)), Text("k")), 255);
    EXPECT_EQ(dict::shortForKey(with(Value(70000)), Text("k")), 4464);
    EXPECT_EQ(dict::unsignedShortForKey(with(Value(-1)), Text("k")), 65535);
    EXPECT_EQ(dict::integerForKey(with(Value(3.99)), Text("k")), 3);
    EXPECT_EQ(dict::integerForKey(with(Value(-3.99)), Text("k")), -3);
    EXPECT_EQ(dict::unsignedIntegerForKey(with(Value(-1)), Text("k")),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(dict::longLongForKey(with(Value(Number::uint64(1ULL << 63))), Text("k")),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(dict::integerForKey(with(Value(true)), Text("k")), 1);
    EXPECT_FLOAT_EQ(dict::floatForKey(with(Value(7)), Text("k")), 7.0F);
}

TEST(BVNSDictionary, AbsentOrNullValuesReadAsZero) {
    for (const ValueDictionary& d : {ValueDictionary{}, with(Value())}) {
        EXPECT_FALSE(dict::boolForKey(d, Text("k")));
        EXPECT_EQ(dict::charForKey(d, Text("k")), 0);
        EXPECT_EQ(dict::unsignedShortForKey(d, Text("k")), 0);
        EXPECT_EQ(dict::integerForKey(d, Text("k")), 0);
        EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("k")), 0u);
        EXPECT_EQ(dict::unsignedLongLongForKey(d, Text("k")), 0u);
        EXPECT_EQ(dict::floatForKey(d, Text("k")), 0.0F);
        EXPECT_EQ(dict::pointForKey(d, Text("k")), bv::Point{});
        EXPECT_EQ(dict::rangeForKey(d, Text("k")), bv::Range{});
        EXPECT_EQ(dict::rectForKey(d, Text("k")), (bv::Rect{{0, 0}, {0, 0}}));
    }
    // Only an exact key matches.
    EXPECT_EQ(dict::integerForKey(with(Value(5)), Text("K")), 0);
}

TEST(BVNSDictionary, ConversionsAValueLacksThrow) {
    ValueDictionary d{{Text("text"), Value("12")},
                      {Text("date"), Value(bv::Date::fromTimeIntervalSince1970(1))},
                      {Text("list"), Value(bv::ValueArray{})},
                      {Text("number"), Value(3)},
                      {Text("point"), Value(bv::Point{1, 2})}};
    EXPECT_THROW((void)dict::charForKey(d, Text("text")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::unsignedCharForKey(d, Text("text")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::shortForKey(d, Text("text")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::unsignedShortForKey(d, Text("text")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::pointForKey(d, Text("text")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::rectForKey(d, Text("point")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::sizeForKey(d, Text("number")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::integerForKey(d, Text("date")), bv::UnrecognizedOperationException);
    EXPECT_THROW((void)dict::floatForKey(d, Text("list")), bv::UnrecognizedOperationException);
    // The two getters that test the kind answer 0 instead.
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("date")), 0u);
    EXPECT_EQ(dict::unsignedIntegerForKey(d, Text("list")), 0u);
    EXPECT_FALSE(dict::boolForKey(d, Text("point")));
}

TEST(BVNSMutableDictionary, NumberSettersStoreTheNamedKindAndReplace) {
    ValueDictionary d;
    using Kind = Number::Kind;
    auto kindOf = [&d] { return d.at(Text("k")).number()->kind(); };
    mdict::setBoolForKey(d, true, Text("k"));
    EXPECT_EQ(kindOf(), Kind::Bool);
    mdict::setCharForKey(d, -1, Text("k"));
    EXPECT_EQ(kindOf(), Kind::Int8);
    mdict::setUnsignedShortForKey(d, 1, Text("k"));
    EXPECT_EQ(kindOf(), Kind::UInt16);
    mdict::setUnsignedIntForKey(d, 1, Text("k"));
    EXPECT_EQ(kindOf(), Kind::UInt32);
    mdict::setLongForKey(d, 1, Text("k"));
    EXPECT_EQ(kindOf(), Kind::Int64);
    mdict::setUnsignedLongLongForKey(d, 1, Text("k"));
    EXPECT_EQ(kindOf(), Kind::UInt64);
    mdict::setFloatForKey(d, 1.5F, Text("k"));
    EXPECT_EQ(kindOf(), Kind::Float);
    EXPECT_EQ(d.size(), 1u);
    mdict::setRectForKey(d, bv::Rect{{1, 2}, {3, 4}}, Text("r"));
    mdict::setRangeForKey(d, bv::Range{5, 6}, Text("g"));
    mdict::setPointForKey(d, bv::Point{-1, 0.5}, Text("p"));
    mdict::setSizeForKey(d, bv::Size{7, 8}, Text("s"));
    EXPECT_EQ(dict::rectForKey(d, Text("r")), (bv::Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(dict::rangeForKey(d, Text("g")), (bv::Range{5, 6}));
    EXPECT_EQ(dict::pointForKey(d, Text("p")), (bv::Point{-1, 0.5}));
    EXPECT_EQ(dict::sizeForKey(d, Text("s")), (bv::Size{7, 8}));
}

TEST(BVNSMutableDictionary, TextSettersWriteWithTheirFormats) {
    ValueDictionary d;
    auto stored = [&] { return *d.at(Text("k")).text(); };
    mdict::setUnsignedCharToStringForKey(d, 65, Text("k"));
    EXPECT_EQ(stored(), Text("A"));
    mdict::setUnsignedCharToStringForKey(d, 49, Text("k"));
    EXPECT_EQ(stored(), Text("1"));
    mdict::setUnsignedCharToStringForKey(d, 0xE9, Text("k"));
    EXPECT_EQ(stored(), Text("\xC3\xA9"));  // the byte read as Latin-1
    mdict::setShortToStringForKey(d, -5, Text("k"));
    EXPECT_EQ(stored(), Text("-5"));
    mdict::setUnsignedShortToStringForKey(d, 65535, Text("k"));
    EXPECT_EQ(stored(), Text("65535"));
    mdict::setIntToStringForKey(d, std::numeric_limits<std::int32_t>::min(), Text("k"));
    EXPECT_EQ(stored(), Text("-2147483648"));
    mdict::setUnsignedIntToStringForKey(d, 4294967295U, Text("k"));
    EXPECT_EQ(stored(), Text("4294967295"));
    mdict::setIntegerToStringForKey(d, std::numeric_limits<std::int64_t>::min(), Text("k"));
    EXPECT_EQ(stored(), Text("-9223372036854775808"));
    mdict::setUnsignedIntegerToStringForKey(d, std::numeric_limits<std::uint64_t>::max(), Text("k"));
    EXPECT_EQ(stored(), Text("18446744073709551615"));
    mdict::setFloatToStringForKey(d, 1.5F, Text("k"));
    EXPECT_EQ(stored(), Text("1.500000"));
    mdict::setFloatToStringForKey(d, 0.1F, Text("k"));
    EXPECT_EQ(stored(), Text("0.100000"));
    mdict::setFloatToStringForKey(d, -2.25F, Text("k"));
    EXPECT_EQ(stored(), Text("-2.250000"));
}

TEST(BVNSMutableDictionary, LongTextSettersKeepOnlyThirtyTwoBits) {
    ValueDictionary d;
    auto stored = [&] { return *d.at(Text("k")).text(); };
    const std::pair<std::int64_t, const char*> signedCases[] = {
        {4294967297LL, "1"}, {4294967296LL, "0"}, {2147483648LL, "-2147483648"}, {-1, "-1"}, {123, "123"}};
    for (const auto& [value, expected] : signedCases) {
        mdict::setLongToStringForKey(d, value, Text("k"));
        EXPECT_EQ(stored(), Text(expected)) << value;
    }
    const std::pair<std::uint64_t, const char*> unsignedCases[] = {
        {4294967301ULL, "5"},
        {4294967295ULL, "4294967295"},
        {std::numeric_limits<std::uint64_t>::max(), "4294967295"}};
    for (const auto& [value, expected] : unsignedCases) {
        mdict::setUnsignedLongToStringForKey(d, value, Text("k"));
        EXPECT_EQ(stored(), Text(expected)) << value;
    }
}

TEST(BVNSDictionary, XmlDescriptionAndPermissions) {
    EXPECT_EQ(dict::xmlDescription(ValueDictionary{}),
              Text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                   "<plist version=\"1.0\">\n<dict/>\n</plist>\n"));
    ValueDictionary permissions = dict::universallyWritablePermissions();
    ASSERT_EQ(permissions.size(), 1u);
    EXPECT_EQ(dict::integerForKey(permissions, Text("NSFilePosixPermissions")), 511);
}
