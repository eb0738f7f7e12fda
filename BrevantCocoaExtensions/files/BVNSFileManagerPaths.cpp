// BVNSFileManager, the naming half: folder listing and search, names and paths, drive-letter paths.
#include <algorithm>
#include <utility>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/files/BVNSFileManagerMatching.hpp"
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableString.hpp"

namespace bv::BVNSFileManager {

using detail::listingOf;
using detail::NameMatcher;
using PathRules::appendingPathComponent;
using PathRules::deletingLastPathComponent;
using PathRules::deletingPathExtension;
using PathRules::lastPathComponent;
using PathRules::pathExtension;

namespace {

const FileManager& manager() {
    return FileManager::defaultManager();
}

bool isFolder(const FileManager& self, const Text& path) {
    bool folder = false;
    return self.fileExistsAtPath(path, &folder) && folder;
}

std::vector<Text> textsOf(const ValueArray& values) {
    std::vector<Text> texts;
    texts.reserve(values.size());
    for (const Value& value : values) {
        if (const Text* text = value.text()) texts.push_back(*text);
    }
    return texts;
}

// The listing entries whose bare name equals the name's bare name, as bare names or as listed.
std::vector<Text> entriesWithBareName(const Text& name, const Text& folder, bool bareNames) {
    NameMatcher wanted(deletingPathExtension(name));
    std::vector<Text> found;
    for (Text& entry : listingOf(manager(), folder)) {
        Text bare = deletingPathExtension(entry);
        if (wanted.matches(bare)) found.push_back(bareNames ? std::move(bare) : std::move(entry));
    }
    return found;
}

std::optional<Text> firstOf(std::vector<Text> texts) {
    if (texts.empty()) return std::nullopt;
    return std::move(texts.front());
}

}  // namespace

// --- Folder listing and search -------------------------------------------------------------------------

std::optional<Text> firstDirectoryFoundAtPath(const FileManager& self, const Text& path) {
    for (const Text& entry : listingOf(self, path)) {
        if (entry.empty() || entry[0] == u'.' || entry[0] == u'_') continue;
        Text full = appendingPathComponent(path, entry);
        if (isFolder(self, full)) return full;
    }
    return std::nullopt;
}

std::optional<Text> firstDirectoryNamedFoundAtPath(const FileManager& self, const Text& name,
                                                   const Text& path) {
    NameMatcher wanted(name);
    for (const Text& entry : listingOf(self, path)) {
        if (wanted.matches(entry) && isFolder(self, appendingPathComponent(path, entry))) {
            return appendingPathComponent(path, name);
        }
    }
    return std::nullopt;
}

std::optional<std::vector<Text>> contentsOfDirectoryRemoveExtensions(const Text& path,
                                                                     bool removeExtensions) {
    std::optional<std::vector<Text>> listing = manager().contentsOfDirectoryAtPath(path);
    if (!removeExtensions) return listing;
    std::vector<Text> bare;
    if (!listing) return bare;
    bare.reserve(listing->size());
    for (const Text& entry : *listing)
        bare.push_back(deletingPathExtension(entry));
    return bare;
}

std::vector<Text> directoriesAtPath(const FileManager& self, const Text& path) {
    std::vector<Text> folders;
    for (const Text& entry : listingOf(self, path)) {
        Text full = appendingPathComponent(path, entry);
        if (isFolder(self, full)) folders.push_back(std::move(full));
    }
    return folders;
}

std::vector<Text> fileNamesAtPathWithExtensionRemoveExtensions(const FileManager& self, const Text& path,
                                                               const Text& extension, bool removeExtensions) {
    return fileNamesAtPathWithExtensionsRemoveExtensions(self, path, {extension}, removeExtensions);
}

std::vector<Text> fileNamesAtPathWithExtensionsRemoveExtensions(const FileManager& self, const Text& path,
                                                                const std::vector<Text>& extensions,
                                                                bool removeExtensions) {
    std::vector<NameMatcher> wanted;
    for (Text& extension :
         textsOf(BVNSArray::arrayWithUniqueStringsFromArrayCaseInsensitiveCompare({}, extensions, true))) {
        wanted.emplace_back(std::move(extension));
    }
    std::vector<Text> names;
    for (const Text& entry : listingOf(self, path)) {
        const Text extension = pathExtension(entry);
        for (const NameMatcher& matcher : wanted) {
            if (matcher.matches(extension))
                names.push_back(removeExtensions ? deletingPathExtension(entry) : entry);
        }
    }
    return names;
}

std::vector<Text> pathsWithExtensionInDirectory(const Text& extension, const Text& path) {
    NameMatcher wanted(extension);
    std::vector<Text> paths;
    for (const Text& entry : listingOf(manager(), path)) {
        if (wanted.matches(pathExtension(entry))) paths.push_back(appendingPathComponent(path, entry));
    }
    return paths;
}

std::optional<Text> pathForFileNameInDirectory(const Text& fileName, const Text& path) {
    NameMatcher wanted(fileName);
    const std::vector<Text> listing = listingOf(manager(), path);
    if (std::none_of(listing.begin(), listing.end(),
                     [&](const Text& entry) { return wanted.matches(entry); })) {
        return std::nullopt;
    }
    return appendingPathComponent(path, fileName);
}

std::vector<Text> findFilesNamedInDirectoryRemoveExtension(const Text& name, const Text& path,
                                                           bool removeExtension) {
    return entriesWithBareName(name, path, removeExtension);
}

std::optional<Text> findFileNamedInDirectoryRemoveExtension(const Text& name, const Text& path,
                                                            bool removeExtension) {
    return firstOf(findFilesNamedInDirectoryRemoveExtension(name, path, removeExtension));
}

std::vector<Text> findFilesNamedInDirectoryFullPath(const Text& name, const Text& path, bool fullPath) {
    std::vector<Text> found = entriesWithBareName(name, path, false);
    if (fullPath) {
        for (Text& entry : found)
            entry = appendingPathComponent(path, entry);
    }
    return found;
}

std::optional<Text> findFileNamedInDirectoryFullPath(const Text& name, const Text& path, bool fullPath) {
    return firstOf(findFilesNamedInDirectoryFullPath(name, path, fullPath));
}

std::uint64_t numberOfFilesInDirectoryIncludingSubdirectories(const Text& path,
                                                              bool includingSubdirectories) {
    std::uint64_t count = 0;
    for (const Text& subpath : manager().subpathsAtPath(path)) {
        if (includingSubdirectories || !isFolder(manager(), appendingPathComponent(path, subpath))) ++count;
    }
    return count;
}

std::optional<Date> dateModifiedOfFileAtPath(const Text& path) {
    std::optional<ValueDictionary> attributes = manager().attributesOfItemAtPath(path);
    if (!attributes) return std::nullopt;
    auto found = attributes->find(Text(FileModificationDate));
    if (found == attributes->end() || !found->second.is<Date>()) return std::nullopt;
    return *found->second.get<Date>();
}

std::vector<Text> validPathsFromPaths(const std::vector<Text>& paths) {
    std::vector<Text> valid;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(valid),
                 [](const Text& path) { return manager().fileExistsAtPath(path); });
    return valid;
}

// --- Building names and paths --------------------------------------------------------------------------

std::vector<Text> fileNamesFromPathsKeepPathExtension(const std::vector<Text>& paths,
                                                      bool keepPathExtension) {
    std::vector<Text> names;
    names.reserve(paths.size());
    for (const Text& path : paths) {
        Text name = lastPathComponent(path);
        names.push_back(keepPathExtension ? std::move(name) : deletingPathExtension(name));
    }
    return names;
}

std::vector<Text> pathsFromFileNamesAppendingPath(const std::vector<Text>& names, const Text& path) {
    std::vector<Text> paths;
    paths.reserve(names.size());
    for (const Text& name : names)
        paths.push_back(appendingPathComponent(path, name));
    return paths;
}

std::vector<Text> pathsFromStringsByAppendingPathExtensionInDirectory(const std::vector<Text>& names,
                                                                      const Text& extension,
                                                                      const Text& path) {
    ValueArray withExtensions(names.begin(), names.end());
    BVNSMutableArray::appendPathExtensionToStrings(withExtensions, extension);
    return pathsFromFileNamesAppendingPath(textsOf(withExtensions), path);
}

bool isValidFileName(const Text& name) {
    return name.view().find_first_of(u"/:") == std::u16string_view::npos;
}

Text fileNameByReplacingIllegalCharactersWithChar(const Text& name, char16_t replacement) {
    static const CharacterSet illegal = CharacterSet::fromCharactersInText(Text("/:"));
    Text copy = name;
    BVNSMutableString::replaceCharactersInSetWithChar(copy, illegal, replacement);
    return copy;
}

Text pathByRemovingExcessOccurrencesOfPathExtensionFromPath(const Text& extension, const Text& path) {
    // Walking the pieces from the end, the piece removed for a repeat is always the one looked at just
    // before (the piece after the earlier copy), which is the last piece kept so far: so the kept pieces are
    // collected in reverse and the removal is a pop.
    const NameMatcher wanted(extension);
    std::vector<std::u16string_view> kept;  // in reverse order
    std::u16string_view rest = path.view();
    std::size_t matches = 0;
    for (bool more = true; more;) {
        std::size_t dot = rest.rfind(u'.');
        more = dot != std::u16string_view::npos;
        std::u16string_view piece = more ? rest.substr(dot + 1) : rest;
        if (more) rest = rest.substr(0, dot);
        if (wanted.matches(Text(piece)) && ++matches > 1) {
            kept.pop_back();
            --matches;
        }
        kept.push_back(piece);
    }
    std::u16string joined;
    joined.reserve(path.length());
    for (auto piece = kept.rbegin(); piece != kept.rend(); ++piece) {
        if (piece != kept.rbegin()) joined.push_back(u'.');
        joined.append(*piece);
    }
    return Text(std::move(joined));
}

}  // namespace bv::BVNSFileManager
