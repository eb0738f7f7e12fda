// Shared test support: a fresh temporary folder removed with the object, and the library's log captured
// for the life of an object.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bvtest {

// A fresh folder under the temporary folder (or another parent), removed with everything in it.
class ScratchFolder {
  public:
    explicit ScratchFolder(const std::string& prefix = "bv-test",
                           const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string pattern = (parent / (prefix + "-XXXXXX")).string();
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("ScratchFolder: no temporary folder");
        root_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::permissions(root_, std::filesystem::perms::all, ignored);
        std::filesystem::remove_all(root_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& root() const { return root_; }
    // The full path of NAME in the folder.
    [[nodiscard]] std::string path(const std::string& name) const { return (root_ / name).string(); }

    // Writes `bytes` to NAME (parent folders made) and returns its full path.
    std::string write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path path = root_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }
    // The bytes of NAME (empty when it cannot be read).
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream in(root_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

  private:
    std::filesystem::path root_;
};

// Keeps every log line written while it lives; restores the previous sink when destroyed.
class LogCapture {
  public:
    LogCapture() : previous_(bv::setLogSink([this](const std::string& line) { lines.push_back(line); })) {}
    ~LogCapture() { bv::setLogSink(previous_); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> lines;

  private:
    bv::LogSink previous_;
};

}  // namespace bvtest
