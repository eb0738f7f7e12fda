// Tab items of QTabWidgets by position and identifier.
#include "BrevantCocoaExtensions/interface/BVNSTabView.hpp"

#include <QTabBar>
#include <QVariant>
#include <string>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSTabView {

namespace {
void removeTabAt(QTabWidget& self, int index) {
    QWidget* page = self.widget(index);
    self.removeTab(index);
    delete page;
}
}  // namespace

QWidget* firstTabViewItem(const QTabWidget& self) {
    return self.count() == 0 ? nullptr : self.widget(0);
}

QWidget* lastTabViewItem(const QTabWidget& self) {
    return self.count() == 0 ? nullptr : self.widget(self.count() - 1);
}

QWidget* tabViewItemWithIdentifier(const QTabWidget& self, const Text& identifier) {
    const std::size_t index = indexOfTabViewItemWithIdentifier(self, identifier);
    return index == NotFound ? nullptr : self.widget(static_cast<int>(index));
}

std::size_t indexOfTabViewItemWithIdentifier(const QTabWidget& self, const Text& identifier) {
    for (int index = 0; index < self.count(); ++index)
        if (identifierAtIndex(self, static_cast<std::size_t>(index)) == identifier)
            return static_cast<std::size_t>(index);
    return NotFound;
}

std::optional<Text> identifierAtIndex(const QTabWidget& self, std::size_t index) {
    if (index >= static_cast<std::size_t>(self.count())) return std::nullopt;
    const QVariant data = self.tabBar()->tabData(static_cast<int>(index));
    if (!data.isValid()) return std::nullopt;
    return fromQString(data.toString());
}

void setIdentifierAtIndex(QTabWidget& self, std::size_t index, const Text& identifier) {
    if (index >= static_cast<std::size_t>(self.count()))
        throw RangeException("setIdentifierAtIndex: no tab at index " + std::to_string(index));
    self.tabBar()->setTabData(static_cast<int>(index), toQString(identifier));
}

std::optional<Text> identifierOfSelectedTabViewItem(const QTabWidget& self) {
    const std::size_t index = indexOfSelectedTabViewItem(self);
    return index == NotFound ? std::nullopt : identifierAtIndex(self, index);
}

std::size_t indexOfSelectedTabViewItem(const QTabWidget& self) {
    return self.currentIndex() < 0 ? NotFound : static_cast<std::size_t>(self.currentIndex());
}

QWidget* createAndAddTabViewItemWithIdentifierTabItemLabelTabItemView(QTabWidget& self,
                                                                      const Text& identifier,
                                                                      const Text& label, QWidget* view) {
    QWidget* page = view ? view : new QWidget;
    const int index = self.addTab(page, toQString(label));
    setIdentifierAtIndex(self, static_cast<std::size_t>(index), identifier);
    return page;
}

void removeAllTabViewItems(QTabWidget& self) {
    while (self.count() > 0)
        removeTabAt(self, self.count() - 1);
}

void removeTabViewItemWithIdentifier(QTabWidget& self, const Text& identifier) {
    const std::size_t index = indexOfTabViewItemWithIdentifier(self, identifier);
    if (index != NotFound) removeTabAt(self, static_cast<int>(index));
}

}  // namespace bv::BVNSTabView
