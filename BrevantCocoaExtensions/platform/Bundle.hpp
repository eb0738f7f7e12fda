// bv::Bundle: a folder that holds a program or library with its information dictionary and resources, and
// the bundles of the running process.
//
// Layout of a bundle folder B (a Linux application of the suite is laid out so; see docs/BUNDLES.md):
//   B/Contents/Info.plist     the information dictionary (XML property list)
//   B/Contents/Resources/     resources; scripts in Resources/Scripts, interface files as NAME.ui
//   B/Contents/Frameworks/    framework bundles, each a folder NAME.framework laid out the same way
//   B/Contents/PlugIns/       built-in plug-ins
// The main bundle is the folder of the running executable (a program or a test may set another). The
// library's own bundle is the framework "BrevantCocoaExtensions.framework", whose resources are the
// library's resource folder (bv::StandardFolders::resources()), found from a build tree and from an
// installed prefix alike.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class Bundle {
  public:
    // A bundle at a folder; its resources in Contents/Resources unless a resource folder is given.
    explicit Bundle(std::string path, std::string resourcePath = {}, std::string name = {});

    [[nodiscard]] const std::string& bundlePath() const noexcept { return path_; }
    // The bundle's folder name ("Foo.framework").
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] const std::string& resourcePath() const noexcept { return resourcePath_; }
    [[nodiscard]] std::string infoPlistPath() const { return path_ + "/Contents/Info.plist"; }
    [[nodiscard]] std::string frameworksPath() const { return path_ + "/Contents/Frameworks"; }
    [[nodiscard]] std::string builtInPlugInsPath() const { return path_ + "/Contents/PlugIns"; }

    // The information dictionary: for the main bundle the one set by setMainInfoDictionary if any; else
    // Contents/Info.plist read afresh. Empty when the file is missing; a damaged file is logged with its path
    // and reads as empty.
    [[nodiscard]] ValueDictionary infoDictionary() const;
    // "CFBundleIdentifier" of the information dictionary, when it is a text.
    [[nodiscard]] std::optional<Text> bundleIdentifier() const;

    // The existing file NAME.TYPE (NAME alone for an empty type) in the resources, or in their subfolder.
    [[nodiscard]] std::optional<std::string> pathForResource(const Text& name, const Text& type,
                                                             const Text& subfolder = {}) const;

    // The main bundle.
    [[nodiscard]] static std::shared_ptr<Bundle> mainBundle();
    // Makes the folder the main bundle (an empty path restores the executable's folder); answers the previous
    // setting. For programs that live elsewhere than their bundle, and for tests.
    static std::string setMainBundlePath(std::string path);
    // Makes the dictionary the main bundle's information dictionary instead of its Info.plist (nullopt
    // returns to the file); answers the previous setting.
    static std::optional<ValueDictionary> setMainInfoDictionary(std::optional<ValueDictionary> dictionary);

    // The library's own bundle.
    [[nodiscard]] static std::shared_ptr<Bundle> libraryBundle();
    // The framework bundles loaded in the process, in load order: every loaded shared object inside a
    // NAME.framework folder gives that folder's bundle, and this library gives libraryBundle().
    [[nodiscard]] static std::vector<std::shared_ptr<Bundle>> loadedFrameworks();
    // The bundles of the process: the main bundle, then the loaded frameworks.
    [[nodiscard]] static std::vector<std::shared_ptr<Bundle>> allBundles();
    // The bundle of the program or library that holds the address (code or data): a framework bundle, the
    // library's own, the main bundle for the executable, else a bundle at the object file's folder. Null
    // when the address belongs to no loaded object.
    [[nodiscard]] static std::shared_ptr<Bundle> bundleForAddress(const void* address);

  private:
    std::string path_;
    std::string resourcePath_;
    std::string name_;
    bool isMain_ = false;
};

}  // namespace bv
