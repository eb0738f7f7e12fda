// Column short-cuts, sizing and context menus of QTableViews over a TableColumnModel.
#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"

#include <QHeaderView>
#include <QPointer>
#include <QVariant>
#include <algorithm>
#include <string>

#include "BrevantCocoaExtensions/interface/BVNSView.hpp"
#include "BrevantCocoaExtensions/interface/ContextMenuInternal.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

std::optional<QMenu*> MenuDelegate::menuForRowWithEvent(int /*row*/, const QContextMenuEvent& /*event*/) {
    return std::nullopt;
}

std::optional<QMenu*> MenuDelegate::menuForItemWithEvent(const QModelIndex& /*item*/,
                                                         const QContextMenuEvent& /*event*/) {
    return std::nullopt;
}

}  // namespace bv

namespace bv::BVNSTableView {

namespace {
constexpr const char* delegateKey = "bvMenuDelegate";

// The view's column model; null when the view has no model at all.
const TableColumnModel* existingModel(const QTableView& self) {
    if (!self.model()) return nullptr;
    const auto* model = qobject_cast<const TableColumnModel*>(self.model());
    if (!model)
        throw InvalidArgumentException("the table's model is a " +
                                       std::string(self.model()->metaObject()->className()) +
                                       ", not a bv::TableColumnModel");
    return model;
}

// The place shown of the first column with the identifier, or -1.
int visualIndexOf(QTableView& self, const Text& identifier) {
    const int logical = columnModel(self).indexOfColumnWithIdentifier(identifier);
    return logical < 0 ? -1 : self.horizontalHeader()->visualIndex(logical);
}

TableColumn ascendingColumn(const Text& identifier, const Text& title, const std::optional<Text>& format) {
    return TableColumn{identifier, title, SortDescriptor{identifier, true}, format};
}
}  // namespace

TableColumnModel& columnModel(QTableView& self) {
    if (existingModel(self)) return *qobject_cast<TableColumnModel*>(self.model());
    auto* model = new TableColumnModel(&self);
    self.setModel(model);
    return *model;
}

std::vector<Text> tableColumnIdentifiers(const QTableView& self) {
    std::vector<Text> identifiers;
    const TableColumnModel* model = existingModel(self);
    if (!model) return identifiers;
    const QHeaderView* header = self.horizontalHeader();
    for (int visual = 0; visual < model->columnCount(); ++visual)
        identifiers.push_back(
            model->columns()[static_cast<std::size_t>(header->logicalIndex(visual))].identifier);
    return identifiers;
}

QAbstractScrollArea* scrollView(QTableView& self) {
    return &self;
}

std::size_t createAndAddTableColumnWithIdentifierColumnHeaderTitle(QTableView& self, const Text& identifier,
                                                                   const Text& title) {
    TableColumnModel& model = columnModel(self);
    model.appendColumn(TableColumn{identifier, title, std::nullopt, std::nullopt});
    return static_cast<std::size_t>(model.columnCount() - 1);
}

bool createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
    QTableView& self, const Text& identifier, const Text& title, const std::optional<Text>& numberFormat) {
    TableColumnModel& model = columnModel(self);
    if (model.indexOfColumnWithIdentifier(identifier) >= 0) return false;
    model.appendColumn(ascendingColumn(identifier, title, numberFormat));
    return true;
}

void insertTableColumnAtIndex(QTableView& self, TableColumn column, std::size_t index) {
    TableColumnModel& model = columnModel(self);
    if (index > static_cast<std::size_t>(model.columnCount()))
        throw RangeException("insertTableColumnAtIndex: index " + std::to_string(index) + " beyond " +
                             std::to_string(model.columnCount()) + " columns");
    model.appendColumn(std::move(column));
    const int last = model.columnCount() - 1;
    self.horizontalHeader()->moveSection(last, static_cast<int>(index));
}

void removeTableColumnWithIdentifier(QTableView& self, const Text& identifier) {
    TableColumnModel& model = columnModel(self);
    model.removeColumnAt(model.indexOfColumnWithIdentifier(identifier));
}

void removeAllTableColumns(QTableView& self) {
    columnModel(self).removeAllColumns();
}

void moveColumnToLastIndexWithIdentifier(QTableView& self, const Text& identifier) {
    const int visual = visualIndexOf(self, identifier);
    if (visual >= 0) self.horizontalHeader()->moveSection(visual, columnModel(self).columnCount() - 1);
}

void resizeToFitForRows(QTableView& self, int rows) {
    const QHeaderView* header = self.horizontalHeader();
    const int headerHeight = header->isHidden() ? 0 : header->sizeHint().height();
    const int rowHeight = self.verticalHeader()->defaultSectionSize();
    self.resize(self.width(), std::max(rows, 0) * rowHeight + headerHeight + 2 * self.frameWidth());
}

QMenu* menuForEvent(QTableView& self, const QContextMenuEvent& event) {
    const int row = self.rowAt(event.pos().y());
    if (MenuDelegate* delegate = menuDelegate(self))
        if (const auto answer = delegate->menuForRowWithEvent(row, event)) return *answer;
    return BVNSView::menu(self);
}

void reloadData(QTableView& self) {
    self.reset();
    self.viewport()->update();
}

MenuDelegate* menuDelegate(const QAbstractItemView& self) {
    return self.property(delegateKey).value<QPointer<MenuDelegate>>().data();
}

void setMenuDelegate(QAbstractItemView& self, MenuDelegate* delegate) {
    self.setProperty(delegateKey, QVariant::fromValue(QPointer<MenuDelegate>(delegate)));
    if (delegate) internal::ensureContextMenuFilter(self);
}

}  // namespace bv::BVNSTableView
