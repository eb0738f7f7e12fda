// The table column model: columns with identifiers, titles, sort prototypes and number formats over
// dictionary rows.
#include "BrevantCocoaExtensions/interface/TableColumnModel.hpp"

#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <numeric>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv {

// A decimal pattern ready to format numbers, built once per column.
class TableColumnModel::NumberFormat {
  public:
    explicit NumberFormat(const Text& pattern) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString unicodePattern(pattern.units().data(),
                                                static_cast<int32_t>(pattern.length()));
        format_ = std::make_unique<icu::DecimalFormat>(unicodePattern, status);
        if (U_FAILURE(status))
            throw InvalidArgumentException("no valid number format: \"" + pattern.toUtf8() + "\"");
    }

    [[nodiscard]] Text format(const Number& number) const {
        icu::UnicodeString out;
        if (number.isFloating())
            format_->format(number.doubleValue(), out);
        else if (number.isUnsigned64())
            format_->format(static_cast<double>(number.uint64Value()), out);
        else
            format_->format(static_cast<int64_t>(number.int64Value()), out);
        return Text(std::u16string(out.getBuffer(), static_cast<std::size_t>(out.length())));
    }

  private:
    std::unique_ptr<icu::DecimalFormat> format_;
};

TableColumnModel::TableColumnModel(QObject* parent) : QAbstractTableModel(parent) {}

TableColumnModel::~TableColumnModel() = default;

int TableColumnModel::indexOfColumnWithIdentifier(const Text& identifier) const {
    for (std::size_t column = 0; column < columns_.size(); ++column)
        if (columns_[column].identifier == identifier) return static_cast<int>(column);
    return -1;
}

void TableColumnModel::appendColumn(TableColumn column) {
    auto format = column.numberFormat ? std::make_shared<const NumberFormat>(*column.numberFormat) : nullptr;
    const int at = columnCount();
    beginInsertColumns({}, at, at);
    columns_.push_back(std::move(column));
    formats_.push_back(std::move(format));
    endInsertColumns();
}

void TableColumnModel::removeColumnAt(int column) {
    if (column < 0 || column >= columnCount()) return;
    beginRemoveColumns({}, column, column);
    columns_.erase(columns_.begin() + column);
    formats_.erase(formats_.begin() + column);
    endRemoveColumns();
}

void TableColumnModel::removeAllColumns() {
    if (columns_.empty()) return;
    beginRemoveColumns({}, 0, columnCount() - 1);
    columns_.clear();
    formats_.clear();
    endRemoveColumns();
}

void TableColumnModel::setRows(ValueArray rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

Value TableColumnModel::valueAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) return {};
    const ValueDictionary* fields = rows_[static_cast<std::size_t>(row)].dictionary();
    if (!fields) return {};
    const auto found = fields->find(columns_[static_cast<std::size_t>(column)].identifier);
    return found == fields->end() ? Value() : found->second;
}

Text TableColumnModel::displayTextAt(int row, int column) const {
    const Value value = valueAt(row, column);
    if (value.isNull()) return {};
    if (const Text* text = value.text()) return *text;
    const auto& format = formats_[static_cast<std::size_t>(column)];
    if (const Number* number = value.number(); number && format) return format->format(*number);
    return value.description();
}

int TableColumnModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TableColumnModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant TableColumnModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) {
        const Value value = valueAt(index.row(), index.column());
        return value.isNull() ? QVariant() : QVariant(toQString(displayTextAt(index.row(), index.column())));
    }
    if (role == Qt::TextAlignmentRole && valueAt(index.row(), index.column()).number())
        return QVariant(static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));  // numbers line up on the right
    return {};
}

QVariant TableColumnModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    return toQString(columns_[static_cast<std::size_t>(section)].headerTitle);
}

void TableColumnModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount()) return;
    auto descriptor = columns_[static_cast<std::size_t>(column)].sortDescriptorPrototype;
    if (!descriptor) return;
    if (order == Qt::DescendingOrder) descriptor->ascending = !descriptor->ascending;
    std::vector<std::size_t> positions(rows_.size());
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    try {
        sortIndexesUsingDescriptors(positions, rows_, {*descriptor});
    } catch (const Exception& error) {
        log("Cannot sort the table by \"" + descriptor->key.toUtf8() + "\": " + error.reason());
        return;
    }
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    ValueArray sorted;
    sorted.reserve(rows_.size());
    std::vector<int> newRowOf(rows_.size());
    for (std::size_t position = 0; position < positions.size(); ++position) {
        sorted.push_back(std::move(rows_[positions[position]]));
        newRowOf[positions[position]] = static_cast<int>(position);
    }
    rows_ = std::move(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.push_back(this->index(newRowOf[static_cast<std::size_t>(index.row())], index.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

}  // namespace bv
