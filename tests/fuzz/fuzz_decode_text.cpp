// libFuzzer program: bytes to Text in every supported text encoding.
// Needs: platform/Text.cpp platform/TextEncoding.cpp
#include "harness/DecodeText.hpp"

BV_FUZZ_TARGET(bv::fuzz::decodeText)
