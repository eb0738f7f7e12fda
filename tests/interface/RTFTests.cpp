// RTF: styles and links survive writing and reading; what word processors write reads as they show it;
// damaged input gives null and a log line; an independent reader (unrtf) reads what the writer writes; the
// fuzz target's inputs keep their properties.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "BrevantCocoaExtensions/interface/BVNSAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/BVNSMutableAttributedString.hpp"
#include "BrevantCocoaExtensions/interface/RTF.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "fuzz/harness/RtfReading.hpp"
#include "support/ToolRun.hpp"

using namespace bv;

namespace {

QTextCharFormat format(void (*set)(QTextCharFormat&)) {
    QTextCharFormat result;
    set(result);
    return result;
}

// Every style the writer knows, one run each, then links of both kinds and text that needs escaping.
AttributedString everyStyle() {
    AttributedString text(Text("plain "));
    text.append(Text("bold "), format([](QTextCharFormat& f) { f.setFontWeight(QFont::Bold); }));
    text.append(Text("italic "), format([](QTextCharFormat& f) { f.setFontItalic(true); }));
    text.append(Text("under "), format([](QTextCharFormat& f) { f.setFontUnderline(true); }));
    text.append(Text("struck "), format([](QTextCharFormat& f) { f.setFontStrikeOut(true); }));
    text.append(Text("big "), format([](QTextCharFormat& f) { f.setFontPointSize(18.5); }));
    text.append(Text("red "), format([](QTextCharFormat& f) { f.setForeground(QColor(200, 10, 0)); }));
    text.append(Text("serif "), format([](QTextCharFormat& f) { f.setFontFamilies({"Noto Serif"}); }));
    text.append(
        BVNSAttributedString::hyperlinkFromStringWithURL(Text("link"), QUrl("http://a.example/?q=\"x\"")));
    text.append(Text(" "));
    text.append(BVNSAttributedString::greenCheck());
    AttributedString underlined(Text("underlined link"));
    BVNSMutableAttributedString::setTextInRangeToHyperlinkWithURL(underlined, {0, 10},
                                                                  QUrl("https://b.example"));
    text.append(underlined);
    text.append(Text(u"\n{braces} \\slash\\ tab\there \u2028line caf\u00e9 \u4e2d \U0001F600 \r cr \u0001"));
    return text;
}

// Captures the log lines written while it lives.
class LogCapture {
  public:
    LogCapture() : previous_(setLogSink([this](const std::string& line) { lines.push_back(line); })) {}
    ~LogCapture() { setLogSink(previous_); }
    std::vector<std::string> lines;

  private:
    LogSink previous_;
};

}  // namespace

TEST(RTF, StylesAndLinksSurviveARoundTrip) {
    const AttributedString text = everyStyle();
    const Text rtf = BVNSAttributedString::RTFString(text);
    for (char16_t unit : rtf.units())
        ASSERT_LT(unit, 0x80);
    const auto back = BVNSAttributedString::attributedStringFromRTFString(rtf);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->string(), text.string());
    ASSERT_EQ(back->runs().size(), text.runs().size());
    for (std::size_t index = 0; index < text.runs().size(); ++index)
        EXPECT_TRUE(sameFormat(back->runs()[index].format, text.runs()[index].format)) << "run " << index;
    EXPECT_EQ(BVNSAttributedString::attributedStringFromRTFString(Text("{\\rtf1}"))->length(), 0u);
}

// Samples in the manner of WordPad, TextEdit and LibreOffice, and the code-page cases.
TEST(RTF, ReadsWhatWordProcessorsWrite) {
    const struct {
        const char* rtf;
        const char16_t* text;
    } cases[] = {
        {R"({\rtf1\ansi\ansicpg1252\deff0\nouicompat{\fonttbl{\f0\fnil\fcharset0 Calibri;}}
{\*\generator Riched20 10.0.19041}\viewkind4\uc1 \pard\sa200\f0\fs22\lang9 Hello \b bold\b0  caf\'e9\par
})",
         u"Hello bold caf\u00e9\n"},
        {R"({\rtf1\ansi\ansicpg1252\cocoartf2639{\fonttbl\f0\fswiss\fcharset0 Helvetica;}
{\colortbl;\red255\green255\blue255;}{\*\expandedcolortbl;;}\pard\tx566\f0\fs24 \cf0 Line\
next \u8212? dash\uc0\u8220 q\u8221 })",
         u"Line\nnext \u2014 dash\u201cq\u201d"},
        {R"({\rtf1\ansi\deff0{\fonttbl{\f0\froman\fprq2\fcharset0 Liberation Serif;}{\f1\fnil\fcharset204 Arial;}}
{\stylesheet{\s0 Normal;}}{\info{\author Someone}}{\*\generator LibreOffice}{\f1 \'cf\'f0\'e8\'e2\'e5\'f2}
{\pict\pngblip 89504e47}\~\emdash\tab\line end})",
         u"\u041f\u0440\u0438\u0432\u0435\u0442\u00a0\u2014\t\u2028end"},
        {R"({\rtf1\ansi\ansicpg932\uc2 \'82\'a0\u12356\'82\'a2{\*\unknown skipped {nested}}x\bin3 {}}y})",
         u"\u3042\u3044xy"},
        {R"({\rtf1 {\field{\*\fldinst{HYPERLINK "http://c.example/" }}{\fldrslt{\ul\cf1 site}}} after} trailing)",
         u"site after"},
    };
    for (const auto& c : cases) {
        const auto text = RTF::read(c.rtf);
        ASSERT_TRUE(text) << c.rtf;
        EXPECT_EQ(text->string(), Text(c.text)) << c.rtf;
    }
    const auto wordPad = RTF::read(cases[0].rtf);
    EXPECT_EQ(wordPad->formatAt(6).fontWeight(), QFont::Bold);
    EXPECT_NE(wordPad->formatAt(11).fontWeight(), QFont::Bold);
    EXPECT_EQ(wordPad->formatAt(0).fontPointSize(), 11.0);
    const auto field = RTF::read(cases[4].rtf);
    EXPECT_EQ(field->formatAt(0).anchorHref(), QString("http://c.example/"));
    EXPECT_TRUE(field->formatAt(0).fontUnderline());
    EXPECT_FALSE(field->formatAt(5).isAnchor());
}

TEST(RTF, DamagedInputGivesNullAndOneLogLine) {
    const std::string deep =
        "{\\rtf1 " + std::string(RTF::MaximumNesting, '{') + std::string(RTF::MaximumNesting + 1, '}');
    const std::string damaged[] = {
        "",
        "plain text",
        "{\\rtf1 never closed",
        "{\\rtf1 \\b",
        deep,
        "{\\rtf1 \\" + std::string(33, 'x') + " }",
        "{\\rtf1 \\fs12345678901 }",
        "{\\rtf1 \\'4",
    };
    for (const std::string& rtf : damaged) {
        LogCapture log;
        EXPECT_FALSE(RTF::read(rtf)) << rtf;
        EXPECT_EQ(log.lines.size(), 1u) << rtf;
    }
    // One level less than the bound still reads.
    EXPECT_TRUE(RTF::read("{\\rtf1 " + std::string(RTF::MaximumNesting - 1, '{') +
                          std::string(RTF::MaximumNesting, '}')));
}

TEST(RTF, UnrtfReadsTheWritersOutput) {
    if (!std::filesystem::exists("/usr/bin/unrtf")) GTEST_SKIP() << "unrtf is not installed";
    bvtest::ToolFolder folder("rtf-test");
    AttributedString text(Text("Plain start, "));
    text.append(Text("strong words"), format([](QTextCharFormat& f) { f.setFontWeight(QFont::Bold); }));
    text.append(Text(u" and caf\u00e9 {braces}\nsecond line"));
    folder.write("styled.rtf", RTF::write(text));

    const bvtest::ToolRun plain = folder.run("unrtf --text styled.rtf");
    ASSERT_EQ(plain.status, 0) << plain.err;
    EXPECT_NE(plain.out.find("Plain start, strong words and caf"), std::string::npos) << plain.out;
    EXPECT_NE(plain.out.find("{braces}"), std::string::npos) << plain.out;
    EXPECT_NE(plain.out.find("second line"), std::string::npos) << plain.out;

    const bvtest::ToolRun html = folder.run("unrtf --html styled.rtf");
    ASSERT_EQ(html.status, 0) << html.err;
    EXPECT_NE(html.out.find("<b>strong words</b>"), std::string::npos) << html.out;
    EXPECT_NE(html.out.find("&eacute;"), std::string::npos) << html.out;
}

TEST(RtfFuzzReplay, StartingInputsAndFindingsKeepTheirProperties) {
    namespace fs = std::filesystem;
    std::size_t replayed = 0;
    for (const char* folder : {"corpus/rtf_reader", "regressions/rtf_reader"}) {
        const fs::path path = fs::path(BV_SOURCE_DIR) / "tests/fuzz" / folder;
        if (!fs::is_directory(path)) continue;
        for (const auto& entry : fs::directory_iterator(path)) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            bv::fuzz::rtfReading(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    EXPECT_GE(replayed, 6u);
}
