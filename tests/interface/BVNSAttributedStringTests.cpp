// Styled text: format runs under splitting and merging, joining and splitting texts, hyperlinks on the value
// and on a document, status symbols, text views, and rotated drawing.
#include <gtest/gtest.h>

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QScrollBar>
#include <QTextEdit>

#include "BrevantCocoaExtensions/interface/BVNSAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/interface/BVNSLayoutManager.hpp"
#include "BrevantCocoaExtensions/interface/BVNSMutableAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/BVNSStringStyledText.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTextView.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

using namespace bv;

namespace {

QTextCharFormat bold() {
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    return format;
}

// "plain" + "BOLD" + "plain": three runs.
AttributedString threeRuns() {
    AttributedString text(Text("ab"));
    text.append(Text("CD"), bold());
    text.append(Text("ef"));
    return text;
}

const QUrl url("https://example.com/a b");

// The rectangle of the non-white pixels.
QRect inkBounds(const QImage& image) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128) bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

QImage whiteImage() {
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

}  // namespace

TEST(AttributedString, RunsSplitAtRangeEndsAndJoinWhenEqual) {
    AttributedString text = threeRuns();
    ASSERT_EQ(text.runs().size(), 3u);
    text.mergeFormat({1, 2}, bold());  // "b" and "C" are bold now: "a" | "bCD" | "ef"
    ASSERT_EQ(text.runs().size(), 3u);
    EXPECT_EQ(text.runs()[1].start, 1u);
    EXPECT_EQ(text.runEnd(1), 4u);
    text.mergeFormat({0, 6}, bold());  // all bold: one run
    EXPECT_EQ(text.runs().size(), 1u);
    EXPECT_EQ(text.formatAt(5), bold());
    EXPECT_EQ(text.attributedSubstring({2, 3}).runs().size(), 1u);
    EXPECT_THROW(text.mergeFormat({5, 2}, bold()), RangeException);
    EXPECT_THROW((void)text.attributedSubstring({7, 0}), RangeException);
    EXPECT_THROW((void)text.formatAt(6), RangeException);
}

TEST(AttributedString, DocumentsHoldTheSameTextAndRuns) {
    AttributedString text = threeRuns();
    text.append(Text("\nline two\n"));
    BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(text, {4, 6}, url);  // across a line end
    QTextDocument document;
    text.toDocument(document);
    EXPECT_EQ(document.blockCount(), 3);
    EXPECT_EQ(AttributedString::fromDocument(document), text);
}

TEST(BVNSAttributedString, JoinsWithTheSeparatorBetweenNeighboursOnly) {
    const std::vector<AttributedString> parts = {
        AttributedString(Text("a")), AttributedString(Text("b"), bold()), AttributedString(Text("c"))};
    const struct {
        std::optional<Text> separator;
        const char* joined;
    } cases[] = {{Text(", "), "a, b, c"}, {Text(""), "abc"}, {std::nullopt, "abc"}};
    for (const auto& c : cases) {
        const AttributedString joined =
            BVNSAttributedString::attributedStringFromAttributesStringsAddSeparatorString(parts, c.separator);
        EXPECT_EQ(joined.string(), Text(c.joined));
        const std::size_t b = joined.string().find(Text("b")).location;
        EXPECT_EQ(joined.formatAt(b), bold());
        EXPECT_EQ(joined.formatAt(b - 1), QTextCharFormat());  // the separator has no attributes
    }
    EXPECT_EQ(BVNSAttributedString::attributedStringFromAttributesStrings({}).length(), 0u);
    EXPECT_EQ(BVNSAttributedString::stringsFromAttributedStrings(parts),
              (std::vector<Text>{Text("a"), Text("b"), Text("c")}));
}

TEST(BVNSAttributedString, SplitsKeepingLeadingAndMiddleEmptyPiecesButNoTrailingOne) {
    const struct {
        const char* text;
        std::optional<Text> separator;
        std::vector<Text> pieces;
    } cases[] = {
        {"|a||b|", Text("|"), {Text(""), Text("a"), Text(""), Text("b")}},
        {"a--b", Text("--"), {Text("a"), Text("b")}},
        {"abc", Text(""), {Text("abc")}},
        {"abc", std::nullopt, {}},
        {"", Text(","), {}},
        {"|", Text("|"), {Text("")}},
    };
    for (const auto& c : cases) {
        const auto pieces = BVNSAttributedString::attributedComponentsSeparatedByString(
            AttributedString(Text(c.text)), c.separator);
        EXPECT_EQ(BVNSAttributedString::stringsFromAttributedStrings(pieces), c.pieces) << c.text;
    }
    // Pieces keep their attributes: "ab" | "CD" | "ef" split at "C" gives a plain piece and a mixed one.
    const auto pieces = BVNSAttributedString::attributedComponentsSeparatedByString(threeRuns(), Text("C"));
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[1].runs().size(), 2u);
    EXPECT_EQ(pieces[1].formatAt(0), bold());
}

TEST(BVNSAttributedString, TrimsTheEndAndComparesPlainTexts) {
    AttributedString text(Text("a b"), bold());
    text.append(Text(" \n\t"));
    const AttributedString trimmed = BVNSAttributedString::attributedStringByTrimmingFromEndCharactersInSet(
        text, CharacterSet::whitespaceAndNewlineCharacterSet());
    EXPECT_EQ(trimmed, AttributedString(Text("a b"), bold()));
    EXPECT_EQ(
        BVNSAttributedString::compare(AttributedString(Text(u"\u00e9")), AttributedString(Text(u"e\u0301"))),
        0);
    EXPECT_EQ(BVNSAttributedString::compare(AttributedString(Text("a")), AttributedString(Text("B"), bold())),
              1);
    EXPECT_EQ(BVNSString::attributedString(Text("x")),
              BVNSAttributedString::attributedStringForString(Text("x")));
    EXPECT_EQ(BVNSAttributedString::endOfLineAttributedChar().string(), Text("\n"));
}

// The hyperlink group on a value and on a document (a text view's storage) behaves the same way.
TEST(BVNSMutableAttributedString, HyperlinksAreOneGroupAndRemovingThemKeepsTheParagraphStyle) {
    const AttributedString link = BVNSAttributedString::hyperlinkFromStringWithURL(Text("site"), url);
    const QTextCharFormat linkFormat = link.formatAt(0);
    EXPECT_EQ(linkFormat.anchorHref(), QString("https://example.com/a%20b"));
    EXPECT_TRUE(linkFormat.isAnchor());
    EXPECT_EQ(linkFormat.foreground().color(), QColor(Qt::blue));
    EXPECT_EQ(linkFormat.intProperty(StyledTextProperty::Cursor), Qt::PointingHandCursor);
    EXPECT_EQ(linkFormat.intProperty(StyledTextProperty::LineBreakMode), LineBreakByTruncatingTail);
    EXPECT_FALSE(linkFormat.fontUnderline());  // unlike setTextInRangeToHyperlinkWithURL

    AttributedString value = threeRuns();
    QTextDocument document;
    threeRuns().toDocument(document);
    BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(value, {1, 4}, url);
    BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(document, {1, 4}, url);
    for (const AttributedString& linked : {value, AttributedString::fromDocument(document)}) {
        EXPECT_TRUE(linked.formatAt(1).fontUnderline());
        EXPECT_EQ(linked.formatAt(2).fontWeight(), QFont::Bold);  // other attributes stay
        EXPECT_FALSE(linked.formatAt(5).isAnchor());
    }
    BVNSMutableAttributedString::removeAllHyperlinks(value);
    BVNSMutableAttributedString::removeAllHyperlinks(document);
    for (const AttributedString& unlinked : {value, AttributedString::fromDocument(document)}) {
        const QTextCharFormat format = unlinked.formatAt(2);
        EXPECT_FALSE(format.isAnchor() || format.hasProperty(QTextFormat::AnchorHref));
        EXPECT_FALSE(format.hasProperty(QTextFormat::ForegroundBrush) || format.fontUnderline());
        EXPECT_FALSE(format.hasProperty(StyledTextProperty::Cursor));
        EXPECT_EQ(format.intProperty(StyledTextProperty::LineBreakMode), LineBreakByTruncatingTail);
        EXPECT_EQ(format.fontWeight(), QFont::Bold);
    }
    EXPECT_THROW(BVNSMutableAttributedString::removeHyperlinkInRange(document, {5, 2}), RangeException);
    EXPECT_THROW(BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(value, {7, 0}, url),
                 RangeException);
}

TEST(BVNSMutableAttributedString, DeletingASetKeepsTheOtherCharactersAttributes) {
    AttributedString value = threeRuns();  // "ab" "CD" "ef"
    value.append(Text("\nbCb"), bold());
    QTextDocument document;
    value.toDocument(document);
    const CharacterSet set = CharacterSet::fromCharactersInText(Text("bC\n"));
    BVNSMutableAttributedString::deleteCharactersInSet(value, set);
    BVNSMutableAttributedString::deleteCharactersInSet(document, set);
    AttributedString expected(Text("a"));
    expected.append(Text("D"), bold());
    expected.append(Text("ef"));
    EXPECT_EQ(value, expected);
    EXPECT_EQ(AttributedString::fromDocument(document), expected);
}

TEST(BVNSAttributedString, StatusSymbolsAreCrayonColouredSystemFontCharacters) {
    const struct {
        AttributedString symbol;
        Text character;
        const char* crayon;
    } cases[] = {
        {BVNSAttributedString::greenCheck(), BVNSString::checkSymbol(), "Fern"},
        {BVNSAttributedString::redHeart(), BVNSString::heartSymbol(), "Maraschino"},
        {BVNSAttributedString::redCross(), BVNSString::crossSymbol(), "Maraschino"},
        {BVNSAttributedString::blueBox(), BVNSString::boxSymbol(), "Blueberry"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.symbol.string(), c.character);
        EXPECT_EQ(c.symbol.formatAt(0).foreground().color(), *BVNSColor::crayonColorNamed(Text(c.crayon)));
        EXPECT_EQ(c.symbol.formatAt(0).fontPointSize(), 14.0);
    }
    EXPECT_EQ(BVNSAttributedString::redCrossOfSize(30).formatAt(0).fontPointSize(), 30.0);
}

TEST(BVNSTextView, SelectionAppendingAndLinksWorkOnTheViewsText) {
    QTextEdit view;
    view.resize(200, 80);
    view.setPlainText("  first line\nsecond  ");
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(0);
    cursor.setPosition(20, QTextCursor::KeepAnchor);
    view.setTextCursor(cursor);
    EXPECT_EQ(BVNSTextView::cursorPosition(view), 0u);
    EXPECT_EQ(BVNSTextView::selectedText(view), Text("first line\nsecond"));

    BVNSTextView::setSelectedTextToHyperlinkWithURL(view, url);
    EXPECT_TRUE(AttributedString::fromDocument(*view.document()).formatAt(19).isAnchor());
    BVNSTextView::removeAllHyperlinks(view);
    EXPECT_FALSE(AttributedString::fromDocument(*view.document()).formatAt(19).isAnchor());

    view.show();
    for (int line = 0; line < 40; ++line)
        BVNSTextView::appendFormat(view, "\nline %d of %s", line, "caf\xc3\xa9");
    EXPECT_TRUE(view.toPlainText().endsWith(QString::fromUtf8("line 39 of caf\xc3\xa9")));
    EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    EXPECT_EQ(BVNSTextView::cursorPosition(view), 0u);  // the selection stays
}

// A long word drawn at 0 and 90 degrees: the ink is wide, then tall. The layout manager turns a range about
// its centre, so a square range turned 90 degrees keeps its centre.
TEST(BVNSAttributedString, DrawsRotatedAtThePoint) {
    const AttributedString word(Text("MMMMMMMM"));
    QImage flat = whiteImage();
    BVNSAttributedString::drawAtPointRotateDegreesInView(word, {20, 20}, 0, flat);
    QImage turned = whiteImage();
    BVNSAttributedString::drawAtPointRotateDegreesInView(word, {20, -60}, 90, turned);
    const QRect wide = inkBounds(flat);
    const QRect tall = inkBounds(turned);
    EXPECT_GT(wide.width(), 2 * wide.height());
    EXPECT_GT(tall.height(), 2 * tall.width());
    EXPECT_NEAR(tall.top(), 20, 4);  // the word's start is 20 down the turned x axis

    QTextDocument document;
    word.toDocument(document);
    QImage range = whiteImage();
    QPainter painter(&range);
    BVNSLayoutManager::drawGlyphsForGlyphRangeSizeOfGlyphsRotateAtAngleAtPoint(
        *document.documentLayout(), painter, {0, 4}, {80, 80}, 90, {60, 60});
    painter.end();
    const QRect square = inkBounds(range);
    EXPECT_GT(square.height(), 2 * square.width());
    EXPECT_GT(square.left(), 60);
    EXPECT_LT(square.right(), 140);
}
