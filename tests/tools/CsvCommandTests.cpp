// brevant csv, base64 and hex run as a person runs them: output, standard error and exit codes.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "support/ToolRun.hpp"

namespace fs = std::filesystem;

namespace {

using bvtest::ToolRun;

const std::string kBrevant = bvtest::brevantPath();

class BrevantTool : public bvtest::ToolTest {
  protected:
    std::string write(const std::string& name, const std::string& bytes) const {
        return scratch_.write(name, bytes);
    }
    // Runs "brevant ARGUMENTS" through the shell (so pipes may be used in ARGUMENTS).
    [[nodiscard]] ToolRun run(const std::string& arguments) const {
        return scratch_.run("brevant " + arguments);
    }
};

}  // namespace

TEST_F(BrevantTool, CsvPrintsATableJsonOrOneColumn) {
    const std::string file = write("class.csv",
                                   "Name,Age,Note\r\nAnn,12,\"likes \"\"maths\"\", a lot\"\r\n"
                                   "\xC3\x89mile,9,\r\n");
    EXPECT_EQ(run("csv class.csv --header").out,
              "Name   Age  Note\n"
              "-----  ---  --------------------\n"
              "Ann    12   likes \"maths\", a lot\n"
              "\xC3\x89mile  9\n");
    ToolRun json = run("csv class.csv --header --json");
    EXPECT_EQ(json.status, 0);
    EXPECT_NE(json.out.find("\"Note\": \"likes \\\"maths\\\", a lot\""), std::string::npos) << json.out;
    EXPECT_EQ(run("csv class.csv --header --column Age").out, "12\n9\n");
    EXPECT_EQ(run("csv class.csv --json").out.substr(0, 14), "[\n  [\n    \"Nam");
    // With another separator each line is one unquoted field, whose doubled quotes still collapse.
    EXPECT_EQ(run("csv class.csv --separator ';'").out,
              "Name,Age,Note\nAnn,12,\"likes \"maths\", a lot\"\n"
              "\xC3\x89mile,9,\n");
}

TEST_F(BrevantTool, CsvReportsEachMalformedLineAndGoesOn) {
    write("bad.csv", "Name,Age\nAnn,12\nBob,13,x\n\"Cy\"z,14\n\"Dee,15\nEd,16\n\nafter,blank\n");
    ToolRun result = run("csv bad.csv --header --column Name");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Ann\nEd\n");  // the blank line ends the data
    EXPECT_EQ(result.err,
              "brevant: bad.csv: line 3 is malformed\n"
              "brevant: bad.csv: line 4 is malformed\n"
              "brevant: bad.csv: line 5 is malformed\n"
              "brevant: bad.csv: line 7 is blank, which ends the data; the 1 line after it was not read "
              "(--stop-at-blank stops there on purpose)\n");
}

TEST_F(BrevantTool, CsvRefusesWhatItCannotRead) {
    write("open-header.csv", "\"Name,Age\nAnn,12\n");
    write("class.csv", "Name,Age\nAnn,12\n");
    // File failures read "brevant: FILE: problem", like every other subcommand's.
    const struct {
        const char* arguments;
        int exitCode;
        const char* errorStart;
    } cases[] = {{"csv missing.csv", 1, "brevant: missing.csv: "},
                 {"csv .", 1, "brevant: .: "},
                 {"csv open-header.csv --header", 1, "brevant: open-header.csv: "},
                 {"csv class.csv --header --column Height", 1, "brevant: class.csv: no column"},
                 {"csv class.csv --column Age", 2, "brevant: csv: "},
                 {"csv class.csv --separator ';;'", 2, "brevant: csv: "},
                 {"csv class.csv --separator tab", 2, "brevant: csv: "}};
    for (const auto& [arguments, exitCode, errorStart] : cases) {
        ToolRun result = run(arguments);
        EXPECT_EQ(result.status, exitCode) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err.rfind(errorStart, 0), 0u) << arguments << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << arguments << result.err;
    }
}

TEST_F(BrevantTool, Base64AndHexRoundTripEveryByte) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += static_cast<char>(i * 37 % 256);
    write("bytes.bin", bytes);
    EXPECT_EQ(run("base64 encode bytes.bin | " + kBrevant + " base64 decode").out, bytes);
    EXPECT_EQ(run("base64 encode --lines bytes.bin | " + kBrevant + " base64 decode -").out, bytes);
    EXPECT_EQ(run("hex encode < bytes.bin | " + kBrevant + " hex decode --strict").out, bytes);
    EXPECT_EQ(run("hex encode --lower bytes.bin").out.substr(0, 8), "00254a6f");
}

TEST_F(BrevantTool, DecodersFollowTheLibrarysRules) {
    EXPECT_EQ(run("base64 decode < " + write("padded.txt", "QUI=\n")).out, "AB");
    EXPECT_EQ(run("base64 decode < " + write("unpadded.txt", "QUJDQQ")).out, "ABC");
    EXPECT_EQ(run("hex decode " + write("spaced.txt", "0a-FF 1\n")).out, "\x0A\xFF");
    ToolRun strict = run("hex decode --strict " + write("odd.txt", "0aF\n"));
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.out, "\n");  // the bytes before the fault are already written
    EXPECT_EQ(run("base64 decode " + write("accent.txt", "QUJD\xC3\xA9")).status, 1);
    EXPECT_EQ(run("hex sideways").status, 2);
}
