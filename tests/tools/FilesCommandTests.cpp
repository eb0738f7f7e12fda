// brevant unpack and brevant paths run as a person runs them, on archives made with the real zip tool.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
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

class FilesCommands : public ::testing::Test {
  protected:
    void SetUp() override {
#ifndef BV_BREVANT_PATH
        GTEST_SKIP() << "the brevant tool is not built";
#endif
        std::string pattern = (fs::temp_directory_path() / "brevant-files-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        fs::create_directory(folder_ / "support");  // no 7-Zip tool of the suite: the system's unzip
        ::setenv("BV_LOCAL_APPLICATION_SUPPORT", (folder_ / "support").c_str(), 1);
    }
    void TearDown() override {
        ::unsetenv("BV_LOCAL_APPLICATION_SUPPORT");
        if (!folder_.empty()) fs::remove_all(folder_);
    }

    void write(const std::string& name, const std::string& bytes) const {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }

    // Runs a shell command line in the test's folder; "brevant" stands for the tool.
    [[nodiscard]] ToolRun run(const std::string& line) const {
#ifdef BV_BREVANT_PATH
        const std::string brevant = BV_BREVANT_PATH;
#else
        const std::string brevant;
#endif
        ToolRun result;
        const std::string errors = (folder_ / "stderr.txt").string();
        const std::string command = "cd '" + folder_.string() + "' && brevant() { '" + brevant +
                                    "' \"$@\"; }; " + line + " 2>'" + errors + "'";
        FILE* pipe = popen(command.c_str(), "r");
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

TEST_F(FilesCommands, UnpackRebuildsBackslashNamesAndKeepsEverythingInside) {
    write("w/Media\\Images\\a.png", "png");
    write("w/..\\climb.txt", "climb");
    write("w/top.txt", "top");
    ASSERT_EQ(run("cd w && zip -q ../win.zip 'Media\\Images\\a.png' '..\\climb.txt' top.txt").exitCode, 0);

    ToolRun unpack = run("brevant unpack win.zip out --windows-paths");
    EXPECT_EQ(unpack.output, "Media/Images/a.png\n");
    EXPECT_EQ(unpack.exitCode, 1);  // one entry would have left the folder
    EXPECT_NE(unpack.errors.find("brevant: out: Skipped \"..\\climb.txt\""), std::string::npos)
        << unpack.errors;
    EXPECT_TRUE(fs::exists(folder_ / "out/Media/Images/a.png"));
    EXPECT_TRUE(fs::exists(folder_ / "out/..\\climb.txt"));
    EXPECT_FALSE(fs::exists(folder_ / "climb.txt"));

    ToolRun refused = run("brevant unpack win.zip out");
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.errors,
              "brevant: out: not empty; unpacking empties it first, so pass --replace to allow that\n");
    EXPECT_TRUE(fs::exists(folder_ / "out/Media/Images/a.png"));

    ToolRun json = run("brevant unpack - out --replace --windows-paths --json < win.zip");
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_NE(json.output.find("\"to\": \"Media/Images/a.png\""), std::string::npos) << json.output;
    EXPECT_NE(json.output.find("\"notRebuilt\": [\n    \"..\\\\climb.txt\""), std::string::npos)
        << json.output;

    EXPECT_EQ(run("brevant unpack missing.zip out2").exitCode, 1);
    EXPECT_EQ(run("brevant unpack win.zip").exitCode, 2);
    write("plain/top.txt", "not an archive");
    EXPECT_EQ(run("brevant unpack plain/top.txt plain --replace").errors,
              "brevant: plain/top.txt: lies inside plain, which unpacking empties first\n");
}

TEST_F(FilesCommands, PathsConvertsEachLineInOrder) {
    write("list.txt", "C:\\Quiz\\Media\\a.png\r\n\\Quiz\\b.xml\nplain\n");
    EXPECT_EQ(run("brevant paths --from-windows list.txt").output, "Quiz/Media/a.png\nQuiz/b.xml\nplain\n");
    EXPECT_EQ(run("brevant paths --from-windows --remove-file-names --json < list.txt").output,
              "[\n  \"Quiz/Media\",\n  \"Quiz\",\n  \"\"\n]\n");
    ToolRun usage = run("brevant paths list.txt");
    EXPECT_EQ(usage.exitCode, 2);
    ToolRun missing = run("brevant paths --from-windows nothing.txt");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.errors, "brevant: nothing.txt: no such file\n");
    EXPECT_EQ(run("printf 'a\\0b\\n' | brevant paths --from-windows -").exitCode, 1);
}
