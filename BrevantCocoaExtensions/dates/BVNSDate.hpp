// BVNSDate: calendar fields of an instant read in UTC, whole days from now, the suite's two United States
// English formatters and the four locale date styles.
//
// Pitfalls kept on purpose, because the suite's files and reports depend on them:
//   - yearOfCommonEra reads the shared UTC calendar without creating it: before the first call of
//     gmtGregorianCalendar, dayOfMonth or monthOfYear in the process it answers 0.
//   - usEnglishShortDateFormatter's "M/d/Y" writes the week-numbering year: the last days of December can
//     carry the next year.
//   - Both formatters use the locale identifier "us-EN", written in that order.
//   - daysSinceNow goes through a 32-bit float: whole days toward zero, and 0 for dates so far away that
//     the day count overflows 32 bits.
#pragma once

#include <cstdint>
#include <memory>

#include "BrevantCocoaExtensions/dates/Calendar.hpp"
#include "BrevantCocoaExtensions/dates/DateFormatter.hpp"
#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSDate {

// The shared Gregorian calendar at 0 seconds from GMT, created on the first call and kept for the process.
[[nodiscard]] std::shared_ptr<Calendar> gmtGregorianCalendar();
// The day of the month (1-31) in UTC.
[[nodiscard]] std::int32_t dayOfMonth(const Date& self);
// The month of the year (1-12) in UTC.
[[nodiscard]] std::int32_t monthOfYear(const Date& self);
// The UTC year, or 0 when the shared calendar has not been created yet (see the file comment).
[[nodiscard]] std::int32_t yearOfCommonEra(const Date& self);
// Whole days from now (bv::Date::now()) to the date, toward zero: positive in the future, 23 hours ahead
// gives 0, 47 hours behind gives -1.
[[nodiscard]] std::int64_t daysSinceNow(const Date& self);

// A new legacy formatter: "%m/%d/%Y %I:%M:%S %p" (01/02/2008 03:04:05 PM), locale "us-EN".
[[nodiscard]] DateFormatter usEnglish100DateTimeFormatter();
// A new formatter with the pattern "M/d/Y" (week-numbering year), locale "us-EN".
[[nodiscard]] DateFormatter usEnglishShortDateFormatter();

// The date alone, in a locale date style (1 short, 2 medium, 3 long, 4 full; anything else writes nothing),
// in the process's default locale and zone.
[[nodiscard]] Text stringWithFormatterStyle(const Date& self, std::int64_t style);
[[nodiscard]] Text shortDateString(const Date& self);
[[nodiscard]] Text mediumDateString(const Date& self);
[[nodiscard]] Text longDateString(const Date& self);
[[nodiscard]] Text fullDateString(const Date& self);

}  // namespace bv::BVNSDate
