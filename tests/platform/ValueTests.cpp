// Values: numeric equality across kinds, C-like conversions, and the counted set's order and counts.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

using namespace bv;

TEST(Value, NumbersCompareAndHashByValueAcrossKinds) {
    EXPECT_EQ(Value(1), Value(1.0));
    EXPECT_EQ(Value(true), Value(Number::uint8(1)));
    EXPECT_EQ(Value(1).hash(), Value(1.0).hash());
    EXPECT_EQ(Value(Number::uint64(~0ULL)), Value(Number::uint64(~0ULL)));
    EXPECT_NE(Value(Number::uint64(~0ULL)), Value(Number::int64(-1)));  // same bits, different values
    EXPECT_LT(Number::int64(-1).compare(Number::uint64(~0ULL)), 0);
    EXPECT_NE(Value(Text("1")), Value(1));  // a text is never equal to a number
    EXPECT_EQ(Value(ValueArray{1, "a"}), Value(ValueArray{1.0, "a"}));
}

TEST(Value, ConversionsTruncateWrapAndNeverInvokeUndefinedBehaviour) {
    EXPECT_EQ(Number::float64(-2.9).int64Value(), -2);
    EXPECT_EQ(Number::int32(300).as<std::uint8_t>(), 44);
    EXPECT_EQ(Number::int32(-1).as<std::uint16_t>(), 0xFFFF);
    EXPECT_EQ(Number::float64(1e300).int64Value(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Number::float64(std::nan("")).int64Value(), 0);
    EXPECT_EQ(Number::float32(0.1f).stringValue(), Text("0.1"));
    EXPECT_EQ(Number::boolean(true).stringValue(), Text("1"));
    EXPECT_EQ(Number::uint64(~0ULL).stringValue(), Text("18446744073709551615"));
}

TEST(Value, DescriptionsOfCollections) {
    ValueDictionary dictionary{{Text("b"), Value(2)}, {Text("a"), Value(ValueArray{Value("x"), Value()})}};
    EXPECT_EQ(Value(dictionary).description(), Text("{a = (x, <null>); b = 2; }"));
    EXPECT_EQ(Value(ByteData{0x0a, 0x1b, 0, 0, 0xff}).description(), Text("<0a1b0000 ff>"));
}

TEST(ValueCountedSet, CountsEnumerateInFirstInsertionOrderAndSurviveRemoval) {
    ValueCountedSet set(ValueArray{"b", "a", "b", 1, 1.0, "c"});
    ASSERT_EQ(set.size(), 4u);
    EXPECT_EQ(set.entries()[0].value, Value("b"));
    EXPECT_EQ(set.countFor("b"), 2u);
    EXPECT_EQ(set.countFor(true), 2u);  // 1, 1.0 and true are one value
    EXPECT_EQ(set.countFor("zzz"), 0u);
    set.remove("a");
    set.remove("missing");
    EXPECT_EQ(set.allObjects(), (ValueArray{"b", 1, "c"}));
    EXPECT_EQ(set.countFor("c"), 1u);  // the index still answers after the shift
    set.remove("b");
    set.remove("b");
    set.add("b");
    EXPECT_EQ(set.allObjects(), (ValueArray{1, "c", "b"}));  // re-added values go to the end
}

TEST(Exceptions, EachIsOneStandardExceptionAndCarriesItsName) {
    try {
        throw RangeException("index 3 beyond bounds");
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "index 3 beyond bounds");
        const auto* named = dynamic_cast<const Exception*>(&caught);
        ASSERT_NE(named, nullptr);
        EXPECT_EQ(named->name(), "NSRangeException");
    }
    try {
        assertionFailure("-[CSVReader fieldValueForName:]", "<CSVReader>", "CSVReader", 260, "Invalid name");
    } catch (const InternalInconsistencyException& caught) {
        EXPECT_EQ(caught.fileStem(), "CSVReader");
        EXPECT_EQ(caught.line(), 260);
        EXPECT_EQ(caught.description(), "Invalid name");
    }
}
