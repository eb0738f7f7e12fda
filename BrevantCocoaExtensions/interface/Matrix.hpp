// bv::Matrix: a grid of button cells (the answer-choice buttons of the suite's windows), with the cell
// properties the matrix helpers work with: an integer tag, a state (off 0, on 1, mixed -1), an enabled
// flag and transparency (a transparent cell is hidden but keeps its place in the grid).
//
// Cells are kept in cell order: row by row, left to right. In radio mode exactly one cell is selected once
// any is: selecting a cell turns it on and every other cell off. In the other modes selecting a cell turns
// it on and leaves the others; clicking a cell toggles it.
#pragma once

#include <QGridLayout>
#include <QPushButton>
#include <QWidget>
#include <vector>

namespace bv {

class Matrix;

class MatrixCell : public QPushButton {
    Q_OBJECT
  public:
    explicit MatrixCell(QWidget* parent = nullptr);

    [[nodiscard]] int tag() const noexcept { return tag_; }
    // Also updates the matrix's tag index, so searches by tag see the new tag.
    void setTag(int tag);
    [[nodiscard]] int state() const { return mixed_ ? -1 : (isChecked() ? 1 : 0); }
    void setState(int state);
    [[nodiscard]] bool isTransparent() const { return isHidden(); }
    void setTransparent(bool transparent) { setHidden(transparent); }

  private:
    friend class Matrix;
    int tag_ = 0;
    bool mixed_ = false;
    Matrix* matrix_ = nullptr;  // the matrix that made the cell and indexes its tag
    std::size_t position_ = 0;  // the cell's place in the matrix's cell order
};

class Matrix : public QWidget {
    Q_OBJECT
  public:
    enum class Mode { Radio = 0, Highlight = 1, List = 2, Track = 3 };

    // A grid of rows × columns new cells, tagged 0, 1, 2 ... in cell order.
    Matrix(int rows, int columns, Mode mode = Mode::Radio, QWidget* parent = nullptr);

    [[nodiscard]] Mode mode() const noexcept { return mode_; }
    void setMode(Mode mode) noexcept { mode_ = mode; }
    [[nodiscard]] int numberOfRows() const noexcept { return rows_; }
    [[nodiscard]] int numberOfColumns() const noexcept { return columns_; }
    // Every cell, in cell order.
    [[nodiscard]] const std::vector<MatrixCell*>& cells() const noexcept { return cells_; }
    // The cell at a row and column, or null outside the grid.
    [[nodiscard]] MatrixCell* cellAtRowColumn(int row, int column) const;
    // The first cell, in cell order, with the tag; null when none.
    [[nodiscard]] MatrixCell* cellWithTag(int tag) const;
    // The cell selected last (null when none, or after it was removed).
    [[nodiscard]] MatrixCell* selectedCell() const noexcept { return selected_; }
    // Selects the cell as the mode says (see the file comment).
    void selectCell(MatrixCell* cell);
    // Appends a row of new cells (tags continue from the cell count).
    void addRow();
    // Removes a row and deletes its cells; an unknown row does nothing.
    void removeRow(int row);

  signals:
    // A cell was clicked (after the selection changed).
    void cellClicked(bv::MatrixCell* cell);

  private:
    friend class MatrixCell;
    MatrixCell* newCell(int tag);
    void placeCells();
    void renumberCells();
    void cellTagChanged(const MatrixCell& cell) { tags_[cell.position_] = cell.tag_; }

    Mode mode_;
    int rows_ = 0;
    int columns_ = 0;
    QGridLayout* grid_;
    std::vector<MatrixCell*> cells_;
    std::vector<int> tags_;  // the cells' tags in cell order, side by side so a search reads no widget
    MatrixCell* selected_ = nullptr;
};

}  // namespace bv
