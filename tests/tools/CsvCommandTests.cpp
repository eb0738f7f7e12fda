// brevant csv, base64 and hex run as a person runs them: output, standard error and exit codes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

namespace {

struct ToolRun {
    std::string output;
    std::string errors;
    int exitCode = -1;
};

#ifdef BV_BREVANT_PATH
const std::string kBrevant = BV_BREVANT_PATH;
#else
const std::string kBrevant;
#endif

class BrevantTool : public ::testing::Test {
  protected:
    void SetUp() override {
#ifndef BV_BREVANT_PATH
        GTEST_SKIP() << "the brevant tool is not built";
#endif
        std::string pattern = (fs::temp_directory_path() / "brevant-csv-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    void TearDown() override {
        if (!folder_.empty()) fs::remove_all(folder_);
    }

    std::string write(const std::string& name, const std::string& bytes) const {
        const fs::path path = folder_ / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

    // Runs "brevant ARGUMENTS" through the shell (so pipes may be used in ARGUMENTS).
    [[nodiscard]] ToolRun run(const std::string& arguments) const {
        ToolRun result;
        const std::string errors = (folder_ / "stderr.txt").string();
        const std::string command =
            "cd '" + folder_.string() + "' && " + kBrevant + " " + arguments + " 2>'" + errors + "'";
        FILE* pipe = popen(command.c_str(), "r");
        if (pipe == nullptr) return result;
        char buffer[4096];
        while (std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe))
            result.output.append(buffer, got);
        const int status = pclose(pipe);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::ifstream in(errors, std::ios::binary);
        result.errors.assign(std::istreambuf_iterator<char>(in), {});
        return result;
    }

    fs::path folder_;
};

}  // namespace

TEST_F(BrevantTool, CsvPrintsATableJsonOrOneColumn) {
    const std::string file = write("class.csv",
                                   "Name,Age,Note\r\nAnn,12,\"likes \"\"maths\"\", a lot\"\r\n"
                                   "\xC3\x89mile,9,\r\n");
    EXPECT_EQ(run("csv class.csv --header").output,
              "Name   Age  Note\n"
              "-----  ---  --------------------\n"
              "Ann    12   likes \"maths\", a lot\n"
              "\xC3\x89mile  9\n");
    ToolRun json = run("csv class.csv --header --json");
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_NE(json.output.find("\"Note\": \"likes \\\"maths\\\", a lot\""), std::string::npos) << json.output;
    EXPECT_EQ(run("csv class.csv --header --column Age").output, "12\n9\n");
    EXPECT_EQ(run("csv class.csv --json").output.substr(0, 14), "[\n  [\n    \"Nam");
    // With another separator each line is one unquoted field, whose doubled quotes still collapse.
    EXPECT_EQ(run("csv class.csv --separator ';'").output,
              "Name,Age,Note\nAnn,12,\"likes \"maths\", a lot\"\n"
              "\xC3\x89mile,9,\n");
}

TEST_F(BrevantTool, CsvReportsEachMalformedLineAndGoesOn) {
    write("bad.csv", "Name,Age\nAnn,12\nBob,13,x\n\"Cy\"z,14\n\"Dee,15\nEd,16\n\nafter,blank\n");
    ToolRun result = run("csv bad.csv --header --column Name");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "Ann\nEd\n");  // the blank line ends the data
    EXPECT_EQ(result.errors,
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
        EXPECT_EQ(result.exitCode, exitCode) << arguments;
        EXPECT_EQ(result.output, "") << arguments;
        EXPECT_EQ(result.errors.rfind(errorStart, 0), 0u) << arguments << result.errors;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1)
            << arguments << result.errors;
    }
}

TEST_F(BrevantTool, Base64AndHexRoundTripEveryByte) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += static_cast<char>(i * 37 % 256);
    write("bytes.bin", bytes);
    EXPECT_EQ(run("base64 encode bytes.bin | " + kBrevant + " base64 decode").output, bytes);
    EXPECT_EQ(run("base64 encode --lines bytes.bin | " + kBrevant + " base64 decode -").output, bytes);
    EXPECT_EQ(run("hex encode < bytes.bin | " + kBrevant + " hex decode --strict").output, bytes);
    EXPECT_EQ(run("hex encode --lower bytes.bin").output.substr(0, 8), "00254a6f");
}

TEST_F(BrevantTool, DecodersFollowTheLibrarysRules) {
    EXPECT_EQ(run("base64 decode < " + write("padded.txt", "QUI=\n")).output, "AB");
    EXPECT_EQ(run("base64 decode < " + write("unpadded.txt", "QUJDQQ")).output, "ABC");
    EXPECT_EQ(run("hex decode " + write("spaced.txt", "0a-FF 1\n")).output, "\x0A\xFF");
    ToolRun strict = run("hex decode --strict " + write("odd.txt", "0aF\n"));
    EXPECT_EQ(strict.exitCode, 1);
    EXPECT_EQ(strict.output, "\n");  // the bytes before the fault are already written
    EXPECT_EQ(run("base64 decode " + write("accent.txt", "QUJD\xC3\xA9")).exitCode, 1);
    EXPECT_EQ(run("hex sideways").exitCode, 2);
}
