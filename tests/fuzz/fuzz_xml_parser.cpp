// libFuzzer program: BVXMLParser, the collecting streaming parser, on data and on files.
// Needs: documents/BVXMLParser.cpp platform/XMLStreamParser.cpp
#include "harness/XmlParser.hpp"

BV_FUZZ_TARGET(bv::fuzz::xmlParser)
