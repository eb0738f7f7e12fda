// Helpers shared by BVNSArray and BVNSMutableArray. Internal to the library: not installed.
#pragma once

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSArray::detail {

// The path extension of a path: the text after the last "." of the last component (trailing "/" ignored);
// empty when that component has no ".".
[[nodiscard]] Text pathExtensionOf(const Text& path);

}  // namespace bv::BVNSArray::detail
