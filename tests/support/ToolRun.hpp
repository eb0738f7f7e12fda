// Runs the brevant tool the way a person does, from a shell line in a scratch folder of its own: the tool
// tests share this so each one states only the command line and what it expects back.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "support/Scratch.hpp"

namespace bvtest {

// What one shell line printed and how it ended.
struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
};

// The built tool, or "" when the build has none (the tests then skip).
[[nodiscard]] inline std::string brevantPath() {
#ifdef BV_BREVANT_PATH
    return BV_BREVANT_PATH;
#else
    return {};
#endif
}

// A scratch folder in which shell lines are run.
class ToolFolder : public ScratchFolder {
  public:
    static constexpr int kLastStatus = -1;

    explicit ToolFolder(const std::string& prefix = "brevant-test") : ScratchFolder(prefix) {
        std::filesystem::create_directory(root() / ".run");
    }

    // Runs a bash LINE in the folder with `input` on standard input; "brevant" in it is the tool (also in
    // $BREVANT, for commands like setsid that need a program). Standard output and error of the whole line
    // are kept; the status is the line's own, or that of pipeline element `statusOf` (so "brevant ... | head"
    // can report the tool's).
    ToolRun run(const std::string& line, const std::string& input = "", int statusOf = kLastStatus) const {
        const std::filesystem::path files = root() / ".run";
        std::ofstream(files / "in", std::ios::binary) << input;
        const std::string status =
            statusOf == kLastStatus ? "$?" : "${PIPESTATUS[" + std::to_string(statusOf) + "]}";
        const std::string script =
            "export BREVANT='" + brevantPath() + "'; brevant() { \"$BREVANT\" \"$@\"; }; cd '" +
            root().string() + "' && { " + line + "\necho " + status + " > '" + (files / "status").string() +
            "'; } < '" + (files / "in").string() + "' > '" + (files / "out").string() + "' 2> '" +
            (files / "err").string() + "'";
        std::ofstream(files / "script.sh") << script;
        if (std::system(("bash '" + (files / "script.sh").string() + "'").c_str()) == -1) return {};
        const std::string code = read(".run/status");
        return {code.empty() ? -1 : std::stoi(code), read(".run/out"), read(".run/err")};
    }
};

// A test of the tool: skipped when there is none, with a scratch folder of its own.
class ToolTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (brevantPath().empty()) GTEST_SKIP() << "the brevant tool is not built";
    }
    ToolFolder scratch_;
};

}  // namespace bvtest
