// Frames of QWidget windows and their overlap with screens.
#include "BrevantCocoaExtensions/interface/BVNSWindow.hpp"

#include <QGuiApplication>
#include <cmath>

namespace bv::BVNSWindow {

bool intersectsRect(const Rect& a, const Rect& b) {
    const auto empty = [](const Rect& r) { return !(r.size.width > 0) || !(r.size.height > 0); };
    if (empty(a) || empty(b)) return false;
    return a.origin.x < b.origin.x + b.size.width && b.origin.x < a.origin.x + a.size.width &&
           a.origin.y < b.origin.y + b.size.height && b.origin.y < a.origin.y + a.size.height;
}

Rect rectFromQRect(const QRect& rect) {
    return Rect{{static_cast<double>(rect.x()), static_cast<double>(rect.y())},
                {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

Point frameOrigin(const QWidget& self) {
    return rectFromQRect(self.frameGeometry()).origin;
}

Size frameSize(const QWidget& self) {
    return rectFromQRect(self.frameGeometry()).size;
}

void setFrameSizeDisplay(QWidget& self, const Size& size, bool display) {
    const QPoint origin = self.frameGeometry().topLeft();
    const QSize decorations = self.frameGeometry().size() - self.geometry().size();
    self.resize(QSize(static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height))) -
                decorations);
    self.move(origin);
    if (display) self.repaint();
}

bool isVisibleOnScreen(const QWidget& self, const QScreen& screen) {
    return intersectsRect(rectFromQRect(self.frameGeometry()), rectFromQRect(screen.geometry()));
}

bool isVisibleOnMainScreen(const QWidget& self) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen && isVisibleOnScreen(self, *screen);
}

bool isVisibleOnAnyScreen(const QWidget& self) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (isVisibleOnScreen(self, *screen)) return true;
    return false;
}

}  // namespace bv::BVNSWindow
