// BVNSBundle: frameworks, resources, plug-in folders, class bundles and interface files.
#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <typeinfo>
#include <utility>

#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv::BVNSBundle {

namespace {

InterfaceFileLoader& currentLoader() {
    static InterfaceFileLoader loader;
    return loader;
}

std::optional<Text> asText(const std::optional<std::string>& path) {
    if (!path) return std::nullopt;
    return Text(*path);
}

// The Itanium-mangled symbol of the type-name string of a class named "A::B::C", or empty when a component
// is not a plain identifier. The name string, unlike the type information object, is never copied into a
// program that uses the class, so its address tells which object file defines the class.
std::string typeInfoSymbol(const std::string& className) {
    std::string mangled;
    std::size_t components = 0;
    for (std::size_t start = 0; start <= className.size();) {
        const std::size_t end = std::min(className.find("::", start), className.size());
        const std::string part = className.substr(start, end - start);
        if (part.empty()) return {};
        for (const char c : part)
            if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_')) return {};
        mangled += std::to_string(part.size()) + part;
        ++components;
        start = end + 2;
    }
    return components == 1 ? "_ZTS" + mangled : "_ZTSN" + mangled + "E";
}

// The bundle that defines the named class, or null.
std::shared_ptr<Bundle> bundleDefiningClass(const std::string& className) {
    for (const std::string& candidate : {className, "bv::" + className}) {
        const std::string symbol = typeInfoSymbol(candidate);
        if (symbol.empty()) continue;
        if (const void* address = dlsym(RTLD_DEFAULT, symbol.c_str()))
            return Bundle::bundleForAddress(address);
        if (className.find("::") != std::string::npos) break;
    }
    return nullptr;
}

std::optional<ValueArray> loadInterfaceFile(const std::shared_ptr<Bundle>& bundle, const Text& name,
                                            const std::shared_ptr<Object>& owner) {
    if (!bundle || !currentLoader()) return std::nullopt;
    const auto path = bundle->pathForResource(name, Text("ui"));
    if (!path) return std::nullopt;
    return currentLoader()(*path, owner);
}

std::optional<ValueArray> loadedOrLogged(std::optional<ValueArray> objects, const std::string& message) {
    if (!objects) log(message);
    return objects;
}

}  // namespace

InterfaceFileLoader setInterfaceFileLoader(InterfaceFileLoader loader) {
    return std::exchange(currentLoader(), std::move(loader));
}

std::shared_ptr<Bundle> frameworkBundleWithName(const Text& name) {
    std::string folder = name.toUtf8();
    const std::string suffix = ".framework";
    if (!folder.ends_with(suffix)) folder += suffix;
    const std::string inMain = Bundle::mainBundle()->frameworksPath() + "/" + folder;
    std::error_code error;
    if (std::filesystem::is_directory(inMain, error)) return std::make_shared<Bundle>(inMain);
    std::shared_ptr<Bundle> found;
    for (auto& framework : Bundle::loadedFrameworks())
        if (framework->name() == folder) found = std::move(framework);  // the last match wins
    return found;
}

std::optional<Text> pathForResourceOfTypeInFramework(const Text& name, const Text& type,
                                                     const Text& framework) {
    const auto bundle = frameworkBundleWithName(framework);
    return bundle ? asText(bundle->pathForResource(name, type)) : std::nullopt;
}

std::optional<Text> pathForResourceInFramework(const Text& fileName, const Text& framework) {
    return pathForResourceOfTypeInFramework(fileName, Text(), framework);
}

std::optional<Text> bundlePathForIdentifier(const Text& identifier) {
    for (const auto& bundle : Bundle::allBundles())
        if (bundle->bundleIdentifier() == identifier) return Text(bundle->builtInPlugInsPath());
    return std::nullopt;
}

std::shared_ptr<Bundle> bundleContainingClassOfInstance(const Object& object) {
    auto bundle = Bundle::bundleForAddress(typeid(object).name());  // the defining file's type-name string
    return bundle ? bundle : Bundle::mainBundle();
}

std::optional<Text> pathOfAppleScriptNamed(const Text& name) {
    return asText(Bundle::mainBundle()->pathForResource(name, Text("scpt"), Text("Scripts")));
}

std::optional<ValueArray> topLevelNibObjectsForLoadedNibNamedOwnedBy(const Bundle& self, const Text& name,
                                                                     const std::shared_ptr<Object>& owner) {
    return loadedOrLogged(loadInterfaceFile(std::make_shared<Bundle>(self), name, owner),
                          name.toUtf8() + " Nib failed to load!");
}

std::optional<ValueArray> topLevelNibObjectsForLoadedClassNibNamedOwnedBy(
    const Text& name, const std::shared_ptr<Object>& owner) {
    const std::string className = name.toUtf8();
    const std::size_t separator = className.rfind("::");
    const Text fileName = separator == std::string::npos ? name : Text(className.substr(separator + 2));
    return loadedOrLogged(loadInterfaceFile(bundleDefiningClass(className), fileName, owner),
                          className + " Nib failed to load from plug-in.");
}

std::optional<ValueArray> topLevelNibObjectsForLoadedFrameworkNibNamedOwnedBy(
    const Bundle& /*self*/, const Text& framework, const Text& name, const std::shared_ptr<Object>& owner) {
    return loadedOrLogged(
        loadInterfaceFile(frameworkBundleWithName(framework), name, owner),
        name.toUtf8() + " Nib failed to load from framework \"" + framework.toUtf8() + "\".");
}

}  // namespace bv::BVNSBundle
