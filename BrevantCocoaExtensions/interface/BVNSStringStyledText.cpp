// Styled-text form of BVNSString.
#include "BrevantCocoaExtensions/interface/BVNSStringStyledText.hpp"

#include "BrevantCocoaExtensions/interface/BVNSAttributedString.hpp"

namespace bv::BVNSString {

AttributedString attributedString(const Text& self) {
    return BVNSAttributedString::attributedStringForString(self);
}

}  // namespace bv::BVNSString
