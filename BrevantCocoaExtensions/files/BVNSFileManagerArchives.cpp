// BVNSFileManager: packing and unpacking zip archives with the system's zip and unzip tools or the suite's
// 7-Zip tool, each run as a child process in a chosen working folder.
#include <filesystem>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/files/BVNSFileManagerMatching.hpp"
#include "BrevantCocoaExtensions/platform/ChildProcess.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv::BVNSFileManager {

namespace {

constexpr const char* kZipTool = "/usr/bin/zip";
constexpr const char* kUnzipTool = "/usr/bin/unzip";

// The tools run in another working folder, so a relative path is first taken from the current one. The empty
// path stays empty (it names nothing, never the current folder).
std::string absoluteNativePath(const Text& path) {
    if (path.empty()) return {};
    std::error_code ignored;
    return std::filesystem::absolute(PathRules::nativePath(path), ignored).string();
}

Text sevenZipTool() {
    return Text(StandardFolders::localApplicationSupport() + "/Brevant/Zip/7za");
}

}  // namespace

int zipPathSaveZipArchiveToPath(const Text& source, const Text& archive) {
    std::vector<std::string> arguments{"-r", "-q", absoluteNativePath(archive)};
    for (const Text& entry : detail::listingOf(FileManager::defaultManager(), source)) {
        // A name such as "-m" would be read as an option (that one deletes the files once zipped); "./-m" is
        // the same file and zip stores it under the same name.
        std::string name = PathRules::nativePath(entry);
        arguments.push_back(name.starts_with('-') ? "./" + name : std::move(name));
    }
    return ChildProcess::run(kZipTool, std::move(arguments), absoluteNativePath(source));
}

bool unzipPathToPathRemoveSourcePath(const Text& archive, const Text& target, bool removeSourcePath) {
    // The tool would otherwise run in (and unpack into) the current folder.
    if (target.empty())
        throw InvalidArgumentException("cannot launch the unzip tool: the target folder is empty");
    const FileManager& manager = FileManager::defaultManager();
    const std::string archivePath = absoluteNativePath(archive);
    const std::string folder = absoluteNativePath(target);
    const Text sevenZip = sevenZipTool();
    bool toolIsFolder = false;
    const bool useSevenZip = manager.fileExistsAtPath(sevenZip, &toolIsFolder) && !toolIsFolder;
    ChildProcess tool =
        useSevenZip ? ChildProcess(PathRules::nativePath(sevenZip), {"x", archivePath, "-o" + folder}, folder)
                    : ChildProcess(kUnzipTool, {"-q", "-o", archivePath}, folder);
    manager.removeItemAtPath(Text(folder));
    manager.createDirectoryAtPath(Text(folder), true);
    tool.launch();
    const bool unpacked = tool.waitUntilExit() == 0;
    if (unpacked && removeSourcePath) manager.removeItemAtPath(archive);
    return unpacked;
}

}  // namespace bv::BVNSFileManager
