// brevant xml-values: NAME<TAB>VALUE lines in the order the names were given, escapes that keep each value
// on its line, and exit 1 for a file that cannot be read or is malformed before a missing name.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
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

TEST(XmlValuesCommand, PrintsTheWantedValuesInTheGivenOrder) {
#ifndef BV_BREVANT_PATH
    GTEST_SKIP() << "the brevant tool is not built";
#endif
    auto path =
        std::filesystem::temp_directory_path() / ("bv-xml-values-" + std::to_string(::getpid()) + ".xml");
    std::ofstream(path) << "<r><title>A\tB\\C</title><note>one\ntwo</note><version>1.2</version></r>";
    ToolRun run = brevant("xml-values " + path.string() + " version missing title note version");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "version\t1.2\ntitle\tA\\tB\\\\C\nnote\tone\\ntwo\n");

    // A fault after the last wanted value does not matter; one before a missing name does.
    std::ofstream(path, std::ios::trunc) << "<r><a>1</a><b>2</b><broken</r>";
    run = brevant("xml-values " + path.string() + " a b");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "a\t1\nb\t2\n");
    run = brevant("xml-values " + path.string() + " a c");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "a\t1\n");
    std::filesystem::remove(path);

    run = brevant("xml-values " + path.string() + " version");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(brevant("xml-values").exitCode, 2);
}
