// brevant csv FILE [--header] [--separator C] [--json] [--column NAME] [--stop-at-blank]: prints a CSV
// file's records as an aligned table, as JSON (objects keyed by the header's names with --header, arrays
// without), or one column with --column. Records are printed as they are read, so memory stays bounded
// by the longest line; the table, which needs every column's width first, reads the file twice. Each
// malformed line is reported as "FILE: line N is malformed" on standard error and reading goes on with
// the next line; the exit code is then 1. A blank line ends the data; lines after it that are not blank
// are reported and make the exit code 1 unless --stop-at-blank asks for exactly that.
#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "Command.hpp"
#include "CsvInput.hpp"

namespace brevant {

namespace {

struct CsvOptions {
    std::string file;
    bool header = false;
    std::string separator = ",";
    bool json = false;
    std::string column;
    bool stopAtBlank = false;
    CLI::Option* columnOption = nullptr;
};

using Record = std::vector<bv::Text>;

// The separator from its option text: one ASCII character other than white space, which the reader
// skips around fields and so can never split them.
std::optional<char> parseSeparator(const std::string& text) {
    if (text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80 && text[0] != ' ' && text[0] != '\t')
        return text[0];
    return std::nullopt;
}

std::size_t displayWidth(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

std::string jsonString(const bv::Text& text) {
    return nlohmann::json(text.toUtf8()).dump();
}

// A JSON array written element by element in the layout of a two-space indented dump.
class JsonArrayWriter {
  public:
    void element(const std::string& json) {
        writeOutput(count_++ == 0 ? "[\n  " : ",\n  ");
        writeOutput(json);
    }
    void finish() { writeOutput(count_ == 0 ? "[]\n" : "\n]\n"); }

  private:
    std::uint64_t count_ = 0;
};

// The JSON keys of the header's columns: each name, and for a name seen before, the name followed by
// " (2)", " (3)", ... (the first number that no other column uses), so that no value is lost.
std::vector<std::string> uniqueKeys(const Record& header) {
    std::unordered_set<std::string> names;
    for (const bv::Text& name : header)
        names.insert(name.toUtf8());
    std::unordered_set<std::string> used;
    std::unordered_map<std::string, int> nextCopy;  // per name, so that many repeats stay linear
    std::vector<std::string> keys;
    keys.reserve(header.size());
    for (const bv::Text& text : header) {
        const std::string name = text.toUtf8();
        std::string key = name;
        if (used.count(key) > 0) {
            int& copy = nextCopy.try_emplace(name, 2).first->second;
            do {
                key = name + " (" + std::to_string(copy++) + ")";
            } while (used.count(key) > 0 || names.count(key) > 0);
        }
        used.insert(key);
        keys.push_back(nlohmann::json(key).dump());
    }
    return keys;
}

std::string jsonObject(const std::vector<std::string>& keys, const Record& record) {
    std::string out = "{";
    for (std::size_t column = 0; column < record.size() && column < keys.size(); ++column)
        out += (column == 0 ? "\n    " : ",\n    ") + keys[column] + ": " + jsonString(record[column]);
    return out + (out.size() == 1 ? "}" : "\n  }");
}

std::string jsonArray(const Record& record) {
    std::string out = "[";
    for (std::size_t column = 0; column < record.size(); ++column)
        out += (column == 0 ? "\n    " : ",\n    ") + jsonString(record[column]);
    return out + (out.size() == 1 ? "]" : "\n  ]");
}

// One table row: cells padded to their column's width and two spaces apart, no padding at the end.
std::string tableRow(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
    std::string out;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        out += cells[column];
        if (column + 1 < cells.size()) out.append(widths[column] - displayWidth(cells[column]) + 2, ' ');
    }
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    return out + '\n';
}

std::vector<std::string> tableCells(const Record& record) {
    std::vector<std::string> cells;
    cells.reserve(record.size());
    for (const bv::Text& field : record)
        cells.push_back(escapeControlCharacters(field.toUtf8()));
    return cells;
}

void widen(std::vector<std::size_t>& widths, const std::vector<std::string>& cells) {
    if (widths.size() < cells.size()) widths.resize(cells.size(), 0);
    for (std::size_t column = 0; column < cells.size(); ++column)
        widths[column] = std::max(widths[column], displayWidth(cells[column]));
}

// The table: a first pass finds the widths (and reports the file's faults), a quiet second pass prints.
bool printTable(CsvFile& file, const CsvReadOptions& options, std::string* error, CsvReadReport* report) {
    std::vector<std::size_t> widths;
    Record header;
    auto measure = [&](const bv::CSVReader&, const Record& record) { widen(widths, tableCells(record)); };
    auto keepHeader = [&](const Record& names, std::string*) {
        header = names;
        widen(widths, tableCells(names));
        return true;
    };
    if (!file.forEachRecord(options, keepHeader, measure, error, report)) return false;
    if (options.header) {
        writeOutput(tableRow(tableCells(header), widths));
        std::vector<std::string> rule;
        for (std::size_t column = 0; column < header.size(); ++column)
            rule.emplace_back(widths[column], '-');
        writeOutput(tableRow(rule, widths));
    }
    CsvReadOptions quiet = options;
    quiet.quiet = true;
    CsvReadReport again;
    auto print = [&](const bv::CSVReader&, const Record& record) {
        writeOutput(tableRow(tableCells(record), widths));
    };
    return file.forEachRecord(quiet, nullptr, print, error, &again);
}

int run(const CsvOptions& options) {
    const std::optional<char> separator = parseSeparator(options.separator);
    if (!separator) {
        printError(
            "csv: the separator must be one ASCII character other than a space or a tab (the reader "
            "skips those around fields), not \"" +
            options.separator + "\"");
        return kExitUsage;
    }
    const bool wantsColumn = options.columnOption->count() > 0;
    if (wantsColumn && !options.header) {
        printError("csv: --column needs --header, which names the columns");
        return kExitUsage;
    }
    CsvFile file;
    std::string error;
    if (!file.open(options.file, &error)) {
        printError(error);  // already "FILE: problem", like every file message of the tool
        return kExitFailure;
    }
    CsvReadOptions readOptions;
    readOptions.separator = *separator;
    readOptions.header = options.header;
    readOptions.stopAtBlank = options.stopAtBlank;
    CsvReadReport report;
    bool ok;
    if (!options.json && !wantsColumn) {
        ok = printTable(file, readOptions, &error, &report);
    } else {
        const bv::Text columnName(options.column);
        std::vector<std::string> keys;
        std::size_t column = 0;  // the first column of the name, as the reader's lookup by name finds it
        auto acceptHeader = [&](const Record& names, std::string* message) {
            keys = uniqueKeys(names);
            column =
                static_cast<std::size_t>(std::find(names.begin(), names.end(), columnName) - names.begin());
            if (!wantsColumn || column < names.size()) return true;
            *message = file.name() + ": no column named \"" + options.column + "\"";
            return false;
        };
        JsonArrayWriter array;
        auto print = [&](const bv::CSVReader&, const Record& record) {
            if (wantsColumn) {
                if (options.json) {
                    array.element(jsonString(record[column]));
                } else {
                    std::string line = escapeControlCharacters(record[column].toUtf8());
                    line += '\n';
                    writeOutput(line);
                }
            } else {
                array.element(options.header ? jsonObject(keys, record) : jsonArray(record));
            }
        };
        ok = file.forEachRecord(readOptions, acceptHeader, print, &error, &report);
        if (ok && options.json) array.finish();
    }
    if (!ok) {
        printError(error);
        return kExitFailure;
    }
    return report.failed() ? kExitFailure : kExitSuccess;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("csv", "Print the records of a CSV file as a table, as JSON or one column");
    auto options = std::make_shared<CsvOptions>();
    command->add_option("FILE", options->file, "the CSV file ('-': standard input)")->required();
    command->add_flag("--header", options->header, "the first line names the columns");
    command->add_option("--separator", options->separator,
                        "the field separator: one ASCII character, not a space or a tab (default \",\")");
    command->add_flag(
        "--json", options->json,
        "print JSON: objects keyed by column name with --header (a repeated name gets \" (2)\")");
    options->columnOption =
        command->add_option("--column", options->column, "print only the column of this name");
    command->add_flag("--stop-at-blank", options->stopAtBlank,
                      "a blank line ends the data on purpose: lines after it are ignored without a failure");
    command->footer(
        "Exit status: 0 success, 1 unreadable input, malformed lines or lines left after a blank "
        "line, 2 wrong usage.");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kCsvCommand("csv", install);

}  // namespace brevant
