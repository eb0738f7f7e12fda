// brevant tally: counts answers (one per line, or one column of a CSV class list), then reduces them to
// the modes and a popularity ranking, printed as a table with a bar chart or as JSON.
#include <limits>

#include "Command.hpp"
#include "Tally.hpp"

namespace brevant {

namespace {

int runTally(const TallyOptions& options) {
    TallyResult result;
    std::string error;
    if (!tallyAnswers(options, &result, &error)) {
        printError(error);
        return kExitFailure;
    }
    std::string out =
        options.json ? renderTallyJson(result, options) : renderTallyText(result, options, outputWidth());
    writeOutput(out);  // a failed write ends the run as every subcommand's does (see Command.hpp)
    return result.csv.failed() ? kExitFailure : kExitSuccess;
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
    command
        ->add_option("--rank", options->rank,
                     "Keep the N most popular answers and fold the rest into \"other\"")
        ->check(CLI::Range(0, std::numeric_limits<int>::max()));
    command->add_flag("--json", options->json, "Print one JSON document instead of the table");
    command->add_flag("--no-chart", options->noChart, "Print the table without bars");
    command->add_flag("--stop-at-blank", options->stopAtBlank,
                      "With --column: a blank line ends the data on purpose (lines after it are ignored)");
    command->footer(
        "Exit status: 0 success, 1 unreadable input, no answers, malformed CSV lines or lines left after a "
        "blank line, 2 wrong usage.");
    command->callback([options, exitCode] { *exitCode = runTally(*options); });
}

const RegisterCommand kTally("tally", installTally);

}  // namespace

}  // namespace brevant
