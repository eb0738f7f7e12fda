// Bundles: folders, information dictionaries, resources, and the bundles of the running process.
#include "BrevantCocoaExtensions/platform/Bundle.hpp"

#include <dlfcn.h>
#include <link.h>

#include <filesystem>
#include <utility>

#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLibraryFrameworkName = "BrevantCocoaExtensions.framework";

struct MainBundleSettings {
    std::string path;  // empty: the executable's folder
    std::optional<ValueDictionary> infoDictionary;
};

MainBundleSettings& mainSettings() {
    static MainBundleSettings settings;
    return settings;
}

std::string canonicalOrEmpty(const fs::path& path) {
    std::error_code error;
    auto canonical = fs::canonical(path, error);
    return error ? std::string() : canonical.string();
}

std::string executableFolder() {
    return fs::path(canonicalOrEmpty("/proc/self/exe")).parent_path().string();
}

// The path of the object file that defines this library's code.
std::string libraryFile() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&libraryFile), &info) == 0 || info.dli_fname == nullptr) return {};
    return canonicalOrEmpty(info.dli_fname);
}

// The nearest folder named *.framework that holds the file, or empty.
std::string enclosingFramework(const std::string& file) {
    for (fs::path folder = fs::path(file).parent_path(); folder.has_relative_path();
         folder = folder.parent_path()) {
        if (folder.extension() == ".framework") return folder.string();
    }
    return {};
}

std::optional<ValueDictionary> readInfoPlist(const std::string& path) {
    PropertyList::DictionaryFile read = PropertyList::readDictionaryFile(path);
    if (!read.dictionary && !read.missing)
        log("Bundle: " + path + " is not a property-list dictionary" + read.damage);
    return std::move(read.dictionary);
}

// The bundle of one loaded object file, or null when it belongs to none.
std::shared_ptr<Bundle> bundleOfObjectFile(const std::string& file, bool includeOthers) {
    if (file.empty()) return nullptr;
    if (auto framework = enclosingFramework(file); !framework.empty())
        return std::make_shared<Bundle>(framework);
    if (file == libraryFile()) return Bundle::libraryBundle();
    if (!includeOthers) return nullptr;
    if (file == canonicalOrEmpty("/proc/self/exe")) return Bundle::mainBundle();
    return std::make_shared<Bundle>(fs::path(file).parent_path().string());
}

int collectFramework(dl_phdr_info* info, std::size_t, void* data) {
    auto* found = static_cast<std::vector<std::shared_ptr<Bundle>>*>(data);
    if (info->dlpi_name == nullptr || info->dlpi_name[0] == '\0') return 0;  // the executable itself
    if (auto bundle = bundleOfObjectFile(canonicalOrEmpty(info->dlpi_name), false)) found->push_back(bundle);
    return 0;
}

}  // namespace

Bundle::Bundle(std::string path, std::string resourcePath, std::string name)
    : path_(std::move(path)), resourcePath_(std::move(resourcePath)), name_(std::move(name)) {
    if (resourcePath_.empty()) resourcePath_ = path_ + "/Contents/Resources";
    if (name_.empty()) name_ = fs::path(path_).filename().string();
}

ValueDictionary Bundle::infoDictionary() const {
    if (isMain_ && mainSettings().infoDictionary) return *mainSettings().infoDictionary;
    return readInfoPlist(infoPlistPath()).value_or(ValueDictionary{});
}

std::optional<Text> Bundle::bundleIdentifier() const {
    const auto info = infoDictionary();
    const auto found = info.find(Text("CFBundleIdentifier"));
    if (found == info.end() || found->second.text() == nullptr) return std::nullopt;
    return *found->second.text();
}

std::optional<std::string> Bundle::pathForResource(const Text& name, const Text& type,
                                                   const Text& subfolder) const {
    if (name.empty()) return std::nullopt;
    fs::path path(resourcePath_);
    if (!subfolder.empty()) path /= subfolder.toUtf8();
    path /= type.empty() ? name.toUtf8() : name.toUtf8() + "." + type.toUtf8();
    std::error_code error;
    if (!fs::exists(path, error)) return std::nullopt;
    return path.string();
}

std::shared_ptr<Bundle> Bundle::mainBundle() {
    const std::string& chosen = mainSettings().path;
    auto bundle = std::make_shared<Bundle>(chosen.empty() ? executableFolder() : chosen);
    bundle->isMain_ = true;
    return bundle;
}

std::string Bundle::setMainBundlePath(std::string path) {
    return std::exchange(mainSettings().path, std::move(path));
}

std::optional<ValueDictionary> Bundle::setMainInfoDictionary(std::optional<ValueDictionary> dictionary) {
    return std::exchange(mainSettings().infoDictionary, std::move(dictionary));
}

std::shared_ptr<Bundle> Bundle::libraryBundle() {
    const std::string resources = StandardFolders::resources();
    return std::make_shared<Bundle>(resources, resources, kLibraryFrameworkName);
}

std::vector<std::shared_ptr<Bundle>> Bundle::loadedFrameworks() {
    std::vector<std::shared_ptr<Bundle>> found;
    dl_iterate_phdr(collectFramework, &found);
    return found;
}

std::vector<std::shared_ptr<Bundle>> Bundle::allBundles() {
    std::vector<std::shared_ptr<Bundle>> bundles{mainBundle()};
    for (auto& framework : loadedFrameworks())
        bundles.push_back(std::move(framework));
    return bundles;
}

std::shared_ptr<Bundle> Bundle::bundleForAddress(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return nullptr;
    return bundleOfObjectFile(canonicalOrEmpty(info.dli_fname), true);
}

}  // namespace bv
