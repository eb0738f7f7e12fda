// Pop-up button helpers on QComboBox.
#include "BrevantCocoaExtensions/interface/BVNSPopUpButton.hpp"

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSPopUpButton {

namespace {
int checkedIndex(const QComboBox& box, std::size_t index) {
    if (index > static_cast<std::size_t>(box.count())) throw RangeException("pop-up index beyond the end");
    return static_cast<int>(index);
}
}  // namespace

int itemWithTag(const QComboBox& self, int tag) {
    for (int index = 0; index < self.count(); ++index) {
        if (tagOfItem(self, index) == tag) return index;
    }
    return -1;
}

std::optional<Text> itemTitleWithTag(const QComboBox& self, int tag) {
    const int index = itemWithTag(self, tag);
    if (index < 0) return std::nullopt;
    return fromQString(self.itemText(index));
}

std::vector<int> itemsWithTitle(const QComboBox& self, const Text& title) {
    const QString wanted = toQString(title);
    std::vector<int> found;
    for (int index = 0; index < self.count(); ++index) {
        if (self.itemText(index) == wanted) found.push_back(index);
    }
    return found;
}

int tagOfItem(const QComboBox& self, int index) {
    return self.itemData(index, TagRole).toInt();
}

Text keyEquivalentOfItem(const QComboBox& self, int index) {
    return fromQString(self.itemData(index, KeyEquivalentRole).toString());
}

void addSeparatorItem(QComboBox& self) {
    addSeparatorItemWithTag(self, 0);
}

void addSeparatorItemWithTag(QComboBox& self, int tag) {
    const int index = self.count();
    self.insertSeparator(index);
    self.setItemData(index, tag, TagRole);
}

void insertSeparatorItemAtIndex(QComboBox& self, std::size_t index) {
    const int at = checkedIndex(self, index);
    self.insertSeparator(at);
    self.setItemData(at, 0, TagRole);
}

void addItemWithTitleTag(QComboBox& self, const Text& title, int tag) {
    addItemWithTitleTagKeyEquivalent(self, title, tag, Text(""));
}

void addItemWithTitleTagKeyEquivalent(QComboBox& self, const Text& title, int tag,
                                      const Text& keyEquivalent) {
    insertItemWithTitleTagKeyEquivalentAtIndex(self, title, tag, keyEquivalent,
                                               static_cast<std::size_t>(self.count()));
}

void insertItemWithTitleTagAtIndex(QComboBox& self, const Text& title, int tag, std::size_t index) {
    insertItemWithTitleTagKeyEquivalentAtIndex(self, title, tag, Text(""), index);
}

void insertItemWithTitleTagKeyEquivalentAtIndex(QComboBox& self, const Text& title, int tag,
                                                const Text& keyEquivalent, std::size_t index) {
    const int at = checkedIndex(self, index);
    self.insertItem(at, toQString(title), tag);
    self.setItemData(at, toQString(keyEquivalent), KeyEquivalentRole);
}

void addItemsWithTitlesEnumerateTags(QComboBox& self, const std::vector<Text>& titles, bool enumerateTags) {
    addItemsWithTitlesEnumerateTagsStartingWithTag(self, titles, enumerateTags, 0);
}

void addItemsWithTitlesEnumerateTagsStartingWithTag(QComboBox& self, const std::vector<Text>& titles,
                                                    bool enumerateTags, int startingTag) {
    int tag = startingTag;
    for (const Text& title : titles)
        addItemWithTitleTag(self, title, enumerateTags ? tag++ : 0);
}

}  // namespace bv::BVNSPopUpButton
