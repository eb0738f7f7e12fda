// One-key sort lists with the default or the case-insensitive comparison.
#include "BrevantCocoaExtensions/text/BVNSSortDescriptor.hpp"

namespace bv::BVNSSortDescriptor {

std::vector<SortDescriptor> descriptorsForKeyAscendingOrder(const Text& key, bool ascending) {
    return {SortDescriptor{key, ascending, SortDescriptor::Comparison::Compare}};
}

std::vector<SortDescriptor> descriptorsForKeyAscendingOrderCaseInsensitive(const Text& key, bool ascending,
                                                                           bool caseInsensitive) {
    if (!caseInsensitive) return descriptorsForKeyAscendingOrder(key, ascending);
    return {SortDescriptor{key, ascending, SortDescriptor::Comparison::CaseInsensitiveCompare}};
}

}  // namespace bv::BVNSSortDescriptor
