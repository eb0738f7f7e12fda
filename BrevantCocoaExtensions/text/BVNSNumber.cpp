// Number constants and the numeric comparison under the name of the localized text comparison.
#include "BrevantCocoaExtensions/text/BVNSNumber.hpp"

namespace bv::BVNSNumber {

Number yes() {
    return Number::boolean(true);
}

Number no() {
    return Number::boolean(false);
}

Number zero() {
    return Number::int32(0);
}

Number one() {
    return Number::int32(1);
}

int localizedCompare(const Number& self, const Number& other) {
    return self.compare(other);
}

}  // namespace bv::BVNSNumber
