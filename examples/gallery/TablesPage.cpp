// The "Tables" page: a class's scores in a table built with the column helpers (sortable, with number
// formats), an outline of question results whose names carry status images, a toolbar whose items are
// found by tag and identifier, and tabs found by identifier.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <optional>
#include <tuple>

#include "Pages.hpp"

#include "BrevantCocoaExtensions/interface/BVImageAndTextCell.hpp"
#include "BrevantCocoaExtensions/interface/BVNSBox.hpp"
#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTabView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSToolbar.hpp"
#include "BrevantCocoaExtensions/interface/MenuItem.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace {

using bv::Text;
using bv::Value;
using bv::ValueDictionary;

// A round status symbol in a crayon colour.
QImage statusImage(const char* crayon) {
    QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(bv::BVNSColor::crayonColorNamed(Text(crayon)).value_or(QColor(Qt::gray)));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QRectF(2, 2, 12, 12));
    return image;
}

QTableView* scoresTable(QWidget* parent) {
    auto* table = new QTableView(parent);
    const struct {
        const char* identifier;
        const char* title;
        std::optional<Text> format;
    } columns[] = {
        {"name", "Student", std::nullopt},
        {"answered", "Answered", Text("0")},
        {"score", "Score", Text("0.0")},
        {"percent", "Correct", Text("0%")},
    };
    for (const auto& column : columns)
        bv::BVNSTableView::createAndAddIfNeededTableColumnWithIdentifierColumnHeaderTitleAddNumberFormat(
            *table, Text(column.identifier), Text(column.title), column.format);
    const struct {
        const char* name;
        int answered;
        double score;
    } students[] = {{"Ana Lima", 12, 10.5}, {"Ben Okafor", 12, 7.0}, {"Chloe Martin", 11, 11.0},
                    {"Dev Patel", 9, 6.5},  {"Elif Kaya", 12, 9.25}, {"Finn Murphy", 10, 8.0}};
    bv::ValueArray rows;
    for (const auto& student : students)
        rows.emplace_back(ValueDictionary{{Text("name"), Value(student.name)},
                                          {Text("answered"), Value(student.answered)},
                                          {Text("score"), Value(student.score)},
                                          {Text("percent"), Value(student.score / 12.0)}});
    bv::BVNSTableView::columnModel(*table).setRows(std::move(rows));
    table->sortByColumn(2, Qt::DescendingOrder);
    table->setSortingEnabled(true);
    table->verticalHeader()->hide();
    table->resizeColumnsToContents();
    return table;
}

QTreeView* resultsOutline(QWidget* parent) {
    auto* model = new QStandardItemModel(parent);
    model->setHorizontalHeaderLabels({QStringLiteral("Question"), QStringLiteral("Correct")});
    const struct {
        const char* folder;
        std::vector<std::tuple<const char*, const char*, const char*>> questions;  // title, status, correct
    } folders[] = {
        {"Warm-up", {{"1/2 + 1/4 = ?", "Clover", "83%"}, {"Is 3/6 = 1/2?", "Clover", "100%"}}},
        {"Quiz",
         {{"Largest of 2/3, 3/5, 5/8?", "Maraschino", "33%"}, {"Simplify 12/16", "Tangerine", "58%"}}},
    };
    for (const auto& folder : folders) {
        auto* group = new QStandardItem(QString::fromUtf8(folder.folder));
        group->setData(statusImage("Aluminum"), Qt::DecorationRole);
        for (const auto& [title, status, correct] : folder.questions) {
            auto* question = new QStandardItem(QString::fromUtf8(title));
            question->setData(statusImage(status), Qt::DecorationRole);
            group->appendRow({question, new QStandardItem(QString::fromUtf8(correct))});
        }
        model->appendRow(group);
    }
    auto* outline = new QTreeView(parent);
    outline->setModel(model);
    auto* cell = new bv::BVImageAndTextCell(outline);
    outline->setItemDelegateForColumn(0, cell);
    outline->expandAll();
    outline->setColumnWidth(0, 220);
    return outline;
}

QToolBar* scoresToolbar(QWidget* parent) {
    auto* toolbar = new QToolBar(parent);
    toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    int tag = 1;
    for (const char* identifier : {"Export", "Print", "PrintPreview", "Share"})
        bv::MenuItem::setTag(bv::BVNSToolbar::addItemWithItemIdentifier(*toolbar, Text(identifier)), tag++);
    bv::BVNSToolbar::removeItemsWithIdentifierSegment(*toolbar, Text("Preview"));
    bv::BVNSToolbar::setImageToolTipForItemWithTag(*toolbar, statusImage("Clover"), Text("Export as CSV"), 1);
    bv::BVNSToolbar::setEnabledForItemWithTag(*toolbar, false, 4);
    return toolbar;
}

QGroupBox* gradingBox(QWidget* parent) {
    auto* box = new QGroupBox(QStringLiteral("Grading (locked while the quiz runs)"), parent);
    auto* layout = new QHBoxLayout(box);
    layout->addWidget(new QLabel(QStringLiteral("Points per answer"), box));
    auto* points = new QSpinBox(box);
    points->setValue(1);
    layout->addWidget(points);
    layout->addWidget(new QPushButton(QStringLiteral("Regrade"), box));
    bv::BVNSBox::setEnabled(*box, false);
    return box;
}

}  // namespace

namespace gallery {

QWidget* makeTablesPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(scoresToolbar(page));
    auto* tabs = new QTabWidget(page);
    auto* splitter = new QSplitter(tabs);
    splitter->addWidget(scoresTable(splitter));
    splitter->addWidget(resultsOutline(splitter));
    splitter->setSizes({520, 440});
    bv::BVNSTabView::createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(*tabs, Text("scores"),
                                                                                  Text("Scores"), splitter);
    bv::BVNSTabView::createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(*tabs, Text("roster"),
                                                                                  Text("Roster"), nullptr);
    tabs->setCurrentWidget(bv::BVNSTabView::tabViewItemWithIdentifier(*tabs, Text("scores")));
    layout->addWidget(tabs, 1);
    layout->addWidget(gradingBox(page));
    return page;
}

}  // namespace gallery
