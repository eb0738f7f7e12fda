// bv::TextAttributes: how a text is drawn (font and colour), the attributes the image and menu helpers take,
// and bv::AttributedTitle, a text with its attributes.
#pragma once

#include <QColor>
#include <QFont>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

struct TextAttributes {
    QFont font;
    QColor foregroundColor = QColor(Qt::black);
};

}  // namespace bv

namespace bv {

// A title drawn in its own attributes (a menu item's styled title).
struct AttributedTitle {
    Text text;
    TextAttributes attributes;
};

}  // namespace bv
