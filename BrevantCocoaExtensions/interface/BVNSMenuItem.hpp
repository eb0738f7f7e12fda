// BVNSMenuItem: new menu items with a picture or a styled title, each with a tag, target and action.
// The caller owns the new item until a menu or widget takes it (QMenu::addAction does not; setParent does).
#pragma once

#include <QAction>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <memory>

#include "BrevantCocoaExtensions/interface/TextAttributes.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSMenuItem {

// An item with the empty title "" and the picture.
[[nodiscard]] std::unique_ptr<QAction> menuItemWithImageItemTagTargetAction(const QImage& image, int tag,
                                                                            QObject* target,
                                                                            const QByteArray& action);
// An item titled with the text in the named font at the size and in the colour.
[[nodiscard]] std::unique_ptr<QAction> menuItemWithTitleItemTagFontNameFontSizeColorTargetAction(
    const Text& title, int tag, const Text& fontName, double fontSize, const QColor& color, QObject* target,
    const QByteArray& action);
// An item whose empty title "" is replaced by the styled title.
[[nodiscard]] std::unique_ptr<QAction> menuItemWithAttributedTitleItemTagTargetAction(
    const AttributedTitle& title, int tag, QObject* target, const QByteArray& action);

}  // namespace bv::BVNSMenuItem
