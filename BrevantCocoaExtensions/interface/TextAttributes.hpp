// bv::TextAttributes: how a text is drawn (font and colour), the attributes the image and menu helpers take.
#pragma once

#include <QColor>
#include <QFont>

namespace bv {

struct TextAttributes {
    QFont font;
    QColor foregroundColor = QColor(Qt::black);
};

}  // namespace bv
