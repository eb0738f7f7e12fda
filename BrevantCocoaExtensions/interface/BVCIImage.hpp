// BVCIImage: the filter image (a picture with an extent that may start anywhere, the result of the image
// filters) and its operations: rotation and turning it back into an image.
#pragma once

#include <QImage>
#include <QPointF>

namespace bv {

// A picture placed in an unbounded plane: its pixels and where its extent starts.
struct CoreImage {
    QImage pixels;
    QPointF origin;
};

namespace BVCIImage {

// A new image of the extent's size holding the filter image's pixels.
[[nodiscard]] QImage image(const CoreImage& self);
// Rotated counter-clockwise by the angle, its extent moved to start at (0, 0). Only an angle strictly between
// 0 and 360 does anything: 0, 360 and anything outside give the receiver unchanged.
[[nodiscard]] CoreImage coreImageRotatedByDegrees(const CoreImage& self, double degrees);

}  // namespace BVCIImage
}  // namespace bv
