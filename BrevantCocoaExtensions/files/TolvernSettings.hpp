// TolvernSettings: the few machine-wide settings every application of the suite shares, kept in
// Settings.xml in the shared settings folder (BVFileManager::tolvernSettingsDirectory).
//
//   <TolvernSettings>
//       <Version>1.0</Version>
//       <State/>
//       <PreferCommonCoreStandards>false</PreferCommonCoreStandards>
//       <CollaborationWebServerPort>8080</CollaborationWebServerPort>
//       <CollaborationCommunicationPort>8081</CollaborationCommunicationPort>
//   </TolvernSettings>
//
// A settings object is a value snapshot: changing it changes nothing on disk until save. A save replaces
// the file whole (atomic rename, so a reader sees the old or the new settings, never a mix), leaves it
// writable by every user of the machine, and then posts "BVTolvernSettingsChanged" to every process on the
// session bus (see NotificationCenter), upon which applications reload with settingsFromDefaultFile. Several
// writers may save at once; the last save wins.
//
// Reading rules, kept on purpose: "Version" is read as it stands but every save writes "1.0";
// PreferCommonCoreStandards is false only for the exact text "false" (so "False", "0" and "" are true);
// a port is the decimal number at the start of its text ("80x" is 80, "abc" is 0); a missing element keeps
// its default; the root element's name is not checked.
#pragma once

#include <cstdint>
#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class TolvernSettings {
  public:
    // The format version every save writes, and the name posted after a save.
    static constexpr const char* kCurrentVersion = "1.0";
    static constexpr const char* kSettingsChangedNotification = "BVTolvernSettingsChanged";
    // Files larger than this are not read (a settings file is a few hundred bytes).
    static constexpr std::uintmax_t kMaximumFileSize = 1u << 20;

    // All defaults: version "1.0", empty state, common-core standards not preferred, ports 8080 and 8081.
    TolvernSettings() = default;
    [[nodiscard]] static TolvernSettings init() { return TolvernSettings(); }

    // The settings folder joined with "Settings.xml"; null when there is no settings folder (no Support
    // Files installed).
    [[nodiscard]] static std::optional<Text> defaultPath();
    // The settings of the default file, or the defaults when it is missing, unreadable or damaged. Never
    // fails.
    [[nodiscard]] static TolvernSettings settingsFromDefaultFile();
    // The settings read from the file; null when it cannot be read or parsed, has no root element or is
    // larger than kMaximumFileSize.
    [[nodiscard]] static std::optional<TolvernSettings> settingsAtPath(const Text& path);

    // saveAtPath with defaultPath (nothing is written when that is null; the notice is still posted).
    void save() const;
    // Writes the file atomically and universally writable, then posts BVTolvernSettingsChanged, also when
    // the write failed. Should building or writing raise, the user sees the "could not be saved" alert, the
    // reason is logged and nothing is posted.
    void saveAtPath(const std::optional<Text>& path) const;

    [[nodiscard]] const Text& version() const noexcept { return version_; }
    void setVersion(const Text& version) { version_ = version; }
    [[nodiscard]] const Text& state() const noexcept { return state_; }
    void setState(const Text& state) { state_ = state; }
    [[nodiscard]] bool preferCommonCoreStandards() const noexcept { return preferCommonCoreStandards_; }
    void setPreferCommonCoreStandards(bool prefer) noexcept { preferCommonCoreStandards_ = prefer; }
    [[nodiscard]] std::int32_t collaborationWebServerPort() const noexcept {
        return collaborationWebServerPort_;
    }
    void setCollaborationWebServerPort(std::int32_t port) noexcept { collaborationWebServerPort_ = port; }
    [[nodiscard]] std::int32_t collaborationCommunicationPort() const noexcept {
        return collaborationCommunicationPort_;
    }
    void setCollaborationCommunicationPort(std::int32_t port) noexcept {
        collaborationCommunicationPort_ = port;
    }

    friend bool operator==(const TolvernSettings&, const TolvernSettings&) = default;

  private:
    Text version_ = kCurrentVersion;
    Text state_;
    bool preferCommonCoreStandards_ = false;
    std::int32_t collaborationWebServerPort_ = 8080;
    std::int32_t collaborationCommunicationPort_ = 8081;
};

}  // namespace bv
