// BVNSApplication: the information dictionary's facts about the running application.
#include "BrevantCocoaExtensions/files/BVNSApplication.hpp"

#include "BrevantCocoaExtensions/platform/Bundle.hpp"

namespace bv::BVNSApplication {

namespace {

// The value under the key, as its text (a text is itself, a number its description); null when absent.
std::optional<Text> infoValue(const char* key) {
    const ValueDictionary info = Bundle::mainBundle()->infoDictionary();
    const auto found = info.find(Text(key));
    if (found == info.end() || found->second.isNull()) return std::nullopt;
    return found->second.description();
}

Text orNullText(const std::optional<Text>& text) {
    return text ? *text : Text("(null)");
}

}  // namespace

std::optional<Text> appBundleID() {
    return infoValue("CFBundleIdentifier");
}

std::optional<Text> appName() {
    return infoValue("CFBundleName");
}

std::optional<Text> copyrightBanner() {
    return infoValue("BVCopyrightBanner");
}

std::optional<Text> versionString() {
    return infoValue("CFBundleVersion");
}

Text longVersionString() {
    return Text("Version ") + orNullText(versionString()) + Text(" (") +
           orNullText(infoValue("CFBundleShortVersionString")) + Text(")");
}

}  // namespace bv::BVNSApplication
