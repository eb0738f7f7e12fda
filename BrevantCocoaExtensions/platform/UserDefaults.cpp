// User defaults as a property-list file per application, read afresh and rewritten atomically.
#include "BrevantCocoaExtensions/platform/UserDefaults.hpp"

#include <filesystem>

#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv::UserDefaults {

namespace {

// The application's identifier as a file name: one path component, never "." or "..".
std::string applicationIdentifier() {
    std::string identifier;
    if (const auto bundleIdentifier = Bundle::mainBundle()->bundleIdentifier())
        identifier = bundleIdentifier->toUtf8();
    if (identifier.empty() || identifier.find('/') != std::string::npos || identifier == "." ||
        identifier == "..") {
        std::error_code ignored;
        identifier = std::filesystem::read_symlink("/proc/self/exe", ignored).filename().string();
    }
    return identifier.empty() ? std::string("BrevantCocoaExtensions") : identifier;
}

ValueDictionary readDefaults() {
    const std::string file = path();
    PropertyList::DictionaryFile read = PropertyList::readDictionaryFile(file);
    if (read.dictionary) return std::move(*read.dictionary);
    if (!read.missing)
        log("UserDefaults: the defaults file " + file + " is damaged and reads as empty" + read.damage);
    return {};
}

bool writeDefaults(const ValueDictionary& defaults) {
    const std::string file = path();
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    const ByteData bytes = PropertyList::xmlData(defaults);
    Error error;
    if (writeBytesToFile(file, bytes.data(), bytes.size(), true, &error)) return true;
    log("UserDefaults: cannot write " + file + ": " + error.localizedDescription.toUtf8());
    return false;
}

}  // namespace

std::string path() {
    return StandardFolders::userPreferences() + "/" + applicationIdentifier() + ".plist";
}

std::optional<Text> stringForKey(const Text& key) {
    const ValueDictionary defaults = readDefaults();
    const auto found = defaults.find(key);
    if (found == defaults.end() || found->second.text() == nullptr) return std::nullopt;
    return *found->second.text();
}

bool setStringForKey(const Text& value, const Text& key) {
    ValueDictionary defaults = readDefaults();
    defaults[key] = Value(value);
    if (!PropertyList::isValidPropertyList(Value(defaults))) {
        log("UserDefaults: the value for " + key.toUtf8() + " cannot be stored in a property list");
        return false;
    }
    return writeDefaults(defaults);
}

bool removeObjectForKey(const Text& key) {
    ValueDictionary defaults = readDefaults();
    if (defaults.erase(key) == 0) return true;
    return writeDefaults(defaults);
}

}  // namespace bv::UserDefaults
