// The button-cell grid.
#include "BrevantCocoaExtensions/interface/Matrix.hpp"

#include <algorithm>

namespace bv {

MatrixCell::MatrixCell(QWidget* parent) : QPushButton(parent) {
    setCheckable(true);
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // a transparent cell keeps its place
    setSizePolicy(policy);
}

void MatrixCell::setTag(int tag) {
    tag_ = tag;
    if (matrix_) matrix_->cellTagChanged(*this);
}

void MatrixCell::setState(int state) {
    mixed_ = state < 0;
    setChecked(state > 0);
}

Matrix::Matrix(int rows, int columns, Mode mode, QWidget* parent)
    : QWidget(parent), mode_(mode), columns_(std::max(columns, 0)), grid_(new QGridLayout(this)) {
    for (int row = 0; row < rows; ++row)
        addRow();
}

MatrixCell* Matrix::newCell(int tag) {
    auto* cell = new MatrixCell(this);
    cell->tag_ = tag;
    cell->matrix_ = this;
    connect(cell, &QPushButton::clicked, this, [this, cell] {
        if (mode_ == Mode::Radio)
            selectCell(cell);
        else
            selected_ = cell;
        emit cellClicked(cell);
    });
    return cell;
}

MatrixCell* Matrix::cellAtRowColumn(int row, int column) const {
    if (row < 0 || row >= rows_ || column < 0 || column >= columns_) return nullptr;
    return cells_[static_cast<std::size_t>(row * columns_ + column)];
}

MatrixCell* Matrix::cellWithTag(int tag) const {
    const auto found = std::find(tags_.begin(), tags_.end(), tag);
    return found == tags_.end() ? nullptr : cells_[static_cast<std::size_t>(found - tags_.begin())];
}

void Matrix::selectCell(MatrixCell* cell) {
    if (!cell) return;
    if (mode_ == Mode::Radio) {
        for (MatrixCell* other : cells_) {
            if (other != cell) other->setState(0);
        }
    }
    cell->setState(1);
    selected_ = cell;
}

void Matrix::addRow() {
    for (int column = 0; column < columns_; ++column) {
        MatrixCell* cell = newCell(static_cast<int>(cells_.size()));
        grid_->addWidget(cell, rows_, column);
        cell->position_ = cells_.size();
        cells_.push_back(cell);
        tags_.push_back(cell->tag_);
    }
    ++rows_;
}

void Matrix::removeRow(int row) {
    if (row < 0 || row >= rows_) return;
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(row) * columns_;
    const auto last = first + columns_;
    for (auto cell = first; cell != last; ++cell) {
        if (*cell == selected_) selected_ = nullptr;
        delete *cell;  // leaves the layout too
    }
    cells_.erase(first, last);
    tags_.erase(tags_.begin() + static_cast<std::ptrdiff_t>(row) * columns_,
                tags_.begin() + static_cast<std::ptrdiff_t>(row + 1) * columns_);
    --rows_;
    if (row < rows_) {  // later rows move up one
        renumberCells();
        placeCells();
    }
}

void Matrix::renumberCells() {
    for (std::size_t index = 0; index < cells_.size(); ++index)
        cells_[index]->position_ = index;
}

void Matrix::placeCells() {
    for (std::size_t index = 0; index < cells_.size(); ++index) {
        grid_->removeWidget(cells_[index]);
        grid_->addWidget(cells_[index], static_cast<int>(index) / columns_,
                         static_cast<int>(index) % columns_);
    }
}

}  // namespace bv
