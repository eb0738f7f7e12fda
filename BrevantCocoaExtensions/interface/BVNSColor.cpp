// Colour hexadecimal texts, exact comparison and the crayon list.
#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"

#include <array>
#include <cstdio>
#include <string_view>

#include "BrevantCocoaExtensions/interface/BVNSImage.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv::BVNSColor {

namespace {

struct Crayon {
    std::string_view key;
    unsigned rgb;
};

// The 48 crayons of the "Crayons" colour list, in the list's order (eight rows of six).
constexpr std::array<Crayon, 48> crayons{{
    {"Cantaloupe", 0xFFCC66}, {"Honeydew", 0xCCFF66},   {"Spindrift", 0x66FFCC}, {"Sky", 0x66CCFF},
    {"Lavender", 0xCC66FF},   {"Carnation", 0xFF6FCF},  {"Licorice", 0x000000},  {"Snow", 0xFFFFFF},
    {"Salmon", 0xFF6666},     {"Banana", 0xFFFF66},     {"Flora", 0x66FF66},     {"Ice", 0x66FFFF},
    {"Orchid", 0x6666FF},     {"Bubblegum", 0xFF66FF},  {"Lead", 0x191919},      {"Mercury", 0xE6E6E6},
    {"Tangerine", 0xFF8000},  {"Lime", 0x80FF00},       {"Sea Foam", 0x00FF80},  {"Aqua", 0x0080FF},
    {"Grape", 0x8000FF},      {"Strawberry", 0xFF0080}, {"Tungsten", 0x333333},  {"Silver", 0xCCCCCC},
    {"Maraschino", 0xFF0000}, {"Lemon", 0xFFFF00},      {"Spring", 0x00FF00},    {"Turquoise", 0x00FFFF},
    {"Blueberry", 0x0000FF},  {"Magenta", 0xFF00FF},    {"Iron", 0x4C4C4C},      {"Magnesium", 0xB3B3B3},
    {"Mocha", 0x804000},      {"Fern", 0x408000},       {"Moss", 0x008040},      {"Ocean", 0x004080},
    {"Eggplant", 0x400080},   {"Maroon", 0x800040},     {"Steel", 0x666666},     {"Aluminum", 0x999999},
    {"Cayenne", 0x800000},    {"Asparagus", 0x808000},  {"Clover", 0x008000},    {"Teal", 0x008080},
    {"Midnight", 0x000080},   {"Plum", 0x800080},       {"Tin", 0x7F7F7F},       {"Nickel", 0x808080},
}};

int hexDigit(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return -1;
}

// A two-character piece read as base 16, stopping at the first non-digit.
int readPiece(const Text& text, std::size_t location) {
    const Text piece = text.substring(location, 2);
    int value = 0;
    for (char16_t unit : piece.units()) {
        const int digit = hexDigit(unit);
        if (digit < 0) break;
        value = value * 16 + digit;
    }
    return value;
}

Text trimmedOfHashes(const Text& text) {
    const std::u16string& units = text.units();
    const std::size_t first = units.find_first_not_of(u'#');
    if (first == std::u16string::npos) return Text();
    const std::size_t last = units.find_last_not_of(u'#');
    return Text(units.substr(first, last - first + 1));
}

// A component as the 8-bit value the writers use: × 255, truncated.
int truncatedByte(float component) {
    return static_cast<int>(component * 255.0f);
}

Text hexOf(std::initializer_list<float> components) {
    std::string out;
    for (float component : components) {
        char buffer[3];
        std::snprintf(buffer, sizeof buffer, "%02X", truncatedByte(component) & 0xFF);
        out += buffer;
    }
    return Text(out);
}

}  // namespace

std::optional<QColor> colorForARGBHexString(const std::optional<Text>& string) {
    if (!string) return std::nullopt;
    const Text trimmed = BVNSString::trimmedString(*string);
    if (trimmed.empty()) return std::nullopt;
    const Text digits = trimmedOfHashes(trimmed);
    const int alpha = readPiece(digits, 0);
    const int red = readPiece(digits, 2);
    const int green = readPiece(digits, 4);
    const int blue = readPiece(digits, 6);
    return QColor::fromRgbF(static_cast<float>(red) / 255.0f, static_cast<float>(green) / 255.0f,
                            static_cast<float>(blue) / 255.0f, static_cast<float>(alpha) / 255.0f);
}

Text RGBHexString(const QColor& self) {
    const QColor rgb = self.toRgb();
    return hexOf({rgb.redF(), rgb.greenF(), rgb.blueF()});
}

Text ARGBHexString(const QColor& self) {
    const QColor rgb = self.toRgb();
    return hexOf({rgb.alphaF(), rgb.redF(), rgb.greenF(), rgb.blueF()});
}

Text hexStringWithoutPrefix(const QColor& self) {
    return RGBHexString(self);
}

QImage imageWithSize(const QColor& self, const Size& size) {
    return BVNSImage::imageWithColorImageSize(self, size);
}

bool isSameColorAsIncludeAlpha(const QColor& self, const std::optional<QColor>& color, bool includeAlpha) {
    if (!color) return false;
    const QColor a = self.toRgb();
    const QColor b = color->toRgb();
    if (a.redF() != b.redF() || a.greenF() != b.greenF() || a.blueF() != b.blueF()) return false;
    return !includeAlpha || a.alphaF() == b.alphaF();
}

std::optional<QColor> crayonColorNamed(const Text& key) {
    const std::string name = key.toUtf8();
    for (const Crayon& crayon : crayons) {
        if (crayon.key == name) return QColor(QRgb(0xFF000000u | crayon.rgb));
    }
    return std::nullopt;
}

std::vector<Text> crayonColorKeys() {
    std::vector<Text> keys;
    for (const Crayon& crayon : crayons)
        keys.emplace_back(crayon.key);
    return keys;
}

}  // namespace bv::BVNSColor
