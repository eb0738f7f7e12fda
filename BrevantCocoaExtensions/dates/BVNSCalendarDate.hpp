// BVNSCalendarDate: the suite's two timestamp texts of the current moment (bv::Date::now()), in the
// process's default zone and locale.
#pragma once

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSCalendarDate {

// "%m/%d/%y %H:%M:%S.%F": "11/16/26 05:15:30.250" (two-digit year, 24-hour time, milliseconds).
[[nodiscard]] Text timestamp();
// "%d%b%Y_%H%M%S": "16Nov2026_051530" (the month name is the locale's abbreviation).
[[nodiscard]] Text timestampWithoutSpace();

}  // namespace bv::BVNSCalendarDate
