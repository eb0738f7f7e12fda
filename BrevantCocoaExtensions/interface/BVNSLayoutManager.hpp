// BVNSLayoutManager: drawing part of a laid-out text turned about its own centre. The layout manager is a
// QTextDocument's layout; glyph indexes are character positions in its document.
#pragma once

#include <QAbstractTextDocumentLayout>
#include <QPainter>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSLayoutManager {

// With the painter's state saved: translates to the point plus half the size, rotates by the angle
// (clockwise on screen for a positive angle), translates back, draws the characters of the range with
// their formats at the point, and restores the state. RangeException when the range leaves the text.
void drawGlyphsForGlyphRangeSizeOfGlyphsRotateAtAngleAtPoint(const QAbstractTextDocumentLayout& self,
                                                             QPainter& painter, Range glyphRange,
                                                             const Size& size, double angle,
                                                             const Point& point);

}  // namespace bv::BVNSLayoutManager
