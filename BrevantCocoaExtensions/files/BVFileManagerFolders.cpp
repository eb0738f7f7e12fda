// BVFileManager's folder layout: the three Brevant roots with their permission repair, the folders under
// them, and the alerts for the folders only the installer provides.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv {

namespace fs = std::filesystem;

namespace {

constexpr unsigned kUniversalMode = 0777;

Text join(const Text& folder, const char* name) {
    return Text(folder.toUtf8() + "/" + name);
}

std::optional<Text> join(const std::optional<Text>& folder, const char* name) {
    if (!folder) return std::nullopt;
    return join(*folder, name);
}

bool isFolder(const Text& path) {
    std::error_code ignored;
    return fs::is_directory(path.toUtf8(), ignored);
}

// Creates the folder and any missing parent, each new one with mode 0777 whatever the umask; the outcome
// is not reported (an existing folder is no error).
void createFolderUniversally(const std::string& path) {
    fs::path built;
    for (const fs::path& part : fs::path(path)) {
        built /= part;
        if (::mkdir(built.c_str(), kUniversalMode) == 0)
            (void)setPosixPermissions(built.string(), kUniversalMode);
    }
}

std::optional<Text> createdFolder(const std::optional<Text>& path) {
    if (path) createFolderUniversally(path->toUtf8());
    return path;
}

void showAccessDenied(const Text& path) {
    AlertCenter::show({AlertStyle::Critical,
                       Text("Access Denied"),
                       Text("Unable to set correct permissions for " + path.toUtf8() +
                            ". Please contact your administrator."),
                       {Text("OK")}});
}

// The permission repair of a Brevant root: an existing folder gets mode 0777 (skipped when testWritable
// and the user can already write it); a failure shows the alert, logs and gives null. Anything else at
// the path (nothing, or a plain file) leads to creating the folder.
std::optional<Text> repairedOrCreatedBrevantFolder(const std::string& root, bool testWritable) {
    const std::string path = root + "/Brevant";
    if (isFolder(Text(path))) {
        if (testWritable && ::access(path.c_str(), W_OK) == 0) return Text(path);
        if (!setPosixPermissions(path, kUniversalMode)) {
            showAccessDenied(Text(path));
            log("Incorrect permissions for Brevant folder and failed to correctly reset them. Path: " + path);
            return std::nullopt;
        }
    } else {
        createFolderUniversally(path);
    }
    return Text(path);
}

// The installer's folder, with the "product not properly installed" alert when it is missing.
std::optional<Text> checkedInstallerFolder(const char* name, const char* what, const char* button) {
    std::optional<Text> path = join(BVFileManager::localBrevantSupportDirectory(), name);
    if (path && !isFolder(*path))
        AlertCenter::show(
            {AlertStyle::Warning,
             Text("Brevant Tolvern"),
             Text(std::string(what) + " directory is missing. The product is not properly installed."),
             {Text(button)}});
    return path;
}

}  // namespace

Text BVFileManager::applicationDirectory() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return Text(error ? std::string() : executable.parent_path().parent_path().string());
}

Text BVFileManager::localApplicationSupportDirectory() {
    return Text(StandardFolders::localApplicationSupport());
}

Text BVFileManager::userApplicationSupportDirectory() {
    return Text(StandardFolders::userApplicationSupport());
}

std::optional<Text> BVFileManager::localBrevantSupportDirectory() {
    return repairedOrCreatedBrevantFolder(StandardFolders::localApplicationSupport(), true);
}

std::optional<Text> BVFileManager::userBrevantDirectory() {
    return repairedOrCreatedBrevantFolder(StandardFolders::userApplicationSupport(), false);
}

std::optional<Text> BVFileManager::powerpointSandboxedSlidemarkSupportDirectory() {
    return repairedOrCreatedBrevantFolder(
        StandardFolders::home() +
            "/Library/Containers/com.microsoft.Powerpoint/Data/Library/Application Support",
        false);
}

std::optional<Text> BVFileManager::localPlugInsDirectory() {
    return createdFolder(join(localBrevantSupportDirectory(), "PlugIns"));
}

std::optional<Text> BVFileManager::supportFilesDirectory() {
    std::optional<Text> path = join(localBrevantSupportDirectory(), "Support Files");
    if (path && !isFolder(*path)) return std::nullopt;
    return path;
}

std::optional<Text> BVFileManager::webServicesDirectory() {
    return createdFolder(join(supportFilesDirectory(), "Web Services"));
}

std::optional<Text> BVFileManager::tolvernSettingsDirectory() {
    return createdFolder(join(supportFilesDirectory(), "Settings"));
}

std::optional<Text> BVFileManager::fusionChartsDirectory() {
    return join(localBrevantSupportDirectory(), "FusionCharts");
}

std::optional<Text> BVFileManager::ChartsJSChartsDirectory() {
    return join(localBrevantSupportDirectory(), "ChartJS/Charts");
}

std::optional<Text> BVFileManager::languagesDirectory() {
    return checkedInstallerFolder("Languages", "Languages", "Ok");
}

std::optional<Text> BVFileManager::gamesDirectory() {
    return checkedInstallerFolder("Games", "Games", "OK");
}

std::optional<Text> BVFileManager::zrpDirectory() {
    return checkedInstallerFolder("ZRP", "ZRP", "Ok");
}

std::optional<Text> BVFileManager::standardsDirectory() {
    return createdFolder(join(localBrevantSupportDirectory(), "Standards"));
}

std::optional<Text> BVFileManager::categoriesDirectory() {
    return createdFolder(join(localBrevantSupportDirectory(), "Categories"));
}

std::optional<Text> BVFileManager::contentDownloadDirectory() {
    return createdFolder(join(localBrevantSupportDirectory(), "Content Downloads"));
}

void BVFileManager::removeSupportFiles() {
    if (const std::optional<Text> path = supportFilesDirectory()) {
        std::error_code ignored;
        fs::remove_all(path->toUtf8(), ignored);
    }
}

bool BVFileManager::removeContentDownloadDirectoryIfEmpty() {
    const std::optional<Text> path = join(localBrevantSupportDirectory(), "Content Downloads");
    if (!path) return false;
    std::error_code error;
    if (fs::directory_iterator(path->toUtf8(), error) != fs::directory_iterator()) return false;
    return ::rmdir(path->toUtf8().c_str()) == 0;
}

}  // namespace bv
