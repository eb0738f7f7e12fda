// libFuzzer program: object-graph store documents read against a model and written back.
// Needs: documents/ObjectGraphStore.cpp documents/ObjectGraphModel.cpp
#include "harness/ObjectGraphStore.hpp"

BV_FUZZ_TARGET(bv::fuzz::objectGraphStore)
