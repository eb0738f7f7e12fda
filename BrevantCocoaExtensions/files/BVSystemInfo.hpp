// BVSystemInfo: facts about the system, gathered once: the old-system test and the file-name extensions of
// playable movie types.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class BVSystemInfo {
  public:
    // Answers a system-version selector ('sysv' the version in binary-coded decimal, 0x1049 for 10.4.9;
    // 'sys1' the major and 'sys2' the minor number), or nullopt when the system cannot answer it.
    using VersionSelector = std::function<std::optional<std::int64_t>(std::uint32_t selector)>;

    // Computes isPreLeopard from this system, which answers no version selector: false on every Linux.
    BVSystemInfo();
    // Computes isPreLeopard from the answers of the given selector function.
    explicit BVSystemInfo(const VersionSelector& selector);

    // The one instance, created on first call and kept for the process.
    [[nodiscard]] static BVSystemInfo& sharedInstance();
    // A new instance for this system.
    [[nodiscard]] static BVSystemInfo init() { return BVSystemInfo(); }

    // True for a release before 10.5: a 'sysv' below 0x1040, or major 10 with minor 4 (10.4.11 has 'sysv'
    // 0x1049, not below 0x1040). False when 'sysv' cannot be read; 'sys1' and 'sys2' are not checked.
    [[nodiscard]] bool isPreLeopard() const noexcept { return isPreLeopard_; }

    // The extensions of every video/* type of the MIME database (the mime folders under $XDG_DATA_HOME and
    // $XDG_DATA_DIRS), type by type in the database's order and each type's declared "*.EXT" patterns in
    // order, duplicates kept. Built on first call and kept for the process.
    [[nodiscard]] static const std::vector<Text>& movieFileTypes();

  private:
    bool isPreLeopard_ = false;
};

}  // namespace bv
