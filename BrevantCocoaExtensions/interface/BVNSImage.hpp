// BVNSImage: loading, scaling, flipping, tinting, filtering, rotating and encoding pictures, on QImage.
//
// A null QImage is the "no image" result: a file that cannot be read, bytes that are no picture.
// Every operation returns a new image and leaves the receiver alone, unless it says otherwise.
//
// Pitfalls callers rely on:
//   - An image remembers whether it is in the flipped state (isFlipped). A flipped image holds its picture
//     top to bottom reversed; flippedImage reverses the rows and toggles the state, and imageRotatedAtAngle
//     turns a flipped image upright before rotating it.
//   - imageWithMaximumSize clamps width and height each on its own, so proportions are not kept.
//   - imageMirroredVertically(true) swaps left and right; false swaps top and bottom.
//   - Thumbnails and imageScaledToSize stretch the picture to fill the size; the aspect ratio is not kept.
//   - Text drawing (imageOfStringWithAttributes) needs a QGuiApplication, as every Qt text drawing does.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <vector>

#include "BrevantCocoaExtensions/interface/BVCIImage.hpp"
#include "BrevantCocoaExtensions/interface/TextAttributes.hpp"
#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSImage {

// How drawWithinBoundsUsingLayout places an image in a rectangle.
enum class ImageLayout {
    Centered,              // natural size, centred
    ScaledProportionally,  // as large as fits with its proportions kept, centred
    ScaledToFill,          // stretched over the whole rectangle
    HalfSizeCentered,      // half its natural size, centred
};

// The file extensions the image readers know ("png", "jpg", "tiff", ... and their upper-case forms).
[[nodiscard]] std::vector<Text> imageFileTypes();
// True when the path's extension is one of imageFileTypes, compared exactly ("a.png", "a.PNG", not "a.Png").
[[nodiscard]] bool isImageFile(const Text& path);
// (0, 0, width, height).
[[nodiscard]] Rect bounds(const QImage& self);
// Whether the image is in the flipped state.
[[nodiscard]] bool isFlipped(const QImage& self);

// A new image of the representation's pixel size with the representation drawn over it (smooth
// interpolation), in the flipped state when asked. The new... form is the same (the caller owns both).
[[nodiscard]] QImage imageWithPreservedDimensionsForImageRepFlipped(const QImage& rep, bool flipped);
[[nodiscard]] QImage newImageWithPreservedDimensionsForImageRepFlipped(const QImage& rep, bool flipped);
// The first picture of the file through the row above; null when the file is no readable picture.
[[nodiscard]] QImage imageForPathFlipped(const Text& path, bool flipped);
[[nodiscard]] QImage newImageForPathFlipped(const Text& path, bool flipped);
// The same for a "file:" URL; any other URL gives null (no network access).
[[nodiscard]] QImage imageForURLFlipped(const Text& url, bool flipped);
// The bundle's image resource of that name: the name with its own image extension, else the name with
// each of imageFileTypes in turn; null when none is found.
[[nodiscard]] QImage imageNamedForBundle(const Text& name, const Bundle& bundle);
// The same in the framework bundle of that name (BVNSBundle::frameworkBundleWithName); null without one.
[[nodiscard]] QImage imageNamedInFrameworkNamed(const Text& name, const Text& framework);

// An image of that size filled with the colour.
[[nodiscard]] QImage imageWithColorImageSize(const QColor& color, const Size& size);
// The receiver drawn over the colour, at the receiver's size.
[[nodiscard]] QImage imageWithBackgroundColor(const QImage& self, const QColor& color);
// The colour map: each pixel's luminance (0.2125 R + 0.7154 G + 0.0721 B) picks a colour across the
// gradient image's width, on its middle row; the pixel keeps its alpha.
[[nodiscard]] QImage imageWithAppliedGradientImage(const QImage& self, const QImage& gradient);
// Multiply blend of the receiver over a solid image of the colour: each component s × b + s × (1 − ab) +
// b × (1 − as), alpha as + ab − as × ab.
[[nodiscard]] QImage imageWithBlendedColor(const QImage& self, const QColor& color);
// Every pixel with alpha above 0 becomes c × (1 − p) + p for red, green and blue, and p.alpha × c.alpha;
// fully transparent pixels stay (p the pixel, c the colour; components from 0 to 1).
[[nodiscard]] QImage imageWithAppliedLinearInterpolationOfColor(const QImage& self, const QColor& color);
// The same picture with its rows reversed, in the opposite flipped state.
[[nodiscard]] QImage flippedImage(const QImage& self);
[[nodiscard]] QImage newFlippedImage(const QImage& self);
// A copy scaled to (min(width, max width), min(height, max height)).
[[nodiscard]] QImage imageWithMaximumSize(const QImage& self, const Size& maximumSize);
// Makes the image's size its pixel size (device pixel ratio 1); changes the receiver.
void setSizeToImageRepSize(QImage& self);
// The receiver stretched over a new image of that size (smooth interpolation).
[[nodiscard]] QImage imageScaledToSize(const QImage& self, const Size& size);
[[nodiscard]] QImage newImageScaledToSize(const QImage& self, const Size& size);

// The picture as PNG bytes; empty for a null image.
[[nodiscard]] ByteData brevantPNGData(const QImage& self);
// The picture as JPEG bytes; factor 0.0 gives the smallest file, 1.0 the best quality.
[[nodiscard]] ByteData JPEGDataWithCompressionFactor(const QImage& self, double factor);
// JPEG at 0.5 for "jpeg" or "jpg" (any case), PNG for "png", TIFF for anything else.
[[nodiscard]] ByteData dataForBestRepresentationOfPathExtension(const QImage& self, const Text& extension);
// A new image holding the pixels of a toolkit pixmap.
[[nodiscard]] QImage imageFromCGImageRef(const QPixmap& pixmap);
// A filter image of the receiver's pixels, its extent at (0, 0).
[[nodiscard]] CoreImage coreImage(const QImage& self);
// The Base64 text decoded (characters outside the alphabet are skipped) and read as a picture; null when
// the bytes are no picture.
[[nodiscard]] QImage imageForBase64EncodedString(const Text& string);
[[nodiscard]] QImage newImageForBase64EncodedString(const Text& string);
// brevantPNGData as one line of Base64.
[[nodiscard]] Text base64EncodedPNGString(const QImage& self);
// JPEG at the factor as one line of Base64.
[[nodiscard]] Text base64EncodedJPEGStringWithCompressionFactor(const QImage& self, double factor);
[[nodiscard]] Text newBase64EncodedJPEGStringWithCompressionFactor(const QImage& self, double factor);

// The text drawn in its attributes on a transparent image of exactly the text's drawn size.
[[nodiscard]] QImage imageOfStringWithAttributes(const Text& string, const TextAttributes& attributes);
// Mirrored within its bounds: true swaps left and right, false top and bottom.
[[nodiscard]] QImage imageMirroredVertically(const QImage& self, bool vertically);
// Turned counter-clockwise by the angle (a flipped receiver is turned upright first); the new image is
// the rotated picture's bounding size. Angles outside (0, 360) leave the picture as it is.
[[nodiscard]] QImage imageRotatedAtAngle(const QImage& self, double angle);
// A transparent image of the area's size with the receiver centred on it.
[[nodiscard]] QImage imageCenteredInArea(const QImage& self, const Size& area);
// Draws the receiver into the rectangle in the layout.
void drawWithinBoundsUsingLayout(const QImage& self, QPainter& painter, const Rect& bounds,
                                 ImageLayout layout);

}  // namespace bv::BVNSImage
