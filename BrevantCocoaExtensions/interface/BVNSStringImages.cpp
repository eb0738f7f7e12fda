// Image forms of BVNSString.
#include "BrevantCocoaExtensions/interface/BVNSStringImages.hpp"

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

namespace bv::BVNSString {

Text newFlippedBase64String(const Text& self) {
    const QImage flipped = BVNSImage::newFlippedImage(BVNSImage::newImageForBase64EncodedString(self));
    return BVNSData::newEncodedBase64String(BVNSImage::brevantPNGData(flipped));
}

Text flippedBase64String(const Text& self) {
    return newFlippedBase64String(self);
}

QImage imageWithAttributes(const Text& self, const TextAttributes& attributes) {
    return BVNSImage::imageOfStringWithAttributes(self, attributes);
}

}  // namespace bv::BVNSString
