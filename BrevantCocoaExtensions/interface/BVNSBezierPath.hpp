// BVNSBezierPath: dashed lines, element kinds, moving a path to the origin or the centre of a rectangle, and
// drawing a path into an image, on a QPainterPath with its line width and dash pattern.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <vector>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// A path with the stroke settings that travel with it.
struct BezierPath {
    QPainterPath path;
    double lineWidth = 1.0;
    std::vector<double> dashPattern;  // line, gap, line, gap ... lengths; empty for a solid line
    double dashPhase = 0.0;
};

namespace BVNSBezierPath {

// The element kinds, numbered as pathElements answers them.
enum PathElementKind { MoveTo = 0, LineTo = 1, CurveTo = 2, ClosePath = 3 };

// An empty path whose stroke is dashed: a line of `line` length, then a gap of `gap`, phase 0.
[[nodiscard]] BezierPath bezierPathWithLineSegmentGapSegment(double line, double gap);
// The kind of each element in order. A curve counts once (not its control points), and a line that
// returns to its subpath's start as the subpath's last element counts as the close.
[[nodiscard]] ValueArray pathElements(const BezierPath& self);
// Translates the path so that its bounds, grown by the line width on every side, start at (0, 0).
void moveOriginToZero(BezierPath& self);
// moveOriginToZero, then translated by the origin at which the path's bounds sit centred in the rectangle.
void centerInBounds(BezierPath& self, const Rect& bounds);
// Raises the receiver's line width to at least 1; then an image the size of a moved copy's bounds grown by
// the line width, with the path filled in the fill colour and stroked in the line colour.
[[nodiscard]] QImage imageWithColorFillColor(BezierPath& self, const QColor& lineColor,
                                             const QColor& fillColor);

}  // namespace BVNSBezierPath
}  // namespace bv
