// New menu items with pictures or styled titles.
#include "BrevantCocoaExtensions/interface/BVNSMenuItem.hpp"

#include <QIcon>
#include <QPixmap>

#include "BrevantCocoaExtensions/interface/MenuItem.hpp"

namespace bv::BVNSMenuItem {

namespace {
std::unique_ptr<QAction> untitledItem(int tag, QObject* target, const QByteArray& action) {
    return std::unique_ptr<QAction>(MenuItem::newItem(Text(""), tag, target, action, Text(""), nullptr));
}
}  // namespace

std::unique_ptr<QAction> menuItemWithImageItemTagTargetAction(const QImage& image, int tag, QObject* target,
                                                              const QByteArray& action) {
    auto item = untitledItem(tag, target, action);
    item->setIcon(QIcon(QPixmap::fromImage(image)));
    return item;
}

std::unique_ptr<QAction> menuItemWithTitleItemTagFontNameFontSizeColorTargetAction(
    const Text& title, int tag, const Text& fontName, double fontSize, const QColor& color, QObject* target,
    const QByteArray& action) {
    QFont font(toQString(fontName));
    font.setPointSizeF(fontSize);
    return menuItemWithAttributedTitleItemTagTargetAction(AttributedTitle{title, TextAttributes{font, color}},
                                                          tag, target, action);
}

std::unique_ptr<QAction> menuItemWithAttributedTitleItemTagTargetAction(const AttributedTitle& title, int tag,
                                                                        QObject* target,
                                                                        const QByteArray& action) {
    auto item = untitledItem(tag, target, action);
    MenuItem::setAttributedTitle(item.get(), title);
    return item;
}

}  // namespace bv::BVNSMenuItem
