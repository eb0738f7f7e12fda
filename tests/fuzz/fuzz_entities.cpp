// libFuzzer program: stringByUnescapingEntities and stringByUnescapingEntitiesAndControlCharacters.
// Needs: text/BVNSString.cpp
#include "harness/Entities.hpp"

BV_FUZZ_TARGET(bv::fuzz::entities)
