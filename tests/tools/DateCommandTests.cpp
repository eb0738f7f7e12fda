// brevant date run as a person runs it: what it prints for RFC 3339 texts, its JSON, --now, exit codes.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>

#include "support/ToolRun.hpp"

namespace {

using bvtest::ToolRun;

class DateCommand : public bvtest::ToolTest {
  protected:
    // Runs "brevant date ARGUMENTS" in UTC through the shell, with `input` on standard input.
    ToolRun date(const std::string& arguments, const std::string& input = "") const {
        return scratch_.run("TZ=UTC LANG=en_US.UTF-8 brevant date " + arguments, input);
    }
};

TEST_F(DateCommand, PrintsComponentsOffsetAndUtcInstant) {
    const ToolRun run = date("2008-01-02T10:11:12.75-05:00 2008-01-02 '2008-01-02t10:11:12-00:00'");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "2008-01-02T10:11:12.75-05:00\n"
              "  year 2008  month 1  day 2  hour 10  minute 11  second 12\n"
              "  offset -05:00 (-18000 seconds)\n"
              "  UTC 2008-01-02T15:11:12Z (1199286672 seconds since 1970)\n"
              "2008-01-02\n"
              "  year 2008  month 1  day 2  (no time: the date stands for noon UTC)\n"
              "  UTC 2008-01-02T12:00:00Z (1199275200 seconds since 1970)\n"
              "2008-01-02t10:11:12-00:00\n"
              "  year 2008  month 1  day 2  hour 10  minute 11  second 12\n"
              "  offset unknown (-00:00): the instant is read in the local time zone\n"
              "  UTC 2008-01-02T10:11:12Z (1199268672 seconds since 1970)\n");
}

TEST_F(DateCommand, JsonAndStandardInput) {
    const ToolRun run = date("--json - 1985-04-12T23:20:50.52Z", "1990-12-31T15:59:60-08:00\r\n");
    ASSERT_EQ(run.status, 0) << run.err;
    const nlohmann::json out = nlohmann::json::parse(run.out);
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0]["text"], "1990-12-31T15:59:60-08:00");
    EXPECT_EQ(out[0]["second"], 60);
    EXPECT_EQ(out[0]["offsetSeconds"], -28800);
    EXPECT_EQ(out[0]["utc"], "1991-01-01T00:00:00Z");
    EXPECT_EQ(out[0]["secondsSince1970"], 662688000);
    EXPECT_EQ(out[1]["universal"], true);
    EXPECT_EQ(out[1]["second"], 50);
}

TEST_F(DateCommand, NowPrintsTheSuitesTimestamps) {
    const ToolRun run = date("--now");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(std::regex_match(
        run.out, std::regex("timestamp              \\d\\d/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\n"
                            "timestampWithoutSpace  \\d\\d[A-Z][a-z]{2}\\d{4}_\\d{6}\n")))
        << run.out;
    const nlohmann::json json = nlohmann::json::parse(date("--now --json").out);
    EXPECT_TRUE(json.contains("timestamp") && json.contains("timestampWithoutSpace"));
}

TEST_F(DateCommand, ExitCodes) {
    struct Case {
        const char* arguments;
        int status;
        const char* error;  // a part of standard error
    };
    const Case cases[] = {
        {"hello 2008-01-02", 1, "brevant: date: \"hello\": not an RFC 3339 date-time"},
        {"", 2, "give RFC 3339 texts or --now"},
        {"--now 2008-01-02", 2, "give RFC 3339 texts or --now"},
        {"--frobnicate", 2, ""},
    };
    for (const Case& c : cases) {
        const ToolRun run = date(c.arguments);
        EXPECT_EQ(run.status, c.status) << c.arguments;
        EXPECT_NE(run.err.find(c.error), std::string::npos) << c.arguments << ": " << run.err;
    }
    EXPECT_NE(date("hello 2008-01-02").out.find("year 2008"), std::string::npos);
}

}  // namespace
