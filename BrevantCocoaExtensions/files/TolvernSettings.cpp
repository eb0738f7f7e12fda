// TolvernSettings: reading and writing Settings.xml and posting the change notice.
#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"

#include <exception>
#include <filesystem>
#include <string>

#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"

namespace bv {

namespace {

// The element's text when the root has such a direct child.
std::optional<Text> childText(const XMLElement& root, const char* name) {
    const auto child = BVNSXMLElement::firstChildElementNamedRecursiveSearch(root, Text(name), false);
    if (!child) return std::nullopt;
    return child->stringValue();
}

bool fitsForReading(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && size <= TolvernSettings::kMaximumFileSize;
}

std::shared_ptr<XMLDocument> settingsDocument(const TolvernSettings& settings) {
    auto root = XMLElement::make(Text("TolvernSettings"));
    const auto add = [&](const char* name, const Text& value) {
        root->addChild(XMLElement::makeWithStringValue(Text(name), value));
    };
    add("Version", Text(TolvernSettings::kCurrentVersion));  // always the current format, by design
    add("State", settings.state());
    add("PreferCommonCoreStandards", Text(settings.preferCommonCoreStandards() ? "true" : "false"));
    add("CollaborationWebServerPort", Text(std::to_string(settings.collaborationWebServerPort())));
    add("CollaborationCommunicationPort", Text(std::to_string(settings.collaborationCommunicationPort())));
    return XMLDocument::make(root);
}

}  // namespace

std::optional<Text> TolvernSettings::defaultPath() {
    const std::optional<Text> folder = BVFileManager::tolvernSettingsDirectory();
    if (!folder) return std::nullopt;
    return Text(folder->toUtf8() + "/Settings.xml");
}

TolvernSettings TolvernSettings::settingsFromDefaultFile() {
    const std::optional<Text> path = defaultPath();
    std::error_code error;
    if (path && std::filesystem::exists(path->toUtf8(), error))
        if (std::optional<TolvernSettings> settings = settingsAtPath(*path)) return *settings;
    return TolvernSettings();
}

std::optional<TolvernSettings> TolvernSettings::settingsAtPath(const Text& path) {
    try {
        if (!fitsForReading(path.toUtf8())) return std::nullopt;
        const std::shared_ptr<XMLDocument> document = BVNSXMLDocument::documentAtPath(path);
        const std::shared_ptr<XMLElement> root = document ? document->rootElement() : nullptr;
        if (!root) return std::nullopt;
        TolvernSettings settings;
        if (auto text = childText(*root, "Version")) settings.setVersion(*text);
        if (auto text = childText(*root, "State")) settings.setState(*text);
        if (auto text = childText(*root, "PreferCommonCoreStandards"))
            settings.setPreferCommonCoreStandards(*text != Text("false"));
        if (auto text = childText(*root, "CollaborationWebServerPort"))
            settings.setCollaborationWebServerPort(intValue(*text));
        if (auto text = childText(*root, "CollaborationCommunicationPort"))
            settings.setCollaborationCommunicationPort(intValue(*text));
        return settings;
    } catch (const std::exception& exception) {
        log("TolvernSettings::Load(" + path.toUtf8() + ")");
        log(exception.what());
        return std::nullopt;
    }
}

void TolvernSettings::save() const {
    saveAtPath(defaultPath());
}

void TolvernSettings::saveAtPath(const std::optional<Text>& path) const {
    try {
        const std::string xml =
            settingsDocument(*this)->xmlString(XMLNodePrettyPrint | XMLNodeCompactEmptyElement);
        // The write's own result is not checked: the notice goes out either way.
        if (path)
            (void)BVNSData::writeToUniversallyWritableFileAtomically(ByteData(xml.begin(), xml.end()), *path,
                                                                     true);
    } catch (const std::exception& exception) {
        AlertCenter::show(
            {AlertStyle::Warning,
             Text("Brevant Tolvern"),
             Text("The Tolvern Settings file could not be saved. Another application may be writing "
                  "to the file."),
             {Text("Ok")}});
        log(exception.what());
        return;
    }
    (void)NotificationCenter::postNotificationName(Text(kSettingsChangedNotification));
}

}  // namespace bv
