// BVNSWindow: frames of QWidget windows and whether they show on a screen.
//
// Geometry is Qt's: global coordinates in device-independent pixels, the origin at the top-left of the
// virtual desktop and y growing downwards. A window's frame includes its decorations (frameGeometry).
//
// Visibility on a screen is overlap of the window frame with the screen's frame, as rectangles of real
// numbers: rectangles that only touch, or that are empty, do not intersect. It says nothing of whether the
// window is shown.
#pragma once

#include <QScreen>
#include <QWidget>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSWindow {

// True when both rectangles have a positive width and height and their interiors overlap.
[[nodiscard]] bool intersectsRect(const Rect& a, const Rect& b);
// The rectangle of a QRect.
[[nodiscard]] Rect rectFromQRect(const QRect& rect);

// The top-left corner and the size of the window's frame.
[[nodiscard]] Point frameOrigin(const QWidget& self);
[[nodiscard]] Size frameSize(const QWidget& self);
// Keeps the frame's origin and gives the frame the size (the decorations stay as they are), repainting
// at once when asked.
void setFrameSizeDisplay(QWidget& self, const Size& size, bool display);
// The window frame overlaps the screen's frame; the main (primary) screen's; any screen's. False without
// screens.
[[nodiscard]] bool isVisibleOnScreen(const QWidget& self, const QScreen& screen);
[[nodiscard]] bool isVisibleOnMainScreen(const QWidget& self);
[[nodiscard]] bool isVisibleOnAnyScreen(const QWidget& self);

}  // namespace bv::BVNSWindow
