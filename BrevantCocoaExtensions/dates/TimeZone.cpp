// Time zones on ICU, handed out once per name and once per offset.
#include "BrevantCocoaExtensions/dates/TimeZone.hpp"

#include <unicode/simpletz.h>
#include <unicode/timezone.h>

#include <cstdio>
#include <map>
#include <mutex>
#include <utility>

namespace bv {

struct TimeZone::Impl {
    std::unique_ptr<icu::TimeZone> zone;
};

namespace {

constexpr std::int64_t kLargestOffset = 18 * 3600;

icu::UnicodeString toIcu(const Text& text) {
    return icu::UnicodeString(text.units().data(), static_cast<std::int32_t>(text.length()));
}

Text fromIcu(const icu::UnicodeString& text) {
    return Text(std::u16string_view(text.getBuffer(), static_cast<std::size_t>(text.length())));
}

// "GMT", "GMT+0530", "GMT-0500"; seconds are appended only when the offset has some ("GMT+053007").
Text offsetZoneName(std::int64_t seconds) {
    if (seconds == 0) return Text("GMT");
    const std::int64_t magnitude = seconds < 0 ? -seconds : seconds;
    char name[24];
    const int hours = static_cast<int>(magnitude / 3600);
    const int minutes = static_cast<int>(magnitude / 60 % 60);
    const int rest = static_cast<int>(magnitude % 60);
    if (rest == 0) {
        std::snprintf(name, sizeof name, "GMT%c%02d%02d", seconds < 0 ? '-' : '+', hours, minutes);
    } else {
        std::snprintf(name, sizeof name, "GMT%c%02d%02d%02d", seconds < 0 ? '-' : '+', hours, minutes, rest);
    }
    return Text(name);
}

// The factories' tables. The mutex only keeps concurrent first requests from corrupting a table.
std::mutex& tableLock() {
    static std::mutex lock;
    return lock;
}

}  // namespace

TimeZone::TimeZone(Text name, std::optional<std::int64_t> fixedOffset, std::unique_ptr<Impl> impl)
    : name_(std::move(name)), fixedOffset_(fixedOffset), impl_(std::move(impl)) {}

TimeZone::~TimeZone() = default;

std::shared_ptr<TimeZone> TimeZone::timeZoneWithName(const Text& name) {
    static std::map<Text, std::shared_ptr<TimeZone>> byName;
    std::lock_guard<std::mutex> guard(tableLock());
    if (auto found = byName.find(name); found != byName.end()) return found->second;
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(toIcu(name)));
    icu::UnicodeString id;
    if (!zone || (zone->getID(id) == UNICODE_STRING_SIMPLE("Etc/Unknown") && name != Text("Etc/Unknown")))
        return nullptr;
    auto impl = std::make_unique<Impl>(Impl{std::move(zone)});
    std::shared_ptr<TimeZone> made(new TimeZone(name, std::nullopt, std::move(impl)));
    byName.emplace(name, made);
    return made;
}

std::shared_ptr<TimeZone> TimeZone::timeZoneForSecondsFromGMT(std::int64_t seconds) {
    if (seconds > kLargestOffset || seconds < -kLargestOffset) return nullptr;
    static std::map<std::int64_t, std::shared_ptr<TimeZone>> byOffset;
    std::lock_guard<std::mutex> guard(tableLock());
    if (auto found = byOffset.find(seconds); found != byOffset.end()) return found->second;
    Text name = offsetZoneName(seconds);
    auto impl = std::make_unique<Impl>(
        Impl{std::make_unique<icu::SimpleTimeZone>(static_cast<std::int32_t>(seconds * 1000), toIcu(name))});
    std::shared_ptr<TimeZone> made(new TimeZone(std::move(name), seconds, std::move(impl)));
    byOffset.emplace(seconds, made);
    return made;
}

std::shared_ptr<TimeZone> TimeZone::defaultTimeZone() {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    icu::UnicodeString id;
    zone->getID(id);
    auto impl = std::make_unique<Impl>(Impl{std::move(zone)});
    return std::shared_ptr<TimeZone>(new TimeZone(fromIcu(id), std::nullopt, std::move(impl)));
}

std::int64_t TimeZone::secondsFromGMTForDate(Date date) const {
    std::int32_t raw = 0;
    std::int32_t daylight = 0;
    UErrorCode status = U_ZERO_ERROR;
    impl_->zone->getOffset(date.timeIntervalSince1970() * 1000.0, false, raw, daylight, status);
    if (U_FAILURE(status)) return 0;
    return (static_cast<std::int64_t>(raw) + daylight) / 1000;
}

bool TimeZone::isEqualToTimeZone(const TimeZone& other) const {
    return name_ == other.name_ && *impl_->zone == *other.impl_->zone;
}

}  // namespace bv
