// libFuzzer program: hexadecimal text to bytes, in both modes.
// Needs: text/BVNSData.cpp
#include "harness/HexReading.hpp"

BV_FUZZ_TARGET(bv::fuzz::hexReading)
