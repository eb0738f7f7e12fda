// libFuzzer program: the platform's standard Base64 decoder.
// Needs: platform/Base64.cpp
#include "harness/PlatformBase64.hpp"

BV_FUZZ_TARGET(bv::fuzz::platformBase64)
