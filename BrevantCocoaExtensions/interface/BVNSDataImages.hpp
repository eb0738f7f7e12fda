// BVNSData's picture forms: image files and images as PNG or JPEG bytes, and bytes read as a picture.
// They live in the interface library because they need Qt's image codecs; the rest of BVNSData is core.
#pragma once

#include <QImage>
#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSData {

// The file's first picture as PNG bytes; null when the file is no readable picture.
[[nodiscard]] std::optional<ByteData> PNGDataWithContentsOfFile(const Text& path);
// The picture as PNG bytes; null for a null image.
[[nodiscard]] std::optional<ByteData> PNGDataForImage(const QImage& image);
// The file's first picture as JPEG bytes at the compression factor (0.0 smallest file, 1.0 best quality).
[[nodiscard]] std::optional<ByteData> JPEGDataWithContentsOfFile(const Text& path, double compressionFactor);
// The picture as JPEG bytes at the compression factor; null for a null image.
[[nodiscard]] std::optional<ByteData> JPEGDataForImage(const QImage& image, double compressionFactor);
// The bytes read as a picture in any format the image readers know; a null image when they are none.
[[nodiscard]] QImage image(const ByteData& self);

}  // namespace bv::BVNSData
