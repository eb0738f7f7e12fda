// BVNSTableView: column short-cuts and context menus for QTableViews whose model is a bv::TableColumnModel.
//
// A table column is a column of the model (identifier, header title, sort key, number format); "column
// order" is the order the header shows, so inserting and moving columns move header sections.
//
// Nearest Qt equivalents chosen where Qt lacks the concept:
//   - A QTableView scrolls itself, so its enclosing scroll view is the table itself (a QAbstractScrollArea);
//     resizeToFitForRows resizes the table. Qt draws grid lines inside the rows, so the vertical intercell
//     spacing is 0.
//   - A table's standard menu is the menu set with BVNSView::setMenu; a menu delegate (bv::MenuDelegate)
//     may answer a row's menu instead. Setting either makes a right click over the table show the menu.
//
// The column helpers install an empty TableColumnModel on a view that has no model; a view that shows
// another kind of model makes them throw InvalidArgumentException.
#pragma once

#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QMenu>
#include <QObject>
#include <QTableView>
#include <cstddef>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/interface/TableColumnModel.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

// Gives the menus of a table's rows or an outline's items. A function left as it is "does not answer",
// and the view's standard menu shows; an answer, even a null menu, is used as it is. Not owned by the view.
class MenuDelegate : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;
    // The menu for a table row (-1 when the event is over no row).
    virtual std::optional<QMenu*> menuForRowWithEvent(int row, const QContextMenuEvent& event);
    // The menu for an outline item (invalid when the event is over no item).
    virtual std::optional<QMenu*> menuForItemWithEvent(const QModelIndex& item,
                                                       const QContextMenuEvent& event);
};

}  // namespace bv

namespace bv::BVNSTableView {

// The view's column model, installing an empty one when the view has none.
TableColumnModel& columnModel(QTableView& self);
// The columns' identifiers in the order shown, a new list.
[[nodiscard]] std::vector<Text> tableColumnIdentifiers(const QTableView& self);
// The view that scrolls the table: the table itself.
[[nodiscard]] QAbstractScrollArea* scrollView(QTableView& self);
// Appends a column with the identifier and header title; answers its place in the order shown.
std::size_t createAndAddTableColumnWithIdentifierColumnHeaderTitle(QTableView& self, const Text& identifier,
                                                                   const Text& title);
// Only when no column has the identifier: appends it as above, sorting ascending by the identifier as key,
// with the number format when one is given. True when a column was added.
bool createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
    QTableView& self, const Text& identifier, const Text& title, const std::optional<Text>& numberFormat);
// Appends the column, then moves it from the last place to the index (RangeException past the end).
void insertTableColumnAtIndex(QTableView& self, TableColumn column, std::size_t index);
// Removes the first column with the identifier (nothing when none), or every column.
void removeTableColumnWithIdentifier(QTableView& self, const Text& identifier);
void removeAllTableColumns(QTableView& self);
// Moves the column with the identifier to the last place shown.
void moveColumnToLastIndexWithIdentifier(QTableView& self, const Text& identifier);
// Makes the table exactly tall enough for that many rows of the default row height and the header.
void resizeToFitForRows(QTableView& self, int rows);
// The row under the event's position (viewport coordinates); the delegate's menu for it when the delegate
// answers, else the standard menu.
[[nodiscard]] QMenu* menuForEvent(QTableView& self, const QContextMenuEvent& event);
// Rereads every cell from the model.
void reloadData(QTableView& self);

// The view's menu delegate (null when none); setting one (null removes it) makes right clicks ask it.
[[nodiscard]] MenuDelegate* menuDelegate(const QAbstractItemView& self);
void setMenuDelegate(QAbstractItemView& self, MenuDelegate* delegate);

}  // namespace bv::BVNSTableView
