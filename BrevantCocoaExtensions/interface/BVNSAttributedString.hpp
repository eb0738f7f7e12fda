// BVNSAttributedString: building, joining and splitting styled text, hyperlinks, coloured status symbols,
// RTF in both directions, and drawing rotated.
//
// Styled text is bv::AttributedString (a Text plus QTextCharFormat runs; see AttributedString.hpp).
// Lists are std::vector: of AttributedString, or of Text for plain texts.
//
// Pitfalls callers rely on:
//   - hyperlinkFromStringWithURL does not underline; BVNSMutableAttributedString's
//     setTextInRangeToHyperlinkWithURL does.
//   - attributedComponentsSeparatedByString keeps an empty first piece for a leading separator and empty
//     middle pieces, but adds no empty last piece for a trailing separator.
//   - attributedStringFromRTFString reads the text's UTF-8 bytes as RTF: raw non-ASCII characters are read
//     in the document's code page (RTF writers escape them), so they arrive as several characters.
//   - Angles are Qt's: y grows downwards, so a positive angle turns clockwise on screen.
#pragma once

#include <QPaintDevice>
#include <QPainter>
#include <QUrl>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSAttributedString {

// --- Building ------------------------------------------------------------------------------------------

// The text with no attributes.
[[nodiscard]] AttributedString attributedStringForString(const Text& string);
// The empty text "".
[[nodiscard]] AttributedString emptyAttributedString();
// The text "\n" with no attributes.
[[nodiscard]] AttributedString endOfLineAttributedChar();
// The texts appended in order.
[[nodiscard]] AttributedString attributedStringFromAttributesStrings(
    const std::vector<AttributedString>& strings);
// The texts appended in order, with the separator (without attributes) between neighbours unless it is
// null or empty; none after the last.
[[nodiscard]] AttributedString attributedStringFromAttributesStringsAddSeparatorString(
    const std::vector<AttributedString>& strings, const std::optional<Text>& separator);
// The plain text of each, in order.
[[nodiscard]] std::vector<Text> stringsFromAttributedStrings(const std::vector<AttributedString>& strings);
// The text with the hyperlink attributes over all of it (anchor to the URL's full encoded form, blue,
// pointing hand, tail truncation), not underlined.
[[nodiscard]] AttributedString hyperlinkFromStringWithURL(const Text& string, const QUrl& url);

// --- Status symbols: one character in the system font, coloured from the "Crayons" list ---------------

[[nodiscard]] AttributedString greenCheckOfSize(double size);  // checkSymbol in "Fern"
[[nodiscard]] AttributedString greenCheck();                   // of size 14.0
[[nodiscard]] AttributedString redHeartOfSize(double size);    // heartSymbol in "Maraschino"
[[nodiscard]] AttributedString redHeart();
[[nodiscard]] AttributedString redCrossOfSize(double size);  // crossSymbol in "Maraschino"
[[nodiscard]] AttributedString redCross();
[[nodiscard]] AttributedString blueBoxOfSize(double size);  // boxSymbol in "Blueberry"
[[nodiscard]] AttributedString blueBox();

// --- RTF -----------------------------------------------------------------------------------------------

// The whole text written as RTF (ASCII only; see RTF.hpp).
[[nodiscard]] Text RTFString(const AttributedString& self);
// The text's UTF-8 bytes read as RTF; null, with a log line, for damaged RTF.
[[nodiscard]] std::optional<AttributedString> attributedStringFromRTFString(const Text& string);

// --- Splitting, trimming, comparing ---------------------------------------------------------------------

// The pieces between literal occurrences of the separator, with their attributes; empty for a null
// separator. A leading separator gives an empty first piece, a trailing one no empty last piece.
[[nodiscard]] std::vector<AttributedString> attributedComponentsSeparatedByString(
    const AttributedString& self, const std::optional<Text>& separator);
// A copy without the run of characters in the set at its end.
[[nodiscard]] AttributedString attributedStringByTrimmingFromEndCharactersInSet(const AttributedString& self,
                                                                                const CharacterSet& set);
// The plain texts compared as Text compares by default (case-sensitive, canonical equivalents equal):
// -1, 0 or 1.
[[nodiscard]] int compare(const AttributedString& self, const AttributedString& other);

// --- Drawing -------------------------------------------------------------------------------------------

// Lays the text out on its own and draws it with the painter's state saved: rotated by the angle, then
// translated to the point (in the rotated frame); the painter's state is restored after.
void drawAtPointRotateDegreesInView(const AttributedString& self, const Point& point, double degrees,
                                    QPainter& painter);
// The same on a paint device (an image, a pixmap, or a widget inside its paint event).
void drawAtPointRotateDegreesInView(const AttributedString& self, const Point& point, double degrees,
                                    QPaintDevice& view);

}  // namespace bv::BVNSAttributedString
