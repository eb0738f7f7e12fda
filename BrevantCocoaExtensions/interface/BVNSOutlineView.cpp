// The selected item and context menus of QTreeViews.
#include "BrevantCocoaExtensions/interface/BVNSOutlineView.hpp"

#include <QItemSelectionModel>

#include "BrevantCocoaExtensions/interface/BVNSView.hpp"

namespace bv::BVNSOutlineView {

QModelIndex selectedItem(const QTreeView& self) {
    const QItemSelectionModel* selection = self.selectionModel();
    if (!selection) return {};
    const QModelIndex current = selection->currentIndex();
    if (current.isValid() && selection->isRowSelected(current.row(), current.parent()))
        return current.siblingAtColumn(0);
    const QModelIndexList rows = selection->selectedRows(0);
    return rows.isEmpty() ? QModelIndex() : rows.last();
}

QMenu* menuForEvent(QTreeView& self, const QContextMenuEvent& event) {
    const QModelIndex item = self.indexAt(event.pos()).siblingAtColumn(0);
    if (MenuDelegate* delegate = BVNSTableView::menuDelegate(self))
        if (const auto answer = delegate->menuForItemWithEvent(item, event)) return *answer;
    return BVNSView::menu(self);
}

}  // namespace bv::BVNSOutlineView
