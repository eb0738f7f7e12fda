// The brevant tool run as a person runs it: exact output, JSON documents and exit codes on fixture files.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "support/ToolRun.hpp"

namespace {

namespace fs = std::filesystem;

using bvtest::ToolRun;

std::string fixture(const std::string& name) {
    return std::string(BV_TEST_DATA_DIR) + "/tool/" + name;
}

// Runs brevant with the arguments (already shell-quoted where needed) and a fixed output width.
ToolRun brevant(const std::string& arguments, const std::string& input = "",
                const std::string& environment = "") {
    static const bvtest::ToolFolder scratch("brevant-tool-tests");
    return scratch.run(environment + "COLUMNS=80 brevant " + arguments, input);
}

TEST(BrevantTally, CountsTrimmedLinesAndRanksTiesInFirstSeenOrder) {
    ToolRun run = brevant("tally --no-chart " + fixture("answers.txt"));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "7 answers, 5 distinct\n"
              "Rank  Answer  Count   Share\n"
              "   1  paris       2   28.6%\n"
              "   2  Lyon        2   28.6%\n"
              "   3  Paris       1   14.3%\n"
              "   4  PARIS       1   14.3%\n"
              "   5  Nice        1   14.3%\n"
              "Modes: paris, Lyon (2 answers each, 57% of all answers)\n");
}

TEST(BrevantTally, IgnoreCaseKeepsTheFirstSpellingAndRankFoldsTheTail) {
    ToolRun run =
        brevant("tally --ignore-case --rank 1 --no-chart -", "Paris\nparis\n  PARIS  \nLyon\nNice\nLyon\n");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "6 answers, 3 distinct (ignoring case)\n"
              "Rank  Answer  Count   Share\n"
              "   1  Paris       3   50.0%\n"
              "      other       3   50.0%\n"
              "Mode: Paris (3 answers, 50% of all answers)\n");
}

TEST(BrevantTally, BarsAreScaledToTheLargestCountAndFitTheWidth) {
    ToolRun run = brevant("tally -", "a\na\na\na\nb\nb\nc\n");
    ASSERT_EQ(run.status, 0) << run.err;
    std::istringstream lines(run.out);
    std::string line;
    std::getline(lines, line);  // totals
    std::getline(lines, line);  // heading
    std::vector<std::size_t> barLengths;
    while (std::getline(lines, line) && line.rfind("Mode", 0) != 0) {
        std::size_t blocks = 0;
        for (std::size_t at = line.find("\u2588"); at != std::string::npos; at = line.find("\u2588", at + 1))
            ++blocks;
        barLengths.push_back(blocks);
    }
    ASSERT_EQ(barLengths.size(), 3u);
    EXPECT_GT(barLengths[0], barLengths[1]);
    EXPECT_EQ(barLengths[0] / 2, barLengths[1]);  // 4 against 2 answers: half the bar
    EXPECT_LE(barLengths[0], 80u);
}

TEST(BrevantTally, JsonHasTotalsModesAndRankedEntries) {
    ToolRun run = brevant("tally --json --ignore-case --rank 2 " + fixture("answers.txt"));
    ASSERT_EQ(run.status, 0) << run.err;
    auto document = nlohmann::json::parse(run.out);
    EXPECT_EQ(document["totalCount"], 7);
    EXPECT_EQ(document["distinctCount"], 3);
    EXPECT_EQ(document["modes"], nlohmann::json::array({"Paris"}));
    EXPECT_EQ(document["modeCount"], 4);
    EXPECT_EQ(document["modePercent"], 57);
    ASSERT_EQ(document["entries"].size(), 3u);
    EXPECT_EQ(document["entries"][0]["answer"], "Paris");
    EXPECT_EQ(document["entries"][1]["answer"], "Lyon");
    EXPECT_EQ(document["entries"][2]["answer"], "other");
    EXPECT_TRUE(document["entries"][2]["rank"].is_null());
    EXPECT_EQ(document["entries"][2]["count"], 1);
}

TEST(BrevantTally, CsvColumnReportsMalformedLinesByNumberAndGoesOn) {
    ToolRun run = brevant("tally --column Answer --ignore-case --json " + fixture("responses.csv"));
    EXPECT_EQ(run.status, 1);
    std::string file = fixture("responses.csv");
    EXPECT_EQ(run.err, "brevant: " + file + ": line 4 is malformed\nbrevant: " + file +
                           ": line 5 is malformed\nbrevant: " + file + ": line 7 is malformed\n");
    auto document = nlohmann::json::parse(run.out);
    EXPECT_EQ(document["totalCount"], 4);
    EXPECT_EQ(document["entries"][0]["answer"], "B");
    EXPECT_EQ(document["entries"][0]["count"], 2);
    EXPECT_EQ(document["entries"][1]["answer"], "A, or B");
}

TEST(BrevantTool, BadInputGivesOneLineNamingTheFileAndExitOne) {
    struct Case {
        std::string arguments;
        std::string message;
    };
    const std::string missing = fixture("no-such-file.txt");
    const std::string folder = std::string(BV_TEST_DATA_DIR) + "/tool";
    const std::vector<Case> cases{
        {"tally " + missing, "brevant: " + missing + ": no such file\n"},
        {"tally " + folder, "brevant: " + folder + ": is a folder, not a file\n"},
        {"tally " + fixture("empty.txt"), "brevant: " + fixture("empty.txt") + ": no answers\n"},
        {"tally " + fixture("invalid-utf8.txt"),
         "brevant: " + fixture("invalid-utf8.txt") +
             ": not UTF-8 text (the answer \"\\xFF\\xFE bad\" has invalid bytes)\n"},
        {"tally --column Missing " + fixture("responses.csv"),
         "brevant: " + fixture("responses.csv") +
             ": no column named \"Missing\" (the columns are: Name, Answer, Score)\n"},
        {"tally --column Answer " + fixture("empty.txt"),
         "brevant: " + fixture("empty.txt") + ": the file is empty\n"},
        {"tally --column Answer " + fixture("header-only.csv"),
         "brevant: " + fixture("header-only.csv") + ": no answers\n"},
    };
    for (const Case& test : cases) {
        ToolRun run = brevant(test.arguments);
        EXPECT_EQ(run.status, 1) << test.arguments;
        EXPECT_EQ(run.err, test.message) << test.arguments;
        EXPECT_EQ(run.out, "") << test.arguments;
    }
}

TEST(BrevantTool, UsageErrorsExitTwo) {
    for (const std::string arguments :
         {"", "no-such-command", "tally --rank", "tally --rank x -", "tally --rank -1 -", "tally a b c"}) {
        ToolRun run = brevant(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_FALSE(run.err.empty()) << arguments;
    }
    ToolRun help = brevant("tally --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--ignore-case"), std::string::npos);
}

TEST(BrevantDemo, RunsTheMainRoadsAndLeavesNothingBehind) {
    const bvtest::ScratchFolder scratch("brevant-demo-test");
    ToolRun run = brevant("demo", "", "TMPDIR='" + scratch.root().string() + "' ");
    EXPECT_EQ(run.status, 0) << run.err;
    for (const char* expected :
         {"32 students imported (7A: 22, 7B: 10)", "line 19 is malformed", "type code 66: multiple choice",
          "type code 129: fill in the blank", "Mode: Canberra (23 answers, 71% of all answers)",
          "read them back: 7 rows."}) {
        EXPECT_NE(run.out.find(expected), std::string::npos) << expected;
    }
    EXPECT_NE(run.err.find("class-list.csv: line 19 is malformed"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(scratch.root()));  // the temporary folder is gone
}

TEST(BrevantBase36, WritesAndReadsBase36AndRejectsOtherValues) {
    ToolRun run = brevant("base36 18446744073709551615 35 36 0");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "3W5E11264SGSF\nZ\n10\n\n");  // zero is written as nothing
    run = brevant("base36 --decode 3W5E11264SGSF zz 10 ''");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "18446744073709551615\n1295\n36\n0\n");  // round-trips the encoder's range
    for (const char* arguments :
         {"base36 18446744073709551616", "base36 1 -1", "base36 0x10", "base36 ' 1'", "base36 ''", "base36",
          "base36 -d 3W5E11264SGSG", "base36 -d 10000000000000", "base36 -d 'a b'"}) {
        run = brevant(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
    }
}

TEST(BrevantQcode, DescribesEachCodeOrRejectsTheWholeLine) {
    ToolRun run = brevant("qcode 164 0x42 -5");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(
        run.out,
        "164 (0xA4): families: sequence; scorable: yes; advanced answer: no; simple sequence: 36 (0x24)\n"
        "66 (0x42): families: multiple choice, lettered multiple choice; scorable: yes; advanced answer: "
        "yes; "
        "simple sequence: unchanged\n"
        "-5: families: none; scorable: yes; advanced answer: no; simple sequence: unchanged\n");
    for (const char* arguments : {"qcode 16 sixteen", "qcode 0x", "qcode 2147483648", "qcode 16x", "qcode"}) {
        run = brevant(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
    }
    EXPECT_EQ(brevant("qcode -2147483648").status, 0);
}

TEST(BrevantXmlValues, PrintsTheWantedValuesInTheGivenOrderAndStopsEarly) {
    const bvtest::ScratchFolder scratch("bv-xml-values");
    const std::string path =
        scratch.write("v.xml", "<r><title>A\tB\\C</title><note>one\ntwo</note><version>1.2</version></r>");
    ToolRun run = brevant("xml-values " + path + " version missing title note version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "version\t1.2\ntitle\tA\\tB\\\\C\nnote\tone\\ntwo\n");

    // A fault after the last wanted value does not matter; one before a missing name does.
    scratch.write("v.xml", "<r><a>1</a><b>2</b><broken</r>");
    run = brevant("xml-values " + path + " a b");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "a\t1\nb\t2\n");
    run = brevant("xml-values " + path + " a c");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "a\t1\n");
    fs::remove(path);

    run = brevant("xml-values " + path + " version");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(brevant("xml-values").status, 2);
}

}  // namespace
