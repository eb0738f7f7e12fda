// The RTF reader: a byte scanner over groups and control words. What a control word does is looked up in
// one table; text bytes wait in a buffer and are decoded in the current code page through ICU when the
// formatting changes, so a long run of text costs one conversion.
#include <unicode/ucnv.h>

#include <QFont>
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "BrevantCocoaExtensions/interface/RTF.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv::RTF {

namespace {

// Where the text of a group goes.
enum class Destination : std::uint8_t { Body, Skip, FontTable, ColorTable, FieldInstruction };

enum class Action : std::uint8_t {
    Character,               // inserts the character `value`
    Destination,             // the group is that destination (`value`)
    Field,                   // a field starts: its instruction comes next
    FieldResult,             // the field's visible text, linked when the instruction is a HYPERLINK
    Switch,                  // turns the character flag `flag` on, or off with a parameter of 0
    UnderlineNone,           // \ulnone: underline off
    FontSize,                // half points
    Colour,                  // colour table index
    Font,                    // font table index (in the font table: the entry being defined)
    Plain,                   // back to unformatted characters
    UnicodeCharacter,        // \uN, followed by replacement characters to skip
    UnicodeSkip,             // \ucN: how many replacement characters follow each \uN
    Binary,                  // \binN: N bytes of data, not text
    DocumentCodePage,        // \ansi, \mac, \pc, \pca: the code page `value`
    DocumentCodePageNumber,  // \ansicpgN
    DefaultFont,
    FontCharset,
    Red,
    Green,
    Blue,
};

struct CharacterState {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    int halfPoints = 0;  // 0: no size given
    int colour = -1;     // colour table index; -1: none
    int font = -1;       // font table index; -1: none chosen
};

struct ControlWord {
    std::string_view name;
    Action action;
    int value = 0;
    bool CharacterState::*flag = nullptr;
};

constexpr int skip = static_cast<int>(Destination::Skip);

constexpr ControlWord controlWords[] = {
    {"ansi", Action::DocumentCodePage, 1252},
    {"mac", Action::DocumentCodePage, 10000},
    {"pc", Action::DocumentCodePage, 437},
    {"pca", Action::DocumentCodePage, 850},
    {"ansicpg", Action::DocumentCodePageNumber},
    {"deff", Action::DefaultFont},
    {"fcharset", Action::FontCharset},
    {"red", Action::Red},
    {"green", Action::Green},
    {"blue", Action::Blue},
    {"b", Action::Switch, 0, &CharacterState::bold},
    {"i", Action::Switch, 0, &CharacterState::italic},
    {"ul", Action::Switch, 0, &CharacterState::underline},
    {"uld", Action::Switch, 0, &CharacterState::underline},
    {"uldb", Action::Switch, 0, &CharacterState::underline},
    {"ulw", Action::Switch, 0, &CharacterState::underline},
    {"ulnone", Action::UnderlineNone},
    {"strike", Action::Switch, 0, &CharacterState::strike},
    {"fs", Action::FontSize},
    {"cf", Action::Colour},
    {"f", Action::Font},
    {"plain", Action::Plain},
    {"u", Action::UnicodeCharacter},
    {"uc", Action::UnicodeSkip},
    {"bin", Action::Binary},
    {"par", Action::Character, u'\n'},
    {"sect", Action::Character, u'\n'},
    {"row", Action::Character, u'\n'},
    {"line", Action::Character, 0x2028},
    {"tab", Action::Character, u'\t'},
    {"cell", Action::Character, u'\t'},
    {"emdash", Action::Character, 0x2014},
    {"endash", Action::Character, 0x2013},
    {"emspace", Action::Character, 0x2003},
    {"enspace", Action::Character, 0x2002},
    {"bullet", Action::Character, 0x2022},
    {"lquote", Action::Character, 0x2018},
    {"rquote", Action::Character, 0x2019},
    {"ldblquote", Action::Character, 0x201C},
    {"rdblquote", Action::Character, 0x201D},
    {"zwj", Action::Character, 0x200D},
    {"zwnj", Action::Character, 0x200C},
    {"ltrmark", Action::Character, 0x200E},
    {"rtlmark", Action::Character, 0x200F},
    {"fonttbl", Action::Destination, static_cast<int>(Destination::FontTable)},
    {"colortbl", Action::Destination, static_cast<int>(Destination::ColorTable)},
    {"fldinst", Action::Destination, static_cast<int>(Destination::FieldInstruction)},
    {"field", Action::Field},
    {"fldrslt", Action::FieldResult},
    // Destinations whose text is not part of the document.
    {"stylesheet", Action::Destination, skip},
    {"info", Action::Destination, skip},
    {"pict", Action::Destination, skip},
    {"object", Action::Destination, skip},
    {"header", Action::Destination, skip},
    {"headerl", Action::Destination, skip},
    {"headerr", Action::Destination, skip},
    {"headerf", Action::Destination, skip},
    {"footer", Action::Destination, skip},
    {"footerl", Action::Destination, skip},
    {"footerr", Action::Destination, skip},
    {"footerf", Action::Destination, skip},
    {"footnote", Action::Destination, skip},
    {"annotation", Action::Destination, skip},
    {"listtable", Action::Destination, skip},
    {"listoverridetable", Action::Destination, skip},
    {"revtbl", Action::Destination, skip},
    {"rsidtbl", Action::Destination, skip},
    {"filetbl", Action::Destination, skip},
    {"xmlnstbl", Action::Destination, skip},
    {"themedata", Action::Destination, skip},
    {"colorschememapping", Action::Destination, skip},
    {"latentstyles", Action::Destination, skip},
    {"datastore", Action::Destination, skip},
    {"generator", Action::Destination, skip},
    {"userprops", Action::Destination, skip},
    {"nonshppict", Action::Destination, skip},
    {"xe", Action::Destination, skip},
    {"tc", Action::Destination, skip},
};

const ControlWord* lookUp(std::string_view name) {
    static const std::unordered_map<std::string_view, const ControlWord*> table = [] {
        std::unordered_map<std::string_view, const ControlWord*> words;
        for (const ControlWord& word : controlWords)
            words.emplace(word.name, &word);
        return words;
    }();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : found->second;
}

// The code page of a font's \fcharset; 0 for the document's own code page.
int codePageForCharset(int charset) {
    static constexpr std::pair<int, int> charsets[] = {
        {77, 10000}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},  {136, 950},
        {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
        {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
    };
    for (const auto& [set, page] : charsets) {
        if (set == charset) return page;
    }
    return 0;
}

// ICU converters by Windows code page number, opened once per document.
class Converters {
  public:
    Converters() = default;
    Converters(const Converters&) = delete;
    Converters& operator=(const Converters&) = delete;
    ~Converters() {
        for (auto& entry : open_) {
            if (entry.second) ucnv_close(entry.second);
        }
    }

    // The converter of the code page; windows-1252's for a code page ICU does not know.
    UConverter* forCodePage(int page) {
        const auto found = open_.find(page);
        if (found != open_.end()) return found->second ? found->second : fallback(page);
        UConverter* converter = nullptr;
        const std::string number = std::to_string(page);
        for (const std::string& name : {"windows-" + number, "ibm-" + number, "cp" + number}) {
            UErrorCode error = U_ZERO_ERROR;
            converter = ucnv_open(name.c_str(), &error);
            if (U_SUCCESS(error)) break;
            converter = nullptr;
        }
        open_[page] = converter;
        return converter ? converter : fallback(page);
    }

  private:
    UConverter* fallback(int page) { return page == 1252 ? nullptr : forCodePage(1252); }

    std::map<int, UConverter*> open_;
};

struct Group {
    Destination destination = Destination::Body;
    CharacterState character;
    int unicodeSkip = 1;
    std::optional<QString> link;  // inside a HYPERLINK field's result
};

struct Font {
    QString name;
    int codePage = 0;  // 0: the document's
};

// Thrown inside the reader when the input is damaged; read() turns it into nullopt and a log line.
struct Damage {
    std::string problem;
    std::size_t position;
};

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}
bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}
int hexValue(char byte) {
    if (isDigit(byte)) return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return -1;
}
int clampToInt(std::int64_t value, int low, int high) {
    return static_cast<int>(std::clamp<std::int64_t>(value, low, high));
}

// The address of a HYPERLINK field instruction: its first quoted text, else its first word.
std::optional<QString> hyperlinkAddress(const std::u16string& instruction) {
    QString text =
        QString::fromUtf16(instruction.data(), static_cast<qsizetype>(instruction.size())).trimmed();
    if (!text.startsWith(QLatin1String("HYPERLINK"), Qt::CaseInsensitive)) return std::nullopt;
    text = text.mid(9).trimmed();
    QString address;
    if (const qsizetype open = text.indexOf(u'"'); open >= 0) {
        const qsizetype close = text.indexOf(u'"', open + 1);
        address = text.mid(open + 1, close < 0 ? -1 : close - open - 1);
    } else {
        address = text.section(u' ', 0, 0);
    }
    if (address.isEmpty()) return std::nullopt;
    return address;
}

class Reader {
  public:
    explicit Reader(std::string_view input) : input_(input) {}

    AttributedString run() {
        while (position_ < input_.size() && std::isspace(static_cast<unsigned char>(input_[position_])))
            ++position_;
        if (input_.substr(position_, 5) != "{\\rtf")
            throw Damage{"the text does not start with {\\rtf", position_};
        // The text is never longer than the RTF (markup makes it shorter), and a run takes a dozen bytes or
        // more.
        text_.reserve(input_.size() / 2, input_.size() / 32);
        while (position_ < input_.size()) {
            const char byte = input_[position_++];
            switch (byte) {
                case '{':
                    openGroup();
                    break;
                case '}':
                    closeGroup();
                    if (groups_.empty()) return std::move(text_);
                    break;
                case '\\':
                    readControl();
                    break;
                case '\r':
                case '\n':
                    break;  // line ends in RTF are not text
                default:
                    textByte(byte);
            }
        }
        throw Damage{"the text ends inside a group", position_};
    }

  private:
    Group& top() { return groups_.back(); }

    void openGroup() {
        flush();
        replacementsToSkip_ = 0;
        ignorable_ = false;
        if (groups_.size() >= MaximumNesting)
            throw Damage{"groups nested deeper than " + std::to_string(MaximumNesting), position_ - 1};
        Group group = groups_.empty() ? Group{} : groups_.back();
        groups_.push_back(std::move(group));
    }

    void closeGroup() {
        flush();
        replacementsToSkip_ = 0;
        ignorable_ = false;
        if (top().destination == Destination::FontTable && !fontName_.empty()) finishFont();
        groups_.pop_back();
    }

    void readControl() {
        if (position_ >= input_.size()) return;  // the unclosed group is reported
        const char first = input_[position_];
        if (!isLetter(first)) {
            ++position_;
            controlSymbol(first);
            return;
        }
        const std::size_t start = position_;
        while (position_ < input_.size() && isLetter(input_[position_]))
            ++position_;
        if (position_ - start > 32) throw Damage{"a control word longer than 32 letters", start};
        const std::string_view name = input_.substr(start, position_ - start);
        const std::optional<std::int64_t> parameter = readParameter();
        if (position_ < input_.size() && input_[position_] == ' ') ++position_;  // the delimiter
        controlWord(name, parameter);
    }

    std::optional<std::int64_t> readParameter() {
        const bool negative =
            position_ + 1 < input_.size() && input_[position_] == '-' && isDigit(input_[position_ + 1]);
        if (negative) ++position_;
        if (position_ >= input_.size() || !isDigit(input_[position_])) return std::nullopt;
        const std::size_t start = position_;
        std::int64_t value = 0;
        for (; position_ < input_.size() && isDigit(input_[position_]); ++position_) {
            if (position_ - start == 10) throw Damage{"a parameter longer than 10 digits", start};
            value = value * 10 + (input_[position_] - '0');
        }
        return negative ? -value : value;
    }

    void controlSymbol(char symbol) {
        switch (symbol) {
            case '\\':
            case '{':
            case '}':
                textByte(symbol);
                break;
            case '\'':
                hexByte();
                break;
            case '*':
                ignorable_ = true;
                break;
            case '~':
                symbolCharacter(0x00A0);
                break;  // no-break space
            case '-':
                symbolCharacter(0x00AD);
                break;  // optional hyphen
            case '_':
                symbolCharacter(0x2011);
                break;  // no-break hyphen
            case '\r':
            case '\n':
                symbolCharacter(u'\n');
                break;  // a backslash before a line end is \par
            default:
                symbolCharacter(0);
                break;  // unknown symbols insert nothing
        }
    }

    void hexByte() {
        if (position_ + 2 > input_.size()) {
            position_ = input_.size();
            return;
        }
        const int high = hexValue(input_[position_]);
        const int low = hexValue(input_[position_ + 1]);
        if (high < 0 || low < 0) return;  // not a byte: the characters are read as they stand
        position_ += 2;
        textByte(static_cast<char>(high * 16 + low));
    }

    void controlWord(std::string_view name, std::optional<std::int64_t> parameter) {
        const bool ignorable = std::exchange(ignorable_, false);
        const ControlWord* word = lookUp(name);
        if (word && word->action == Action::Binary) {  // the data is never text, wherever it stands
            const std::size_t length =
                static_cast<std::size_t>(std::max<std::int64_t>(parameter.value_or(0), 0));
            position_ += std::min(length, input_.size() - position_);
            return;
        }
        if (skippingReplacement()) return;
        const bool destination =
            word && (word->action == Action::Destination || word->action == Action::Field ||
                     word->action == Action::FieldResult);
        if (ignorable && !destination) {
            flush();
            top().destination = Destination::Skip;  // "\*" marks a destination a reader may not know
            return;
        }
        if (!word) return;  // unknown words are ignored
        if (top().destination == Destination::Skip) return;
        apply(*word, parameter);
    }

    void apply(const ControlWord& word, std::optional<std::int64_t> parameter) {
        if (word.action == Action::Character) return addUnit(static_cast<char16_t>(word.value));
        if (word.action == Action::UnicodeCharacter) return unicodeCharacter(parameter);
        flush();
        Group& group = top();
        CharacterState& character = group.character;
        const bool on = parameter.value_or(1) != 0;
        const int number = clampToInt(parameter.value_or(-1), -1, 0xFFFF);
        switch (word.action) {
            case Action::Destination:
                group.destination = static_cast<Destination>(word.value);
                if (group.destination == Destination::FieldInstruction) instruction_.clear();
                break;
            case Action::Field:
                instruction_.clear();
                break;
            case Action::FieldResult:
                if (auto address = hyperlinkAddress(instruction_)) group.link = std::move(address);
                break;
            case Action::Switch:
                character.*word.flag = on;
                break;
            case Action::UnderlineNone:
                character.underline = false;
                break;
            case Action::FontSize:
                character.halfPoints = std::clamp(number, 0, 3276);
                break;
            case Action::Colour:
                character.colour = number;
                break;
            case Action::Font:
                font(number);
                break;
            case Action::Plain:
                character = CharacterState{};
                break;
            case Action::UnicodeSkip:
                group.unicodeSkip = std::max(number, 0);
                break;
            case Action::DocumentCodePage:
                documentCodePage_ = word.value;
                break;
            case Action::DocumentCodePageNumber:
                if (number > 0) documentCodePage_ = number;
                break;
            case Action::DefaultFont:
                defaultFont_ = number;
                break;
            case Action::FontCharset:
                tableCharset_ = number;
                break;
            case Action::Red:
                colourComponent(red_, number);
                break;
            case Action::Green:
                colourComponent(green_, number);
                break;
            case Action::Blue:
                colourComponent(blue_, number);
                break;
            default:
                break;
        }
    }

    void colourComponent(int& component, int number) {
        component = std::clamp(number, 0, 255);
        colourGiven_ = true;
    }

    // \fN defines entry N inside the font table and chooses font N elsewhere.
    void font(int number) {
        if (top().destination != Destination::FontTable) {
            top().character.font = number;
            return;
        }
        if (!fontName_.empty()) finishFont();
        tableFont_ = number;
        tableCharset_ = -1;
    }

    void unicodeCharacter(std::optional<std::int64_t> parameter) {
        if (!parameter) return;
        const std::int64_t unit = *parameter < 0 ? *parameter + 65536 : *parameter;
        if (unit >= 0 && unit <= 0xFFFF) addUnit(static_cast<char16_t>(unit));
        replacementsToSkip_ = static_cast<std::size_t>(top().unicodeSkip);
    }

    // After \uN, the next characters (bytes, \'hh, symbols, words) are the replacement for old readers.
    bool skippingReplacement() {
        if (replacementsToSkip_ == 0) return false;
        --replacementsToSkip_;
        return true;
    }

    void symbolCharacter(char16_t unit) {
        ignorable_ = false;
        if (skippingReplacement() || unit == 0) return;
        addUnit(unit);
    }

    void textByte(char byte) {
        ignorable_ = false;
        if (skippingReplacement()) return;
        switch (top().destination) {
            case Destination::Skip:
                break;
            case Destination::ColorTable:
                if (byte == ';') finishColour();
                break;
            case Destination::FontTable:
                if (byte == ';') {
                    flush();
                    finishFont();
                } else {
                    pendingBytes_ += byte;
                }
                break;
            default:
                pendingBytes_ += byte;
        }
    }

    void addUnit(char16_t unit) {
        const Destination destination = top().destination;
        if (destination == Destination::Skip || destination == Destination::ColorTable) return;
        decodeBytes();
        pendingText_ += unit;
    }

    void finishColour() {
        colours_.push_back(colourGiven_ ? std::optional<QColor>(QColor(red_, green_, blue_)) : std::nullopt);
        red_ = green_ = blue_ = 0;
        colourGiven_ = false;
    }

    void finishFont() {
        if (tableFont_ >= 0) {
            // A ";" (written as \u59) cannot be part of a name: it would end the entry when written again.
            QString name = QString::fromUtf16(fontName_.data(), static_cast<qsizetype>(fontName_.size()));
            fonts_[tableFont_] = {name.remove(u';').trimmed(), codePageForCharset(tableCharset_)};
        }
        fontName_.clear();
        tableFont_ = -1;
    }

    int codePage() {
        if (top().destination == Destination::FontTable) {
            const int page = codePageForCharset(tableCharset_);  // a font's name is in its own charset
            return page != 0 ? page : documentCodePage_;
        }
        const int chosen = top().character.font >= 0 ? top().character.font : defaultFont_;
        const auto found = fonts_.find(chosen);
        return found != fonts_.end() && found->second.codePage != 0 ? found->second.codePage
                                                                    : documentCodePage_;
    }

    // Appends the bytes decoded in the code page; ASCII needs no converter.
    void decode(const std::string& bytes, int page, std::u16string& out) {
        if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; })) {
            out.append(bytes.begin(), bytes.end());
            return;
        }
        UConverter* converter = converters_.forCodePage(page);
        if (!converter) {  // no ICU data at all: bytes as Latin-1
            for (char byte : bytes)
                out += static_cast<char16_t>(static_cast<unsigned char>(byte));
            return;
        }
        const std::size_t start = out.size();
        std::int32_t capacity = static_cast<std::int32_t>(bytes.size() * 2);
        for (int attempt = 0; attempt < 2; ++attempt) {
            out.resize(start + static_cast<std::size_t>(capacity));
            UErrorCode error = U_ZERO_ERROR;
            const std::int32_t length =
                ucnv_toUChars(converter, reinterpret_cast<UChar*>(out.data() + start), capacity, bytes.data(),
                              static_cast<std::int32_t>(bytes.size()), &error);
            if (error == U_BUFFER_OVERFLOW_ERROR) {
                capacity = length;
                continue;
            }
            out.resize(start + (U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0));
            return;
        }
        out.resize(start);
    }

    void decodeBytes() {
        if (pendingBytes_.empty()) return;
        decode(pendingBytes_, codePage(), pendingText_);
        pendingBytes_.clear();
    }

    // Hands the waiting text to the group's destination, in the group's formatting.
    void flush() {
        decodeBytes();
        if (pendingText_.empty()) return;
        if (top().destination == Destination::Body) {
            text_.append(Text(pendingText_), currentFormat());
        } else if (top().destination == Destination::FieldInstruction) {
            instruction_ += pendingText_;
        } else if (top().destination == Destination::FontTable) {
            fontName_ += pendingText_;
        }
        pendingText_.clear();
    }

    // The format of the group's characters, made once per distinct formatting: runs that share it share
    // one format object, which compares equal at once.
    const QTextCharFormat& currentFormat() {
        const Group& group = groups_.back();
        const CharacterState& c = group.character;
        FormatKey key{c.bold,       c.italic, c.underline, c.strike,
                      c.halfPoints, c.colour, c.font,      group.link.value_or(QString())};
        const auto found = formats_.find(key);
        if (found != formats_.end()) return found->second;
        return formats_.emplace(std::move(key), makeFormat()).first->second;
    }

    QTextCharFormat makeFormat() const {
        const Group& group = groups_.back();
        const CharacterState& character = group.character;
        QTextCharFormat format = group.link ? hyperlinkFormat(*group.link, false) : QTextCharFormat();
        if (character.bold) format.setFontWeight(QFont::Bold);
        if (character.italic) format.setFontItalic(true);
        if (character.underline) format.setFontUnderline(true);
        if (character.strike) format.setFontStrikeOut(true);
        if (character.halfPoints > 0) format.setFontPointSize(character.halfPoints / 2.0);
        if (character.colour >= 0 && static_cast<std::size_t>(character.colour) < colours_.size() &&
            colours_[static_cast<std::size_t>(character.colour)])
            format.setForeground(*colours_[static_cast<std::size_t>(character.colour)]);
        if (const auto found = fonts_.find(character.font); found != fonts_.end())
            format.setFontFamilies(QStringList{found->second.name});
        return format;
    }

    std::string_view input_;
    std::size_t position_ = 0;
    std::vector<Group> groups_;
    AttributedString text_;
    std::string pendingBytes_;    // text bytes not yet decoded
    std::u16string pendingText_;  // decoded text not yet handed to the destination
    std::size_t replacementsToSkip_ = 0;
    bool ignorable_ = false;  // after "\*"
    int documentCodePage_ = 1252;
    int defaultFont_ = -1;
    std::map<int, Font> fonts_;
    int tableFont_ = -1;  // the font table entry being read
    int tableCharset_ = -1;
    std::u16string fontName_;
    std::vector<std::optional<QColor>> colours_;
    int red_ = 0, green_ = 0, blue_ = 0;
    bool colourGiven_ = false;
    std::u16string instruction_;  // the current field's instruction
    using FormatKey = std::tuple<bool, bool, bool, bool, int, int, int, QString>;
    std::map<FormatKey, QTextCharFormat> formats_;
    Converters converters_;
};

}  // namespace

std::optional<AttributedString> read(std::string_view rtf) {
    try {
        return Reader(rtf).run();
    } catch (const Damage& damage) {
        log("RTF reader: " + damage.problem + " (byte " + std::to_string(damage.position) + ")");
        return std::nullopt;
    }
}

}  // namespace bv::RTF
