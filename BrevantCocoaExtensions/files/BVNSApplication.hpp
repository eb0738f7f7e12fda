// BVNSApplication: who the running application is, from the main bundle's information dictionary (its
// Contents/Info.plist, or the dictionary set with bv::Bundle::setMainInfoDictionary).
//
// Showing a sheet on a window and calling a block when it ends needs windows; it comes with the interface
// library.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSApplication {

// "CFBundleIdentifier", or null.
[[nodiscard]] std::optional<Text> appBundleID();
// "CFBundleName", or null.
[[nodiscard]] std::optional<Text> appName();
// "BVCopyrightBanner", or null.
[[nodiscard]] std::optional<Text> copyrightBanner();
// "CFBundleVersion", or null.
[[nodiscard]] std::optional<Text> versionString();
// "Version BUILD (SHORT)": "CFBundleVersion" first, outside the parentheses, and
// "CFBundleShortVersionString" inside, on purpose; a missing value prints as "(null)".
[[nodiscard]] Text longVersionString();

}  // namespace bv::BVNSApplication
