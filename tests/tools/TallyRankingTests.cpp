// brevant tally ranks exact answers straight from its packed counting table; these tests hold that path
// to the library's counted strings and counted set (BREVANT_TALLY_THROUGH_LIBRARY=1) byte for byte, on
// generated answers with many ties, mixed case, padding, blank lines and rank cuts.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/ToolRun.hpp"

namespace {

// Answers drawn from a small pool so that counts tie often: case variants, white space (ASCII and
// not) around them, non-Latin letters, blank lines, and line ends with and without a return.
std::string generatedAnswers(unsigned seed) {
    static const char* const kPool[] = {
        "Paris",   "paris",  "PARIS",   " Paris ", "\tparis", "Lyon",       "lyon",       "Ünïcode",
        "ÜNÏCODE", "straße", "STRASSE", "Σίσυφος", "ΣΊΣΥΦΟΣ", "\u00A0Lyon", "Lyon\u3000", "a",
        "A",       "b",      "  ",      "",        "x y",     "X Y"};
    std::mt19937 random(seed);
    const std::size_t poolSize = 4 + random() % (std::size(kPool) - 4);
    std::string text = seed % 3 == 0 ? "\xEF\xBB\xBF" : "";
    const int lines = seed == 0 ? 20000 : 1 + static_cast<int>(random() % 400);  // seed 0: a long table
    for (int i = 0; i < lines; ++i) {
        text += kPool[random() % poolSize];
        if (random() % 5 == 0) text += std::to_string(random() % (seed == 0 ? 9000 : 7));  // a rarer tail
        text += random() % 4 == 0 ? "\r\n" : "\n";
    }
    return text;
}

class TallyRanking : public bvtest::ToolTest {};

TEST_F(TallyRanking, PackedRankingPrintsWhatTheLibraryComputes) {
    const char* const kOptions[] = {"",         "--no-chart",      "--json",        "--rank 0 --no-chart",
                                    "--rank 3", "--rank 2 --json", "--rank 100000", "--ignore-case --rank 2"};
    for (unsigned seed = 0; seed < 24; ++seed) {
        scratch_.write("answers.txt", generatedAnswers(seed));
        for (const char* options : kOptions) {
            const std::string command = std::string("brevant tally ") + options + " answers.txt";
            const bvtest::ToolRun packed = scratch_.run("COLUMNS=70 " + command);
            const bvtest::ToolRun library =
                scratch_.run("COLUMNS=70 BREVANT_TALLY_THROUGH_LIBRARY=1 " + command);
            EXPECT_EQ(packed.out, library.out) << "seed " << seed << ", options " << options;
            EXPECT_EQ(packed.err, library.err) << "seed " << seed << ", options " << options;
            EXPECT_EQ(packed.status, library.status) << "seed " << seed << ", options " << options;
        }
    }
}

}  // namespace
