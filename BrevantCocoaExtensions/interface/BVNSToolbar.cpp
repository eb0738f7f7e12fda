// Toolbar items by tag and identifier.
#include "BrevantCocoaExtensions/interface/BVNSToolbar.hpp"

#include <QIcon>
#include <QPixmap>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/MenuItem.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/platform/Bundle.hpp"

namespace bv::BVNSToolbar {

namespace {
constexpr const char* identifierKey = "bvIdentifier";

QAction* firstItemWhere(const QToolBar& self, const auto& matches) {
    for (QAction* item : self.actions())
        if (matches(item)) return item;
    return nullptr;
}

void removeItem(QToolBar& self, QAction* item) {
    self.removeAction(item);
    if (item->parent() == &self) delete item;
}

QImage imageNamed(const Text& name) {
    const QImage image = BVNSImage::imageNamedForBundle(name, *Bundle::mainBundle());
    return image.isNull() ? BVNSImage::imageNamedForBundle(name, *Bundle::libraryBundle()) : image;
}
}  // namespace

Text identifier(const QAction* item) {
    return fromQString(item->property(identifierKey).toString());
}

void setIdentifier(QAction* item, const Text& identifier) {
    item->setProperty(identifierKey, toQString(identifier));
}

std::size_t numberOfItems(const QToolBar& self) {
    return static_cast<std::size_t>(self.actions().size());
}

QAction* itemWithTag(const QToolBar& self, int tag) {
    return firstItemWhere(self, [tag](const QAction* item) { return MenuItem::tag(item) == tag; });
}

QAction* itemWithIdentifier(const QToolBar& self, const Text& wanted) {
    return firstItemWhere(self, [&wanted](const QAction* item) { return identifier(item) == wanted; });
}

QAction* addItemWithItemIdentifier(QToolBar& self, const Text& identifier) {
    auto* item = new QAction(toQString(identifier), &self);
    setIdentifier(item, identifier);
    self.addAction(item);
    return item;
}

void removeItemWithIdentifier(QToolBar& self, const Text& wanted) {
    QAction* item = firstItemWhere(self, [&wanted](const QAction* candidate) {
        return identifier(candidate).equals(wanted, CompareMode::CaseInsensitive);
    });
    if (item) removeItem(self, item);
}

void removeItemsWithIdentifierSegment(QToolBar& self, const Text& segment) {
    for (QAction* item : self.actions())
        if (identifier(item).contains(segment, CompareMode::Default)) removeItem(self, item);
}

void setAllItemsEnabled(QToolBar& self, bool enabled) {
    for (QAction* item : self.actions())
        item->setEnabled(enabled);
}

void setEnabledForItemWithTag(QToolBar& self, bool enabled, int tag) {
    if (QAction* item = itemWithTag(self, tag)) item->setEnabled(enabled);
}

void setImageNamedToolTipForItemWithTag(QToolBar& self, const Text& imageName, const Text& toolTip, int tag) {
    setImageToolTipForItemWithTag(self, imageNamed(imageName), toolTip, tag);
}

void setImageToolTipForItemWithTag(QToolBar& self, const QImage& image, const Text& toolTip, int tag) {
    QAction* item = itemWithTag(self, tag);
    if (!item) return;
    item->setIcon(image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image)));
    item->setToolTip(toQString(toolTip));
}

void setToolTipForItemWithTag(QToolBar& self, const Text& toolTip, int tag) {
    if (QAction* item = itemWithTag(self, tag)) item->setToolTip(toQString(toolTip));
}

}  // namespace bv::BVNSToolbar
