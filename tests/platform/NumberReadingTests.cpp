// Number readings of text: boolValue's first-letter rule, the decimal readings' saturation, and the C
// readings with base 0 (hexadecimal, octal, saturation).
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using bv::Text;

TEST(NumberReading, BoolValue) {
    const std::pair<const char*, bool> cases[] = {
        {"", false},   {"Y", true},    {"yes", true},        {"t", true},    {"Tuesday", true}, {"5", true},
        {"-1", true},  {"2abc", true}, {" 1", true},         {"\n+7", true}, {"0", false},      {"NO", false},
        {"no", false}, {"on", false},  {"false", false},     {" y", false},  {" true", false},  {"00", false},
        {"-", false},  {"0x1", false}, {"4294967296", true},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(bv::boolValue(Text(text)), expected) << '"' << text << '"';
}

TEST(NumberReading, DecimalReadingsSaturate) {
    EXPECT_EQ(bv::intValue(Text("  -42x")), -42);
    EXPECT_EQ(bv::intValue(Text("2147483647")), 2147483647);
    EXPECT_EQ(bv::intValue(Text("2147483648")), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(bv::intValue(Text("-2147483649")), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(bv::intValue(Text("99999999999999999999999")), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(bv::integerValue(Text("9223372036854775808")), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(bv::integerValue(Text("-9223372036854775808")), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(bv::integerValue(Text("-99999999999999999999")), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(bv::intValue(Text("abc")), 0);
    EXPECT_DOUBLE_EQ(bv::doubleValue(Text(" 1.5e2x")), 150.0);
    EXPECT_DOUBLE_EQ(bv::doubleValue(Text("-.5")), -0.5);
    EXPECT_DOUBLE_EQ(bv::doubleValue(Text("3e")), 3.0);
}

TEST(NumberReading, CReadingsUseBaseZero) {
    EXPECT_EQ(bv::longValue(Text("0x10")), 16);
    EXPECT_EQ(bv::longValue(Text("0X1f")), 31);
    EXPECT_EQ(bv::longValue(Text("017")), 15);
    EXPECT_EQ(bv::longValue(Text("019")), 1);  // octal stops at the 9
    EXPECT_EQ(bv::longValue(Text("19")), 19);
    EXPECT_EQ(bv::longValue(Text("  -8")), -8);
    EXPECT_EQ(bv::longValue(Text("+0x")), 0);
    EXPECT_EQ(bv::longValue(Text("x1")), 0);
    EXPECT_EQ(bv::longLongValue(Text("99999999999999999999")), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(bv::longLongValue(Text("-99999999999999999999")), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(bv::unsignedLongValue(Text("0xFFFFFFFFFFFFFFFF")), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(bv::unsignedLongLongValue(Text("18446744073709551616")),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(bv::unsignedLongLongValue(Text("-1")),
              std::numeric_limits<std::uint64_t>::max());  // as strtoull
    EXPECT_EQ(bv::longValue(Text(u"12\u00B3")), 12);       // a non-ASCII digit stops the reading
}
