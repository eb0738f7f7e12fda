// The library's path rules on Text: joining, splitting off the last component and the extension.
#include "BrevantCocoaExtensions/platform/PathRules.hpp"

namespace bv::PathRules {

namespace {

// Appends text, dropping each "/" that would follow another "/".
void appendCondensed(std::u16string& out, std::u16string_view text) {
    for (char16_t unit : text) {
        if (unit == u'/' && !out.empty() && out.back() == u'/') continue;
        out.push_back(unit);
    }
}

void dropTrailingSlashes(std::u16string& out) {
    while (out.size() > 1 && out.back() == u'/')
        out.pop_back();
}

// The path without trailing "/" (the root "/" stays).
std::u16string_view withoutTrailingSlashes(std::u16string_view path) {
    while (path.size() > 1 && path.back() == u'/')
        path.remove_suffix(1);
    return path;
}

// Where the last component of a path without trailing "/" starts.
std::size_t lastComponentStart(std::u16string_view path) {
    if (path == u"/") return 0;
    std::size_t slash = path.rfind(u'/');
    return slash == std::u16string_view::npos ? 0 : slash + 1;
}

// The index of the extension's "." in a path without trailing "/"; npos when the last component has none.
std::size_t extensionDot(std::u16string_view path) {
    std::size_t dot = path.rfind(u'.');
    if (dot == std::u16string_view::npos || dot < lastComponentStart(path)) return std::u16string_view::npos;
    return dot;
}

}  // namespace

PathJoiner& PathJoiner::append(std::u16string_view component) {
    if (path_.empty()) {
        path_.assign(component);
        condensed_ = false;
        return *this;
    }
    if (!condensed_) {
        std::u16string condensed;
        condensed.reserve(path_.size() + component.size() + 1);
        appendCondensed(condensed, path_);
        path_ = std::move(condensed);
        condensed_ = true;
    }
    appendCondensed(path_, u"/");
    appendCondensed(path_, component);
    dropTrailingSlashes(path_);
    return *this;
}

Text appendingPathComponent(const Text& path, const Text& component) {
    return Text(PathJoiner(path.view()).append(component.view()).take());
}

Text lastPathComponent(const Text& path) {
    std::u16string_view trimmed = withoutTrailingSlashes(path.view());
    return Text(trimmed.substr(lastComponentStart(trimmed)));
}

Text pathExtension(const Text& path) {
    std::u16string_view trimmed = withoutTrailingSlashes(path.view());
    std::size_t dot = extensionDot(trimmed);
    return dot == std::u16string_view::npos ? Text() : Text(trimmed.substr(dot + 1));
}

Text deletingPathExtension(const Text& path) {
    std::u16string_view trimmed = withoutTrailingSlashes(path.view());
    return Text(trimmed.substr(0, extensionDot(trimmed)));
}

Text deletingLastPathComponent(const Text& path) {
    std::u16string_view trimmed = withoutTrailingSlashes(path.view());
    if (trimmed == u"/") return Text(u"/");
    std::size_t slash = trimmed.rfind(u'/');
    if (slash == std::u16string_view::npos) return Text();
    if (slash == 0) return Text(u"/");
    std::u16string folder(trimmed.substr(0, slash));
    dropTrailingSlashes(folder);
    return Text(std::move(folder));
}

}  // namespace bv::PathRules
