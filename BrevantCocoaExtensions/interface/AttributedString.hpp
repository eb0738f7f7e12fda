// bv::AttributedString: styled text as a value, a Text plus runs of Qt character formats covering it.
//
// Lengths, indexes and ranges count UTF-16 code units of the plain text, exactly as Text does: "\r\n",
// U+2029 and U+00A0 stay what they are (a QTextDocument would turn them into block breaks and spaces).
// Copies are cheap (QTextCharFormat is implicitly shared) and independent.
//
// Attributes are QTextCharFormat properties: the link is the anchor and its href, the colour the
// foreground brush, the underline the text underline style, the font its families and point size. Qt has
// no character property for the mouse cursor or for a paragraph's line-break mode, so they are kept in the
// user-property slots below; a QTextEdit shows the pointing hand over anchors by itself.
//
// toDocument and fromDocument move styled text into and out of a QTextDocument (a text view's storage);
// the document makes "\n" (and "\r", U+2029) block breaks, read back as "\n".
#pragma once

#include <QPainter>
#include <QTextCharFormat>
#include <QTextDocument>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

// Character attributes that Qt's formats have no property for.
namespace StyledTextProperty {
// The mouse cursor over the characters, a Qt::CursorShape (Qt::PointingHandCursor over links).
inline constexpr int Cursor = QTextFormat::UserProperty + 0x4256;
// The line-break mode of the characters' paragraph style (LineBreakByTruncatingTail over links).
inline constexpr int LineBreakMode = QTextFormat::UserProperty + 0x4257;
}  // namespace StyledTextProperty

// Line-break mode 4: lines that do not fit are cut at the end with an ellipsis.
inline constexpr int LineBreakByTruncatingTail = 4;

// The hyperlink attributes, always applied together: the anchor with the address, the blue foreground,
// the pointing-hand cursor, tail-truncating line breaks, and single underline only when asked.
[[nodiscard]] QTextCharFormat hyperlinkFormat(const QString& address, bool underline);

// Whether two formats hold the same properties (Qt's own == also compares the order they were set in).
[[nodiscard]] bool sameFormat(const QTextCharFormat& a, const QTextCharFormat& b);

class AttributedString {
  public:
    // A format that holds from `start` up to the next run's start (or the end of the text).
    struct Run {
        std::size_t start = 0;
        QTextCharFormat format;
    };

    AttributedString() = default;
    // The text with one format over all of it (no attributes by default).
    explicit AttributedString(Text text, const QTextCharFormat& format = QTextCharFormat());

    [[nodiscard]] const Text& string() const noexcept { return text_; }
    [[nodiscard]] std::size_t length() const noexcept { return text_.length(); }
    [[nodiscard]] bool empty() const noexcept { return text_.empty(); }
    // The runs in order; none for the empty text, and neighbours always differ (sameFormat is false).
    [[nodiscard]] const std::vector<Run>& runs() const noexcept { return runs_; }
    // The end of run `index` (the next run's start, or the length).
    [[nodiscard]] std::size_t runEnd(std::size_t index) const;
    // The format of the character at the index; RangeException past the end.
    [[nodiscard]] QTextCharFormat formatAt(std::size_t index) const;

    // The characters of the range with their formats; RangeException when it leaves the text.
    [[nodiscard]] AttributedString attributedSubstring(Range range) const;
    // Makes room for that many characters and runs, so a long build does not keep moving them.
    void reserve(std::size_t characters, std::size_t runs);
    void append(const AttributedString& other);
    void append(const Text& text, const QTextCharFormat& format = QTextCharFormat());

    // Merges the format's properties into every character of the range (QTextCharFormat::merge).
    void mergeFormat(Range range, const QTextCharFormat& format);
    // Removes those properties from every character of the range.
    void clearProperties(Range range, std::initializer_list<int> properties);
    // Removes every character in the set; the others keep their formats.
    void deleteCharactersInSet(const CharacterSet& set);

    // Lays the text out on its own (no wrapping, no margin) and draws it with its top-left corner there.
    void draw(QPainter& painter, const QPointF& topLeft) const;

    // Replaces the document's content with this text (one undo step).
    void toDocument(QTextDocument& document) const;
    // The document's text and formats; block breaks become "\n".
    [[nodiscard]] static AttributedString fromDocument(const QTextDocument& document);

    // The same text and runs, formats compared with sameFormat.
    friend bool operator==(const AttributedString& a, const AttributedString& b);

  private:
    void checkRange(Range range) const;
    std::size_t runIndexAt(std::size_t position) const;
    std::size_t splitAt(std::size_t position);
    void coalesce(std::size_t first, std::size_t last);

    Text text_;
    std::vector<Run> runs_;
};

}  // namespace bv
