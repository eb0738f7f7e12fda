// The tally behind `brevant tally` and `brevant demo`: answers counted with BVCountedStrings (exact, or
// case-insensitive where the first spelling wins), reduced to the modes and a popularity ranking with the
// counted-set statistics, and printed as a table with a bar chart or as JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "Chart.hpp"
#include "CsvInput.hpp"

namespace brevant {

struct TallyOptions {
    std::string file = "-";  // answers one per line, or a CSV file with `column`; "-" is standard input
    std::string column;      // a CSV column to tally; empty for one answer per line
    bool ignoreCase = false;
    std::optional<int> rank;  // keep this many entries and fold the rest into "other"
    bool json = false;
    bool noChart = false;
    bool stopAtBlank = false;  // with `column`: a blank line ends the data on purpose
};

struct TallyResult {
    std::uint64_t total = 0;
    std::size_t distinct = 0;
    std::vector<std::string> modes;  // the most frequent answers, in first-added order
    std::int64_t modeCount = 0;      // the count of each mode, and their share of all answers in percent,
    std::int64_t modePercent = 0;    // in the 32-bit arithmetic of the counted-set statistics
    std::vector<ChartRow> rows;      // the popularity ranking, with the "other" aggregate last when folded
    std::vector<bool> isOther;
    CsvReadReport csv;  // with a column: the malformed lines skipped and the lines left after a blank line
};

// Counts and ranks the answers (exact plain answers straight from the packed first-stage table, the others
// through the library's counted strings and counted set, with the same results); false with a one-line
// message naming the file when they cannot be read.
bool tallyAnswers(const TallyOptions& options, TallyResult* result, std::string* error);

// The result as text: a totals line, the ranked table (with bars unless noChart) and the modes line.
std::string renderTallyText(const TallyResult& result, const TallyOptions& options, int width);

// The result as one JSON document: source, totals, modes, mode count and percentage, ranked entries.
std::string renderTallyJson(const TallyResult& result, const TallyOptions& options);

}  // namespace brevant
