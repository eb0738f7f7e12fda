// bv::TableColumnModel: the model behind the table helpers. Its columns carry what a table column needs
// beside its cells: an identifier, a header title, a sort key (the sort-descriptor prototype) and a number
// format for its cells. Its rows are dictionaries: a cell shows the row's value under the column's
// identifier.
//
// Pitfalls callers rely on:
//   - Column order on screen is the header's visual order; the model keeps its columns in the order they
//     were added. The table helpers move header sections, never model columns.
//   - sort() sorts by the column's sort key with its comparison; Qt's ascending order is the direction of
//     the prototype, descending the reverse. A column without a prototype does not sort. Values the
//     comparison cannot order (a text against a number) leave the rows as they were, with a log line.
//   - Number formats are decimal patterns ("0.00", "#,##0", "0%") applied with the current locale's
//     symbols; a number under a column without a format shows its plain text form.
#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/SortDescriptor.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

struct TableColumn {
    Text identifier;
    Text headerTitle;
    std::optional<SortDescriptor> sortDescriptorPrototype;
    std::optional<Text> numberFormat;  // a decimal pattern for the column's numbers
};

class TableColumnModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit TableColumnModel(QObject* parent = nullptr);
    ~TableColumnModel() override;

    // The columns in the order they were added (the model's logical order).
    [[nodiscard]] const std::vector<TableColumn>& columns() const noexcept { return columns_; }
    // The logical index of the first column with the identifier, or -1.
    [[nodiscard]] int indexOfColumnWithIdentifier(const Text& identifier) const;
    // Appends the column; a number format that is no valid pattern throws InvalidArgumentException.
    void appendColumn(TableColumn column);
    void removeColumnAt(int column);
    void removeAllColumns();

    // The rows, each a ValueDictionary keyed by column identifiers (other values show nothing).
    [[nodiscard]] const ValueArray& rows() const noexcept { return rows_; }
    void setRows(ValueArray rows);
    // The row's value under the column's identifier; null when absent.
    [[nodiscard]] Value valueAt(int row, int column) const;
    // The text a cell shows: a number through its column's format, a text as it is, other values by their
    // description, nothing for null.
    [[nodiscard]] Text displayTextAt(int row, int column) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

  private:
    class NumberFormat;
    std::vector<TableColumn> columns_;
    std::vector<std::shared_ptr<const NumberFormat>> formats_;  // one per column, null without a format
    ValueArray rows_;
};

}  // namespace bv
