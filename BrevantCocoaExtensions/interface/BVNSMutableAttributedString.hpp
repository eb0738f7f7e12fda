// BVNSMutableAttributedString: in-place edits of styled text: setting and removing hyperlinks, deleting
// characters of a set.
//
// Each operation works on a bv::AttributedString and on a QTextDocument (a text view's storage). Ranges
// count UTF-16 code units (in a document, a block break counts one); a range that leaves the text throws
// RangeException.
//
// Pitfall callers rely on: removing a hyperlink removes the link, the colour, the underline and the cursor,
// but leaves the paragraph style (the tail-truncating line breaks) in place.
#pragma once

#include <QTextDocument>
#include <QUrl>

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSMutableAttributedString {

// The hyperlink attributes, with single underline, over the range, in one editing step.
void setTextInRangeToHyperlinkWithURL(AttributedString& self, Range range, const QUrl& url);
void setTextInRangeToHyperlinkWithURL(QTextDocument& self, Range range, const QUrl& url);
// Removes the link, foreground colour, underline and cursor attributes over the range.
void removeHyperlinkInRange(AttributedString& self, Range range);
void removeHyperlinkInRange(QTextDocument& self, Range range);
// removeHyperlinkInRange over the whole text.
void removeAllHyperlinks(AttributedString& self);
void removeAllHyperlinks(QTextDocument& self);
// Deletes every character in the set; the rest keep their attributes.
void deleteCharactersInSet(AttributedString& self, const CharacterSet& set);
void deleteCharactersInSet(QTextDocument& self, const CharacterSet& set);

}  // namespace bv::BVNSMutableAttributedString
