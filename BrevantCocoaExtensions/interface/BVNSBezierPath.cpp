// Path helpers on QPainterPath.
#include "BrevantCocoaExtensions/interface/BVNSBezierPath.hpp"

#include <QPainter>
#include <QPen>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImageInternal.hpp"

namespace bv::BVNSBezierPath {

namespace {
QRectF grownBounds(const BezierPath& path) {
    const double width = path.lineWidth;
    return path.path.boundingRect().adjusted(-width, -width, width, width);
}

bool endsSubpath(const QPainterPath& path, int index) {
    return index + 1 == path.elementCount() || path.elementAt(index + 1).isMoveTo();
}

QPen strokePen(const BezierPath& path, const QColor& color) {
    QPen pen(color, path.lineWidth);
    if (!path.dashPattern.empty() && path.lineWidth > 0) {
        // Qt measures dashes in line widths; the path's pattern is in points.
        QList<qreal> pattern;
        for (double length : path.dashPattern)
            pattern.append(length / path.lineWidth);
        pen.setDashPattern(pattern);
        pen.setDashOffset(path.dashPhase / path.lineWidth);
    }
    return pen;
}
}  // namespace

BezierPath bezierPathWithLineSegmentGapSegment(double line, double gap) {
    BezierPath path;
    path.dashPattern = {line, gap};
    path.dashPhase = 0.0;
    return path;
}

ValueArray pathElements(const BezierPath& self) {
    ValueArray kinds;
    const QPainterPath& path = self.path;
    QPointF subpathStart;
    for (int index = 0; index < path.elementCount(); ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        if (element.isMoveTo()) {
            subpathStart = element;
            kinds.emplace_back(static_cast<int>(MoveTo));
        } else if (element.isLineTo()) {
            const bool closes = QPointF(element) == subpathStart && endsSubpath(path, index);
            kinds.emplace_back(static_cast<int>(closes ? ClosePath : LineTo));
        } else if (element.isCurveTo()) {
            kinds.emplace_back(static_cast<int>(CurveTo));
        }
        // The control points that follow a curve are part of it.
    }
    return kinds;
}

void moveOriginToZero(BezierPath& self) {
    const QRectF grown = grownBounds(self);
    self.path.translate(-grown.x(), -grown.y());
}

void centerInBounds(BezierPath& self, const Rect& bounds) {
    moveOriginToZero(self);
    const QRectF own = self.path.boundingRect();
    const Point origin = BVUtilities::originOfRectCenteredInRect(
        Rect{{own.x(), own.y()}, {own.width(), own.height()}}, bounds);
    self.path.translate(origin.x, origin.y);
}

QImage imageWithColorFillColor(BezierPath& self, const QColor& lineColor, const QColor& fillColor) {
    if (self.lineWidth < 1.0) self.lineWidth = 1.0;
    BezierPath moved = self;
    moveOriginToZero(moved);
    const QRectF grown = grownBounds(self);
    QImage image = BVNSImage::detail::blankImage(Size{grown.width(), grown.height()});
    if (image.isNull()) return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(moved.path, fillColor);
    painter.strokePath(moved.path, strokePen(moved, lineColor));
    return image;
}

}  // namespace bv::BVNSBezierPath
