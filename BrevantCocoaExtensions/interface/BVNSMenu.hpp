// BVNSMenu: building, searching and pruning QMenus by tag and title, and telling items' targets.
//
// Items are QActions with the MenuItem properties (tag, state, target and action, key equivalent).
// Items the helpers create are owned by the menu they are added to.
//
// Pitfalls callers rely on:
//   - menuItemWithTagRecursiveSearch and submenuWithTitleRecursiveSearch look inside an item's submenu
//     before they compare the item itself, so a deeper match can win over its own parent item.
//   - addUniqueMenuItem... compares titles exactly (case and all) and adds nothing on a match.
#pragma once

#include <QAction>
#include <QByteArray>
#include <QMenu>
#include <cstddef>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSMenu {

// Appends a new item with the title, tag, target, action and key equivalent; answers it.
QAction* addItemWithTitleTagTargetActionKeyEquivalent(QMenu& self, const Text& title, int tag,
                                                      QObject* target, const QByteArray& action,
                                                      const Text& keyEquivalent);
// The same unless an item has exactly that title; then nothing is added and the answer is null.
QAction* addUniqueMenuItemWithTitleTagTargetActionKeyEquivalent(QMenu& self, const Text& title, int tag,
                                                                QObject* target, const QByteArray& action,
                                                                const Text& keyEquivalent);
// Appends a copy of every item of the other menu (submenus copied too), in order.
void addItemsFromMenu(QMenu& self, const QMenu& menu);
// One item per title, in order, with the target and action (tag 0, or the tag given).
void addItemsWithTitlesTargetAction(QMenu& self, const std::vector<Text>& titles, QObject* target,
                                    const QByteArray& action);
void addItemsWithTitlesTagTargetAction(QMenu& self, const std::vector<Text>& titles, int tag, QObject* target,
                                       const QByteArray& action);
// Separators, appended or inserted, with a tag where given. An index past the end throws RangeException.
QAction* addSeparatorItem(QMenu& self);
QAction* addSeparatorItemWithTag(QMenu& self, int tag);
QAction* insertSeparatorItemAtIndex(QMenu& self, std::size_t index);
QAction* insertSeparatorItemWithTagAtIndex(QMenu& self, int tag, std::size_t index);
// Inserts a new item at the index (RangeException past the end).
QAction* insertItemWithTitleTagTargetActionKeyEquivalentAtIndex(QMenu& self, const Text& title, int tag,
                                                                QObject* target, const QByteArray& action,
                                                                const Text& keyEquivalent, std::size_t index);
// Removals by tag or title (the items are deleted when the menu owns them).
void removeItemsWithTag(QMenu& self, int tag);
void removeItemsWithTagsAboveTag(QMenu& self, int tag);
void removeAllItemsExceptItemsWithTag(QMenu& self, int tag);
void removeItemsWithTitleCaseInsensitiveCompare(QMenu& self, const Text& title, bool caseInsensitive);
// The first item with the tag; with the search flag each item's submenu is searched (depth first, in item
// order) before the item's own tag is compared. Null when none.
[[nodiscard]] QAction* menuItemWithTagRecursiveSearch(const QMenu& self, int tag, bool recursiveSearch);
// The submenu of the first item with exactly that title, searching submenus first likewise; null when none.
[[nodiscard]] QMenu* submenuWithTitleRecursiveSearch(const QMenu& self, const Text& title,
                                                     bool recursiveSearch);
// The items with the state, each item before its submenu's items when recursive.
[[nodiscard]] std::vector<QAction*> menuItemsWithStateRecursiveSearch(const QMenu& self, int state,
                                                                      bool recursiveSearch);
// Target and action on every item (and into submenus when asked), or from the index to the end.
void setAllMenuItemsTargetMenuItemsActionRecursively(QMenu& self, QObject* target, const QByteArray& action,
                                                     bool recursively);
void setAllMenuItemsFromIndexToItemTargetItemActionRecursively(QMenu& self, std::size_t index,
                                                               QObject* target, const QByteArray& action,
                                                               bool recursively);
// Every item on or off; every item enabled or disabled.
void setAllItemsChecked(QMenu& self, bool checked);
void setAllItemsEnabled(QMenu& self, bool enabled);
// A new item with the empty title and no action holding the submenu (the menu takes ownership of it).
QAction* addSubmenu(QMenu& self, QMenu* submenu);
QAction* insertSubmenuAtIndex(QMenu& self, QMenu* submenu, std::size_t index);
// performActionForItem of the item found by menuItemWithTagRecursiveSearch (recursive); false when none.
bool performActionForItemWithTag(QMenu& self, int tag);
// Sends the item's action to its target with the item as the argument.
bool performActionForItem(QMenu& self, QAction* item);

}  // namespace bv::BVNSMenu
