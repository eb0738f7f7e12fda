// CSVReader: file loading with encoding detection, line splitting, and the field splitter.
//
// The decoded file is kept as one UTF-16 buffer and each line is a span of it, so loading costs one
// decode and one scan for terminators; a record costs one allocation per field that does not fit a
// string's inline storage, and no per-character work beyond the scan itself.
#include "BrevantCocoaExtensions/documents/CSVReader.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

namespace {

constexpr char16_t kQuote = u'"';

// --- Loading ------------------------------------------------------------------------------------------

// The whole file, or nullopt when it cannot be opened or read (a folder, no permission, missing).
std::optional<ByteData> readWholeFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        ::close(descriptor);
        return std::nullopt;
    }
    // The size is a hint only: pipes and /proc files report 0 and are read to their end all the same.
    ByteData bytes(static_cast<std::size_t>(status.st_size > 0 ? status.st_size : 0) + 4096);
    std::size_t filled = 0;
    for (;;) {
        if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
        const ssize_t got = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            ::close(descriptor);
            return std::nullopt;
        }
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    ::close(descriptor);
    bytes.resize(filled);
    return bytes;
}

bool isAscii(const ByteData& bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
    std::size_t i = 0;
    std::uint64_t seen = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + i, sizeof word);
        seen |= word;
    }
    for (; i < bytes.size(); ++i)
        seen |= bytes[i];
    return (seen & kHighBits) == 0;
}

bool startsWith(const ByteData& bytes, std::initializer_list<std::uint8_t> mark) {
    return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
}

// Decodes by the byte-order mark (UTF-32 marks are tested before the UTF-16 mark they begin with), else
// as UTF-8 when the bytes are valid UTF-8; nullopt otherwise.
std::optional<Text> decodeDetectingEncoding(const ByteData& bytes) {
    struct Mark {
        std::initializer_list<std::uint8_t> bytes;
        TextEncoding encoding;
    };
    static const Mark marks[] = {
        {{0xFF, 0xFE, 0x00, 0x00}, TextEncoding::UTF32LittleEndian},
        {{0x00, 0x00, 0xFE, 0xFF}, TextEncoding::UTF32BigEndian},
        {{0xEF, 0xBB, 0xBF}, TextEncoding::UTF8},
        {{0xFE, 0xFF}, TextEncoding::UTF16BigEndian},
        {{0xFF, 0xFE}, TextEncoding::UTF16LittleEndian},
    };
    for (const Mark& mark : marks) {
        if (startsWith(bytes, mark.bytes))
            return decodeText(bytes.data() + mark.bytes.size(), bytes.size() - mark.bytes.size(),
                              mark.encoding);
    }
    // Most class lists are plain ASCII, which widens unit by unit without a converter.
    if (isAscii(bytes)) return Text(std::u16string(bytes.begin(), bytes.end()));
    return decodeText(bytes, TextEncoding::UTF8);
}

// The terminator that splits the text: the first of "\r\n", "\n" and "\r" that occurs anywhere.
std::u16string_view detectLineBreak(std::u16string_view text) {
    if (text.find(u"\r\n") != std::u16string_view::npos) return u"\r\n";
    if (text.find(u'\n') != std::u16string_view::npos) return u"\n";
    if (text.find(u'\r') != std::u16string_view::npos) return u"\r";
    return u"";
}

// --- Trimming and white space -------------------------------------------------------------------------

const CharacterSet& whitespaceAndNewlines() {
    static const CharacterSet set = CharacterSet::whitespaceAndNewlineCharacterSet();
    return set;
}

const CharacterSet& whitespace() {
    static const CharacterSet set = CharacterSet::whitespaceCharacterSet();
    return set;
}

// White space and line ends, as trimming removes them (ASCII answered without the set).
inline bool isWhitespaceOrNewline(char16_t unit) {
    if (unit < 0x80) return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
    return whitespaceAndNewlines().contains(unit);
}

// White space between fields: spaces and tabs, not line ends.
inline bool isWhitespace(char16_t unit) {
    if (unit < 0x80) return unit == u' ' || unit == u'\t';
    return whitespace().contains(unit);
}

// The view without white space and line ends at either end: the trimming of BVNSString::trimmedString,
// done on a view so that lines and fields are trimmed without a copy.
inline std::u16string_view trimmed(std::u16string_view text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isWhitespaceOrNewline(text[begin]))
        ++begin;
    while (end > begin && isWhitespaceOrNewline(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

std::size_t skipWhitespace(std::u16string_view line, std::size_t position) {
    while (position < line.size() && isWhitespace(line[position]))
        ++position;
    return position;
}

// --- Fields -------------------------------------------------------------------------------------------

// A field is quoted when it opens with a quote followed by anything but a quote, or by an escaped quote
// (three quotes in a row). Two quotes followed by anything else (an empty quoted field) are not quoted.
bool opensQuotedField(std::u16string_view line, std::size_t position) {
    const std::size_t length = line.size();
    if (position >= length || line[position] != kQuote) return false;
    if (position + 1 < length && line[position + 1] != kQuote) return true;
    return position + 2 < length && line[position + 1] == kQuote && line[position + 2] == kQuote;
}

// Scans an unquoted field to the separator or the end of the line. A pair of quotes is stepped over as
// one unit (and noted) before the separator is looked for.
inline std::size_t scanUnquotedField(std::u16string_view line, std::size_t position, int separator,
                                     bool* hasDoubledQuotes) {
    const std::size_t length = line.size();
    while (position < length) {
        const char16_t unit = line[position];
        if (unit == kQuote && position + 1 < length && line[position + 1] == kQuote) {
            *hasDoubledQuotes = true;
            position += 2;
            continue;
        }
        if (unit == separator) break;
        ++position;
    }
    return position;
}

// Scans a quoted field from after its opening quote to its closing quote (a quote not followed by
// another), or to the end of the line when it has none.
inline std::size_t scanQuotedField(std::u16string_view line, std::size_t position, bool* hasDoubledQuotes) {
    const std::size_t length = line.size();
    while (position < length) {
        if (line[position] != kQuote) {
            ++position;
        } else if (position + 1 < length && line[position + 1] == kQuote) {
            *hasDoubledQuotes = true;
            position += 2;
        } else {
            break;
        }
    }
    return position;
}

// The trimmed field; with doubled quotes, each pair of quotes becomes one, scanning left to right.
inline Text makeField(std::u16string_view raw, bool hasDoubledQuotes) {
    const std::u16string_view field = trimmed(raw);
    if (!hasDoubledQuotes) return Text(field);
    std::u16string collapsed;
    collapsed.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        collapsed += field[i];
        if (field[i] == kQuote && i + 1 < field.size() && field[i + 1] == kQuote) ++i;
    }
    return Text(std::move(collapsed));
}

// The code unit at a position that may lie past the end of the line (after an unterminated quoted field).
char16_t unitAt(std::u16string_view line, std::size_t position) {
    if (position >= line.size())
        throw RangeException("index " + std::to_string(position) + " beyond bounds of line of length " +
                             std::to_string(line.size()) + ": a quoted field is not closed on its line");
    return line[position];
}

// --- Collections --------------------------------------------------------------------------------------

const std::vector<Text>& orEmpty(const std::optional<std::vector<Text>>& list) noexcept {
    static const std::vector<Text> empty;
    return list ? *list : empty;
}

std::uint32_t countOf(const std::optional<std::vector<Text>>& list) noexcept {
    return static_cast<std::uint32_t>(orEmpty(list).size());
}

void checkIndex(std::size_t index, std::size_t count, const char* operation) {
    if (index >= count)
        throw RangeException(std::string(operation) + ": index " + std::to_string(index) +
                             " beyond bounds [0 .. " + std::to_string(count) + ")");
}

const Text& objectAt(const std::optional<std::vector<Text>>& list, std::uint32_t index,
                     const char* operation) {
    checkIndex(index, orEmpty(list).size(), operation);
    return (*list)[index];
}

void copyRange(const std::optional<std::vector<Text>>& list, Text* buffer, Range range,
               const char* operation) {
    const std::vector<Text>& elements = orEmpty(list);
    if (range.location > elements.size() || range.length > elements.size() - range.location)
        throw RangeException(std::string(operation) + ": range beyond bounds of " +
                             std::to_string(elements.size()) + " elements");
    std::copy_n(elements.begin() + static_cast<std::ptrdiff_t>(range.location), range.length, buffer);
}

void insertAt(std::optional<std::vector<Text>>& list, Text object, std::uint32_t index,
              const char* operation) {
    if (!list) list.emplace();
    checkIndex(index, list->size() + 1, operation);
    list->insert(list->begin() + index, std::move(object));
}

void removeAt(std::optional<std::vector<Text>>& list, std::uint32_t index, const char* operation) {
    checkIndex(index, orEmpty(list).size(), operation);
    list->erase(list->begin() + index);
}

void replaceAt(std::optional<std::vector<Text>>& list, std::uint32_t index, Text object,
               const char* operation) {
    checkIndex(index, orEmpty(list).size(), operation);
    (*list)[index] = std::move(object);
}

}  // namespace

// --- Construction and loading -------------------------------------------------------------------------

CSVReader::CSVReader(const Text& path) {
    readLinesFromFileAtPath(path);
}

CSVReader CSVReader::csvReaderWithFilePath(const Text& path) {
    return CSVReader(path);
}

CSVReader CSVReader::initWithFilePath(const Text& path) {
    return CSVReader(path);
}

void CSVReader::readLinesFromFileAtPath(const Text& path) {
    if (!lineSpans_.empty()) return;
    std::optional<ByteData> bytes = readWholeFile(path.toUtf8());
    if (!bytes) return;
    std::optional<Text> text = decodeDetectingEncoding(*bytes);
    if (!text) text = decodeText(*bytes, TextEncoding::WindowsCP1252);
    if (!text) return;
    bytes.reset();  // the decoded text replaces the bytes before the lines are split
    setText(std::move(text->units()));
}

void CSVReader::setText(std::u16string text) {
    text_ = std::move(text);
    const std::u16string_view all(text_);
    const std::u16string_view lineBreak = detectLineBreak(all);
    lineBreak_ = Text(lineBreak);
    lineSpans_.clear();
    hasLines_ = true;
    if (lineBreak.empty()) {
        lineSpans_.push_back({0, all.size()});
        return;
    }
    std::size_t start = 0;
    for (;;) {
        const std::size_t end =
            lineBreak.size() == 1 ? all.find(lineBreak.front(), start) : all.find(lineBreak, start);
        if (end == std::u16string_view::npos) break;
        lineSpans_.push_back({start, end - start});
        start = end + lineBreak.size();
    }
    lineSpans_.push_back({start, all.size() - start});
}

std::optional<std::vector<Text>> CSVReader::lines() const {
    if (!hasLines_) return std::nullopt;
    std::vector<Text> lines;
    lines.reserve(lineSpans_.size());
    for (std::size_t i = 0; i < lineSpans_.size(); ++i)
        lines.emplace_back(lineAt(i));
    return lines;
}

void CSVReader::setLines(const std::optional<std::vector<Text>>& lines) {
    text_.clear();
    lineSpans_.clear();
    hasLines_ = lines.has_value();
    if (!lines) return;
    std::size_t total = 0;
    for (const Text& line : *lines)
        total += line.length();
    text_.reserve(total);
    for (const Text& line : *lines) {
        lineSpans_.push_back({text_.size(), line.length()});
        text_ += line.units();
    }
}

// --- Reading ------------------------------------------------------------------------------------------

void CSVReader::readHeaders() {
    if (lineSpans_.empty()) return;
    const std::u16string_view header = trimmed(lineAt(0));
    headers_ = header.empty() ? std::nullopt : readTrimmedLine(header);
    headersChanged();
    numFields_ = orEmpty(headers_).size();
    firstLineIsHeader_ = true;
    currentRecord_ = 1;
}

std::optional<std::vector<Text>> CSVReader::readRecord() {
    if (!hasLines_ || currentRecord_ == lineSpans_.size()) return std::nullopt;
    checkIndex(currentRecord_, lineSpans_.size(), "readRecord");
    const std::u16string_view line = trimmed(lineAt(currentRecord_));
    if (line.empty()) return std::nullopt;  // a blank line ends the data
    std::optional<std::vector<Text>> record = readTrimmedLine(line);
    if (!record) {
        // The position has already moved past the line, so it is the line's number counted from 1.
        AlertCenter::show(Alert{AlertStyle::Warning,
                                Text("Brevant Tolvern"),
                                Text("Line #" + std::to_string(currentRecord_) + " is malformed."),
                                {Text("Ok")}});
    }
    return record;
}

std::optional<std::vector<Text>> CSVReader::readRecord(const Text& line) {
    const std::u16string_view trimmedLine = trimmed(line.view());
    if (trimmedLine.empty()) return std::nullopt;
    return readTrimmedLine(trimmedLine);
}

std::optional<std::vector<Text>> CSVReader::readTrimmedLine(std::u16string_view line) {
    const int separator = fieldSeparator_;  // sign-extended: a negative separator never matches
    const std::size_t length = line.size();
    std::vector<Text> fields;
    fields.reserve(numFields_ != 0 && numFields_ < 1024 ? numFields_ : 8);
    bool malformed = false;
    std::size_t position = 0;
    while (position < length) {
        position = skipWhitespace(line, position);
        const bool quoted = opensQuotedField(line, position);
        if (quoted) ++position;
        const std::size_t start = position;
        bool hasDoubledQuotes = false;
        position = quoted ? scanQuotedField(line, position, &hasDoubledQuotes)
                          : scanUnquotedField(line, position, separator, &hasDoubledQuotes);
        fields.emplace_back(makeField(line.substr(start, position - start), hasDoubledQuotes));
        if (quoted) ++position;  // past the closing quote, or one past the end when there was none
        position = skipWhitespace(line, position);
        if (position != length && unitAt(line, position) != separator) {
            malformed = true;
            break;
        }
        ++position;
    }
    if (line.back() == separator) fields.emplace_back();  // a trailing separator ends with an empty field
    if (!malformed && numFields_ == 0) numFields_ = fields.size();
    if (numFields_ != fields.size()) malformed = true;
    ++currentRecord_;
    if (malformed) {
        currentFields_.reset();
        return std::nullopt;
    }
    if (currentFields_) {
        *currentFields_ = fields;  // reuses the previous record's storage
    } else {
        currentFields_ = fields;
    }
    return fields;
}

std::optional<Text> CSVReader::fieldValueForName(const Text& name) const {
    if (!firstLineIsHeader_)
        assertionFailure("fieldValueForName:", description(), "CSVReader", 260,
                         "fieldValueForName: First line must be a header");
    if (orEmpty(currentFields_).size() != orEmpty(headers_).size())
        assertionFailure("fieldValueForName:", description(), "CSVReader", 261,
                         "fieldValueForName: Bad record");
    if (!headerIndex_) {
        headerIndex_.emplace();
        const std::vector<Text>& names = orEmpty(headers_);
        for (std::size_t column = 0; column < names.size(); ++column)
            headerIndex_->emplace(names[column], column);
    }
    const auto found = headerIndex_->find(name);
    if (found == headerIndex_->end()) return std::nullopt;
    return (*currentFields_)[found->second];
}

// --- Collection accessors -----------------------------------------------------------------------------

const std::vector<Text>& CSVReader::headers() const noexcept {
    return orEmpty(headers_);
}
const std::vector<Text>& CSVReader::currentFields() const noexcept {
    return orEmpty(currentFields_);
}
std::uint32_t CSVReader::countOfHeaders() const noexcept {
    return countOf(headers_);
}
std::uint32_t CSVReader::countOfCurrentFields() const noexcept {
    return countOf(currentFields_);
}

const Text& CSVReader::objectInHeadersAtIndex(std::uint32_t index) const {
    return objectAt(headers_, index, "objectInHeadersAtIndex");
}
const Text& CSVReader::objectInCurrentFieldsAtIndex(std::uint32_t index) const {
    return objectAt(currentFields_, index, "objectInCurrentFieldsAtIndex");
}
void CSVReader::getHeadersRange(Text* buffer, Range range) const {
    copyRange(headers_, buffer, range, "getHeadersRange");
}
void CSVReader::getCurrentFieldsRange(Text* buffer, Range range) const {
    copyRange(currentFields_, buffer, range, "getCurrentFieldsRange");
}
void CSVReader::insertObjectInHeadersAtIndex(Text object, std::uint32_t index) {
    insertAt(headers_, std::move(object), index, "insertObjectInHeadersAtIndex");
    headersChanged();
}
void CSVReader::insertObjectInCurrentFieldsAtIndex(Text object, std::uint32_t index) {
    insertAt(currentFields_, std::move(object), index, "insertObjectInCurrentFieldsAtIndex");
}
void CSVReader::removeObjectFromHeadersAtIndex(std::uint32_t index) {
    removeAt(headers_, index, "removeObjectFromHeadersAtIndex");
    headersChanged();
}
void CSVReader::removeObjectFromCurrentFieldsAtIndex(std::uint32_t index) {
    removeAt(currentFields_, index, "removeObjectFromCurrentFieldsAtIndex");
}
void CSVReader::replaceObjectInHeadersAtIndexWithObject(std::uint32_t index, Text object) {
    replaceAt(headers_, index, std::move(object), "replaceObjectInHeadersAtIndexWithObject");
    headersChanged();
}
void CSVReader::replaceObjectInCurrentFieldsAtIndexWithObject(std::uint32_t index, Text object) {
    replaceAt(currentFields_, index, std::move(object), "replaceObjectInCurrentFieldsAtIndexWithObject");
}

std::string CSVReader::description() const {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "<CSVReader: %p>", static_cast<const void*>(this));
    return buffer;
}

}  // namespace bv
