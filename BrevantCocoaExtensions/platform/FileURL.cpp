// Local paths of "file:" URLs.
#include "BrevantCocoaExtensions/platform/FileURL.hpp"

#include <strings.h>

#include <cctype>
#include <string>

namespace bv {

std::optional<std::string> pathOfFileURL(const std::string& url) {
    if (url.size() < 5 || strncasecmp(url.c_str(), "file:", 5) != 0) return std::nullopt;
    std::string rest = url.substr(5);
    if (rest.rfind("//", 0) == 0) {
        const std::size_t slash = rest.find('/', 2);
        const std::string host = rest.substr(2, slash == std::string::npos ? std::string::npos : slash - 2);
        if (!host.empty() && strcasecmp(host.c_str(), "localhost") != 0) return std::nullopt;
        rest = slash == std::string::npos ? std::string() : rest.substr(slash);
    }
    rest = rest.substr(0, rest.find_first_of("?#"));
    if (rest.empty() || rest.front() != '/') return std::nullopt;
    std::string path;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] != '%') {
            path += rest[i];
            continue;
        }
        if (i + 2 >= rest.size() || !std::isxdigit(static_cast<unsigned char>(rest[i + 1])) ||
            !std::isxdigit(static_cast<unsigned char>(rest[i + 2])))
            return std::nullopt;
        path += static_cast<char>(std::stoi(rest.substr(i + 1, 2), nullptr, 16));
        i += 2;
    }
    return path;
}

}  // namespace bv
