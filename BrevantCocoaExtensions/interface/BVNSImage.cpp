// Image loading, scaling, filters and encoding on QImage.
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImageInternal.hpp"

#include <QBuffer>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QImageReader>
#include <QImageWriter>
#include <QUrl>
#include <algorithm>
#include <cmath>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"
#include "BrevantCocoaExtensions/interface/BVNSDataImages.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"

namespace bv::BVNSImage {

namespace {

// The text key under which an image records that it is in the flipped state.
const QString flippedKey = QStringLiteral("BrevantFlipped");

QImage withFlippedState(QImage image, bool flipped) {
    image.setText(flippedKey, flipped ? QStringLiteral("1") : QStringLiteral("0"));
    return image;
}

QImage paintedOver(QImage canvas, const QImage& picture) {
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(canvas.rect()), picture);
    painter.end();
    return canvas;
}

// The receiver as 8-bit straight-alpha ARGB pixels, for the filters that compute per pixel.
QImage straightPixels(const QImage& image) {
    return image.convertToFormat(QImage::Format_ARGB32);
}

// The same pixels, without the text keys (so the flipped state never lands in an encoded file).
QImage withoutTextKeys(const QImage& image) {
    if (image.textKeys().isEmpty()) return image;
    QImage bare(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    bare.setColorTable(image.colorTable());
    return bare;
}

double luminance(QRgb pixel) {
    return (0.2125 * qRed(pixel) + 0.7154 * qGreen(pixel) + 0.0721 * qBlue(pixel)) / 255.0;
}

int toByte(double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255.0));
}

QRgb interpolated(QRgb pixel, const QColor& color) {
    const auto mix = [](double c, int p) { return c * (1.0 - p / 255.0) + p / 255.0; };
    return qRgba(toByte(mix(color.redF(), qRed(pixel))), toByte(mix(color.greenF(), qGreen(pixel))),
                 toByte(mix(color.blueF(), qBlue(pixel))), toByte(qAlpha(pixel) / 255.0 * color.alphaF()));
}

QImage readImage(const Text& path) {
    QImageReader reader(toQString(path));
    return reader.read();
}

}  // namespace

namespace detail {

QSize pixelSize(const Size& size) {
    return QSize(static_cast<int>(std::ceil(std::max(size.width, 0.0))),
                 static_cast<int>(std::ceil(std::max(size.height, 0.0))));
}

QImage blankImage(const Size& size) {
    const QSize pixels = pixelSize(size);
    if (pixels.isEmpty()) return QImage();
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

ByteData encodedData(const QImage& image, const char* format, int quality) {
    if (image.isNull()) return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    if (!writer.write(withoutTextKeys(image))) return {};
    return ByteData(bytes.begin(), bytes.end());
}

int jpegQuality(double factor) {
    return static_cast<int>(std::lround(std::clamp(factor, 0.0, 1.0) * 100.0));
}

}  // namespace detail

std::vector<Text> imageFileTypes() {
    std::vector<Text> types;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        const std::string lower = format.toLower().toStdString();
        types.emplace_back(lower);
        types.emplace_back(format.toUpper().toStdString());
    }
    return types;
}

bool isImageFile(const Text& path) {
    const QString suffix = QFileInfo(toQString(path)).suffix();
    if (suffix.isEmpty()) return false;
    const std::vector<Text> types = imageFileTypes();
    return std::find(types.begin(), types.end(), Text(suffix.toStdString())) != types.end();
}

Rect bounds(const QImage& self) {
    const QSizeF size = self.deviceIndependentSize();
    return Rect{{0, 0}, {size.width(), size.height()}};
}

bool isFlipped(const QImage& self) {
    return self.text(flippedKey) == QStringLiteral("1");
}

QImage imageWithPreservedDimensionsForImageRepFlipped(const QImage& rep, bool flipped) {
    if (rep.isNull()) return QImage();
    QImage drawn = paintedOver(detail::blankImage(Size{double(rep.width()), double(rep.height())}), rep);
    if (flipped) drawn = drawn.mirrored(false, true);
    return withFlippedState(std::move(drawn), flipped);
}

QImage newImageWithPreservedDimensionsForImageRepFlipped(const QImage& rep, bool flipped) {
    return imageWithPreservedDimensionsForImageRepFlipped(rep, flipped);
}

QImage imageForPathFlipped(const Text& path, bool flipped) {
    return imageWithPreservedDimensionsForImageRepFlipped(readImage(path), flipped);
}

QImage newImageForPathFlipped(const Text& path, bool flipped) {
    return imageForPathFlipped(path, flipped);
}

QImage imageForURLFlipped(const Text& url, bool flipped) {
    const QUrl address(toQString(url));
    if (!address.isLocalFile()) return QImage();
    return imageForPathFlipped(Text(address.toLocalFile().toStdString()), flipped);
}

QImage imageNamedForBundle(const Text& name, const Bundle& bundle) {
    // The name as given (with its extension), else the name with each image file type.
    if (isImageFile(name)) {
        if (const auto path = bundle.pathForResource(name, Text()))
            return imageForPathFlipped(Text(*path), false);
    }
    for (const Text& type : imageFileTypes()) {
        if (const auto path = bundle.pathForResource(name, type))
            return imageForPathFlipped(Text(*path), false);
    }
    return QImage();
}

QImage imageNamedInFrameworkNamed(const Text& name, const Text& framework) {
    const std::shared_ptr<Bundle> bundle = BVNSBundle::frameworkBundleWithName(framework);
    return bundle ? imageNamedForBundle(name, *bundle) : QImage();
}

QImage imageWithColorImageSize(const QColor& color, const Size& size) {
    QImage image = detail::blankImage(size);
    if (!image.isNull()) image.fill(color);
    return image;
}

QImage imageWithBackgroundColor(const QImage& self, const QColor& color) {
    return paintedOver(imageWithColorImageSize(color, bounds(self).size), self);
}

QImage imageWithAppliedGradientImage(const QImage& self, const QImage& gradient) {
    if (self.isNull() || gradient.isNull()) return QImage();
    const QImage table = straightPixels(gradient);
    const int row = table.height() / 2;
    QImage result = straightPixels(self);
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const int column = static_cast<int>(std::lround(luminance(line[x]) * (table.width() - 1)));
            const QRgb mapped = table.pixel(column, row);
            line[x] = qRgba(qRed(mapped), qGreen(mapped), qBlue(mapped), qAlpha(line[x]));
        }
    }
    return result;
}

QImage imageWithBlendedColor(const QImage& self, const QColor& color) {
    // Qt's multiply composition is exactly the blend: s × b + s × (1 − ab) + b × (1 − as).
    QImage result = imageWithColorImageSize(color, bounds(self).size);
    if (result.isNull()) return result;
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.drawImage(QRectF(result.rect()), self);
    return result;
}

QImage imageWithAppliedLinearInterpolationOfColor(const QImage& self, const QColor& color) {
    QImage bitmap = straightPixels(self);
    const QColor rgb = color.toRgb();
    for (int x = 0; x < bitmap.width(); ++x) {
        for (int y = 0; y < bitmap.height(); ++y) {
            const QRgb pixel = bitmap.pixel(x, y);
            if (qAlpha(pixel) > 0) bitmap.setPixel(x, y, interpolated(pixel, rgb));
        }
    }
    return bitmap;
}

QImage flippedImage(const QImage& self) {
    return withFlippedState(self.mirrored(false, true), !isFlipped(self));
}

QImage newFlippedImage(const QImage& self) {
    return flippedImage(self);
}

QImage imageWithMaximumSize(const QImage& self, const Size& maximumSize) {
    const Rect current = bounds(self);
    const Size clamped{std::min(current.size.width, maximumSize.width),
                       std::min(current.size.height, maximumSize.height)};
    return imageScaledToSize(self, clamped);
}

void setSizeToImageRepSize(QImage& self) {
    self.setDevicePixelRatio(1.0);
}

QImage imageScaledToSize(const QImage& self, const Size& size) {
    const QSize pixels = detail::pixelSize(size);
    if (self.isNull() || pixels.isEmpty()) return QImage();
    // Drawing the whole picture over a transparent image at full opacity leaves exactly the smoothly
    // scaled pixels, so the scaling is done once, by the high-quality scaler, into the new image.
    return self.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage newImageScaledToSize(const QImage& self, const Size& size) {
    return imageScaledToSize(self, size);
}

ByteData brevantPNGData(const QImage& self) {
    return detail::encodedData(self, "PNG", -1);
}

ByteData JPEGDataWithCompressionFactor(const QImage& self, double factor) {
    return detail::encodedData(self, "JPEG", detail::jpegQuality(factor));
}

ByteData dataForBestRepresentationOfPathExtension(const QImage& self, const Text& extension) {
    const QString lower = toQString(extension).toLower();
    if (lower == QStringLiteral("jpeg") || lower == QStringLiteral("jpg")) {
        return JPEGDataWithCompressionFactor(self, 0.5);
    }
    if (lower == QStringLiteral("png")) return brevantPNGData(self);
    return detail::encodedData(self, "TIFF", -1);
}

QImage imageFromCGImageRef(const QPixmap& pixmap) {
    return pixmap.toImage();
}

CoreImage coreImage(const QImage& self) {
    return CoreImage{self.copy(), QPointF(0, 0)};
}

QImage imageForBase64EncodedString(const Text& string) {
    return BVNSData::image(Base64Encoding::dataWithBase64EncodedString(string));
}

QImage newImageForBase64EncodedString(const Text& string) {
    return imageForBase64EncodedString(string);
}

Text base64EncodedPNGString(const QImage& self) {
    return BVNSData::encodedBase64String(brevantPNGData(self));
}

Text base64EncodedJPEGStringWithCompressionFactor(const QImage& self, double factor) {
    return BVNSData::encodedBase64String(JPEGDataWithCompressionFactor(self, factor));
}

Text newBase64EncodedJPEGStringWithCompressionFactor(const QImage& self, double factor) {
    return base64EncodedJPEGStringWithCompressionFactor(self, factor);
}

QImage imageOfStringWithAttributes(const Text& string, const TextAttributes& attributes) {
    const QString text = toQString(string);
    const QSizeF drawnSize = QFontMetricsF(attributes.font).size(0, text);
    QImage image = detail::blankImage(Size{drawnSize.width(), drawnSize.height()});
    if (image.isNull()) return image;
    QPainter painter(&image);
    painter.setFont(attributes.font);
    painter.setPen(attributes.foregroundColor);
    painter.drawText(QRectF(image.rect()), Qt::AlignLeft | Qt::AlignTop, text);
    return image;
}

QImage imageMirroredVertically(const QImage& self, bool vertically) {
    return vertically ? self.mirrored(true, false) : self.mirrored(false, true);
}

QImage imageRotatedAtAngle(const QImage& self, double angle) {
    const QImage upright = isFlipped(self) ? flippedImage(self) : self;
    return BVCIImage::image(BVCIImage::coreImageRotatedByDegrees(coreImage(upright), angle));
}

QImage imageCenteredInArea(const QImage& self, const Size& area) {
    QImage canvas = detail::blankImage(area);
    if (canvas.isNull()) return canvas;
    QPainter painter(&canvas);
    const Rect own = bounds(self);
    painter.drawImage(QPointF((area.width - own.size.width) / 2.0, (area.height - own.size.height) / 2.0),
                      self);
    return canvas;
}

void drawWithinBoundsUsingLayout(const QImage& self, QPainter& painter, const Rect& bounds,
                                 ImageLayout layout) {
    const QRectF target(bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height);
    QSizeF size = self.deviceIndependentSize();
    switch (layout) {
        case ImageLayout::ScaledToFill:
            size = target.size();
            break;
        case ImageLayout::ScaledProportionally: {
            const Rect fitted = BVUtilities::boundsOfRectScaledProportionallyToSize(
                bounds, Size{size.width(), size.height()});
            size = QSizeF(fitted.size.width, fitted.size.height);
            break;
        }
        case ImageLayout::HalfSizeCentered:
            size /= 2.0;
            break;
        case ImageLayout::Centered:
            break;
    }
    const QPointF origin(target.x() + (target.width() - size.width()) / 2.0,
                         target.y() + (target.height() - size.height()) / 2.0);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(origin, size), self);
    painter.restore();
}

}  // namespace bv::BVNSImage
