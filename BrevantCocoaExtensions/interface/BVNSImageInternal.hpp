// Pixel and encoding helpers shared by the image, data and path units of the interface library; not
// installed.
#pragma once

#include <QImage>
#include <QSize>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"

namespace bv::BVNSImage {

namespace detail {
// The whole pixels a size covers (sizes round up).
[[nodiscard]] QSize pixelSize(const Size& size);
// A transparent image of the size (sizes round up to whole pixels); null for an empty size.
[[nodiscard]] QImage blankImage(const Size& size);
// The bytes of the picture in a Qt image format ("PNG", "JPEG", "TIFF") at a quality (-1: the writer's).
[[nodiscard]] ByteData encodedData(const QImage& image, const char* format, int quality);
// The JPEG quality (0 to 100) of a compression factor.
[[nodiscard]] int jpegQuality(double factor);
}  // namespace detail

}  // namespace bv::BVNSImage
