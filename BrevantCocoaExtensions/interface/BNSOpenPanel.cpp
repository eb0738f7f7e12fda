// The CSV and image pickers: a panel request built from the remembered path, and the choice remembered.
#include "BrevantCocoaExtensions/interface/BNSOpenPanel.hpp"

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"
#include "BrevantCocoaExtensions/platform/UserDefaults.hpp"

namespace bv::BNSOpenPanel {

namespace {

enum class Proposal { FileName, WholePath };

std::optional<Text> pick(const Text& key, std::vector<Text> fileTypes, Proposal proposal) {
    const std::optional<Text> remembered = UserDefaults::stringForKey(key);
    FilePanelRequest request;
    request.fileTypes = std::move(fileTypes);
    request.directory =
        remembered ? PathRules::deletingLastPathComponent(*remembered) : Text(StandardFolders::home());
    if (remembered)
        request.nameFieldValue =
            proposal == Proposal::FileName ? PathRules::lastPathComponent(*remembered) : *remembered;
    const std::optional<std::vector<Text>> chosen = BVFileManager::presentFilePanel(request);
    if (!chosen || chosen->empty()) return std::nullopt;
    UserDefaults::setStringForKey(chosen->front(), key);
    return chosen->front();
}

}  // namespace

std::optional<Text> pickCSVFileToOpen() {
    return pick(Text("BVLastOpenedCSVFile"), {Text("csv")}, Proposal::FileName);
}

std::optional<Text> pickImageFile() {
    return pick(Text("BVLastOpenedImageFile"), {Text("jpg"), Text("tiff"), Text("png"), Text("gif")},
                Proposal::WholePath);
}

}  // namespace bv::BNSOpenPanel
