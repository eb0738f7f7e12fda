// BVNSBundle: bundle operations the suite's applications share: frameworks by name, resources inside a
// framework, plug-in folders by identifier, the bundle that defines a class, scripts, and interface files.
//
// Interface files are NAME.ui in a bundle's resources. The core library cannot read them itself (it never
// links the interface toolkit): the interface library installs a loader with setInterfaceFileLoader, and
// without one every load fails (logged, null). The loader hands out the file's top-level objects; the
// returned list keeps them alive, so callers take nothing more to release.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSBundle {

// Reads an interface file with an owner; its top-level objects, or nullopt when the file cannot be loaded.
using InterfaceFileLoader =
    std::function<std::optional<ValueArray>(const std::string& path, const std::shared_ptr<Object>& owner)>;
// Installs the loader and answers the previous one; an empty loader makes every load fail.
InterfaceFileLoader setInterfaceFileLoader(InterfaceFileLoader loader);

// The framework NAME.framework (".framework" appended unless the name ends so, case-sensitively): the
// main bundle's Contents/Frameworks/NAME.framework when it exists, else the last loaded framework whose
// folder has exactly that name; null when none.
[[nodiscard]] std::shared_ptr<Bundle> frameworkBundleWithName(const Text& name);
// The resource NAME.TYPE inside the framework, or null.
[[nodiscard]] std::optional<Text> pathForResourceOfTypeInFramework(const Text& name, const Text& type,
                                                                   const Text& framework);
// The resource of that whole file name inside the framework, or null.
[[nodiscard]] std::optional<Text> pathForResourceInFramework(const Text& fileName, const Text& framework);
// The built-in plug-ins folder (Contents/PlugIns, not the bundle's own folder) of the process's bundle
// whose "CFBundleIdentifier" is the identifier; null when no bundle has it.
[[nodiscard]] std::optional<Text> bundlePathForIdentifier(const Text& identifier);
// The bundle that defines the object's class (the object file holding its type information); the main
// bundle when that cannot be told.
[[nodiscard]] std::shared_ptr<Bundle> bundleContainingClassOfInstance(const Object& object);
// The main bundle's resource Scripts/NAME.scpt, or null.
[[nodiscard]] std::optional<Text> pathOfAppleScriptNamed(const Text& name);

// Loads NAME.ui from the bundle's resources with the owner. Logs "NAME Nib failed to load!" and answers
// null on failure.
[[nodiscard]] std::optional<ValueArray> topLevelNibObjectsForLoadedNibNamedOwnedBy(
    const Bundle& self, const Text& name, const std::shared_ptr<Object>& owner);
// The name is a class's ("A::B", found through its exported type-name symbol) and, by its last component,
// the interface file's; the file is loaded from the bundle that defines the class. A class name without
// "::" is also looked for in namespace bv. Logs "NAME Nib failed to load from plug-in." on failure.
[[nodiscard]] std::optional<ValueArray> topLevelNibObjectsForLoadedClassNibNamedOwnedBy(
    const Text& name, const std::shared_ptr<Object>& owner);
// Loads NAME.ui from the framework found by frameworkBundleWithName. Logs
// "NAME Nib failed to load from framework "FRAMEWORK"." on failure.
[[nodiscard]] std::optional<ValueArray> topLevelNibObjectsForLoadedFrameworkNibNamedOwnedBy(
    const Bundle& self, const Text& framework, const Text& name, const std::shared_ptr<Object>& owner);

}  // namespace bv::BVNSBundle
