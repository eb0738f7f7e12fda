// brevant tally: counts answers (one per line, or one column of a CSV class list), then reduces them to
// the modes and a popularity ranking, printed as a table with a bar chart or as JSON.
//
// Counting goes through BVCountedStrings (exact, or case-insensitive where the first spelling wins) and
// the reduction through the counted-set statistics, so the tool shows exactly what the suite's
// applications show. Identical raw answers are grouped before they reach the tally, in first-seen order,
// which gives the same entries and counts as adding them one by one, at a fraction of the cost.
#include <nlohmann/json.hpp>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <unordered_map>

#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"
#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Chart.hpp"
#include "Command.hpp"
#include "CsvInput.hpp"

namespace brevant {

namespace {

struct TallyOptions {
    std::string file = "-";
    std::string column;
    bool ignoreCase = false;
    std::optional<int> rank;
    bool json = false;
    bool noChart = false;
};

// Distinct keys with their counts, in the order each was first seen.
template <class Key>
class FirstSeenCounter {
  public:
    void add(const Key& key) {
        auto [position, inserted] = index_.try_emplace(key, order_.size());
        if (inserted) {
            order_.emplace_back(key, 1);
        } else {
            ++order_[position->second].second;
        }
    }
    [[nodiscard]] const std::vector<std::pair<Key, std::uint64_t>>& entries() const { return order_; }

  private:
    std::unordered_map<Key, std::size_t> index_;
    std::vector<std::pair<Key, std::uint64_t>> order_;
};

// Adds `count` occurrences of an answer to the tally, as that many addString calls would.
void addAnswer(bv::BVCountedStrings& tally, const bv::Text& answer, std::uint64_t count) {
    auto entry = tally.addString(answer);
    if (entry && count > 1) entry->setCount(entry->count() + count - 1);
}

// Reads answers one per line from a file or standard input, streaming; blank lines are skipped and each
// answer trimmed of white space. Fails on bytes that are not UTF-8.
bool tallyLines(const std::string& path, bv::BVCountedStrings& tally, std::string* error) {
    std::ifstream file;
    std::istream* input = &std::cin;
    std::uint64_t totalBytes = 0;
    if (path != "-") {
        if (!checkReadableFile(path, error)) return false;
        file.open(path, std::ios::binary);
        if (!file) {
            *error = path + ": " + std::strerror(errno);
            return false;
        }
        input = &file;
        std::error_code code;
        totalBytes = std::filesystem::file_size(path, code);
    }
    const std::string name = path == "-" ? "standard input" : path;
    ProgressBar progress("Counting " + name, totalBytes);
    FirstSeenCounter<std::string> raw;
    std::string line;
    std::uint64_t lineNumber = 0, doneBytes = 0;
    while (std::getline(*input, line)) {
        ++lineNumber;
        doneBytes += line.size() + 1;
        if ((lineNumber & 0xFFFF) == 0) progress.update(doneBytes);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        raw.add(line);
    }
    if (input->bad()) {
        *error = name + ": read error";
        return false;
    }
    for (const auto& [bytes, count] : raw.entries()) {
        const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        if (!bv::isValidUtf8(data, bytes.size())) {
            *error = name + ": not UTF-8 text (the answer \"" + printable(bytes) + "\" has invalid bytes)";
            return false;
        }
        bv::Text answer = bv::BVNSString::trimmedString(bv::Text(bytes));
        if (!answer.empty()) addAnswer(tally, answer, count);
    }
    if (tally.totalCount() == 0) {
        *error = name + ": no answers";
        return false;
    }
    return true;
}

// Reads the answers of one column of a CSV file with a header; malformed lines are reported and skipped.
bool tallyColumn(const std::string& path, const std::string& column, bv::BVCountedStrings& tally,
                 std::string* error, bool* hadMalformedLines) {
    FirstSeenCounter<bv::Text> answers;
    bool ok = readCsvColumn(path, column, error, hadMalformedLines, [&](const bv::Text& value) {
        if (!value.empty()) answers.add(value);
    });
    if (!ok) return false;
    for (const auto& [answer, count] : answers.entries())
        addAnswer(tally, answer, count);
    return true;
}

struct Ranked {
    std::vector<ChartRow> rows;
    std::vector<bool> isOther;
};

// The popularity list (with the "other" aggregate when a rank folds the tail) as table rows.
Ranked rankAnswers(const bv::ValueCountedSet& set, const std::optional<int>& rank) {
    bv::ValueArray popularity = rank ? bv::BVNSCountedSet::objectsByPopularityWithRank(set, *rank)
                                     : bv::BVNSCountedSet::objectsByPopularity(set);
    bool folded = rank && *rank >= 0 && static_cast<std::size_t>(*rank) < set.size();
    Ranked ranked;
    for (std::size_t i = 0; i < popularity.size(); ++i) {
        const bv::ValueDictionary& entry = *popularity[i].dictionary();
        bool other = folded && i + 1 == popularity.size();
        ChartRow row;
        row.rank = other ? "" : std::to_string(i + 1);
        row.answer = entry.at(bv::Text("object")).description().toUtf8();
        row.count = entry.at(bv::Text("count")).number()->int64Value();
        ranked.rows.push_back(std::move(row));
        ranked.isOther.push_back(other);
    }
    return ranked;
}

std::vector<std::string> modeTexts(const bv::ValueDictionary& modes) {
    std::vector<std::string> texts;
    for (const bv::Value& mode : *modes.at(bv::Text("modes")).array())
        texts.push_back(mode.description().toUtf8());
    return texts;
}

std::int64_t numberAt(const bv::ValueDictionary& dictionary, const char* key) {
    return dictionary.at(bv::Text(key)).number()->int64Value();
}

std::string renderText(const bv::ValueCountedSet& set, const Ranked& ranked, std::uint64_t total,
                       const TallyOptions& options) {
    std::string out = std::to_string(total) + (total == 1 ? " answer, " : " answers, ") +
                      std::to_string(set.size()) + " distinct" +
                      (options.ignoreCase ? " (ignoring case)" : "") + "\n";
    if (set.empty()) return out;
    out += renderRankedTable(ranked.rows, static_cast<std::int64_t>(total), outputWidth(), !options.noChart);
    auto modes = bv::BVNSCountedSet::modeDictionary(set);
    std::vector<std::string> texts = modeTexts(*modes);
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    out += (texts.size() == 1 ? "Mode: " : "Modes: ") + joined + " (" +
           std::to_string(numberAt(*modes, "modeCount")) +
           (texts.size() == 1 ? " answers" : " answers each") + ", " +
           std::to_string(numberAt(*modes, "modePercent")) + "% of all answers)\n";
    return out;
}

std::string renderJson(const bv::ValueCountedSet& set, const Ranked& ranked, std::uint64_t total,
                       const TallyOptions& options) {
    nlohmann::ordered_json document;
    document["source"] = options.file == "-" ? "standard input" : options.file;
    if (!options.column.empty()) document["column"] = options.column;
    document["ignoreCase"] = options.ignoreCase;
    document["totalCount"] = total;
    document["distinctCount"] = set.size();
    auto modes = bv::BVNSCountedSet::modeDictionary(set);
    document["modes"] = modes ? nlohmann::json(modeTexts(*modes)) : nlohmann::json::array();
    document["modeCount"] = modes ? numberAt(*modes, "modeCount") : 0;
    document["modePercent"] = modes ? numberAt(*modes, "modePercent") : 0;
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < ranked.rows.size(); ++i) {
        const ChartRow& row = ranked.rows[i];
        nlohmann::ordered_json entry;
        entry["rank"] = ranked.isOther[i] ? nlohmann::ordered_json(nullptr) : nlohmann::ordered_json(i + 1);
        entry["answer"] = row.answer;
        entry["count"] = row.count;
        entry["share"] = total > 0 ? static_cast<double>(row.count) / static_cast<double>(total) : 0.0;
        if (ranked.isOther[i]) entry["other"] = true;
        entries.push_back(std::move(entry));
    }
    document["entries"] = std::move(entries);
    return document.dump(2) + "\n";
}

int runTally(const TallyOptions& options) {
    bv::BVCountedStrings tally(options.ignoreCase);
    std::string error;
    bool hadMalformedLines = false;
    bool ok = options.column.empty()
                  ? tallyLines(options.file, tally, &error)
                  : tallyColumn(options.file, options.column, tally, &error, &hadMalformedLines);
    if (!ok) {
        printError(error);
        return kExitFailure;
    }
    bv::ValueCountedSet set;
    for (const auto& entry : tally.countedStrings())
        set.add(bv::Value(entry->string()), entry->count());
    std::uint64_t total = tally.totalCount();
    Ranked ranked = rankAnswers(set, options.rank);
    std::string out =
        options.json ? renderJson(set, ranked, total, options) : renderText(set, ranked, total, options);
    if (!writeOutput(out)) return kExitSuccess;  // the reader went away (a closed pipe): end quietly
    return hadMalformedLines ? kExitFailure : kExitSuccess;
}

void installTally(CLI::App& app, int* exitCode) {
    auto options = std::make_shared<TallyOptions>();
    CLI::App* command =
        app.add_subcommand("tally", "Count answers and rank them by popularity, with a chart");
    command->add_option("FILE", options->file,
                        "Answers, one per line, or a CSV file with --column ('-': standard input)");
    command->add_option("--column", options->column,
                        "Tally this column of a CSV file whose first line is a header");
    command->add_flag("--ignore-case", options->ignoreCase,
                      "Answers that differ only in case are one answer (the first spelling wins)");
    command->add_option("--rank", options->rank,
                        "Keep the N most popular answers and fold the rest into \"other\"");
    command->add_flag("--json", options->json, "Print one JSON document instead of the table");
    command->add_flag("--no-chart", options->noChart, "Print the table without bars");
    command->footer("Exit status: 0 success, 1 unreadable input or malformed CSV lines, 2 wrong usage.");
    command->callback([options, exitCode] { *exitCode = runTally(*options); });
}

const RegisterCommand kTally("tally", installTally);

}  // namespace

}  // namespace brevant
