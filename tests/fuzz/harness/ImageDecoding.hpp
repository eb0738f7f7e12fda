// Fuzz harness: bytes read as a picture by every image reader Qt has (PNG, JPEG, GIF, BMP, TIFF, ICO, ...).
// A picture that decodes has pixels, and its PNG form decodes back to the same size and pixels.
#pragma once

#include <QImage>
#include <QImageReader>

#include "BrevantCocoaExtensions/interface/BVNSDataImages.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "Common.hpp"

namespace bv::fuzz {

inline void imageDecoding(const std::uint8_t* data, std::size_t size) {
    // Pictures that claim huge sizes are refused before allocation, so a run stays fast and small.
    static const bool limited = [] {
        QImageReader::setAllocationLimit(64);
        return true;
    }();
    (void)limited;
    const QImage image = BVNSData::image(ByteData(data, data + size));
    if (image.isNull()) return;
    check(image.width() > 0 && image.height() > 0, "a decoded picture has pixels");
    const QImage back = BVNSData::image(BVNSImage::brevantPNGData(image));
    check(back.size() == image.size(), "the PNG form keeps the size");
    check(back.convertToFormat(QImage::Format_ARGB32) == image.convertToFormat(QImage::Format_ARGB32),
          "the PNG form keeps the pixels");
}

}  // namespace bv::fuzz
