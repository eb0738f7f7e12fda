// bv::Error: the error object that operations fill through an optional out-parameter.
#pragma once

#include <cstdint>
#include <string>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

struct Error {
    std::string domain;         // "NSCocoaErrorDomain", "NSPOSIXErrorDomain", "BVXMLErrorDomain", ...
    std::int64_t code = 0;      // the domain's code (an errno value in the POSIX domain)
    Text localizedDescription;  // one sentence for a person
    Text failureReason;         // what exactly went wrong (for a parse: where), may be empty

    // Fills *out when the caller asked for the error; answers false so callers can `return report(...)`.
    static bool report(Error* out, Error error) {
        if (out != nullptr) *out = std::move(error);
        return false;
    }
};

}  // namespace bv
