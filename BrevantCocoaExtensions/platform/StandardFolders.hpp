// The standard folders the library reads and writes, computed afresh on each call from the environment, so a
// program (or a test) points them elsewhere by setting a variable:
//   local application support  $BV_LOCAL_APPLICATION_SUPPORT, else /var/lib
//   user application support   $XDG_DATA_HOME, else ~/.local/share
//   user preferences           $XDG_CONFIG_HOME, else ~/.config
//   machine-wide preferences   $BV_SYSTEM_PREFERENCES, else /etc/xdg/Brevant
//   the library's resources    $BV_RESOURCES, else the installed share/BrevantCocoaExtensions beside the
//   library,
//                              else the source tree's resources/ when run from a build tree
// An empty variable counts as unset. Paths come without a trailing slash; nothing is created.
#pragma once

#include <string>

namespace bv::StandardFolders {

[[nodiscard]] std::string localApplicationSupport();
[[nodiscard]] std::string userApplicationSupport();
[[nodiscard]] std::string userPreferences();
[[nodiscard]] std::string systemPreferences();
[[nodiscard]] std::string resources();
// The user's home folder: $HOME, else the password database's entry, else "/".
[[nodiscard]] std::string home();

}  // namespace bv::StandardFolders
