// The shared settings file under stress: concurrent writer processes, writers killed mid-save, and the change
// notice reaching another process only once the file is complete. Each test prints its figures (recorded in
// docs/RELIABILITY.md).
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"
#include "files/SuiteFolders.hpp"
#include "support/PrivateBus.hpp"

using bv::Text;
using bv::TolvernSettings;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

// Settings whose fields all derive from (writer, round), so a file mixing two saves is detected.
TolvernSettings stamped(int writer, int round) {
    TolvernSettings settings;
    settings.setState(Text("writer " + std::to_string(writer) + " round " + std::to_string(round)));
    settings.setCollaborationWebServerPort(writer);
    settings.setCollaborationCommunicationPort(round);
    settings.setPreferCommonCoreStandards(round % 2 == 1);
    return settings;
}

// Whether the settings are one whole save of stamped(), and which.
bool isWholeSave(const TolvernSettings& settings) {
    return settings ==
           stamped(settings.collaborationWebServerPort(), settings.collaborationCommunicationPort());
}

std::size_t strayFiles(const std::string& folder) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(folder))
        count += entry.path().filename() != "Settings.xml" ? 1 : 0;
    return count;
}

pid_t spawnWriter(const std::string& path, int writer, int rounds) {
    const pid_t pid = fork();
    if (pid == 0) {
        bv::setLogSink([](const std::string&) {});
        for (int round = 0; round < rounds || rounds < 0; ++round)
            stamped(writer, round).saveAtPath(Text(path));
        _exit(0);
    }
    return pid;
}

// A settings folder of its own under temporary suite folders.
struct SettingsFolder {
    bvtest::SuiteFolders folders;
    std::string folder = folders.root() + "/Settings";
    std::string path = folder + "/Settings.xml";
    SettingsFolder() { fs::create_directories(folder); }
};

}  // namespace

TEST(SettingsReliability, FourConcurrentWritersLeaveOneWholeSaveAndNoTemporaryFile) {
    bvtest::PrivateBus bus;
    const SettingsFolder scratch;
    const std::string &folder = scratch.folder, &path = scratch.path;
    stamped(0, 0).saveAtPath(Text(path));
    constexpr int kWriters = 4, kRounds = 500;
    std::vector<pid_t> writers;
    for (int writer = 1; writer <= kWriters; ++writer)
        writers.push_back(spawnWriter(path, writer, kRounds));
    std::size_t reads = 0, torn = 0;
    int running = kWriters;
    while (running > 0) {
        const auto settings = TolvernSettings::settingsAtPath(Text(path));
        ++reads;
        if (!settings || !isWholeSave(*settings)) ++torn;
        while (running > 0 && waitpid(-1, nullptr, WNOHANG) > 0)
            --running;
    }
    const auto last = TolvernSettings::settingsAtPath(Text(path));
    ASSERT_TRUE(last.has_value());
    EXPECT_TRUE(isWholeSave(*last));
    EXPECT_EQ(last->collaborationCommunicationPort(), kRounds - 1);  // some writer's final save
    EXPECT_EQ(torn, 0u);
    EXPECT_EQ(strayFiles(folder), 0u);
    std::printf("concurrent writers: %d x %d saves, %zu reads in between, %zu not whole\n", kWriters, kRounds,
                reads, torn);
}

TEST(SettingsReliability, AWriterKilledMidSaveLeavesTheOldOrTheNewSettings) {
    const SettingsFolder scratch;
    const std::string &folder = scratch.folder, &path = scratch.path;
    stamped(1, 0).saveAtPath(Text(path));
    std::mt19937 random(20261123);
    std::uniform_int_distribution<int> delayMicros(0, 20'000);
    constexpr int kKills = 200;
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t writer = spawnWriter(path, 1, -1);
        std::this_thread::sleep_for(std::chrono::microseconds(delayMicros(random)));
        ::kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        const auto settings = TolvernSettings::settingsAtPath(Text(path));
        ASSERT_TRUE(settings.has_value()) << "kill " << kill;
        ASSERT_TRUE(isWholeSave(*settings)) << "kill " << kill;
    }
    // A kill between creating and renaming the temporary file leaves that file; the settings stay whole.
    std::printf(
        "killed writers: %d kills at random points within 20 ms, settings whole every time, %zu "
        "temporary files left\n",
        kKills, strayFiles(folder));
}

TEST(SettingsReliability, TheNoticeReachesAnotherProcessOnlyAfterTheFileIsComplete) {
    bvtest::PrivateBus bus;
    const SettingsFolder scratch;
    const std::string& path = scratch.path;
    int toParent[2], ready[2];
    ASSERT_EQ(pipe(toParent), 0);
    ASSERT_EQ(pipe(ready), 0);
    constexpr int kRounds = 100;
    const pid_t listener = fork();
    if (listener == 0) {
        // On each notice, read the file and send back the round it holds (-1 when it is not one whole save).
        auto observer =
            bv::NotificationCenter::addObserverForName(Text("BVTolvernSettingsChanged"), [&](const Text&) {
                const auto settings = TolvernSettings::settingsAtPath(Text(path));
                const int round =
                    settings && isWholeSave(*settings) ? settings->collaborationCommunicationPort() : -1;
                (void)!write(toParent[1], &round, sizeof round);
            });
        const char go = observer ? 1 : 0;
        (void)!write(ready[1], &go, 1);
        for (int received = 0; observer && received < kRounds;)
            received += std::max(0, observer->waitAndProcess(5000ms));
        _exit(0);
    }
    char go = 0;
    ASSERT_EQ(read(ready[0], &go, 1), 1);
    ASSERT_EQ(go, 1);
    std::vector<double> latencies;
    for (int round = 0; round < kRounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        stamped(2, round).saveAtPath(Text(path));
        int seen = -2;
        ASSERT_EQ(read(toParent[0], &seen, sizeof seen), static_cast<ssize_t>(sizeof seen));
        latencies.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        ASSERT_EQ(seen, round) << "the listener read something else than the save it was told about";
    }
    waitpid(listener, nullptr, 0);
    std::sort(latencies.begin(), latencies.end());
    std::printf(
        "notice: %d saves, each seen complete by the other process; save to its reading there: median "
        "%.2f ms, slowest %.2f ms\n",
        kRounds, latencies[latencies.size() / 2], latencies.back());
}
