// Menu helpers on QMenu.
#include "BrevantCocoaExtensions/interface/BVNSMenu.hpp"

#include <functional>

#include "BrevantCocoaExtensions/interface/MenuItem.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSMenu {

namespace {
// The item before which an insertion at the index goes (null appends); RangeException past the end.
QAction* itemBefore(const QMenu& menu, std::size_t index) {
    const QList<QAction*> items = menu.actions();
    if (index > static_cast<std::size_t>(items.size())) throw RangeException("menu index beyond the end");
    return index == static_cast<std::size_t>(items.size()) ? nullptr : items[static_cast<qsizetype>(index)];
}

void removeItemsWhere(QMenu& menu, const std::function<bool(const QAction*)>& predicate) {
    for (QAction* item : menu.actions()) {
        if (!predicate(item)) continue;
        menu.removeAction(item);
        if (item->parent() == &menu) delete item;
    }
}

QAction* separatorWithTag(QMenu& menu, int tag) {
    auto* separator = new QAction(&menu);
    separator->setSeparator(true);
    MenuItem::setTag(separator, tag);
    return separator;
}

QAction* submenuItem(QMenu& menu, QMenu* submenu) {
    if (!submenu->parent()) submenu->setParent(&menu, submenu->windowFlags());
    auto* item = new QAction(QString(), &menu);
    item->setMenu(submenu);
    return item;
}

void forEachItem(const QMenu& menu, std::size_t from, bool recursively,
                 const std::function<void(QAction*)>& apply) {
    const QList<QAction*> items = menu.actions();
    for (qsizetype index = static_cast<qsizetype>(from); index < items.size(); ++index) {
        apply(items[index]);
        if (recursively && items[index]->menu()) forEachItem(*items[index]->menu(), 0, true, apply);
    }
}

// The first item (submenus searched before each item itself when recursive) that matches.
QAction* findItem(const QMenu& menu, bool recursive, const std::function<bool(const QAction*)>& matches) {
    for (QAction* item : menu.actions()) {
        if (recursive && item->menu()) {
            if (QAction* found = findItem(*item->menu(), true, matches)) return found;
        }
        if (matches(item)) return item;
    }
    return nullptr;
}
}  // namespace

QAction* addItemWithTitleTagTargetActionKeyEquivalent(QMenu& self, const Text& title, int tag,
                                                      QObject* target, const QByteArray& action,
                                                      const Text& keyEquivalent) {
    QAction* item = MenuItem::newItem(title, tag, target, action, keyEquivalent, &self);
    self.addAction(item);
    return item;
}

QAction* addUniqueMenuItemWithTitleTagTargetActionKeyEquivalent(QMenu& self, const Text& title, int tag,
                                                                QObject* target, const QByteArray& action,
                                                                const Text& keyEquivalent) {
    const QString wanted = toQString(title);
    for (const QAction* item : self.actions()) {
        if (item->text() == wanted) return nullptr;
    }
    return addItemWithTitleTagTargetActionKeyEquivalent(self, title, tag, target, action, keyEquivalent);
}

void addItemsFromMenu(QMenu& self, const QMenu& menu) {
    for (const QAction* item : menu.actions())
        self.addAction(MenuItem::copyOfItem(item, &self));
}

void addItemsWithTitlesTargetAction(QMenu& self, const std::vector<Text>& titles, QObject* target,
                                    const QByteArray& action) {
    addItemsWithTitlesTagTargetAction(self, titles, 0, target, action);
}

void addItemsWithTitlesTagTargetAction(QMenu& self, const std::vector<Text>& titles, int tag, QObject* target,
                                       const QByteArray& action) {
    for (const Text& title : titles) {
        addItemWithTitleTagTargetActionKeyEquivalent(self, title, tag, target, action, Text());
    }
}

QAction* addSeparatorItem(QMenu& self) {
    return addSeparatorItemWithTag(self, 0);
}

QAction* addSeparatorItemWithTag(QMenu& self, int tag) {
    return insertSeparatorItemWithTagAtIndex(self, tag, static_cast<std::size_t>(self.actions().size()));
}

QAction* insertSeparatorItemAtIndex(QMenu& self, std::size_t index) {
    return insertSeparatorItemWithTagAtIndex(self, 0, index);
}

QAction* insertSeparatorItemWithTagAtIndex(QMenu& self, int tag, std::size_t index) {
    QAction* before = itemBefore(self, index);
    QAction* separator = separatorWithTag(self, tag);
    self.insertAction(before, separator);
    return separator;
}

QAction* insertItemWithTitleTagTargetActionKeyEquivalentAtIndex(QMenu& self, const Text& title, int tag,
                                                                QObject* target, const QByteArray& action,
                                                                const Text& keyEquivalent,
                                                                std::size_t index) {
    QAction* before = itemBefore(self, index);
    QAction* item = MenuItem::newItem(title, tag, target, action, keyEquivalent, &self);
    self.insertAction(before, item);
    return item;
}

void removeItemsWithTag(QMenu& self, int tag) {
    removeItemsWhere(self, [tag](const QAction* item) { return MenuItem::tag(item) == tag; });
}

void removeItemsWithTagsAboveTag(QMenu& self, int tag) {
    removeItemsWhere(self, [tag](const QAction* item) { return MenuItem::tag(item) > tag; });
}

void removeAllItemsExceptItemsWithTag(QMenu& self, int tag) {
    removeItemsWhere(self, [tag](const QAction* item) { return MenuItem::tag(item) != tag; });
}

void removeItemsWithTitleCaseInsensitiveCompare(QMenu& self, const Text& title, bool caseInsensitive) {
    const CompareMode mode = caseInsensitive ? CompareMode::CaseInsensitive : CompareMode::Literal;
    removeItemsWhere(self, [&](const QAction* item) { return MenuItem::title(item).equals(title, mode); });
}

QAction* menuItemWithTagRecursiveSearch(const QMenu& self, int tag, bool recursiveSearch) {
    return findItem(self, recursiveSearch, [tag](const QAction* item) { return MenuItem::tag(item) == tag; });
}

QMenu* submenuWithTitleRecursiveSearch(const QMenu& self, const Text& title, bool recursiveSearch) {
    const QString wanted = toQString(title);
    const QAction* item = findItem(self, recursiveSearch,
                                   [&](const QAction* candidate) { return candidate->text() == wanted; });
    return item ? item->menu() : nullptr;
}

std::vector<QAction*> menuItemsWithStateRecursiveSearch(const QMenu& self, int state, bool recursiveSearch) {
    std::vector<QAction*> found;
    forEachItem(self, 0, recursiveSearch, [&](QAction* item) {
        if (MenuItem::state(item) == state) found.push_back(item);
    });
    return found;
}

void setAllMenuItemsTargetMenuItemsActionRecursively(QMenu& self, QObject* target, const QByteArray& action,
                                                     bool recursively) {
    setAllMenuItemsFromIndexToItemTargetItemActionRecursively(self, 0, target, action, recursively);
}

void setAllMenuItemsFromIndexToItemTargetItemActionRecursively(QMenu& self, std::size_t index,
                                                               QObject* target, const QByteArray& action,
                                                               bool recursively) {
    forEachItem(self, index, recursively,
                [&](QAction* item) { MenuItem::setTargetAndAction(item, target, action); });
}

void setAllItemsChecked(QMenu& self, bool checked) {
    for (QAction* item : self.actions())
        MenuItem::setState(item, checked ? MenuItem::On : MenuItem::Off);
}

void setAllItemsEnabled(QMenu& self, bool enabled) {
    for (QAction* item : self.actions())
        item->setEnabled(enabled);
}

QAction* addSubmenu(QMenu& self, QMenu* submenu) {
    return insertSubmenuAtIndex(self, submenu, static_cast<std::size_t>(self.actions().size()));
}

QAction* insertSubmenuAtIndex(QMenu& self, QMenu* submenu, std::size_t index) {
    QAction* before = itemBefore(self, index);
    QAction* item = submenuItem(self, submenu);
    self.insertAction(before, item);
    return item;
}

bool performActionForItemWithTag(QMenu& self, int tag) {
    QAction* item = menuItemWithTagRecursiveSearch(self, tag, true);
    return item && performActionForItem(self, item);
}

bool performActionForItem(QMenu& /*self*/, QAction* item) {
    return MenuItem::perform(item);
}

}  // namespace bv::BVNSMenu
