// Image byte forms of BVNSData.
#include "BrevantCocoaExtensions/interface/BVNSDataImages.hpp"

#include <QBuffer>
#include <QImageReader>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImageInternal.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv::BVNSData {

namespace {
QImage firstPictureOfFile(const Text& path) {
    QImageReader reader(toQString(path));
    return reader.read();
}

std::optional<ByteData> encoded(const QImage& image, const char* format, int quality) {
    if (image.isNull()) return std::nullopt;
    ByteData bytes = BVNSImage::detail::encodedData(image, format, quality);
    if (bytes.empty()) return std::nullopt;
    return bytes;
}
}  // namespace

std::optional<ByteData> PNGDataWithContentsOfFile(const Text& path) {
    return PNGDataForImage(firstPictureOfFile(path));
}

std::optional<ByteData> PNGDataForImage(const QImage& image) {
    return encoded(image, "PNG", -1);
}

std::optional<ByteData> JPEGDataWithContentsOfFile(const Text& path, double compressionFactor) {
    return JPEGDataForImage(firstPictureOfFile(path), compressionFactor);
}

std::optional<ByteData> JPEGDataForImage(const QImage& image, double compressionFactor) {
    return encoded(image, "JPEG", BVNSImage::detail::jpegQuality(compressionFactor));
}

QImage image(const ByteData& self) {
    if (self.empty()) return QImage();
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(self.data()),
                                               static_cast<qsizetype>(self.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return reader.read();
}

}  // namespace bv::BVNSData
