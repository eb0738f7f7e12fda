// bv::Calendar: a Gregorian calendar (ICU's, with its 1582 switch from the Julian calendar) in a time
// zone, turning instants into calendar components and back.
//
// Turning components into an instant is lenient (month 13 is January of the next year, second 60 the
// next minute) and reads each defined component as a 32-bit integer (its low 32 bits), as ICU's fields
// are; undefined components take the values of 1 January of year 1 AD, 00:00:00.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/dates/DateComponents.hpp"
#include "BrevantCocoaExtensions/dates/TimeZone.hpp"
#include "BrevantCocoaExtensions/platform/Date.hpp"

namespace bv {

enum class CalendarUnit { Era, Year, Month, Day, Hour, Minute, Second };

class Calendar {
  public:
    // A Gregorian calendar in the process's default zone.
    Calendar();
    ~Calendar();
    Calendar(Calendar&&) noexcept;
    Calendar& operator=(Calendar&&) noexcept;

    // The zone the calendar works in; nullptr (the default zone) until one is set.
    [[nodiscard]] const std::shared_ptr<TimeZone>& timeZone() const noexcept { return zone_; }
    // Sets the zone; nullptr goes back to the process's default zone.
    void setTimeZone(std::shared_ptr<TimeZone> zone);

    // Year, month, day, hour, minute and second of the instant (era and the week fields stay undefined);
    // every component undefined for an instant the calendar cannot represent.
    [[nodiscard]] DateComponents componentsFromDate(Date date) const;
    // One component of the instant; UndefinedDateComponent when the instant cannot be represented.
    [[nodiscard]] std::int64_t component(CalendarUnit unit, Date date) const;
    // The instant of the components (see the file comment); nullopt when the calendar cannot compute it.
    [[nodiscard]] std::optional<Date> dateFromComponents(const DateComponents& components) const;
    // The ordinal of a smaller unit within a larger one: day in month (1-31) and month in year (1-12);
    // UndefinedDateComponent for any other pair.
    [[nodiscard]] std::int64_t ordinalityOfUnitInUnitForDate(CalendarUnit smaller, CalendarUnit larger,
                                                             Date date) const;

  private:
    struct Impl;
    std::shared_ptr<TimeZone> zone_;
    std::unique_ptr<Impl> impl_;
};

}  // namespace bv
