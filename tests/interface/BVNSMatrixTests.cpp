// Button matrices: the selection as text in radio and list modes, enumerated titles, showing and hiding
// by tag, states, and removing rows; and alerts shown as message boxes with their exact texts.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include "BrevantCocoaExtensions/interface/BVNSMatrix.hpp"
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"

using namespace bv;

TEST(BVNSMatrix, SelectionAsStringFollowsTheMode) {
    Matrix matrix(2, 2);
    BVNSMatrix::enumerateTitlesBeginingWithCharacterStartingWithTagForNumberOfCells(matrix, 'A', 0, 4);
    EXPECT_FALSE(BVNSMatrix::selectionAsString(matrix));  // radio, nothing selected
    BVNSMatrix::selectCellsWithTitles(matrix, {Text("B"), Text("D")});
    EXPECT_EQ(BVNSMatrix::selectionAsString(matrix), Text("D"));
    EXPECT_EQ(BVNSMatrix::cellsWithState(matrix, 1).size(), 1u);
    EXPECT_EQ(BVNSMatrix::selectedState(matrix), 1);

    matrix.setMode(Matrix::Mode::List);
    BVNSMatrix::selectCellWithTitle(matrix, Text("A"));
    EXPECT_EQ(BVNSMatrix::selectionAsString(matrix), Text("AD"));
    matrix.cellAtRowColumn(0, 1)->click();  // toggles B on
    EXPECT_EQ(BVNSMatrix::selectionAsString(matrix), Text("ABD"));
    BVNSMatrix::setStateForAllCells(matrix, 0);
    EXPECT_FALSE(BVNSMatrix::selectionAsString(matrix));
    EXPECT_FALSE(BVNSMatrix::aCellIsSetToState(matrix, 1));
}

TEST(BVNSMatrix, TagsAddressCellsForTitlesVisibilityAndState) {
    Matrix matrix(4, 4);
    BVNSMatrix::enumerateTitlesBeginingWithCharacterStartingWithTagForNumberOfCells(matrix, 'A', 10, 4);
    std::string titles;
    for (int tag = 10; tag <= 13; ++tag)
        titles += matrix.cellWithTag(tag)->text().toStdString();
    EXPECT_EQ(titles, "ABCD");
    EXPECT_EQ(BVNSMatrix::cellWithTitle(matrix, Text("C")), matrix.cellWithTag(12));
    EXPECT_FALSE(BVNSMatrix::hasCellWithTitle(matrix, Text("c")));

    BVNSMatrix::setStateForCellWithTag(matrix, 1, 15);
    BVNSMatrix::hideButtonCellsStartingWithTagThroughTag(matrix, 14, 15);
    EXPECT_EQ(matrix.cellWithTag(15)->state(), 0);
    EXPECT_TRUE(matrix.cellWithTag(15)->isTransparent());
    EXPECT_FALSE(matrix.cellWithTag(14)->isEnabled());
    BVNSMatrix::showAllButtonCellsExceptForLast(matrix, true);  // tags 0 to 14
    EXPECT_FALSE(matrix.cellWithTag(14)->isTransparent());
    EXPECT_TRUE(matrix.cellWithTag(15)->isTransparent());
    BVNSMatrix::showAllButtonCells(matrix);
    EXPECT_FALSE(matrix.cellWithTag(15)->isTransparent());
    BVNSMatrix::setCellWithTagEnabled(matrix, 3, false);
    EXPECT_FALSE(matrix.cellWithTag(3)->isEnabled());
    BVNSMatrix::setStateForCellWithTag(matrix, -1, 3);
    EXPECT_EQ(BVNSMatrix::cellsWithState(matrix, -1), (std::vector<MatrixCell*>{matrix.cellWithTag(3)}));

    matrix.selectCell(matrix.cellWithTag(15));
    matrix.removeRow(1);
    EXPECT_EQ(matrix.cellAtRowColumn(1, 0)->tag(), 8);
    BVNSMatrix::removeAllRows(matrix);
    EXPECT_EQ(matrix.numberOfRows(), 0);
    EXPECT_TRUE(matrix.cells().empty());
    EXPECT_EQ(matrix.selectedCell(), nullptr);
}

TEST(QtAlertPresenter, ShowsTheExactTextsAndAnswersTheButtonChosen) {
    const Alert alert{AlertStyle::Critical,
                      Text("Brevant Tolvern"),
                      Text("Line #3 is malformed."),
                      {Text("OK"), Text("Cancel")}};
    const auto box = QtAlertPresenter::messageBoxForAlert(alert);
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Brevant Tolvern"));
    EXPECT_EQ(box->text(), QStringLiteral("Line #3 is malformed."));
    EXPECT_EQ(box->icon(), QMessageBox::Critical);
    ASSERT_EQ(box->buttons().size(), 2);
    EXPECT_EQ(box->buttons()[1]->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(box->defaultButton(), box->buttons()[0]);
    EXPECT_EQ(QtAlertPresenter::messageBoxForAlert(Alert{})->buttons()[0]->text(), QStringLiteral("OK"));

    const auto previous = QtAlertPresenter::install();
    QTimer::singleShot(0, [] {
        auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (shown) shown->buttons()[1]->click();
    });
    EXPECT_EQ(AlertCenter::show(alert), 1);
    AlertCenter::setPresenter(previous);
}
