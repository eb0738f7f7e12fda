// A temporary home for the suite's folders: points every folder variable (local and user application
// support, user preferences, HOME) into a fresh temporary folder for the life of the object, and removes it
// afterwards. Tests never touch the real folders of the machine or the user.
#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace bvtest {

class SuiteFolders {
  public:
    SuiteFolders() {
        char pattern[] = "/tmp/bv-suite-XXXXXX";
        if (!mkdtemp(pattern)) throw std::runtime_error("SuiteFolders: no temporary folder");
        root_ = pattern;
        ::chmod(root_.c_str(), 0755);  // other users may look in (a test may drop privileges)
        for (const char* folder : {"Library/Application Support", "home/.local/share", "home/.config"})
            std::filesystem::create_directories(root_ + "/" + folder);
        setenv("BV_LOCAL_APPLICATION_SUPPORT", local().c_str(), 1);
        setenv("XDG_DATA_HOME", user().c_str(), 1);
        setenv("XDG_CONFIG_HOME", preferences().c_str(), 1);
        setenv("HOME", (root_ + "/home").c_str(), 1);
    }
    ~SuiteFolders() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    SuiteFolders(const SuiteFolders&) = delete;
    SuiteFolders& operator=(const SuiteFolders&) = delete;

    [[nodiscard]] const std::string& root() const { return root_; }
    [[nodiscard]] std::string local() const { return root_ + "/Library/Application Support"; }
    [[nodiscard]] std::string localBrevant() const { return local() + "/Brevant"; }
    [[nodiscard]] std::string user() const { return root_ + "/home/.local/share"; }
    [[nodiscard]] std::string preferences() const { return root_ + "/home/.config"; }
    // The installer's Support Files folder, which the library never creates.
    [[nodiscard]] std::string makeSupportFiles() const {
        const std::string path = localBrevant() + "/Support Files";
        std::filesystem::create_directories(path);
        return path;
    }

    static void write(const std::string& path, const std::string& content) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
    }
    [[nodiscard]] static std::string read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    [[nodiscard]] static unsigned mode(const std::string& path) {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 ? (info.st_mode & 07777) : 0;
    }

  private:
    std::string root_;
};

}  // namespace bvtest
