// bv::Date: an absolute instant with sub-second precision, as seconds since 1970-01-01 00:00:00 UTC.
#pragma once

#include <compare>

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
    // The current instant.
    [[nodiscard]] static Date now();

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
