// libFuzzer program: RFC 3339 date-time text read and written back.
// Needs: dates/RFC3339DateTime.cpp
#include "harness/Rfc3339.hpp"

BV_FUZZ_TARGET(bv::fuzz::rfc3339)
