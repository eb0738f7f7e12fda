// localizedCompare orders numbers numerically across kinds.
#include <gtest/gtest.h>

#include <cmath>

#include "BrevantCocoaExtensions/text/BVNSNumber.hpp"

using bv::Number;
namespace num = bv::BVNSNumber;

TEST(BVNSNumber, LocalizedCompareIsNumericAcrossKinds) {
    struct Case {
        Number a, b;
        int expected;
    };
    const Case cases[] = {
        {Number::int32(1), Number::float64(1.0), 0},
        {Number::boolean(true), Number::int8(1), 0},
        {Number::int32(-1), Number::uint64(1), -1},
        {Number::uint64(~0ULL), Number::int64(-1), 1},  // 2^64 - 1 is not -1
        {Number::float32(2.5F), Number::int16(2), 1},
        {Number::int64(10), Number::int64(9), 1},  // not compared as text ("10" < "9")
        {Number::float64(std::nan("")), Number::int32(0), -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(num::localizedCompare(c.a, c.b), c.expected)
            << c.a.stringValue() << " vs " << c.b.stringValue();
        EXPECT_EQ(num::localizedCompare(c.b, c.a), -c.expected);
    }
}
