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

// A fresh folder under the temporary folder, removed with the object.
class ScratchFolder {
  public:
    static constexpr int kLastStatus = -1;

    explicit ScratchFolder(const std::string& prefix = "brevant-test") {
        std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "-XXXXXX")).string();
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("ScratchFolder: no temporary folder");
        root_ = pattern;
        std::filesystem::create_directory(root_ / ".run");
    }
    ~ScratchFolder() { std::filesystem::remove_all(root_); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& root() const { return root_; }

    // Writes `bytes` to NAME (parent folders made) and returns its full path.
    std::string write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path path = root_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream in(root_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    // Runs a bash LINE in the folder with `input` on standard input; "brevant" in it is the tool (also in
    // $BREVANT, for commands like setsid that need a program). Standard output and error of the whole line
    // are kept; the status is the line's own, or that of pipeline element `statusOf` (so "brevant ... | head"
    // can report the tool's).
    ToolRun run(const std::string& line, const std::string& input = "", int statusOf = kLastStatus) const {
        const std::filesystem::path files = root_ / ".run";
        std::ofstream(files / "in", std::ios::binary) << input;
        const std::string status =
            statusOf == kLastStatus ? "$?" : "${PIPESTATUS[" + std::to_string(statusOf) + "]}";
        const std::string script =
            "export BREVANT='" + brevantPath() + "'; brevant() { \"$BREVANT\" \"$@\"; }; cd '" +
            root_.string() + "' && { " + line + "\necho " + status + " > '" + (files / "status").string() +
            "'; } < '" + (files / "in").string() + "' > '" + (files / "out").string() + "' 2> '" +
            (files / "err").string() + "'";
        std::ofstream(files / "script.sh") << script;
        if (std::system(("bash '" + (files / "script.sh").string() + "'").c_str()) == -1) return {};
        const std::string code = read(".run/status");
        return {code.empty() ? -1 : std::stoi(code), read(".run/out"), read(".run/err")};
    }

  private:
    std::filesystem::path root_;
};

// A test of the tool: skipped when there is none, with a scratch folder of its own.
class ToolTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (brevantPath().empty()) GTEST_SKIP() << "the brevant tool is not built";
    }
    ScratchFolder scratch_;
};

}  // namespace bvtest
