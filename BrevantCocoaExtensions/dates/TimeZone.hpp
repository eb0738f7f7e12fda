// bv::TimeZone: a time zone, by name (ICU's zone data) or as a fixed offset from GMT.
//
// Zones are shared objects handed out by two factories that keep one object per name and one per offset
// for the life of the process, so two requests for the same zone answer the very same object and code
// that compares zones by identity sees them as one. Zone equality (isEqualToTimeZone) is a different,
// weaker question: same name and same rules.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class TimeZone {
  public:
    // The zone of that name ("Universal", "America/New_York", "GMT+05:30", ...): the same object on every
    // call with the same name; nullptr when ICU knows no zone of that name.
    [[nodiscard]] static std::shared_ptr<TimeZone> timeZoneWithName(const Text& name);
    // The fixed zone that many seconds east of GMT, named "GMT" (0) or "GMT+0530"-style: the same object on
    // every call with the same offset; nullptr beyond 18 hours either way.
    [[nodiscard]] static std::shared_ptr<TimeZone> timeZoneForSecondsFromGMT(std::int64_t seconds);
    // The process's default zone (ICU's default, from TZ unless a program set another): a new object.
    [[nodiscard]] static std::shared_ptr<TimeZone> defaultTimeZone();

    ~TimeZone();
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

    [[nodiscard]] const Text& name() const noexcept { return name_; }
    // The offset for a fixed zone, nullopt for a zone with rules.
    [[nodiscard]] std::optional<std::int64_t> fixedSecondsFromGMT() const noexcept { return fixedOffset_; }
    // Seconds east of GMT at the instant (daylight saving included).
    [[nodiscard]] std::int64_t secondsFromGMTForDate(Date date) const;
    // True when both zones have the same name and the same rules (not identity).
    [[nodiscard]] bool isEqualToTimeZone(const TimeZone& other) const;

    struct Impl;  // the ICU zone, hidden from the library's users

  private:
    TimeZone(Text name, std::optional<std::int64_t> fixedOffset, std::unique_ptr<Impl> impl);

    Text name_;
    std::optional<std::int64_t> fixedOffset_;
    std::unique_ptr<Impl> impl_;
};

}  // namespace bv
