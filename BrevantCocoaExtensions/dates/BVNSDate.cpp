// Calendar fields in UTC, day distances and the fixed date formatters.
#include "BrevantCocoaExtensions/dates/BVNSDate.hpp"

#include <cstdlib>
#include <limits>

namespace bv::BVNSDate {

namespace {

// The shared UTC calendar's slot: empty until gmtGregorianCalendar fills it.
std::shared_ptr<Calendar>& sharedCalendar() {
    static std::shared_ptr<Calendar> calendar;
    return calendar;
}

// A float truncated to 32 bits the way the processor does it: out of range (or NaN) gives INT32_MIN.
std::int32_t truncatedTo32Bits(float value) {
    if (!(value >= -2147483648.0f && value < 2147483648.0f)) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

// A double rounded to float; past the float range it becomes an infinity.
float toFloat(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    if (value > largest) return std::numeric_limits<float>::infinity();
    if (value < -largest) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

DateFormatter usEnglishFormatter(std::int64_t behavior, const char* format) {
    DateFormatter formatter;
    if (behavior != DateFormatter::BehaviorDefault) formatter.setFormatterBehavior(behavior);
    formatter.setDateFormat(format);
    formatter.setLocale("us-EN");
    return formatter;
}

}  // namespace

std::shared_ptr<Calendar> gmtGregorianCalendar() {
    std::shared_ptr<Calendar>& calendar = sharedCalendar();
    if (!calendar) {
        calendar = std::make_shared<Calendar>();
        calendar->setTimeZone(TimeZone::timeZoneForSecondsFromGMT(0));
    }
    return calendar;
}

std::int32_t dayOfMonth(const Date& self) {
    return static_cast<std::int32_t>(
        gmtGregorianCalendar()->ordinalityOfUnitInUnitForDate(CalendarUnit::Day, CalendarUnit::Month, self));
}

std::int32_t monthOfYear(const Date& self) {
    return static_cast<std::int32_t>(
        gmtGregorianCalendar()->ordinalityOfUnitInUnitForDate(CalendarUnit::Month, CalendarUnit::Year, self));
}

std::int32_t yearOfCommonEra(const Date& self) {
    const std::shared_ptr<Calendar>& calendar = sharedCalendar();
    if (!calendar) return 0;
    return static_cast<std::int32_t>(calendar->component(CalendarUnit::Year, self));
}

std::int64_t daysSinceNow(const Date& self) {
    const double seconds = self.timeIntervalSince1970() - Date::now().timeIntervalSince1970();
    const float days = toFloat(seconds / 86400.0);
    const std::int32_t whole = truncatedTo32Bits(days);
    // The absolute value of INT32_MIN stays negative, so an overflowed day count answers 0.
    const std::int32_t magnitude =
        whole == std::numeric_limits<std::int32_t>::min() ? whole : std::abs(whole);
    if (static_cast<float>(magnitude) < 0.5f) return 0;
    return static_cast<std::int64_t>(days);
}

DateFormatter usEnglish100DateTimeFormatter() {
    return usEnglishFormatter(DateFormatter::Behavior10_0, "%m/%d/%Y %I:%M:%S %p");
}

DateFormatter usEnglishShortDateFormatter() {
    return usEnglishFormatter(DateFormatter::BehaviorDefault, "M/d/Y");
}

Text stringWithFormatterStyle(const Date& self, std::int64_t style) {
    DateFormatter formatter;
    formatter.setFormatterBehavior(DateFormatter::Behavior10_4);
    formatter.setDateStyle(style);
    formatter.setTimeStyle(DateFormatter::NoStyle);
    return formatter.stringFromDate(self);
}

Text shortDateString(const Date& self) {
    return stringWithFormatterStyle(self, DateFormatter::ShortStyle);
}
Text mediumDateString(const Date& self) {
    return stringWithFormatterStyle(self, DateFormatter::MediumStyle);
}
Text longDateString(const Date& self) {
    return stringWithFormatterStyle(self, DateFormatter::LongStyle);
}
Text fullDateString(const Date& self) {
    return stringWithFormatterStyle(self, DateFormatter::FullStyle);
}

}  // namespace bv::BVNSDate
