// Image operations on exact pixels of small generated pictures: flips and mirrors, tint, multiply blend,
// colour map, scaling sizes, centring, rotation, PNG/JPEG/Base64 round trips, and paths drawn as images.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "BrevantCocoaExtensions/interface/BVNSBezierPath.hpp"
#include "BrevantCocoaExtensions/interface/BVNSDataImages.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImageInternal.hpp"
#include "BrevantCocoaExtensions/interface/BVNSStringImages.hpp"
#include "BrevantCocoaExtensions/interface/BVUtilitiesImages.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

using namespace bv;

namespace {
// A 2 × 2 picture: red, green on top; blue, half-transparent white below.
QImage quad() {
    QImage image(2, 2, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 0, 0, 255));
    image.setPixel(1, 0, qRgba(0, 255, 0, 255));
    image.setPixel(0, 1, qRgba(0, 0, 255, 255));
    image.setPixel(1, 1, qRgba(255, 255, 255, 0));
    return image;
}

std::vector<QRgb> pixels(const QImage& image) {
    std::vector<QRgb> out;
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < straight.height(); ++y) {
        for (int x = 0; x < straight.width(); ++x) {
            const QRgb pixel = straight.pixel(x, y);
            out.push_back(qAlpha(pixel) == 0 ? 0 : pixel);  // every transparent pixel reads as 0
        }
    }
    return out;
}

const QRgb R = qRgba(255, 0, 0, 255), G = qRgba(0, 255, 0, 255), B = qRgba(0, 0, 255, 255), T = 0;
}  // namespace

TEST(BVNSImage, FlipsAndMirrorsMoveExactlyThePixels) {
    const QImage flipped = BVNSImage::newFlippedImage(quad());
    EXPECT_EQ(pixels(flipped), (std::vector<QRgb>{B, T, R, G}));
    EXPECT_TRUE(BVNSImage::isFlipped(flipped));
    EXPECT_FALSE(BVNSImage::isFlipped(BVNSImage::flippedImage(flipped)));
    EXPECT_EQ(pixels(BVNSImage::imageMirroredVertically(quad(), true)), (std::vector<QRgb>{G, R, T, B}));
    EXPECT_EQ(pixels(BVNSImage::imageMirroredVertically(quad(), false)), (std::vector<QRgb>{B, T, R, G}));
    // A flipped image is turned upright before it is rotated: 90° counter-clockwise puts green top left.
    EXPECT_EQ(pixels(BVNSImage::imageRotatedAtAngle(flipped, 90)), (std::vector<QRgb>{G, T, R, B}));
    EXPECT_EQ(pixels(BVNSImage::imageRotatedAtAngle(quad(), 360)), pixels(quad()));
    const CoreImage core = BVNSImage::coreImage(quad());
    EXPECT_EQ(BVCIImage::coreImageRotatedByDegrees(core, 0).pixels, core.pixels);
}

TEST(BVNSImage, ColourFiltersComputeEachPixel) {
    // c × (1 − p) + p with c = (0.2, 0.4, 1.0, 0.5): red (1, 0, 0) gives (1, 0.4, 1), alpha 0.5.
    const QImage tinted =
        BVNSImage::imageWithAppliedLinearInterpolationOfColor(quad(), QColor(51, 102, 255, 128));
    EXPECT_EQ(pixels(tinted), (std::vector<QRgb>{qRgba(255, 102, 255, 128), qRgba(51, 255, 255, 128),
                                                 qRgba(51, 102, 255, 128), T}));
    // Multiply over an opaque colour: opaque pixels multiply, the transparent one shows the colour.
    const QImage blended = BVNSImage::imageWithBlendedColor(quad(), QColor(255, 128, 0));
    EXPECT_EQ(pixels(blended),
              (std::vector<QRgb>{R, qRgba(0, 128, 0, 255), qRgba(0, 0, 0, 255), qRgba(255, 128, 0, 255)}));
    const QImage backed = BVNSImage::imageWithBackgroundColor(quad(), QColor(Qt::black));
    EXPECT_EQ(pixels(backed).back(), qRgba(0, 0, 0, 255));
    // The colour map looks up each pixel's luminance across the gradient's width.
    QImage gradient(3, 1, QImage::Format_ARGB32);
    gradient.setPixel(0, 0, qRgb(10, 10, 10));
    gradient.setPixel(1, 0, qRgb(20, 20, 20));
    gradient.setPixel(2, 0, qRgb(30, 30, 30));
    QImage grey(3, 1, QImage::Format_ARGB32);
    grey.setPixel(0, 0, qRgb(0, 0, 0));
    grey.setPixel(1, 0, qRgb(128, 128, 128));
    grey.setPixel(2, 0, qRgba(255, 255, 255, 200));
    EXPECT_EQ(pixels(BVNSImage::imageWithAppliedGradientImage(grey, gradient)),
              (std::vector<QRgb>{qRgb(10, 10, 10), qRgb(20, 20, 20), qRgba(30, 30, 30, 200)}));
}

TEST(BVNSImage, SizesOfScaledMaximumCentredAndFilledImages) {
    QImage wide(400, 100, QImage::Format_ARGB32);
    wide.fill(Qt::red);
    EXPECT_EQ(BVNSImage::imageWithMaximumSize(wide, Size{200, 200}).size(), QSize(200, 100));
    EXPECT_EQ(BVNSImage::imageWithMaximumSize(wide, Size{1000, 50}).size(), QSize(400, 50));
    EXPECT_EQ(BVNSImage::newImageScaledToSize(wide, Size{30, 40}).pixel(29, 39), qRgb(255, 0, 0));
    EXPECT_TRUE(BVNSImage::imageScaledToSize(wide, Size{0, 40}).isNull());
    EXPECT_EQ(BVNSImage::bounds(wide), (Rect{{0, 0}, {400, 100}}));

    const QImage centred = BVNSImage::imageCenteredInArea(quad(), Size{4, 4});
    EXPECT_EQ(pixels(centred), (std::vector<QRgb>{T, T, T, T, T, R, G, T, T, B, T, T, T, T, T, T}));
    QImage drawn = BVNSImage::detail::blankImage(Size{4, 4});
    QPainter painter(&drawn);
    BVNSImage::drawWithinBoundsUsingLayout(quad(), painter, Rect{{0, 0}, {4, 4}},
                                           BVNSImage::ImageLayout::Centered);
    painter.end();
    EXPECT_EQ(pixels(drawn), pixels(centred));
    const QImage filled = BVNSImage::imageWithColorImageSize(QColor(1, 2, 3), Size{3, 2});
    EXPECT_EQ(pixels(filled), std::vector<QRgb>(6, qRgb(1, 2, 3)));
    EXPECT_EQ(BVNSImage::imageWithPreservedDimensionsForImageRepFlipped(quad(), true).size(), QSize(2, 2));
}

TEST(BVNSImage, EncodedFormsDecodeBackToThePixels) {
    const QImage original = quad();
    const ByteData png = BVNSImage::brevantPNGData(BVNSImage::flippedImage(original));
    ASSERT_GT(png.size(), 8u);
    EXPECT_EQ(std::string(png.begin() + 1, png.begin() + 4), "PNG");
    EXPECT_EQ(pixels(BVNSData::image(png)), (std::vector<QRgb>{B, T, R, G}));
    EXPECT_TRUE(BVNSData::image(ByteData{1, 2, 3}).isNull());

    const Text base64 = BVNSImage::base64EncodedPNGString(original);
    EXPECT_EQ(pixels(BVNSImage::imageForBase64EncodedString(base64)), pixels(original));
    EXPECT_EQ(pixels(BVNSImage::imageForBase64EncodedString(BVNSString::flippedBase64String(base64))),
              (std::vector<QRgb>{B, T, R, G}));
    EXPECT_EQ(BVNSString::newFlippedBase64String(Text("not a picture")), Text(""));

    const ByteData jpeg = BVNSImage::dataForBestRepresentationOfPathExtension(original, Text("JPG"));
    EXPECT_EQ(jpeg, BVNSImage::JPEGDataWithCompressionFactor(original, 0.5));
    EXPECT_EQ(jpeg, *BVNSData::JPEGDataForImage(original, 0.5));
    EXPECT_EQ(BVNSImage::dataForBestRepresentationOfPathExtension(original, Text("png")),
              BVNSImage::brevantPNGData(original));
    const ByteData tiff = BVNSImage::dataForBestRepresentationOfPathExtension(original, Text("gif"));
    EXPECT_EQ(pixels(BVNSData::image(tiff)), pixels(original));
    EXPECT_FALSE(BVNSData::PNGDataForImage(QImage()));

    QTemporaryDir folder;
    const Text path(folder.filePath("quad.png").toStdString());
    ASSERT_TRUE(BVNSData::writeToUniversallyWritableFileAtomically(png, path, true));
    EXPECT_EQ(*BVNSData::PNGDataWithContentsOfFile(path), BVNSImage::brevantPNGData(BVNSData::image(png)));
    EXPECT_EQ(pixels(BVNSImage::imageForPathFlipped(path, false)), (std::vector<QRgb>{B, T, R, G}));
    const Bundle bundle(folder.path().toStdString(), folder.path().toStdString());
    EXPECT_EQ(pixels(BVNSImage::imageNamedForBundle(Text("quad"), bundle)), (std::vector<QRgb>{B, T, R, G}));
    EXPECT_TRUE(BVNSImage::imageNamedForBundle(Text("missing"), bundle).isNull());
    EXPECT_EQ(BVUtilitiesImages::spontaneousQuestionThumbnailImage().size(), QSize(480, 360));
    EXPECT_EQ(BVUtilitiesImages::answerKeyThumbnailImage().size(), QSize(640, 480));
    EXPECT_TRUE(BVNSImage::imageForPathFlipped(Text("/nonexistent.png"), false).isNull());
    EXPECT_FALSE(BVNSData::JPEGDataWithContentsOfFile(Text("/nonexistent.png"), 0.5));
    EXPECT_TRUE(BVNSImage::isImageFile(path));
    EXPECT_FALSE(BVNSImage::isImageFile(Text("notes.Png")));
}

TEST(BVNSImage, TextIsDrawnAtItsOwnSize) {
    TextAttributes attributes;
    attributes.font.setPixelSize(20);
    const QImage image = BVNSString::imageWithAttributes(Text("Quiz"), attributes);
    ASSERT_FALSE(image.isNull());
    EXPECT_GE(image.height(), 20);
    const auto all = pixels(image);
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [](QRgb pixel) { return qAlpha(pixel) > 0; }));
    EXPECT_TRUE(BVNSImage::imageOfStringWithAttributes(Text(""), attributes).isNull());
}

TEST(BVNSBezierPath, ElementsBoundsAndDrawing) {
    BezierPath path;
    path.path.addRect(10, 20, 4, 2);
    path.path.cubicTo(QPointF(0, 0), QPointF(1, 1), QPointF(2, 2));
    EXPECT_EQ(BVNSBezierPath::pathElements(path), (ValueArray{0, 1, 1, 1, 3, 0, 2}));

    BezierPath box;
    box.path.addRect(10, 20, 6, 6);
    box.lineWidth = 0.5;
    const QImage image = BVNSBezierPath::imageWithColorFillColor(box, QColor(Qt::black), QColor(Qt::red));
    EXPECT_EQ(box.lineWidth, 1.0);  // raised on the receiver
    EXPECT_EQ(image.size(), QSize(8, 8));
    EXPECT_EQ(image.pixel(3, 3), qRgb(255, 0, 0));
    EXPECT_NEAR(qRed(image.pixel(3, 1)), 128, 2);  // half black: the stroke is centred on the edge
    BVNSBezierPath::moveOriginToZero(box);
    EXPECT_EQ(box.path.boundingRect(), QRectF(1, 1, 6, 6));
    BVNSBezierPath::centerInBounds(box, Rect{{100, 100}, {10, 10}});
    EXPECT_EQ(box.path.boundingRect(), QRectF(103, 103, 6, 6));  // translated by the centred origin

    const BezierPath dashed = BVNSBezierPath::bezierPathWithLineSegmentGapSegment(5, 3);
    EXPECT_EQ(dashed.dashPattern, (std::vector<double>{5, 3}));
}
