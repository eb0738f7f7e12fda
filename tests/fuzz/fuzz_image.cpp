// libFuzzer program: bytes decoded as a picture, and the picture's PNG form decoded back.
// Needs: interface/BVNSDataImages.cpp
#include "harness/ImageDecoding.hpp"

BV_FUZZ_TARGET(bv::fuzz::imageDecoding)
