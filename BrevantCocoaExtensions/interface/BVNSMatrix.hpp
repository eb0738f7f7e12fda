// BVNSMatrix: finding, selecting, showing and hiding button cells of a Matrix by tag and title.
//
// Pitfalls callers rely on:
//   - Titles are compared exactly; tags address cells through Matrix::cellWithTag (the first cell with
//     the tag), so an operation on a missing tag does nothing.
//   - selectionAsString joins the titles of the cells that are on with no separator, and answers null,
//     not "", when there is nothing to report (a radio matrix with nothing selected).
//   - showAllButtonCellsExceptForLast walks tags 0 .. count − 1 (or − 2), not the cells themselves.
#pragma once

#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/interface/Matrix.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSMatrix {

// The first cell, in cell order, whose title equals the text; null when none.
[[nodiscard]] MatrixCell* cellWithTitle(const Matrix& self, const Text& title);
[[nodiscard]] bool hasCellWithTitle(const Matrix& self, const Text& title);
// In radio mode the selected cell's title; otherwise the titles of the cells that are on, in cell order,
// joined with no separator. Null when the result would be empty.
[[nodiscard]] std::optional<Text> selectionAsString(const Matrix& self);
// Every cell visible (not transparent) and enabled.
void showAllButtonCells(Matrix& self);
// The cells tagged 0 below the cell count (below the count less one when the flag is set) made visible
// and enabled.
void showAllButtonCellsExceptForLast(Matrix& self, bool exceptForLast);
// The cells tagged first through last (inclusive) set off, transparent and disabled.
void hideButtonCellsStartingWithTagThroughTag(Matrix& self, int firstTag, int lastTag);
void setStateForCellWithTag(Matrix& self, int state, int tag);
void setStateForAllCells(Matrix& self, int state);
// The selected cell's state; 0 when none is selected.
[[nodiscard]] int selectedState(const Matrix& self);
void setCellWithTagEnabled(Matrix& self, int tag, bool enabled);
// The cells with the state, in cell order.
[[nodiscard]] std::vector<MatrixCell*> cellsWithState(const Matrix& self, int state);
[[nodiscard]] bool aCellIsSetToState(const Matrix& self, int state);
// Selects every cell whose title equals the text (in radio mode the last one stays selected).
void selectCellWithTitle(Matrix& self, const Text& title);
void selectCellsWithTitles(Matrix& self, const std::vector<Text>& titles);
// The cells tagged start + i get the one-character title of the character code + i (an 8-bit
// character): A, tag 10 and 4 cells title the cells tagged 10 to 13 "A", "B", "C", "D".
void enumerateTitlesBeginingWithCharacterStartingWithTagForNumberOfCells(Matrix& self, char character,
                                                                         int startingTag, int numberOfCells);
// Removes every row, from the last to the first.
void removeAllRows(Matrix& self);

}  // namespace bv::BVNSMatrix
