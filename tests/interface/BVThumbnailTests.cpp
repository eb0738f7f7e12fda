// Thumbnails: stretched scaling, the height taken from the picture, the blank and bordered pictures, the
// JPEG form at its fixed factor, selection telling the client, and copies of the same class.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/interface/BVNSDataImages.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVThumbnail.hpp"

using namespace bv;

namespace {
QImage solid(int width, int height, QColor color) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}
}  // namespace

TEST(BVThumbnail, ScalesByStretchingAndTakesTheRowHeightFromThePicture) {
    EXPECT_TRUE(BVThumbnail::newThumbnailImageBasedOnImage(QImage()).isNull());
    const QImage thumbnail = BVThumbnail::thumbnailImageBasedOnImage(solid(400, 100, Qt::red));
    EXPECT_EQ(thumbnail.size(), QSize(160, 120));
    EXPECT_EQ(thumbnail.pixel(80, 60), qRgb(255, 0, 0));
    EXPECT_EQ(
        BVThumbnail::newThumbnailImageBasedOnImageScaleToSize(solid(10, 10, Qt::red), Size{7, 3}).size(),
        QSize(7, 3));

    auto node = BVThumbnail::initWithIdentifierThumbnailClientClientAction(Text("q1"), nullptr, nullptr);
    node->setThumbnailImage(solid(200, 150, Qt::blue));
    EXPECT_EQ(node->nodeHeight(), 150.0f);
    node->setThumbnailImage(QImage());
    EXPECT_EQ(node->thumbnailImage().size(), QSize(160, 120));
    EXPECT_EQ(node->thumbnailImage().pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(node->nodeHeight(), 150.0f);
}

TEST(BVThumbnail, BorderCoversExactlyTheOutermostPixels) {
    BVThumbnail node;
    node.setThumbnailImage(solid(6, 4, Qt::white));
    const QImage bordered = node.borderedThumbnailImage();
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            const bool edge = x == 0 || y == 0 || x == 5 || y == 3;
            EXPECT_EQ(bordered.pixel(x, y), edge ? qRgb(0, 0, 0) : qRgb(255, 255, 255)) << x << "," << y;
        }
    }
    EXPECT_EQ(node.thumbnailImage().pixel(0, 0), qRgb(255, 255, 255));  // the stored picture is untouched
}

TEST(BVThumbnail, JPEGIgnoresTheFactorGiven) {
    BVThumbnail node;
    node.setThumbnailImage(BVThumbnail::thumbnailImageBasedOnImage(solid(64, 64, Qt::green)));
    const ByteData low = node.thumbnailJPEGDataWithCompressionFactor(0.0);
    EXPECT_EQ(low, node.thumbnailJPEGDataWithCompressionFactor(1.0));
    EXPECT_EQ(low, BVNSImage::JPEGDataWithCompressionFactor(node.thumbnailImage(), 0.5));
    EXPECT_EQ(BVNSData::image(low).size(), QSize(160, 120));
}

TEST(BVThumbnail, SelectTellsALivingClientAndCopiesKeepTheClass) {
    auto client = std::make_unique<QObject>();
    BVThumbnail* told = nullptr;
    auto node = BVThumbnail::initWithIdentifierThumbnailClientClientAction(
        Text("q2"), client.get(), [&](QObject&, BVThumbnail& thumbnail) { told = &thumbnail; });
    node->select();
    EXPECT_EQ(told, node.get());
    told = nullptr;
    client.reset();
    node->select();
    EXPECT_EQ(told, nullptr);

    node->setTitle(Text("Question 2"));
    const auto copy = std::dynamic_pointer_cast<BVThumbnail>(node->copyWithZone());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->title(), Text("Question 2"));
    EXPECT_EQ(copy->identifier(), Text(""));
}
