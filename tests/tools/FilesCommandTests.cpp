// brevant unpack and brevant paths run as a person runs them, on archives made with the real zip tool.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/ToolRun.hpp"

namespace fs = std::filesystem;

namespace {

using bvtest::ToolRun;

class FilesCommands : public bvtest::ToolTest {
  protected:
    void SetUp() override {
        bvtest::ToolTest::SetUp();
        if (IsSkipped()) return;
        fs::create_directory(folder_ / "support");  // no 7-Zip tool of the suite: the system's unzip
        ::setenv("BV_LOCAL_APPLICATION_SUPPORT", (folder_ / "support").c_str(), 1);
    }
    void TearDown() override { ::unsetenv("BV_LOCAL_APPLICATION_SUPPORT"); }

    void write(const std::string& name, const std::string& bytes) const { scratch_.write(name, bytes); }
    // Runs a shell command line in the test's folder; "brevant" stands for the tool.
    [[nodiscard]] ToolRun run(const std::string& line) const { return scratch_.run(line); }

    const fs::path& folder_ = scratch_.root();
};

}  // namespace

TEST_F(FilesCommands, UnpackRebuildsBackslashNamesAndKeepsEverythingInside) {
    write("w/Media\\Images\\a.png", "png");
    write("w/..\\climb.txt", "climb");
    write("w/top.txt", "top");
    ASSERT_EQ(run("cd w && zip -q ../win.zip 'Media\\Images\\a.png' '..\\climb.txt' top.txt").status, 0);

    ToolRun unpack = run("brevant unpack win.zip out --windows-paths");
    EXPECT_EQ(unpack.out, "Media/Images/a.png\n");
    EXPECT_EQ(unpack.status, 1);  // one entry would have left the folder
    EXPECT_NE(unpack.err.find("brevant: out: Skipped \"..\\climb.txt\""), std::string::npos) << unpack.err;
    EXPECT_TRUE(fs::exists(folder_ / "out/Media/Images/a.png"));
    EXPECT_TRUE(fs::exists(folder_ / "out/..\\climb.txt"));
    EXPECT_FALSE(fs::exists(folder_ / "climb.txt"));

    ToolRun refused = run("brevant unpack win.zip out");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err,
              "brevant: out: not empty; unpacking empties it first, so pass --replace to allow that\n");
    EXPECT_TRUE(fs::exists(folder_ / "out/Media/Images/a.png"));

    ToolRun json = run("brevant unpack - out --replace --windows-paths --json < win.zip");
    EXPECT_EQ(json.status, 1);
    EXPECT_NE(json.out.find("\"to\": \"Media/Images/a.png\""), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"notRebuilt\": [\n    \"..\\\\climb.txt\""), std::string::npos) << json.out;

    EXPECT_EQ(run("brevant unpack missing.zip out2").status, 1);
    EXPECT_EQ(run("brevant unpack win.zip").status, 2);
    write("plain/top.txt", "not an archive");
    EXPECT_EQ(run("brevant unpack plain/top.txt plain --replace").err,
              "brevant: plain/top.txt: lies inside plain, which unpacking empties first\n");
}

TEST_F(FilesCommands, PathsConvertsEachLineInOrder) {
    write("list.txt", "C:\\Quiz\\Media\\a.png\r\n\\Quiz\\b.xml\nplain\n");
    EXPECT_EQ(run("brevant paths --from-windows list.txt").out, "Quiz/Media/a.png\nQuiz/b.xml\nplain\n");
    EXPECT_EQ(run("brevant paths --from-windows --remove-file-names --json < list.txt").out,
              "[\n  \"Quiz/Media\",\n  \"Quiz\",\n  \"\"\n]\n");
    ToolRun usage = run("brevant paths list.txt");
    EXPECT_EQ(usage.status, 2);
    ToolRun missing = run("brevant paths --from-windows nothing.txt");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "brevant: nothing.txt: no such file\n");
    EXPECT_EQ(run("printf 'a\\0b\\n' | brevant paths --from-windows -").status, 1);
}
