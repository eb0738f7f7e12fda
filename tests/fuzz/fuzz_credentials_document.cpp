// libFuzzer program: reading the stored credentials document.
// Needs: files/BVFileManagerCredentials.cpp
#include "harness/CredentialsDocument.hpp"

BV_FUZZ_TARGET(bv::fuzz::credentialsDocument)
