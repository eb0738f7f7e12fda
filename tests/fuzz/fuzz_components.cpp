// libFuzzer program: componentsSeparatedByStrings.
// Needs: text/BVNSString.cpp
#include "harness/Components.hpp"

BV_FUZZ_TARGET(bv::fuzz::components)
