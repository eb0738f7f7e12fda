// BVNSString's picture forms: a text drawn as an image, and a Base64 picture flipped top to bottom.
// They live in the interface library because they need Qt; the rest of BVNSString is core.
#pragma once

#include <QImage>

#include "BrevantCocoaExtensions/interface/TextAttributes.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSString {

// The receiver is a Base64 picture: decoded, flipped top to bottom, written as PNG and encoded again as
// one line of Base64. Text that holds no picture gives the empty text.
[[nodiscard]] Text newFlippedBase64String(const Text& self);
[[nodiscard]] Text flippedBase64String(const Text& self);
// The receiver drawn in the attributes on an image of its drawn size.
[[nodiscard]] QImage imageWithAttributes(const Text& self, const TextAttributes& attributes);

}  // namespace bv::BVNSString
