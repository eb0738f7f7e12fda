// Styled text to RTF and back (bv::RTF) beside QTextDocument writing and reading the same content as HTML
// (toHtml, setHtml), in the same run, at 1 MiB and 4 MiB of text to show both sides grow linearly.
//
// The text is paragraphs of words with a bold, italic, coloured or linked word every few words, as a
// styled quiz report would be.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QTextDocument>
#include <cstdlib>
#include <map>

#include "BrevantCocoaExtensions/interface/AttributedString.hpp"
#include "BrevantCocoaExtensions/interface/RTF.hpp"

namespace {

struct Content {
    bv::AttributedString text;
    std::string rtf;
    QString html;
};

bv::AttributedString styledText(std::size_t bytes) {
    QTextCharFormat bold, italic, coloured;
    bold.setFontWeight(QFont::Bold);
    italic.setFontItalic(true);
    coloured.setForeground(QColor(200, 30, 0));
    const QTextCharFormat link = bv::hyperlinkFormat("https://example.com/answers", true);
    const char* words[] = {"question", "answer", "caf\xc3\xa9", "students",
                           "chose",    "the",    "correct",     "option"};
    bv::AttributedString text;
    for (std::size_t word = 0; text.length() < bytes; ++word) {
        const bv::Text piece(words[word % 8]);
        if (word % 7 == 0) {
            text.append(piece, bold);
        } else if (word % 11 == 0) {
            text.append(piece, italic);
        } else if (word % 13 == 0) {
            text.append(piece, coloured);
        } else if (word % 50 == 0) {
            text.append(piece, link);
        } else {
            text.append(piece);
        }
        text.append(bv::Text(word % 60 == 59 ? "\n" : " "));
    }
    return text;
}

const Content& content(std::size_t bytes) {
    static std::map<std::size_t, Content> made;
    auto found = made.find(bytes);
    if (found == made.end()) {
        Content fresh;
        fresh.text = styledText(bytes);
        fresh.rtf = bv::RTF::write(fresh.text);
        QTextDocument document;
        fresh.text.toDocument(document);
        fresh.html = document.toHtml();
        found = made.emplace(bytes, std::move(fresh)).first;
    }
    return found->second;
}

void LibraryWriteRTF(benchmark::State& state) {
    const Content& input = content(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const std::string rtf = bv::RTF::write(input.text);
        benchmark::DoNotOptimize(rtf.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void QtWriteHtml(benchmark::State& state) {
    const Content& input = content(static_cast<std::size_t>(state.range(0)));
    QTextDocument document;
    input.text.toDocument(document);
    for (auto _ : state) {
        const QString html = document.toHtml();
        benchmark::DoNotOptimize(html.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void LibraryReadRTF(benchmark::State& state) {
    const Content& input = content(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const auto text = bv::RTF::read(input.rtf);
        benchmark::DoNotOptimize(text->length());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// Reading into a document, as a text view does: the RTF read, then put into a QTextDocument.
void LibraryReadRTFIntoDocument(benchmark::State& state) {
    const Content& input = content(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        QTextDocument document;
        bv::RTF::read(input.rtf)->toDocument(document);
        benchmark::DoNotOptimize(document.characterCount());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void QtReadHtml(benchmark::State& state) {
    const Content& input = content(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        QTextDocument document;
        document.setHtml(input.html);
        benchmark::DoNotOptimize(document.characterCount());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(LibraryWriteRTF)->Arg(1 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(QtWriteHtml)->Arg(1 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(LibraryReadRTF)->Arg(1 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(LibraryReadRTFIntoDocument)->Arg(1 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(QtReadHtml)->Arg(1 << 20)->Arg(4 << 20)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
