// brevant md5 and uuid run as a person runs them: md5sum -c accepts the digests, errors name the file.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

namespace fs = std::filesystem;

namespace {

struct ToolRun {
    std::string output;
    std::string errors;
    int exitCode = -1;
};

class Md5Uuid : public ::testing::Test {
  protected:
    void SetUp() override {
#ifndef BV_BREVANT_PATH
        GTEST_SKIP() << "the brevant tool is not built";
#else
        std::string pattern = (fs::temp_directory_path() / "brevant-md5-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
#endif
    }
    void TearDown() override {
        if (!folder_.empty()) fs::remove_all(folder_);
    }

    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }

    // Runs a shell command in the folder; "brevant" names the tool.
    [[nodiscard]] ToolRun shell(const std::string& command) const {
        ToolRun result;
#ifdef BV_BREVANT_PATH
        const std::string errors = (folder_ / "stderr.txt").string();
        const std::string line = "cd '" + folder_.string() +
                                 "' && brevant() { " BV_BREVANT_PATH " \"$@\"; }; " + command + " 2>'" +
                                 errors + "'";
        FILE* pipe = popen(line.c_str(), "r");
        char buffer[4096];
        while (std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe))
            result.output.append(buffer, got);
        const int status = pclose(pipe);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::ifstream in(errors, std::ios::binary);
        result.errors.assign(std::istreambuf_iterator<char>(in), {});
#endif
        return result;
    }

    fs::path folder_;
};

TEST_F(Md5Uuid, Md5OutputPassesMd5sumCheckAndMatchesItByteForByte) {
    write("empty", "");
    write("a b.txt", "abc");
    write("odd\\name", std::string(3 << 20, 'x'));  // several read pieces; a name md5sum escapes
    const std::string files = "empty 'a b.txt' 'odd\\name'";
    const ToolRun ours = shell("brevant md5 " + files);
    EXPECT_EQ(ours.exitCode, 0) << ours.errors;
    EXPECT_EQ(ours.output, shell("md5sum " + files).output);
    EXPECT_EQ(shell("brevant md5 " + files + " > sums && md5sum -c sums").exitCode, 0);
    EXPECT_EQ(shell("printf abc | brevant md5 -").output, "900150983cd24fb0d6963f7d28e17f72  -\n");
    EXPECT_EQ(
        shell("brevant md5 --json 'a b.txt'").output,
        "[\n  {\n    \"file\": \"a b.txt\",\n    \"md5\": \"900150983cd24fb0d6963f7d28e17f72\"\n  }\n]\n");
}

TEST_F(Md5Uuid, Md5ReportsAnUnreadableFileAndGoesOn) {
    write("a", "a");
    fs::create_directory(folder_ / "folder");
    const ToolRun run = shell("brevant md5 missing folder a");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "0cc175b9c0f1b6a831c399e269772661  a\n");
    EXPECT_EQ(run.errors, "brevant: missing: No such file or directory\nbrevant: folder: Is a directory\n");
    EXPECT_EQ(shell("brevant md5 --bogus").exitCode, 2);
}

TEST_F(Md5Uuid, UuidPrintsLowerCaseWithOrWithoutBraces) {
    const std::string hex = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
    EXPECT_TRUE(std::regex_match(shell("brevant uuid").output, std::regex(hex + "\n")));
    EXPECT_TRUE(
        std::regex_match(shell("brevant uuid --braces -n 2").output, std::regex("(\\{" + hex + "\\}\n){2}")));
    EXPECT_EQ(shell("brevant uuid -n 0").exitCode, 2);
}

}  // namespace
