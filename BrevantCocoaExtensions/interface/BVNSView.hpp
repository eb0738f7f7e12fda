// BVNSView: short-cuts on QWidgets: direct subviews by count, focus and class, an image of the widget,
// a zoom scale, adding, inserting and removing subviews, and the widget's standard context menu.
//
// A subview is a direct child widget that is not a window of its own; the subview order is Qt's child
// (stacking) order, later subviews on top. Layouts are left alone: a subview added here is placed by the
// caller or by a layout the caller manages.
//
// The scale: a QGraphicsView's scale is its transform (how wide the unit square is in view coordinates);
// any other widget keeps its scale as a property ("bvScale", 1.0 when never set) for its own painting code
// to honour. Setting a scale that is not a finite positive number throws InvalidArgumentException.
//
// removeAllSubviews deletes the subviews, as a removed subview is gone unless someone else holds it.
#pragma once

#include <QImage>
#include <QMenu>
#include <QMetaObject>
#include <QWidget>
#include <cstddef>
#include <vector>

namespace bv::BVNSView {

// The direct subviews in child order.
[[nodiscard]] std::vector<QWidget*> subviews(const QWidget& self);
[[nodiscard]] std::size_t numberOfSubviews(const QWidget& self);
// The widget with the keyboard focus in the receiver's window (the last one given the focus); null when none.
[[nodiscard]] QWidget* subviewWithFocus(const QWidget& self);
// The direct subviews of exactly that class, or of that class or a subclass (by Qt meta-object).
[[nodiscard]] std::vector<QWidget*> subviewsWhichAreMembersOfClass(const QWidget& self,
                                                                   const QMetaObject& type);
[[nodiscard]] std::vector<QWidget*> subviewsWhichAreKindOfClass(const QWidget& self, const QMetaObject& type);

// The widget's whole area rendered into a picture (not flipped); both forms hand the caller the image.
[[nodiscard]] QImage image(QWidget& self);
[[nodiscard]] QImage newImage(QWidget& self);

// The width of the unit square in the widget's coordinates after its scale.
[[nodiscard]] double scale(const QWidget& self);
// Undoes any scaling, so that scale() answers 1.0.
void resetScaling(QWidget& self);
// resetScaling, then scales both directions by the factor.
void setScale(QWidget& self, double scale);
// scale() × 100.0; setting divides by 100.0, applies it and schedules a repaint.
[[nodiscard]] double scalePercent(const QWidget& self);
void setScalePercent(QWidget& self, double percent);

// Makes each widget of the list a subview, in order, on top of the others.
void addSubviews(QWidget& self, const std::vector<QWidget*>& views);
// Inserts the widget into a copy of the subview list at the index (RangeException past the end) and makes
// the whole list the subviews in that order.
void insertSubviewAtIndex(QWidget& self, QWidget* view, std::size_t index);
// Deletes every subview.
void removeAllSubviews(QWidget& self);

// The widget's standard context menu (not owned; null when none). Setting one makes a right click on the
// widget show it (on tables and outlines, unless a menu delegate answers).
[[nodiscard]] QMenu* menu(const QWidget& self);
void setMenu(QWidget& self, QMenu* menu);

}  // namespace bv::BVNSView
