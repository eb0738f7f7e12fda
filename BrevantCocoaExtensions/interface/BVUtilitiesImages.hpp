// BVUtilities' picture forms: the two built-in thumbnails as images. They live in the interface library
// because decoding JPEG needs Qt; their Base64 texts are BVUtilities' own (core).
#pragma once

#include <QImage>

namespace bv::BVUtilitiesImages {

// The built-in spontaneous-question thumbnail (480 × 360).
[[nodiscard]] QImage spontaneousQuestionThumbnailImage();
// The built-in answer-key thumbnail (640 × 480).
[[nodiscard]] QImage answerKeyThumbnailImage();

}  // namespace bv::BVUtilitiesImages
