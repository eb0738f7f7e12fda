// Styled text as a Text plus format runs: splitting runs at range ends, merging equal neighbours, and the
// bridge to QTextDocument.
#include "BrevantCocoaExtensions/interface/AttributedString.hpp"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

QTextCharFormat hyperlinkFormat(const QString& address, bool underline) {
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorHref(address);
    format.setForeground(QColor(Qt::blue));
    format.setProperty(StyledTextProperty::Cursor, static_cast<int>(Qt::PointingHandCursor));
    format.setProperty(StyledTextProperty::LineBreakMode, LineBreakByTruncatingTail);
    if (underline) format.setFontUnderline(true);
    return format;
}

AttributedString::AttributedString(Text text, const QTextCharFormat& format) : text_(std::move(text)) {
    if (!text_.empty()) runs_.push_back({0, format});
}

std::size_t AttributedString::runEnd(std::size_t index) const {
    return index + 1 < runs_.size() ? runs_[index + 1].start : text_.length();
}

QTextCharFormat AttributedString::formatAt(std::size_t index) const {
    if (index >= text_.length()) throw RangeException("attributed text index out of bounds");
    return runs_[runIndexAt(index)].format;
}

AttributedString AttributedString::attributedSubstring(Range range) const {
    checkRange(range);
    AttributedString piece;
    if (range.length == 0) return piece;
    const std::size_t end = range.location + range.length;
    piece.text_ = text_.substring(range.location, range.length);
    for (std::size_t index = runIndexAt(range.location); index < runs_.size() && runs_[index].start < end;
         ++index) {
        piece.runs_.push_back({std::max<std::size_t>(runs_[index].start, range.location) - range.location,
                               runs_[index].format});
    }
    return piece;
}

void AttributedString::reserve(std::size_t characters, std::size_t runs) {
    text_.units().reserve(characters);
    runs_.reserve(runs);
}

void AttributedString::append(const AttributedString& other) {
    const std::size_t offset = text_.length();
    text_ += other.text_;
    for (const Run& run : other.runs_) {
        // Only the first run can continue our last one: the other's neighbours already differ.
        if (!runs_.empty() && sameFormat(runs_.back().format, run.format)) continue;
        runs_.push_back({run.start + offset, run.format});
    }
}

void AttributedString::append(const Text& text, const QTextCharFormat& format) {
    if (text.empty()) return;
    if (runs_.empty() || !sameFormat(runs_.back().format, format)) runs_.push_back({text_.length(), format});
    text_ += text;
}

void AttributedString::mergeFormat(Range range, const QTextCharFormat& format) {
    checkRange(range);
    if (range.length == 0) return;
    const std::size_t first = splitAt(range.location);
    const std::size_t last = splitAt(range.location + range.length);
    for (std::size_t index = first; index < last; ++index)
        runs_[index].format.merge(format);
    coalesce(first, last);
}

void AttributedString::clearProperties(Range range, std::initializer_list<int> properties) {
    checkRange(range);
    if (range.length == 0) return;
    const std::size_t first = splitAt(range.location);
    const std::size_t last = splitAt(range.location + range.length);
    for (std::size_t index = first; index < last; ++index) {
        for (int property : properties)
            runs_[index].format.clearProperty(property);
    }
    coalesce(first, last);
}

void AttributedString::deleteCharactersInSet(const CharacterSet& set) {
    AttributedString kept;
    for (std::size_t index = 0; index < runs_.size(); ++index) {
        std::u16string piece;
        for (std::size_t unit = runs_[index].start; unit < runEnd(index); ++unit) {
            if (!set.contains(text_[unit])) piece.push_back(text_[unit]);
        }
        kept.append(Text(std::move(piece)), runs_[index].format);
    }
    *this = std::move(kept);
}

void AttributedString::toDocument(QTextDocument& document) const {
    document.clear();
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (std::size_t index = 0; index < runs_.size(); ++index) {
        const std::size_t start = runs_[index].start;
        cursor.insertText(toQString(text_.substring(start, runEnd(index) - start)), runs_[index].format);
    }
    cursor.endEditBlock();
}

void AttributedString::draw(QPainter& painter, const QPointF& topLeft) const {
    QTextDocument document;
    document.setDocumentMargin(0);
    document.setUndoRedoEnabled(false);
    toDocument(document);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);  // characters without a colour are black
    painter.save();
    painter.translate(topLeft);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
}

AttributedString AttributedString::fromDocument(const QTextDocument& document) {
    AttributedString result;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        // A block's character format is the format of the break that starts it.
        if (block != document.begin()) result.append(Text(u"\n"), block.charFormat());
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            if (fragment.fragment().isValid())
                result.append(fromQString(fragment.fragment().text()), fragment.fragment().charFormat());
        }
    }
    return result;
}

bool sameFormat(const QTextCharFormat& a, const QTextCharFormat& b) {
    if (a == b) return true;  // the same object, or the same properties in the same order
    return a.propertyCount() == b.propertyCount() && a.properties() == b.properties();
}

bool operator==(const AttributedString& a, const AttributedString& b) {
    if (a.text_ != b.text_ || a.runs_.size() != b.runs_.size()) return false;
    for (std::size_t index = 0; index < a.runs_.size(); ++index) {
        if (a.runs_[index].start != b.runs_[index].start ||
            !sameFormat(a.runs_[index].format, b.runs_[index].format))
            return false;
    }
    return true;
}

void AttributedString::checkRange(Range range) const {
    if (range.location > text_.length() || range.length > text_.length() - range.location)
        throw RangeException("attributed text range out of bounds");
}

// The run that holds the character at the position (position < length).
std::size_t AttributedString::runIndexAt(std::size_t position) const {
    const auto after = std::upper_bound(runs_.begin(), runs_.end(), position,
                                        [](std::size_t at, const Run& run) { return at < run.start; });
    return static_cast<std::size_t>(after - runs_.begin()) - 1;
}

// Makes a run start at the position and answers its index (the run count at the end of the text).
std::size_t AttributedString::splitAt(std::size_t position) {
    if (position >= text_.length()) return runs_.size();
    const std::size_t index = runIndexAt(position);
    if (runs_[index].start == position) return index;
    runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(index) + 1, Run{position, runs_[index].format});
    return index + 1;
}

// Joins neighbouring runs of equal format among the runs first - 1 to last.
void AttributedString::coalesce(std::size_t first, std::size_t last) {
    if (runs_.size() < 2) return;
    first = std::max<std::size_t>(first, 1);
    last = std::min(last, runs_.size() - 1);
    if (first > last) return;
    std::size_t kept = first;
    for (std::size_t index = first; index <= last; ++index) {
        if (sameFormat(runs_[index].format, runs_[kept - 1].format)) continue;
        if (kept != index) runs_[kept] = std::move(runs_[index]);
        ++kept;
    }
    runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(kept),
                runs_.begin() + static_cast<std::ptrdiff_t>(last) + 1);
}

}  // namespace bv
