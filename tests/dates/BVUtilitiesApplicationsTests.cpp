// BVUtilities: sibling applications, running (a name owned on a private session bus) and installed (desktop
// entries under temporary data folders), and the product configuration they make.
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "support/PrivateBus.hpp"
#include "support/Scratch.hpp"

namespace {

using bv::BVUtilities;
using bv::Text;
namespace fs = std::filesystem;

class Applications : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("XDG_DATA_HOME", (folder_ / "home").c_str(), 1);
        setenv("XDG_DATA_DIRS", (folder_ / "system").c_str(), 1);
    }
    void TearDown() override {
        unsetenv("XDG_DATA_HOME");
        unsetenv("XDG_DATA_DIRS");
    }
    void install(const std::string& identifier, const std::string& entry, const std::string& where = "home") {
        scratch_.write(where + "/applications/" + identifier + ".desktop", entry);
    }
    void uninstall(const std::string& identifier) {
        fs::remove(folder_ / "home/applications" / (identifier + ".desktop"));
    }

    bvtest::ScratchFolder scratch_{"bv-applications"};
    const fs::path& folder_ = scratch_.root();
};

// Owns a name on the session bus while it lives, as a running application of the suite does.
class OwnedName {
  public:
    explicit OwnedName(const char* name) {
        if (sd_bus_open_user(&bus_) < 0 || sd_bus_request_name(bus_, name, 0) < 0)
            throw std::runtime_error("cannot own the bus name");
    }
    ~OwnedName() { sd_bus_flush_close_unref(bus_); }

  private:
    sd_bus* bus_ = nullptr;
};

TEST_F(Applications, RunningApplicationsAreFoundByNameAndByIdentifierIgnoringCase) {
    bvtest::PrivateBus bus;
    install("com.Brevant.Pageweave", "[Desktop Entry]\nName=Pageweave\nExec=\"/opt/page weave/bin/pw\" %F\n");
    EXPECT_EQ(BVUtilities::attributesForRunningApplicationNamed(Text("Pageweave")), std::nullopt);
    EXPECT_FALSE(BVUtilities::applicationIsRunningWithBundleID(Text("com.Brevant.Pageweave")));

    const OwnedName pageweave("com.Brevant.Pageweave");
    const OwnedName slidemark("com.brevant.Slidemark");  // no desktop entry
    const auto attributes = BVUtilities::attributesForRunningApplicationNamed(Text("Pageweave"));
    ASSERT_TRUE(attributes);
    EXPECT_EQ(attributes->at(Text("NSApplicationBundleIdentifier")),
              bv::Value(Text("com.Brevant.Pageweave")));
    EXPECT_EQ(attributes->at(Text("NSApplicationPath")), bv::Value(Text("/opt/page weave/bin/pw")));
    EXPECT_EQ(attributes->at(Text("NSApplicationProcessIdentifier")),
              bv::Value(static_cast<long long>(getpid())));
    EXPECT_EQ(BVUtilities::attributesForRunningApplicationNamed(Text("pageweave")), std::nullopt)
        << "exact name";

    const auto byIdentifier =
        BVUtilities::attributesForRunningApplicationWithBundleID(Text("COM.BREVANT.SLIDEMARK"));
    ASSERT_TRUE(byIdentifier);
    EXPECT_EQ(byIdentifier->at(Text("NSApplicationName")), bv::Value(Text("Slidemark")))
        << "the last component";
    EXPECT_TRUE(BVUtilities::applicationIsRunningWithBundleID(Text("com.brevant.pageweave")));
    EXPECT_FALSE(BVUtilities::applicationIsRunningWithBundleID(Text("com.Brevant.Marblet")));
}

TEST_F(Applications, NoSessionBusMeansNothingRuns) {
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + (folder_ / "no-bus").string()).c_str(), 1);
    EXPECT_FALSE(BVUtilities::applicationIsRunningWithBundleID(Text("com.Brevant.Pageweave")));
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST_F(Applications, ProductConfigurationFromTheInstalledApplications) {
    const char* identifiers[] = {"com.Brevant.BrevantTools", "com.Brevant.Pageweave", "com.brevant.Slidemark",
                                 "Marblet"};
    // Indexed by tools, A1, A2, A3 as bits 3 to 0.
    const int expected[16] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 4, 3, 6, 2, 2, 2, 5};
    for (int combination = 0; combination < 16; ++combination) {
        for (int bit = 0; bit < 4; ++bit) {
            const std::string identifier = identifiers[3 - bit];
            if (combination & (1 << bit))
                install(identifier, "[Desktop Entry]\nExec=/usr/bin/" + identifier + "\n");
            else
                uninstall(identifier);
        }
        EXPECT_EQ(BVUtilities::getProductConfiguration(), expected[combination]) << combination;
        EXPECT_EQ(BVUtilities::productConfigurationIsThirdPartyOnly(), expected[combination] <= 1);
    }
    // A hidden entry in the user's folder hides the system's one; an entry without Exec gives no path.
    install("com.Brevant.BrevantTools", "[Desktop Entry]\nExec=/usr/bin/tools\n", "system");
    install("com.Brevant.BrevantTools", "[Desktop Entry]\nHidden=true\nExec=/usr/bin/tools\n");
    EXPECT_EQ(BVUtilities::getProductConfiguration(), 0);
    install("com.Brevant.BrevantTools", "[Desktop Entry]\nName=Tools\n");
    EXPECT_EQ(BVUtilities::getProductConfiguration(), 0);
    uninstall("com.Brevant.BrevantTools");
    EXPECT_EQ(BVUtilities::getProductConfiguration(), 5) << "the system folder's entry";
}

}  // namespace
