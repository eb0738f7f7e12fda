// libFuzzer program: valueForBase36String and its inverse base36StringForValue.
// Needs: text/BVNSString.cpp
#include "harness/Base36.hpp"

BV_FUZZ_TARGET(bv::fuzz::base36)
