// libFuzzer program: reading XML property lists.
// Needs: platform/PropertyList.cpp
#include "harness/PropertyListReading.hpp"

BV_FUZZ_TARGET(bv::fuzz::propertyListReading)
