// BVNSTextView: short-cuts on a text view (QTextEdit): the cursor position, the trimmed selection,
// appending text and scrolling to it, and hyperlinks on the view's document.
#pragma once

#include <QTextEdit>
#include <QUrl>
#include <cstdint>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSTextView {

// The start of the selected range (the cursor's position when nothing is selected).
[[nodiscard]] std::uint64_t cursorPosition(const QTextEdit& self);
// The selected text (block breaks as "\n"), trimmed of white space and line breaks at both ends.
[[nodiscard]] Text selectedText(const QTextEdit& self);
// Inserts the text at the end (in the attributes of the last character), then scrolls the end into view;
// the selection stays where it was.
void appendString(QTextEdit& self, const Text& string);
// printf-style formatting (UTF-8 arguments for %s), then appendString.
[[gnu::format(printf, 2, 3)]] void appendFormat(QTextEdit& self, const char* format, ...);
// The hyperlink attributes, with underline, over the range of the view's text (RangeException when it
// leaves the text), or over the selection.
void setTextInRangeToHyperlinkWithURL(QTextEdit& self, Range range, const QUrl& url);
void setSelectedTextToHyperlinkWithURL(QTextEdit& self, const QUrl& url);
// Removes every hyperlink of the view's text (the paragraph style stays).
void removeAllHyperlinks(QTextEdit& self);

}  // namespace bv::BVNSTextView
