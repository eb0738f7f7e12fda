// Styled text operations on bv::AttributedString.
#include "BrevantCocoaExtensions/interface/BVNSAttributedString.hpp"

#include <QFontDatabase>

#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/interface/RTF.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv::BVNSAttributedString {

namespace {

constexpr double defaultSymbolSize = 14.0;

// One symbol character in the system font of that size, coloured with the crayon.
AttributedString symbol(const Text& character, const char* crayon, double size) {
    QTextCharFormat format;
    format.setFontFamilies(QStringList{QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()});
    format.setFontPointSize(size);
    format.setForeground(BVNSColor::crayonColorNamed(Text(crayon)).value_or(QColor(Qt::black)));
    return AttributedString(character, format);
}

}  // namespace

AttributedString attributedStringForString(const Text& string) {
    return AttributedString(string);
}

AttributedString emptyAttributedString() {
    return AttributedString();
}

AttributedString endOfLineAttributedChar() {
    return AttributedString(Text(u"\n"));
}

AttributedString attributedStringFromAttributesStrings(const std::vector<AttributedString>& strings) {
    return attributedStringFromAttributesStringsAddSeparatorString(strings, std::nullopt);
}

AttributedString attributedStringFromAttributesStringsAddSeparatorString(
    const std::vector<AttributedString>& strings, const std::optional<Text>& separator) {
    AttributedString joined;
    const bool separated = separator && !separator->empty();
    for (std::size_t index = 0; index < strings.size(); ++index) {
        if (separated && index > 0) joined.append(*separator);
        joined.append(strings[index]);
    }
    return joined;
}

std::vector<Text> stringsFromAttributedStrings(const std::vector<AttributedString>& strings) {
    std::vector<Text> texts;
    texts.reserve(strings.size());
    for (const AttributedString& string : strings)
        texts.push_back(string.string());
    return texts;
}

AttributedString hyperlinkFromStringWithURL(const Text& string, const QUrl& url) {
    return AttributedString(string, hyperlinkFormat(url.toString(QUrl::FullyEncoded), false));
}

AttributedString greenCheckOfSize(double size) {
    return symbol(BVNSString::checkSymbol(), "Fern", size);
}
AttributedString greenCheck() {
    return greenCheckOfSize(defaultSymbolSize);
}
AttributedString redHeartOfSize(double size) {
    return symbol(BVNSString::heartSymbol(), "Maraschino", size);
}
AttributedString redHeart() {
    return redHeartOfSize(defaultSymbolSize);
}
AttributedString redCrossOfSize(double size) {
    return symbol(BVNSString::crossSymbol(), "Maraschino", size);
}
AttributedString redCross() {
    return redCrossOfSize(defaultSymbolSize);
}
AttributedString blueBoxOfSize(double size) {
    return symbol(BVNSString::boxSymbol(), "Blueberry", size);
}
AttributedString blueBox() {
    return blueBoxOfSize(defaultSymbolSize);
}

Text RTFString(const AttributedString& self) {
    const std::string rtf = RTF::write(self);
    const ByteData bytes(rtf.begin(), rtf.end());
    return decodeText(bytes, TextEncoding::ASCII).value_or(Text());
}

std::optional<AttributedString> attributedStringFromRTFString(const Text& string) {
    return RTF::read(string.toUtf8());
}

std::vector<AttributedString> attributedComponentsSeparatedByString(const AttributedString& self,
                                                                    const std::optional<Text>& separator) {
    std::vector<AttributedString> pieces;
    if (!separator) return pieces;
    std::size_t start = 0;
    for (Range found = self.string().find(*separator, CompareMode::Literal, start);
         found.location != NotFound; found = self.string().find(*separator, CompareMode::Literal, start)) {
        pieces.push_back(self.attributedSubstring({start, found.location - start}));
        start = found.location + found.length;
    }
    if (start < self.length()) pieces.push_back(self.attributedSubstring({start, self.length() - start}));
    return pieces;
}

AttributedString attributedStringByTrimmingFromEndCharactersInSet(const AttributedString& self,
                                                                  const CharacterSet& set) {
    std::size_t end = self.length();
    while (end > 0 && set.contains(self.string()[end - 1]))
        --end;
    return self.attributedSubstring({0, end});
}

int compare(const AttributedString& self, const AttributedString& other) {
    return self.string().compare(other.string(), CompareMode::Default);
}

void drawAtPointRotateDegreesInView(const AttributedString& self, const Point& point, double degrees,
                                    QPainter& painter) {
    painter.save();
    painter.rotate(degrees);
    painter.translate(point.x, point.y);
    self.draw(painter, QPointF(0, 0));
    painter.restore();
}

void drawAtPointRotateDegreesInView(const AttributedString& self, const Point& point, double degrees,
                                    QPaintDevice& view) {
    QPainter painter(&view);
    painter.setRenderHint(QPainter::TextAntialiasing);
    drawAtPointRotateDegreesInView(self, point, degrees, painter);
}

}  // namespace bv::BVNSAttributedString
