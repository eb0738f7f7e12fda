// The brevant tool on untrusted and unusual inputs and outputs: early blank lines, failed writes, control
// characters, standard input and FIFOs, byte-order marks, odd line ends, repeated header names, and the
// streaming coders checked byte for byte against the library's whole-input coders.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "support/ToolRun.hpp"

#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/Base64Encoding.hpp"

namespace fs = std::filesystem;

namespace {

using bvtest::ToolRun;

class ToolInputOutput : public bvtest::ToolTest {
  protected:
    std::string write(const std::string& name, const std::string& bytes) const {
        return scratch_.write(name, bytes);
    }
    std::string read(const std::string& name) const { return scratch_.read(name); }
    // Runs a bash command line in the folder; "brevant" in it is the tool. The exit status is the
    // pipeline's first command's, so "brevant ... | head -1" reports brevant's.
    ToolRun shell(const std::string& line) const { return scratch_.run(line, "", 0); }

    const fs::path& folder_ = scratch_.root();
};

TEST_F(ToolInputOutput, BlankLineEndingTheDataEarlyIsReportedUnlessAskedFor) {
    write("blank.csv", "Name,Answer\nAnn,Paris\n\nBob,Lyon\n\n");
    write("trailing.csv", "Name,Answer\nAnn,Paris\n\n \n");
    const std::string message =
        "brevant: blank.csv: line 3 is blank, which ends the data; the 1 line after it was not read "
        "(--stop-at-blank stops there on purpose)\n";
    const struct {
        const char* command;
        int status;
        bool reported;
    } cases[] = {
        {"brevant tally --column Answer --json blank.csv", 1, true},
        {"brevant tally --column Answer --json --stop-at-blank blank.csv", 0, false},
        {"brevant csv --header --column Answer blank.csv", 1, true},
        {"brevant csv --header --json --stop-at-blank blank.csv", 0, false},
        {"brevant csv --header --column Answer trailing.csv", 0, false},  // only blank lines follow
    };
    for (const auto& test : cases) {
        ToolRun run = shell(test.command);
        EXPECT_EQ(run.status, test.status) << test.command;
        EXPECT_EQ(run.err, test.reported ? message : "") << test.command;
        EXPECT_NE(run.out.find("Paris"), std::string::npos) << test.command;  // what was read is printed
    }
}

TEST_F(ToolInputOutput, WriteFailuresEndTheSameWayInEverySubcommand) {
    write("answers.txt", "a\nb\n");
    write("class.csv", "Name\nAnn\n");
    std::string big;
    for (int i = 0; i < 40000; ++i)
        big += std::to_string(i) + ",x\n";
    write("big.csv", "Number,Letter\n" + big);
    std::string manyValues, manyCodes;
    for (int i = 0; i < 20000; ++i) {
        manyValues += " " + std::to_string(i * 7919ULL * 1000003ULL);
        manyCodes += " " + std::to_string(i);
    }
    write("doc.xml", "<r><a>" + std::string(1 << 20, 'v') + "</a></r>");
    const std::vector<std::string> small{"tally answers.txt",
                                         "csv class.csv",
                                         "base36 35",
                                         "base36 -d z",
                                         "qcode 66",
                                         "xml-values doc.xml a",
                                         "base64 encode answers.txt",
                                         "hex encode answers.txt"};
    for (const std::string& command : small) {
        ToolRun run = shell("brevant " + command + " > /dev/full");
        EXPECT_EQ(run.status, 1) << command;
        EXPECT_EQ(run.err, "brevant: write error: No space left on device\n") << command;
    }
    // A reader that goes away after one line: status 0 and nothing on standard error.
    const std::vector<std::string> large{"csv --header big.csv",  "csv --header --json big.csv",
                                         "base64 encode big.csv", "hex encode big.csv",
                                         "base36" + manyValues,   "qcode" + manyCodes,
                                         "tally big.csv",         "xml-values doc.xml a"};
    for (const std::string& command : large) {
        ToolRun run = shell("brevant " + command + " | head -c 1");
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_EQ(run.err, "") << command;
    }
}

TEST_F(ToolInputOutput, TablesEscapeControlCharactersAndJsonKeepsThem) {
    const std::string hostile = "x\x1B]0;title\a\x1B[2Jy\rz\xC2\x9B";
    write("answers.txt", hostile + "\n" + hostile + "\n");
    write("class.csv", "Name\n" + hostile + "\n");
    const std::string shown = "x\\e]0;title\\u0007\\e[2Jy\\rz\\u009B";
    for (const char* command : {"brevant tally answers.txt", "brevant csv --header class.csv",
                                "brevant csv --header --column Name class.csv"}) {
        ToolRun run = shell(command);
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_NE(run.out.find(shown), std::string::npos) << command << run.out;
        EXPECT_EQ(run.out.find('\x1B'), std::string::npos) << command;
    }
    EXPECT_EQ(nlohmann::json::parse(shell("brevant tally --json answers.txt").out)["modes"][0], hostile);
    EXPECT_EQ(nlohmann::json::parse(shell("brevant csv --header --json class.csv").out)[0]["Name"], hostile);
}

TEST_F(ToolInputOutput, StandardInputPipesAndFifosAreReadLikeFiles) {
    write("class.csv", "Name,Answer\nAnn,Paris\nBob,Paris\n");
    ::mkfifo((folder_ / "fifo").c_str(), 0600);
    const char* commands[] = {
        "brevant tally --column Answer --no-chart - < class.csv",
        "cat class.csv | brevant tally --column Answer --no-chart /dev/stdin",
        "(cat class.csv > fifo &); brevant tally --column Answer --no-chart fifo",
        "cat class.csv | brevant csv --header --column Answer - | brevant tally --no-chart /dev/stdin",
    };
    for (const char* command : commands) {
        ToolRun run = shell(command);
        EXPECT_EQ(run.status, 0) << command << run.err;
        EXPECT_EQ(run.out.substr(0, 21), "2 answers, 1 distinct") << command << run.err;
    }
    EXPECT_EQ(shell("printf hi | brevant base64 encode /dev/stdin").out, "aGk=\n");
}

TEST_F(ToolInputOutput, ByteOrderMarksAndReturnOnlyLineEndsSplitAsCsvDoes) {
    // Every file holds Paris twice and Lyon once.
    write("bom.txt", "\xEF\xBB\xBFParis\nParis\nLyon\n");
    write("returns.txt", "Paris\rParis\rLyon");
    write("bom.csv",
          "\xEF\xBB\xBF"
          "Answer\rParis\rParis\rLyon\r");
    write("mixed.csv", "Answer\r\nParis\r\nParis\r\nLyon\nstill line 4\r\n");  // "\n" alone stays inside
    for (const char* command :
         {"brevant tally --json bom.txt", "brevant tally --json returns.txt",
          "brevant tally --json --column Answer bom.csv", "brevant tally --json --column Answer mixed.csv"}) {
        ToolRun run = shell(command);
        ASSERT_EQ(run.status, 0) << command << run.err;
        auto document = nlohmann::json::parse(run.out);
        EXPECT_EQ(document["entries"][0]["answer"], "Paris") << command;
        EXPECT_EQ(document["entries"][0]["count"], 2) << command;
    }
    EXPECT_EQ(shell("brevant csv --header --column Answer mixed.csv").out,
              "Paris\nParis\nLyon\\nstill line 4\n");
}

TEST_F(ToolInputOutput, RepeatedHeaderNamesKeepEveryValueInJson) {
    write("repeated.csv", "a,a,b,a (2),a\n1,2,3,4,5\n");
    auto record = nlohmann::ordered_json::parse(shell("brevant csv --header --json repeated.csv").out)[0];
    EXPECT_EQ(record.dump(), R"j({"a":"1","a (3)":"2","b":"3","a (2)":"4","a (4)":"5"})j");
}

// The streaming coders against the library's whole-input coders, on sizes around the pieces' edges.
TEST_F(ToolInputOutput, StreamingCodersMatchTheLibraryOnEverySize) {
    std::mt19937 random(20261123);
    auto bytes = [&](std::size_t size, const std::string& alphabet) {
        std::string out(size, '\0');
        for (char& c : out)
            c = alphabet.empty() ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
        return out;
    };
    const std::string base64Text = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/\r\n -";
    const std::string hexText = "0123456789abcdefABCDEF \n:xz";
    for (std::size_t size : {0UL, 1UL, 2UL, 3UL, 47UL, 49UL, 786431UL, 786432UL, 786434UL, 1048575UL,
                             1048576UL, 1048577UL, 2097155UL}) {
        const std::string raw = bytes(size, "");
        const bv::ByteData data(raw.begin(), raw.end());
        write("raw", raw);
        for (bool lines : {false, true}) {
            const bv::Text expected = bv::BVNSData::encodedBase64StringWithNewLines(data, lines);
            EXPECT_EQ(shell(std::string("brevant base64 encode raw") + (lines ? " --lines" : "")).out,
                      expected.toUtf8() + "\n")
                << size << (lines ? " lines" : "");
        }
        EXPECT_EQ(shell("brevant hex encode --lower raw").out,
                  bv::BVNSData::hexStringRepresentationUppercase(data, false).toUtf8() + "\n")
            << size;

        std::string text = bytes(size, base64Text);
        if (size % 3 == 1) text.insert(text.size() / 2, size % 2 == 0 ? "=" : "A=");  // the data ends early
        write("text", text);
        const bv::ByteData decoded = bv::Base64Encoding::dataWithBase64EncodedString(bv::Text(text));
        EXPECT_EQ(shell("brevant base64 decode text").out, std::string(decoded.begin(), decoded.end()))
            << size;

        const std::string hex = bytes(size, hexText);
        write("hex", hex);
        const auto lenient = bv::BVNSData::initWithHexStringIgnoreOtherCharacters(bv::Text(hex), true);
        EXPECT_EQ(shell("brevant hex decode hex").out, std::string(lenient->begin(), lenient->end())) << size;
        const std::string digits = bytes(size - size % 2, "0123456789abcdefABCDEF") + "\r\n";
        write("digits", digits);
        const auto strict = bv::BVNSData::initWithHexStringIgnoreOtherCharacters(
            bv::Text(digits.substr(0, digits.size() - 2)), false);
        EXPECT_EQ(shell("brevant hex decode --strict digits").out,
                  std::string(strict->begin(), strict->end()))
            << size;
    }
    // A group cut by the first piece's end and finished by "=" early in the next piece.
    const std::string cut = "\n" + std::string(1048575, 'A') + "AI=";
    write("cut", cut);
    const bv::ByteData decoded = bv::Base64Encoding::dataWithBase64EncodedString(bv::Text(cut));
    EXPECT_EQ(shell("brevant base64 decode cut").out, std::string(decoded.begin(), decoded.end()));
}

}  // namespace
