// Reading CSV class lists for the brevant subcommands, in memory bounded by the longest line.
//
// A CsvFile is opened once and read in passes. Each pass decodes the file as the library's CSVReader does
// (a byte-order mark, else UTF-8 when the whole file is valid UTF-8, else Windows-1252; lines split at
// "\r\n" if it occurs anywhere, else "\n", else "\r") and hands each line to a CSVReader through
// readRecord(line), so records and malformed lines are exactly the library's. Standard input, pipes and
// FIFOs are copied to an unnamed temporary file first, since both the detection and a second pass need
// to read the bytes again. UTF-16 and UTF-32 files are the exception: they are read whole by the library
// (up to kMaxWideCsvBytes).
//
// Each malformed line, and each line with an unterminated quoted field, is reported on standard error as
// "FILE: line N is malformed" and skipped. A blank line ends the data; when lines that are not blank
// follow it, the pass says how many were not read and the read counts as failed, unless the caller asked
// to stop at a blank line on purpose.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "Command.hpp"

namespace brevant {

// The largest UTF-16 or UTF-32 CSV file the tool reads: such a file is decoded whole in memory.
inline constexpr std::uint64_t kMaxWideCsvBytes = 512ULL * 1024 * 1024;

// Bytes shown safely in a message: control and invalid bytes as \xNN, cut after 40 characters.
std::string printable(const std::string& bytes);

struct CsvReadOptions {
    char separator = ',';
    bool header = false;       // the first line names the columns
    bool stopAtBlank = false;  // a blank line ending the data early is wanted: no message, no failure
    bool quiet = false;        // report nothing on standard error (a second pass over the same file)
};

struct CsvReadReport {
    std::vector<std::uint64_t> malformedLines;  // the numbers (from 1) of the lines skipped as malformed
    std::uint64_t blankLine = 0;                // the blank line that ended the data early (0 when none did)
    std::uint64_t unreadLines = 0;  // the lines after it that were not read, up to the last non-blank one
    // Whether the tool should exit 1: malformed lines, or unread lines the caller did not ask for.
    [[nodiscard]] bool failed() const noexcept { return !malformedLines.empty() || unreadLines > 0; }
};

using CsvRecordHandler =
    std::function<void(const bv::CSVReader& reader, const std::vector<bv::Text>& record)>;
using CsvHeaderCheck = std::function<bool(const std::vector<bv::Text>& headers, std::string* error)>;

class CsvFile {
  public:
    CsvFile() = default;
    ~CsvFile();
    CsvFile(const CsvFile&) = delete;
    CsvFile& operator=(const CsvFile&) = delete;

    // Opens the file ("-" for standard input) and detects its encoding and line ends; false with a
    // "FILE: problem" message when it cannot be read, is a folder or is empty.
    bool open(const std::string& path, std::string* error);

    // Reads the header when asked (checkHeaders, when given, may refuse it with a message), then calls
    // onRecord for each well-formed record until the data ends. False with a message when the file cannot
    // be read or its header is not one; malformed lines and an early blank line go to *report.
    bool forEachRecord(const CsvReadOptions& options, const CsvHeaderCheck& checkHeaders,
                       const CsvRecordHandler& onRecord, std::string* error, CsvReadReport* report);

    [[nodiscard]] const std::string& name() const noexcept { return name_; }

  private:
    enum class Encoding { Ascii, Utf8, Windows1252, Wide };

    using ChunkHandler = std::function<bool(const char* bytes, std::size_t length)>;
    bool copyToTemporaryFile(InputFile& input, std::string* error);
    // Reads the file from the offset in chunks until the end or until onChunk answers false.
    bool readFrom(std::uint64_t offset, const ChunkHandler& onChunk, std::string* error);
    bool detect(std::string* error);
    using LineHandler = std::function<bool(const bv::Text& line, std::uint64_t doneBytes)>;
    // Calls onLine with each decoded line (terminator and byte-order mark removed) until it answers false.
    bool forEachLine(const LineHandler& onLine, std::string* error);
    bool forEachWideLine(const LineHandler& onLine);
    [[nodiscard]] std::optional<bv::Text> decode(std::string_view line) const;

    std::string name_;
    InputFile input_;
    std::FILE* spool_ = nullptr;  // standard input or a pipe, copied
    int descriptor_ = -1;         // what the passes read: the regular file or the copy
    std::uint64_t size_ = 0;
    Encoding encoding_ = Encoding::Ascii;
    std::size_t markLength_ = 0;  // the byte-order mark's length, skipped by every pass
    std::string lineBreak_;       // "\r\n", "\n", "\r", or "" for one line
    std::vector<bv::Text> wideLines_;
};

// Opens the file and reads it in one pass (CsvFile::open then forEachRecord).
bool forEachCsvRecord(const std::string& path, const CsvReadOptions& options,
                      const CsvHeaderCheck& checkHeaders, const CsvRecordHandler& onRecord,
                      std::string* error, CsvReadReport* report);

// forEachCsvRecord with a header, handing each record's value in the named column to onValue; fails
// with a message naming the columns there are when the header has no such column.
bool readCsvColumn(const std::string& path, const std::string& column, bool stopAtBlank, std::string* error,
                   CsvReadReport* report, const std::function<void(const bv::Text&)>& onValue);

}  // namespace brevant
