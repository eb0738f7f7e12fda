// The gallery's "Styled text" page: a quiz report as styled text in a text view (status symbols, a bold
// title, a link), captions drawn rotated, and the RTF that the view's text writes, refreshed by
// "Export RTF" after an edit.
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "Pages.hpp"

#include "BrevantCocoaExtensions/interface/BVNSAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/BVNSTextView.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace {

using bv::AttributedString;
namespace styled = bv::BVNSAttributedString;

// A status symbol, then the line's text.
AttributedString statusLine(const AttributedString& symbol, const char* text) {
    return styled::attributedStringFromAttributesStringsAddSeparatorString(
        {symbol, styled::attributedStringForString(bv::Text(text))}, bv::Text(" "));
}

AttributedString report() {
    QTextCharFormat title;
    title.setFontWeight(QFont::Bold);
    title.setFontPointSize(16);
    std::vector<AttributedString> lines = {
        AttributedString(bv::Text("Quiz 3: Fractions"), title),
        statusLine(styled::greenCheck(), "Question 1: 24 of 30 answered correctly"),
        statusLine(styled::redCross(), "Question 2: 9 of 30 answered correctly"),
        statusLine(styled::redHeart(), "Favourite topic of the class: pizza fractions"),
        statusLine(styled::blueBox(), "Question 4: not asked yet"),
    };
    AttributedString joined =
        styled::attributedStringFromAttributesStringsAddSeparatorString(lines, bv::Text("\n"));
    joined.append(styled::endOfLineAttributedChar());
    return joined;
}

// Captions drawn turned by 0, -90 and 30 degrees.
class RotatedCaptions : public QWidget {
  public:
    explicit RotatedCaptions(QWidget* parent) : QWidget(parent) { setMinimumHeight(190); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        QTextCharFormat format;
        format.setFontPointSize(14);
        format.setForeground(QColor(0x40, 0x80, 0x00));
        const AttributedString caption(bv::Text("Correct answers"), format);
        styled::drawAtPointRotateDegreesInView(caption, {20, 20}, 0, painter);
        styled::drawAtPointRotateDegreesInView(caption, {-180, 200}, -90, painter);  // reads upwards
        format.setForeground(QColor(0x00, 0x00, 0xFF));
        styled::drawAtPointRotateDegreesInView(AttributedString(bv::Text("Turned 30 degrees"), format),
                                               {230, -100}, 30, painter);
    }
};

}  // namespace

namespace gallery {

QWidget* makeStyledTextPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* view = new QTextBrowser(page);
    view->setOpenLinks(false);
    view->setReadOnly(false);
    report().toDocument(*view->document());
    bv::BVNSTextView::appendString(*view, bv::Text("Full results: class report"));
    const auto end = static_cast<std::uint64_t>(view->document()->characterCount() - 1);
    bv::BVNSTextView::setTextInRangeToHyperlinkWithURL(*view, {end - 12, 12},
                                                       QUrl("https://example.com/reports/quiz-3"));

    auto* rtf = new QPlainTextEdit(page);
    rtf->setReadOnly(true);
    rtf->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* exportButton = new QPushButton(QStringLiteral("Export RTF"), page);
    const auto exportRTF = [view, rtf] {
        const AttributedString text = AttributedString::fromDocument(*view->document());
        rtf->setPlainText(bv::toQString(styled::RTFString(text)));
    };
    QObject::connect(exportButton, &QPushButton::clicked, page, exportRTF);
    exportRTF();

    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("Styled text in a text view (editable):"), page));
    left->addWidget(view, 1);
    left->addWidget(new RotatedCaptions(page), 1);
    auto* right = new QVBoxLayout;
    right->addWidget(exportButton);
    right->addWidget(rtf);
    auto* layout = new QHBoxLayout(page);
    layout->addLayout(left, 1);
    layout->addLayout(right, 1);
    return page;
}

}  // namespace gallery
