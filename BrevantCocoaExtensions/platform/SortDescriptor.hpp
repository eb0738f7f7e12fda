// bv::SortDescriptor: a sort key (key path, ascending flag, comparison) and stable sorting of Values by a
// list of sort keys, the first key deciding and each next one breaking the ties of the previous.
//
// Values for a key path come from bv::valueForKeyPath (dictionaries and library objects; "self" is the
// element itself). The comparisons:
//   - Compare: texts in the default mode (case-sensitive, canonically equivalent texts equal), numbers
//     numerically across kinds, dates by instant;
//   - CaseInsensitiveCompare: texts after case folding;
//   - LocalizedCompare: texts by the collation of the current locale (ICU); numbers and dates as Compare.
// An absent or null value sorts before every other value. Values of two different kinds (a text and a
// number), and values the comparison does not order (lists, data, a number under
// CaseInsensitiveCompare), throw InvalidArgumentException.
#pragma once

#include <cstddef>
#include <vector>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

struct SortDescriptor {
    enum class Comparison { Compare, CaseInsensitiveCompare, LocalizedCompare };

    Text key;  // a key or a dotted key path
    bool ascending = true;
    Comparison comparison = Comparison::Compare;

    // -1, 0 or 1 for the values of two elements under this key, its comparison and its direction.
    [[nodiscard]] int compareObjects(const Value& a, const Value& b) const;
    friend bool operator==(const SortDescriptor&, const SortDescriptor&) = default;
};

// The elements in the order of the sort keys; equal elements keep their order (the sort is stable).
[[nodiscard]] ValueArray sortedArrayUsingDescriptors(const ValueArray& elements,
                                                     const std::vector<SortDescriptor>& descriptors);
// Reorders `indexes` (positions in `elements`) as sortedArrayUsingDescriptors would order the elements
// they point at; stable.
void sortIndexesUsingDescriptors(std::vector<std::size_t>& indexes, const ValueArray& elements,
                                 const std::vector<SortDescriptor>& descriptors);

}  // namespace bv
