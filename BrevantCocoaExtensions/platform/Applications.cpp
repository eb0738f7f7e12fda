// Running applications from the session bus, installed ones from XDG desktop entries.
#include "BrevantCocoaExtensions/platform/Applications.hpp"

#include <systemd/sd-bus.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"

namespace bv::Applications {

namespace fs = std::filesystem;

namespace {

constexpr const char* kBusService = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

struct BusDeleter {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
using BusPointer = std::unique_ptr<sd_bus, BusDeleter>;

struct MessageDeleter {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using MessagePointer = std::unique_ptr<sd_bus_message, MessageDeleter>;

BusPointer openSessionBus() {
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0) return nullptr;
    return BusPointer(bus);
}

std::vector<std::string> wellKnownNames(sd_bus* bus) {
    sd_bus_message* raw = nullptr;
    std::vector<std::string> names;
    if (sd_bus_call_method(bus, kBusService, kBusPath, kBusService, "ListNames", nullptr, &raw, "") < 0)
        return names;
    MessagePointer reply(raw);
    if (sd_bus_message_enter_container(reply.get(), 'a', "s") < 0) return names;
    const char* name = nullptr;
    while (sd_bus_message_read(reply.get(), "s", &name) > 0)
        if (name[0] != ':' && std::string(name) != kBusService) names.emplace_back(name);
    return names;
}

std::optional<std::int64_t> processOf(sd_bus* bus, const std::string& name) {
    sd_bus_message* raw = nullptr;
    if (sd_bus_call_method(bus, kBusService, kBusPath, kBusService, "GetConnectionUnixProcessID", nullptr,
                           &raw, "s", name.c_str()) < 0)
        return std::nullopt;
    MessagePointer reply(raw);
    std::uint32_t pid = 0;
    if (sd_bus_message_read(reply.get(), "u", &pid) < 0) return std::nullopt;
    return pid;
}

std::optional<std::string> executableOf(std::int64_t pid) {
    std::error_code error;
    auto path = fs::read_symlink("/proc/" + std::to_string(pid) + "/exe", error);
    if (error) return std::nullopt;
    return path.string();
}

std::vector<fs::path> applicationFolders() {
    std::vector<fs::path> folders{fs::path(StandardFolders::userApplicationSupport()) / "applications"};
    const char* dataDirs = std::getenv("XDG_DATA_DIRS");
    std::istringstream list(dataDirs && *dataDirs ? dataDirs : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(list, folder, ':');)
        if (!folder.empty()) folders.push_back(fs::path(folder) / "applications");
    return folders;
}

// The first word of an Exec value, with its double quotes and backslash escapes undone.
std::string programOfExec(const std::string& exec) {
    std::string program;
    bool quoted = false;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        const char c = exec[i];
        if (c == '"') {
            quoted = !quoted;
        } else if (c == '\\' && quoted && i + 1 < exec.size()) {
            program += exec[++i];
        } else if (c == ' ' && !quoted) {
            if (!program.empty()) break;
        } else {
            program += c;
        }
    }
    return program;
}

// The program made absolute through $PATH when it is a bare name found there.
std::string resolvedProgram(const std::string& program) {
    if (program.empty() || program.find('/') != std::string::npos) return program;
    const char* path = std::getenv("PATH");
    std::istringstream list(path ? path : "");
    for (std::string folder; std::getline(list, folder, ':');) {
        const std::string candidate = (folder.empty() ? std::string(".") : folder) + "/" + program;
        if (access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    return program;
}

// Reads the [Desktop Entry] group; nullopt when the file cannot be read or the entry is hidden.
std::optional<DesktopEntry> readDesktopEntry(const fs::path& file) {
    std::ifstream in(file);
    if (!in) return std::nullopt;
    DesktopEntry entry{file.string(), {}, std::nullopt};
    bool inMainGroup = false;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.starts_with("[")) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inMainGroup || line.starts_with("#") || equals == std::string::npos) continue;
        std::string key = line.substr(0, equals), value = line.substr(equals + 1);
        while (!key.empty() && key.back() == ' ')
            key.pop_back();
        while (!value.empty() && value.front() == ' ')
            value.erase(0, 1);
        if (key == "Hidden" && value == "true") return std::nullopt;
        if (key == "Name") entry.name = value;
        if (key == "Exec" && !programOfExec(value).empty())
            entry.exec = resolvedProgram(programOfExec(value));
    }
    return entry;
}

std::string lastComponent(const std::string& identifier) {
    const std::size_t dot = identifier.rfind('.');
    return dot == std::string::npos ? identifier : identifier.substr(dot + 1);
}

}  // namespace

std::vector<RunningApplication> running() {
    std::vector<RunningApplication> applications;
    const BusPointer bus = openSessionBus();
    if (!bus) return applications;
    for (const std::string& name : wellKnownNames(bus.get())) {
        RunningApplication application{name, lastComponent(name), std::nullopt, processOf(bus.get(), name)};
        if (const auto entry = desktopEntry(name)) {
            if (!entry->name.empty()) application.name = entry->name;
            application.path = entry->exec;
        }
        if (!application.path && application.processIdentifier)
            application.path = executableOf(*application.processIdentifier);
        applications.push_back(std::move(application));
    }
    return applications;
}

std::optional<DesktopEntry> desktopEntry(const std::string& identifier) {
    if (identifier.empty() || identifier.find('/') != std::string::npos) return std::nullopt;
    for (const auto& folder : applicationFolders()) {
        const fs::path file = folder / (identifier + ".desktop");
        std::error_code error;
        if (fs::is_regular_file(file, error)) return readDesktopEntry(file);  // the first found wins
    }
    return std::nullopt;
}

std::optional<std::string> pathForIdentifier(const std::string& identifier) {
    const auto entry = desktopEntry(identifier);
    return entry ? entry->exec : std::nullopt;
}

}  // namespace bv::Applications
