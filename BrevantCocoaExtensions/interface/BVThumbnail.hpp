// BVThumbnail: an outline node that also carries a small picture, an identifier and a client told when the
// thumbnail is chosen (a thumbnail strip's model object).
//
// Pitfalls callers rely on:
//   - Thumbnails stretch the picture to the size; the aspect ratio is not kept.
//   - setThumbnailImage sets the row height to the picture's height; setBlankThumbnailImage does not.
//   - thumbnailJPEGDataWithCompressionFactor always writes at factor 0.5, whatever it is given.
#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "BrevantCocoaExtensions/documents/BVNode.hpp"

namespace bv {

class BVThumbnail : public BVNode {
  public:
    // What the client is told: the client and the thumbnail chosen.
    using ClientAction = std::function<void(QObject& client, BVThumbnail& thumbnail)>;

    BVThumbnail() = default;
    BVThumbnail(Text identifier, QObject* client, ClientAction action);

    // A thumbnail with the node defaults, the identifier, the client (not owned) and its action, no image.
    [[nodiscard]] static std::shared_ptr<BVThumbnail> initWithIdentifierThumbnailClientClientAction(
        const Text& identifier, QObject* client, ClientAction action);

    [[nodiscard]] const Text& identifier() const noexcept { return identifier_; }
    void setIdentifier(const Text& identifier) { identifier_ = identifier; }
    [[nodiscard]] QObject* thumbnailClient() const { return client_.data(); }
    [[nodiscard]] const ClientAction& clientAction() const noexcept { return action_; }

    // 160 × 120.
    [[nodiscard]] static Size defaultThumbnailSize() { return Size{160, 120}; }
    // The image stretched over a new image of the size (smooth interpolation); null for a null image.
    [[nodiscard]] static QImage newThumbnailImageBasedOnImageScaleToSize(const QImage& image,
                                                                         const Size& size);
    [[nodiscard]] static QImage newThumbnailImageBasedOnImage(const QImage& image);
    [[nodiscard]] static QImage thumbnailImageBasedOnImageScaleToSize(const QImage& image, const Size& size);
    [[nodiscard]] static QImage thumbnailImageBasedOnImage(const QImage& image);

    // A non-null image is stored and sets the node height to its height; a null image gives the blank one.
    void setThumbnailImage(const QImage& image);
    // A white picture of the default size; the node height stays.
    void setBlankThumbnailImage();
    [[nodiscard]] const QImage& thumbnailImage() const noexcept { return image_; }
    // A copy of the picture with a black one-pixel rectangle along its bounds.
    [[nodiscard]] QImage borderedThumbnailImage() const;
    // The picture as JPEG at factor 0.5; the factor given is not used.
    [[nodiscard]] ByteData thumbnailJPEGDataWithCompressionFactor(double factor) const;
    // Tells the client its action with this thumbnail, when a client is set (and still exists).
    void select();

  protected:
    [[nodiscard]] NodePointer newNodeOfSameClass() const override;

  private:
    QPointer<QObject> client_;
    ClientAction action_;
    Text identifier_;
    QImage image_;
};

}  // namespace bv
