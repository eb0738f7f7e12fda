// libFuzzer program: bytes run as a Brevant Script source and used as a message format.
// Needs: interface/Script.cpp platform/Format.cpp
#include "harness/ScriptSource.hpp"

BV_FUZZ_TARGET(bv::fuzz::scriptSource)
