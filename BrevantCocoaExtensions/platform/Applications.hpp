// bv::Applications: the suite's applications as the desktop knows them.
//
// Running: an application announces itself by owning its identifier as a well-known name on the D-Bus
// session bus; every well-known name but the bus's own counts. Installed: an XDG desktop entry
// IDENTIFIER.desktop in the "applications" folder under $XDG_DATA_HOME or one of $XDG_DATA_DIRS (the
// first found wins; an entry marked Hidden=true is not installed), whose Exec program is the application's
// path.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bv::Applications {

struct RunningApplication {
    std::string identifier;           // the bus name
    std::string name;                 // the desktop entry's Name, else the identifier's last component
    std::optional<std::string> path;  // the desktop entry's program, else the process's executable
    std::optional<std::int64_t> processIdentifier;
};

// The running applications in the bus's order; empty when there is no session bus.
[[nodiscard]] std::vector<RunningApplication> running();

struct DesktopEntry {
    std::string file;  // the .desktop file
    std::string name;  // Name, or empty
    std::optional<std::string>
        exec;  // the program of Exec (unquoted; made absolute through $PATH when found)
};

// The desktop entry of the identifier, or nullopt when none is installed.
[[nodiscard]] std::optional<DesktopEntry> desktopEntry(const std::string& identifier);

// The installed application's path (its Exec program), or nullopt.
[[nodiscard]] std::optional<std::string> pathForIdentifier(const std::string& identifier);

}  // namespace bv::Applications
