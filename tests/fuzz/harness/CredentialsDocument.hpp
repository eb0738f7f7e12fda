// Harness: reading credentials.xml from any bytes.
#pragma once

#include <cstdlib>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// A user folder of this process's own, removed at its end.
class ScratchUserFolder {
  public:
    ScratchUserFolder() {
        char pattern[] = "/tmp/bv-fuzz-user-XXXXXX";
        if (!::mkdtemp(pattern)) fail("no scratch user folder");
        path_ = pattern;
        setenv("XDG_DATA_HOME", path_.c_str(), 1);
    }
    ~ScratchUserFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchUserFolder(const ScratchUserFolder&) = delete;
    ScratchUserFolder& operator=(const ScratchUserFolder&) = delete;

  private:
    std::string path_;
};

// Any file gives saved credentials or none, never a crash; saved ones match themselves, and saving them
// again reads back the same.
inline void credentialsDocument(const std::uint8_t* data, std::size_t size) {
    static ScratchUserFolder folder;
    const std::optional<Text> path = BVFileManager::credentialsPath();
    check(path.has_value(), "the scratch user folder gives a credentials path");
    {
        std::ofstream out(path->toUtf8(), std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    const std::optional<ValueDictionary> saved = BVFileManager::savedCredentials();
    if (!saved) {
        check(!BVFileManager::savedCredentialsMatchUsernamePassword(Text("a"), Text("b")),
              "no credentials match nothing");
        return;
    }
    const Text name = *saved->at(Text("credential1")).text();
    const Text password = *saved->at(Text("credential0")).text();
    check(BVFileManager::savedCredentialsMatchUsernamePassword(name, password),
          "saved credentials match themselves");
    check(BVFileManager::saveCredentialsWithUsernamePassword(name, password), "credentials save");
    check(BVFileManager::savedCredentials() == saved, "saved credentials read back the same");
}

}  // namespace bv::fuzz
