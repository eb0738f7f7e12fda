// NotificationCenter: posts reach observers of the name on a private session bus; without a bus a post
// logs once and answers false.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"
#include "support/PrivateBus.hpp"
#include "support/Scratch.hpp"

using bv::NotificationCenter;
using bv::Text;
using namespace std::chrono_literals;

TEST(NotificationCenter, ObserverReceivesOnlyItsNameInPostOrder) {
    bvtest::PrivateBus bus;
    std::vector<Text> received;
    auto observer = NotificationCenter::addObserverForName(
        Text("BVTolvernSettingsChanged"), [&](const Text& name) { received.push_back(name); });
    ASSERT_NE(observer, nullptr);
    EXPECT_GE(observer->fileDescriptor(), 0);
    EXPECT_EQ(observer->processPending(), 0);
    EXPECT_TRUE(NotificationCenter::postNotificationName(Text("SomethingElse")));
    EXPECT_TRUE(NotificationCenter::postNotificationName(Text("BVTolvernSettingsChanged")));
    EXPECT_TRUE(NotificationCenter::postNotificationName(Text("BVTolvernSettingsChanged")));
    int count = 0;
    for (int round = 0; round < 20 && count < 2; ++round)
        count += observer->waitAndProcess(500ms);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(received,
              (std::vector<Text>{Text("BVTolvernSettingsChanged"), Text("BVTolvernSettingsChanged")}));
    EXPECT_EQ(observer->waitAndProcess(50ms), 0);  // the other name never arrives
}

TEST(NotificationCenter, WithoutABusAPostLogsOnceAndAnswersFalse) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bv-no-bus", 1);
    bvtest::LogCapture log;
    EXPECT_FALSE(NotificationCenter::postNotificationName(Text("BVTolvernSettingsChanged")));
    EXPECT_FALSE(NotificationCenter::postNotificationName(Text("BVTolvernSettingsChanged")));
    EXPECT_EQ(NotificationCenter::addObserverForName(Text("x"), nullptr), nullptr);
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(log.lines[0].rfind("Notifications are off: no D-Bus session bus", 0), 0u) << log.lines[0];
}
