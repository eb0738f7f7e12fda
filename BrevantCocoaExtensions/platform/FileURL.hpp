// Local paths of "file:" URLs, for operations that take a document address.
#pragma once

#include <optional>
#include <string>

namespace bv {

// The local path of a "file:" URL ("file:///tmp/a%20b.txt", "file://localhost/tmp/x"), percent-decoded;
// nullopt for any other scheme, another host, a relative path or a broken escape.
[[nodiscard]] std::optional<std::string> pathOfFileURL(const std::string& url);

}  // namespace bv
