// Application and system facts: the information dictionary, bundles and frameworks, interface files, the
// old-system test, movie types and internet reachability. Every folder is temporary.
#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "BrevantCocoaExtensions/files/BVNSApplication.hpp"
#include "BrevantCocoaExtensions/files/BVNSHost.hpp"
#include "BrevantCocoaExtensions/files/BVSystemInfo.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"
#include "support/Scratch.hpp"

namespace {

using bv::Bundle;
using bv::Text;
namespace BVNSBundle = bv::BVNSBundle;
namespace BVNSApplication = bv::BVNSApplication;
namespace fs = std::filesystem;

void writeFile(const fs::path& path, const std::string& contents) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

std::string plist(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body +
           "</dict></plist>\n";
}

// A temporary main bundle and resource folder, with the log captured.
class BundleFolders : public ::testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(main_);
        previousMain_ = Bundle::setMainBundlePath(main_.string());
    }
    void TearDown() override {
        Bundle::setMainBundlePath(previousMain_);
        Bundle::setMainInfoDictionary(std::nullopt);
        BVNSBundle::setInterfaceFileLoader(nullptr);
        unsetenv("BV_RESOURCES");
    }

    bvtest::ScratchFolder scratch_{"bv-bundle"};
    const fs::path& folder_ = scratch_.root();
    fs::path main_ = folder_ / "Pageweave";
    bvtest::LogCapture capture_;
    std::vector<std::string>& log_ = capture_.lines;

  private:
    std::string previousMain_;
};

TEST_F(BundleFolders, InformationDictionaryFromInfoPlistOrSetByTheApplication) {
    EXPECT_EQ(BVNSApplication::appBundleID(), std::nullopt) << "no Info.plist";
    EXPECT_EQ(BVNSApplication::longVersionString(), Text("Version (null) ((null))"));

    writeFile(main_ / "Contents/Info.plist",
              plist("<key>CFBundleIdentifier</key><string>com.Brevant.Pageweave</string>"
                    "<key>CFBundleName</key><string>Pageweave</string>"
                    "<key>CFBundleVersion</key><string>1234</string>"
                    "<key>CFBundleShortVersionString</key><string>2.1</string>"
                    "<key>BVCopyrightBanner</key><string>\u00a9 Brevant</string>"));
    EXPECT_EQ(BVNSApplication::appBundleID(), Text("com.Brevant.Pageweave"));
    EXPECT_EQ(BVNSApplication::appName(), Text("Pageweave"));
    EXPECT_EQ(BVNSApplication::copyrightBanner(), Text("\u00a9 Brevant"));
    EXPECT_EQ(BVNSApplication::versionString(), Text("1234"));
    EXPECT_EQ(BVNSApplication::longVersionString(), Text("Version 1234 (2.1)")) << "build number first";

    Bundle::setMainInfoDictionary(bv::ValueDictionary{{Text("CFBundleShortVersionString"), Text("3.0")}});
    EXPECT_EQ(BVNSApplication::longVersionString(), Text("Version (null) (3.0)"));
    Bundle::setMainInfoDictionary(std::nullopt);

    writeFile(main_ / "Contents/Info.plist", "<plist><dict><key>CFBundleName");
    EXPECT_EQ(BVNSApplication::appName(), std::nullopt);
    ASSERT_FALSE(log_.empty());
    EXPECT_NE(log_.back().find((main_ / "Contents/Info.plist").string()), std::string::npos) << log_.back();
}

TEST_F(BundleFolders, FrameworksByNameInTheMainBundleThenAmongTheLoadedOnes) {
    fs::create_directories(main_ / "Contents/Frameworks/Charts.framework/Contents/Resources");
    writeFile(main_ / "Contents/Frameworks/Charts.framework/Contents/Resources/bar.png", "png");
    const auto plain = BVNSBundle::frameworkBundleWithName(Text("Charts"));
    const auto suffixed = BVNSBundle::frameworkBundleWithName(Text("Charts.framework"));
    ASSERT_TRUE(plain && suffixed);
    EXPECT_EQ(plain->bundlePath(), suffixed->bundlePath());
    EXPECT_EQ(BVNSBundle::frameworkBundleWithName(Text("Charts.FRAMEWORK")), nullptr)
        << "suffix appended again";
    EXPECT_EQ(BVNSBundle::pathForResourceOfTypeInFramework(Text("bar"), Text("png"), Text("Charts")),
              Text((plain->resourcePath() + "/bar.png")));
    EXPECT_EQ(BVNSBundle::pathForResourceInFramework(Text("bar.png"), Text("Charts")),
              Text((plain->resourcePath() + "/bar.png")));
    EXPECT_EQ(BVNSBundle::pathForResourceInFramework(Text("pie.png"), Text("Charts")), std::nullopt);

    // The library itself is a loaded framework whose resources hold the states table (the build tree's here).
    const auto library = BVNSBundle::frameworkBundleWithName(Text("BrevantCocoaExtensions"));
    ASSERT_TRUE(library);
    EXPECT_EQ(library->resourcePath(), bv::StandardFolders::resources());
    EXPECT_EQ(BVNSBundle::pathForResourceOfTypeInFramework(Text("states"), Text("txt"),
                                                           Text("BrevantCocoaExtensions")),
              Text(std::string(BV_SOURCE_DIR) + "/resources/states.txt"));
}

TEST_F(BundleFolders, PlugInFoldersScriptsAndClassBundles) {
    writeFile(main_ / "Contents/Info.plist",
              plist("<key>CFBundleIdentifier</key><string>com.Brevant.Pageweave</string>"));
    EXPECT_EQ(BVNSBundle::bundlePathForIdentifier(Text("com.Brevant.Pageweave")),
              Text((main_ / "Contents/PlugIns").string()));
    EXPECT_EQ(BVNSBundle::bundlePathForIdentifier(Text("com.brevant.pageweave")), std::nullopt);

    writeFile(main_ / "Contents/Resources/Scripts/Greet.scpt", "say \"hello\"");
    EXPECT_EQ(BVNSBundle::pathOfAppleScriptNamed(Text("Greet")),
              Text((main_ / "Contents/Resources/Scripts/Greet.scpt").string()));
    EXPECT_EQ(BVNSBundle::pathOfAppleScriptNamed(Text("Missing")), std::nullopt);

    struct Local : bv::Object {};
    EXPECT_EQ(BVNSBundle::bundleContainingClassOfInstance(Local())->bundlePath(), main_.string())
        << "the program";
    EXPECT_EQ(BVNSBundle::bundleContainingClassOfInstance(bv::Object())->name(),
              "BrevantCocoaExtensions.framework");
}

TEST_F(BundleFolders, InterfaceFilesGoThroughTheInstalledLoaderAndLogTheirFailures) {
    const auto owner = std::make_shared<bv::Object>();
    writeFile(main_ / "Contents/Resources/Main.ui", "<ui/>");
    const Bundle mainBundle = *Bundle::mainBundle();
    EXPECT_EQ(BVNSBundle::topLevelNibObjectsForLoadedNibNamedOwnedBy(mainBundle, Text("Main"), owner),
              std::nullopt);

    std::vector<std::string> loaded;
    BVNSBundle::setInterfaceFileLoader([&](const std::string& path, const std::shared_ptr<bv::Object>& by) {
        loaded.push_back(path);
        EXPECT_EQ(by, owner);
        return std::optional(bv::ValueArray{bv::Value(std::make_shared<bv::Object>())});
    });
    const auto objects =
        BVNSBundle::topLevelNibObjectsForLoadedNibNamedOwnedBy(mainBundle, Text("Main"), owner);
    ASSERT_TRUE(objects);
    EXPECT_EQ(objects->size(), 1u);
    EXPECT_EQ(BVNSBundle::topLevelNibObjectsForLoadedNibNamedOwnedBy(mainBundle, Text("Other"), owner),
              std::nullopt);
    EXPECT_EQ(BVNSBundle::topLevelNibObjectsForLoadedFrameworkNibNamedOwnedBy(mainBundle, Text("Charts"),
                                                                              Text("Main"), owner),
              std::nullopt);

    // "Object" names the library's class bv::Object, so its file comes from the library's resources.
    setenv("BV_RESOURCES", folder_.c_str(), 1);
    writeFile(folder_ / "Object.ui", "<ui/>");
    EXPECT_TRUE(BVNSBundle::topLevelNibObjectsForLoadedClassNibNamedOwnedBy(Text("Object"), owner));
    EXPECT_EQ(BVNSBundle::topLevelNibObjectsForLoadedClassNibNamedOwnedBy(Text("NoSuchClass"), owner),
              std::nullopt);

    EXPECT_EQ(loaded, (std::vector<std::string>{(main_ / "Contents/Resources/Main.ui").string(),
                                                (folder_ / "Object.ui").string()}));
    EXPECT_EQ(log_, (std::vector<std::string>{"Main Nib failed to load!", "Other Nib failed to load!",
                                              "Main Nib failed to load from framework \"Charts\".",
                                              "NoSuchClass Nib failed to load from plug-in."}));
}

TEST(BVSystemInfo, OldSystemTestFromTheVersionSelectors) {
    struct Case {
        std::optional<std::int64_t> version, major, minor;
        bool preLeopard;
    };
    const Case cases[] = {
        {0x1049, 10, 4, true},   // 10.4.9
        {0x1049, 10, 4, true},   // 10.4.11 reports 0x1049 too
        {0x1039, 10, 3, true},   // below 0x1040
        {0x1050, 10, 5, false},  // 10.5.0
        {std::nullopt, 10, 4, false}, {0x1050, std::nullopt, std::nullopt, false},
    };
    for (const Case& c : cases) {
        const bv::BVSystemInfo info([&](std::uint32_t selector) {
            switch (selector) {
                case 0x73797376:
                    return c.version;  // 'sysv'
                case 0x73797331:
                    return c.major;  // 'sys1'
                case 0x73797332:
                    return c.minor;  // 'sys2'
                default:
                    return std::optional<std::int64_t>();
            }
        });
        EXPECT_EQ(info.isPreLeopard(), c.preLeopard) << (c.version ? *c.version : -1);
    }
    EXPECT_FALSE(bv::BVSystemInfo::sharedInstance().isPreLeopard()) << "never on Linux";
    EXPECT_EQ(&bv::BVSystemInfo::sharedInstance(), &bv::BVSystemInfo::sharedInstance());
}

TEST(BVSystemInfo, MovieTypesFromTheMimeDatabaseInDeclarationOrder) {
    const bvtest::ScratchFolder folder("bv-mime");
    folder.write("home/mime/types", "video/x-b\naudio/ogg\nvideo/mp4\n");
    folder.write("home/mime/video/mp4.xml",
                 "<mime-type type=\"video/mp4\"><glob pattern=\"*.mp4\"/><glob pattern=\"*.[Mm]4\"/>"
                 "<glob pattern=\"*.m4v\"/></mime-type>");
    folder.write("home/mime/video/x-b.xml",
                 "<mime-type><glob pattern=\"*.bbb\"/><glob pattern=\"*.mp4\"/></mime-type>");
    folder.write("system/mime/types", "video/x-a\n");
    folder.write("system/mime/video/x-a.xml", "<mime-type><glob pattern=\"*.aaa\"/></mime-type>");
    folder.write("system/mime/video/x-b.xml", "<mime-type><glob pattern=\"*.hidden\"/></mime-type>");
    setenv("XDG_DATA_HOME", folder.path("home").c_str(), 1);
    setenv("XDG_DATA_DIRS", folder.path("system").c_str(), 1);
    const std::vector<Text> types = bv::BVSystemInfo::movieFileTypes();
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
    EXPECT_EQ(types, (std::vector<Text>{Text("mp4"), Text("m4v"), Text("aaa"), Text("bbb"), Text("mp4")}));
    EXPECT_EQ(&bv::BVSystemInfo::movieFileTypes(), &bv::BVSystemInfo::movieFileTypes())
        << "kept for the process";
}

TEST(BVNSHost, ReachableWhenOneOfTheNamesResolves) {
    const auto previous = bv::BVNSHost::setReachabilityHostNames({"localhost"});
    EXPECT_TRUE(bv::BVNSHost::isInternetReachable());
    bv::BVNSHost::setReachabilityHostNames({});
    EXPECT_FALSE(bv::BVNSHost::isInternetReachable());
    bv::BVNSHost::setReachabilityHostNames(previous);
}

}  // namespace
