// BVNSCharacterSet: the library's two character-set factories. The named sets (white space,
// alphanumerics, ...) are bv::CharacterSet's own.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSCharacterSet {

// Exactly "/", "\", ":", "?" and the double quote: the characters the suite's applications refuse in
// names for its online service (the library itself does not test names against it).
[[nodiscard]] CharacterSet illegalBrevantOnlineCharacterSet();

// A set of every code unit of every text of the list; an empty list gives an empty set.
[[nodiscard]] CharacterSet characterSetFromArrayOfStrings(const std::vector<Text>& texts);

}  // namespace bv::BVNSCharacterSet
