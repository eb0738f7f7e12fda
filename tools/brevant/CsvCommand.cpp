// brevant csv FILE [--header] [--separator C] [--json] [--column NAME]: prints a CSV file's records as an
// aligned table, as JSON (objects keyed by the header's names with --header, arrays without), or one
// column with --column. Each malformed line is reported as "FILE: line N is malformed" on standard error
// and reading goes on with the next line; the exit code is then 1. A blank line ends the data, as it does
// for every reader of these files.
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
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
    CLI::Option* columnOption = nullptr;
};

using Record = std::vector<bv::Text>;

// The separator from its option text: one ASCII character, or "tab" / "\t" for a tab.
std::optional<char> parseSeparator(const std::string& text) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80) return text[0];
    return std::nullopt;
}

std::size_t displayWidth(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

std::string asTable(const Record* header, const std::vector<Record>& records) {
    std::vector<std::vector<std::string>> rows(records.size() + (header != nullptr ? 1 : 0));
    std::size_t row = 0;
    if (header != nullptr) {
        for (const bv::Text& name : *header)
            rows[row].push_back(name.toUtf8());
        ++row;
    }
    for (const Record& record : records) {
        for (const bv::Text& field : record)
            rows[row].push_back(field.toUtf8());
        ++row;
    }
    std::vector<std::size_t> widths;
    for (const auto& cells : rows) {
        if (widths.size() < cells.size()) widths.resize(cells.size(), 0);
        for (std::size_t column = 0; column < cells.size(); ++column)
            widths[column] = std::max(widths[column], displayWidth(cells[column]));
    }
    std::string out;
    auto appendRow = [&](const std::vector<std::string>& cells) {
        for (std::size_t column = 0; column < cells.size(); ++column) {
            out += cells[column];
            if (column + 1 < cells.size()) out.append(widths[column] - displayWidth(cells[column]) + 2, ' ');
        }
        while (!out.empty() && out.back() == ' ')
            out.pop_back();  // no padding after an empty last cell
        out += '\n';
    };
    for (std::size_t index = 0; index < rows.size(); ++index) {
        appendRow(rows[index]);
        if (index == 0 && header != nullptr) {
            std::vector<std::string> rule;
            for (std::size_t column = 0; column < rows[0].size(); ++column)
                rule.emplace_back(widths[column], '-');
            appendRow(rule);
        }
    }
    return out;
}

std::string asJson(const Record* header, const std::vector<Record>& records) {
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const Record& record : records) {
        if (header == nullptr) {
            nlohmann::ordered_json fields = nlohmann::ordered_json::array();
            for (const bv::Text& field : record)
                fields.push_back(field.toUtf8());
            out.push_back(std::move(fields));
            continue;
        }
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (std::size_t column = 0; column < record.size() && column < header->size(); ++column) {
            const std::string key = (*header)[column].toUtf8();
            if (!object.contains(key))
                object[key] = record[column].toUtf8();  // the first column of a name wins
        }
        out.push_back(std::move(object));
    }
    return out.dump(2) + "\n";
}

std::string asColumn(const Record& header, const std::vector<Record>& records, const bv::Text& name,
                     bool json) {
    const auto column =
        static_cast<std::size_t>(std::find(header.begin(), header.end(), name) - header.begin());
    nlohmann::ordered_json values = nlohmann::ordered_json::array();
    std::string lines;
    for (const Record& record : records) {
        const std::string value = record[column].toUtf8();
        if (json) {
            values.push_back(value);
        } else {
            lines += value + "\n";
        }
    }
    return json ? values.dump(2) + "\n" : lines;
}

int run(const CsvOptions& options) {
    const std::optional<char> separator = parseSeparator(options.separator);
    if (!separator) {
        printError("csv: the separator must be one ASCII character (or \"tab\"), not \"" + options.separator +
                   "\"");
        return kExitUsage;
    }
    const bool wantsColumn = options.columnOption->count() > 0;
    if (wantsColumn && !options.header) {
        printError("csv: --column needs --header, which names the columns");
        return kExitUsage;
    }

    const bv::Text columnName(options.column);
    Record header;
    auto acceptHeader = [&](const Record& names, std::string* message) {
        header = names;
        if (!wantsColumn || std::find(names.begin(), names.end(), columnName) != names.end()) return true;
        *message = options.file + ": no column named \"" + options.column + "\"";
        return false;
    };
    std::vector<Record> records;
    auto keep = [&](const bv::CSVReader&, const Record& record) { records.push_back(record); };
    std::string error;
    std::vector<std::uint64_t> malformedLines;
    if (!forEachCsvRecord(options.file, *separator, options.header, acceptHeader, keep, &error,
                          &malformedLines)) {
        printError(error);  // already "FILE: problem", like every file message of the tool
        return kExitFailure;
    }

    std::string out;
    if (wantsColumn) {
        out = asColumn(header, records, columnName, options.json);
    } else if (options.json) {
        out = asJson(options.header ? &header : nullptr, records);
    } else {
        out = asTable(options.header ? &header : nullptr, records);
    }
    if (!writeOutput(out)) return kExitFailure;
    return malformedLines.empty() ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command =
        app.add_subcommand("csv", "Print the records of a CSV file as a table, as JSON or one column");
    auto options = std::make_shared<CsvOptions>();
    command->add_option("FILE", options->file, "the CSV file")->required();
    command->add_flag("--header", options->header, "the first line names the columns");
    command->add_option("--separator", options->separator,
                        "the field separator (default \",\"; \"tab\" for a tab)");
    command->add_flag("--json", options->json, "print JSON: objects keyed by column name with --header");
    options->columnOption =
        command->add_option("--column", options->column, "print only the column of this name");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kCsvCommand("csv", install);

}  // namespace brevant
