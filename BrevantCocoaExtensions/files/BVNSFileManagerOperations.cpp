// BVNSFileManager, the operations half: batch copy, move, rename and remove, item attributes, and the
// platform's error callback.
#include <sys/stat.h>

#include <filesystem>
#include <utility>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/files/BVNSFileManagerMatching.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"

namespace bv::BVNSFileManager {

using detail::NameMatcher;
using PathRules::appendingPathComponent;
using PathRules::deletingLastPathComponent;
using PathRules::deletingPathExtension;
using PathRules::lastPathComponent;
using PathRules::pathExtension;

namespace {

std::string quoted(const Text& text) {
    return "\"" + text.toUtf8() + "\"";
}

// Whether anything is at the path, a dangling symbolic link included (copying there would fail).
bool itemExists(const Text& path) {
    struct stat info {};
    return ::lstat(PathRules::nativePath(path).c_str(), &info) == 0;
}

bool isSameItem(const Text& a, const Text& b) {
    std::error_code ignored;
    return std::filesystem::equivalent(PathRules::nativePath(a), PathRules::nativePath(b), ignored);
}

// A symbolic link chain ends within this many steps, or it is taken for a loop.
constexpr int kMaximumLinkSteps = 40;

}  // namespace

// --- Copying -------------------------------------------------------------------------------------------

bool copyPathToDirectoryHandler(const FileManager& self, const Text& path, const Text& directory,
                                const std::shared_ptr<Object>& handler) {
    return copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(self, {path}, std::nullopt,
                                                                                directory, false, handler);
}

bool copyPathToDirectoryOverwritingExistingFilesHandler(const FileManager& self, const Text& path,
                                                        const Text& directory, bool overwrite,
                                                        const std::shared_ptr<Object>& handler) {
    return copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(
        self, {path}, std::nullopt, directory, overwrite, handler);
}

bool copyPathsToDirectoryHandler(const FileManager& self, const std::vector<Text>& paths,
                                 const Text& directory, const std::shared_ptr<Object>& handler) {
    return copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(self, paths, std::nullopt,
                                                                                directory, false, handler);
}

bool copyPathsToDirectoryOverwritingExistingFilesHandler(const FileManager& self,
                                                         const std::vector<Text>& paths,
                                                         const Text& directory, bool overwrite,
                                                         const std::shared_ptr<Object>& handler) {
    return copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(
        self, paths, std::nullopt, directory, overwrite, handler);
}

bool copyPathsWithPathExtensionToDirectoryHandler(const FileManager& self, const std::vector<Text>& paths,
                                                  const Text& extension, const Text& directory,
                                                  const std::shared_ptr<Object>& handler) {
    return copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(self, paths, extension,
                                                                                directory, false, handler);
}

bool copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(
    const FileManager& self, const std::vector<Text>& paths, const std::optional<Text>& extension,
    const Text& directory, bool overwrite, const std::shared_ptr<Object>& /*handler: never used*/) {
    std::optional<NameMatcher> filter;
    if (extension) filter.emplace(*extension);
    bool copiedAll = true;
    for (const Text& source : paths) {
        const Text target = appendingPathComponent(directory, lastPathComponent(source));
        if (filter && !filter->matches(pathExtension(source))) continue;
        if (itemExists(target)) {
            if (!overwrite || isSameItem(source, target)) continue;  // never remove the source itself
            self.removeItemAtPath(target);
        }
        if (!self.copyItemAtPathToPath(source, target)) {
            log("Failed to copy path " + quoted(source) + " to destination " + quoted(target) + ".");
            copiedAll = false;
        }
    }
    return copiedAll;
}

bool copyContentsOfDirectoryToDirectory(const FileManager& self, const Text& source, const Text& target) {
    return copyPathsToDirectoryHandler(
        self, pathsFromFileNamesAppendingPath(detail::listingOf(self, source), source), target, nullptr);
}

bool copyContentsOfDirectoryHavingPathExtensionToDirectory(const FileManager& self, const Text& source,
                                                           const Text& extension, const Text& target) {
    return copyPathsWithPathExtensionToDirectoryHandler(
        self, pathsFromFileNamesAppendingPath(detail::listingOf(self, source), source), extension, target,
        nullptr);
}

// --- Moving, renaming, removing ------------------------------------------------------------------------

void movePathsToDirectory(const FileManager& self, const std::vector<Text>& paths, const Text& directory) {
    for (const Text& path : paths)
        self.moveItemAtPathToPath(path, appendingPathComponent(directory, lastPathComponent(path)));
}

bool renameFileAtPathTo(const FileManager& self, const Text& path, const Text& name) {
    const Text oldName = deletingPathExtension(lastPathComponent(path));
    const Text newName = deletingPathExtension(lastPathComponent(name));
    if (NameMatcher(oldName).matches(newName)) return false;
    const Text extension = pathExtension(path);
    const Text newPath = appendingPathComponent(
        deletingLastPathComponent(path), extension.empty() ? newName : newName + Text(".") + extension);
    Error error;
    if (!self.copyItemAtPathToPath(path, newPath, &error)) {
        log("There was a problem renaming " + quoted(path) + " to " + quoted(newName) +
            ".\nReason: " + error.localizedDescription.toUtf8());
        return false;
    }
    self.removeItemAtPath(path);
    return true;
}

void removeFilesAtPaths(const FileManager& self, const std::vector<Text>& paths) {
    for (const Text& path : paths) {
        if (!self.removeItemAtPath(path)) log("Failed to delete path: " + path.toUtf8());
    }
}

void removeFilesInDirectory(const FileManager& self, const Text& path) {
    removeFilesInDirectoryWithExtension(self, path, std::nullopt);
}

void removeFilesInDirectoryWithExtension(const FileManager& self, const Text& path,
                                         const std::optional<Text>& extension) {
    std::optional<NameMatcher> filter;
    if (extension) filter.emplace(*extension);
    for (const Text& entry : detail::listingOf(self, path)) {
        if (filter && !filter->matches(pathExtension(entry))) continue;
        const Text full = appendingPathComponent(path, entry);
        if (!self.removeItemAtPath(full)) log("Failed to delete path " + quoted(full) + ".");
    }
}

// --- Attributes ----------------------------------------------------------------------------------------

Text resolveAliasAtPath(const Text& path) {
    const FileManager& manager = FileManager::defaultManager();
    Text current = path;
    for (int step = 0; step < kMaximumLinkSteps; ++step) {
        std::optional<Text> destination = manager.destinationOfSymbolicLinkAtPath(current);
        if (!destination) {
            if (step == 0 || !manager.fileExistsAtPath(current)) return path;
            return current;
        }
        current = !destination->empty() && (*destination)[0] == u'/'
                      ? *destination
                      : appendingPathComponent(deletingLastPathComponent(current), *destination);
    }
    return path;  // a loop
}

bool hideExtensionOfFileAtPath(const Text& path) {
    const FileManager& manager = FileManager::defaultManager();
    std::optional<ValueDictionary> attributes = manager.attributesOfItemAtPath(path);
    if (!attributes) return false;
    (*attributes)[Text(FileExtensionHidden)] = Value(Number::boolean(true));
    return manager.setAttributesOfItemAtPath(*attributes, path);
}

bool isFileExtensionHiddenAtPath(const Text& path) {
    std::optional<ValueDictionary> attributes = FileManager::defaultManager().attributesOfItemAtPath(path);
    if (!attributes) return false;
    auto found = attributes->find(Text(FileExtensionHidden));
    const Number* hidden = found == attributes->end() ? nullptr : found->second.number();
    return hidden != nullptr && hidden->boolValue();
}

void setItemToUniversallyWritableAtPath(const Text& path) {
    FileManager::defaultManager().setAttributesOfItemAtPath(
        {{Text(FilePosixPermissions), Value(Number::int32(0777))}}, path);
}

bool setAttributesOfItemAtPathRecursivelyErrors(const ValueDictionary& attributes, const Text& path,
                                                bool recursively, ValueArray* /*errors: never filled*/) {
    const FileManager& manager = FileManager::defaultManager();
    if (!recursively) return manager.setAttributesOfItemAtPath(attributes, path);
    for (const Text& subpath : manager.subpathsAtPath(path))
        manager.setAttributesOfItemAtPath(attributes, appendingPathComponent(path, subpath));
    return true;
}

// --- The platform's error callback ---------------------------------------------------------------------

bool fileManagerShouldProceedAfterError(const FileManager& /*self*/, const FileManager& /*fileManager*/,
                                        const ValueDictionary& errorInfo) {
    auto describe = [&errorInfo](const char* key) {
        auto found = errorInfo.find(Text(key));
        return found == errorInfo.end() ? Value().description() : found->second.description();
    };
    log("There was a problem copying " + quoted(describe("Path")) + " to " + quoted(describe("ToPath")) +
        ".\nReason: " + describe("Error").toUtf8());
    return false;
}

}  // namespace bv::BVNSFileManager
