// The message formatter: "%@", printf directives with C's narrowing, positions, and its failure.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Format.hpp"

using bv::Text;
using bv::Value;

TEST(Format, FillsDirectivesAsPrintfDoesWithValuesForAt) {
    const struct {
        const char* format;
        bv::ValueArray arguments;
        const char* expected;
    } cases[] = {
        {"%@ scored %@", {Value("Ada"), Value(3)}, "Ada scored 3"},
        {"Line #%d is malformed.", {Value(12)}, "Line #12 is malformed."},
        {"%d|%ld|%hhd", {Value(4294967297LL), Value(4294967297LL), Value(300)}, "1|4294967297|44"},
        {"%u %x %X %o", {Value(-1), Value(255), Value(255), Value(8)}, "4294967295 ff FF 10"},
        {"[%5d|%-4d|%05.1f]", {Value(42), Value(7), Value(3.14159)}, "[   42|7   |003.1]"},
        {"%2$@ before %1$@", {Value("one"), Value("two")}, "two before one"},
        {"100%% of %@, %s", {Value(), Value("é")}, "100% of (null), é"},
        {"%c%C", {Value(65), Value(0x263A)}, "A\u263A"},
        {"%y stays, so does a last %", {}, "%y stays, so does a last %"},
        {"%123456d is no width", {Value(1)}, "%123456d is no width"},
        {"%@", {Value(bv::ValueArray{Value(1), Value("b")})}, "(1, b)"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(bv::stringWithFormatArguments(Text(c.format), c.arguments), Text(c.expected)) << c.format;
    EXPECT_EQ(bv::stringWithFormat(Text("%@ of %u: %.2f"), std::string("3"), 4u, 0.5f), Text("3 of 4: 0.50"));
}

TEST(Format, DirectiveWithoutArgumentThrows) {
    EXPECT_THROW((void)bv::stringWithFormat(Text("%@ and %@"), 1), bv::InvalidArgumentException);
    EXPECT_THROW((void)bv::stringWithFormat(Text("%3$@"), 1, 2), bv::InvalidArgumentException);
}
