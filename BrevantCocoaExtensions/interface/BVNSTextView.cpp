// Text view short-cuts on QTextEdit; the hyperlink operations are BVNSMutableAttributedString's on the
// view's document.
#include "BrevantCocoaExtensions/interface/BVNSTextView.hpp"

#include <QScrollBar>
#include <QTextCursor>
#include <cstdarg>
#include <cstdio>
#include <vector>

#include "BrevantCocoaExtensions/interface/BVNSMutableAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv::BVNSTextView {

std::uint64_t cursorPosition(const QTextEdit& self) {
    return static_cast<std::uint64_t>(self.textCursor().selectionStart());
}

Text selectedText(const QTextEdit& self) {
    QString selected = self.textCursor().selectedText();
    selected.replace(QChar::ParagraphSeparator, u'\n');
    return BVNSString::trimmedString(fromQString(selected));
}

void appendString(QTextEdit& self, const Text& string) {
    QTextCursor end(self.document());
    end.movePosition(QTextCursor::End);
    end.insertText(toQString(string));
    QScrollBar* bar = self.verticalScrollBar();
    bar->setValue(bar->maximum());
}

void appendFormat(QTextEdit& self, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    std::vector<char> text(static_cast<std::size_t>(length < 0 ? 0 : length) + 1);
    if (length >= 0) std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    appendString(self, Text(std::string_view(text.data(), text.size() - 1)));
}

void setTextInRangeToHyperlinkWithURL(QTextEdit& self, Range range, const QUrl& url) {
    BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(*self.document(), range, url);
}

void setSelectedTextToHyperlinkWithURL(QTextEdit& self, const QUrl& url) {
    const QTextCursor selection = self.textCursor();
    const auto start = static_cast<std::uint64_t>(selection.selectionStart());
    const auto end = static_cast<std::uint64_t>(selection.selectionEnd());
    setTextInRangeToHyperlinkWithURL(self, {start, end - start}, url);
}

void removeAllHyperlinks(QTextEdit& self) {
    BVNSMutableAttributedString::removeAllHyperlinks(*self.document());
}

}  // namespace bv::BVNSTextView
