// Test support for the file operations: a fresh temporary folder per test, files made in it, the folder's
// listing as the system returns it, and the library's log captured.
#pragma once

#include <dirent.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "support/Scratch.hpp"

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
    // A path under the test's folder, as the library takes it.
    [[nodiscard]] bv::Text at(const std::string& relative) const { return bv::Text(path(relative)); }
    [[nodiscard]] std::string path(const std::string& relative) const { return scratch_.path(relative); }

    // Makes a file (and the folders above it) holding the bytes.
    void file(const std::string& relative, const std::string& bytes = "x") const {
        scratch_.write(relative, bytes);
    }
    void folder(const std::string& relative) const { fs::create_directories(root_ / relative); }
    [[nodiscard]] std::string contents(const std::string& relative) const { return scratch_.read(relative); }
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

    ScratchFolder scratch_{"bv-files"};
    const fs::path& root_ = scratch_.root();
    LogCapture log_;
    std::vector<std::string>& logged_ = log_.lines;
};

}  // namespace bvtest
