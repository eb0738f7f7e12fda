// Harness: drive-letter paths converted into paths of this system. Each input line is one path; the library's
// conversion must equal the rule written out slowly, and a line holding NUL must fail the whole list.
#pragma once

#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// Joining as the path rules say: one "/" between, repeated "/" condensed, no trailing "/" but the root, and
// onto an empty path the component alone.
inline std::u16string slowJoin(const std::u16string& path, const std::u16string& component) {
    if (path.empty()) return component;
    std::u16string joined;
    for (char16_t unit : path + u"/" + component) {
        if (!(unit == u'/' && !joined.empty() && joined.back() == u'/')) joined.push_back(unit);
    }
    while (joined.size() > 1 && joined.back() == u'/')
        joined.pop_back();
    return joined;
}

inline std::u16string slowConversion(std::u16string path) {
    if (path.size() > 1 && path[1] == u':') path.erase(0, 2);
    std::vector<std::u16string> pieces{u""};
    for (char16_t unit : path) {
        if (unit == u'\\')
            pieces.emplace_back();
        else
            pieces.back().push_back(unit);
    }
    std::u16string joined = pieces[0];
    for (std::size_t i = 1; i < pieces.size(); ++i)
        joined = slowJoin(joined, pieces[i]);
    return joined;
}

}  // namespace detail

inline void windowsPaths(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = [] {
        setLogSink([](const std::string&) {});
        return true;
    }();
    (void)quiet;
    std::vector<Text> lines{Text()};
    const Text input(asChars(data, size));
    for (char16_t unit : input.units()) {
        if (unit == u'\n')
            lines.emplace_back();
        else
            lines.back().append(unit);
    }
    bool holdsNul = false;  // after the drive, which goes first
    for (const Text& line : lines) {
        const std::u16string_view rest = line.view().substr(line.length() > 1 && line[1] == u':' ? 2 : 0);
        holdsNul = holdsNul || rest.find(u'\0') != std::u16string_view::npos;
    }
    const auto converted = BVNSFileManager::pathsConvertedFromMSWindowsPaths(lines);
    const auto folders = BVNSFileManager::pathsConvertedFromMSWindowsPathsRemoveFileNames(lines, true);
    check(converted.has_value() == !holdsNul && folders.has_value() == !holdsNul,
          "only a NUL fails the list");
    if (!converted) return;
    check(converted->size() == lines.size(), "one path per line");
    for (std::size_t i = 0; i < lines.size(); ++i) {
        check((*converted)[i].units() == detail::slowConversion(lines[i].units()),
              "the conversion follows the rule");
        check((*folders)[i] == PathRules::deletingLastPathComponent((*converted)[i]),
              "the folder is the parent");
        check((*converted)[i].view().find(u'\\') == std::u16string_view::npos, "no backslash is left");
    }
}

}  // namespace bv::fuzz
