// readFile and writeFile: round trips, their error numbers and their short read/write messages.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "BrevantCocoaExtensions/text/ReadWriteFile.hpp"
#include "support/Scratch.hpp"

namespace fs = std::filesystem;

namespace {

class ReadWriteFile : public ::testing::Test {
  protected:
    [[nodiscard]] std::string file(const std::string& name) const { return scratch_.path(name); }

    // Reads a file and answers its result; the bytes land in *contents.
    static int read(const std::string& path, std::string* contents) {
        unsigned char* buffer = reinterpret_cast<unsigned char*>(0x1);
        std::uint32_t length = 99;
        const int result = bv::readFile(path.c_str(), &buffer, &length);
        if (result != 0) {
            EXPECT_EQ(buffer, nullptr);
            EXPECT_EQ(length, 0u);
            return result;
        }
        EXPECT_NE(buffer, nullptr);
        contents->assign(reinterpret_cast<char*>(buffer), length);
        std::free(buffer);
        return result;
    }

    bvtest::ScratchFolder scratch_{"readwritefile"};
    const fs::path& folder_ = scratch_.root();
};

}  // namespace

TEST_F(ReadWriteFile, WritesAndReadsBackEveryByte) {
    std::string bytes(70000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    const std::string path = file("data.bin");
    const mode_t previousMask = ::umask(022);
    ASSERT_EQ(bv::writeFile(path.c_str(), bytes.data(), static_cast<std::uint32_t>(bytes.size())), 0);
    ::umask(previousMask);
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);

    std::string back;
    EXPECT_EQ(read(path, &back), 0);
    EXPECT_EQ(back, bytes);

    // Writing again truncates: nothing of the longer file is left behind.
    ASSERT_EQ(bv::writeFile(path.c_str(), "short", 5), 0);
    EXPECT_EQ(read(path, &back), 0);
    EXPECT_EQ(back, "short");

    ASSERT_EQ(bv::writeFile(path.c_str(), "", 0), 0);
    EXPECT_EQ(read(path, &back), 0);
    EXPECT_EQ(back, "");
}

TEST_F(ReadWriteFile, AnswersTheSystemErrorNumberWhenTheFileCannotBeOpened) {
    std::string ignored;
    EXPECT_EQ(read(file("missing.txt"), &ignored), ENOENT);
    EXPECT_EQ(bv::writeFile(file("missing/inner.txt").c_str(), "x", 1), ENOENT);
    EXPECT_EQ(bv::writeFile(folder_.c_str(), "x", 1), EISDIR);
}

TEST_F(ReadWriteFile, FailedAndShortReadsAnswerIOError) {
    std::string ignored;
    // A folder opens, but reading it fails outright: EIO, and no message.
    testing::internal::CaptureStdout();
    EXPECT_EQ(read(folder_.string(), &ignored), EIO);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

    // A kernel file announces 4096 bytes and delivers fewer.
    const char* announcesMore = "/sys/kernel/profiling";
    if (!fs::exists(announcesMore)) GTEST_SKIP() << "no " << announcesMore << " on this system";
    testing::internal::CaptureStdout();
    EXPECT_EQ(read(announcesMore, &ignored), EIO);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "readFile: short read\n");
}

TEST_F(ReadWriteFile, ShortWriteIsReportedAsIOError) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
    // /dev/full refuses every write with ENOSPC: a failed write answers EIO without a message.
    testing::internal::CaptureStdout();
    EXPECT_EQ(bv::writeFile("/dev/full", "x", 1), EIO);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
