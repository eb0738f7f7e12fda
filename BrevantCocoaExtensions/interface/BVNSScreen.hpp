// BVNSScreen: the main screen's frames and pictures of what the screens show, on QScreen.
//
// Geometry is Qt's (see BVNSWindow.hpp). The main screen is the primary screen; its visible frame leaves
// out panels and docks (availableGeometry). Without any screen the frames are the zero rectangle and every
// capture is a null image.
//
// A capture covers a rectangle of the virtual desktop; the zero rectangle means the whole desktop. Each
// screen under the rectangle gives its part; parts no screen covers stay transparent. A platform that
// cannot capture (some headless ones) gives null.
#pragma once

#include <QImage>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSScreen {

[[nodiscard]] Rect mainScreenFrame();
[[nodiscard]] Rect mainScreenVisibleFrame();
// A picture of the screen contents in the rectangle (the zero rectangle: the whole desktop).
[[nodiscard]] QImage imageForScreenRect(const Rect& rect);
// The whole desktop; the main screen's frame; its visible frame.
[[nodiscard]] QImage imageForScreen();
[[nodiscard]] QImage imageForMainScreen();
[[nodiscard]] QImage imageForMainScreenVisibleFrame();

}  // namespace bv::BVNSScreen
