// BVNSSplitView: the panes of QSplitters: count, focus, reloading the tables among them, removing them all.
#pragma once

#include <QSplitter>
#include <cstddef>

namespace bv::BVNSSplitView {

// The number of panes.
[[nodiscard]] std::size_t numberOfSubviews(const QSplitter& self);
// The widget with the keyboard focus in the splitter's window; null when none.
[[nodiscard]] QWidget* subviewWithFocus(const QSplitter& self);
// Reloads every pane that is a table, or a scroll area whose widget is a table (BVNSTableView::reloadData).
void reloadTableBasedSubviews(QSplitter& self);
// Deletes every pane.
void removeAllSubviews(QSplitter& self);

}  // namespace bv::BVNSSplitView
