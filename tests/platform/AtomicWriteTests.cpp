// Whole-file writes under a crash: a child process writes a large file over an existing one and is killed
// with SIGKILL part-way; the target must then hold either the old bytes or all of the new ones.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "support/Scratch.hpp"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kOldSize = 1 << 20;   // 1 MB
constexpr std::size_t kNewSize = 64 << 20;  // 64 MB: long enough to be caught half-written

// Bytes that differ from word to word, so a shifted, partial or mixed copy never compares equal.
std::vector<std::uint8_t> patternBytes(std::size_t size, std::uint64_t salt) {
    std::vector<std::uint64_t> words(size / sizeof(std::uint64_t));
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = (i + 1) * 0x9E3779B97F4A7C15ULL ^ salt;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(words.data());
    return {bytes, bytes + size};
}

const std::vector<std::uint8_t>& oldBytes() {
    static const auto bytes = patternBytes(kOldSize, 1);
    return bytes;
}
const std::vector<std::uint8_t>& newBytes() {
    static const auto bytes = patternBytes(kNewSize, 2);
    return bytes;
}

std::vector<std::uint8_t> readAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::uint8_t> bytes(fs::file_size(path));
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

enum class Contents { Old, New, Torn };

std::ostream& operator<<(std::ostream& out, Contents contents) {
    return out << (contents == Contents::Old   ? "the old file"
                   : contents == Contents::New ? "the new file"
                                               : "a torn file");
}

Contents classify(const fs::path& path) {
    const std::vector<std::uint8_t> bytes = readAll(path);
    if (bytes == oldBytes()) return Contents::Old;
    if (bytes == newBytes()) return Contents::New;
    return Contents::Torn;
}

// A memory file system where there is one: a crash of the writing process (not of the machine) is what
// is tested, and flushing 64 MB to a disk would only make the test slow.
fs::path scratchRoot() {
    std::error_code error;
    if (::access("/dev/shm", W_OK) == 0 && fs::is_directory("/dev/shm", error)) return "/dev/shm";
    return fs::temp_directory_path();
}

void writeOldFile(const fs::path& target) {
    ASSERT_TRUE(bv::writeBytesToFile(target.string(), oldBytes().data(), kOldSize, false));
}

// The files in the folder other than the target: the temporary file of an atomic write in progress.
std::vector<fs::path> strayFiles(const fs::path& folder, const fs::path& target) {
    std::vector<fs::path> stray;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path() != target) stray.push_back(entry.path());
    return stray;
}

// The size of the file that the child is filling: the temporary file beside the target for an atomic
// write, the target itself once it has grown past the old size for an in-place write.
std::optional<std::uintmax_t> sizeBeingWritten(const fs::path& folder, const fs::path& target,
                                               bool atomically) {
    std::error_code error;
    if (atomically) {
        for (const fs::path& stray : strayFiles(folder, target)) {
            const std::uintmax_t size = fs::file_size(stray, error);
            if (!error) return size;
        }
        return std::nullopt;
    }
    const std::uintmax_t size = fs::file_size(target, error);
    if (error || size <= kOldSize) return std::nullopt;
    return size;
}

struct Outcome {
    bool killedMidWrite = false;  // killed while the file being written held part of the new bytes
    Contents contents = Contents::Torn;
};

// Forks a child that writes the new bytes over the target, and kills it with SIGKILL as soon as the file
// being written holds at least `fraction` of them (never when the fraction is above 1: the child ends).
Outcome writeAndKill(const fs::path& folder, const fs::path& target, bool atomically, double fraction) {
    (void)newBytes();  // made before the fork, so the child starts writing at once
    const pid_t child = ::fork();
    if (child == 0) {
        const bool written = bv::writeBytesToFile(target.string(), newBytes().data(), kNewSize, atomically);
        ::_exit(written ? 0 : 1);
    }
    Outcome run;
    const auto threshold = static_cast<std::uintmax_t>(fraction * kNewSize);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) {
        const std::optional<std::uintmax_t> size = sizeBeingWritten(folder, target, atomically);
        if ((size && *size >= threshold && *size < kNewSize) || std::chrono::steady_clock::now() > deadline) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
            run.killedMidWrite = size.has_value() && WIFSIGNALED(status);
            break;
        }
    }
    run.contents = classify(target);
    return run;
}

TEST(AtomicWrite, KilledWriterLeavesTheOldFileOrTheWholeNewOne) {
    const bvtest::ScratchFolder folder("bv-atomic", scratchRoot());
    const fs::path target = folder.root() / "Settings.xml";
    int killedMidWrite = 0;
    for (double fraction : {0.0, 0.1, 0.5, 0.9}) {
        SCOPED_TRACE("killed at " + std::to_string(fraction) + " of the new bytes");
        writeOldFile(target);
        const Outcome run = writeAndKill(folder.root(), target, true, fraction);
        // Until the rename the target is untouched; the rename replaces it whole.
        EXPECT_NE(run.contents, Contents::Torn);
        if (run.killedMidWrite) {
            EXPECT_EQ(run.contents, Contents::Old);
            ++killedMidWrite;
        }
        for (const fs::path& stray : strayFiles(folder.root(), target))
            fs::remove(stray);
    }
    EXPECT_GT(killedMidWrite, 0) << "no writer was caught half-way: the test proved nothing";

    writeOldFile(target);
    const Outcome finished = writeAndKill(folder.root(), target, true, 2.0);
    EXPECT_EQ(finished.contents, Contents::New);
    EXPECT_TRUE(strayFiles(folder.root(), target).empty()) << "a finished write leaves no temporary file";
}

TEST(AtomicWrite, InPlaceWriteTruncatesTheSameFileAndCanBeTorn) {
    const bvtest::ScratchFolder folder("bv-atomic", scratchRoot());
    const fs::path target = folder.root() / "data.bin";
    const fs::path alias = folder.root() / "alias.bin";
    writeOldFile(target);
    fs::create_hard_link(target, alias);
    const auto inode = [](const fs::path& path) {
        struct stat info {};
        ::stat(path.c_str(), &info);
        return info.st_ino;
    };
    const ino_t original = inode(target);

    // In place: the same file (so every link to it) now holds exactly the new, shorter bytes.
    const std::string shorter = "short";
    ASSERT_TRUE(bv::writeBytesToFile(target.string(), shorter.data(), shorter.size(), false));
    EXPECT_EQ(inode(target), original);
    EXPECT_EQ(readAll(alias), std::vector<std::uint8_t>(shorter.begin(), shorter.end()));

    // Atomically: a new file takes the name; the old one lives on under its other link.
    const std::string replaced = "replaced";
    ASSERT_TRUE(bv::writeBytesToFile(target.string(), replaced.data(), replaced.size(), true));
    EXPECT_NE(inode(target), original);
    EXPECT_EQ(readAll(target), std::vector<std::uint8_t>(replaced.begin(), replaced.end()));
    EXPECT_EQ(readAll(alias), std::vector<std::uint8_t>(shorter.begin(), shorter.end()));
    fs::remove(alias);

    // Killed half-way, an in-place write leaves a torn file: what the atomic write is there to prevent.
    bool torn = false;
    for (int attempt = 0; attempt < 3 && !torn; ++attempt) {
        writeOldFile(target);
        const Outcome run = writeAndKill(folder.root(), target, false, 0.25);
        torn = run.killedMidWrite && run.contents == Contents::Torn;
    }
    EXPECT_TRUE(torn);
}

}  // namespace
