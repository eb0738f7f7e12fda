// BVSystemInfo: the old-system test and the movie types of the MIME database.
#include "BrevantCocoaExtensions/files/BVSystemInfo.hpp"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv {

namespace {

constexpr std::uint32_t selectorCode(const char (&name)[5]) {
    return std::uint32_t(std::uint8_t(name[0])) << 24 | std::uint32_t(std::uint8_t(name[1])) << 16 |
           std::uint32_t(std::uint8_t(name[2])) << 8 | std::uint32_t(std::uint8_t(name[3]));
}

// The folders that hold a shared-mime-info database, the user's first.
std::vector<std::filesystem::path> mimeFolders() {
    std::vector<std::filesystem::path> folders{
        std::filesystem::path(StandardFolders::userApplicationSupport()) / "mime"};
    const char* dataDirs = std::getenv("XDG_DATA_DIRS");
    std::istringstream list(dataDirs && *dataDirs ? dataDirs : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(list, folder, ':');)
        if (!folder.empty()) folders.push_back(std::filesystem::path(folder) / "mime");
    return folders;
}

// The video types listed in the databases' "types" files, sorted, each once.
std::set<std::string> videoTypes(const std::vector<std::filesystem::path>& folders) {
    std::set<std::string> types;
    for (const auto& folder : folders) {
        std::ifstream in(folder / "types");
        for (std::string line; std::getline(in, line);)
            if (line.starts_with("video/")) types.insert(line);
    }
    return types;
}

// The extension of a simple "*.EXT" pattern, or empty for any other pattern.
std::string extensionOfPattern(const std::string& pattern) {
    if (!pattern.starts_with("*.") || pattern.size() == 2) return {};
    if (pattern.find_first_of("*?[]", 2) != std::string::npos) return {};
    return pattern.substr(2);
}

// Appends the extensions of the glob patterns of a type's declaration file, in order.
void appendExtensions(const std::filesystem::path& file, std::vector<Text>& extensions) {
    xmlDocPtr document =
        xmlReadFile(file.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    if (document == nullptr) return;
    const xmlNode* root = xmlDocGetRootElement(document);
    for (const xmlNode* node = root ? root->children : nullptr; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE || xmlStrcmp(node->name, BAD_CAST "glob") != 0) continue;
        xmlChar* pattern = xmlGetProp(node, BAD_CAST "pattern");
        if (pattern == nullptr) continue;
        const std::string extension = extensionOfPattern(reinterpret_cast<const char*>(pattern));
        xmlFree(pattern);
        if (!extension.empty()) extensions.emplace_back(extension);
    }
    xmlFreeDoc(document);
}

std::vector<Text> readMovieFileTypes() {
    const auto folders = mimeFolders();
    std::vector<Text> extensions;
    for (const std::string& type : videoTypes(folders)) {
        for (const auto& folder : folders) {
            std::error_code error;
            if (const auto file = folder / (type + ".xml"); std::filesystem::is_regular_file(file, error)) {
                appendExtensions(file, extensions);
                break;  // the first database that declares the type wins
            }
        }
    }
    return extensions;
}

}  // namespace

BVSystemInfo::BVSystemInfo() : BVSystemInfo([](std::uint32_t) { return std::optional<std::int64_t>(); }) {}

BVSystemInfo::BVSystemInfo(const VersionSelector& selector) {
    const auto version = selector(selectorCode("sysv"));
    if (!version) return;
    const std::int64_t major = selector(selectorCode("sys1")).value_or(0);
    const std::int64_t minor = selector(selectorCode("sys2")).value_or(0);
    isPreLeopard_ = *version < 0x1040 || (major == 10 && minor == 4);
}

BVSystemInfo& BVSystemInfo::sharedInstance() {
    static BVSystemInfo instance;
    return instance;
}

const std::vector<Text>& BVSystemInfo::movieFileTypes() {
    static const std::vector<Text> types = readMovieFileTypes();
    return types;
}

}  // namespace bv
