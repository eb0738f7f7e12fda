// Test support for the file operations: a fresh temporary folder per test, files made in it, the folder's
// listing as the system returns it, and the library's log captured.
#pragma once

#include <dirent.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bvtest {

namespace fs = std::filesystem;

// The short names the file tests use.
namespace names {
namespace fm = bv::BVNSFileManager;
namespace fs = std::filesystem;
using bv::Text;
using Texts = std::vector<Text>;
inline const bv::FileManager& manager() {
    return bv::FileManager::defaultManager();
}
}  // namespace names

class FileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "bv-files-XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        previousSink_ = bv::setLogSink([this](const std::string& line) { logged_.push_back(line); });
    }
    void TearDown() override {
        bv::setLogSink(previousSink_);
        std::error_code ignored;
        fs::permissions(root_, fs::perms::all, ignored);
        fs::remove_all(root_, ignored);
    }

    // A path under the test's folder, as the library takes it.
    [[nodiscard]] bv::Text at(const std::string& relative) const {
        return bv::Text((root_ / relative).string());
    }
    [[nodiscard]] std::string path(const std::string& relative) const { return (root_ / relative).string(); }

    // Makes a file (and the folders above it) holding the bytes.
    void file(const std::string& relative, const std::string& bytes = "x") const {
        fs::create_directories((root_ / relative).parent_path());
        std::ofstream(root_ / relative, std::ios::binary) << bytes;
    }
    void folder(const std::string& relative) const { fs::create_directories(root_ / relative); }
    [[nodiscard]] std::string contents(const std::string& relative) const {
        std::ifstream in(root_ / relative, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    [[nodiscard]] bool exists(const std::string& relative) const {
        return fs::exists(fs::symlink_status(root_ / relative));
    }

    // The folder's names in the order in which the system lists them.
    [[nodiscard]] std::vector<bv::Text> systemOrder(const std::string& relative) const {
        std::vector<bv::Text> names;
        DIR* dir = ::opendir(path(relative).c_str());
        while (const dirent* entry = ::readdir(dir)) {
            std::string name = entry->d_name;
            if (name != "." && name != "..") names.emplace_back(name);
        }
        ::closedir(dir);
        return names;
    }

    fs::path root_;
    std::vector<std::string> logged_;

  private:
    bv::LogSink previousSink_;
};

}  // namespace bvtest
