// The image-and-text item delegate.
#include "BrevantCocoaExtensions/interface/BVImageAndTextCell.hpp"

#include <QIcon>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <cmath>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"

namespace bv {

namespace {
Rect fromQRect(const QRect& rect) {
    return Rect{{static_cast<double>(rect.x()), static_cast<double>(rect.y())},
                {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

QRect toQRect(const Rect& rect) {
    return QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height).toRect();
}

// The left slice of the given width (never wider than the frame) and what remains.
std::pair<Rect, Rect> divideFromLeft(const Rect& frame, double amount) {
    const double width = std::clamp(amount, 0.0, std::max(frame.size.width, 0.0));
    const Rect slice{frame.origin, {width, frame.size.height}};
    const Rect rest{{frame.origin.x + width, frame.origin.y}, {frame.size.width - width, frame.size.height}};
    return {slice, rest};
}
}  // namespace

BVImageAndTextCell::BVImageAndTextCell(QObject* parent) : QStyledItemDelegate(parent) {}

void BVImageAndTextCell::setCellImage(const QImage& image) {
    image_ = image.isNull() ? QImage() : BVNSImage::newImageScaledToSize(image, imageSize_);
}

std::unique_ptr<BVImageAndTextCell> BVImageAndTextCell::copy(QObject* parent) const {
    auto cell = std::make_unique<BVImageAndTextCell>(parent);
    cell->image_ = image_;  // implicitly shared
    cell->imageSize_ = imageSize_;
    cell->drawsBackground_ = drawsBackground_;
    cell->backgroundColor_ = backgroundColor_;
    return cell;
}

Rect BVImageAndTextCell::imageFrameForCellFrame(const Rect& cellFrame) const {
    if (image_.isNull()) return Rect{};
    return imageFrameInCellFrame(
        cellFrame, Size{static_cast<double>(image_.width()), static_cast<double>(image_.height())});
}

Rect BVImageAndTextCell::imageStripForCellFrame(const Rect& cellFrame, double imageWidth) {
    return divideFromLeft(cellFrame, imageWidth + imageMargin).first;
}

Rect BVImageAndTextCell::textFrameForCellFrame(const Rect& cellFrame, double imageWidth) {
    return divideFromLeft(cellFrame, imageWidth + imageMargin).second;
}

Rect BVImageAndTextCell::imageFrameInCellFrame(const Rect& cellFrame, const Size& image) {
    const double down = std::ceil((cellFrame.size.height - image.height) / 2.0);
    return Rect{{cellFrame.origin.x + imageMargin, cellFrame.origin.y + down}, image};
}

Size BVImageAndTextCell::cellSizeForTextSize(const Size& textSize, double imageWidth) {
    return Size{textSize.width + imageWidth + imageMargin, textSize.height};
}

QImage BVImageAndTextCell::imageForIndex(const QModelIndex& index) const {
    const QVariant decoration = index.data(Qt::DecorationRole);
    const QSize size(static_cast<int>(imageSize_.width), static_cast<int>(imageSize_.height));
    QImage image;
    if (decoration.typeId() == QMetaType::QImage)
        image = decoration.value<QImage>();
    else if (decoration.typeId() == QMetaType::QPixmap)
        image = decoration.value<QPixmap>().toImage();
    else if (decoration.typeId() == QMetaType::QIcon)
        image = decoration.value<QIcon>().pixmap(size).toImage();
    if (image.isNull()) return image_;
    return image.size() == size ? image : BVNSImage::imageScaledToSize(image, imageSize_);
}

void BVImageAndTextCell::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->features &= ~QStyleOptionViewItem::HasDecoration;
    option->icon = QIcon();
    option->decorationSize = QSize();
}

void BVImageAndTextCell::drawWithFrameInView(QPainter* painter, const QStyleOptionViewItem& option,
                                             const QModelIndex& index) const {
    const QImage image = imageForIndex(index);
    const Rect frame = fromQRect(option.rect);
    QStyleOptionViewItem textOption = option;
    if (!image.isNull()) {
        const Size imageSize{static_cast<double>(image.width()), static_cast<double>(image.height())};
        const Rect strip = imageStripForCellFrame(frame, imageSize.width);
        if (drawsBackground_) painter->fillRect(toQRect(strip), backgroundColor_);
        painter->drawImage(toQRect(imageFrameInCellFrame(strip, imageSize)).topLeft(), image);
        textOption.rect = toQRect(textFrameForCellFrame(frame, imageSize.width));
    }
    QStyledItemDelegate::paint(painter, textOption, index);
}

QSize BVImageAndTextCell::cellSize(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    const QImage image = imageForIndex(index);
    const Size size =
        cellSizeForTextSize(Size{static_cast<double>(text.width()), static_cast<double>(text.height())},
                            image.isNull() ? 0.0 : image.width());
    return QSize(static_cast<int>(std::ceil(size.width)), text.height());
}

void BVImageAndTextCell::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    drawWithFrameInView(painter, option, index);
}

QSize BVImageAndTextCell::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return cellSize(option, index);
}

void BVImageAndTextCell::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                              const QModelIndex& index) const {
    const QImage image = imageForIndex(index);
    QStyleOptionViewItem textOption = option;
    textOption.rect =
        toQRect(textFrameForCellFrame(fromQRect(option.rect), image.isNull() ? 0.0 : image.width()));
    QStyledItemDelegate::updateEditorGeometry(editor, textOption, index);
}

void BVImageAndTextCell::editWithFrameInViewEditorDelegateEvent(const Rect& cellFrame,
                                                                QWidget* editor) const {
    if (editor)
        editor->setGeometry(
            toQRect(textFrameForCellFrame(cellFrame, image_.isNull() ? 0.0 : image_.width())));
}

void BVImageAndTextCell::selectWithFrameInViewEditorDelegateStartLength(const Rect& cellFrame,
                                                                        QWidget* editor, int start,
                                                                        int length) const {
    editWithFrameInViewEditorDelegateEvent(cellFrame, editor);
    if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setSelection(start, length);
}

}  // namespace bv
