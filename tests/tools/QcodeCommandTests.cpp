// brevant qcode: one line per code; a code that is not a 32-bit number is a usage error (exit 2) and
// nothing is printed.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

#ifdef BV_BREVANT_PATH

namespace {

// Runs the tool; answers its standard output and exit code.
std::pair<std::string, int> brevant(const std::string& arguments) {
    FILE* pipe = popen((std::string(BV_BREVANT_PATH) + " " + arguments + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) return {"", -1};
    std::string output;
    char buffer[4096];
    while (std::size_t read = std::fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, read);
    int status = pclose(pipe);
    return {output, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

}  // namespace

TEST(QcodeCommand, DescribesEachCodeOrRejectsTheWholeLine) {
    EXPECT_EQ(brevant("qcode 164 0x42 -5"),
              std::make_pair(
                  std::string(
                      "164 (0xA4): families: sequence; scorable: yes; advanced answer: no; simple sequence: "
                      "36 (0x24)\n"
                      "66 (0x42): families: multiple choice, lettered multiple choice; scorable: yes; "
                      "advanced answer: yes; simple sequence: unchanged\n"
                      "-5: families: none; scorable: yes; advanced answer: no; simple sequence: unchanged\n"),
                  0));
    for (const char* arguments : {"qcode 16 sixteen", "qcode 0x", "qcode 2147483648", "qcode 16x", "qcode"}) {
        EXPECT_EQ(brevant(arguments), std::make_pair(std::string(), 2)) << arguments;
    }
    EXPECT_EQ(brevant("qcode -2147483648").second, 0);
}

#endif
