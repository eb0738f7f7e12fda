// libFuzzer program: XML documents parsed into the node tree (plain and recovering) and written back.
// Needs: platform/XMLNode.cpp platform/XMLParsing.cpp platform/XMLWriting.cpp
#include "harness/XmlDocument.hpp"

BV_FUZZ_TARGET(bv::fuzz::xmlDocument)
