// libFuzzer program: Text from UTF-8 and Latin-1 bytes.
// Needs: platform/Text.cpp platform/TextEncoding.cpp
#include "harness/TextUtf8.hpp"

BV_FUZZ_TARGET(bv::fuzz::textUtf8)
