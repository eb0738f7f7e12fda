// The path rules of the library's file operations, on Text paths whose components are separated by "/".
//
//   appendingPathComponent("a/", "/b")  "a/b"   one "/" between path and component, repeated "/" condensed,
//                                               no trailing "/" (except the root "/"); onto an empty path
//                                               the component comes back alone, as given
//   lastPathComponent("a/b.tar.gz/")    "b.tar.gz"
//   pathExtension("a/b.tar.gz")         "gz"    the text after the last "." of the last component
//   deletingPathExtension("a/b.tar.gz") "a/b.tar"
//   deletingLastPathComponent("/a/b")   "/a"    ("/a" gives "/", "a" gives "")
//
// A name that starts with "." is not special: ".hidden" has the extension "hidden". Paths go to the system as
// UTF-8 (nativePath) and come back from it through Text's UTF-8 reading.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::PathRules {

[[nodiscard]] Text appendingPathComponent(const Text& path, const Text& component);
[[nodiscard]] Text lastPathComponent(const Text& path);
[[nodiscard]] Text pathExtension(const Text& path);
[[nodiscard]] Text deletingPathExtension(const Text& path);
[[nodiscard]] Text deletingLastPathComponent(const Text& path);

// The path as the system takes it (UTF-8 bytes).
[[nodiscard]] inline std::string nativePath(const Text& path) {
    return path.toUtf8();
}

// Joins components one after another with appendingPathComponent's rules, looking at each code unit once:
// PathJoiner(first).append(second).append(third).take().
class PathJoiner {
  public:
    explicit PathJoiner(std::u16string_view first) : path_(first) {}
    PathJoiner& append(std::u16string_view component);
    [[nodiscard]] std::u16string take() { return std::move(path_); }

  private:
    std::u16string path_;
    bool condensed_ = false;  // path_ already has no repeated or trailing "/"
};

}  // namespace bv::PathRules
