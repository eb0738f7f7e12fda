// bv::IndexSet: a set of list positions in ascending order, each at most once (the platform's index set).
#pragma once

#include <cstddef>
#include <set>

namespace bv {

using IndexSet = std::set<std::size_t>;

}  // namespace bv
