// libFuzzer program: typed text checked as a number or a fraction.
// Needs: dates/BVUtilities.cpp dates/BVUtilitiesStates.cpp
#include "harness/NumberValidation.hpp"

BV_FUZZ_TARGET(bv::fuzz::numberValidation)
