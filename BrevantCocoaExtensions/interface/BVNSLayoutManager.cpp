// Rotated drawing of a range of a document's text.
#include "BrevantCocoaExtensions/interface/BVNSLayoutManager.hpp"

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"

namespace bv::BVNSLayoutManager {

void drawGlyphsForGlyphRangeSizeOfGlyphsRotateAtAngleAtPoint(const QAbstractTextDocumentLayout& self,
                                                             QPainter& painter, Range glyphRange,
                                                             const Size& size, double angle,
                                                             const Point& point) {
    const AttributedString glyphs =
        AttributedString::fromDocument(*self.document()).attributedSubstring(glyphRange);
    const QPointF centre(point.x + size.width / 2, point.y + size.height / 2);
    painter.save();
    painter.translate(centre);
    painter.rotate(angle);
    painter.translate(-centre);
    glyphs.draw(painter, QPointF(point.x, point.y));
    painter.restore();
}

}  // namespace bv::BVNSLayoutManager
