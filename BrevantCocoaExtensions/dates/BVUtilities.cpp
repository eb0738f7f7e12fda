// BVUtilities: sibling applications, machine-wide preferences, unique numbers, identifiers and digests.
#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

#include <sys/stat.h>
#include <uuid/uuid.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <unordered_set>

#include "BrevantCocoaExtensions/platform/Applications.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/Md5.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv {

namespace {

// --- Applications -------------------------------------------------------------------------------------

ValueDictionary attributesOf(const Applications::RunningApplication& application) {
    ValueDictionary attributes{{Text("NSApplicationName"), Text(application.name)},
                               {Text("NSApplicationBundleIdentifier"), Text(application.identifier)}};
    if (application.path) attributes[Text("NSApplicationPath")] = Text(*application.path);
    if (application.processIdentifier)
        attributes[Text("NSApplicationProcessIdentifier")] =
            static_cast<long long>(*application.processIdentifier);
    return attributes;
}

std::optional<Applications::RunningApplication> runningWithIdentifier(const Text& identifier) {
    for (auto& application : Applications::running())
        if (Text(application.identifier).equals(identifier, CompareMode::CaseInsensitive)) return application;
    return std::nullopt;
}

bool isInstalled(const char* identifier) {
    return Applications::pathForIdentifier(identifier).has_value();
}

// --- Machine-wide preferences -------------------------------------------------------------------------

std::string preferencesFile(const Text& identifier) {
    return StandardFolders::systemPreferences() + "/" + identifier.toUtf8() + ".plist";
}

// The preferences dictionary: empty when the file is missing, nullopt (logged) when it is damaged or the
// identifier cannot name a file.
std::optional<ValueDictionary> readPreferences(const Text& identifier) {
    const std::string utf8 = identifier.toUtf8();
    if (utf8.empty() || utf8.find('/') != std::string::npos || utf8 == "." || utf8 == "..")
        return std::nullopt;
    const std::string path = preferencesFile(identifier);
    PropertyList::DictionaryFile read = PropertyList::readDictionaryFile(path);
    if (read.missing) return ValueDictionary{};
    if (!read.dictionary) log("BVUtilities: the preferences file " + path + " is damaged" + read.damage);
    return std::move(read.dictionary);
}

bool writePreferences(const Text& identifier, const ValueDictionary& preferences) {
    std::error_code ignored;
    const std::string folder = StandardFolders::systemPreferences();
    std::filesystem::create_directories(folder, ignored);
    if (!PropertyList::isValidPropertyList(Value(preferences))) return false;
    const ByteData bytes = PropertyList::xmlData(preferences);
    Error error;
    if (writeBytesToFile(preferencesFile(identifier), bytes.data(), bytes.size(), true, &error)) return true;
    log("BVUtilities: cannot write " + preferencesFile(identifier) + ": " +
        error.localizedDescription.toUtf8());
    return false;
}

// --- Dates --------------------------------------------------------------------------------------------

std::tm localNow() {
    const auto seconds = static_cast<std::time_t>(Date::now().timeIntervalSince1970());
    std::tm local{};
    localtime_r(&seconds, &local);
    return local;
}

std::int32_t& lastUniqueNumber() {
    static std::int32_t last = 0;
    return last;
}

// --- Identifiers --------------------------------------------------------------------------------------

Text lowerCaseRandomUUID() {
    uuid_t uuid;
    uuid_generate_random(uuid);
    char text[37];
    uuid_unparse_lower(uuid, text);
    return Text(std::string_view(text, 36));
}

}  // namespace

std::optional<ValueDictionary> BVUtilities::attributesForRunningApplicationNamed(const Text& name) {
    const std::string utf8 = name.toUtf8();
    for (const auto& application : Applications::running())
        if (application.name == utf8) return attributesOf(application);
    return std::nullopt;
}

std::optional<ValueDictionary> BVUtilities::attributesForRunningApplicationWithBundleID(
    const Text& identifier) {
    const auto application = runningWithIdentifier(identifier);
    return application ? std::optional(attributesOf(*application)) : std::nullopt;
}

bool BVUtilities::applicationIsRunningWithBundleID(const Text& identifier) {
    return runningWithIdentifier(identifier).has_value();
}

int BVUtilities::getProductConfiguration() {
    const bool tools = isInstalled("com.Brevant.BrevantTools");
    const bool first = isInstalled("com.Brevant.Pageweave");
    const bool second = isInstalled("com.brevant.Slidemark");
    const bool third = isInstalled("Marblet");  // a bare name where an identifier belongs, kept so
    if (!tools) return 0;
    if (first) return second && third ? 5 : 2;
    if (second) return third ? 6 : 3;
    return third ? 4 : 1;
}

bool BVUtilities::productConfigurationIsThirdPartyOnly() {
    const int configuration = getProductConfiguration();
    return configuration == 0 || configuration == 1;
}

bool BVUtilities::setGlobalPreferenceForKeyWithAppBundleID(const Value& value, const Text& key,
                                                           const Text& identifier) {
    auto preferences = readPreferences(identifier);
    if (!preferences) return false;
    if (value.isNull())
        preferences->erase(key);
    else
        (*preferences)[key] = value;
    return writePreferences(identifier, *preferences);
}

std::optional<ValueDictionary> BVUtilities::globalPreferencesForKeyWithAppBundleID(const Text& key,
                                                                                   const Text& identifier) {
    const auto preferences = readPreferences(identifier);
    if (!preferences) return std::nullopt;
    const auto found = preferences->find(key);
    if (found == preferences->end() || found->second.dictionary() == nullptr) return std::nullopt;
    return *found->second.dictionary();
}

std::int64_t BVUtilities::dateBasedUniqueNumber() {
    const std::tm now = localNow();
    // "%0y%j%M%S": at most 99 365 59 59, well inside 32 bits.
    auto value = static_cast<std::int32_t>((now.tm_year % 100) * 10'000'000 + (now.tm_yday + 1) * 10'000 +
                                           now.tm_min * 100 + now.tm_sec);
    while (value == lastUniqueNumber())
        value += static_cast<std::int32_t>(::random() % 100);
    lastUniqueNumber() = value;
    return value;
}

ValueArray BVUtilities::numberOfDateBasedUniqueNumbers(std::uint64_t count) {
    ValueArray numbers;
    std::unordered_set<std::int64_t> drawn;
    for (std::uint64_t round = 0; round < count; ++round) {
        std::int64_t number = dateBasedUniqueNumber();
        while (!drawn.insert(number).second)
            number = dateBasedUniqueNumber();
        numbers.emplace_back(static_cast<long long>(number));
    }
    return numbers;
}

Text BVUtilities::autoSaveNameDatePortion() {
    const std::tm now = localNow();
    char text[32];
    std::snprintf(text, sizeof text, "%d%02d_%d%02d", now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min);
    return Text(text);
}

bool BVUtilities::isValidTestNumber(std::uint64_t number) {
    return number < 100'000'000;
}

std::int64_t BVUtilities::randomTestNumber() {
    std::int64_t number = 0;
    std::int64_t power = 1;
    for (int position = 0; position < 8; ++position, power *= 10) {
        std::int64_t digit = ::random() % 9;
        while (position == 7 && digit == 0)
            digit = ::random() % 9;
        number += digit * power;
    }
    return number;
}

Text BVUtilities::generatedUUID() {
    return generatedUUIDWithBraces(false);
}

Text BVUtilities::generatedUUIDWithBraces(bool braces) {
    Text uuid = lowerCaseRandomUUID();
    return braces ? Text("{") + uuid + Text("}") : uuid;
}

Text BVUtilities::generatedUUIDWithBytes(const std::array<std::uint8_t, 16>& bytes) {
    char text[37];
    uuid_unparse_upper(bytes.data(), text);
    return Text(std::string_view(text, 36));
}

Text BVUtilities::UUIDForGUID(const Text& guid) {
    const auto isBrace = [](char16_t unit) { return unit == u'{' || unit == u'}'; };
    std::size_t start = 0, end = guid.length();
    while (start < end && isBrace(guid[start]))
        ++start;
    while (end > start && isBrace(guid[end - 1]))
        --end;
    return guid.substring(start, end - start).uppercased();
}

Text BVUtilities::MD5ForString(const Text& string) {
    const std::string bytes = string.toUtf8();
    return MD5ForData(ByteData(bytes.begin(), bytes.end()));
}

Text BVUtilities::MD5ForData(const ByteData& data) {
    const auto length = static_cast<std::uint32_t>(data.size());  // the digest's 32-bit length
    return Text(Md5::hexOf(data.data(), length));
}

}  // namespace bv
