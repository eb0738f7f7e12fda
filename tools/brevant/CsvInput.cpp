// CSV files read line by line through the library's CSVReader, and the record loop shared by subcommands.
#include "CsvInput.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Chart.hpp"

namespace brevant {

namespace {

constexpr std::size_t kChunk = 1 << 20;

// What a scan of every byte tells: byte-order mark, line ends, and whether the bytes are ASCII or UTF-8.
class ByteScan {
  public:
    void add(const char* bytes, std::size_t length) {
        if (head_.size() < 4) head_.append(bytes, std::min<std::size_t>(length, 4 - head_.size()));
        for (std::size_t i = 0; i < length; ++i) {
            const char byte = bytes[i];
            if (byte == '\n') {
                hasNewline_ = true;
                if (previous_ == '\r') hasCrLf_ = true;
            } else if (byte == '\r') {
                hasReturn_ = true;
            }
            previous_ = byte;
        }
        checkUtf8(bytes, length);
    }
    void finish() {
        if (!carry_.empty()) valid_ = valid_ && bv::isValidUtf8(bytes(carry_), carry_.size());
        carry_.clear();
    }
    [[nodiscard]] const std::string& head() const { return head_; }
    [[nodiscard]] bool ascii() const { return ascii_; }
    [[nodiscard]] bool validUtf8() const { return valid_; }
    [[nodiscard]] std::string lineBreak() const {
        return hasCrLf_ ? "\r\n" : hasNewline_ ? "\n" : hasReturn_ ? "\r" : "";
    }

  private:
    static const std::uint8_t* bytes(const std::string& text) {
        return reinterpret_cast<const std::uint8_t*>(text.data());
    }
    // Validates whole characters; a character cut by the chunk's end waits for the next chunk.
    void checkUtf8(const char* data, std::size_t length) {
        if (!valid_) return;
        if (carry_.empty() && std::all_of(data, data + length, [](char c) { return (c & 0x80) == 0; }))
            return;
        ascii_ = false;
        std::string checked = carry_;
        checked.append(data, length);
        std::size_t cut = checked.size();
        for (std::size_t back = 1; back <= 3 && back <= checked.size(); ++back) {
            const auto byte = static_cast<unsigned char>(checked[checked.size() - back]);
            if (byte < 0x80) break;  // ASCII: no character is cut
            if (byte >= 0xC0) {      // a lead byte: its character may go on in the next chunk
                cut = checked.size() - back;
                break;
            }
        }
        valid_ = bv::isValidUtf8(bytes(checked), cut);
        carry_ = checked.substr(cut);
    }

    std::string head_;
    std::string carry_;
    char previous_ = '\0';
    bool hasNewline_ = false, hasReturn_ = false, hasCrLf_ = false;
    bool ascii_ = true, valid_ = true;
};

bool startsWith(const std::string& bytes, std::string_view mark) {
    return bytes.compare(0, mark.size(), mark) == 0;
}

void reportMalformed(const std::string& name, std::uint64_t lineNumber, const CsvReadOptions& options,
                     CsvReadReport* report) {
    report->malformedLines.push_back(lineNumber);
    if (!options.quiet) printError(name + ": line " + std::to_string(lineNumber) + " is malformed");
}

}  // namespace

std::string printable(const std::string& bytes) {
    std::string out;
    for (std::size_t i = 0; i < bytes.size() && out.size() < 40; ++i) {
        auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x20 || byte == 0x7F || byte >= 0x80) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            out += escaped;
        } else {
            out += static_cast<char>(byte);
        }
    }
    return out.size() < bytes.size() ? out + "..." : out;
}

CsvFile::~CsvFile() {
    if (spool_ != nullptr) std::fclose(spool_);
}

bool CsvFile::open(const std::string& path, std::string* error) {
    if (!input_.open(path, error)) return false;
    name_ = input_.name();
    if (input_.isRegularFile()) {
        descriptor_ = input_.descriptor();
    } else if (!copyToTemporaryFile(input_, error)) {
        return false;
    }
    return detect(error);
}

bool CsvFile::copyToTemporaryFile(InputFile& input, std::string* error) {
    spool_ = std::tmpfile();
    if (spool_ == nullptr) {
        *error = name_ + ": cannot make a temporary copy: " + std::strerror(errno);
        return false;
    }
    descriptor_ = fileno(spool_);
    std::unique_ptr<char[]> buffer(new char[kChunk]);
    while (std::size_t got = input.read(buffer.get(), kChunk)) {
        for (std::size_t written = 0; written < got;) {
            const ssize_t put = ::write(descriptor_, buffer.get() + written, got - written);
            if (put < 0 && errno == EINTR) continue;
            if (put < 0) {
                *error = name_ + ": cannot make a temporary copy: " + std::strerror(errno);
                return false;
            }
            written += static_cast<std::size_t>(put);
        }
    }
    if (input.failed()) {
        *error = name_ + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool CsvFile::readFrom(std::uint64_t offset, const ChunkHandler& onChunk, std::string* error) {
    if (::lseek(descriptor_, static_cast<off_t>(offset), SEEK_SET) < 0) {
        *error = name_ + ": " + std::strerror(errno);
        return false;
    }
    std::unique_ptr<char[]> buffer(new char[kChunk]);
    for (;;) {
        const ssize_t got = ::read(descriptor_, buffer.get(), kChunk);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            *error = name_ + ": " + std::strerror(errno);
            return false;
        }
        if (got == 0 || !onChunk(buffer.get(), static_cast<std::size_t>(got))) return error->empty();
    }
}

bool CsvFile::detect(std::string* error) {
    ByteScan scan;
    size_ = 0;
    auto add = [&](const char* bytes, std::size_t length) {
        scan.add(bytes, length);
        size_ += length;
        return true;
    };
    if (!readFrom(0, add, error)) return false;
    scan.finish();
    if (size_ == 0) {
        *error = name_ + ": the file is empty";
        return false;
    }
    const std::string& head = scan.head();
    if (startsWith(head, "\xFF\xFE\x00\x00") || startsWith(head, std::string_view("\x00\x00\xFE\xFF", 4)) ||
        startsWith(head, "\xFE\xFF") || startsWith(head, "\xFF\xFE")) {
        encoding_ = Encoding::Wide;
        if (size_ > kMaxWideCsvBytes) {
            *error = name_ + ": a UTF-16 or UTF-32 file over " + std::to_string(kMaxWideCsvBytes >> 20) +
                     " MiB is too large (it is read whole)";
            return false;
        }
        return true;
    }
    // A UTF-8 mark is skipped whatever follows it: it is never part of the first field.
    markLength_ = startsWith(head, "\xEF\xBB\xBF") ? 3 : 0;
    encoding_ = scan.ascii() ? Encoding::Ascii : scan.validUtf8() ? Encoding::Utf8 : Encoding::Windows1252;
    lineBreak_ = scan.lineBreak();
    return true;
}

std::optional<bv::Text> CsvFile::decode(std::string_view line) const {
    switch (encoding_) {
        case Encoding::Ascii:
            return bv::Text::fromLatin1(line);
        case Encoding::Utf8:
            return bv::Text(line);
        default:
            return bv::decodeText(reinterpret_cast<const std::uint8_t*>(line.data()), line.size(),
                                  bv::TextEncoding::WindowsCP1252);
    }
}

bool CsvFile::forEachWideLine(const LineHandler& onLine) {
    if (wideLines_.empty()) {
        const std::string path = "/proc/self/fd/" + std::to_string(descriptor_);
        bv::CSVReader whole{bv::Text(input_.isRegularFile() ? name_ : path)};
        wideLines_ = whole.lines().value_or(std::vector<bv::Text>{});
    }
    for (const bv::Text& line : wideLines_)
        if (!onLine(line, 0)) break;
    return true;
}

bool CsvFile::forEachLine(const LineHandler& onLine, std::string* error) {
    if (encoding_ == Encoding::Wide) return forEachWideLine(onLine);
    const char last = lineBreak_.empty() ? '\0' : lineBreak_.back();
    const bool crLf = lineBreak_ == "\r\n";
    std::string pending;  // the start of a line that the previous chunk cut
    std::uint64_t done = markLength_;
    bool stopped = false;
    auto emit = [&](std::string_view bytes) {
        std::optional<bv::Text> text = decode(bytes);
        if (!text) {
            *error = name_ + ": a line cannot be decoded as Windows-1252 text";
            return false;
        }
        return onLine(*text, done);
    };
    auto split = [&](const char* chunk, std::size_t length) {
        done += length;
        std::size_t start = 0;
        while (start < length) {
            const void* found = last == '\0' ? nullptr : std::memchr(chunk + start, last, length - start);
            if (found == nullptr) {
                pending.append(chunk + start, length - start);
                break;
            }
            const auto end = static_cast<std::size_t>(static_cast<const char*>(found) - chunk);
            if (crLf) {
                const bool afterReturn =
                    end > start ? chunk[end - 1] == '\r' : !pending.empty() && pending.back() == '\r';
                if (!afterReturn) {  // a lone "\n" stays inside the line
                    pending.append(chunk + start, end + 1 - start);
                    start = end + 1;
                    continue;
                }
            }
            bool keepGoing;
            if (pending.empty()) {
                keepGoing = emit(std::string_view(chunk + start, end - start - (crLf ? 1 : 0)));
            } else {
                pending.append(chunk + start, end - start);
                if (crLf) pending.pop_back();
                keepGoing = emit(pending);
                pending.clear();
            }
            if (!keepGoing) {
                stopped = true;
                return false;
            }
            start = end + 1;
        }
        return true;
    };
    if (!readFrom(markLength_, split, error)) return false;
    if (stopped) return true;  // the caller had read enough
    emit(pending);             // the last line, empty when the file ends with a line break
    return error->empty();
}

bool CsvFile::forEachRecord(const CsvReadOptions& options, const CsvHeaderCheck& checkHeaders,
                            const CsvRecordHandler& onRecord, std::string* error, CsvReadReport* report) {
    *report = CsvReadReport{};
    error->clear();
    bv::CSVReader reader;
    reader.setFieldSeparator(static_cast<std::int8_t>(options.separator));
    ProgressBar progress(options.quiet ? std::string() : "Reading " + name_, options.quiet ? 0 : size_);
    std::uint64_t lineNumber = 0;
    std::uint64_t blankLine = 0;  // set once a blank line ended the data
    bool refused = false;
    auto onLine = [&](const bv::Text& line, std::uint64_t doneBytes) {
        ++lineNumber;
        if ((lineNumber & 0x3FFF) == 0) progress.update(doneBytes);
        if (blankLine != 0) {
            if (!bv::BVNSString::trimmedString(line).empty()) report->unreadLines = lineNumber - blankLine;
            return true;
        }
        if (options.header && lineNumber == 1) {
            reader.setLines(std::vector<bv::Text>{line});
            try {
                reader.readHeaders();
            } catch (const bv::RangeException&) {  // the header holds a quoted field that is not closed
                *error = name_ + ": line 1 is malformed";
                refused = true;
                return false;
            }
            if (reader.headers().empty()) {
                *error = name_ + ": the first line is not a header (it is blank or malformed)";
            } else if (!checkHeaders || checkHeaders(reader.headers(), error)) {
                return true;
            }
            refused = true;
            return false;
        }
        const std::uint64_t before = reader.currentRecord();
        std::optional<std::vector<bv::Text>> record;
        try {
            record = reader.readRecord(line);
        } catch (const bv::RangeException&) {  // an unterminated quoted field
            reportMalformed(name_, lineNumber, options, report);
            return true;
        }
        if (record) {
            onRecord(reader, *record);
        } else if (reader.currentRecord() != before) {
            reportMalformed(name_, lineNumber, options, report);
        } else {
            blankLine = lineNumber;  // a blank line ends the data
            if (options.stopAtBlank) return false;
        }
        return !outputFailed();
    };
    if (!forEachLine(onLine, error) || refused) return false;
    if (report->unreadLines > 0) {
        report->blankLine = blankLine;
        if (!options.quiet)
            printError(name_ + ": line " + std::to_string(blankLine) +
                       " is blank, which ends the data; the " + std::to_string(report->unreadLines) +
                       (report->unreadLines == 1 ? " line after it was" : " lines after it were") +
                       " not read (--stop-at-blank stops there on purpose)");
    }
    return true;
}

bool forEachCsvRecord(const std::string& path, const CsvReadOptions& options,
                      const CsvHeaderCheck& checkHeaders, const CsvRecordHandler& onRecord,
                      std::string* error, CsvReadReport* report) {
    CsvFile file;
    return file.open(path, error) && file.forEachRecord(options, checkHeaders, onRecord, error, report);
}

bool readCsvColumn(const std::string& path, const std::string& column, bool stopAtBlank, std::string* error,
                   CsvReadReport* report, const std::function<void(const bv::Text&)>& onValue) {
    const bv::Text name(column);
    CsvFile file;
    if (!file.open(path, error)) return false;
    std::size_t index = 0;  // the first column of the name, as the reader's lookup by name finds it
    auto hasColumn = [&](const std::vector<bv::Text>& headers, std::string* message) {
        index = static_cast<std::size_t>(std::find(headers.begin(), headers.end(), name) - headers.begin());
        if (index < headers.size()) return true;
        std::string columns;
        for (const bv::Text& header : headers)
            columns += (columns.empty() ? "" : ", ") + header.toUtf8();
        *message = file.name() + ": no column named \"" + column + "\" (the columns are: " + columns + ")";
        return false;
    };
    CsvReadOptions options;
    options.header = true;
    options.stopAtBlank = stopAtBlank;
    return file.forEachRecord(
        options, hasColumn,
        [&](const bv::CSVReader&, const std::vector<bv::Text>& record) { onValue(record[index]); }, error,
        report);
}

}  // namespace brevant
