// libFuzzer program: the library's lenient Base64 decoder.
// Needs: text/Base64Encoding.cpp platform/Base64.cpp
#include "harness/Base64Decoding.hpp"

BV_FUZZ_TARGET(bv::fuzz::base64Decoding)
