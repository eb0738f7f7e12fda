// BVNSOutlineView: the selected item and context menus of QTreeViews. An item is the model index of its
// row's first column.
#pragma once

#include <QContextMenuEvent>
#include <QMenu>
#include <QModelIndex>
#include <QTreeView>

#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"

namespace bv::BVNSOutlineView {

// The item of the selected row: the current row when it is selected, else the last selected row; invalid
// when nothing is selected.
[[nodiscard]] QModelIndex selectedItem(const QTreeView& self);
// The item under the event's position (viewport coordinates); the delegate's menu for it when the delegate
// answers (BVNSTableView::setMenuDelegate), else the standard menu (BVNSView::setMenu).
[[nodiscard]] QMenu* menuForEvent(QTreeView& self, const QContextMenuEvent& event);

}  // namespace bv::BVNSOutlineView
