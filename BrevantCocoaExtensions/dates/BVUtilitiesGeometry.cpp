// BVUtilities: rounding and the rectangle geometry that places windows and pictures. Where a result goes
// through 32-bit floats, each step is written out, because callers compare the values exactly.
#include <cmath>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

namespace bv {

namespace {

double asFloat(double value) {
    return static_cast<double>(static_cast<float>(value));
}

}  // namespace

double BVUtilities::roundedValueOfValueToDigitPosition(double value, std::uint64_t digits) {
    const auto power = static_cast<float>(std::pow(10.0, static_cast<double>(digits)));
    const auto product = static_cast<float>(value * static_cast<double>(power));
    return static_cast<double>(std::rint(product) / power);
}

double BVUtilities::flippedYCoordinateOfRectInRect(const Rect& r, const Rect& outer) {
    return outer.size.height - r.origin.y - r.size.height;
}

double BVUtilities::pixelValueFromPercentageOfPixels(float percentage, float pixels) {
    return static_cast<double>(pixels * (percentage / 100.0f));
}

Point BVUtilities::centerPointInRectangle(const Rect& rect) {
    return {asFloat(rect.origin.x + rect.size.width * 0.5), asFloat(rect.origin.y + rect.size.height * 0.5)};
}

Point BVUtilities::originOfRectangleCenteredAroundPoint(const Rect& r, Point center) {
    return {center.x - r.size.width / 2, center.y - r.size.height / 2};
}

Rect BVUtilities::rectangleOfSizeCenteredAroundPoint(Size size, Point center) {
    return {originOfRectangleCenteredAroundPoint(Rect{{}, size}, center), size};
}

Point BVUtilities::originOfRectCenteredInRect(const Rect& r, const Rect& outer) {
    return {(outer.size.width - r.size.width) / 2 + outer.origin.x,
            (outer.size.height - r.size.height) / 2 + outer.origin.y};
}

double BVUtilities::xOriginOfRectCenteredHorizontallyInRect(const Rect& r, const Rect& outer) {
    return originOfRectCenteredInRect(r, outer).x;
}

double BVUtilities::yOriginOfRectCenteredVerticallyInRect(const Rect& r, const Rect& outer) {
    return originOfRectCenteredInRect(r, outer).y;
}

Point BVUtilities::originOfRectCenteredAtBottomOfRectFlipped(const Rect& r, const Rect& outer, bool flipped) {
    const double y = flipped ? outer.origin.y + outer.size.height - r.size.height : outer.origin.y;
    return {xOriginOfRectCenteredHorizontallyInRect(r, outer), y};
}

Point BVUtilities::originOfRectInLowerRightCornerOfRectFlipped(const Rect& r, const Rect& outer,
                                                               bool flipped) {
    return {outer.origin.x + outer.size.width - r.size.width,
            originOfRectCenteredAtBottomOfRectFlipped(r, outer, flipped).y};
}

Point BVUtilities::originForPercentagesWithinRect(Point percentages, const Rect& rect) {
    return {rect.size.width * percentages.x / 100, rect.size.height * percentages.y / 100};
}

Rect BVUtilities::boundsOfRectScaledProportionallyToSize(const Rect& r, Size s) {
    const double fittedWidth = r.size.height * s.width / s.height;
    const double fittedHeight = r.size.width * s.height / s.width;
    const bool widthFits = r.size.width > fittedWidth;
    const double width = widthFits ? fittedWidth : r.size.width;
    const double height = widthFits ? r.size.height : fittedHeight;
    return {{asFloat(r.origin.x + (r.size.width - width) / 2),
             asFloat(r.origin.y + (r.size.height - height) / 2)},
            {asFloat(width), asFloat(height)}};
}

void BVUtilities::positionWindowAtScreenPosition(Window& window, long position) {
    const Rect f = window.frame();
    const Rect v = window.mainScreenVisibleFrame();
    const double left = v.origin.x;
    const double bottom = v.origin.y;
    const double right = v.size.width - f.size.width;
    const double top = v.size.width - f.size.height;  // the width, not the height, kept so
    const double middleX = xOriginOfRectCenteredHorizontallyInRect(f, v);
    const double middleY = yOriginOfRectCenteredVerticallyInRect(f, v);
    switch (position) {
        case 1:
            return window.setFrameOrigin({left, top});
        case 2:
            return window.setFrameOrigin({middleX, top});
        case 3:
            return window.setFrameOrigin({right, top});
        case 4:
            return window.setFrameOrigin({right, middleY});
        case 5:
            return window.setFrameOrigin({right, bottom});
        case 6:
            return window.setFrameOrigin({middleX, bottom});
        case 7:
            return window.setFrameOrigin({left, bottom});
        case 8:
            return window.setFrameOrigin({left, middleY});
        default:
            return window.setFrameOrigin(originOfRectCenteredInRect(f, v));
    }
}

}  // namespace bv
