// BVFileManager's configuration and content files: the web-service configuration, the internet check,
// activity documents, checksum names, version files, the Flash player and its trust files.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/HostLookup.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"
#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/text/BVEncoder.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSArrayInternal.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kActivityKeyLength = 20;

// Tried in this order; the first that resolves answers for all.
const std::vector<std::string> kWellKnownHosts = {"www.google.com", "www.apple.com", "www.microsoft.com"};

// The whole file, or null when it cannot be read.
std::optional<ByteData> readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    ByteData bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return std::nullopt;
    return bytes;
}

bool exists(const std::optional<Text>& path) {
    std::error_code ignored;
    return path && fs::exists(path->toUtf8(), ignored);
}

std::string flashTrustFolder() {
    return StandardFolders::userPreferences() + "/Macromedia/Flash Player/#Security/FlashPlayerTrust";
}

std::string flashTrustFilePath(const Text& target) {
    return flashTrustFolder() + "/" + target.toUtf8();
}

// The Flash plug-in's version text from its bundle's information dictionary, or null.
std::optional<Text> flashPlayerShortVersion() {
    const fs::path bundle = fs::path(StandardFolders::localApplicationSupport()).parent_path() /
                            "Internet Plug-Ins/Flash Player.plugin";
    for (const char* info : {"Contents/Info.plist", "Info.plist"}) {
        const std::optional<ByteData> bytes = readBytes((bundle / info).string());
        if (!bytes) continue;
        const std::optional<Value> plist = PropertyList::fromXmlData(*bytes);
        const ValueDictionary* dictionary = plist ? plist->dictionary() : nullptr;
        if (dictionary == nullptr) return std::nullopt;
        const auto found = dictionary->find(Text("CFBundleShortVersionString"));
        if (found == dictionary->end() || found->second.text() == nullptr) return std::nullopt;
        return *found->second.text();
    }
    return std::nullopt;
}

std::shared_ptr<XMLDocument> parseActivity(const ByteData& bytes, Error* error) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return XMLDocument::parseData(view, XMLNodePreserveCDATA, error);
}

}  // namespace

std::optional<Text> BVFileManager::webServiceConfigFilePath() {
    const std::optional<Text> folder = webServicesDirectory();
    if (!folder) return std::nullopt;
    return Text(folder->toUtf8() + "/BrevantWSConfig.xml");
}

std::optional<Text> BVFileManager::OrlaneConfigFilePath() {
    const std::optional<Text> folder = webServicesDirectory();
    if (!folder) return std::nullopt;
    return Text(folder->toUtf8() + "/OrlaneConfig.xml");
}

bool BVFileManager::webServiceConfigFileExists() {
    return exists(webServiceConfigFilePath());
}

bool BVFileManager::OrlaneConfigFileExists() const {
    return exists(OrlaneConfigFilePath());
}

std::optional<Text> BVFileManager::URLStringFromOrlaneConfigFileForElementNamed(const Text& name) {
    const std::shared_ptr<XMLDocument> document = BVNSXMLDocument::documentAtPath(OrlaneConfigFilePath());
    const std::shared_ptr<XMLElement> root = document ? document->rootElement() : nullptr;
    if (!root) return std::nullopt;
    return BVNSXMLElement::stringValueOfFirstChildElementNamedRecursiveSearch(*root, name, false);
}

bool BVFileManager::URLStringExistsShowErrorIfNonexistent(const std::optional<Text>& string, bool showError) {
    if (!BVNSString::isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(string)) return true;
    if (showError) showAlertForMissingConfigFiles();
    return false;
}

void BVFileManager::showAlertForMissingConfigFiles() {
    AlertCenter::show(
        {AlertStyle::Warning,
         Text("Brevant Tolvern"),
         Text("Unable to access Brevant online due to a missing configuration file. Please contact "
              "brevant support at support@brevant.com."),
         {Text("OK")}});
}

bool BVFileManager::hasInternetAccess() {
    return HostLookup::resolvesAny(kWellKnownHosts);
}

void BVFileManager::showAlertForNoInternetAccess() {
    AlertCenter::show(
        {AlertStyle::Informational,
         Text("Brevant Tolvern"),
         Text("You are not currently connected to the internet. In order to access Brevant online, "
              "you will need to be connected."),
         {Text("OK")}});
}

std::shared_ptr<XMLDocument> BVFileManager::newActivityIMLDocumentAtPathKey(const Text& path,
                                                                            const ByteData& key) {
    if (key.size() < kActivityKeyLength)
        throw InvalidArgumentException("newActivityIMLDocumentAtPathKey: the key holds fewer than 20 bytes");
    const ByteData bytes = readBytes(path.toUtf8()).value_or(ByteData{});
    Error error;
    bool failed = false;
    std::shared_ptr<XMLDocument> document = parseActivity(bytes, &error);
    if (!document) {
        failed = true;
        const ByteData activityKey(key.begin(), key.begin() + kActivityKeyLength);
        document = parseActivity(BVEncoder::newDecodedDataForEncodedDataUsingKey(bytes, activityKey), &error);
    }
    // The plain parse's error stays reported even when the decoded parse succeeds.
    if (failed)
        log("Error creating activity document: " + error.localizedDescription.toUtf8() +
            " Reason: " + error.failureReason.toUtf8());
    return document;
}

std::shared_ptr<XMLDocument> BVFileManager::activityIMLDocumentAtPathKey(const Text& path,
                                                                         const ByteData& key) {
    return newActivityIMLDocumentAtPathKey(path, key);
}

Text BVFileManager::MD5ChecksumFileNameForFileAtPath(const Text& path) {
    const Text digest = BVUtilities::MD5ForData(readBytes(path.toUtf8()).value_or(ByteData{}));
    const Text extension = BVNSArray::detail::pathExtensionOf(path);
    return extension.empty() ? digest : digest + Text(".") + extension;
}

std::optional<Text> BVFileManager::versionPathInDirectory(const Text& directory) {
    return BVNSFileManager::findFileNamedInDirectoryFullPath(Text("Version"), directory, true);
}

std::optional<Text> BVFileManager::stringValueOfVersionFileInDirectory(const Text& directory) {
    const std::optional<Text> path = versionPathInDirectory(directory);
    if (!path) return std::nullopt;
    const std::optional<ByteData> bytes = readBytes(path->toUtf8());
    if (!bytes) return std::nullopt;
    return decodeText(*bytes, TextEncoding::UTF8);
}

bool BVFileManager::flashPlayerPluginExistsWithMinVersion(int minimumVersion) {
    const std::optional<Text> version = flashPlayerShortVersion();
    if (!version) return false;
    const std::size_t dot = version->find(Text(".")).location;
    const Text major = dot == NotFound ? *version : version->substring(0, dot);
    return intValue(major) >= minimumVersion;
}

bool BVFileManager::canAccessFlashObjectsForTarget(const Text& target) {
    return exists(Text(flashTrustFilePath(target)));
}

void BVFileManager::grantAccessToFlashObjectsInDirectoryToTarget(const Text& directory, const Text& target) {
    if (canAccessFlashObjectsForTarget(target)) return;
    fs::path folder = StandardFolders::userPreferences();
    for (const char* level : {"Macromedia", "Flash Player", "#Security", "FlashPlayerTrust"}) {
        folder /= level;
        std::error_code ignored;
        fs::create_directory(folder, ignored);
    }
    const std::string content = directory.toUtf8();
    (void)writeBytesToFile(flashTrustFilePath(target), content.data(), content.size(), true);
}

std::vector<Text> BVFileManager::documentFileTypes() {
    return {Text("txt"), Text("rtf"),   Text("doc"),     Text("pdf"), Text("xls"),
            Text("pp"),  Text("pages"), Text("numbers"), Text("key")};
}

}  // namespace bv
