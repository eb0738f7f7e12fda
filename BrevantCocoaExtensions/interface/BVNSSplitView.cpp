// The panes of QSplitters.
#include "BrevantCocoaExtensions/interface/BVNSSplitView.hpp"

#include <QScrollArea>
#include <QTableView>

#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSView.hpp"

namespace bv::BVNSSplitView {

namespace {
// The table a pane shows: the pane itself, or the widget of a scroll area; null otherwise.
QTableView* tableOf(QWidget* pane) {
    if (auto* table = qobject_cast<QTableView*>(pane)) return table;
    if (auto* scrollArea = qobject_cast<QScrollArea*>(pane))
        return qobject_cast<QTableView*>(scrollArea->widget());
    return nullptr;
}
}  // namespace

std::size_t numberOfSubviews(const QSplitter& self) {
    return static_cast<std::size_t>(self.count());
}

QWidget* subviewWithFocus(const QSplitter& self) {
    return BVNSView::subviewWithFocus(self);
}

void reloadTableBasedSubviews(QSplitter& self) {
    for (int pane = 0; pane < self.count(); ++pane)
        if (QTableView* table = tableOf(self.widget(pane))) BVNSTableView::reloadData(*table);
}

void removeAllSubviews(QSplitter& self) {
    while (self.count() > 0)
        delete self.widget(self.count() - 1);
}

}  // namespace bv::BVNSSplitView
