// BVNSSortDescriptor: one-key sort lists, ready for sortedArrayUsingDescriptors and list controllers.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/platform/SortDescriptor.hpp"

namespace bv::BVNSSortDescriptor {

// One sort key: the key (or dotted key path), the direction, and the default comparison (compare).
[[nodiscard]] std::vector<SortDescriptor> descriptorsForKeyAscendingOrder(const Text& key, bool ascending);
// With caseInsensitive, one sort key comparing texts after case folding; without, the previous operation.
[[nodiscard]] std::vector<SortDescriptor> descriptorsForKeyAscendingOrderCaseInsensitive(
    const Text& key, bool ascending, bool caseInsensitive);

}  // namespace bv::BVNSSortDescriptor
