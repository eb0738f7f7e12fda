// brevant-gallery: the interface library at work on suite-like content, one tab a page. The "Lesson" page
// holds an outline of questions with thumbnails, a pop-up of question types, a matrix of answer buttons,
// an answers menu, and a chart shown tinted, blended, flipped and rotated; the other pages are listed in
// Pages.hpp.
//
//   brevant-gallery                                 shows the window
//   brevant-gallery [--page NAME] --screenshot FILE draws the window, on that page, into FILE (PNG), exits
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <cstring>
#include <iostream>

#include "Pages.hpp"

#include "BrevantCocoaExtensions/documents/BVNode.hpp"
#include "BrevantCocoaExtensions/interface/BVNSBezierPath.hpp"
#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSMatrix.hpp"
#include "BrevantCocoaExtensions/interface/BVNSMenu.hpp"
#include "BrevantCocoaExtensions/interface/BVNSPopUpButton.hpp"
#include "BrevantCocoaExtensions/interface/BVThumbnail.hpp"
#include "BrevantCocoaExtensions/interface/BVUtilitiesImages.hpp"
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace {

QColor crayon(const char* name) {
    return bv::BVNSColor::crayonColorNamed(bv::Text(name)).value_or(QColor(Qt::gray));
}

// A slide-like picture of a question: its text on a coloured card.
QImage questionSlide(const char* question, const QColor& background) {
    bv::TextAttributes attributes;
    attributes.font.setPixelSize(36);
    attributes.font.setBold(true);
    const QImage text = bv::BVNSImage::imageOfStringWithAttributes(bv::Text(question), attributes);
    const QImage card = bv::BVNSImage::imageCenteredInArea(text, bv::Size{480, 360});
    return bv::BVNSImage::imageWithBackgroundColor(card, background);
}

// A bar chart of answer counts, the picture the image filters are shown on.
QImage answerChart() {
    QImage chart(160, 120, QImage::Format_ARGB32_Premultiplied);
    chart.fill(Qt::white);
    QPainter painter(&chart);
    const int counts[] = {12, 30, 7, 18};
    const char* colours[] = {"Maraschino", "Clover", "Blueberry", "Tangerine"};
    for (int bar = 0; bar < 4; ++bar) {
        painter.fillRect(QRect(12 + bar * 36, 110 - counts[bar] * 3, 28, counts[bar] * 3),
                         crayon(colours[bar]));
    }
    painter.setPen(Qt::black);
    painter.drawLine(6, 110, 154, 110);
    return chart;
}

// A check mark drawn by a path.
QImage checkMark() {
    bv::BezierPath path;
    path.path.moveTo(0, 30);
    path.path.lineTo(20, 55);
    path.path.lineTo(60, 0);
    path.lineWidth = 6;
    return bv::BVNSBezierPath::imageWithColorFillColor(path, crayon("Clover"), QColor(Qt::transparent));
}

QLabel* pictureWithCaption(const QImage& image, const QString& caption, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setPixmap(QPixmap::fromImage(image));
    label->setAlignment(Qt::AlignCenter);
    label->setToolTip(caption);
    return label;
}

struct Lesson {
    std::shared_ptr<bv::BVNode> root = bv::BVNode::node();
};

// The outline: folders of questions, each question a thumbnail of its slide.
Lesson buildLesson() {
    Lesson lesson;
    lesson.root->setTitle(bv::Text("Lesson 3: Fractions"));
    const struct {
        const char* folder;
        std::vector<std::pair<const char*, const char*>> questions;  // title, slide colour
    } folders[] = {
        {"Warm-up", {{"1/2 + 1/4 = ?", "Sky"}, {"Is 3/6 = 1/2?", "Banana"}}},
        {"Quiz", {{"Largest of 2/3, 3/5, 5/8?", "Flora"}, {"Simplify 12/16", "Carnation"}}},
    };
    for (const auto& folder : folders) {
        auto group = bv::BVNode::node();
        group->setTitle(bv::Text(folder.folder));
        group->setExpanded(true);
        for (const auto& [title, colour] : folder.questions) {
            auto thumbnail = std::make_shared<bv::BVThumbnail>();
            thumbnail->setTitle(bv::Text(title));
            thumbnail->setCanHaveChildren(false);
            thumbnail->setThumbnailImage(
                bv::BVThumbnail::thumbnailImageBasedOnImage(questionSlide(title, crayon(colour))));
            group->addChild(thumbnail);
        }
        lesson.root->addChild(group);
    }
    auto spontaneous = std::make_shared<bv::BVThumbnail>();
    spontaneous->setTitle(bv::Text("Spontaneous question"));
    spontaneous->setThumbnailImage(bv::BVThumbnail::thumbnailImageBasedOnImage(
        bv::BVUtilitiesImages::spontaneousQuestionThumbnailImage()));
    lesson.root->addChild(spontaneous);
    return lesson;
}

void addNodeItems(const bv::BVNode& node, QTreeWidgetItem* item) {
    for (const auto& child : node.children()) {
        auto* childItem = new QTreeWidgetItem(item, QStringList(bv::toQString(child->title())));
        if (const auto* thumbnail = dynamic_cast<const bv::BVThumbnail*>(child.get())) {
            const QImage bordered = thumbnail->borderedThumbnailImage();
            childItem->setIcon(
                0, QIcon(QPixmap::fromImage(bv::BVNSImage::imageScaledToSize(bordered, bv::Size{64, 48}))));
        }
        childItem->setExpanded(child->isExpanded());
        addNodeItems(*child, childItem);
    }
}

QTreeWidget* outlineView(const Lesson& lesson, QWidget* parent) {
    auto* tree = new QTreeWidget(parent);
    tree->setHeaderLabel(bv::toQString(lesson.root->title()));
    tree->setIconSize(QSize(64, 48));
    addNodeItems(*lesson.root, tree->invisibleRootItem());
    tree->expandAll();
    tree->setMinimumWidth(300);
    return tree;
}

QGroupBox* answerPanel(QWidget* parent) {
    auto* box = new QGroupBox(QStringLiteral("Answer choices"), parent);
    auto* layout = new QVBoxLayout(box);

    auto* types = new QComboBox(box);
    bv::BVNSPopUpButton::addItemsWithTitlesEnumerateTagsStartingWithTag(
        *types, {bv::Text("Multiple choice"), bv::Text("True or false"), bv::Text("Numeric")}, true, 1);
    bv::BVNSPopUpButton::addSeparatorItem(*types);
    bv::BVNSPopUpButton::addItemWithTitleTag(*types, bv::Text("Free text"), 9);
    layout->addWidget(types);

    auto* matrix = new bv::Matrix(2, 3, bv::Matrix::Mode::Radio, box);
    bv::BVNSMatrix::enumerateTitlesBeginingWithCharacterStartingWithTagForNumberOfCells(*matrix, 'A', 0, 6);
    bv::BVNSMatrix::hideButtonCellsStartingWithTagThroughTag(*matrix, 5, 5);
    bv::BVNSMatrix::selectCellWithTitle(*matrix, bv::Text("C"));
    layout->addWidget(matrix);

    auto* selection = new QLabel(box);
    const auto show = [matrix, selection] {
        const auto chosen = bv::BVNSMatrix::selectionAsString(*matrix);
        selection->setText(QStringLiteral("Selected: ") +
                           (chosen ? bv::toQString(*chosen) : QStringLiteral("none")));
    };
    QObject::connect(matrix, &bv::Matrix::cellClicked, selection, show);
    show();
    layout->addWidget(selection);
    return box;
}

QGroupBox* picturePanel(QWidget* parent) {
    auto* box = new QGroupBox(QStringLiteral("Chart: original, tinted, blended, flipped, rotated"), parent);
    auto* layout = new QHBoxLayout(box);
    const QImage chart = answerChart();
    layout->addWidget(pictureWithCaption(chart, QStringLiteral("original"), box));
    layout->addWidget(
        pictureWithCaption(bv::BVNSImage::imageWithAppliedLinearInterpolationOfColor(chart, crayon("Sky")),
                           QStringLiteral("tinted"), box));
    layout->addWidget(pictureWithCaption(bv::BVNSImage::imageWithBlendedColor(chart, crayon("Cantaloupe")),
                                         QStringLiteral("blended"), box));
    layout->addWidget(pictureWithCaption(bv::BVNSImage::flippedImage(chart), QStringLiteral("flipped"), box));
    layout->addWidget(
        pictureWithCaption(bv::BVNSImage::imageRotatedAtAngle(chart, 90), QStringLiteral("rotated"), box));
    layout->addWidget(pictureWithCaption(checkMark(), QStringLiteral("path"), box));
    return box;
}

void buildAnswersMenu(QMainWindow& window) {
    QMenu* menu = window.menuBar()->addMenu(QStringLiteral("Answers"));
    for (const char* title : {"A", "B", "C", "D"}) {
        bv::BVNSMenu::addUniqueMenuItemWithTitleTagTargetActionKeyEquivalent(
            *menu, bv::Text(title), title[0] - 'A', nullptr, "", bv::Text(""));
    }
    bv::BVNSMenu::addSeparatorItem(*menu);
    bv::BVNSMenu::addItemWithTitleTagTargetActionKeyEquivalent(*menu, bv::Text("Clear"), 99, nullptr, "",
                                                               bv::Text("Ctrl+K"));
    window.menuBar()->addMenu(QStringLiteral("Questions"));
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const char* screenshot = nullptr;
    QString page = QStringLiteral("Lesson");
    for (int index = 1; index < argc; ++index) {
        if (std::strcmp(argv[index], "--screenshot") == 0 && index + 1 < argc)
            screenshot = argv[++index];
        else if (std::strcmp(argv[index], "--page") == 0 && index + 1 < argc)
            page = QString::fromLocal8Bit(argv[++index]);
        else if (std::strcmp(argv[index], "--help") == 0) {
            std::cout << "usage: brevant-gallery [--page NAME] [--screenshot FILE]\n";
            return 0;
        }
    }

    bv::QtAlertPresenter::install();  // the library's alerts become message boxes
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Brevant gallery"));
    buildAnswersMenu(window);
    auto* tabs = new QTabWidget(&window);
    auto* central = new QWidget(tabs);
    auto* columns = new QHBoxLayout(central);
    const Lesson lesson = buildLesson();
    columns->addWidget(outlineView(lesson, central));
    auto* right = new QVBoxLayout;
    right->addWidget(answerPanel(central));
    right->addWidget(picturePanel(central));
    columns->addLayout(right, 1);
    tabs->addTab(central, QStringLiteral("Lesson"));
    for (const gallery::Page& extra : gallery::pages())
        tabs->addTab(extra.make(tabs), extra.name);
    for (int index = 0; index < tabs->count(); ++index)
        if (tabs->tabText(index) == page) tabs->setCurrentIndex(index);
    window.setCentralWidget(tabs);
    window.resize(1180, 560);
    window.show();

    if (!screenshot) return application.exec();
    int status = 1;
    QTimer::singleShot(300, [&] {
        status = window.grab().save(QString::fromLocal8Bit(screenshot), "PNG") ? 0 : 1;
        if (status != 0) std::cerr << "brevant-gallery: " << screenshot << ": cannot write the picture\n";
        application.quit();
    });
    application.exec();
    return status;
}
