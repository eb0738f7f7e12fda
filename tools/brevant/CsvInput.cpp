// File checks and CSV record iteration shared by the subcommands.
#include "CsvInput.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

std::string humanSize(std::uint64_t bytes) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.1f MB", static_cast<double>(bytes) / 1e6);
    return buffer;
}

// Routes the reader's malformed-line alerts into a flag instead of a dialog or a log line.
class MalformedLineCatcher {
  public:
    MalformedLineCatcher()
        : previous_(bv::AlertCenter::setPresenter([this](const bv::Alert&) {
              raised_ = true;
              return 0;
          })) {}
    ~MalformedLineCatcher() { bv::AlertCenter::setPresenter(std::move(previous_)); }
    MalformedLineCatcher(const MalformedLineCatcher&) = delete;
    MalformedLineCatcher& operator=(const MalformedLineCatcher&) = delete;

    bool takeRaised() { return std::exchange(raised_, false); }

  private:
    bool raised_ = false;
    bv::AlertCenter::Presenter previous_;
};

void reportMalformed(const std::string& path, std::uint64_t lineNumber,
                     std::vector<std::uint64_t>* malformedLines) {
    malformedLines->push_back(lineNumber);
    printError(path + ": line " + std::to_string(lineNumber) + " is malformed");
}

}  // namespace

bool checkReadableFile(const std::string& path, std::string* error) {
    std::error_code code;
    auto status = std::filesystem::status(path, code);
    if (code || !std::filesystem::exists(status)) {
        *error = path + ": no such file";
        return false;
    }
    if (std::filesystem::is_directory(status)) {
        *error = path + ": is a folder, not a file";
        return false;
    }
    std::ifstream probe(path, std::ios::binary);
    if (!probe) {
        *error = path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

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

bool forEachCsvRecord(const std::string& path, char separator, bool header,
                      const CsvHeaderCheck& checkHeaders, const CsvRecordHandler& onRecord,
                      std::string* error, std::vector<std::uint64_t>* malformedLines) {
    if (!checkReadableFile(path, error)) return false;
    std::error_code code;
    std::uint64_t size = std::filesystem::file_size(path, code);
    if (size > kMaxCsvBytes) {
        *error = path + ": " + humanSize(size) + " is too large for a CSV class list (the limit is " +
                 humanSize(kMaxCsvBytes) + ")";
        return false;
    }
    if (size == 0) {
        *error = path + ": the file is empty";
        return false;
    }
    bv::CSVReader reader{bv::Text(path)};
    reader.setFieldSeparator(static_cast<std::int8_t>(separator));
    MalformedLineCatcher catcher;
    if (header) {
        try {
            reader.readHeaders();
        } catch (const bv::RangeException&) {  // the header holds a quoted field that is not closed
            *error = path + ": line 1 is malformed";
            return false;
        }
        if (reader.headers().empty()) {
            *error = path + ": the first line is not a header (it is blank or malformed)";
            return false;
        }
        if (checkHeaders && !checkHeaders(reader.headers(), error)) return false;
    }
    malformedLines->clear();
    while (reader.currentRecord() < reader.countOfLines()) {
        std::uint64_t position = reader.currentRecord();
        std::optional<std::vector<bv::Text>> record;
        try {
            record = reader.readRecord();
        } catch (const bv::RangeException&) {  // an unterminated quoted field
            catcher.takeRaised();
            reader.setCurrentRecord(position + 1);
            reportMalformed(path, position + 1, malformedLines);
            continue;
        }
        if (record) {
            onRecord(reader, *record);
        } else if (catcher.takeRaised()) {
            reportMalformed(path, reader.currentRecord(), malformedLines);
        } else {
            break;  // a blank line ends the data
        }
    }
    return true;
}

bool readCsvColumn(const std::string& path, const std::string& column, std::string* error,
                   std::vector<std::uint64_t>* malformedLines,
                   const std::function<void(const bv::Text&)>& onValue) {
    const bv::Text name(column);
    auto hasColumn = [&](const std::vector<bv::Text>& headers, std::string* message) {
        if (std::find(headers.begin(), headers.end(), name) != headers.end()) return true;
        std::string columns;
        for (const bv::Text& header : headers)
            columns += (columns.empty() ? "" : ", ") + header.toUtf8();
        *message = path + ": no column named \"" + column + "\" (the columns are: " + columns + ")";
        return false;
    };
    return forEachCsvRecord(
        path, ',', true, hasColumn,
        [&](const bv::CSVReader& reader, const std::vector<bv::Text>&) {
            if (std::optional<bv::Text> value = reader.fieldValueForName(name)) onValue(*value);
        },
        error, malformedLines);
}

}  // namespace brevant
