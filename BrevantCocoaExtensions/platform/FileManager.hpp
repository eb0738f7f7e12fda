// bv::FileManager: the file manager that the library's file operations are written against, on POSIX calls.
//
// It keeps no state; FileManager::defaultManager() is the shared one and any other instance behaves the same.
// Paths are Text (see PathRules.hpp). Failures answer false or null and fill the optional Error (domain
// "NSPOSIXErrorDomain", the errno value as code, the system's message as description, the path as reason).
//
// Behaviours the callers rely on:
//   - A listing is shallow, without "." and "..", in the order in which the system returns it (never sorted).
//   - copyItemAtPathToPath and moveItemAtPathToPath never replace an existing target: they fail with "File
//     exists" and touch nothing. A failed copy leaves no partial target behind; a failed move leaves the
//     source where it was. Symbolic links are copied and moved as links.
//   - fileExistsAtPath follows symbolic links (a dangling link does not exist); attributesOfItemAtPath
//     describes a link itself.
//   - The hidden file-name extension is the extended attribute "user.bv.hidden-extension" holding "1".
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// Keys of an item's attribute dictionary.
inline constexpr const char* FileType = "NSFileType";                          // Text, below
inline constexpr const char* FileSize = "NSFileSize";                          // unsigned 64-bit number
inline constexpr const char* FileModificationDate = "NSFileModificationDate";  // Date
inline constexpr const char* FilePosixPermissions = "NSFilePosixPermissions";  // number, 0777 is 511
inline constexpr const char* FileExtensionHidden = "NSFileExtensionHidden";    // boolean number
// Values of FileType.
inline constexpr const char* FileTypeRegular = "NSFileTypeRegular";
inline constexpr const char* FileTypeDirectory = "NSFileTypeDirectory";
inline constexpr const char* FileTypeSymbolicLink = "NSFileTypeSymbolicLink";
inline constexpr const char* FileTypeUnknown = "NSFileTypeUnknown";

class FileManager {
  public:
    [[nodiscard]] static const FileManager& defaultManager();

    // The names in a folder, shallow, in the system's order; null when the folder cannot be listed.
    [[nodiscard]] std::optional<std::vector<Text>> contentsOfDirectoryAtPath(const Text& path,
                                                                             Error* error = nullptr) const;
    // Every item below a folder at every level, as paths relative to it, each folder before its contents;
    // links to folders are not entered. Empty when the folder cannot be listed.
    [[nodiscard]] std::vector<Text> subpathsAtPath(const Text& path) const;
    // Whether an item exists (links followed); *isDirectory tells whether it is a folder.
    [[nodiscard]] bool fileExistsAtPath(const Text& path, bool* isDirectory = nullptr) const;

    // Creates a folder (mode 0777 less the process's umask); with intermediates, the missing folders above
    // it too, and an existing folder is no failure.
    bool createDirectoryAtPath(const Text& path, bool withIntermediateDirectories,
                               Error* error = nullptr) const;
    // Copies a file, link or whole folder to a target that must not exist yet; permissions are kept. A folder
    // is never copied into itself (EINVAL).
    bool copyItemAtPathToPath(const Text& source, const Text& target, Error* error = nullptr) const;
    // Moves (renames) an item to a target that must not exist yet, copying across file systems.
    bool moveItemAtPathToPath(const Text& source, const Text& target, Error* error = nullptr) const;
    // Removes an item, a folder with everything in it; fails when nothing is there.
    bool removeItemAtPath(const Text& path, Error* error = nullptr) const;

    // The item's type, size, modification date, POSIX permissions and hidden-extension flag; null when it
    // cannot be read.
    [[nodiscard]] std::optional<ValueDictionary> attributesOfItemAtPath(const Text& path,
                                                                        Error* error = nullptr) const;
    // Sets the permissions, modification date and hidden-extension flag found in the dictionary (type and
    // size are read-only and ignored); false at the first that fails.
    bool setAttributesOfItemAtPath(const ValueDictionary& attributes, const Text& path,
                                   Error* error = nullptr) const;
    // The text stored in a symbolic link; null when the item is not a link.
    [[nodiscard]] std::optional<Text> destinationOfSymbolicLinkAtPath(const Text& path,
                                                                      Error* error = nullptr) const;
};

}  // namespace bv
