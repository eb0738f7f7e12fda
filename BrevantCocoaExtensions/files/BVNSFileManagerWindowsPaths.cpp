// BVNSFileManager: paths written on a drive-letter system (C:\Quiz\a.xml) made into paths of this system, and
// the folders of unpacked entries named with backslashes rebuilt.
#include <sys/stat.h>

#include <algorithm>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/files/BVNSFileManagerMatching.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"

namespace bv::BVNSFileManager {

using PathRules::appendingPathComponent;
using PathRules::deletingLastPathComponent;
using PathRules::lastPathComponent;

namespace {

constexpr std::u16string_view::size_type npos = std::u16string_view::npos;

// One drive-letter path converted; null when it holds a NUL character, which no path of this system can.
std::optional<Text> convertedPath(const Text& path, bool removeFileName) {
    std::u16string_view rest = path.view();
    if (rest.size() > 1 && rest[1] == u':') rest.remove_prefix(2);
    if (rest.find(u'\0') != npos) return std::nullopt;
    std::size_t cut = rest.find(u'\\');
    PathRules::PathJoiner joined(rest.substr(0, cut));
    while (cut != npos) {
        rest.remove_prefix(cut + 1);
        cut = rest.find(u'\\');
        joined.append(rest.substr(0, cut));
    }
    Text converted(joined.take());
    return removeFileName ? deletingLastPathComponent(converted) : converted;
}

// Whether a relative path names something strictly inside the folder it is taken from, judged by its text:
// not absolute, never climbing above the folder with "..", and not the folder itself.
bool staysInsideByName(std::u16string_view relative) {
    if (relative.empty() || relative.front() == u'/') return false;
    std::size_t depth = 0;
    for (std::size_t start = 0; start <= relative.size();) {
        std::size_t end = std::min(relative.find(u'/', start), relative.size());
        std::u16string_view component = relative.substr(start, end - start);
        if (component == u"..") {
            if (depth == 0) return false;
            --depth;
        } else if (!component.empty() && component != u".") {
            ++depth;
        }
        start = end + 1;
    }
    return depth > 0;
}

// Whether every existing folder on the way from the folder to the converted path's parent is a real folder
// (a symbolic link could lead the new folders and the item out of it).
bool noLinkOnTheWay(const Text& folder, const Text& relativeParent) {
    Text walked = folder;
    std::u16string_view rest = relativeParent.view();
    while (!rest.empty()) {
        std::size_t end = std::min(rest.find(u'/'), rest.size());
        std::u16string_view component = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (component.empty() || component == u"." || component == u"..") continue;
        walked = appendingPathComponent(walked, Text(component));
        struct stat info {};
        if (::lstat(PathRules::nativePath(walked).c_str(), &info) != 0) return true;  // the rest is made anew
        if (!S_ISDIR(info.st_mode)) return false;
    }
    return true;
}

void rebuildEntry(const FileManager& self, const Text& folder, const Text& entry, const Text& converted,
                  bool move) {
    const Text parent = deletingLastPathComponent(converted);
    if (!staysInsideByName(converted.view()) || !noLinkOnTheWay(folder, parent)) {
        log("Skipped \"" + entry.toUtf8() + "\": its converted path \"" + converted.toUtf8() +
            "\" leads outside \"" + folder.toUtf8() + "\".");
        return;
    }
    const Text source = appendingPathComponent(folder, entry);
    const Text targetFolder = appendingPathComponent(folder, parent);
    self.createDirectoryAtPath(targetFolder, true);
    const Text target = appendingPathComponent(targetFolder, lastPathComponent(converted));
    Error error;
    const bool done = move ? self.moveItemAtPathToPath(source, target, &error)
                           : self.copyItemAtPathToPath(source, target, &error);
    if (!done) {
        log(std::string(move ? "Failed to move " : "Failed to copy ") + target.toUtf8() + " to " +
            source.toUtf8() + "\n" + error.localizedDescription.toUtf8());
    }
}

}  // namespace

Text fileNameWithDriveCharacterRemovedForMSWindowsFileName(const Text& name) {
    return name.at(1) == u':' ? name.substringFrom(2) : name;
}

std::vector<Text> fileNamesWithDriveCharacterRemovedForMSWindowsFileNames(const std::vector<Text>& names) {
    std::vector<Text> result;
    result.reserve(names.size());
    for (const Text& name : names)
        result.push_back(fileNameWithDriveCharacterRemovedForMSWindowsFileName(name));
    return result;
}

std::optional<std::vector<Text>> pathsConvertedFromMSWindowsPathsRemoveFileNames(
    const std::vector<Text>& paths, bool removeFileNames) {
    std::vector<Text> converted;
    converted.reserve(paths.size());
    for (const Text& path : paths) {
        std::optional<Text> one = convertedPath(path, removeFileNames);
        if (!one) {
            log("Failed to convert paths from MS Windows format to Mac format.");
            return std::nullopt;
        }
        converted.push_back(std::move(*one));
    }
    return converted;
}

std::optional<std::vector<Text>> pathsConvertedFromMSWindowsPaths(const std::vector<Text>& paths) {
    return pathsConvertedFromMSWindowsPathsRemoveFileNames(paths, false);
}

std::optional<Text> pathConvertedFromMSWindowsPathRemoveFileName(const Text& path, bool removeFileName) {
    std::optional<std::vector<Text>> converted =
        pathsConvertedFromMSWindowsPathsRemoveFileNames({path}, removeFileName);
    if (!converted) return std::nullopt;
    return std::move(converted->front());
}

std::optional<Text> pathConvertedFromMSWindowsPath(const Text& path) {
    return pathConvertedFromMSWindowsPathRemoveFileName(path, false);
}

Text fileNameConvertedFromMSWindowsPath(const Text& path) {
    return lastPathComponent(pathConvertedFromMSWindowsPath(path).value_or(Text()));
}

std::vector<Text> fileNamesConvertedFromMSWindowsPaths(const std::vector<Text>& paths) {
    std::vector<Text> names;
    names.reserve(paths.size());
    for (const Text& path : paths)
        names.push_back(fileNameConvertedFromMSWindowsPath(path));
    return names;
}

void createDirectoryStructureForMSWindowsPathsInDirectoryDeleteMSWindowsPaths(const FileManager& self,
                                                                              const Text& path,
                                                                              bool deleteMSWindowsPaths) {
    const std::vector<Text> listing = detail::listingOf(self, path);
    const std::optional<std::vector<Text>> converted = pathsConvertedFromMSWindowsPaths(listing);
    if (!converted) return;
    for (std::size_t i = 0; i < listing.size(); ++i) {
        if (listing[i].view().find(u'\\') != npos) {
            rebuildEntry(self, path, listing[i], (*converted)[i], deleteMSWindowsPaths);
        }
    }
}

}  // namespace bv::BVNSFileManager
