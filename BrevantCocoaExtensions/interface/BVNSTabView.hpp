// BVNSTabView: tab items of QTabWidgets by position and identifier.
//
// A tab item is the page widget of a tab. Its identifier is a text kept as the tab's data
// (QTabBar::tabData), set by createAndAddTabViewItem... or setIdentifierAtIndex; a tab without one has
// none. Removing a tab deletes its page, as a removed item is gone unless someone else holds it.
#pragma once

#include <QTabWidget>
#include <cstddef>
#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSTabView {

// The first or last tab's page; null when there are no tabs.
[[nodiscard]] QWidget* firstTabViewItem(const QTabWidget& self);
[[nodiscard]] QWidget* lastTabViewItem(const QTabWidget& self);
// The page of the first tab with the identifier; null when no tab has it.
[[nodiscard]] QWidget* tabViewItemWithIdentifier(const QTabWidget& self, const Text& identifier);
// The index of the first tab with the identifier, or bv::NotFound.
[[nodiscard]] std::size_t indexOfTabViewItemWithIdentifier(const QTabWidget& self, const Text& identifier);
// The identifier of the tab at the index; nullopt when it has none or there is no such tab.
[[nodiscard]] std::optional<Text> identifierAtIndex(const QTabWidget& self, std::size_t index);
// Gives the tab at the index an identifier (RangeException when there is no such tab).
void setIdentifierAtIndex(QTabWidget& self, std::size_t index, const Text& identifier);
// The selected tab's identifier (nullopt when none), and its index (bv::NotFound when no tab is selected).
[[nodiscard]] std::optional<Text> identifierOfSelectedTabViewItem(const QTabWidget& self);
[[nodiscard]] std::size_t indexOfSelectedTabViewItem(const QTabWidget& self);
// Appends a tab with the identifier, label and page (an empty page when null); answers the page, which
// the tab widget owns.
QWidget* createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(QTabWidget& self,
                                                                      const Text& identifier,
                                                                      const Text& label, QWidget* view);
// Removes every tab, or the first tab with the identifier, deleting the pages.
void removeAllTabViewItems(QTabWidget& self);
void removeTabViewItemWithIdentifier(QTabWidget& self, const Text& identifier);

}  // namespace bv::BVNSTabView
