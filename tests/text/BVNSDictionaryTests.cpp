// Typed getters and setters on ValueDictionary: conversions of numbers and texts, absent values, the
// unsupported conversions, and the text setters with their deliberate oddities.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
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

const Text k("k");

ValueDictionary with(const Value& value) {
    return ValueDictionary{{k, value}};
}

}  // namespace

TEST(BVNSDictionary, BoolForKeyReadsFalseWordsIgnoringCaseOnlyWithoutTrimming) {
    const std::pair<const char*, bool> cases[] = {
        {"N", false},     {"n", false},     {"No", false},    {"NO", false}, {"F", false},
        {"False", false}, {"FALSE", false}, {"0", false},     {"", false},   {"Y", true},
        {"t", true},      {"2", true},      {"00", true},     {" 0", true},  {"no ", true},
        {"off", true},    {"nope", true},   {"False ", true}, {"true", true}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(dict::boolForKey(with(Value(text)), k), expected) << '"' << text << '"';
    EXPECT_FALSE(dict::boolForKey(with(Value(0)), k));
    EXPECT_TRUE(dict::boolForKey(with(Value(7)), k));
    EXPECT_TRUE(dict::boolForKey(with(Value(0.25)), k));
    EXPECT_FALSE(dict::boolForKey(with(Value(bv::Date::fromTimeIntervalSince1970(5))), k));
    EXPECT_FALSE(dict::boolForKey(with(Value(bv::ValueArray{Value(1)})), k));
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
    EXPECT_EQ(dict::charForKey(with(Value(300)), k), 44);
    EXPECT_EQ(dict::charForKey(with(Value(-3.7)), k), -3);
    EXPECT_EQ(dict::unsignedCharForKey(with(Value(-1)), k), 255);
    EXPECT_EQ(dict::shortForKey(with(Value(70000)), k), 4464);
    EXPECT_EQ(dict::unsignedShortForKey(with(Value(-1)), k), 65535);
    EXPECT_EQ(dict::integerForKey(with(Value(3.99)), k), 3);
    EXPECT_EQ(dict::integerForKey(with(Value(-3.99)), k), -3);
    EXPECT_EQ(dict::unsignedIntegerForKey(with(Value(-1)), k), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(dict::longLongForKey(with(Value(Number::uint64(1ULL << 63))), k),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(dict::integerForKey(with(Value(true)), k), 1);
    EXPECT_EQ(dict::integerForKey(with(Value(5)), Text("K")), 0);  // only an exact key matches
}

TEST(BVNSDictionary, AbsentOrNullValuesReadAsZero) {
    for (const ValueDictionary& d : {ValueDictionary{}, with(Value())}) {
        EXPECT_FALSE(dict::boolForKey(d, k));
        EXPECT_EQ(dict::charForKey(d, k), 0);
        EXPECT_EQ(dict::unsignedShortForKey(d, k), 0);
        EXPECT_EQ(dict::integerForKey(d, k), 0);
        EXPECT_EQ(dict::unsignedIntegerForKey(d, k), 0u);
        EXPECT_EQ(dict::unsignedLongLongForKey(d, k), 0u);
        EXPECT_EQ(dict::floatForKey(d, k), 0.0F);
        EXPECT_EQ(dict::pointForKey(d, k), bv::Point{});
        EXPECT_EQ(dict::rangeForKey(d, k), bv::Range{});
        EXPECT_EQ(dict::rectForKey(d, k), (bv::Rect{{0, 0}, {0, 0}}));
    }
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
    const std::pair<std::function<void()>, Kind> cases[] = {
        {[&] { mdict::setBoolForKey(d, true, k); }, Kind::Bool},
        {[&] { mdict::setCharForKey(d, -1, k); }, Kind::Int8},
        {[&] { mdict::setUnsignedShortForKey(d, 1, k); }, Kind::UInt16},
        {[&] { mdict::setUnsignedIntForKey(d, 1, k); }, Kind::UInt32},
        {[&] { mdict::setLongForKey(d, 1, k); }, Kind::Int64},
        {[&] { mdict::setUnsignedLongLongForKey(d, 1, k); }, Kind::UInt64},
        {[&] { mdict::setFloatForKey(d, 1.5F, k); }, Kind::Float},
    };
    for (const auto& [set, kind] : cases) {
        set();
        EXPECT_EQ(d.at(k).number()->kind(), kind);
    }
    EXPECT_EQ(d.size(), 1u);
    mdict::setRectForKey(d, bv::Rect{{1, 2}, {3, 4}}, Text("r"));
    mdict::setRangeForKey(d, bv::Range{5, 6}, Text("g"));
    EXPECT_EQ(d.at(Text("r")), Value(bv::Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(d.at(Text("g")), Value(bv::Range{5, 6}));
}

TEST(BVNSMutableDictionary, TextSettersWriteWithTheirFormats) {
    ValueDictionary d;
    constexpr auto kLongMax = std::numeric_limits<std::uint64_t>::max();
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { mdict::setUnsignedCharToStringForKey(d, 65, k); }, "A"},
        {[&] { mdict::setUnsignedCharToStringForKey(d, 49, k); }, "1"},
        {[&] { mdict::setUnsignedCharToStringForKey(d, 0xE9, k); }, "\xC3\xA9"},  // the byte as Latin-1
        {[&] { mdict::setShortToStringForKey(d, -5, k); }, "-5"},
        {[&] { mdict::setUnsignedShortToStringForKey(d, 65535, k); }, "65535"},
        {[&] { mdict::setIntToStringForKey(d, std::numeric_limits<std::int32_t>::min(), k); }, "-2147483648"},
        {[&] { mdict::setUnsignedIntToStringForKey(d, 4294967295U, k); }, "4294967295"},
        {[&] { mdict::setIntegerToStringForKey(d, std::numeric_limits<std::int64_t>::min(), k); },
         "-9223372036854775808"},
        {[&] { mdict::setUnsignedIntegerToStringForKey(d, kLongMax, k); }, "18446744073709551615"},
        {[&] { mdict::setFloatToStringForKey(d, 1.5F, k); }, "1.500000"},
        {[&] { mdict::setFloatToStringForKey(d, 0.1F, k); }, "0.100000"},
        {[&] { mdict::setFloatToStringForKey(d, -2.25F, k); }, "-2.250000"},
        // The long setters keep only 32 bits.
        {[&] { mdict::setLongToStringForKey(d, 4294967297LL, k); }, "1"},
        {[&] { mdict::setLongToStringForKey(d, 4294967296LL, k); }, "0"},
        {[&] { mdict::setLongToStringForKey(d, 2147483648LL, k); }, "-2147483648"},
        {[&] { mdict::setLongToStringForKey(d, -1, k); }, "-1"},
        {[&] { mdict::setUnsignedLongToStringForKey(d, 4294967301ULL, k); }, "5"},
        {[&] { mdict::setUnsignedLongToStringForKey(d, 4294967295ULL, k); }, "4294967295"},
        {[&] { mdict::setUnsignedLongToStringForKey(d, kLongMax, k); }, "4294967295"},
    };
    for (const auto& [set, expected] : cases) {
        set();
        EXPECT_EQ(*d.at(k).text(), Text(expected));
    }
}

TEST(BVNSDictionary, XmlDescriptionAndPermissions) {
    EXPECT_EQ(dict::xmlDescription(ValueDictionary{}),
              Text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                   "<plist version=\"1.0\">\n<dict/>\n</plist>\n"));
    EXPECT_EQ(dict::universallyWritablePermissions(),
              (ValueDictionary{{Text("NSFilePosixPermissions"), Value(511)}}));
}
