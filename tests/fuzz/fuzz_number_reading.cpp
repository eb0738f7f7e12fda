// libFuzzer program: the number readings of text.
// Needs: platform/Text.cpp platform/NumberReading.cpp
#include "harness/NumberReading.hpp"

BV_FUZZ_TARGET(bv::fuzz::numberReading)
