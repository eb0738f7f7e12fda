// Menus, menu items and pop-up buttons by tag and title: unique adds, depth-first searches, removals,
// copies, targets told with the item, and pop-up tags counting up.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenu>

#include "BrevantCocoaExtensions/interface/BVNSMenu.hpp"
#include "BrevantCocoaExtensions/interface/BVNSMenuItem.hpp"
#include "BrevantCocoaExtensions/interface/BVNSPopUpButton.hpp"
#include "BrevantCocoaExtensions/interface/MenuItem.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

using namespace bv;

namespace {
class Recorder : public QObject {
    Q_OBJECT
  public:
    std::vector<int> tags;
    Q_INVOKABLE void choose(QAction* item) { tags.push_back(MenuItem::tag(item)); }
};

std::string titlesOf(const QMenu& menu) {
    std::string out;
    for (const QAction* item : menu.actions()) {
        out += (item->isSeparator() ? std::string("-") : MenuItem::title(item).toUtf8()) + ":" +
               std::to_string(MenuItem::tag(item)) + " ";
    }
    return out;
}
}  // namespace

TEST(BVNSMenu, BuildsPrunesAndCopiesByTagAndTitle) {
    Recorder recorder;
    QMenu menu;
    BVNSMenu::addItemWithTitleTagTargetActionKeyEquivalent(menu, Text("Open"), 1, &recorder, "choose",
                                                           Text("Ctrl+O"));
    EXPECT_EQ(BVNSMenu::addUniqueMenuItemWithTitleTagTargetActionKeyEquivalent(menu, Text("Open"), 9, nullptr,
                                                                               "", Text("")),
              nullptr);
    BVNSMenu::addUniqueMenuItemWithTitleTagTargetActionKeyEquivalent(menu, Text("open"), 2, nullptr, "",
                                                                     Text(""));
    BVNSMenu::addItemsWithTitlesTagTargetAction(menu, {Text("A"), Text("B")}, 5, &recorder, "choose");
    BVNSMenu::addSeparatorItemWithTag(menu, 7);
    BVNSMenu::insertItemWithTitleTagTargetActionKeyEquivalentAtIndex(menu, Text("First"), 3, nullptr, "",
                                                                     Text(""), 0);
    BVNSMenu::insertSeparatorItemAtIndex(menu, 1);
    EXPECT_THROW(BVNSMenu::insertSeparatorItemAtIndex(menu, 99), RangeException);
    EXPECT_EQ(titlesOf(menu), "First:3 -:0 Open:1 open:2 A:5 B:5 -:7 ");
    EXPECT_EQ(MenuItem::keyEquivalent(menu.actions()[2]), Text("Ctrl+O"));

    QMenu copy;
    BVNSMenu::addItemsFromMenu(copy, menu);
    EXPECT_EQ(titlesOf(copy), titlesOf(menu));

    BVNSMenu::removeItemsWithTitleCaseInsensitiveCompare(menu, Text("OPEN"), true);
    BVNSMenu::removeItemsWithTag(menu, 0);
    BVNSMenu::removeItemsWithTagsAboveTag(menu, 5);
    EXPECT_EQ(titlesOf(menu), "First:3 A:5 B:5 ");
    BVNSMenu::removeAllItemsExceptItemsWithTag(menu, 5);
    EXPECT_EQ(titlesOf(menu), "A:5 B:5 ");

    // Choosing a copied item tells the same target with the copy.
    copy.actions()[2]->trigger();
    EXPECT_EQ(recorder.tags, (std::vector<int>{1}));
}

TEST(BVNSMenu, SearchesSubmenusBeforeTheItemAndTellsTargets) {
    Recorder recorder, other;
    QMenu menu;
    auto* inner = new QMenu(QStringLiteral("Inner"));
    BVNSMenu::addItemWithTitleTagTargetActionKeyEquivalent(*inner, Text("Deep"), 4, &recorder, "choose",
                                                           Text(""));
    auto* innermost = new QMenu;
    BVNSMenu::addItemWithTitleTagTargetActionKeyEquivalent(*innermost, Text("Deeper"), 4, nullptr, "",
                                                           Text(""));
    QAction* holder = BVNSMenu::addSubmenu(*inner, innermost);
    holder->setText(QStringLiteral("Holder"));
    QAction* parent = BVNSMenu::addSubmenu(menu, inner);
    EXPECT_EQ(parent->text(), QString());
    MenuItem::setTag(parent, 4);
    parent->setText(QStringLiteral("Inner"));

    EXPECT_EQ(MenuItem::title(BVNSMenu::menuItemWithTagRecursiveSearch(menu, 4, true)), Text("Deep"));
    EXPECT_EQ(BVNSMenu::menuItemWithTagRecursiveSearch(menu, 4, false), parent);
    EXPECT_EQ(BVNSMenu::submenuWithTitleRecursiveSearch(menu, Text("Holder"), true), innermost);
    EXPECT_EQ(BVNSMenu::submenuWithTitleRecursiveSearch(menu, Text("Holder"), false), nullptr);

    BVNSMenu::setAllItemsChecked(*inner, true);
    EXPECT_EQ(BVNSMenu::menuItemsWithStateRecursiveSearch(menu, MenuItem::On, true).size(), 2u);
    EXPECT_EQ(BVNSMenu::menuItemsWithStateRecursiveSearch(menu, MenuItem::On, false).size(), 0u);

    EXPECT_TRUE(BVNSMenu::performActionForItemWithTag(menu, 4));
    EXPECT_EQ(recorder.tags, (std::vector<int>{4}));
    EXPECT_FALSE(BVNSMenu::performActionForItemWithTag(menu, 99));
    BVNSMenu::setAllMenuItemsTargetMenuItemsActionRecursively(menu, &other, "choose", true);
    EXPECT_TRUE(
        BVNSMenu::performActionForItem(menu, BVNSMenu::menuItemWithTagRecursiveSearch(menu, 4, true)));
    EXPECT_EQ(other.tags, (std::vector<int>{4}));
    BVNSMenu::setAllItemsEnabled(menu, false);
    EXPECT_FALSE(parent->isEnabled());
}

TEST(BVNSMenuItem, NewItemsCarryPictureOrStyledTitle) {
    QImage picture(4, 4, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const auto pictured = BVNSMenuItem::menuItemWithImageItemTagTargetAction(picture, 8, nullptr, "");
    EXPECT_EQ(pictured->text(), QString());
    EXPECT_FALSE(pictured->icon().isNull());
    EXPECT_EQ(MenuItem::tag(pictured.get()), 8);

    const auto styled = BVNSMenuItem::menuItemWithTitleItemTagFontNameFontSizeColorTargetAction(
        Text("True"), 2, Text("DejaVu Sans"), 18, QColor(Qt::blue), nullptr, "");
    const auto title = MenuItem::attributedTitle(styled.get());
    ASSERT_TRUE(title);
    EXPECT_EQ(title->text, Text("True"));
    EXPECT_EQ(title->attributes.font.pointSizeF(), 18);
    EXPECT_EQ(title->attributes.foregroundColor, QColor(Qt::blue));
}

TEST(BVNSPopUpButton, TagsTitlesAndKeyEquivalents) {
    QComboBox popup;
    BVNSPopUpButton::addItemsWithTitlesEnumerateTagsStartingWithTag(popup, {Text("Yes"), Text("No")}, true,
                                                                    10);
    BVNSPopUpButton::addItemsWithTitlesEnumerateTags(popup, {Text("Maybe")}, false);
    BVNSPopUpButton::addSeparatorItemWithTag(popup, 20);
    BVNSPopUpButton::insertItemWithTitleTagKeyEquivalentAtIndex(popup, Text("Yes"), 30, Text("y"), 0);
    EXPECT_THROW(BVNSPopUpButton::insertItemWithTitleTagAtIndex(popup, Text("x"), 1, 9), RangeException);

    EXPECT_EQ(BVNSPopUpButton::itemWithTag(popup, 11), 2);
    EXPECT_EQ(BVNSPopUpButton::itemWithTag(popup, 0), 3);
    EXPECT_EQ(BVNSPopUpButton::itemWithTag(popup, 20), 4);
    EXPECT_EQ(BVNSPopUpButton::itemWithTag(popup, 99), -1);
    EXPECT_EQ(BVNSPopUpButton::itemTitleWithTag(popup, 10), Text("Yes"));
    EXPECT_FALSE(BVNSPopUpButton::itemTitleWithTag(popup, 99));
    EXPECT_EQ(BVNSPopUpButton::itemsWithTitle(popup, Text("Yes")), (std::vector<int>{0, 1}));
    EXPECT_EQ(BVNSPopUpButton::keyEquivalentOfItem(popup, 0), Text("y"));
    EXPECT_EQ(BVNSPopUpButton::keyEquivalentOfItem(popup, 1), Text(""));
}

#include "BVNSMenuTests.moc"
