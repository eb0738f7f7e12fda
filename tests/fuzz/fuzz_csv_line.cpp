// libFuzzer program: CSVReader::readRecord(line), the line splitter.
// Needs: documents/CSVReader.cpp text/BVNSString.cpp text/BVNSMutableString.cpp
#include "harness/CsvLine.hpp"

BV_FUZZ_TARGET(bv::fuzz::csvLine)
