// BVFileManager's open and save panels: each operation describes its panel in a FilePanelRequest and hands
// it to the installed presenter (the interface library's); without one every panel counts as cancelled.
#include <filesystem>
#include <mutex>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"

namespace bv {

namespace {

struct PresenterSlot {
    std::mutex mutex;
    FilePanelPresenter presenter;
};

PresenterSlot& presenterSlot() {
    static PresenterSlot slot;
    return slot;
}

std::optional<std::vector<Text>> present(const FilePanelRequest& request) {
    FilePanelPresenter presenter;
    {
        const std::lock_guard lock(presenterSlot().mutex);
        presenter = presenterSlot().presenter;
    }
    if (!presenter) return std::nullopt;
    return presenter(request);
}

std::optional<Text> firstOf(const std::optional<std::vector<Text>>& paths) {
    if (!paths || paths->empty()) return std::nullopt;
    return paths->front();
}

FilePanelRequest openRequest(const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories,
                             bool multiple) {
    FilePanelRequest request;
    request.title = title;
    request.fileTypes = fileTypes;
    request.canChooseDirectories = canChooseDirectories;
    request.allowsMultipleSelection = multiple;
    return request;
}

}  // namespace

std::optional<std::vector<Text>> BVFileManager::presentFilePanel(const FilePanelRequest& request) {
    return present(request);
}

FilePanelPresenter BVFileManager::setFilePanelPresenter(FilePanelPresenter presenter) {
    const std::lock_guard lock(presenterSlot().mutex);
    std::swap(presenterSlot().presenter, presenter);
    return presenter;
}

std::optional<Text> BVFileManager::directoryPathFromOpenDirectoryDialogWithTitle(const Text& title) {
    FilePanelRequest request = openRequest(title, {}, true, false);
    request.canChooseFiles = false;
    return firstOf(present(request));
}

std::optional<std::vector<Text>>
BVFileManager::filePathsFromOpenFileDialogWithTitleFileTypesCanChooseDirectories(
    const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories) {
    return present(openRequest(title, fileTypes, canChooseDirectories, true));
}

std::optional<Text> BVFileManager::filePathFromOpenFileDialogWithTitleFileTypesCanChooseDirectories(
    const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories) {
    return firstOf(present(openRequest(title, fileTypes, canChooseDirectories, false)));
}

std::optional<Text>
BVFileManager::filePathFromOpenFileDialogWithTitleFileTypesCanChooseDirectoriesInitialPath(
    const Text& title, const std::vector<Text>& fileTypes, bool canChooseDirectories,
    const std::optional<Text>& initialPath) {
    FilePanelRequest request = openRequest(title, fileTypes, canChooseDirectories, false);
    request.directory = initialPath;
    return firstOf(present(request));
}

std::optional<Text> BVFileManager::filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileType(
    const Text& title, const std::vector<Text>& allowedFileTypes,
    const std::optional<Text>& requiredFileType) {
    return filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePathDefaultName(
        title, allowedFileTypes, requiredFileType, std::nullopt, std::nullopt);
}

std::optional<Text>
BVFileManager::filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultName(
    const Text& title, const std::vector<Text>& allowedFileTypes, const std::optional<Text>& requiredFileType,
    const std::optional<Text>& defaultName) {
    return filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePathDefaultName(
        title, allowedFileTypes, requiredFileType, std::nullopt, defaultName);
}

std::optional<Text>
BVFileManager::filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePath(
    const Text& title, const std::vector<Text>& allowedFileTypes, const std::optional<Text>& requiredFileType,
    const std::optional<Text>& defaultFilePath) {
    return filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePathDefaultName(
        title, allowedFileTypes, requiredFileType, defaultFilePath, std::nullopt);
}

std::optional<Text>
BVFileManager::filePathFromSaveFileDialogWithTitleAllowedFileTypesRequiredFileTypeDefaultFilePathDefaultName(
    const Text& title, const std::vector<Text>& allowedFileTypes, const std::optional<Text>& requiredFileType,
    const std::optional<Text>& defaultFilePath, const std::optional<Text>& defaultName) {
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = title;
    request.fileTypes = allowedFileTypes;
    request.requiredFileType = requiredFileType;
    request.nameFieldValue = defaultName.value_or(Text());
    if (defaultFilePath) {
        const std::filesystem::path path(defaultFilePath->toUtf8());
        request.directory = Text(path.parent_path().string());
        request.nameFieldValue = Text(path.filename().string());
    }
    return firstOf(present(request));
}

}  // namespace bv
