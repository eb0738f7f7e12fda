// Tab views, toolbars, plain and split views, boxes, the web view, windows and screens.
#include <gtest/gtest.h>

#include <unistd.h>
#include <QGraphicsView>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/interface/BVNSBox.hpp"
#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSScreen.hpp"
#include "BrevantCocoaExtensions/interface/BVNSSplitView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTabView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSToolbar.hpp"
#include "BrevantCocoaExtensions/interface/BVNSView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSWindow.hpp"
#include "BrevantCocoaExtensions/interface/BVWebView.hpp"
#include "BrevantCocoaExtensions/interface/MenuItem.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

using namespace bv;

namespace {
std::string identifiersOf(const QToolBar& toolbar) {
    std::string out;
    for (const QAction* item : toolbar.actions())
        out += BVNSToolbar::identifier(item).toUtf8() + " ";
    return out;
}

std::string namesOf(const std::vector<QWidget*>& views) {
    std::string out;
    for (const QWidget* view : views)
        out += view->objectName().toStdString() + " ";
    return out;
}

QWidget* named(const char* name, QWidget* view) {
    view->setObjectName(QString::fromLatin1(name));
    return view;
}

class CountingTable : public QTableView {
  public:
    int resets = 0;
    void reset() override {
        ++resets;
        QTableView::reset();
    }
};
}  // namespace

TEST(BVNSTabView, FindsSelectsAndRemovesTabsByIdentifier) {
    QTabWidget tabs;
    EXPECT_EQ(BVNSTabView::firstTabViewItem(tabs), nullptr);
    EXPECT_EQ(BVNSTabView::indexOfSelectedTabViewItem(tabs), NotFound);
    EXPECT_EQ(BVNSTabView::identifierOfSelectedTabViewItem(tabs), std::nullopt);
    QWidget* scores = BVNSTabView::createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(
        tabs, Text("scores"), Text("Scores"), new QLabel);
    QWidget* chart = BVNSTabView::createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(
        tabs, Text("chart"), Text("Chart"), nullptr);
    tabs.addTab(new QWidget, QStringLiteral("No identifier"));
    EXPECT_EQ(BVNSTabView::firstTabViewItem(tabs), scores);
    EXPECT_EQ(BVNSTabView::tabViewItemWithIdentifier(tabs, Text("chart")), chart);
    EXPECT_EQ(BVNSTabView::tabViewItemWithIdentifier(tabs, Text("Chart")), nullptr);
    tabs.setCurrentIndex(1);
    EXPECT_EQ(BVNSTabView::identifierOfSelectedTabViewItem(tabs), Text("chart"));
    EXPECT_EQ(BVNSTabView::indexOfSelectedTabViewItem(tabs), 1u);
    EXPECT_THROW(BVNSTabView::setIdentifierAtIndex(tabs, 3, Text("x")), RangeException);

    const QPointer<QWidget> removed = chart;
    BVNSTabView::removeTabViewItemWithIdentifier(tabs, Text("chart"));
    EXPECT_TRUE(removed.isNull());
    EXPECT_EQ(tabs.count(), 2);
    EXPECT_EQ(BVNSTabView::lastTabViewItem(tabs), tabs.widget(1));
    BVNSTabView::removeAllTabViewItems(tabs);
    EXPECT_EQ(tabs.count(), 0);
    EXPECT_EQ(BVNSTabView::lastTabViewItem(tabs), nullptr);
}

TEST(BVNSToolbar, FindsAndRemovesItemsByTagAndIdentifier) {
    QToolBar toolbar;
    for (const char* identifier : {"Print", "PrintPreview", "print", "Share"})
        BVNSToolbar::addItemWithItemIdentifier(toolbar, Text(identifier));
    MenuItem::setTag(toolbar.actions()[3], 7);
    EXPECT_EQ(BVNSToolbar::numberOfItems(toolbar), 4u);
    EXPECT_EQ(BVNSToolbar::itemWithIdentifier(toolbar, Text("print")), toolbar.actions()[2]);
    EXPECT_EQ(BVNSToolbar::itemWithIdentifier(toolbar, Text("PRINT")), nullptr);
    EXPECT_EQ(BVNSToolbar::itemWithTag(toolbar, 7), toolbar.actions()[3]);
    EXPECT_EQ(BVNSToolbar::itemWithTag(toolbar, 8), nullptr);

    BVNSToolbar::setToolTipForItemWithTag(toolbar, Text("Share the results"), 7);
    QImage icon(8, 8, QImage::Format_ARGB32);
    icon.fill(Qt::green);
    BVNSToolbar::setImageToolTipForItemWithTag(toolbar, icon, Text("Share"), 7);
    EXPECT_FALSE(toolbar.actions()[3]->icon().isNull());
    EXPECT_EQ(toolbar.actions()[3]->toolTip(), QStringLiteral("Share"));
    BVNSToolbar::setImageNamedToolTipForItemWithTag(toolbar, Text("no such image"), Text("Gone"), 7);
    EXPECT_TRUE(toolbar.actions()[3]->icon().isNull());
    BVNSToolbar::setAllItemsEnabled(toolbar, false);
    BVNSToolbar::setEnabledForItemWithTag(toolbar, true, 7);
    EXPECT_FALSE(toolbar.actions()[0]->isEnabled());
    EXPECT_TRUE(toolbar.actions()[3]->isEnabled());

    BVNSToolbar::removeItemWithIdentifier(toolbar, Text("PRINT"));  // the first match only, ignoring case
    EXPECT_EQ(identifiersOf(toolbar), "PrintPreview print Share ");
    BVNSToolbar::removeItemsWithIdentifierSegment(toolbar, Text(""));
    BVNSToolbar::removeItemsWithIdentifierSegment(toolbar, Text("rint"));
    EXPECT_EQ(identifiersOf(toolbar), "Share ");
}

TEST(BVNSView, CountsFiltersOrdersAndRemovesSubviews) {
    QWidget window;
    QWidget* a = named("a", new QPushButton(&window));
    QWidget* b = named("b", new QLineEdit(&window));
    new QWidget(&window, Qt::Window);  // a window of its own is no subview
    EXPECT_EQ(BVNSView::numberOfSubviews(window), 2u);
    EXPECT_EQ(namesOf(BVNSView::subviewsWhichAreMembersOfClass(window, QAbstractButton::staticMetaObject)),
              "");
    EXPECT_EQ(namesOf(BVNSView::subviewsWhichAreKindOfClass(window, QAbstractButton::staticMetaObject)),
              "a ");
    EXPECT_EQ(namesOf(BVNSView::subviewsWhichAreMembersOfClass(window, QLineEdit::staticMetaObject)), "b ");

    QWidget* hidden = named("hidden", new QLabel);
    hidden->hide();
    BVNSView::addSubviews(window, {named("c", new QLabel), hidden});
    BVNSView::insertSubviewAtIndex(window, named("d", new QLabel), 1);
    EXPECT_EQ(namesOf(BVNSView::subviews(window)), "a d b c hidden ");
    EXPECT_TRUE(hidden->isHidden());
    EXPECT_THROW(BVNSView::insertSubviewAtIndex(window, new QLabel(&window), 9), RangeException);

    window.show();
    b->setFocus();
    EXPECT_EQ(BVNSView::subviewWithFocus(*a), b);

    const QPointer<QWidget> gone = a;
    BVNSView::removeAllSubviews(window);
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(BVNSView::numberOfSubviews(window), 0u);
}

TEST(BVNSView, ImageCoversTheWidgetUpright) {
    QWidget view;
    view.resize(40, 30);
    view.setStyleSheet(QStringLiteral("background: red"));
    auto* bottom = new QWidget(&view);
    bottom->setGeometry(0, 20, 40, 10);
    bottom->setStyleSheet(QStringLiteral("background: blue"));
    view.setAttribute(Qt::WA_StyledBackground);
    bottom->setAttribute(Qt::WA_StyledBackground);
    view.show();
    const QImage image = BVNSView::newImage(view);
    ASSERT_EQ(image.size() / image.devicePixelRatio(), QSize(40, 30));
    EXPECT_FALSE(BVNSImage::isFlipped(image));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(2, image.height() - 2), QColor(Qt::blue));
}

TEST(BVNSView, ScaleIsTheUnitSquaresWidth) {
    QWidget plain;
    QGraphicsView graphics;
    graphics.scale(2.0, 3.0);
    for (QWidget* view : {&plain, static_cast<QWidget*>(&graphics)}) {
        const char* kind = view->metaObject()->className();
        BVNSView::resetScaling(*view);
        EXPECT_DOUBLE_EQ(BVNSView::scale(*view), 1.0) << kind;
        BVNSView::setScale(*view, 2.5);
        EXPECT_DOUBLE_EQ(BVNSView::scale(*view), 2.5) << kind;
        BVNSView::setScalePercent(*view, 50.0);
        EXPECT_DOUBLE_EQ(BVNSView::scalePercent(*view), 50.0) << kind;
        for (const double bad : {0.0, -1.0, std::nan("")})
            EXPECT_THROW(BVNSView::setScale(*view, bad), InvalidArgumentException) << kind << bad;
    }
    const QTransform transform = graphics.transform();
    EXPECT_DOUBLE_EQ(transform.m11(), 0.5);
    EXPECT_DOUBLE_EQ(transform.m22(), 0.5);  // both directions, after an uneven scale
}

TEST(BVNSSplitView, ReloadsTablesAmongItsPanes) {
    QSplitter splitter;
    auto* direct = new CountingTable;
    auto* scrolled = new QScrollArea;
    auto* inner = new CountingTable;
    scrolled->setWidget(inner);
    splitter.addWidget(direct);
    splitter.addWidget(scrolled);
    splitter.addWidget(new QLabel);
    const int before = direct->resets + inner->resets;
    BVNSSplitView::reloadTableBasedSubviews(splitter);
    EXPECT_EQ(direct->resets + inner->resets, before + 2);
    EXPECT_EQ(BVNSSplitView::numberOfSubviews(splitter), 3u);
    BVNSSplitView::removeAllSubviews(splitter);
    EXPECT_EQ(BVNSSplitView::numberOfSubviews(splitter), 0u);
}

TEST(BVNSBox, EnablesTheControlsDirectlyInTheBox) {
    QGroupBox box;
    auto* button = new QPushButton(&box);
    auto* label = new QLabel(&box);
    auto* container = new QWidget(&box);
    auto* innerButton = new QPushButton(container);
    auto* nested = new QGroupBox(&box);
    BVNSBox::setEnabled(box, false);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_FALSE(label->isEnabled());
    EXPECT_TRUE(container->isEnabled());
    EXPECT_TRUE(innerButton->isEnabled());
    EXPECT_TRUE(nested->isEnabled());
    EXPECT_TRUE(box.isEnabled());
    BVNSBox::setEnabled(box, true);
    EXPECT_TRUE(button->isEnabled());
}

TEST(BVWebView, LoadsTheFileByItsAddress) {
    const auto folder = std::filesystem::temp_directory_path() / ("bv-webview-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "help.html") << "<html><body><h1>Scores</h1><p>Ann 91</p></body></html>";
    QTextBrowser browser;
    BVWebView::loadWebViewWithContentsOfFile(browser, Text((folder / "help.html").string()));
    EXPECT_EQ(browser.source().toLocalFile().toStdString(), (folder / "help.html").string());
    EXPECT_TRUE(browser.toPlainText().contains(QStringLiteral("Ann 91")));
    std::filesystem::remove_all(folder);
}

TEST(BVNSWindow, IntersectionNeedsOverlappingInteriors) {
    const Rect screen{{0, 0}, {100, 100}};
    const struct {
        Rect window;
        bool intersects;
    } cases[] = {
        {{{50, 50}, {100, 100}}, true},  {{{-20, -20}, {30, 30}}, true},
        {{{10, 10}, {5, 5}}, true},      {{{100, 0}, {50, 50}}, false},  // touches the right edge only
        {{{0, -50}, {50, 50}}, false},                                   // touches the top edge only
        {{{10, 10}, {0, 50}}, false},                                    // no width
        {{{200, 200}, {10, 10}}, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(BVNSWindow::intersectsRect(c.window, screen), c.intersects)
            << c.window.origin.x << "," << c.window.origin.y;
}

TEST(BVNSWindow, FramesAndScreens) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    ASSERT_NE(screen, nullptr);

    QWidget window;
    window.setGeometry(QRect(screen->geometry().topLeft() + QPoint(10, 20), QSize(200, 100)));
    window.show();
    const Point origin = BVNSWindow::frameOrigin(window);
    BVNSWindow::setFrameSizeDisplay(window, Size{260, 140}, true);
    EXPECT_EQ(BVNSWindow::frameOrigin(window), origin);
    EXPECT_EQ(BVNSWindow::frameSize(window), (Size{260, 140}));
    EXPECT_TRUE(BVNSWindow::isVisibleOnMainScreen(window));
    EXPECT_TRUE(BVNSWindow::isVisibleOnAnyScreen(window));
    window.move(screen->virtualGeometry().bottomRight() + QPoint(50, 50));
    EXPECT_FALSE(BVNSWindow::isVisibleOnMainScreen(window));
    EXPECT_FALSE(BVNSWindow::isVisibleOnAnyScreen(window));

    // Headless platforms may not capture; when they do, the picture has the rectangle's size.
    const QImage part = BVNSScreen::imageForScreenRect(
        Rect{{screen->geometry().x() + 0.0, screen->geometry().y() + 0.0}, {40, 30}});
    if (!part.isNull()) {
        EXPECT_EQ(part.size() / part.devicePixelRatio(), QSize(40, 30));
    }
    const QImage whole = BVNSScreen::imageForScreen();
    if (!whole.isNull()) {
        EXPECT_EQ(whole.size() / whole.devicePixelRatio(), screen->virtualGeometry().size());
    }
}
