// BVFileManager: the folder layout, permission repair, alerts, configuration and content files, dialogs
// and the stored credentials, all under a temporary folder.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVEncoder.hpp"
#include "files/SuiteFolders.hpp"
#include "support/Scratch.hpp"

using bv::BVFileManager;
using bv::Text;
namespace fs = std::filesystem;

namespace {

using bvtest::LogCapture;

std::string pathOf(const std::optional<Text>& path) {
    return path ? path->toUtf8() : std::string("(null)");
}

}  // namespace

TEST(BVFileManager, LayoutPathsAndWhichFoldersAreCreated) {
    bvtest::SuiteFolders folders;
    const std::string brevant = folders.localBrevant();
    struct Row {
        std::function<std::optional<Text>()> operation;
        std::string path;
        bool created;
    };
    const Row rows[] = {
        {BVFileManager::localBrevantSupportDirectory, brevant, true},
        {BVFileManager::localPlugInsDirectory, brevant + "/PlugIns", true},
        {BVFileManager::standardsDirectory, brevant + "/Standards", true},
        {BVFileManager::categoriesDirectory, brevant + "/Categories", true},
        {BVFileManager::contentDownloadDirectory, brevant + "/Content Downloads", true},
        {BVFileManager::fusionChartsDirectory, brevant + "/FusionCharts", false},
        {BVFileManager::ChartsJSChartsDirectory, brevant + "/ChartJS/Charts", false},
        {BVFileManager::userBrevantDirectory, folders.user() + "/Brevant", true},
        {BVFileManager::powerpointSandboxedSlidemarkSupportDirectory,
         folders.root() +
             "/home/Library/Containers/com.microsoft.Powerpoint/Data/Library/Application Support/Brevant",
         true},
        {BVFileManager::credentialsPath, folders.user() + "/Brevant/credentials.xml", false},
    };
    ::umask(022);
    for (const Row& row : rows) {
        EXPECT_EQ(pathOf(row.operation()), row.path);
        EXPECT_EQ(fs::is_directory(row.path), row.created) << row.path;
        if (row.created) {
            EXPECT_EQ(bvtest::SuiteFolders::mode(row.path), 0777u) << row.path;
        }
    }
    // Support Files is the installer's: without it, nothing below it is made and the paths are null.
    EXPECT_EQ(BVFileManager::supportFilesDirectory(), std::nullopt);
    EXPECT_EQ(BVFileManager::tolvernSettingsDirectory(), std::nullopt);
    EXPECT_EQ(BVFileManager::webServiceConfigFilePath(), std::nullopt);
    EXPECT_FALSE(fs::exists(brevant + "/Support Files"));
    const std::string support = folders.makeSupportFiles();
    EXPECT_EQ(pathOf(BVFileManager::tolvernSettingsDirectory()), support + "/Settings");
    EXPECT_EQ(pathOf(BVFileManager::OrlaneConfigFilePath()), support + "/Web Services/OrlaneConfig.xml");
    EXPECT_TRUE(fs::is_directory(support + "/Settings") && fs::is_directory(support + "/Web Services"));
    BVFileManager::removeSupportFiles();
    EXPECT_FALSE(fs::exists(support));
    EXPECT_EQ(BVFileManager::userApplicationSupportDirectory(), Text(folders.user()));
}

TEST(BVFileManager, PermissionRepairOfTheBrevantRoots) {
    bvtest::SuiteFolders folders;
    fs::create_directories(folders.localBrevant());
    ::chmod(folders.localBrevant().c_str(), 0755);  // writable by its owner: left alone
    const std::string user = folders.user() + "/Brevant";
    fs::create_directories(user);
    ::chmod(user.c_str(), 0700);  // the user root is repaired every time
    EXPECT_TRUE(BVFileManager::localBrevantSupportDirectory().has_value());
    EXPECT_TRUE(BVFileManager::userBrevantDirectory().has_value());
    EXPECT_EQ(bvtest::SuiteFolders::mode(folders.localBrevant()), 0755u);
    EXPECT_EQ(bvtest::SuiteFolders::mode(user), 0777u);

    if (::geteuid() != 0) GTEST_SKIP() << "needs root to run the failing repair as another user";
    // Another user cannot change the mode of root's folder: the critical alert, one log line and null.
    ::chmod(user.c_str(), 0755);
    EXPECT_EXIT(
        {
            bv::AlertRecorder alerts;
            LogCapture log;
            if (::setuid(65534) != 0) _exit(3);
            const bool ok =
                !BVFileManager::userBrevantDirectory() && alerts.alerts().size() == 1 &&
                alerts.alerts()[0].style == bv::AlertStyle::Critical &&
                alerts.alerts()[0].title == Text("Access Denied") &&
                alerts.alerts()[0].message == Text("Unable to set correct permissions for " + user +
                                                   ". Please contact your administrator.") &&
                alerts.alerts()[0].buttons == std::vector<Text>{Text("OK")} && log.lines.size() == 1 &&
                log.lines[0] ==
                    "Incorrect permissions for Brevant folder and failed to correctly reset them. "
                    "Path: " +
                        user;
            _exit(ok ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(BVFileManager, AlertsKeepTheirExactTexts) {
    bvtest::SuiteFolders folders;
    bv::AlertRecorder alerts;
    EXPECT_EQ(pathOf(BVFileManager::languagesDirectory()), folders.localBrevant() + "/Languages");
    EXPECT_EQ(pathOf(BVFileManager::gamesDirectory()), folders.localBrevant() + "/Games");
    EXPECT_EQ(pathOf(BVFileManager::zrpDirectory()), folders.localBrevant() + "/ZRP");
    EXPECT_FALSE(BVFileManager::URLStringExistsShowErrorIfNonexistent(Text(" \n\t"), false));
    EXPECT_FALSE(BVFileManager::URLStringExistsShowErrorIfNonexistent(std::nullopt, true));
    EXPECT_TRUE(BVFileManager::URLStringExistsShowErrorIfNonexistent(Text(" http://x "), true));
    BVFileManager::showAlertForNoInternetAccess();
    struct Expected {
        bv::AlertStyle style;
        const char* message;
        const char* button;
    };
    const Expected expected[] = {
        {bv::AlertStyle::Warning, "Languages directory is missing. The product is not properly installed.",
         "Ok"},
        {bv::AlertStyle::Warning, "Games directory is missing. The product is not properly installed.", "OK"},
        {bv::AlertStyle::Warning, "ZRP directory is missing. The product is not properly installed.", "Ok"},
        {bv::AlertStyle::Warning,
         "Unable to access Brevant online due to a missing configuration file. Please contact brevant "
         "support at "
         "support@brevant.com.",
         "OK"},
        {bv::AlertStyle::Informational,
         "You are not currently connected to the internet. In order to access Brevant online, you will need "
         "to be "
         "connected.",
         "OK"},
    };
    ASSERT_EQ(alerts.alerts().size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(alerts.alerts()[i].style, expected[i].style) << i;
        EXPECT_EQ(alerts.alerts()[i].title, Text("Brevant Tolvern"));
        EXPECT_EQ(alerts.alerts()[i].message, Text(expected[i].message));
        EXPECT_EQ(alerts.alerts()[i].buttons, std::vector<Text>{Text(expected[i].button)});
    }
    fs::create_directories(folders.localBrevant() + "/Games");
    (void)BVFileManager::gamesDirectory();
    EXPECT_EQ(alerts.alerts().size(), std::size(expected));  // present: no alert
}

TEST(BVFileManager, ContentDownloadsGoOnlyWhenEmptyHiddenEntriesCount) {
    bvtest::SuiteFolders folders;
    EXPECT_FALSE(BVFileManager::removeContentDownloadDirectoryIfEmpty());  // missing, and not created
    const std::string downloads = pathOf(BVFileManager::contentDownloadDirectory());
    bvtest::SuiteFolders::write(downloads + "/.hidden", "x");
    EXPECT_FALSE(BVFileManager::removeContentDownloadDirectoryIfEmpty());
    EXPECT_TRUE(fs::exists(downloads + "/.hidden"));
    fs::remove(downloads + "/.hidden");
    EXPECT_TRUE(BVFileManager::removeContentDownloadDirectoryIfEmpty());
    EXPECT_FALSE(fs::exists(downloads));
}

TEST(BVFileManager, WebServiceConfigurationFiles) {
    bvtest::SuiteFolders folders;
    (void)folders.makeSupportFiles();
    EXPECT_FALSE(BVFileManager().OrlaneConfigFileExists());
    EXPECT_EQ(BVFileManager::URLStringFromOrlaneConfigFileForElementNamed(Text("LoginURL")), std::nullopt);
    bvtest::SuiteFolders::write(pathOf(BVFileManager::OrlaneConfigFilePath()),
                                "<Config><Deep><ReportURL>no</ReportURL></Deep>"
                                "<LoginURL>https://a.example/login</LoginURL></Config>");
    EXPECT_TRUE(BVFileManager().OrlaneConfigFileExists());
    EXPECT_FALSE(BVFileManager::webServiceConfigFileExists());
    EXPECT_EQ(BVFileManager::URLStringFromOrlaneConfigFileForElementNamed(Text("LoginURL")),
              Text("https://a.example/login"));
    EXPECT_EQ(BVFileManager::URLStringFromOrlaneConfigFileForElementNamed(Text("ReportURL")), std::nullopt);
}

TEST(BVFileManager, ActivityDocumentsPlainOrEncodedAndTheLogLine) {
    bvtest::SuiteFolders folders;
    const bv::ByteData key{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 99};
    const std::string xml = "<Activity><![CDATA[a<b]]></Activity>";
    const std::string plain = folders.root() + "/plain.iml", coded = folders.root() + "/coded.iml";
    bvtest::SuiteFolders::write(plain, xml);
    const bv::ByteData encoded = bv::BVEncoder::encodedDataForStringUsingKey(
        Text(xml), bv::ByteData(key.begin(), key.begin() + 20));  // the 21st byte is not used
    bvtest::SuiteFolders::write(coded, std::string(encoded.begin(), encoded.end()));
    LogCapture log;
    const auto fromPlain = BVFileManager::activityIMLDocumentAtPathKey(Text(plain), key);
    ASSERT_NE(fromPlain, nullptr);
    EXPECT_TRUE(fromPlain->rootElement()->childAtIndex(0)->isCDATA());
    EXPECT_TRUE(log.lines.empty());
    // The decoded parse succeeds, and the failed plain parse is still logged.
    ASSERT_NE(BVFileManager::newActivityIMLDocumentAtPathKey(Text(coded), key), nullptr);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(log.lines[0].rfind("Error creating activity document: ", 0), 0u);
    EXPECT_NE(log.lines[0].find(" Reason: "), std::string::npos);
    EXPECT_EQ(BVFileManager::newActivityIMLDocumentAtPathKey(Text(folders.root() + "/missing"), key),
              nullptr);
    EXPECT_THROW((void)BVFileManager::newActivityIMLDocumentAtPathKey(Text(plain), bv::ByteData(19, 1)),
                 bv::InvalidArgumentException);
}

TEST(BVFileManager, ChecksumNamesAndVersionFiles) {
    bvtest::SuiteFolders folders;
    bvtest::SuiteFolders::write(folders.root() + "/a/quiz.txt", "abc");
    bvtest::SuiteFolders::write(folders.root() + "/a/README", "abc");
    // printf abc | md5sum
    EXPECT_EQ(BVFileManager::MD5ChecksumFileNameForFileAtPath(Text(folders.root() + "/a/quiz.txt")),
              Text("900150983cd24fb0d6963f7d28e17f72.txt"));
    EXPECT_EQ(BVFileManager::MD5ChecksumFileNameForFileAtPath(Text(folders.root() + "/a/README")),
              Text("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(BVFileManager::versionPathInDirectory(Text(folders.root() + "/a")), std::nullopt);
    EXPECT_EQ(BVFileManager::stringValueOfVersionFileInDirectory(Text(folders.root() + "/a")), std::nullopt);
    bvtest::SuiteFolders::write(folders.root() + "/a/version.txt", " 2.1\n");
    EXPECT_EQ(pathOf(BVFileManager::versionPathInDirectory(Text(folders.root() + "/a"))),
              folders.root() + "/a/version.txt");
    EXPECT_EQ(BVFileManager::stringValueOfVersionFileInDirectory(Text(folders.root() + "/a")),
              Text(" 2.1\n"));
}

TEST(BVFileManager, FlashPlayerVersionAndTrustFiles) {
    bvtest::SuiteFolders folders;
    EXPECT_FALSE(BVFileManager::flashPlayerPluginExistsWithMinVersion(0));  // no plug-in
    const std::string info =
        folders.root() + "/Library/Internet Plug-Ins/Flash Player.plugin/Contents/Info.plist";
    for (const auto& [version, expected] : std::vector<std::pair<std::string, bool>>{
             {"10.0.1", true}, {"11.2", true}, {"9.9", false}, {"10", true}, {"beta", false}}) {
        bvtest::SuiteFolders::write(info,
                                    "<plist version=\"1.0\"><dict><key>CFBundleShortVersionString</key>"
                                    "<string>" +
                                        version + "</string></dict></plist>");
        EXPECT_EQ(BVFileManager::flashPlayerPluginExistsWithMinVersion(10), expected) << version;
    }
    const std::string trust =
        folders.preferences() + "/Macromedia/Flash Player/#Security/FlashPlayerTrust/Quiz.cfg";
    EXPECT_FALSE(BVFileManager::canAccessFlashObjectsForTarget(Text("Quiz.cfg")));
    BVFileManager::grantAccessToFlashObjectsInDirectoryToTarget(Text("/content/games"), Text("Quiz.cfg"));
    EXPECT_TRUE(BVFileManager::canAccessFlashObjectsForTarget(Text("Quiz.cfg")));
    EXPECT_EQ(bvtest::SuiteFolders::read(trust), "/content/games");
    BVFileManager::grantAccessToFlashObjectsInDirectoryToTarget(Text("/elsewhere"), Text("Quiz.cfg"));
    EXPECT_EQ(bvtest::SuiteFolders::read(trust), "/content/games");  // an existing file is kept
}

TEST(BVFileManager, DialogsDescribeTheirPanelsAndCancelWithoutAPresenter) {
    EXPECT_EQ(BVFileManager::directoryPathFromOpenDirectoryDialogWithTitle(Text("Pick")), std::nullopt);
    std::vector<bv::FilePanelRequest> requests;
    const auto previous = BVFileManager::setFilePanelPresenter([&](const bv::FilePanelRequest& request) {
        requests.push_back(request);
        return std::optional<std::vector<Text>>(std::vector<Text>{Text("/a"), Text("/b")});
    });
    EXPECT_EQ(BVFileManager::directoryPathFromOpenDirectoryDialogWithTitle(Text("Pick")), Text("/a"));
    EXPECT_EQ(BVFileManager::filePathsFromOpenFileDialogWithTitleFileTypesCanChooseDirectories(
                  Text("Open"), {Text("csv")}, true)
                  ->size(),
              2u);
    EXPECT_EQ(
        BVFileManager::filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePath(
            Text("Save"), {Text("xml")}, Text("xml"), Text("/docs/quiz.xml")),
        Text("/a"));
    BVFileManager::setFilePanelPresenter(previous);
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_FALSE(requests[0].canChooseFiles);
    EXPECT_TRUE(requests[0].canChooseDirectories);
    EXPECT_TRUE(requests[1].allowsMultipleSelection && requests[1].canChooseDirectories);
    EXPECT_EQ(requests[2].kind, bv::FilePanelRequest::Kind::Save);
    EXPECT_EQ(requests[2].directory, Text("/docs"));
    EXPECT_EQ(requests[2].nameFieldValue, Text("quiz.xml"));
    EXPECT_EQ(requests[2].requiredFileType, Text("xml"));
}

TEST(BVFileManager, CredentialsAreOwnerOnlyAndReadBack) {
    bvtest::SuiteFolders folders;
    const std::string path = pathOf(BVFileManager::credentialsPath());
    EXPECT_EQ(BVFileManager::savedCredentials(), std::nullopt);
    EXPECT_FALSE(BVFileManager::savedCredentialsMatchUsernamePassword(Text("a"), Text("b")));
    // A file as the existing applications write it (Base64 from the openssl commands in BVEncryptionTests).
    bvtest::SuiteFolders::write(path,
                                "<?xml version=\"1.0\"?>\n<Credentials>\n"
                                "    <Username>x6NNY4v8jVMo91D6mdfWg1amAlp3v6qT</Username>\n"
                                "    <Password>fMFw0Lb1Mcotze3qW18W/Q==</Password>\n</Credentials>\n");
    ::chmod(path.c_str(), 0666);
    const auto saved = BVFileManager::savedCredentials();
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(*saved->at(Text("credential1")).text(), Text("teacher@example.org"));
    EXPECT_EQ(*saved->at(Text("credential0")).text(), Text("S3cret!pass"));
    EXPECT_TRUE(BVFileManager::savedCredentialsMatchUsernamePassword(Text("Teacher@Example.ORG"),
                                                                     Text("S3cret!pass")));
    EXPECT_FALSE(BVFileManager::savedCredentialsMatchUsernamePassword(Text("teacher@example.org"),
                                                                      Text("s3cret!pass")));

    // Saving replaces the wide older file with an owner-only one holding the same bytes.
    ASSERT_TRUE(
        BVFileManager::saveCredentialsWithUsernamePassword(Text("teacher@example.org"), Text("S3cret!pass")));
    EXPECT_EQ(bvtest::SuiteFolders::mode(path), 0600u);
    const std::string written = bvtest::SuiteFolders::read(path);
    EXPECT_NE(written.find("<Username>x6NNY4v8jVMo91D6mdfWg1amAlp3v6qT</Username>"), std::string::npos)
        << written;
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(path).parent_path()), fs::directory_iterator()),
              1);

    testing::internal::CaptureStderr();
    bvtest::SuiteFolders::write(
        path, "<Credentials><Username>%%%</Username><Password>AAAA</Password></Credentials>");
    EXPECT_EQ(BVFileManager::savedCredentials(), std::nullopt);  // damaged Base64 or cipher
    (void)testing::internal::GetCapturedStderr();
    BVFileManager::removeSavedCredentials();
    EXPECT_FALSE(fs::exists(path));
}
