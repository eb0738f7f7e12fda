// The context-menu event filter shared by plain widgets, tables and outlines.
#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QPointer>
#include <QTableView>
#include <QTreeView>

#include "BrevantCocoaExtensions/interface/BVNSOutlineView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTableView.hpp"
#include "BrevantCocoaExtensions/interface/BVNSView.hpp"
#include "BrevantCocoaExtensions/interface/ContextMenuInternal.hpp"

namespace bv::internal {

namespace {
constexpr const char* filterKey = "bvContextMenuFilter";

// The menu a right click on the widget shows, as its kind of view decides.
QMenu* menuFor(QWidget& widget, const QContextMenuEvent& event) {
    if (auto* outline = qobject_cast<QTreeView*>(&widget))
        return BVNSOutlineView::menuForEvent(*outline, event);
    if (auto* table = qobject_cast<QTableView*>(&widget)) return BVNSTableView::menuForEvent(*table, event);
    return BVNSView::menu(widget);
}

class ContextMenuFilter : public QObject {
  public:
    explicit ContextMenuFilter(QWidget& widget) : QObject(&widget), widget_(&widget) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ContextMenu || !widget_) return QObject::eventFilter(watched, event);
        const auto& contextEvent = static_cast<const QContextMenuEvent&>(*event);
        if (QMenu* menu = menuFor(*widget_, contextEvent)) menu->popup(contextEvent.globalPos());
        return true;
    }

  private:
    QPointer<QWidget> widget_;
};
}  // namespace

void ensureContextMenuFilter(QWidget& widget) {
    if (widget.property(filterKey).toBool()) return;
    auto* filter = new ContextMenuFilter(widget);
    auto* scrollArea = qobject_cast<QAbstractScrollArea*>(&widget);
    (scrollArea ? static_cast<QWidget*>(scrollArea->viewport()) : &widget)->installEventFilter(filter);
    widget.setProperty(filterKey, true);
}

}  // namespace bv::internal
