// brevant qcode: one line per code, and a usage error (exit 2, nothing on standard output) for a code
// that is not a 32-bit number.
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
#ifdef BV_BREVANT_PATH
    ToolRun run;
    FILE* pipe = popen((std::string(BV_BREVANT_PATH) + " " + arguments + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) return run;
    char buffer[4096];
    while (std::size_t read = std::fread(buffer, 1, sizeof buffer, pipe))
        run.output.append(buffer, read);
    int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
#else
    (void)arguments;
    return {};
#endif
}

}  // namespace

TEST(QcodeCommand, DescribesEachCodeOnOneLine) {
#ifndef BV_BREVANT_PATH
    GTEST_SKIP() << "the brevant tool is not built";
#endif
    ToolRun run = brevant("qcode 164 0x42 -5");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(
        run.output,
        "164 (0xA4): families: sequence; scorable: yes; advanced answer: no; simple sequence: 36 (0x24)\n"
        "66 (0x42): families: multiple choice, lettered multiple choice; scorable: yes; advanced answer: "
        "yes; "
        "simple sequence: unchanged\n"
        "-5: families: none; scorable: yes; advanced answer: no; simple sequence: unchanged\n");
}

TEST(QcodeCommand, NonNumericOrOversizedCodesAreUsageErrors) {
#ifndef BV_BREVANT_PATH
    GTEST_SKIP() << "the brevant tool is not built";
#endif
    for (const char* arguments : {"qcode 16 sixteen", "qcode 0x", "qcode 2147483648", "qcode 16x", "qcode"}) {
        ToolRun run = brevant(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.output, "") << arguments;
    }
    EXPECT_EQ(brevant("qcode -2147483648").exitCode, 0);
}
