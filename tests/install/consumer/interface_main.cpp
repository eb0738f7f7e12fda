// Uses the installed interface library: a colour from hexadecimal text, an image of it, back to text.
#include <BrevantCocoaExtensions/interface/BVNSColor.hpp>
#include <BrevantCocoaExtensions/interface/BVNSImage.hpp>
#include <QGuiApplication>
#include <iostream>

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const QColor color = *bv::BVNSColor::colorForARGBHexString(bv::Text("#FF336699"));
    const QImage image = bv::BVNSColor::imageWithSize(color, bv::Size{2, 1});
    std::cout << bv::BVNSColor::ARGBHexString(image.pixelColor(1, 0)) << '\n';  // FF336699
}
