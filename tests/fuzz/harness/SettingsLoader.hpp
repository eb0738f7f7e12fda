// Harness: loading the shared settings file (Settings.xml) from any bytes.
#pragma once

#include <cstdlib>

#include "BrevantCocoaExtensions/files/TolvernSettings.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Saves post a notice: point them at no bus and keep the one log line quiet.
inline void quietNotifications() {
    static const bool done = [] {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bv-fuzz-bus", 1);
        setLogSink([](const std::string&) {});
        return true;
    }();
    (void)done;
}

inline std::string readWhole(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Any bytes load as settings or as nothing; loaded settings saved and loaded again keep every value but the
// version (always "1.0"), and saving those gives the very same file.
inline void settingsLoader(const std::uint8_t* data, std::size_t size) {
    quietNotifications();
    static ScratchFile input(".Settings.xml"), first(".first.xml"), second(".second.xml");
    const std::optional<TolvernSettings> settings =
        TolvernSettings::settingsAtPath(Text(input.write(data, size).string()));
    if (!settings) return;
    const Text firstPath(first.write(nullptr, 0).string()), secondPath(second.write(nullptr, 0).string());
    settings->saveAtPath(firstPath);
    const std::optional<TolvernSettings> again = TolvernSettings::settingsAtPath(firstPath);
    check(again.has_value(), "saved settings load again");
    check(again->version() == Text("1.0"), "a save writes version 1.0");
    check(again->preferCommonCoreStandards() == settings->preferCommonCoreStandards() &&
              again->collaborationWebServerPort() == settings->collaborationWebServerPort() &&
              again->collaborationCommunicationPort() == settings->collaborationCommunicationPort(),
          "the flag and the ports survive a save");
    again->saveAtPath(secondPath);
    check(readWhole(firstPath.toUtf8()) == readWhole(secondPath.toUtf8()),
          "saving loaded settings is stable");
}

}  // namespace bv::fuzz
