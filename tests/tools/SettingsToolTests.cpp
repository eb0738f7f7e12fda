// brevant settings, credentials and doctor run as a person runs them, on temporary suite folders and a
// private session bus: output, standard error and exit codes.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <string>
#include <thread>

#include "files/SuiteFolders.hpp"
#include "support/PrivateBus.hpp"
#include "support/ToolRun.hpp"

namespace {

using bvtest::ToolRun;

class SettingsTool : public bvtest::ToolTest {
  protected:
    // Runs "brevant ARGUMENTS" through the shell, without a controlling terminal.
    [[nodiscard]] ToolRun run(const std::string& arguments, const std::string& input = "") const {
        return scratch_.run("setsid \"$BREVANT\" " + arguments, input);
    }

    bvtest::PrivateBus bus_;
    bvtest::SuiteFolders folders_;
};

}  // namespace

TEST_F(SettingsTool, SettingsShowGetSetPathAndTheirErrors) {
    EXPECT_EQ(run("settings path").status, 1);  // no Support Files installed
    EXPECT_EQ(run("settings set State x").status, 1);
    (void)folders_.makeSupportFiles();
    EXPECT_EQ(run("settings path").out, folders_.localBrevant() + "/Support Files/Settings/Settings.xml\n");
    EXPECT_EQ(run("settings set CollaborationWebServerPort 9000").status, 0);
    EXPECT_EQ(run("settings set State 'Room 4'").status, 0);
    EXPECT_EQ(run("settings get CollaborationWebServerPort").out, "9000\n");
    EXPECT_EQ(run("settings get State --json").out, "\"Room 4\"\n");
    EXPECT_EQ(
        run("settings").out,
        "Version: 1.0\nState: Room 4\nPreferCommonCoreStandards: false\nCollaborationWebServerPort: 9000\n"
        "CollaborationCommunicationPort: 8081\n");
    for (const char* wrong :
         {"settings set CollaborationWebServerPort 70000", "settings set Version 2.0",
          "settings set PreferCommonCoreStandards yes", "settings get Colour", "settings get"}) {
        const ToolRun bad = run(wrong);
        EXPECT_EQ(bad.status, 2) << wrong;
        EXPECT_EQ(bad.err.rfind("brevant: settings: ", 0), 0u) << bad.err;
    }
}

TEST_F(SettingsTool, WatchShowsASaveMadeByAnotherProcess) {
    (void)folders_.makeSupportFiles();
    const std::string out = folders_.root() + "/watch.txt";
    const pid_t watcher = fork();
    if (watcher == 0) {
        freopen(out.c_str(), "w", stdout);
        execl(bvtest::brevantPath().c_str(), "brevant", "settings", "watch", static_cast<char*>(nullptr));
        _exit(127);
    }
    // The watcher's match may not be in place yet: save until it reports, a bounded number of times.
    for (int attempt = 0; attempt < 100 && bvtest::SuiteFolders::read(out).empty(); ++attempt) {
        ASSERT_EQ(run("settings set CollaborationCommunicationPort 7000").status, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    kill(watcher, SIGTERM);
    waitpid(watcher, nullptr, 0);
    const std::string lines = bvtest::SuiteFolders::read(out);
    EXPECT_NE(lines.find(" CollaborationCommunicationPort=7000\n"), std::string::npos) << lines;
}

TEST_F(SettingsTool, CredentialsSaveCheckShowRemove) {
    const ToolRun noTerminal = run("credentials save --username Ann");
    EXPECT_EQ(noTerminal.status, 2);
    EXPECT_NE(noTerminal.err.find("--password-stdin"), std::string::npos);
    EXPECT_EQ(run("credentials show").status, 1);
    EXPECT_EQ(run("credentials save --username Ann --password-stdin", "Pa55 word\n").status, 0);
    EXPECT_EQ(run("credentials show").out, "Username: Ann\n");
    EXPECT_EQ(run("credentials show --show-password --json").out,
              "{\"username\":\"Ann\",\"password\":\"Pa55 word\"}\n");
    EXPECT_EQ(run("credentials check --username ANN --password-stdin", "Pa55 word").status, 0);
    EXPECT_EQ(run("credentials check --username Ann --password-stdin", "pa55 word").status, 1);
    EXPECT_EQ(run("credentials remove").status, 0);
    EXPECT_EQ(run("credentials check --username Ann --password-stdin", "Pa55 word").status, 1);
}

TEST_F(SettingsTool, DoctorReportsEachProblemWithAFix) {
    (void)run("credentials save --username Ann --password-stdin", "x");
    const std::string credentials = folders_.user() + "/Brevant/credentials.xml";
    ::chmod(credentials.c_str(), 0644);
    const ToolRun sick = run("doctor");
    EXPECT_EQ(sick.status, 1);
    EXPECT_NE(sick.out.find("PROBLEM  Stored credentials"), std::string::npos) << sick.out;
    EXPECT_NE(sick.out.find("fix: chmod 600 '" + credentials + "'"), std::string::npos);
    EXPECT_NE(sick.out.find("PROBLEM  Support Files"), std::string::npos);

    const std::string support = folders_.makeSupportFiles();
    for (const char* folder : {"Languages", "Games", "ZRP"})
        std::filesystem::create_directories(folders_.localBrevant() + "/" + folder);
    bvtest::SuiteFolders::write(support + "/Web Services/BrevantWSConfig.xml", "<Config/>");
    bvtest::SuiteFolders::write(support + "/Web Services/OrlaneConfig.xml", "<Config/>");
    for (const std::string& folder : {folders_.localBrevant(), support + "/Web Services"})
        ::chmod(folder.c_str(), 0777);
    ::chmod(credentials.c_str(), 0600);
    const ToolRun healthy = run("doctor --json");
    EXPECT_EQ(healthy.status, 0) << healthy.out;
    EXPECT_NE(healthy.out.find("\"problems\": 0"), std::string::npos);
}
