// Filter-image rotation and conversion.
#include "BrevantCocoaExtensions/interface/BVCIImage.hpp"

#include <QTransform>

namespace bv::BVCIImage {

QImage image(const CoreImage& self) {
    return self.pixels.copy();
}

CoreImage coreImageRotatedByDegrees(const CoreImage& self, double degrees) {
    if (!(degrees > 0.0 && degrees < 360.0)) return self;
    // Counter-clockwise as seen: the y axis points down, so the transform turns by the negative angle.
    QTransform rotation;
    rotation.rotate(-degrees);
    // transformed() already places the rotated extent at (0, 0), the translation that undoes its origin.
    return CoreImage{self.pixels.transformed(rotation, Qt::SmoothTransformation), QPointF(0, 0)};
}

}  // namespace bv::BVCIImage
