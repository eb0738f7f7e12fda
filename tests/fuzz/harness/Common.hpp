// Shared pieces of the fuzz harnesses.
//
// Each harness in this folder is an inline function that takes one input and runs a parser or decoder on
// it, checking the properties that must hold for every input. A broken property aborts, which libFuzzer
// reports as a crash and a unit test reports as a dead test program. The same harnesses drive the
// libFuzzer programs (tests/fuzz/fuzz_<name>.cpp) and the replay of the corpora and regressions in the
// unit tests, so a crashing input saved once keeps being checked by every build.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"

namespace bv::fuzz {

// Aborts with a message naming the broken property.
[[noreturn]] inline void fail(const char* property) {
    std::fprintf(stderr, "fuzz property broken: %s\n", property);
    std::fflush(stderr);
    std::abort();
}

inline void check(bool holds, const char* property) {
    if (!holds) fail(property);
}

[[nodiscard]] inline std::string_view asChars(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Alerts answer their default button without writing to standard error (a malformed CSV line shows one).
inline void silenceAlerts() {
    static const bool installed = [] {
        AlertCenter::setPresenter([](const Alert&) { return 0; });
        return true;
    }();
    (void)installed;
}

// One scratch file per process, removed when the process ends. It lives in memory where it can
// (/dev/shm): on a disk file system, truncating and rewriting a file thousands of times a second is slow.
class ScratchFile {
  public:
    explicit ScratchFile(const std::string& suffix)
        : path_(folder() / ("bv-fuzz-" + std::to_string(::getpid()) + suffix)) {}
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::filesystem::path& write(const std::uint8_t* data, std::size_t size) {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        out.close();
        if (!out) fail("the scratch file could not be written");
        return path_;
    }

  private:
    static std::filesystem::path folder() {
        if (::access("/dev/shm", W_OK) == 0) return "/dev/shm";
        return std::filesystem::temp_directory_path();
    }

    std::filesystem::path path_;
};

}  // namespace bv::fuzz

// Defines the libFuzzer entry point of a program around one harness.
#define BV_FUZZ_TARGET(harness)                                                         \
    extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
        harness(data, size);                                                            \
        return 0;                                                                       \
    }
