// The built-in thumbnails decoded from their Base64 texts.
#include "BrevantCocoaExtensions/interface/BVUtilitiesImages.hpp"

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"

namespace bv::BVUtilitiesImages {

QImage spontaneousQuestionThumbnailImage() {
    return BVNSImage::imageForBase64EncodedString(
        BVUtilities::spontaneousQuestionThumbnailImageAsBas64String());
}

QImage answerKeyThumbnailImage() {
    return BVNSImage::imageForBase64EncodedString(BVUtilities::answerKeyThumbnailImageAsBase64String());
}

}  // namespace bv::BVUtilitiesImages
