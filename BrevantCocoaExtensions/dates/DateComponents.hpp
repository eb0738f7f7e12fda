// bv::DateComponents: a calendar-components record (era, year, month, day, hour, minute, second, week,
// weekday, weekday ordinal), each a signed 64-bit integer or the undefined marker when absent.
//
// A new record has every component undefined. The record is a plain value; the classes that share one
// between several owners (RFC3339DateTime and its copies) hold it through a std::shared_ptr.
#pragma once

#include <cstdint>

namespace bv {

// The marker of an absent component (and of an unknown time-zone offset): the largest signed 64-bit value.
inline constexpr std::int64_t UndefinedDateComponent = 0x7FFFFFFFFFFFFFFF;

struct DateComponents {
    std::int64_t era = UndefinedDateComponent;
    std::int64_t year = UndefinedDateComponent;
    std::int64_t month = UndefinedDateComponent;  // 1 to 12
    std::int64_t day = UndefinedDateComponent;    // 1 to 31
    std::int64_t hour = UndefinedDateComponent;
    std::int64_t minute = UndefinedDateComponent;
    std::int64_t second = UndefinedDateComponent;
    std::int64_t week = UndefinedDateComponent;
    std::int64_t weekday = UndefinedDateComponent;
    std::int64_t weekdayOrdinal = UndefinedDateComponent;
};

}  // namespace bv
