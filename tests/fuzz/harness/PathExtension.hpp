// Harness: removing repeated extensions from a path. The first input line is the extension, the rest the
// path; the library's single pass must equal the removal rule done step by step.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// The removal rule step by step: split at ".", walk i from the piece count down to 1, and on a repeat of the
// extension at piece i-1 remove piece i.
inline Text slowExcessRemoval(const Text& extension, const std::u16string& path) {
    std::vector<std::u16string> pieces{u""};
    for (char16_t unit : path) {
        if (unit == u'.')
            pieces.emplace_back();
        else
            pieces.back().push_back(unit);
    }
    int matches = 0;
    for (std::size_t i = pieces.size(); i >= 1; --i) {
        if (Text(pieces[i - 1]).equals(extension, CompareMode::CaseInsensitive) && ++matches > 1) {
            pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(i));
            --matches;
        }
    }
    std::u16string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        joined += (i == 0 ? u"" : u".") + pieces[i];
    return Text(joined);
}

}  // namespace detail

inline void pathExtension(const std::uint8_t* data, std::size_t size) {
    const Text input(asChars(data, size));
    const std::size_t newline = input.view().find(u'\n');
    const Text extension(input.view().substr(0, newline));
    const Text path(newline == std::u16string_view::npos ? std::u16string_view()
                                                         : input.view().substr(newline + 1));
    const Text result =
        BVNSFileManager::pathByRemovingExcessOccurrencesOfPathExtensionFromPath(extension, path);
    check(result == detail::slowExcessRemoval(extension, path.units()), "the removal follows the rule");
    check(result.length() <= path.length(), "nothing is added");
}

}  // namespace bv::fuzz
