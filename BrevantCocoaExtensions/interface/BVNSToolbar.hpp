// BVNSToolbar: toolbar items by tag and identifier on QToolBars.
//
// An item is one of the toolbar's QActions. Its tag is the menu-item tag (bv::MenuItem::tag) and its
// identifier a text property ("bvIdentifier"); an item added by identifier is titled with its identifier.
// Removed items are deleted when the toolbar owns them.
//
// Pitfalls callers rely on:
//   - itemWithIdentifier compares exactly, removeItemWithIdentifier ignores case (and removes only the first
//     match), removeItemsWithIdentifierSegment removes every item whose identifier contains the text (an
//     empty text matches nothing).
//   - setImageNamed... looks for the image in the main bundle, then in the library's own bundle; no image
//     found leaves the item without one.
#pragma once

#include <QAction>
#include <QImage>
#include <QToolBar>
#include <cstddef>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSToolbar {

// The identifier of an item ("" when it has none), and setting it.
[[nodiscard]] Text identifier(const QAction* item);
void setIdentifier(QAction* item, const Text& identifier);

[[nodiscard]] std::size_t numberOfItems(const QToolBar& self);
// The first item with the tag, or whose identifier equals the text exactly; null when none.
[[nodiscard]] QAction* itemWithTag(const QToolBar& self, int tag);
[[nodiscard]] QAction* itemWithIdentifier(const QToolBar& self, const Text& identifier);
// Appends a new item with the identifier (also its title); answers it.
QAction* addItemWithItemIdentifier(QToolBar& self, const Text& identifier);
// Removes the first item whose identifier equals the text ignoring case.
void removeItemWithIdentifier(QToolBar& self, const Text& identifier);
// Removes every item whose identifier contains the text (case-sensitive).
void removeItemsWithIdentifierSegment(QToolBar& self, const Text& segment);
// Enables or disables every item, or the first item with the tag.
void setAllItemsEnabled(QToolBar& self, bool enabled);
void setEnabledForItemWithTag(QToolBar& self, bool enabled, int tag);
// The image (by resource name or as given) and tool tip of the first item with the tag; nothing when no
// item has it.
void setImageNamedToolTipForItemWithTag(QToolBar& self, const Text& imageName, const Text& toolTip, int tag);
void setImageToolTipForItemWithTag(QToolBar& self, const QImage& image, const Text& toolTip, int tag);
void setToolTipForItemWithTag(QToolBar& self, const Text& toolTip, int tag);

}  // namespace bv::BVNSToolbar
