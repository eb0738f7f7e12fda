// brevant tally ranks exact answers straight from its packed counting table; these tests hold that path
// to the library's counted strings and counted set (BREVANT_TALLY_THROUGH_LIBRARY=1) byte for byte, on
// generated answers with many ties, mixed case, padding, blank lines and rank cuts.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

// Runs the tool through the shell and returns its exit status and standard output.
std::pair<int, std::string> run(const std::string& command) {
    std::string out;
    FILE* pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe))
        out.append(buffer.data(), got);
    const int status = ::pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

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

TEST(TallyRanking, PackedRankingPrintsWhatTheLibraryComputes) {
    const fs::path file = fs::temp_directory_path() / ("brevant-tally-" + std::to_string(::getpid()));
    const std::string tool = BV_BREVANT_PATH;
    const char* const kOptions[] = {"",         "--no-chart",      "--json",        "--rank 0 --no-chart",
                                    "--rank 3", "--rank 2 --json", "--rank 100000", "--ignore-case --rank 2"};
    for (unsigned seed = 0; seed < 24; ++seed) {
        std::ofstream(file, std::ios::binary) << generatedAnswers(seed);
        for (const char* options : kOptions) {
            const std::string command = std::string(options) + " '" + file.string() + "' 2>&1";
            const auto packed = run("COLUMNS=70 '" + tool + "' tally " + command);
            const auto library =
                run("COLUMNS=70 BREVANT_TALLY_THROUGH_LIBRARY=1 '" + tool + "' tally " + command);
            EXPECT_EQ(packed, library) << "seed " << seed << ", options " << options;
        }
    }
    fs::remove(file);
}

}  // namespace
