// Harness: the whole CSV reader on a file: decoding, line splitting, header and records.
#pragma once

#include <algorithm>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// The input is a CSV file read as the suite reads a class list: headers, then records until the data
// ends. Each record moves the position by one line and has the field count of the first record;
// fieldValueForName gives the field under the first header of that name, and null for a name no
// (trimmed) header can have. Malformed lines show an alert (silenced here) and reading goes on after
// them; an unterminated quote throws RangeException, the error the reader defines for it.
inline void csvFile(const std::uint8_t* data, std::size_t size) {
    silenceAlerts();
    static ScratchFile file(".csv");
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
