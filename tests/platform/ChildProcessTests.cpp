// Child processes: arguments handed over verbatim (no shell), the working folder, exit statuses, launch
// failures.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "BrevantCocoaExtensions/platform/ChildProcess.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "support/Scratch.hpp"

namespace fs = std::filesystem;

TEST(ChildProcess, RunsWithVerbatimArgumentsInTheWorkingFolder) {
    const bvtest::ScratchFolder scratch("bv-child");
    const fs::path& folder = scratch.root();
    const std::string script = "pwd > out; for a in \"$@\"; do echo \"[$a]\"; done >> out; exit 7";
    EXPECT_EQ(
        bv::ChildProcess::run("/bin/sh", {"-c", script, "sh", "a b", "$HOME", "*", ""}, folder.string()), 7);
    EXPECT_EQ(scratch.read("out"), folder.string() + "\n[a b]\n[$HOME]\n[*]\n[]\n");
}

TEST(ChildProcess, ReportsSignalsAndRefusesWhatCannotStart) {
    bv::ChildProcess process("/bin/sh", {"-c", "kill -TERM $$"});
    EXPECT_FALSE(process.isRunning());
    process.launch();
    EXPECT_GT(process.processIdentifier(), 0);
    EXPECT_EQ(process.waitUntilExit(), 128 + 15);
    EXPECT_EQ(process.terminationStatus(), 128 + 15);
    EXPECT_THROW(process.launch(), bv::InvalidArgumentException);
    EXPECT_THROW(bv::ChildProcess::run("/no/such/program", {}), bv::InvalidArgumentException);
    EXPECT_THROW(bv::ChildProcess::run("/bin/true", {}, "/no/such/folder"), bv::InvalidArgumentException);
}
