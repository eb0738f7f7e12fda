// Thumbnail nodes: their pictures, border, JPEG form and selection.
#include "BrevantCocoaExtensions/interface/BVThumbnail.hpp"

#include <QPainter>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"

namespace bv {

BVThumbnail::BVThumbnail(Text identifier, QObject* client, ClientAction action)
    : client_(client), action_(std::move(action)), identifier_(std::move(identifier)) {}

std::shared_ptr<BVThumbnail> BVThumbnail::initWithIdentifierThumbnailClientClientAction(
    const Text& identifier, QObject* client, ClientAction action) {
    return std::make_shared<BVThumbnail>(identifier, client, std::move(action));
}

BVNode::NodePointer BVThumbnail::newNodeOfSameClass() const {
    return std::make_shared<BVThumbnail>();
}

QImage BVThumbnail::newThumbnailImageBasedOnImageScaleToSize(const QImage& image, const Size& size) {
    if (image.isNull()) return QImage();
    return BVNSImage::imageScaledToSize(image, size);
}

QImage BVThumbnail::newThumbnailImageBasedOnImage(const QImage& image) {
    return newThumbnailImageBasedOnImageScaleToSize(image, defaultThumbnailSize());
}

QImage BVThumbnail::thumbnailImageBasedOnImageScaleToSize(const QImage& image, const Size& size) {
    return newThumbnailImageBasedOnImageScaleToSize(image, size);
}

QImage BVThumbnail::thumbnailImageBasedOnImage(const QImage& image) {
    return newThumbnailImageBasedOnImage(image);
}

void BVThumbnail::setThumbnailImage(const QImage& image) {
    if (image.isNull()) {
        setBlankThumbnailImage();
        return;
    }
    image_ = image.copy();
    setDesiredNodeHeight(static_cast<float>(BVNSImage::bounds(image_).size.height));
}

void BVThumbnail::setBlankThumbnailImage() {
    image_ = BVNSImage::imageWithColorImageSize(QColor(Qt::white), defaultThumbnailSize());
}

QImage BVThumbnail::borderedThumbnailImage() const {
    QImage bordered = image_.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (bordered.isNull()) return bordered;
    QPainter painter(&bordered);
    painter.setPen(QPen(Qt::black, 1));
    // A one-pixel line centred half a pixel inside the bounds covers exactly the outermost pixels.
    painter.drawRect(QRectF(0.5, 0.5, bordered.width() - 1, bordered.height() - 1));
    return bordered;
}

ByteData BVThumbnail::thumbnailJPEGDataWithCompressionFactor(double /*factor*/) const {
    return BVNSImage::JPEGDataWithCompressionFactor(image_, 0.5);
}

void BVThumbnail::select() {
    if (client_ && action_) action_(*client_, *this);
}

}  // namespace bv
