// The RTF writer: a header with the font and colour tables the runs use, then one group per styled run,
// links wrapped in HYPERLINK fields.
#include <QFont>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/interface/RTF.hpp"

namespace bv::RTF {

namespace {

// The fonts and colours in order of first use; their indexes are the RTF table indexes.
struct Tables {
    QStringList fonts;
    std::vector<QRgb> colours;  // colour 0 is "auto", so a colour's index is its place + 1

    explicit Tables(const AttributedString& text) {
        for (const AttributedString::Run& run : text.runs()) {
            if (!run.format.fontFamilies().toStringList().isEmpty()) {
                const QString family = run.format.fontFamilies().toStringList().front();
                if (!fonts.contains(family)) fonts.append(family);
            }
            if (run.format.foreground().style() != Qt::NoBrush) {
                const QRgb rgb = run.format.foreground().color().rgb();
                if (std::find(colours.begin(), colours.end(), rgb) == colours.end()) colours.push_back(rgb);
            }
        }
    }
    [[nodiscard]] std::size_t colourIndex(QRgb rgb) const {
        return static_cast<std::size_t>(std::find(colours.begin(), colours.end(), rgb) - colours.begin()) + 1;
    }
};

// Text as RTF: the special characters escaped, everything outside printable ASCII as \uN?.
void appendEscaped(std::string& out, std::u16string_view units) {
    for (char16_t unit : units) {
        switch (unit) {
            case u'\\':
                out += "\\\\";
                break;
            case u'{':
                out += "\\{";
                break;
            case u'}':
                out += "\\}";
                break;
            case u'\n':
                out += "\\par\n";
                break;
            case u'\t':
                out += "\\tab ";
                break;
            case u'\u2028':
                out += "\\line ";
                break;
            default:
                if (unit >= 0x20 && unit < 0x7F) {
                    out += static_cast<char>(unit);
                } else {
                    out += "\\u";
                    out += std::to_string(static_cast<std::int16_t>(unit));  // RTF numbers are signed 16-bit
                    out += '?';
                }
        }
    }
}

void appendEscaped(std::string& out, const QString& string) {
    appendEscaped(out, std::u16string_view(reinterpret_cast<const char16_t*>(string.utf16()),
                                           static_cast<std::size_t>(string.size())));
}

void writeHeader(std::string& out, const Tables& tables) {
    out += "{\\rtf1\\ansi\\ansicpg1252\\uc1";
    if (!tables.fonts.isEmpty()) {
        out += "\\deff0{\\fonttbl";
        for (qsizetype index = 0; index < tables.fonts.size(); ++index) {
            out += "{\\f" + std::to_string(index) + "\\fnil\\fcharset0 ";
            QString name = tables.fonts[index];
            appendEscaped(out, name.remove(u';'));  // a ";" would end the entry
            out += ";}";
        }
        out += '}';
    }
    if (!tables.colours.empty()) {
        out += "{\\colortbl;";
        for (QRgb rgb : tables.colours) {
            out += "\\red" + std::to_string(qRed(rgb)) + "\\green" + std::to_string(qGreen(rgb)) + "\\blue" +
                   std::to_string(qBlue(rgb)) + ";";
        }
        out += '}';
    }
    out += '\n';
}

// The control words of a run's format (empty for a plain run).
std::string controlWords(const QTextCharFormat& format, const Tables& tables) {
    std::string words;
    if (format.hasProperty(QTextFormat::FontWeight) && format.fontWeight() >= QFont::DemiBold) words += "\\b";
    if (format.fontItalic()) words += "\\i";
    if (format.fontUnderline()) words += "\\ul";
    if (format.fontStrikeOut()) words += "\\strike";
    if (format.hasProperty(QTextFormat::FontPointSize) && format.fontPointSize() > 0)
        words += "\\fs" + std::to_string(std::lround(format.fontPointSize() * 2));  // half points
    if (format.foreground().style() != Qt::NoBrush)
        words += "\\cf" + std::to_string(tables.colourIndex(format.foreground().color().rgb()));
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty()) words += "\\f" + std::to_string(tables.fonts.indexOf(families.front()));
    return words;
}

void writeRun(std::string& out, const AttributedString& text, std::size_t index, const Tables& tables) {
    const std::size_t start = text.runs()[index].start;
    const std::u16string_view units = text.string().view().substr(start, text.runEnd(index) - start);
    const std::string words = controlWords(text.runs()[index].format, tables);
    if (words.empty()) {
        appendEscaped(out, units);
        return;
    }
    out += '{' + words + ' ';
    appendEscaped(out, units);
    out += '}';
}

QString linkOf(const QTextCharFormat& format) {
    return format.isAnchor() ? format.anchorHref() : QString();
}

// The runs from `index` on that share one link, as a HYPERLINK field; answers the index after them.
std::size_t writeLink(std::string& out, const AttributedString& text, std::size_t index,
                      const Tables& tables) {
    const QString address = linkOf(text.runs()[index].format);
    out += "{\\field{\\*\\fldinst{HYPERLINK \"";
    appendEscaped(out, QString(address).replace(u'"', QStringLiteral("%22")));
    out += "\"}}{\\fldrslt ";
    for (; index < text.runs().size() && linkOf(text.runs()[index].format) == address; ++index)
        writeRun(out, text, index, tables);
    out += "}}";
    return index;
}

}  // namespace

std::string write(const AttributedString& text) {
    const Tables tables(text);
    std::string out;
    out.reserve(text.length() + text.length() / 8 + 256);
    writeHeader(out, tables);
    for (std::size_t index = 0; index < text.runs().size();) {
        if (linkOf(text.runs()[index].format).isEmpty()) {
            writeRun(out, text, index++, tables);
        } else {
            index = writeLink(out, text, index, tables);
        }
    }
    out += '}';
    return out;
}

}  // namespace bv::RTF
