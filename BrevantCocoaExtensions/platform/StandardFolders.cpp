// The standard folders from their environment variables and fall-backs.
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace bv::StandardFolders {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::string withoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string fromVariableOr(const char* name, const std::string& fallback) {
    std::string value = variable(name);
    return withoutTrailingSlash(value.empty() ? fallback : value);
}

// The folder of the shared library this code is linked into.
std::filesystem::path libraryFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&libraryFolder), &info) == 0 || info.dli_fname == nullptr) return {};
    std::error_code error;
    auto path = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::filesystem::path() : path.parent_path();
}

}  // namespace

std::string home() {
    std::string value = variable("HOME");
    if (!value.empty()) return withoutTrailingSlash(value);
    if (const passwd* entry = getpwuid(getuid()); entry && entry->pw_dir)
        return withoutTrailingSlash(entry->pw_dir);
    return "/";
}

std::string localApplicationSupport() {
    return fromVariableOr("BV_LOCAL_APPLICATION_SUPPORT", "/var/lib");
}

std::string userApplicationSupport() {
    return fromVariableOr("XDG_DATA_HOME", home() + "/.local/share");
}

std::string userPreferences() {
    return fromVariableOr("XDG_CONFIG_HOME", home() + "/.config");
}

std::string systemPreferences() {
    return fromVariableOr("BV_SYSTEM_PREFERENCES", "/etc/xdg/Brevant");
}

std::string resources() {
    std::string value = variable("BV_RESOURCES");
    if (!value.empty()) return withoutTrailingSlash(value);
    std::error_code error;
    const auto folder = libraryFolder();
    if (!folder.empty() && std::filesystem::equivalent(folder, BV_BUILD_DIR, error))
        return BV_SOURCE_RESOURCE_DIR;  // run from the build tree
    // Installed: <prefix>/lib[/<multiarch>]/libBrevantCocoaExtensions.so beside
    // <prefix>/share/BrevantCocoaExtensions.
    for (auto prefix = folder.parent_path(); !prefix.empty(); prefix = prefix.parent_path()) {
        auto candidate = prefix / "share" / "BrevantCocoaExtensions";
        if (std::filesystem::is_directory(candidate, error)) return candidate.string();
        if (prefix.filename() != "lib" || prefix == prefix.root_path()) break;
    }
    return BV_RESOURCE_DIR;
}

}  // namespace bv::StandardFolders
