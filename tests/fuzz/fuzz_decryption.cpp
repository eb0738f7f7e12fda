// libFuzzer program: decrypting cipher bytes.
// Needs: files/BVEncryption.cpp files/CDSA.cpp
#include "harness/Decryption.hpp"

BV_FUZZ_TARGET(bv::fuzz::decryption)
