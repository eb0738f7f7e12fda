// BVNSSet: helpers over a bv::ValueSet: the texts of a named value of each member, the uniqueness check
// that reports a validation error, and a random member.
#pragma once

#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/ValueSet.hpp"

namespace bv::BVNSSet {

// Each member's value for the key (bv::valueForKey: dictionaries and library objects), counted: absent and
// null values are skipped, texts are added as they are, other values as their description text.
[[nodiscard]] ValueCountedSet stringValuesForKey(const ValueSet& self, const Text& key);
// True when no two members have the same text for the attribute. Otherwise appends to `errors` the error
// with domain "data validation", code 1550 and the description "duplicate '<displayName>' found: <the
// duplicated texts as a list description>", and answers false.
bool assertUniqueAttributeDisplayNameErrors(const ValueSet& self, const Text& attribute,
                                            const Text& displayName, std::vector<Error>& errors);
// A uniformly chosen member (as BVNSArray::randomObject); nullopt for an empty set.
[[nodiscard]] std::optional<Value> anyRandomObject(const ValueSet& self);

}  // namespace bv::BVNSSet
