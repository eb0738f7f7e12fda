// bv::BVImageAndTextCell: an item delegate that draws a small image before its text, for the name column
// of a table or an outline.
//
// The image of a row is the model's decoration for the row (a QImage, QPixmap or QIcon under
// Qt::DecorationRole, scaled to the cell's image size), else the cell's own image. The text part is drawn and
// edited as QStyledItemDelegate does, in the frame less the image strip.
//
// The geometry, in Qt's coordinates (y downwards):
//   - the image strip is the image width plus 3.0 on the left of the cell frame, cut as a slice that never
//     grows beyond the frame (a narrow frame leaves the text an empty frame);
//   - the image sits 3.0 from the frame's left edge, moved down by half the free height rounded up (ceil);
//   - the cell's size is the text's size widened by the image width plus 3.0 (3.0 even without an image);
//   - without an image nothing is drawn in the strip and the text takes the whole frame, while editing
//     still leaves the 3.0 strip free.
#pragma once

#include <QColor>
#include <QImage>
#include <QStyledItemDelegate>
#include <memory>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVImageAndTextCell : public QStyledItemDelegate {
    Q_OBJECT
  public:
    static constexpr double imageMargin = 3.0;  // between the frame's left edge and the image

    explicit BVImageAndTextCell(QObject* parent = nullptr);

    // The cell's image; null when none.
    [[nodiscard]] const QImage& cellImage() const noexcept { return image_; }
    // Keeps a copy of the image scaled to the image size at the time of the call; a null image clears it.
    void setCellImage(const QImage& image);
    // The size images are scaled to (16 by 16 unless set); a later change does not rescale the cell image.
    [[nodiscard]] Size imageSize() const noexcept { return imageSize_; }
    void setImageSize(const Size& size) { imageSize_ = size; }
    // Whether the image strip is filled with the background colour before the image is drawn.
    [[nodiscard]] bool drawsBackground() const noexcept { return drawsBackground_; }
    void setDrawsBackground(bool draws) { drawsBackground_ = draws; }
    [[nodiscard]] const QColor& backgroundColor() const noexcept { return backgroundColor_; }
    void setBackgroundColor(const QColor& color) { backgroundColor_ = color; }

    // A new cell with the same settings that shares the image (no pixels are copied).
    [[nodiscard]] std::unique_ptr<BVImageAndTextCell> copy(QObject* parent = nullptr) const;

    // The cell's own image's frame in a cell frame: the zero rectangle without an image.
    [[nodiscard]] Rect imageFrameForCellFrame(const Rect& cellFrame) const;
    // The strip and the text frame of a cell frame for an image of that width.
    [[nodiscard]] static Rect imageStripForCellFrame(const Rect& cellFrame, double imageWidth);
    [[nodiscard]] static Rect textFrameForCellFrame(const Rect& cellFrame, double imageWidth);
    // Where an image of that size is drawn in a cell frame.
    [[nodiscard]] static Rect imageFrameInCellFrame(const Rect& cellFrame, const Size& image);
    // The text's size widened by the image width plus 3.0.
    [[nodiscard]] static Size cellSizeForTextSize(const Size& textSize, double imageWidth);

    // Draws the row's image in the strip, then the text in the rest.
    void drawWithFrameInView(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const;
    // cellSizeForTextSize for the row.
    [[nodiscard]] QSize cellSize(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // Editing and selecting happen in the frame less the image strip.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    // Places a field editor in the cell frame less the strip of the cell's own image.
    void editWithFrameInViewEditorDelegateEvent(const Rect& cellFrame, QWidget* editor) const;
    // The same, then selects `length` characters from `start` when the editor is a QLineEdit.
    void selectWithFrameInViewEditorDelegateStartLength(const Rect& cellFrame, QWidget* editor, int start,
                                                        int length) const;

  protected:
    // The text part only: the decoration is the cell's to draw.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    // The row's image at the cell's image size; null when none.
    [[nodiscard]] QImage imageForIndex(const QModelIndex& index) const;

    QImage image_;
    Size imageSize_{16, 16};
    bool drawsBackground_ = false;
    QColor backgroundColor_ = Qt::white;
};

}  // namespace bv
