// libFuzzer program: drive-letter paths, one per line, converted into paths of this system.
// Needs: files/BVNSFileManagerWindowsPaths.cpp platform/PathRules.cpp
#include "harness/WindowsPaths.hpp"

BV_FUZZ_TARGET(bv::fuzz::windowsPaths)
