// TolvernSettings: the exact file, the reading rules and damaged files (the notice after a save is tested
// across processes in SettingsReliabilityTests).
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"
#include "files/SuiteFolders.hpp"

using bv::Text;
using bv::TolvernSettings;

TEST(TolvernSettings, SavesTheExactDocumentWithVersionOneUniversallyWritable) {
    bvtest::SuiteFolders folders;
    const std::string path = folders.root() + "/Settings.xml";
    bvtest::SuiteFolders::write(path, "<TolvernSettings><Version>2.0</Version></TolvernSettings>");
    TolvernSettings settings = *TolvernSettings::settingsAtPath(Text(path));
    EXPECT_EQ(settings.version(), Text("2.0"));
    settings.setState(Text("MN & <co>"));
    settings.setPreferCommonCoreStandards(true);
    settings.setCollaborationWebServerPort(-1);
    settings.saveAtPath(Text(path));
    EXPECT_EQ(bvtest::SuiteFolders::read(path),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<TolvernSettings>\n"
              "    <Version>1.0</Version>\n"
              "    <State>MN &amp; &lt;co&gt;</State>\n"
              "    <PreferCommonCoreStandards>true</PreferCommonCoreStandards>\n"
              "    <CollaborationWebServerPort>-1</CollaborationWebServerPort>\n"
              "    <CollaborationCommunicationPort>8081</CollaborationCommunicationPort>\n"
              "</TolvernSettings>\n");
    EXPECT_EQ(bvtest::SuiteFolders::mode(path), 0777u);
    TolvernSettings expected = settings;
    expected.setVersion(Text("1.0"));
    EXPECT_EQ(TolvernSettings::settingsAtPath(Text(path)), expected);
    TolvernSettings empty;
    empty.saveAtPath(Text(path));
    EXPECT_NE(bvtest::SuiteFolders::read(path).find("<State/>"), std::string::npos);
}

TEST(TolvernSettings, ReadingRulesPerElement) {
    bvtest::SuiteFolders folders;
    const std::string path = folders.root() + "/Settings.xml";
    struct Row {
        std::string children;
        bool prefer;
        int webPort;
        int communicationPort;
    };
    const Row rows[] = {
        {"", false, 8080, 8081},  // nothing there: the defaults
        {"<PreferCommonCoreStandards>false</PreferCommonCoreStandards>", false, 8080, 8081},
        {"<PreferCommonCoreStandards>False</PreferCommonCoreStandards>", true, 8080, 8081},
        {"<PreferCommonCoreStandards>0</PreferCommonCoreStandards>", true, 8080, 8081},
        {"<PreferCommonCoreStandards/>", true, 8080, 8081},
        {"<CollaborationWebServerPort>80x</CollaborationWebServerPort>", false, 80, 8081},
        {"<CollaborationWebServerPort>abc</CollaborationWebServerPort>", false, 0, 8081},
        {"<CollaborationWebServerPort> 9090</CollaborationWebServerPort><Extra>1</Extra>", false, 9090, 8081},
        {"<Deeper><CollaborationCommunicationPort>1</CollaborationCommunicationPort></Deeper>", false, 8080,
         8081},
    };
    for (const Row& row : rows) {
        bvtest::SuiteFolders::write(path, "<AnyRoot>" + row.children + "</AnyRoot>");
        const auto settings = TolvernSettings::settingsAtPath(Text(path));
        ASSERT_TRUE(settings.has_value()) << row.children;
        EXPECT_EQ(settings->preferCommonCoreStandards(), row.prefer) << row.children;
        EXPECT_EQ(settings->collaborationWebServerPort(), row.webPort) << row.children;
        EXPECT_EQ(settings->collaborationCommunicationPort(), row.communicationPort) << row.children;
    }
}

TEST(TolvernSettings, DamagedEmptyBinaryOrHugeFilesGiveTheDefaults) {
    bvtest::SuiteFolders folders;
    EXPECT_EQ(TolvernSettings::defaultPath(), std::nullopt);  // no Support Files installed
    EXPECT_EQ(TolvernSettings::settingsFromDefaultFile(), TolvernSettings());
    (void)folders.makeSupportFiles();
    const std::string path = TolvernSettings::defaultPath()->toUtf8();
    EXPECT_EQ(path, folders.localBrevant() + "/Support Files/Settings/Settings.xml");
    const std::string huge = "<TolvernSettings><State>" +
                             std::string(TolvernSettings::kMaximumFileSize, 'x') +
                             "</State></TolvernSettings>";
    for (const std::string& content : {std::string(), std::string("\0\xff\xfe<\x01", 5),
                                       std::string("<?xml version=\"1.0\"?>"), std::string("no xml"), huge}) {
        bvtest::SuiteFolders::write(path, content);
        EXPECT_EQ(TolvernSettings::settingsFromDefaultFile(), TolvernSettings()) << content.substr(0, 20);
    }
    EXPECT_EQ(TolvernSettings::settingsAtPath(Text(folders.root() + "/missing.xml")), std::nullopt);
}

TEST(TolvernSettings, CurrentStateAbbreviationFollowsTheSavedState) {
    bvtest::SuiteFolders folders;
    (void)folders.makeSupportFiles();
    EXPECT_EQ(bv::BVUtilities::currentStateAbbreviation(), std::nullopt) << "empty state in the defaults";
    TolvernSettings settings;
    settings.setState(Text("new york"));
    settings.saveAtPath(*TolvernSettings::defaultPath());
    EXPECT_EQ(bv::BVUtilities::currentStateAbbreviation(), Text("NY"));
    settings.setState(Text("Atlantis"));
    settings.saveAtPath(*TolvernSettings::defaultPath());
    EXPECT_EQ(bv::BVUtilities::currentStateAbbreviation(), std::nullopt);
}
