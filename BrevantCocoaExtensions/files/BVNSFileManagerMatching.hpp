// Internal pieces shared by the BVNSFileManager sources: case-insensitive name matching and listings.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/platform/FileManager.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSFileManager::detail {

// Answers whether names equal one wanted name case-insensitively. Pure ASCII pairs are compared directly;
// anything else goes through full case folding, so the two paths agree.
class NameMatcher {
  public:
    explicit NameMatcher(Text wanted);
    [[nodiscard]] bool matches(const Text& candidate) const;

  private:
    Text wanted_;
    Text key_;
    bool ascii_;
};

// The manager's listing of a folder, empty when it cannot be listed.
[[nodiscard]] std::vector<Text> listingOf(const FileManager& manager, const Text& folder);

}  // namespace bv::BVNSFileManager::detail
