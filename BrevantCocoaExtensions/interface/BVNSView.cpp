// Subviews, images, scale and standard menus of QWidgets.
#include "BrevantCocoaExtensions/interface/BVNSView.hpp"

#include <QGraphicsView>
#include <QPointer>
#include <QVariant>
#include <cmath>
#include <string>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/ContextMenuInternal.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSView {

namespace {
constexpr const char* scaleKey = "bvScale";
constexpr const char* menuKey = "bvMenu";

std::vector<QWidget*> subviewsWhere(const QWidget& self, const auto& keep) {
    std::vector<QWidget*> found;
    for (QObject* child : self.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && !widget->isWindow() && keep(*widget)) found.push_back(widget);
    }
    return found;
}

// The width and height of the unit square after the view's transform.
QSizeF unitSize(const QGraphicsView& view) {
    return view.transform().mapRect(QRectF(0, 0, 1, 1)).size();
}

void checkScale(double scale) {
    if (!std::isfinite(scale) || scale <= 0)
        throw InvalidArgumentException("a scale must be a finite positive number, not " +
                                       std::to_string(scale));
}
}  // namespace

std::vector<QWidget*> subviews(const QWidget& self) {
    return subviewsWhere(self, [](const QWidget&) { return true; });
}

std::size_t numberOfSubviews(const QWidget& self) {
    return subviews(self).size();
}

QWidget* subviewWithFocus(const QWidget& self) {
    return self.window()->focusWidget();
}

std::vector<QWidget*> subviewsWhichAreMembersOfClass(const QWidget& self, const QMetaObject& type) {
    return subviewsWhere(self, [&type](const QWidget& view) { return view.metaObject() == &type; });
}

std::vector<QWidget*> subviewsWhichAreKindOfClass(const QWidget& self, const QMetaObject& type) {
    return subviewsWhere(self, [&type](const QWidget& view) { return view.metaObject()->inherits(&type); });
}

QImage image(QWidget& self) {
    return newImage(self);
}

QImage newImage(QWidget& self) {
    return BVNSImage::newImageWithPreservedDimensionsForImageRepFlipped(self.grab().toImage(), false);
}

double scale(const QWidget& self) {
    if (const auto* view = qobject_cast<const QGraphicsView*>(&self)) return unitSize(*view).width();
    const QVariant stored = self.property(scaleKey);
    return stored.isValid() ? stored.toDouble() : 1.0;
}

void resetScaling(QWidget& self) {
    if (auto* view = qobject_cast<QGraphicsView*>(&self)) {
        const QSizeF unit = unitSize(*view);
        if (unit.width() > 0 && unit.height() > 0) view->scale(1.0 / unit.width(), 1.0 / unit.height());
        return;
    }
    self.setProperty(scaleKey, 1.0);
}

void setScale(QWidget& self, double scale) {
    checkScale(scale);
    resetScaling(self);
    if (auto* view = qobject_cast<QGraphicsView*>(&self))
        view->scale(scale, scale);
    else
        self.setProperty(scaleKey, scale);
}

double scalePercent(const QWidget& self) {
    return scale(self) * 100.0;
}

void setScalePercent(QWidget& self, double percent) {
    setScale(self, percent / 100.0);
    if (auto* view = qobject_cast<QGraphicsView*>(&self)) view->viewport()->update();
    self.update();
}

void addSubviews(QWidget& self, const std::vector<QWidget*>& views) {
    for (QWidget* view : views) {
        if (!view) continue;
        if (view->parentWidget() != &self) {
            // Reparenting hides a widget; show it again unless it was hidden on purpose.
            const bool hiddenOnPurpose = view->testAttribute(Qt::WA_WState_ExplicitShowHide) &&
                                         view->testAttribute(Qt::WA_WState_Hidden);
            view->setParent(&self);
            if (!hiddenOnPurpose) view->show();
        }
        view->raise();
    }
}

void insertSubviewAtIndex(QWidget& self, QWidget* view, std::size_t index) {
    std::vector<QWidget*> order = subviews(self);
    if (index > order.size())
        throw RangeException("insertSubviewAtIndex: index " + std::to_string(index) + " beyond " +
                             std::to_string(order.size()) + " subviews");
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(index), view);
    addSubviews(self, order);
}

void removeAllSubviews(QWidget& self) {
    for (QWidget* view : subviews(self))
        delete view;
}

QMenu* menu(const QWidget& self) {
    return self.property(menuKey).value<QPointer<QMenu>>().data();
}

void setMenu(QWidget& self, QMenu* menu) {
    self.setProperty(menuKey, QVariant::fromValue(QPointer<QMenu>(menu)));
    if (menu) internal::ensureContextMenuFilter(self);
}

}  // namespace bv::BVNSView
