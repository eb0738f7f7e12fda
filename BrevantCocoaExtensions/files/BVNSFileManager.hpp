// BVNSFileManager: the suite's questions about names and folders, and its batch file operations and archives.
//
// Free functions over the file manager (bv::FileManager): the instance operations take the manager as their
// first argument; the others use the default manager. Paths are Text with the rules of PathRules.hpp; lists
// are std::vector<Text>. Nothing keeps state; every operation runs and waits on the caller's thread.
//
// What callers rely on, kept on purpose:
//   - Listings come in the system's own order, never sorted; "first" means first in that order. A folder that
//     cannot be listed behaves as an empty one unless an operation says otherwise.
//   - Names and extensions compare case-insensitively. The name-search operations answer the name as the
//     caller spelled it, not the entry's own spelling (firstDirectoryNamedFoundAtPath,
//     pathForFileNameInDirectory).
//   - Failures of batch operations are logged and the batch goes on; the result is false if any item failed.
//   - The copy operations never replace an existing item unless asked to, and never create the target folder.
//   - unzipPathToPathRemoveSourcePath empties the target folder before unpacking.
//   - Drive-letter paths (C:\Quiz\a.xml) become relative paths of this system (Quiz/a.xml).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/FileManager.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSFileManager {

// --- Folder listing and search -------------------------------------------------------------------------

// The folder joined with the first entry that is a folder and whose name starts with neither "." nor "_".
[[nodiscard]] std::optional<Text> firstDirectoryFoundAtPath(const FileManager& self, const Text& path);
// The folder joined with `name` as given (not the entry's spelling) when an entry that is a folder equals
// the name case-insensitively; null if none.
[[nodiscard]] std::optional<Text> firstDirectoryNamedFoundAtPath(const FileManager& self, const Text& name,
                                                                 const Text& path);
// The listing itself (null if unreadable); with removeExtensions, every entry without its extension (empty
// if unreadable).
[[nodiscard]] std::optional<std::vector<Text>> contentsOfDirectoryRemoveExtensions(const Text& path,
                                                                                   bool removeExtensions);
// Full paths of the entries that are folders (links to folders included), in listing order.
[[nodiscard]] std::vector<Text> directoriesAtPath(const FileManager& self, const Text& path);
// fileNamesAtPathWithExtensionsRemoveExtensions with one extension.
[[nodiscard]] std::vector<Text> fileNamesAtPathWithExtensionRemoveExtensions(const FileManager& self,
                                                                             const Text& path,
                                                                             const Text& extension,
                                                                             bool removeExtensions);
// Entry names (bare names with removeExtensions) whose extension is one of the extensions; the extensions
// are made unique case-insensitively first, so each entry is listed once.
[[nodiscard]] std::vector<Text> fileNamesAtPathWithExtensionsRemoveExtensions(
    const FileManager& self, const Text& path, const std::vector<Text>& extensions, bool removeExtensions);
// Full paths of the entries whose extension equals the given one case-insensitively.
[[nodiscard]] std::vector<Text> pathsWithExtensionInDirectory(const Text& extension, const Text& path);
// The folder joined with the file name as given when an entry equals it case-insensitively; null if none.
[[nodiscard]] std::optional<Text> pathForFileNameInDirectory(const Text& fileName, const Text& path);
// Entries whose bare name equals the name's bare name case-insensitively ("Quiz" finds quiz.xml and
// QUIZ.csv), as bare names with removeExtension, else as listed.
[[nodiscard]] std::vector<Text> findFilesNamedInDirectoryRemoveExtension(const Text& name, const Text& path,
                                                                         bool removeExtension);
// The first result of findFilesNamedInDirectoryRemoveExtension, or null.
[[nodiscard]] std::optional<Text> findFileNamedInDirectoryRemoveExtension(const Text& name, const Text& path,
                                                                          bool removeExtension);
// The same search with extensions kept; with fullPath each entry joined to the folder.
[[nodiscard]] std::vector<Text> findFilesNamedInDirectoryFullPath(const Text& name, const Text& path,
                                                                  bool fullPath);
// The first result of findFilesNamedInDirectoryFullPath, or null.
[[nodiscard]] std::optional<Text> findFileNamedInDirectoryFullPath(const Text& name, const Text& path,
                                                                   bool fullPath);
// Every item below the folder at every level counts one; without includingSubdirectories, items that are
// folders do not count (files inside sub-folders always do).
[[nodiscard]] std::uint64_t numberOfFilesInDirectoryIncludingSubdirectories(const Text& path,
                                                                            bool includingSubdirectories);
// The item's modification date; null when its attributes cannot be read.
[[nodiscard]] std::optional<Date> dateModifiedOfFileAtPath(const Text& path);
// The paths, in order, at which an item exists.
[[nodiscard]] std::vector<Text> validPathsFromPaths(const std::vector<Text>& paths);

// --- Building names and paths --------------------------------------------------------------------------

// The last component of each path, without its extension unless keepPathExtension.
[[nodiscard]] std::vector<Text> fileNamesFromPathsKeepPathExtension(const std::vector<Text>& paths,
                                                                    bool keepPathExtension);
// The folder joined with each name, in order.
[[nodiscard]] std::vector<Text> pathsFromFileNamesAppendingPath(const std::vector<Text>& names,
                                                                const Text& path);
// The folder joined with each name plus "." and the extension.
[[nodiscard]] std::vector<Text> pathsFromStringsByAppendingPathExtensionInDirectory(
    const std::vector<Text>& names, const Text& extension, const Text& path);
// True exactly when the name holds neither "/" nor ":" (the empty name is valid).
[[nodiscard]] bool isValidFileName(const Text& name);
// The name with every "/" and ":" replaced by the character (only its low byte is kept, read as Latin-1).
[[nodiscard]] Text fileNameByReplacingIllegalCharactersWithChar(const Text& name, char16_t replacement);
// Removes repeated "."-pieces equal to the extension (given without its dot), walking from the end. For each
// repeat it removes the piece that follows the earlier copy: quiz.zip.zip gives quiz.zip, a.zip.zip.zip gives
// a.zip, but a.zip.b.zip gives a.zip.zip. The last copy is never removed.
[[nodiscard]] Text pathByRemovingExcessOccurrencesOfPathExtensionFromPath(const Text& extension,
                                                                          const Text& path);

// --- Drive-letter paths --------------------------------------------------------------------------------

// The text from index 2 on when index 1 holds ":", else the text; throws RangeException for a text shorter
// than two code units.
[[nodiscard]] Text fileNameWithDriveCharacterRemovedForMSWindowsFileName(const Text& name);
[[nodiscard]] std::vector<Text> fileNamesWithDriveCharacterRemovedForMSWindowsFileNames(
    const std::vector<Text>& names);
// Each path without its drive, its backslash-separated pieces joined with "/" (a leading backslash gives a
// relative path; forward slashes and letter case stay); without the last component with removeFileNames.
// Null for the whole list, with one log line, when a path cannot be converted (it holds a NUL character).
[[nodiscard]] std::optional<std::vector<Text>> pathsConvertedFromMSWindowsPathsRemoveFileNames(
    const std::vector<Text>& paths, bool removeFileNames);
[[nodiscard]] std::optional<std::vector<Text>> pathsConvertedFromMSWindowsPaths(
    const std::vector<Text>& paths);
[[nodiscard]] std::optional<Text> pathConvertedFromMSWindowsPathRemoveFileName(const Text& path,
                                                                               bool removeFileName);
[[nodiscard]] std::optional<Text> pathConvertedFromMSWindowsPath(const Text& path);
// The last component of the converted path (empty when the path cannot be converted).
[[nodiscard]] Text fileNameConvertedFromMSWindowsPath(const Text& path);
[[nodiscard]] std::vector<Text> fileNamesConvertedFromMSWindowsPaths(const std::vector<Text>& paths);
// Turns the folder's entries named with backslashes (Media\Images\a.png) into real folders and files: each is
// moved (deleteMSWindowsPaths) or copied to its converted path inside the folder. A converted path that would
// leave the folder (absolute, climbing with "..", or through a symbolic link) is logged and skipped; failures
// are logged as "Failed to move TARGET to SOURCE" (target first) and the rest goes on.
void createDirectoryStructureForMSWindowsPathsInDirectoryDeleteMSWindowsPaths(const FileManager& self,
                                                                              const Text& path,
                                                                              bool deleteMSWindowsPaths);

// --- Copying -------------------------------------------------------------------------------------------
// Every form ends in copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler; the handler is
// accepted for callers' sake and never used.

bool copyPathToDirectoryHandler(const FileManager& self, const Text& path, const Text& directory,
                                const std::shared_ptr<Object>& handler);
bool copyPathToDirectoryOverwritingExistingFilesHandler(const FileManager& self, const Text& path,
                                                        const Text& directory, bool overwrite,
                                                        const std::shared_ptr<Object>& handler);
bool copyPathsToDirectoryHandler(const FileManager& self, const std::vector<Text>& paths,
                                 const Text& directory, const std::shared_ptr<Object>& handler);
bool copyPathsToDirectoryOverwritingExistingFilesHandler(const FileManager& self,
                                                         const std::vector<Text>& paths,
                                                         const Text& directory, bool overwrite,
                                                         const std::shared_ptr<Object>& handler);
bool copyPathsWithPathExtensionToDirectoryHandler(const FileManager& self, const std::vector<Text>& paths,
                                                  const Text& extension, const Text& directory,
                                                  const std::shared_ptr<Object>& handler);
// Copies each path into the folder (which is not created) under its last component, in order. Skipped
// without failure: a path whose extension is not `extension` (case-insensitive; null copies all) and, without
// overwrite, a path whose target exists (the existing item stays). With overwrite the existing item is
// removed first, unless it is the source itself (then it is left alone). A failed copy is logged and makes
// the result false; the rest goes on.
bool copyPathsWithPathExtensionToDirectoryOverwritingExistingFilesHandler(
    const FileManager& self, const std::vector<Text>& paths, const std::optional<Text>& extension,
    const Text& directory, bool overwrite, const std::shared_ptr<Object>& handler);
// Copies every entry of the source folder (shallow listing) into the target folder, without overwriting.
bool copyContentsOfDirectoryToDirectory(const FileManager& self, const Text& source, const Text& target);
bool copyContentsOfDirectoryHavingPathExtensionToDirectory(const FileManager& self, const Text& source,
                                                           const Text& extension, const Text& target);

// --- Moving, renaming, removing ------------------------------------------------------------------------

// Moves each path into the folder under its last component; every outcome is ignored (nothing is logged and
// a failed move neither stops the others nor disturbs its source).
void movePathsToDirectory(const FileManager& self, const std::vector<Text>& paths, const Text& directory);
// Gives the file the bare name of `name` (a name, a name with an extension or a path: its extension is
// ignored), keeping its folder and extension: /q/Quiz.xml to Test.csv gives /q/Test.xml. A change of letter
// case alone is refused (false, nothing logged). Done by copying and then removing the old item; on failure
// the old item stays, the failure is logged and the result is false.
bool renameFileAtPathTo(const FileManager& self, const Text& path, const Text& name);
// Removes each item; each failure is logged and the rest goes on.
void removeFilesAtPaths(const FileManager& self, const std::vector<Text>& paths);
// Removes every entry of the folder, sub-folders included.
void removeFilesInDirectory(const FileManager& self, const Text& path);
// Removes the folder's entries whose extension equals the given one case-insensitively (every entry for
// null); each failure is logged and the rest goes on.
void removeFilesInDirectoryWithExtension(const FileManager& self, const Text& path,
                                         const std::optional<Text>& extension);

// --- Attributes ----------------------------------------------------------------------------------------

// The target of a symbolic link, following chains; the path unchanged when it is no link, the chain loops or
// the target is missing.
[[nodiscard]] Text resolveAliasAtPath(const Text& path);
// Marks the item's extension hidden; the result of writing its attributes back.
bool hideExtensionOfFileAtPath(const Text& path);
// The item's hidden-extension flag; false when absent or unreadable.
[[nodiscard]] bool isFileExtensionHiddenAtPath(const Text& path);
// Sets POSIX permissions 0777 on that one item (not its contents); the outcome is ignored.
void setItemToUniversallyWritableAtPath(const Text& path);
// Without recursively: sets the attributes on the item and answers the outcome. With recursively: sets them
// on every item below it at every level but not on the item itself, and answers true whatever happened.
// The errors list is never filled.
bool setAttributesOfItemAtPathRecursivelyErrors(const ValueDictionary& attributes, const Text& path,
                                                bool recursively, ValueArray* errors);

// --- Archives ------------------------------------------------------------------------------------------

// Runs "/usr/bin/zip -r -q ARCHIVE ENTRY..." in the source folder over its listing, so the archive holds the
// folder's contents under relative names (a name starting with "-" is passed as "./-name", never as an
// option); an existing archive is updated. Answers zip's exit status. A source that is no folder cannot be
// the tool's working folder: InvalidArgumentException, as for any failed launch.
int zipPathSaveZipArchiveToPath(const Text& source, const Text& archive);
// Empties (removes and recreates) the target folder, then unpacks the archive into it with the suite's 7-Zip
// tool (Brevant/Zip/7za under the local application support folder) when present, else "/usr/bin/unzip -q
// -o"; removes the archive after a success when asked. True exactly when the tool exits with 0. Entries that
// climb out of the target ("../x", absolute names) are kept inside it by both tools. An empty target is
// refused with InvalidArgumentException, as a launch without a working folder.
bool unzipPathToPathRemoveSourcePath(const Text& archive, const Text& target, bool removeSourcePath);

// --- The platform's error callback ---------------------------------------------------------------------

// Logs "There was a problem copying "PATH" to "TOPATH".\nReason: ERROR" from the dictionary's "Path",
// "ToPath" and "Error" values and answers false, so the operation in progress stops.
bool fileManagerShouldProceedAfterError(const FileManager& self, const FileManager& fileManager,
                                        const ValueDictionary& errorInfo);

}  // namespace bv::BVNSFileManager
