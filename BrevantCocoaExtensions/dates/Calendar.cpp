// Gregorian calendars on ICU.
#include "BrevantCocoaExtensions/dates/Calendar.hpp"

#include <unicode/gregocal.h>
#include <unicode/simpletz.h>
#include <unicode/timezone.h>

#include <utility>

namespace bv {

struct Calendar::Impl {
    std::unique_ptr<icu::GregorianCalendar> calendar;
};

namespace {

// An ICU zone with the same name and rules as the library's zone.
icu::TimeZone* newIcuZone(const TimeZone& zone) {
    const icu::UnicodeString name(zone.name().units().data(),
                                  static_cast<std::int32_t>(zone.name().length()));
    if (auto offset = zone.fixedSecondsFromGMT())
        return new icu::SimpleTimeZone(static_cast<std::int32_t>(*offset * 1000), name);
    return icu::TimeZone::createTimeZone(name);
}

UCalendarDateFields fieldOf(CalendarUnit unit) {
    switch (unit) {
        case CalendarUnit::Era:
            return UCAL_ERA;
        case CalendarUnit::Year:
            return UCAL_YEAR;
        case CalendarUnit::Month:
            return UCAL_MONTH;
        case CalendarUnit::Day:
            return UCAL_DATE;
        case CalendarUnit::Hour:
            return UCAL_HOUR_OF_DAY;
        case CalendarUnit::Minute:
            return UCAL_MINUTE;
        case CalendarUnit::Second:
            return UCAL_SECOND;
    }
    return UCAL_ERA;
}

// A component as ICU's 32-bit field holds it (its low 32 bits), moved by `shift` (months count from 0).
std::int32_t fieldValue(std::int64_t component, std::int64_t fallback, std::int32_t shift = 0) {
    const std::int64_t value = component == UndefinedDateComponent ? fallback : component;
    return static_cast<std::int32_t>(static_cast<std::int64_t>(static_cast<std::int32_t>(value)) + shift);
}

}  // namespace

Calendar::Calendar() : impl_(std::make_unique<Impl>()) {
    UErrorCode status = U_ZERO_ERROR;
    impl_->calendar = std::make_unique<icu::GregorianCalendar>(status);
}

Calendar::~Calendar() = default;
Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;

void Calendar::setTimeZone(std::shared_ptr<TimeZone> zone) {
    if (zone) {
        impl_->calendar->adoptTimeZone(newIcuZone(*zone));
    } else {
        impl_->calendar->adoptTimeZone(icu::TimeZone::createDefault());
    }
    zone_ = std::move(zone);
}

std::int64_t Calendar::component(CalendarUnit unit, Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    impl_->calendar->setTime(date.timeIntervalSince1970() * 1000.0, status);
    const std::int32_t value = impl_->calendar->get(fieldOf(unit), status);
    if (U_FAILURE(status)) return UndefinedDateComponent;
    return unit == CalendarUnit::Month ? value + 1 : value;
}

DateComponents Calendar::componentsFromDate(Date date) const {
    DateComponents components;
    const std::int64_t year = component(CalendarUnit::Year, date);
    if (year == UndefinedDateComponent) return components;
    components.year = year;
    components.month = component(CalendarUnit::Month, date);
    components.day = component(CalendarUnit::Day, date);
    components.hour = component(CalendarUnit::Hour, date);
    components.minute = component(CalendarUnit::Minute, date);
    components.second = component(CalendarUnit::Second, date);
    return components;
}

std::optional<Date> Calendar::dateFromComponents(const DateComponents& components) const {
    icu::GregorianCalendar& calendar = *impl_->calendar;
    calendar.clear();
    calendar.set(UCAL_ERA, fieldValue(components.era, 1));
    calendar.set(UCAL_YEAR, fieldValue(components.year, 1));
    calendar.set(UCAL_MONTH, fieldValue(components.month, 1, -1));
    calendar.set(UCAL_DATE, fieldValue(components.day, 1));
    calendar.set(UCAL_HOUR_OF_DAY, fieldValue(components.hour, 0));
    calendar.set(UCAL_MINUTE, fieldValue(components.minute, 0));
    calendar.set(UCAL_SECOND, fieldValue(components.second, 0));
    calendar.set(UCAL_MILLISECOND, 0);
    UErrorCode status = U_ZERO_ERROR;
    const UDate milliseconds = calendar.getTime(status);
    if (U_FAILURE(status)) return std::nullopt;
    return Date::fromTimeIntervalSince1970(milliseconds / 1000.0);
}

std::int64_t Calendar::ordinalityOfUnitInUnitForDate(CalendarUnit smaller, CalendarUnit larger,
                                                     Date date) const {
    const bool dayInMonth = smaller == CalendarUnit::Day && larger == CalendarUnit::Month;
    const bool monthInYear = smaller == CalendarUnit::Month && larger == CalendarUnit::Year;
    if (!dayInMonth && !monthInYear) return UndefinedDateComponent;
    return component(smaller, date);
}

}  // namespace bv
