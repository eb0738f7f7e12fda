// BVNSString's styled-text form: the receiver as styled text. It lives in the interface library because
// styled text is built on Qt's formats; the rest of BVNSString is core.
#pragma once

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSString {

// The receiver as styled text with no attributes (BVNSAttributedString::attributedStringForString).
[[nodiscard]] AttributedString attributedString(const Text& self);

}  // namespace bv::BVNSString
