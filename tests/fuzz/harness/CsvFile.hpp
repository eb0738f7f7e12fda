// Harness: the whole CSV reader on a file: decoding, line splitting, header and records.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "harness/Common.hpp"

namespace bv::fuzz {

namespace detail {

// One scratch file per process, removed when the process ends. It lives in memory where it can
// (/dev/shm): on a disk file system, truncating and rewriting a file thousands of times a second is slow.
class ScratchFile {
  public:
    explicit ScratchFile(const std::string& suffix)
        : path_(folder() / ("bv-fuzz-" + std::to_string(::getpid()) + suffix)) {}
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::filesystem::path& write(const std::uint8_t* data, std::size_t size) {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        out.close();
        if (!out) fail("the scratch file could not be written");
        return path_;
    }

  private:
    static std::filesystem::path folder() {
        if (::access("/dev/shm", W_OK) == 0) return "/dev/shm";
        return std::filesystem::temp_directory_path();
    }

    std::filesystem::path path_;
};

}  // namespace detail

// The input is a CSV file read as the suite reads a class list: headers, then records until the data
// ends. Each record moves the position by one line and has the field count of the first record;
// fieldValueForName gives the field under the first header of that name, and null for a name no
// (trimmed) header can have. Malformed lines show an alert (silenced here) and reading goes on after
// them; an unterminated quote throws RangeException, the error the reader defines for it.
inline void csvFile(const std::uint8_t* data, std::size_t size) {
    silenceAlerts();
    static detail::ScratchFile file(".csv");
    CSVReader reader(Text(file.write(data, size).string()));
    try {
        reader.readHeaders();
    } catch (const RangeException&) {
        return;
    }
    const std::vector<Text> headers = reader.headers();
    for (std::uint64_t calls = 0; calls <= reader.countOfLines(); ++calls) {
        const std::uint64_t before = reader.currentRecord();
        std::optional<std::vector<Text>> record;
        try {
            record = reader.readRecord();
        } catch (const RangeException&) {
            return;
        }
        if (before >= reader.countOfLines()) {
            check(!record, "nothing is read past the last line");
            return;
        }
        if (!record) {
            if (reader.currentRecord() == before) return;  // a blank line ends the data
            continue;                                      // a malformed line was skipped
        }
        check(reader.currentRecord() == before + 1, "a record moves the position by one line");
        check(record->size() == reader.numFields(), "every record has the first record's field count");
        if (!reader.firstLineIsHeader() || headers.size() != record->size()) continue;
        for (const Text& name : headers) {
            const auto column = std::find(headers.begin(), headers.end(), name) - headers.begin();
            check(reader.fieldValueForName(name) == (*record)[static_cast<std::size_t>(column)],
                  "a name gives the field under its first header");
        }
        check(!reader.fieldValueForName(Text(" ")), "an unknown name gives null");
    }
    fail("reading did not end after one call per line");
}

}  // namespace bv::fuzz
