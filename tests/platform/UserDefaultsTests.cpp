// User defaults: one property list per application under the preferences folder, rewritten whole.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/UserDefaults.hpp"
#include "files/FileTestSupport.hpp"

using bv::Text;
namespace defaults = bv::UserDefaults;

namespace {
class UserDefaults : public bvtest::FileTest {
  protected:
    void SetUp() override {
        FileTest::SetUp();
        setenv("XDG_CONFIG_HOME", path("config").c_str(), 1);
        bv::Bundle::setMainInfoDictionary(
            bv::ValueDictionary{{Text("CFBundleIdentifier"), Text("com.brevant.quiz")}});
    }
    void TearDown() override {
        bv::Bundle::setMainInfoDictionary(std::nullopt);
        unsetenv("XDG_CONFIG_HOME");
        FileTest::TearDown();
    }
};
}  // namespace

TEST_F(UserDefaults, StoresTextsPerApplicationAndKeepsOtherValues) {
    EXPECT_EQ(defaults::path(), path("config/com.brevant.quiz.plist"));
    EXPECT_EQ(defaults::stringForKey(Text("BVLastOpenedCSVFile")), std::nullopt);
    // Another program stored a number; it survives our changes.
    file("config/com.brevant.quiz.plist",
         "<plist version=\"1.0\"><dict><key>Count</key><integer>3</integer></dict></plist>");
    ASSERT_TRUE(defaults::setStringForKey(Text("/data/class.csv"), Text("BVLastOpenedCSVFile")));
    EXPECT_EQ(defaults::stringForKey(Text("BVLastOpenedCSVFile")), Text("/data/class.csv"));
    EXPECT_EQ(defaults::stringForKey(Text("Count")), std::nullopt);  // not a text
    ASSERT_TRUE(defaults::removeObjectForKey(Text("BVLastOpenedCSVFile")));
    EXPECT_EQ(defaults::stringForKey(Text("BVLastOpenedCSVFile")), std::nullopt);
    EXPECT_NE(contents("config/com.brevant.quiz.plist").find("<key>Count</key>"), std::string::npos);
}

TEST_F(UserDefaults, DamagedFileIsLoggedReadsEmptyAndIsReplacedByTheNextChange) {
    file("config/com.brevant.quiz.plist", "<plist><dict><key>x</key>");
    EXPECT_EQ(defaults::stringForKey(Text("x")), std::nullopt);
    ASSERT_FALSE(logged_.empty());
    EXPECT_EQ(
        logged_.front().rfind("UserDefaults: the defaults file " + path("config/com.brevant.quiz.plist") +
                                  " is damaged and reads as empty",
                              0),
        0u);
    ASSERT_TRUE(defaults::setStringForKey(Text("y"), Text("x")));
    EXPECT_EQ(defaults::stringForKey(Text("x")), Text("y"));
}
