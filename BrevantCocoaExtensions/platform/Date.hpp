// bv::Date: an absolute instant with sub-second precision, as seconds since 1970-01-01 00:00:00 UTC.
#pragma once

#include <compare>
#include <functional>

namespace bv {

class Date {
  public:
    // Seconds between 1970-01-01 and the platform's reference date 2001-01-01 (both UTC).
    static constexpr double kReferenceDateOffset = 978307200.0;

    constexpr Date() = default;
    [[nodiscard]] static constexpr Date fromTimeIntervalSince1970(double seconds) { return Date(seconds); }
    [[nodiscard]] static constexpr Date fromTimeIntervalSinceReferenceDate(double seconds) {
        return Date(seconds + kReferenceDateOffset);
    }
    // The current instant, from the clock installed by setClock (the system clock by default). Everything in
    // the library that depends on "now" reads it here, so a test can make it exact.
    [[nodiscard]] static Date now();
    // Installs the clock that now() reads and answers the previous one; an empty function restores the system
    // clock. Not thread-safe: install it before the calls that read it.
    static std::function<Date()> setClock(std::function<Date()> clock);

    [[nodiscard]] constexpr double timeIntervalSince1970() const noexcept { return seconds_; }
    [[nodiscard]] constexpr double timeIntervalSinceReferenceDate() const noexcept {
        return seconds_ - kReferenceDateOffset;
    }
    [[nodiscard]] constexpr Date addingTimeInterval(double seconds) const { return Date(seconds_ + seconds); }

    friend constexpr bool operator==(const Date&, const Date&) = default;
    friend constexpr auto operator<=>(const Date&, const Date&) = default;

  private:
    constexpr explicit Date(double seconds) : seconds_(seconds) {}
    double seconds_ = 0.0;
};

}  // namespace bv
