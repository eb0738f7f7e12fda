// brevant base36: one line per value both ways, and a usage error (exit 2, nothing on standard output)
// for a value that is not a decimal unsigned 64-bit integer.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

struct ToolRun {
    std::string output;
    int exitCode = -1;
};

ToolRun brevant(const std::string& arguments) {
    ToolRun run;
#ifdef BV_BREVANT_PATH
    FILE* pipe = popen((std::string(BV_BREVANT_PATH) + " " + arguments + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) return run;
    char buffer[4096];
    while (std::size_t read = std::fread(buffer, 1, sizeof buffer, pipe))
        run.output.append(buffer, read);
    int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#else
    (void)arguments;
#endif
    return run;
}

}  // namespace

TEST(Base36Command, WritesAndReadsBase36) {
#ifndef BV_BREVANT_PATH
    GTEST_SKIP() << "the brevant tool is not built";
#endif
    ToolRun run = brevant("base36 18446744073709551615 35 36 0");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "3W5E11264SGSF\nZ\n10\n\n");
    run = brevant("base36 --decode 3W5E11264SGSF zz 10 ''");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "-1\n1295\n36\n0\n");
}

TEST(Base36Command, ValuesThatAreNotUnsigned64BitDecimalsAreUsageErrors) {
#ifndef BV_BREVANT_PATH
    GTEST_SKIP() << "the brevant tool is not built";
#endif
    for (const char* arguments : {"base36 18446744073709551616", "base36 1 -1", "base36 0x10", "base36 ' 1'",
                                  "base36 ''", "base36"}) {
        ToolRun run = brevant(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.output, "") << arguments;
    }
}
