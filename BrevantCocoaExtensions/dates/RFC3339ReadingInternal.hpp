// The two readers behind RFC3339DateTime::setFromRFC3339String, apart so that tests can hold one against
// the other: the straight reader of the usual texts must give exactly what the token reader gives.
#pragma once

#include <cstdint>
#include <string_view>

#include "BrevantCocoaExtensions/dates/DateComponents.hpp"

namespace bv::RFC3339Reading {

// The token reader: white space skipped before each token, each separator a run of one or more of its
// characters; the first step that fails ends reading and what was read so far is kept.
void readTokens(std::u16string_view text, DateComponents& components, bool& universal, std::int64_t& offset);
// The usual texts ("2008-01-02T10:11:12Z", "2008-01-02T10:11:12.250+05:30") read in one straight pass; false,
// with nothing promised about the outputs, for any other text.
bool readCanonical(std::u16string_view text, DateComponents& components, bool& universal,
                   std::int64_t& offset);

}  // namespace bv::RFC3339Reading
