// Tables, outlines and the image-and-text cell: columns by identifier in the order shown, number formats
// and sort prototypes, context menus from a delegate or the standard menu, and the cell's geometry.
#include <gtest/gtest.h>

#include <unicode/locid.h>
#include <QLineEdit>
#include <QPainter>
#include <QPersistentModelIndex>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>

#include "BrevantCocoaExtensions/interface/BVImageAndTextCell.hpp"
#include "BrevantCocoaExtensions/interface/BVNSOutlineView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSView.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

using namespace bv;

namespace {
std::string identifiersOf(const QTableView& table) {
    std::string out;
    for (const Text& identifier : BVNSTableView::tableColumnIdentifiers(table))
        out += identifier.toUtf8() + " ";
    return out;
}

ValueDictionary student(const char* name, Value score) {
    return ValueDictionary{{Text("name"), Value(name)}, {Text("score"), std::move(score)}};
}

std::string namesOf(const TableColumnModel& model) {
    std::string out;
    for (int row = 0; row < model.rowCount(); ++row)
        out += model.displayTextAt(row, 0).toUtf8() + " ";
    return out;
}

QContextMenuEvent clickAt(const QPoint& position) {
    return QContextMenuEvent(QContextMenuEvent::Mouse, position, position);
}

// Remembers what it was asked and answers a menu only for rows and items it knows.
class RecordingDelegate : public MenuDelegate {
  public:
    QMenu menu;
    int askedRow = -2;
    QString askedItem = QStringLiteral("none");
    std::optional<QMenu*> menuForRowWithEvent(int row, const QContextMenuEvent&) override {
        askedRow = row;
        return row >= 0 ? std::optional<QMenu*>(&menu) : std::optional<QMenu*>(nullptr);
    }
    std::optional<QMenu*> menuForItemWithEvent(const QModelIndex& item, const QContextMenuEvent&) override {
        askedItem = item.isValid() ? item.data().toString() : QStringLiteral("invalid");
        return &menu;
    }
};
}  // namespace

TEST(BVNSTableView, ColumnsKeepIdentifiersInTheOrderShown) {
    QTableView table;
    EXPECT_EQ(identifiersOf(table), "");
    BVNSTableView::createAndAddTableColumnWithIdentifierColumnHeaderTitle(table, Text("name"), Text("Name"));
    EXPECT_TRUE(BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
        table, Text("score"), Text("Score"), Text("0.00")));
    EXPECT_FALSE(BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
        table, Text("score"), Text("Again"), std::nullopt));
    BVNSTableView::insertTableColumnAtIndex(table, TableColumn{Text("id"), Text("ID"), {}, {}}, 0);
    EXPECT_EQ(identifiersOf(table), "id name score ");
    EXPECT_EQ(table.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Score"));

    BVNSTableView::moveColumnToLastIndexWithIdentifier(table, Text("id"));
    EXPECT_EQ(identifiersOf(table), "name score id ");
    BVNSTableView::removeTableColumnWithIdentifier(table, Text("score"));
    BVNSTableView::removeTableColumnWithIdentifier(table, Text("absent"));
    EXPECT_EQ(identifiersOf(table), "name id ");
    EXPECT_THROW(BVNSTableView::insertTableColumnAtIndex(table, TableColumn{Text("x"), Text("X"), {}, {}}, 3),
                 RangeException);
    BVNSTableView::removeAllTableColumns(table);
    EXPECT_EQ(identifiersOf(table), "");
    EXPECT_EQ(BVNSTableView::scrollView(table), &table);

    QTableView foreign;
    QStandardItemModel other;
    foreign.setModel(&other);
    EXPECT_THROW((void)BVNSTableView::tableColumnIdentifiers(foreign), InvalidArgumentException);
}

TEST(BVNSTableView, FormatsNumbersAndSortsByThePrototype) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale::getUS(), status);  // formats follow the locale: fix its symbols
    QTableView table;
    BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
        table, Text("name"), Text("Name"), std::nullopt);
    BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
        table, Text("score"), Text("Score"), Text("0.00"));
    TableColumnModel& model = BVNSTableView::columnModel(table);
    model.setRows({student("Cy", Value(7)), student("Ann", Value(91.5)), student("Bo", Value(12.25))});
    EXPECT_EQ(model.displayTextAt(0, 1), Text("7.00"));
    EXPECT_EQ(model.displayTextAt(1, 1), Text("91.50"));

    const QPersistentModelIndex ann = model.index(1, 0);
    table.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(namesOf(model), "Cy Bo Ann ");
    EXPECT_EQ(ann.row(), 2);  // an index kept across the sort follows its row
    table.sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(namesOf(model), "Ann Bo Cy ");

    // A text among numbers cannot be ordered: the rows stay and the log says why.
    std::vector<std::string> lines;
    const LogSink previous = setLogSink([&](const std::string& line) { lines.push_back(line); });
    model.setRows({student("Cy", Value(7)), student("Ann", Value("absent"))});
    table.sortByColumn(1, Qt::AscendingOrder);
    setLogSink(previous);
    EXPECT_EQ(namesOf(model), "Cy Ann ");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("\"score\""), std::string::npos);

    EXPECT_THROW(BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
                     table, Text("bad"), Text("Bad"), Text("0.0.0")),
                 InvalidArgumentException);
}

TEST(BVNSTableView, MenusComeFromTheDelegateOrTheStandardMenu) {
    QTableView table;
    BVNSTableView::createAndAddTableColumnWithIdentifierColumnHeaderTitle(table, Text("name"), Text("Name"));
    BVNSTableView::columnModel(table).setRows({student("Ann", Value(1)), student("Bo", Value(2))});
    table.resize(300, 400);
    table.show();
    const int rowHeight = table.rowHeight(0);
    const QContextMenuEvent overSecondRow = clickAt(QPoint(5, rowHeight + rowHeight / 2));
    const QContextMenuEvent overNoRow = clickAt(QPoint(5, 350));

    QMenu standard;
    EXPECT_EQ(BVNSTableView::menuForEvent(table, overSecondRow), nullptr);
    BVNSView::setMenu(table, &standard);
    EXPECT_EQ(BVNSTableView::menuForEvent(table, overSecondRow), &standard);
    MenuDelegate silent;  // answers nothing: the standard menu shows
    BVNSTableView::setMenuDelegate(table, &silent);
    EXPECT_EQ(BVNSTableView::menuForEvent(table, overSecondRow), &standard);

    RecordingDelegate delegate;
    BVNSTableView::setMenuDelegate(table, &delegate);
    EXPECT_EQ(BVNSTableView::menuForEvent(table, overSecondRow), &delegate.menu);
    EXPECT_EQ(delegate.askedRow, 1);
    EXPECT_EQ(BVNSTableView::menuForEvent(table, overNoRow), nullptr);  // its answer, even no menu
    EXPECT_EQ(delegate.askedRow, -1);

    QStandardItemModel tree;
    auto* lesson = new QStandardItem(QStringLiteral("Lesson"));
    lesson->appendRow(new QStandardItem(QStringLiteral("Question")));
    tree.appendRow(lesson);
    QTreeView outline;
    outline.setModel(&tree);
    outline.expandAll();
    outline.resize(300, 400);
    outline.show();
    EXPECT_FALSE(BVNSOutlineView::selectedItem(outline).isValid());
    const QModelIndex question = tree.index(0, 0, tree.index(0, 0));
    outline.selectionModel()->select(question, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(BVNSOutlineView::selectedItem(outline), question);

    BVNSTableView::setMenuDelegate(outline, &delegate);
    const QRect questionRow = outline.visualRect(question);
    EXPECT_EQ(BVNSOutlineView::menuForEvent(outline, clickAt(questionRow.center())), &delegate.menu);
    EXPECT_EQ(delegate.askedItem, QStringLiteral("Question"));
    (void)BVNSOutlineView::menuForEvent(outline, clickAt(QPoint(5, 390)));
    EXPECT_EQ(delegate.askedItem, QStringLiteral("invalid"));
}

TEST(BVImageAndTextCell, PlacesTheImageAndTextByTheStrip) {
    const Size icon{16, 16};
    const struct {
        Rect frame;
        Rect image, text;
    } cases[] = {
        {{{10, 20}, {100, 21}},
         {{13, 23}, icon},
         {{29, 20}, {81, 21}}},  // half the free height 2.5 rounds up
        {{{0, 0}, {100, 16}}, {{3, 0}, icon}, {{19, 0}, {81, 16}}},
        {{{0, 0}, {100, 9}}, {{3, -3}, icon}, {{19, 0}, {81, 9}}},  // taller than the frame: -3.5 rounds up
        {{{5, 0}, {10, 20}}, {{8, 2}, icon}, {{15, 0}, {0, 20}}},   // narrower than the strip
    };
    for (const auto& c : cases) {
        EXPECT_EQ(BVImageAndTextCell::imageFrameInCellFrame(c.frame, icon), c.image) << c.frame.size.height;
        EXPECT_EQ(BVImageAndTextCell::textFrameForCellFrame(c.frame, icon.width), c.text)
            << c.frame.size.width;
    }
    EXPECT_EQ(BVImageAndTextCell::cellSizeForTextSize(Size{50, 17}, 16), (Size{69, 17}));
    EXPECT_EQ(BVImageAndTextCell::cellSizeForTextSize(Size{50, 17}, 0), (Size{53, 17}));
    EXPECT_EQ(BVImageAndTextCell::textFrameForCellFrame(Rect{{0, 0}, {100, 20}}, 0),
              (Rect{{3, 0}, {97, 20}}));
}

TEST(BVImageAndTextCell, EditsAndSelectsBesideItsImage) {
    BVImageAndTextCell cell;
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::red);
    cell.setCellImage(image);  // kept at 16 by 16
    QLineEdit editor(QStringLiteral("Question seven"));
    cell.selectWithFrameInViewEditorDelegateStartLength(Rect{{10, 20}, {100, 21}}, &editor, 9, 5);
    EXPECT_EQ(editor.geometry(), QRect(29, 20, 81, 21));
    EXPECT_EQ(editor.selectedText(), QStringLiteral("seven"));
}

TEST(BVImageAndTextCell, ScalesItsImageSharesItOnCopyAndDrawsIt) {
    BVImageAndTextCell cell;
    EXPECT_EQ(cell.imageFrameForCellFrame(Rect{{0, 0}, {100, 20}}), Rect{});
    QImage big(64, 32, QImage::Format_ARGB32);
    big.fill(Qt::red);
    cell.setCellImage(big);
    EXPECT_EQ(cell.cellImage().size(), QSize(16, 16));
    EXPECT_EQ(cell.imageFrameForCellFrame(Rect{{0, 0}, {100, 20}}), (Rect{{3, 2}, {16, 16}}));
    cell.setImageSize(Size{8, 8});  // a later size leaves the kept image alone
    EXPECT_EQ(cell.cellImage().size(), QSize(16, 16));

    cell.setDrawsBackground(true);
    cell.setBackgroundColor(Qt::blue);
    const auto copy = cell.copy();
    EXPECT_EQ(copy->cellImage().cacheKey(), cell.cellImage().cacheKey());
    EXPECT_TRUE(copy->drawsBackground());

    // Drawn into a 100 x 20 cell: the background fills the strip, the image sits at (3, 2).
    QStandardItemModel model(1, 1);
    model.setItem(0, 0, new QStandardItem(QString()));
    QImage canvas(100, 20, QImage::Format_ARGB32);
    canvas.fill(Qt::white);
    {
        QPainter painter(&canvas);
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 100, 20);
        copy->paint(&painter, option, model.index(0, 0));
    }
    EXPECT_EQ(canvas.pixelColor(1, 10), QColor(Qt::blue));
    EXPECT_EQ(canvas.pixelColor(3, 2), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(18, 17), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(18, 1), QColor(Qt::blue));
    EXPECT_EQ(canvas.pixelColor(50, 10), QColor(Qt::white));

    cell.setCellImage(QImage());
    EXPECT_TRUE(cell.cellImage().isNull());
    EXPECT_FALSE(copy->cellImage().isNull());
}
