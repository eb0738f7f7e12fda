// Matrix helpers.
#include "BrevantCocoaExtensions/interface/BVNSMatrix.hpp"

#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv::BVNSMatrix {

namespace {
void show(MatrixCell* cell) {
    if (!cell) return;
    cell->setTransparent(false);
    cell->setEnabled(true);
}
}  // namespace

MatrixCell* cellWithTitle(const Matrix& self, const Text& title) {
    const QString wanted = toQString(title);
    for (MatrixCell* cell : self.cells()) {
        if (cell->text() == wanted) return cell;
    }
    return nullptr;
}

bool hasCellWithTitle(const Matrix& self, const Text& title) {
    return cellWithTitle(self, title) != nullptr;
}

std::optional<Text> selectionAsString(const Matrix& self) {
    QString joined;
    if (self.mode() == Matrix::Mode::Radio) {
        if (const MatrixCell* selected = self.selectedCell()) joined = selected->text();
    } else {
        for (const MatrixCell* cell : self.cells()) {
            if (cell->state() == 1) joined += cell->text();
        }
    }
    if (joined.isEmpty()) return std::nullopt;
    return fromQString(joined);
}

void showAllButtonCells(Matrix& self) {
    for (MatrixCell* cell : self.cells())
        show(cell);
}

void showAllButtonCellsExceptForLast(Matrix& self, bool exceptForLast) {
    const int count = static_cast<int>(self.cells().size()) - (exceptForLast ? 1 : 0);
    for (int tag = 0; tag < count; ++tag)
        show(self.cellWithTag(tag));
}

void hideButtonCellsStartingWithTagThroughTag(Matrix& self, int firstTag, int lastTag) {
    for (int tag = firstTag; tag <= lastTag; ++tag) {
        MatrixCell* cell = self.cellWithTag(tag);
        if (!cell) continue;
        cell->setState(0);
        cell->setTransparent(true);
        cell->setEnabled(false);
    }
}

void setStateForCellWithTag(Matrix& self, int state, int tag) {
    if (MatrixCell* cell = self.cellWithTag(tag)) cell->setState(state);
}

void setStateForAllCells(Matrix& self, int state) {
    for (MatrixCell* cell : self.cells())
        cell->setState(state);
}

int selectedState(const Matrix& self) {
    const MatrixCell* selected = self.selectedCell();
    return selected ? selected->state() : 0;
}

void setCellWithTagEnabled(Matrix& self, int tag, bool enabled) {
    if (MatrixCell* cell = self.cellWithTag(tag)) cell->setEnabled(enabled);
}

std::vector<MatrixCell*> cellsWithState(const Matrix& self, int state) {
    std::vector<MatrixCell*> found;
    for (MatrixCell* cell : self.cells()) {
        if (cell->state() == state) found.push_back(cell);
    }
    return found;
}

bool aCellIsSetToState(const Matrix& self, int state) {
    for (const MatrixCell* cell : self.cells()) {
        if (cell->state() == state) return true;
    }
    return false;
}

void selectCellWithTitle(Matrix& self, const Text& title) {
    const QString wanted = toQString(title);
    for (MatrixCell* cell : self.cells()) {
        if (cell->text() == wanted) self.selectCell(cell);
    }
}

void selectCellsWithTitles(Matrix& self, const std::vector<Text>& titles) {
    for (const Text& title : titles)
        selectCellWithTitle(self, title);
}

void enumerateTitlesBeginingWithCharacterStartingWithTagForNumberOfCells(Matrix& self, char character,
                                                                         int startingTag, int numberOfCells) {
    for (int offset = 0; offset < numberOfCells; ++offset) {
        MatrixCell* cell = self.cellWithTag(startingTag + offset);
        if (!cell) continue;
        const auto code = static_cast<unsigned char>(static_cast<unsigned char>(character) + offset);
        cell->setText(QString(QChar(static_cast<char16_t>(code))));  // the byte read as Latin-1
    }
}

void removeAllRows(Matrix& self) {
    for (int row = self.numberOfRows() - 1; row >= 0; --row)
        self.removeRow(row);
}

}  // namespace bv::BVNSMatrix
