// RFC3339DateTime: the vectors from Python's datetime and RFC 3339's own examples, the reader's rules, the
// writer, instants in zones, and the shared components record and zones behind copies and equality.
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/dates/RFC3339DateTime.hpp"

namespace {

using bv::Date;
using bv::RFC3339DateTime;
using bv::TimeZone;
constexpr std::int64_t U = bv::UndefinedDateComponent;

// Every test runs with the default zone at +05:30, so an instant read "in the local zone" is visible.
class LocalZone : public ::testing::Environment {
    void SetUp() override { icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone("Asia/Kolkata")); }
};
const auto* const kLocalZone = ::testing::AddGlobalTestEnvironment(new LocalZone);

// A component as the reader stores a 32-bit value: in the low half, the marker's 0x7FFFFFFF above it.
std::int64_t asRead(std::int64_t value) {
    if (value == U) return U;
    return static_cast<std::int64_t>(0x7FFFFFFF00000000ULL | static_cast<std::uint32_t>(value));
}

Date at(double secondsSince1970) {
    return Date::fromTimeIntervalSince1970(secondsSince1970);
}

struct Vector {
    std::string text;
    double instant = 0;
    std::string offset;  // seconds, or "Z"
    std::string written;
};

std::vector<Vector> vectorsIn(const std::string& name) {
    std::ifstream in(std::string(BV_TEST_DATA_DIR) + "/dates/" + name);
    std::vector<Vector> vectors;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        Vector vector;
        fields >> vector.text >> vector.instant >> vector.offset >> vector.written;
        vectors.push_back(vector);
    }
    return vectors;
}

TEST(RFC3339DateTime, VectorsReadToTheirInstantsAndWriteBack) {
    for (const char* file : {"rfc3339_vectors.tsv", "rfc3339_examples.tsv"}) {
        const std::vector<Vector> vectors = vectorsIn(file);
        ASSERT_GE(vectors.size(), std::string(file) == "rfc3339_vectors.tsv" ? 2000u : 5u) << file;
        for (const Vector& vector : vectors) {
            SCOPED_TRACE(vector.text);
            const RFC3339DateTime read = RFC3339DateTime::dateTimeWithRFC3339String(vector.text);
            const bool universal = vector.offset == "Z";
            EXPECT_EQ(read.isUniversalTime(), universal);
            EXPECT_EQ(read.offsetSeconds(), universal ? 0 : std::stoll(vector.offset));
            ASSERT_EQ(read.date(), at(vector.instant));

            const auto zone = universal ? TimeZone::timeZoneWithName("Universal")
                                        : TimeZone::timeZoneForSecondsFromGMT(std::stoll(vector.offset));
            const RFC3339DateTime split = RFC3339DateTime::dateTimeWithDateTimeZone(at(vector.instant), zone);
            ASSERT_EQ(split.RFC3339String().toUtf8(), vector.written);
            EXPECT_EQ(RFC3339DateTime::dateTimeWithRFC3339String(split.RFC3339String()).date(),
                      at(vector.instant));
        }
    }
}

TEST(RFC3339DateTime, ReadingFollowsTheScannerRules) {
    struct Case {
        const char* text;
        std::int64_t year, month, day, hour, minute, second;  // as read (before the upper half is added)
        bool universal;
        std::int64_t offset;
    };
    const Case cases[] = {
        {"2008-01-02", 2008, 1, 2, U, U, U, true, 0},
        {"2008-01-02T10:11:12.75Z", 2008, 1, 2, 10, 11, 12, true, 0},
        {"2008-01-02t10:11:12z", 2008, 1, 2, 10, 11, 12, true, 0},
        {"2008-01-02T10:11:12-00:00", 2008, 1, 2, 10, 11, 12, false, U},
        {"2008-01-02T10:11:12+00:00", 2008, 1, 2, 10, 11, 12, false, 0},
        {"2008-01-02T10:11:12-05:30", 2008, 1, 2, 10, 11, 12, false, -19800},
        {"2008-01-02T10:11:12+14:00", 2008, 1, 2, 10, 11, 12, false, 50400},
        {"2008-01-02T10:11:12-12:00", 2008, 1, 2, 10, 11, 12, false, -43200},
        // No second separator: reading stops before the designator.
        {"2008-01-02T10:11Z", 2008, 1, 2, 10, 11, U, true, 0},
        {"", U, U, U, U, U, U, true, 0},
        {"not a date", U, U, U, U, U, U, true, 0},
        // White space is skipped first, so a lone space cannot separate date and time; " T" can.
        {"2008-01-02 10:11:12+01:00", 2008, 1, 2, U, U, U, true, 0},
        {"2008-01-02 T10:11:12+01:00", 2008, 1, 2, 10, 11, 12, false, 3600},
        {" 2008 -\n01 - 02 t 10 : 11 : 12 + 01 : 00", 2008, 1, 2, 10, 11, 12, false, 3600},
        {"2008--01---02TT10::11::12++01::00", 2008, 1, 2, 10, 11, 12, false, 3600},
        // A missing designator is universal time; a run of several designators keeps the offset positive.
        {"2008-01-02T10:11:12", 2008, 1, 2, 10, 11, 12, true, 0},
        {"2008-01-02T10:11:12+-05:00", 2008, 1, 2, 10, 11, 12, false, 18000},
        {"2008-01-02T10:11:12Zz-05:00", 2008, 1, 2, 10, 11, 12, false, 18000},
        // A signed offset hour is a 32-bit value in the low half of a zeroed 64-bit slot.
        {"2008-01-02T10:11:12+ -5:00", 2008, 1, 2, 10, 11, 12, false, 4294967291LL * 3600},
        // Seconds are a 32-bit float: -1 means "none", 59.9999999 rounds to 60, exponents are read.
        {"2008-01-02T10:11:-1Z", 2008, 1, 2, 10, 11, U, true, 0},
        {"2008-01-02T10:11:-0.5Z", 2008, 1, 2, 10, 11, 0, true, 0},
        {"2008-01-02T10:11:59.9999999Z", 2008, 1, 2, 10, 11, 60, true, 0},
        {"2008-01-02T10:11:1.5e1Z", 2008, 1, 2, 10, 11, 15, true, 0},
        {"2008-01-02T10:11:1e99Z", 2008, 1, 2, 10, 11, INT64_MAX, true, 0},
        // Integers saturate at 32 bits; signs are read.
        {"99999999999-01-02", INT32_MAX, 1, 2, U, U, U, true, 0},
        {"-5-01-02", -5, 1, 2, U, U, U, true, 0},
        // -1 in the low half of the marker is the marker: the hour is absent, yet the zone was read.
        {"2008-01-02T-1:11:12+01:00", 2008, 1, 2, U, 11, 12, false, 3600},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const RFC3339DateTime value = RFC3339DateTime::dateTimeWithRFC3339String(c.text);
        const bv::DateComponents& parts = *value.dateComponents();
        EXPECT_EQ(parts.year, asRead(c.year));
        EXPECT_EQ(parts.month, asRead(c.month));
        EXPECT_EQ(parts.day, asRead(c.day));
        EXPECT_EQ(parts.hour, asRead(c.hour));
        EXPECT_EQ(parts.minute, asRead(c.minute));
        EXPECT_EQ(parts.second, c.second);
        EXPECT_EQ(parts.era, U);
        EXPECT_EQ(value.isUniversalTime(), c.universal);
        EXPECT_EQ(value.offsetSeconds(), c.offset);
        EXPECT_EQ(value.hasTime(), c.hour != U && c.minute != U);
        const bool offsetHasZone = c.offset >= -18 * 3600 && c.offset <= 18 * 3600;
        EXPECT_EQ(value.timeZone() == nullptr, !c.universal && !offsetHasZone);
    }
}

TEST(RFC3339DateTime, WritingPrintsTheComponentsAsTheyAre) {
    auto withParts = [](std::int64_t year, std::int64_t hour, bool universal, std::int64_t offset) {
        RFC3339DateTime value;
        auto parts = std::make_shared<bv::DateComponents>();
        *parts = {U, year, 1, 2, hour, hour == U ? U : 4, hour == U ? U : 5, U, U, U};
        value.setDateComponents(parts);
        value.setIsUniversalTime(universal);
        value.setOffsetSeconds(offset);
        return value.RFC3339String().toUtf8();
    };
    EXPECT_EQ(withParts(2008, U, false, -19800), "2008-01-02");
    EXPECT_EQ(withParts(2008, 3, true, -19800), "2008-01-02T03:04:05Z");
    EXPECT_EQ(withParts(2008, 3, false, 0), "2008-01-02T03:04:05+00:00");
    EXPECT_EQ(withParts(2008, 3, false, U), "2008-01-02T03:04:05-00:00");
    EXPECT_EQ(withParts(2008, 3, false, -19800), "2008-01-02T03:04:05-05:30");
    EXPECT_EQ(withParts(2008, 3, false, 86400), "2008-01-02T03:04:05+00:00");
    EXPECT_EQ(withParts(2008, 3, false, -(50 * 3600 + 59)), "2008-01-02T03:04:05-02:00");
    EXPECT_EQ(withParts(-5, 3, false, 3600), "-005-01-02T03:04:05+01:00");
    EXPECT_EQ(withParts(12345, 3, true, 0), "12345-01-02T03:04:05Z");
    EXPECT_EQ(withParts(INT64_MIN, 3, true, 0), "-9223372036854775808-01-02T03:04:05Z");
    EXPECT_EQ(withParts(9223372032559808511, 3, true, 0), "9223372032559808511-01-02T03:04:05Z");
    EXPECT_EQ(withParts(1000000000000000, 3, true, 0), "1000000000000000-01-02T03:04:05Z");

    EXPECT_EQ(RFC3339DateTime::dateTimeWithRFC3339String("").RFC3339String().toUtf8(),
              "9223372036854775807-9223372036854775807-9223372036854775807");
    EXPECT_EQ(RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02").stringValue().toUtf8(),
              "9223372032559810520-9223372032559808513-9223372032559808514");
    // No components record reads as zeros, which count as a time.
    EXPECT_EQ(RFC3339DateTime().RFC3339String().toUtf8(), "0000-00-00T00:00:00+00:00");
    EXPECT_FALSE(RFC3339DateTime().date().has_value());
}

TEST(RFC3339DateTime, InstantsOfReadValues) {
    struct Case {
        const char* text;
        double instant;
    };
    const Case cases[] = {
        {"2008-01-02", 1199275200},                 // a date alone is noon UTC
        {"2008-02-29T00:00:00Z", 1204243200},       // leap day
        {"2009-02-29T00:00:00Z", 1235865600},       // no leap day: 1 March
        {"2008-01-02T10:11:12-00:00", 1199248872},  // unknown offset: the local zone, +05:30
        {"2008-01-02T10:11:12+19:00", 1199248872},  // past 18 hours: no zone, the local zone
        {"2008-12-31T23:59:59-12:00", 1230811199},
        {"2009-01-01T11:59:59+14:00", 1230760799},
        {"2008-01-02T24:00:00Z", 1199318400},  // lenient: the next day
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RFC3339DateTime::dateTimeWithRFC3339String(c.text).date(), at(c.instant)) << c.text;
    }
}

TEST(RFC3339DateTime, SplittingAnInstantInAZone) {
    struct Case {
        const char* zone;  // nullptr: no zone
        double instant;
        const char* text;
        bool universal;
    };
    const double leapDayLate = 1204327800;  // 2008-02-29T23:30:00Z
    const Case cases[] = {
        {"Universal", leapDayLate, "2008-02-29T23:30:00Z", true},
        {"UTC", leapDayLate, "2008-02-29T23:30:00+00:00", false},  // equal offset, not the same zone
        {"GMT+14:00", leapDayLate, "2008-03-01T13:30:00+14:00", false},
        {"GMT-12:00", leapDayLate, "2008-02-29T11:30:00-12:00", false},
        {"America/New_York", 1215000000, "2008-07-02T08:00:00-04:00", false},  // summer time
        {"America/New_York", 1230811199, "2009-01-01T06:59:59-05:00", false},
        {nullptr, leapDayLate, "2008-03-01T05:00:00-00:00", false},  // local zone, offset unknown
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.zone ? c.zone : "no zone");
        const auto zone = c.zone ? TimeZone::timeZoneWithName(c.zone) : nullptr;
        if (c.zone) {
            ASSERT_NE(zone, nullptr);
        }
        const RFC3339DateTime value = RFC3339DateTime::dateTimeWithDateTimeZone(at(c.instant), zone);
        EXPECT_EQ(value.RFC3339String().toUtf8(), c.text);
        EXPECT_EQ(value.isUniversalTime(), c.universal);
        EXPECT_EQ(value.timeZone(), zone);
        EXPECT_EQ(value.date(), at(c.instant));
    }
    EXPECT_EQ(RFC3339DateTime::dateTimeWithDateTimeZone(at(0), TimeZone::timeZoneForSecondsFromGMT(0))
                  .RFC3339String()
                  .toUtf8(),
              "1970-01-01T00:00:00+00:00");
}

TEST(RFC3339DateTime, ZoneFactoriesHandOutOneObjectPerNameAndOffset) {
    EXPECT_EQ(TimeZone::timeZoneWithName("Europe/Paris"), TimeZone::timeZoneWithName("Europe/Paris"));
    EXPECT_EQ(TimeZone::timeZoneForSecondsFromGMT(19800), TimeZone::timeZoneForSecondsFromGMT(19800));
    EXPECT_EQ(TimeZone::timeZoneForSecondsFromGMT(19800)->name().toUtf8(), "GMT+0530");
    EXPECT_EQ(TimeZone::timeZoneForSecondsFromGMT(0)->name().toUtf8(), "GMT");
    EXPECT_EQ(TimeZone::timeZoneForSecondsFromGMT(18 * 3600 + 1), nullptr);
    EXPECT_EQ(TimeZone::timeZoneWithName("Nowhere/Atlantis"), nullptr);

    // Values read from equal texts derive the same zone object and are equal; a zone of the same offset
    // under another object is not the same zone.
    const auto paris = RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02T10:11:12+01:00");
    EXPECT_TRUE(paris.isEqual(RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02T10:11:12+01:00")));
    EXPECT_FALSE(paris.isEqual(RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02T10:11:12+02:00")));
    const Date instant = at(1199265072);
    const auto plusOne = TimeZone::timeZoneForSecondsFromGMT(3600);
    EXPECT_TRUE(RFC3339DateTime::dateTimeWithDateTimeZone(instant, plusOne)
                    .isEqual(RFC3339DateTime::dateTimeWithDateTimeZone(instant, plusOne)));
    EXPECT_FALSE(RFC3339DateTime::dateTimeWithDateTimeZone(instant, plusOne)
                     .isEqual(RFC3339DateTime::dateTimeWithDateTimeZone(
                         instant, TimeZone::timeZoneWithName("Etc/GMT-1"))));
}

TEST(RFC3339DateTime, CopiesShareTheRecordAndMakeTheZoneExplicit) {
    RFC3339DateTime original = RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02T10:11:12+01:00");
    RFC3339DateTime copy = original.copyWithZone();
    EXPECT_EQ(copy.dateComponents(), original.dateComponents());
    EXPECT_TRUE(copy.isEqual(original));
    EXPECT_TRUE(copy.isEqual(copy));

    // The copy holds the derived zone as its own: another offset no longer changes its zone.
    copy.setOffsetSeconds(0);
    original.setOffsetSeconds(0);
    EXPECT_EQ(copy.timeZone(), TimeZone::timeZoneForSecondsFromGMT(3600));
    EXPECT_EQ(original.timeZone(), TimeZone::timeZoneForSecondsFromGMT(0));

    // Switching the time off changes the shared record, seen by the original too.
    copy.setHasTime(false);
    EXPECT_FALSE(original.hasTime());
    EXPECT_EQ(original.dateComponents()->second, U);
    EXPECT_EQ(copy.timeZone(), nullptr);
    EXPECT_EQ(copy.offsetSeconds(), U);
    EXPECT_EQ(original.RFC3339String(), copy.RFC3339String());

    // Switching it on writes zeros and leaves the offset unknown.
    RFC3339DateTime dateOnly = RFC3339DateTime::dateTimeWithRFC3339String("2008-01-02");
    dateOnly.setHasTime(true);
    EXPECT_EQ(dateOnly.dateComponents()->hour, 0);
    EXPECT_FALSE(dateOnly.isUniversalTime());
    EXPECT_TRUE(dateOnly.RFC3339String().toUtf8().ends_with("T00:00:00-00:00"));
}

TEST(RFC3339DateTime, SetTimeZoneTakesTheZonesOffsetAtTheValuesInstant) {
    RFC3339DateTime value = RFC3339DateTime::dateTimeWithRFC3339String("2008-07-02T12:00:00Z");
    value.setTimeZone(TimeZone::timeZoneWithName("America/New_York"));
    EXPECT_EQ(value.offsetSeconds(), -4 * 3600);
    EXPECT_TRUE(value.isUniversalTime());  // untouched
    value.setTimeZone(nullptr);
    EXPECT_EQ(value.offsetSeconds(), U);
    value.setTimeZoneWithOffsetSeconds(TimeZone::timeZoneWithName("Europe/Paris"), 7);
    EXPECT_EQ(value.offsetSeconds(), 7);
    EXPECT_EQ(value.timeZone(), TimeZone::timeZoneWithName("Europe/Paris"));
    EXPECT_EQ(value.calendar().timeZone(), TimeZone::timeZoneWithName("Europe/Paris"));

    const std::string description = value.description().toUtf8();
    EXPECT_TRUE(description.starts_with("RFC3339DateTime 0x")) << description;
    EXPECT_TRUE(description.ends_with(": {" + value.RFC3339String().toUtf8() + "}")) << description;
}

}  // namespace
