// BVNSPopUpButton: pop-up buttons (QComboBox) whose items carry integer tags and key equivalents.
//
// An item is its index in the combo box; its tag sits in the item's Qt::UserRole data (0 when absent) and
// its key equivalent in Qt::UserRole + 1. A lookup that finds nothing answers -1.
#pragma once

#include <QComboBox>
#include <cstddef>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSPopUpButton {

// The data roles of an item's tag and key equivalent.
inline constexpr int TagRole = Qt::UserRole;
inline constexpr int KeyEquivalentRole = Qt::UserRole + 1;

// The index of the first item with the tag, or -1.
[[nodiscard]] int itemWithTag(const QComboBox& self, int tag);
// Its title, or null.
[[nodiscard]] std::optional<Text> itemTitleWithTag(const QComboBox& self, int tag);
// The indexes of the items whose title equals the text exactly.
[[nodiscard]] std::vector<int> itemsWithTitle(const QComboBox& self, const Text& title);
// The tag and the key equivalent of an item.
[[nodiscard]] int tagOfItem(const QComboBox& self, int index);
[[nodiscard]] Text keyEquivalentOfItem(const QComboBox& self, int index);
// Separators, with a tag where given (0 otherwise). An index past the end throws RangeException.
void addSeparatorItem(QComboBox& self);
void addSeparatorItemWithTag(QComboBox& self, int tag);
void insertSeparatorItemAtIndex(QComboBox& self, std::size_t index);
// Items with the title, tag and key equivalent ("" when none), appended or inserted.
void addItemWithTitleTag(QComboBox& self, const Text& title, int tag);
void addItemWithTitleTagKeyEquivalent(QComboBox& self, const Text& title, int tag, const Text& keyEquivalent);
void insertItemWithTitleTagAtIndex(QComboBox& self, const Text& title, int tag, std::size_t index);
void insertItemWithTitleTagKeyEquivalentAtIndex(QComboBox& self, const Text& title, int tag,
                                                const Text& keyEquivalent, std::size_t index);
// One item per title in order; with enumerateTags each gets the next tag counting up from the start
// (0 for the two-argument form), without it tag 0.
void addItemsWithTitlesEnumerateTags(QComboBox& self, const std::vector<Text>& titles, bool enumerateTags);
void addItemsWithTitlesEnumerateTagsStartingWithTag(QComboBox& self, const std::vector<Text>& titles,
                                                    bool enumerateTags, int startingTag);

}  // namespace bv::BVNSPopUpButton
