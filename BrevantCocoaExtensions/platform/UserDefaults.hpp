// bv::UserDefaults: the running application's user defaults, text values by key.
//
// The defaults live in one XML property list per application, IDENTIFIER.plist in the user preferences
// folder (bv::StandardFolders::userPreferences()), where IDENTIFIER is the main bundle's
// "CFBundleIdentifier", or the executable's file name when the bundle has none. Every call reads the file
// afresh and every change rewrites it atomically, so two programs never see a torn file. Values of other
// kinds that someone else stored in the file are kept as they are.
//
// A missing file reads as empty. A damaged file is logged and reads as empty; the next change replaces it.
#pragma once

#include <optional>
#include <string>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::UserDefaults {

// The file that holds the running application's defaults.
[[nodiscard]] std::string path();
// The text stored under the key; null when nothing, or something other than a text, is stored there.
[[nodiscard]] std::optional<Text> stringForKey(const Text& key);
// Stores the text under the key, creating the preferences folder when needed; false (logged) when the
// file cannot be written.
bool setStringForKey(const Text& value, const Text& key);
// Removes the key; true when nothing is stored under it afterwards.
bool removeObjectForKey(const Text& key);

}  // namespace bv::UserDefaults
