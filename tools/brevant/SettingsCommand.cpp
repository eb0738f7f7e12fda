// brevant settings [show|get KEY|set KEY VALUE|path|watch] [--json]: shows and changes the suite's shared
// settings (Settings.xml) through TolvernSettings. `set` saves the whole file, which tells every running
// application of the suite; `watch` prints one line each time any process saves, until interrupted.
#include <nlohmann/json.hpp>

#include <chrono>
#include <climits>
#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"
#include "BrevantCocoaExtensions/platform/NotificationCenter.hpp"
#include "BrevantCocoaExtensions/platform/StandardFolders.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

using bv::TolvernSettings;

struct SettingsOptions {
    std::string action = "show";
    std::vector<std::string> arguments;
    bool json = false;
};

const std::vector<std::string> kKeys = {"Version", "State", "PreferCommonCoreStandards",
                                        "CollaborationWebServerPort", "CollaborationCommunicationPort"};

nlohmann::ordered_json asJson(const TolvernSettings& settings) {
    return {{"Version", settings.version().toUtf8()},
            {"State", settings.state().toUtf8()},
            {"PreferCommonCoreStandards", settings.preferCommonCoreStandards()},
            {"CollaborationWebServerPort", settings.collaborationWebServerPort()},
            {"CollaborationCommunicationPort", settings.collaborationCommunicationPort()}};
}

// The value as a person reads it: texts as they stand, booleans and numbers as JSON writes them.
std::string plainValue(const nlohmann::ordered_json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string settingsFolderProblem() {
    return bv::StandardFolders::localApplicationSupport() +
           "/Brevant/Support Files: missing, so there is no settings file (the suite's installer provides "
           "it)";
}

int show(const SettingsOptions& options) {
    const nlohmann::ordered_json values = asJson(TolvernSettings::settingsFromDefaultFile());
    if (options.json) return writeOutput(values.dump(2) + "\n") ? kExitSuccess : kExitFailure;
    std::string out;
    for (const auto& [key, value] : values.items())
        out += key + ": " + plainValue(value) + "\n";
    return writeOutput(out) ? kExitSuccess : kExitFailure;
}

int get(const SettingsOptions& options) {
    const nlohmann::ordered_json values = asJson(TolvernSettings::settingsFromDefaultFile());
    const nlohmann::ordered_json& value = values[options.arguments[0]];
    return writeOutput((options.json ? value.dump() : plainValue(value)) + "\n") ? kExitSuccess
                                                                                 : kExitFailure;
}

// Reads a port strictly (the file's own reading is lenient, a person's input should not be).
bool parsePort(const std::string& text, std::int32_t* port) {
    if (text.empty() || text.size() > 5 || text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    *port = std::stoi(text);
    return *port <= 65535;
}

// Applies KEY=VALUE; false with a usage message when the value does not fit the key.
bool apply(TolvernSettings* settings, const std::string& key, const std::string& value,
           std::string* problem) {
    std::int32_t port = 0;
    if (key == "State") {
        settings->setState(bv::Text(value));
    } else if (key == "PreferCommonCoreStandards" && (value == "true" || value == "false")) {
        settings->setPreferCommonCoreStandards(value == "true");
    } else if (key == "CollaborationWebServerPort" && parsePort(value, &port)) {
        settings->setCollaborationWebServerPort(port);
    } else if (key == "CollaborationCommunicationPort" && parsePort(value, &port)) {
        settings->setCollaborationCommunicationPort(port);
    } else if (key == "Version") {
        *problem = "Version cannot be set: every save writes the current format, 1.0";
        return false;
    } else {
        *problem = key + ": \"" + value + "\" is not a valid value (" +
                   (key == "PreferCommonCoreStandards" ? "true or false" : "a port from 0 to 65535") + ")";
        return false;
    }
    return true;
}

int set(const SettingsOptions& options) {
    const std::optional<bv::Text> path = TolvernSettings::defaultPath();
    if (!path) {
        printError(settingsFolderProblem());
        return kExitFailure;
    }
    TolvernSettings settings = TolvernSettings::settingsFromDefaultFile();
    std::string problem;
    if (!apply(&settings, options.arguments[0], options.arguments[1], &problem)) {
        printError("settings: " + problem);
        return kExitUsage;
    }
    settings.save();
    // The save itself reports nothing; reading the file back tells whether it took.
    settings.setVersion(bv::Text(TolvernSettings::kCurrentVersion));
    if (TolvernSettings::settingsAtPath(*path) != settings) {
        printError(path->toUtf8() + ": could not be saved");
        return kExitFailure;
    }
    return kExitSuccess;
}

int path(const SettingsOptions&) {
    const std::optional<bv::Text> path = TolvernSettings::defaultPath();
    if (!path) {
        printError(settingsFolderProblem());
        return kExitFailure;
    }
    return writeOutput(path->toUtf8() + "\n") ? kExitSuccess : kExitFailure;
}

std::string utcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

// One line for one save: the time and every setting as KEY=VALUE, or one JSON object.
std::string watchLine(bool json) {
    const nlohmann::ordered_json values = asJson(TolvernSettings::settingsFromDefaultFile());
    if (json) return nlohmann::ordered_json{{"time", utcNow()}, {"settings", values}}.dump() + "\n";
    std::string line = utcNow();
    for (const auto& [key, value] : values.items())
        line += " " + key + "=" + plainValue(value);
    return line + "\n";
}

int watch(const SettingsOptions& options) {
    bool outputOpen = true;
    auto observer = bv::NotificationCenter::addObserverForName(
        bv::Text(TolvernSettings::kSettingsChangedNotification), [&](const bv::Text&) {
            outputOpen = outputOpen && writeOutput(watchLine(options.json)) && std::fflush(stdout) == 0;
        });
    if (!observer) {
        printError("settings: no D-Bus session bus, so there are no change notices to watch");
        return kExitFailure;
    }
    while (outputOpen)
        if (observer->waitAndProcess(std::chrono::hours(1)) < 0) {
            printError("settings: the connection to the session bus was lost");
            return kExitFailure;
        }
    return kExitSuccess;  // the reader went away
}

int run(const SettingsOptions& options) {
    const std::size_t wanted = options.action == "get" ? 1 : options.action == "set" ? 2 : 0;
    if (options.arguments.size() != wanted) {
        printError("settings: " + options.action + " takes " + std::to_string(wanted) +
                   " argument(s); see brevant settings --help");
        return kExitUsage;
    }
    if (wanted > 0 && std::find(kKeys.begin(), kKeys.end(), options.arguments[0]) == kKeys.end()) {
        printError("settings: unknown key " + options.arguments[0] +
                   " (keys: Version, State, PreferCommonCoreStandards, CollaborationWebServerPort, "
                   "CollaborationCommunicationPort)");
        return kExitUsage;
    }
    if (options.action == "get") return get(options);
    if (options.action == "set") return set(options);
    if (options.action == "path") return path(options);
    if (options.action == "watch") return watch(options);
    return show(options);
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand("settings", "Show, change or watch the suite's shared settings");
    auto options = std::make_shared<SettingsOptions>();
    command->add_option("ACTION", options->action, "show (the default), get, set, path or watch")
        ->check(CLI::IsMember({"show", "get", "set", "path", "watch"}));
    command->add_option("ARGUMENTS", options->arguments, "KEY for get; KEY VALUE for set");
    command->add_flag("--json", options->json, "print JSON (show, get, watch)");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kSettingsCommand("settings", install);

}  // namespace brevant
