// libFuzzer program: CSVReader on a whole file.
// Needs: documents/CSVReader.cpp text/BVNSString.cpp
#include "harness/CsvFile.hpp"

BV_FUZZ_TARGET(bv::fuzz::csvFile)
