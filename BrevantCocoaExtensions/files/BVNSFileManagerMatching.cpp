// Case-insensitive name matching and listings for the BVNSFileManager sources.
#include "BrevantCocoaExtensions/files/BVNSFileManagerMatching.hpp"

#include <algorithm>
#include <utility>

namespace bv::BVNSFileManager::detail {

namespace {

bool isAscii(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

char16_t asciiLower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

}  // namespace

NameMatcher::NameMatcher(Text wanted)
    : wanted_(std::move(wanted)),
      key_(wanted_.comparisonKey(CompareMode::CaseInsensitive)),
      ascii_(isAscii(wanted_.view())) {}

bool NameMatcher::matches(const Text& candidate) const {
    std::u16string_view want = wanted_.view();
    std::u16string_view have = candidate.view();
    if (ascii_ && isAscii(have)) {
        return want.size() == have.size() &&
               std::equal(want.begin(), want.end(), have.begin(),
                          [](char16_t a, char16_t b) { return asciiLower(a) == asciiLower(b); });
    }
    return candidate.comparisonKey(CompareMode::CaseInsensitive) == key_;
}

std::vector<Text> listingOf(const FileManager& manager, const Text& folder) {
    return manager.contentsOfDirectoryAtPath(folder).value_or(std::vector<Text>{});
}

}  // namespace bv::BVNSFileManager::detail
