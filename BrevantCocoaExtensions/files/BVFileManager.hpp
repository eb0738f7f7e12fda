// BVFileManager: where the suite keeps its files, and the stored credentials.
//
// Every operation is a class operation without state (OrlaneConfigFileExists alone is an instance
// operation): folders are computed afresh from the standard folders on each call (see StandardFolders.hpp),
// created on demand where noted, and checked for permissions.
//
//   local application support / "Brevant"        localBrevantSupportDirectory (installer's; repaired)
//       "PlugIns", "Standards", "Categories", "Content Downloads"   created on each call, mode 0777
//       "Languages", "Games", "ZRP"               an alert when missing; the path is returned anyway
//       "FusionCharts", "ChartJS/Charts"          no check
//       "Support Files"                           installer's; null when missing, and then so are
//           "Web Services"  (BrevantWSConfig.xml, OrlaneConfig.xml)      created on each call
//           "Settings"      (Settings.xml, see TolvernSettings)          created on each call
//   user application support / "Brevant"          userBrevantDirectory (repaired), credentials.xml
//   ~/Library/Containers/com.microsoft.Powerpoint/Data/Library/Application Support/Brevant
//
// Permission repair of the three "Brevant" roots: an existing folder gets mode 0777 (the local one only
// when the current user cannot write it); when that fails the user sees the critical "Access Denied"
// alert, one line is logged and the path is null. A missing root is created with mode 0777.
//
// The stored credentials, credentials.xml, hold the account name and password encrypted under a key built
// into the library (see BVEncryption). Anyone who can read the file can therefore recover the password, so
// it is written atomically and owner-only (mode 0600), also when an older file had wider permissions.
//
// On Linux the Flash player plug-in bundle is looked for in "Internet Plug-Ins/Flash Player.plugin" beside
// the local application-support folder, its version in the bundle's Info.plist (or Contents/Info.plist).
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

// What an open or save panel is asked to show; the interface library presents it.
struct FilePanelRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    Text title;
    std::vector<Text> fileTypes;  // allowed extensions; empty allows every file
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
    std::optional<Text> directory;         // the folder the panel opens in; null for the panel's own choice
    std::optional<Text> requiredFileType;  // save panels: the extension the chosen name must carry
    Text nameFieldValue;                   // the proposed file: a name, or a whole path
};

// The chosen paths (for a folder panel the panel's current folder), or null when the user cancelled.
using FilePanelPresenter = std::function<std::optional<std::vector<Text>>(const FilePanelRequest&)>;

class BVFileManager {
  public:
    // --- Folders -----------------------------------------------------------------------------------

    // The folder holding the running application's bundle (the parent of the executable's folder).
    [[nodiscard]] static Text applicationDirectory();
    [[nodiscard]] static Text localApplicationSupportDirectory();
    [[nodiscard]] static Text userApplicationSupportDirectory();
    // Local application support / "Brevant", repaired or created; null when its permissions cannot be set.
    static std::optional<Text> localBrevantSupportDirectory();
    // User application support / "Brevant", repaired (even when writable) or created; null on failure.
    static std::optional<Text> userBrevantDirectory();
    // The Brevant folder inside the slide program's sandbox, repaired or created like the user one.
    static std::optional<Text> powerpointSandboxedSlidemarkSupportDirectory();

    // Sub-folders of the local Brevant folder; each is null when that folder is.
    static std::optional<Text> localPlugInsDirectory();     // created, mode 0777
    static std::optional<Text> supportFilesDirectory();     // null unless an existing folder
    static std::optional<Text> webServicesDirectory();      // under Support Files, created
    static std::optional<Text> tolvernSettingsDirectory();  // under Support Files, created
    static std::optional<Text> fusionChartsDirectory();     // not created, not checked
    static std::optional<Text> ChartsJSChartsDirectory();   // not created, not checked
    static std::optional<Text> languagesDirectory();        // alert when missing ("Ok")
    static std::optional<Text> gamesDirectory();            // alert when missing ("OK")
    static std::optional<Text> standardsDirectory();        // created, mode 0777
    static std::optional<Text> categoriesDirectory();       // created, mode 0777
    static std::optional<Text> zrpDirectory();              // alert when missing ("Ok")
    static std::optional<Text> contentDownloadDirectory();  // created, mode 0777

    // Removes the Support Files folder and all it holds; nothing when it is missing.
    static void removeSupportFiles();
    // Removes "Content Downloads" when it holds no entry at all (hidden ones count); false when it held
    // something or did not exist.
    static bool removeContentDownloadDirectoryIfEmpty();

    // --- Web-service configuration ----------------------------------------------------------------

    static std::optional<Text> webServiceConfigFilePath();  // Web Services / BrevantWSConfig.xml
    static std::optional<Text> OrlaneConfigFilePath();      // Web Services / OrlaneConfig.xml
    static bool webServiceConfigFileExists();
    // An instance operation, unlike its neighbours.
    [[nodiscard]] bool OrlaneConfigFileExists() const;
    // The string value of the first direct child of OrlaneConfig.xml's root with that name; null when the
    // file is missing or unparsable or has no such element.
    static std::optional<Text> URLStringFromOrlaneConfigFileForElementNamed(const Text& name);
    // True when the text holds more than white space; otherwise false, after the missing-configuration
    // alert when showError is true.
    static bool URLStringExistsShowErrorIfNonexistent(const std::optional<Text>& string, bool showError);
    static void showAlertForMissingConfigFiles();
    // Whether one of three well-known web hosts resolves (tried in order, bounded in time).
    static bool hasInternetAccess();
    static void showAlertForNoInternetAccess();

    // --- Content files ----------------------------------------------------------------------------

    // The file parsed as XML (CDATA kept); when that fails, the bytes decoded with BVEncoder under the
    // first 20 bytes of the key and parsed again. A failed plain parse is logged even when the decoded
    // parse succeeds. Throws InvalidArgumentException for a key shorter than 20 bytes.
    static std::shared_ptr<XMLDocument> activityIMLDocumentAtPathKey(const Text& path, const ByteData& key);
    static std::shared_ptr<XMLDocument> newActivityIMLDocumentAtPathKey(const Text& path,
                                                                        const ByteData& key);
    // The MD5 digest of the file's bytes plus "." and the file's extension (no "." without one).
    static Text MD5ChecksumFileNameForFileAtPath(const Text& path);
    // The first entry named "Version" with any extension, in listing order; null when none.
    static std::optional<Text> versionPathInDirectory(const Text& directory);
    // That file's whole content as UTF-8, untrimmed; null when missing or unreadable.
    static std::optional<Text> stringValueOfVersionFileInDirectory(const Text& directory);
    // Whether the Flash plug-in's major version is at least the minimum (minor and patch ignored).
    static bool flashPlayerPluginExistsWithMinVersion(int minimumVersion);
    // Whether the Flash trust file for the target name exists.
    static bool canAccessFlashObjectsForTarget(const Text& target);
    // Writes the folder path (no line end) into the trust file named by the target, creating the trust
    // folders one at a time; nothing when that file already exists.
    static void grantAccessToFlashObjectsInDirectoryToTarget(const Text& directory, const Text& target);
    // "txt", "rtf", "doc", "pdf", "xls", "pp", "pages", "numbers", "key" ("pp" is two letters on purpose).
    [[nodiscard]] static std::vector<Text> documentFileTypes();

    // --- Credentials --------------------------------------------------------------------------------

    // User Brevant folder / "credentials.xml"; null when that folder is.
    static std::optional<Text> credentialsPath();
    // The file parsed; null when missing or unparsable.
    static std::shared_ptr<XMLDocument> credentialsDocument();
    // Encrypts both, stores them as Base64 and writes the file atomically with mode 0600, replacing any
    // older file; the result of the write.
    static bool saveCredentialsWithUsernamePassword(const Text& username, const Text& password);
    // "credential1" = the account name, "credential0" = the password; null when the file is missing or
    // damaged or either does not decrypt to ASCII text.
    static std::optional<ValueDictionary> savedCredentials();
    // The stored name equals the given one ignoring case, and the password equals it exactly.
    static bool savedCredentialsMatchUsernamePassword(const Text& username, const Text& password);
    // Removes the file; the outcome is ignored.
    static void removeSavedCredentials();

    // --- Dialogs (null when the user cancels; the headless default cancels) --------------------------

    static std::optional<Text> directoryPathFromOpenDirectoryDialogWithTitle(const Text& title);
    static std::optional<std::vector<Text>> filePathsFromOpenFileDialogWithTitleFileTypesCanChooseDirectories(
        const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories);
    static std::optional<Text> filePathFromOpenFileDialogWithTitleFileTypesCanChooseDirectories(
        const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories);
    static std::optional<Text> filePathFromOpenFileDialogWithTitleFileTypesCanChooseDirectoriesInitialPath(
        const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories,
        const std::optional<Text>& initialPath);
    static std::optional<Text> filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileType(
        const Text& title, const std::vector<Text>& allowedFileTypes,
        const std::optional<Text>& requiredFileType);
    static std::optional<Text> filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultName(
        const Text& title, const std::vector<Text>& allowedFileTypes,
        const std::optional<Text>& requiredFileType, const std::optional<Text>& defaultName);
    static std::optional<Text>
    filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePath(
        const Text& title, const std::vector<Text>& allowedFileTypes,
        const std::optional<Text>& requiredFileType, const std::optional<Text>& defaultFilePath);
    // The save panel shows the default name (empty when null); with a default path it opens in that path's
    // folder and proposes the path's last component as the file name instead.
    static std::optional<Text>
    filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePathDefaultName(
        const Text& title, const std::vector<Text>& allowedFileTypes,
        const std::optional<Text>& requiredFileType, const std::optional<Text>& defaultFilePath,
        const std::optional<Text>& defaultName);

    // Shows the panel through the installed presenter: the chosen paths, or null when cancelled.
    static std::optional<std::vector<Text>> presentFilePanel(const FilePanelRequest& request);
    // Installs the panel presenter (the interface library's, or a test's) and answers the previous one; an
    // empty presenter restores the headless default, which cancels every panel.
    static FilePanelPresenter setFilePanelPresenter(FilePanelPresenter presenter);
};

}  // namespace bv
