// RFC3339DateTime: a calendar date, optionally a time of day, and what is known of its time zone, read
// from and written as RFC 3339 date-time text ("2008-01-02T10:11:12-05:00"), or split from an instant.
//
// The value keeps calendar components, not an instant, so that a date alone ("2008-01-02") and a time with
// an unknown offset ("-00:00") survive a round trip. Pitfalls callers rely on:
//   - Reading never fails: it stops at the first token it cannot read and keeps what it read. A text with no
//     zone designator, a date alone and even an unreadable text are universal time with offset 0.
//   - Year, month, day, hour and minute read from text land in the low 32 bits of their 64-bit components,
//     whose upper half keeps the undefined marker's 0x7FFFFFFF: a year of 2008 read from text is held, and
//     written back, as 9223372032559810520. Instants (date) read only the low 32 bits and are right. A -1
//     so read is the undefined marker itself: "T-1:11:12" has no hour, hence no time.
//   - Fractions of a second are read and dropped; "T" and "t" separate date and time, but a space does not
//     (white space is skipped before each token, and a separator needs at least one character after it).
//   - Copies share one components record: setHasTime changes it in place for every copy.
//   - isEqual compares zones by identity; the zone factories hand out one object per name and per offset.
// A value with no components record (plain construction) reads every component as 0.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/dates/Calendar.hpp"
#include "BrevantCocoaExtensions/dates/DateComponents.hpp"
#include "BrevantCocoaExtensions/dates/TimeZone.hpp"
#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class RFC3339DateTime {
  public:
    // Plain initialisation: no components record, offset 0, not universal, no zone.
    RFC3339DateTime() = default;
    // A copy follows copyWithZone: it shares the components record and makes a derived zone explicit.
    RFC3339DateTime(const RFC3339DateTime& other);
    RFC3339DateTime& operator=(const RFC3339DateTime& other);
    RFC3339DateTime(RFC3339DateTime&&) noexcept = default;
    RFC3339DateTime& operator=(RFC3339DateTime&&) noexcept = default;
    ~RFC3339DateTime() = default;

    // A new value read from RFC 3339 text (see setFromRFC3339String).
    [[nodiscard]] static RFC3339DateTime dateTimeWithRFC3339String(const Text& text);
    // A new value split from an instant in a zone (see setFromDateTimeZone).
    [[nodiscard]] static RFC3339DateTime dateTimeWithDateTimeZone(Date date, std::shared_ptr<TimeZone> zone);
    [[nodiscard]] static RFC3339DateTime initWithRFC3339String(const Text& text);
    [[nodiscard]] static RFC3339DateTime initWithDateTimeZone(Date date, std::shared_ptr<TimeZone> zone);

    // Reads the text token by token: year "-" month "-" day, "T"/"t", hour ":" minute ":" seconds (a
    // number, fraction dropped), then a designator ("Z", "+" or "-") and hh ":" mm. Stops at the first token
    // that does not read, keeping what it read; "-00:00" is an unknown offset, anything but "+hh:mm" or
    // "-hh:mm" (a missing designator included) is universal time with offset 0. Clears the explicit zone.
    void setFromRFC3339String(const Text& text);
    // Year to second of the instant in the zone (the default zone for nullptr); the offset is the zone's at
    // that instant (unknown without a zone); universal only for the zone equal to "Universal" at offset 0.
    void setFromDateTimeZone(Date date, std::shared_ptr<TimeZone> zone);

    // "YYYY-MM-DD" for a value without time; else "YYYY-MM-DDThh:mm:ss" and "Z", "+hh:mm" (also for 0),
    // "-hh:mm" or, for an unknown offset, "-00:00". Hours of the offset are taken mod 24; components are
    // written as the 64-bit numbers they hold; no fraction is ever written.
    [[nodiscard]] Text RFC3339String() const;
    // The same as RFC3339String.
    [[nodiscard]] Text stringValue() const { return RFC3339String(); }
    // The instant of the components in `calendar()`; a value without time stands for noon UTC of its day.
    // nullopt when there is no components record or the calendar cannot compute the instant.
    [[nodiscard]] std::optional<Date> date() const;
    // A new Gregorian calendar in timeZone() (the default zone when that is nullptr).
    [[nodiscard]] Calendar calendar() const;

    // The explicit zone; else "Universal" for universal time; else the shared zone of the known offset
    // (nullptr beyond 18 hours); else nullptr. Derived anew on every call, never stored.
    [[nodiscard]] std::shared_ptr<TimeZone> timeZone() const;
    // Keeps the zone; the offset becomes the zone's at this value's instant (unknown for nullptr). Leaves the
    // universal flag alone.
    void setTimeZone(std::shared_ptr<TimeZone> zone);
    // Stores both as given, nothing recomputed.
    void setTimeZoneWithOffsetSeconds(std::shared_ptr<TimeZone> zone, std::int64_t offsetSeconds);

    // True when hour and minute are both defined (second may not be).
    [[nodiscard]] bool hasTime() const;
    // On: hour, minute, second 0 in the shared record, offset unknown, not universal. Off: hour, minute,
    // second undefined, offset unknown, not universal, no zone. Nothing when the state is already held.
    void setHasTime(bool hasTime);

    [[nodiscard]] std::int64_t offsetSeconds() const noexcept { return offsetSeconds_; }
    void setOffsetSeconds(std::int64_t seconds) noexcept { offsetSeconds_ = seconds; }
    [[nodiscard]] bool isUniversalTime() const noexcept { return isUniversalTime_; }
    void setIsUniversalTime(bool universal) noexcept { isUniversalTime_ = universal; }
    [[nodiscard]] const std::shared_ptr<DateComponents>& dateComponents() const noexcept {
        return dateComponents_;
    }
    // Keeps the record given (shared, not copied) and lets go of the previous one.
    void setDateComponents(std::shared_ptr<DateComponents> components) noexcept {
        dateComponents_ = std::move(components);
    }

    // True when era, year, month, day, hour, minute, second, week, weekday and weekday ordinal are equal
    // as raw integers (two undefined markers are equal); a missing record reads as all zeros.
    [[nodiscard]] bool doesDateComponentsEqualDateComponents(
        const std::shared_ptr<DateComponents>& first, const std::shared_ptr<DateComponents>& second) const;
    // True for the same object; else equal offsets, universal flags, components and the identical zone
    // object from timeZone() (or both nullptr).
    [[nodiscard]] bool isEqual(const RFC3339DateTime& other) const;
    // A new value sharing this one's components record, with timeZone() made explicit.
    [[nodiscard]] RFC3339DateTime copyWithZone() const { return RFC3339DateTime(*this); }
    // "RFC3339DateTime 0x...: {text}": the class, the object's address and RFC3339String.
    [[nodiscard]] Text description() const;

  private:
    [[nodiscard]] const DateComponents& components() const noexcept;

    std::shared_ptr<DateComponents> dateComponents_;
    std::int64_t offsetSeconds_ = 0;
    bool isUniversalTime_ = false;
    std::shared_ptr<TimeZone> timeZone_;
};

}  // namespace bv
