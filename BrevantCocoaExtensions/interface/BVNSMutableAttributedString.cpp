// In-place edits of styled text, on the value type and on a QTextDocument through QTextCursor.
#include "BrevantCocoaExtensions/interface/BVNSMutableAttributedString.hpp"

#include <QTextCursor>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSMutableAttributedString {

namespace {

// The properties a removed hyperlink loses; the line-break mode stays.
constexpr std::initializer_list<int> hyperlinkProperties = {
    QTextFormat::IsAnchor,           QTextFormat::AnchorHref,    QTextFormat::ForegroundBrush,
    QTextFormat::TextUnderlineStyle, QTextFormat::FontUnderline, StyledTextProperty::Cursor};

std::size_t documentLength(const QTextDocument& document) {
    return static_cast<std::size_t>(document.characterCount() - 1);  // without the last block's end
}

QTextCursor selection(QTextDocument& document, Range range) {
    const std::size_t length = documentLength(document);
    if (range.location > length || range.length > length - range.location)
        throw RangeException("text range out of bounds");
    QTextCursor cursor(&document);
    cursor.setPosition(static_cast<int>(range.location));
    cursor.setPosition(static_cast<int>(range.location + range.length), QTextCursor::KeepAnchor);
    return cursor;
}

}  // namespace

void setTextInRangeToHyperlinkWithURL(AttributedString& self, Range range, const QUrl& url) {
    self.mergeFormat(range, hyperlinkFormat(url.toString(QUrl::FullyEncoded), true));
}

void setTextInRangeToHyperlinkWithURL(QTextDocument& self, Range range, const QUrl& url) {
    QTextCursor cursor = selection(self, range);
    cursor.beginEditBlock();
    cursor.mergeCharFormat(hyperlinkFormat(url.toString(QUrl::FullyEncoded), true));
    cursor.endEditBlock();
}

void removeHyperlinkInRange(AttributedString& self, Range range) {
    self.clearProperties(range, hyperlinkProperties);
}

void removeHyperlinkInRange(QTextDocument& self, Range range) {
    QTextCursor cursor = selection(self, range);
    // Each run of the range gets its own format less the hyperlink properties.
    const AttributedString piece = AttributedString::fromDocument(self).attributedSubstring(range);
    cursor.beginEditBlock();
    for (std::size_t index = 0; index < piece.runs().size(); ++index) {
        QTextCharFormat format = piece.runs()[index].format;
        for (int property : hyperlinkProperties)
            format.clearProperty(property);
        cursor.setPosition(static_cast<int>(range.location + piece.runs()[index].start));
        cursor.setPosition(static_cast<int>(range.location + piece.runEnd(index)), QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
}

void removeAllHyperlinks(AttributedString& self) {
    removeHyperlinkInRange(self, {0, self.length()});
}

void removeAllHyperlinks(QTextDocument& self) {
    removeHyperlinkInRange(self, {0, documentLength(self)});
}

void deleteCharactersInSet(AttributedString& self, const CharacterSet& set) {
    self.deleteCharactersInSet(set);
}

void deleteCharactersInSet(QTextDocument& self, const CharacterSet& set) {
    const Text text = AttributedString::fromDocument(self).string();
    QTextCursor cursor(&self);
    cursor.beginEditBlock();
    // From the end, so the positions still to visit stay where they were; neighbours go in one step.
    for (std::size_t end = text.length(); end > 0;) {
        if (!set.contains(text[end - 1])) {
            --end;
            continue;
        }
        std::size_t start = end - 1;
        while (start > 0 && set.contains(text[start - 1]))
            --start;
        cursor.setPosition(static_cast<int>(start));
        cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        end = start;
    }
    cursor.endEditBlock();
}

}  // namespace bv::BVNSMutableAttributedString
