// libFuzzer program: repeated extensions removed from a path (first line the extension, then the path).
// Needs: files/BVNSFileManagerPaths.cpp
#include "harness/PathExtension.hpp"

BV_FUZZ_TARGET(bv::fuzz::pathExtension)
