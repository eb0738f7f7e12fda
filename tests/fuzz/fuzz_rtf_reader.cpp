// libFuzzer program: bytes read as RTF, and what reads written and read again.
// Needs: interface/RTFReader.cpp interface/RTFWriter.cpp
#include "harness/RtfReading.hpp"

BV_FUZZ_TARGET(bv::fuzz::rtfReading)
