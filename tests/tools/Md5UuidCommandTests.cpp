// brevant md5 and uuid run as a person runs them: md5sum -c accepts the digests, errors name the file.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "support/ToolRun.hpp"

namespace fs = std::filesystem;

namespace {

using bvtest::ToolRun;

class Md5Uuid : public bvtest::ToolTest {
  protected:
    void write(const std::string& name, const std::string& bytes) const { scratch_.write(name, bytes); }
    // Runs a shell command in the folder; "brevant" names the tool.
    [[nodiscard]] ToolRun shell(const std::string& command) const { return scratch_.run(command); }

    const fs::path& folder_ = scratch_.root();
};

TEST_F(Md5Uuid, Md5OutputPassesMd5sumCheckAndMatchesItByteForByte) {
    write("empty", "");
    write("a b.txt", "abc");
    write("odd\\name", std::string(3 << 20, 'x'));  // several read pieces; a name md5sum escapes
    const std::string files = "empty 'a b.txt' 'odd\\name'";
    const ToolRun ours = shell("brevant md5 " + files);
    EXPECT_EQ(ours.status, 0) << ours.err;
    EXPECT_EQ(ours.out, shell("md5sum " + files).out);
    EXPECT_EQ(shell("brevant md5 " + files + " > sums && md5sum -c sums").status, 0);
    EXPECT_EQ(shell("printf abc | brevant md5 -").out, "900150983cd24fb0d6963f7d28e17f72  -\n");
    EXPECT_EQ(
        shell("brevant md5 --json 'a b.txt'").out,
        "[\n  {\n    \"file\": \"a b.txt\",\n    \"md5\": \"900150983cd24fb0d6963f7d28e17f72\"\n  }\n]\n");
}

TEST_F(Md5Uuid, Md5ReportsAnUnreadableFileAndGoesOn) {
    write("a", "a");
    fs::create_directory(folder_ / "folder");
    const ToolRun run = shell("brevant md5 missing folder a");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "0cc175b9c0f1b6a831c399e269772661  a\n");
    EXPECT_EQ(run.err, "brevant: missing: no such file\nbrevant: folder: Is a directory\n");
    EXPECT_EQ(shell("brevant md5 --bogus").status, 2);
}

TEST_F(Md5Uuid, UuidPrintsLowerCaseWithOrWithoutBraces) {
    const std::string hex = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
    EXPECT_TRUE(std::regex_match(shell("brevant uuid").out, std::regex(hex + "\n")));
    EXPECT_TRUE(
        std::regex_match(shell("brevant uuid --braces -n 2").out, std::regex("(\\{" + hex + "\\}\n){2}")));
    EXPECT_EQ(shell("brevant uuid -n 0").status, 2);
}

}  // namespace
