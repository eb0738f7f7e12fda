// BVNSNumber: shared number constants and the comparison that sort keys naming localizedCompare use.
#pragma once

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSNumber {

// The boolean number true.
[[nodiscard]] Number yes();
// The boolean number false.
[[nodiscard]] Number no();
// The signed 32-bit number 0.
[[nodiscard]] Number zero();
// The signed 32-bit number 1.
[[nodiscard]] Number one();

// The plain numeric comparison: -1 when self is smaller, 0 when equal, 1 when larger (across kinds, so
// 1 equals 1.0 and true). Nothing locale-dependent happens; the name lets numbers sort under sort keys
// that compare texts with localizedCompare.
[[nodiscard]] int localizedCompare(const Number& self, const Number& other);

}  // namespace bv::BVNSNumber
