// The main screen's frames and screen captures.
#include "BrevantCocoaExtensions/interface/BVNSScreen.hpp"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <cmath>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/interface/BVNSWindow.hpp"

namespace bv::BVNSScreen {

namespace {
QRect toQRect(const Rect& rect) {
    return QRect(static_cast<int>(std::floor(rect.origin.x)), static_cast<int>(std::floor(rect.origin.y)),
                 static_cast<int>(std::ceil(rect.size.width)), static_cast<int>(std::ceil(rect.size.height)));
}

// The desktop area a capture covers: the rectangle, or every screen's area for the zero rectangle.
QRect captureArea(const Rect& rect) {
    if (rect != Rect{}) return toQRect(rect);
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->virtualGeometry() : QRect();
}

// Paints each screen's part of the area onto the picture; false when no screen gave anything.
bool paintScreens(QPixmap& picture, const QRect& area) {
    bool captured = false;
    QPainter painter(&picture);
    for (QScreen* screen : QGuiApplication::screens()) {
        const QRect part = area & screen->geometry();
        if (part.isEmpty()) continue;
        const QPoint local = part.topLeft() - screen->geometry().topLeft();
        const QPixmap grabbed = screen->grabWindow(0, local.x(), local.y(), part.width(), part.height());
        if (grabbed.isNull()) continue;
        painter.drawPixmap(QRect(part.topLeft() - area.topLeft(), part.size()), grabbed);
        captured = true;
    }
    return captured;
}
}  // namespace

Rect mainScreenFrame() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? BVNSWindow::rectFromQRect(screen->geometry()) : Rect{};
}

Rect mainScreenVisibleFrame() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? BVNSWindow::rectFromQRect(screen->availableGeometry()) : Rect{};
}

QImage imageForScreenRect(const Rect& rect) {
    const QRect area = captureArea(rect);
    if (area.isEmpty()) return {};
    QPixmap picture(area.size());
    picture.fill(Qt::transparent);
    if (!paintScreens(picture, area)) return {};
    return BVNSImage::imageFromCGImageRef(picture);
}

QImage imageForScreen() {
    return imageForScreenRect(Rect{});
}

QImage imageForMainScreen() {
    const Rect frame = mainScreenFrame();
    return frame == Rect{} ? QImage() : imageForScreenRect(frame);
}

QImage imageForMainScreenVisibleFrame() {
    const Rect frame = mainScreenVisibleFrame();
    return frame == Rect{} ? QImage() : imageForScreenRect(frame);
}

}  // namespace bv::BVNSScreen
