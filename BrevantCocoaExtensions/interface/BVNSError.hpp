// BVNSError: errors built from a formatted message ("%@"-style, see platform/Format.hpp).
#pragma once

#include <cstdint>
#include <string>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Format.hpp"

namespace bv::BVNSError {

// An error with that domain and code, whose localized description is the formatted message; returned,
// never thrown.
template <class... Args>
[[nodiscard]] Error errorWithDomainCodeFormat(const std::string& domain, std::int64_t code,
                                              const Text& format, const Args&... arguments) {
    return Error{domain, code, stringWithFormat(format, arguments...), {}};
}

}  // namespace bv::BVNSError
