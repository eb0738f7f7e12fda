// Harness piece: a document folder for fuzzing external entities, and a watch that fails the run when any
// file outside that folder is opened through it.
//
// Layout, under /dev/shm (or the temporary folder) in bv-fuzz-entities-PID/, removed at exit (the
// dictionary names the files relative to doc/):
//   doc/       the document (fuzz.xml), inside.txt, sub/deeper.txt, and link.txt: a symbolic link to
//              ../outside/secret.txt
//   outside/   secret.txt, watched with inotify: opening it by any name ("../", the link, an absolute
//              path) is seen.
#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "Common.hpp"

namespace bv::fuzz {

inline constexpr std::string_view kOutsideText = "outside the document folder";

class EntityFolder {
  public:
    static EntityFolder& shared() {
        static EntityFolder folder;
        return folder;
    }

    // Writes the document into doc/ and answers its path.
    std::string writeDocument(std::string_view bytes) const {
        std::ofstream(document_, std::ios::binary | std::ios::trunc) << bytes;
        return document_.string();
    }

    // Fails when the file outside the folder was opened, by any name, since the last call. (Its text in a
    // result proves nothing: the fuzzer can spell it out, or build it from entities and references.)
    void checkNothingOutsideWasOpened() const {
        alignas(inotify_event) char events[4096];
        check(::read(watch_, events, sizeof events) <= 0, "no file outside the document's folder is opened");
    }

  private:
    EntityFolder() {
        namespace fs = std::filesystem;
        const fs::path base =
            (::access("/dev/shm", W_OK) == 0 ? fs::path("/dev/shm") : fs::temp_directory_path()) /
            ("bv-fuzz-entities-" + std::to_string(::getpid()));
        std::error_code ignored;
        fs::create_directories(base / "doc" / "sub", ignored);
        fs::create_directories(base / "outside", ignored);
        std::ofstream(base / "outside" / "secret.txt") << kOutsideText;
        std::ofstream(base / "doc" / "inside.txt") << "inside";
        std::ofstream(base / "doc" / "sub" / "deeper.txt") << "<deeper>text</deeper>";
        fs::create_symlink(base / "outside" / "secret.txt", base / "doc" / "link.txt", ignored);
        base_ = base;
        document_ = base / "doc" / "fuzz.xml";
        watch_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        check(watch_ >= 0 && ::inotify_add_watch(watch_, (base / "outside" / "secret.txt").c_str(),
                                                 IN_OPEN | IN_ACCESS) >= 0,
              "the file outside the folder can be watched");
    }

    ~EntityFolder() {
        ::close(watch_);
        std::error_code ignored;
        std::filesystem::remove_all(base_, ignored);  // this process's own folder
    }
    EntityFolder(const EntityFolder&) = delete;
    EntityFolder& operator=(const EntityFolder&) = delete;

    std::filesystem::path base_;
    std::filesystem::path document_;
    int watch_ = -1;
};

}  // namespace bv::fuzz
