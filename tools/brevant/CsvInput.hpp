// Reading input files for the brevant subcommands: the checks that turn a missing file, a folder or an
// oversized class list into a one-line message, and record iteration over a CSV file that reports each
// malformed line by number and goes on with the next.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"

namespace brevant {

// The largest CSV file the tool reads: the reader holds the whole decoded file in memory.
inline constexpr std::uint64_t kMaxCsvBytes = 512ULL * 1024 * 1024;

// True when the path names an existing regular file that can be opened; else a one-line message.
bool checkReadableFile(const std::string& path, std::string* error);

// Bytes shown safely in a message: control and invalid bytes as \xNN, cut after 40 characters.
std::string printable(const std::string& bytes);

// Opens a CSV file (after checkReadableFile and the size limit) and reads its header when asked, then
// calls onRecord for each well-formed record until the data ends (end of file or a blank line). Each
// malformed line, and each line with an unterminated quoted field, is reported on standard error as
// "FILE: line N is malformed" and skipped; *malformedLines lists their numbers.
// With a header, checkHeaders (when given) may refuse it with a message before any record is read.
using CsvRecordHandler =
    std::function<void(const bv::CSVReader& reader, const std::vector<bv::Text>& record)>;
using CsvHeaderCheck = std::function<bool(const std::vector<bv::Text>& headers, std::string* error)>;
bool forEachCsvRecord(const std::string& path, char separator, bool header,
                      const CsvHeaderCheck& checkHeaders, const CsvRecordHandler& onRecord,
                      std::string* error, std::vector<std::uint64_t>* malformedLines);

// forEachCsvRecord with a header, handing each record's value in the named column to onValue; fails
// with a message naming the columns there are when the header has no such column.
bool readCsvColumn(const std::string& path, const std::string& column, std::string* error,
                   std::vector<std::uint64_t>* malformedLines,
                   const std::function<void(const bv::Text&)>& onValue);

}  // namespace brevant
