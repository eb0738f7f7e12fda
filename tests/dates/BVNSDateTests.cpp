// BVNSDate and BVNSCalendarDate: UTC fields, whole days from a fixed "now", the fixed formatters (with the
// week-numbering year and the legacy percent codes), the locale date styles and the timestamps.
#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cmath>
#include <cstdlib>

#include "BrevantCocoaExtensions/dates/BVNSCalendarDate.hpp"
#include "BrevantCocoaExtensions/dates/BVNSDate.hpp"

namespace {

using bv::Date;
namespace BVNSDate = bv::BVNSDate;

Date at(double secondsSince1970) {
    return Date::fromTimeIntervalSince1970(secondsSince1970);
}

void useZone(const char* name) {
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(name));
}

// English in UTC unless a test says otherwise; "now" is whatever a test installs.
class DateFormats : public ::testing::Test {
  protected:
    void SetUp() override {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale("en_US"), status);
        useZone("UTC");
    }
    void TearDown() override { Date::setClock({}); }
};

TEST_F(DateFormats, YearOfCommonEraIsZeroUntilTheSharedCalendarExists) {
    // The death-test child re-runs this test alone, in a fresh process where nothing has made the calendar.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const Date leapDay = at(1204243200);  // 2008-02-29T00:00:00Z
    EXPECT_EXIT(
        {
            const int before = BVNSDate::yearOfCommonEra(leapDay);
            const int day = BVNSDate::dayOfMonth(leapDay);
            const int after = BVNSDate::yearOfCommonEra(leapDay);
            std::exit(before == 0 && day == 29 && after == 2008 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(DateFormats, FieldsAreReadInUtcWhateverTheLocalZone) {
    struct Case {
        double instant;
        int day, month, year;
    };
    const Case cases[] = {
        {1204329599, 29, 2, 2008},  // 2008-02-29T23:59:59Z, a leap day
        {1230767999, 31, 12, 2008},
        {1230768000, 1, 1, 2009},
    };
    for (const char* zone : {"Pacific/Kiritimati", "Etc/GMT+12"}) {
        useZone(zone);
        for (const Case& c : cases) {
            EXPECT_EQ(BVNSDate::dayOfMonth(at(c.instant)), c.day) << zone << " " << c.instant;
            EXPECT_EQ(BVNSDate::monthOfYear(at(c.instant)), c.month) << zone << " " << c.instant;
            EXPECT_EQ(BVNSDate::yearOfCommonEra(at(c.instant)), c.year) << zone << " " << c.instant;
        }
    }
    EXPECT_EQ(BVNSDate::gmtGregorianCalendar(), BVNSDate::gmtGregorianCalendar());
}

TEST_F(DateFormats, DaysSinceNowCountsWholeDaysTowardZeroThroughAFloat) {
    const Date now = at(1'800'000'000);
    Date::setClock([now] { return now; });
    struct Case {
        double seconds;  // from now to the date
        std::int64_t days;
    };
    const double day = 86400;
    const Case cases[] = {
        {23 * 3600.0, 0}, {-47 * 3600.0, -1}, {1.9 * day, 1},   {-0.9 * day, 0},
        {-2.5 * day, -2}, {10 * day, 10},     {day - 0.001, 1},  // 0.99999999 rounds up to 1 as a float
        {3e9 * day, 0},   {-3e9 * day, 0},  // past 32 bits: the overflowed count answers 0
        {1e300, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(BVNSDate::daysSinceNow(now.addingTimeInterval(c.seconds)), c.days) << c.seconds;
    }
}

TEST_F(DateFormats, UsEnglishFormattersKeepTheirFixedFormats) {
    struct Case {
        double instant;
        const char* dateTime;
        const char* shortDate;
    };
    const Case cases[] = {
        {1199286245, "01/02/2008 03:04:05 PM", "1/2/2008"},
        {1199232000, "01/02/2008 12:00:00 AM", "1/2/2008"},
        // "Y" is the week-numbering year: the last days of December belong to the next year's first week.
        {1230595200, "12/30/2008 12:00:00 AM", "12/30/2009"},
        {1293840000, "01/01/2011 12:00:00 AM", "1/1/2011"},
        {951782400, "02/29/2000 12:00:00 AM", "2/29/2000"},
    };
    const bv::DateFormatter dateTime = BVNSDate::usEnglish100DateTimeFormatter();
    const bv::DateFormatter shortDate = BVNSDate::usEnglishShortDateFormatter();
    EXPECT_EQ(dateTime.pattern().toUtf8(), "MM/dd/yyyy hh:mm:ss a");
    EXPECT_EQ(dateTime.localeIdentifier().toUtf8(), "us-EN");
    for (const Case& c : cases) {
        EXPECT_EQ(dateTime.stringFromDate(at(c.instant)).toUtf8(), c.dateTime);
        EXPECT_EQ(shortDate.stringFromDate(at(c.instant)).toUtf8(), c.shortDate);
        EXPECT_EQ(dateTime.dateFromString(dateTime.stringFromDate(at(c.instant))), at(c.instant));
    }
}

TEST_F(DateFormats, LegacyPercentCodesBecomeUnicodePatterns) {
    struct Case {
        const char* legacy;
        const char* pattern;
    };
    const Case cases[] = {
        {"%d%b%Y_%H%M%S", "ddMMMyyyy_HHmmss"},
        {"%m/%d/%y %H:%M:%S.%F", "MM/dd/yy HH:mm:ss.SSS"},
        {"%A %e %B, day %j %Z%z", "EEEE d MMMM', day 'DDD zzzZZZ"},
        {"100%% o'clock %q%", "'100% o''clock %q%'"},
    };
    for (const Case& c : cases) {
        bv::DateFormatter formatter;
        formatter.setFormatterBehavior(bv::DateFormatter::Behavior10_0);
        formatter.setDateFormat(c.legacy);
        EXPECT_EQ(formatter.pattern().toUtf8(), c.pattern) << c.legacy;
    }
    bv::DateFormatter literal;
    literal.setFormatterBehavior(bv::DateFormatter::Behavior10_0);
    literal.setDateFormat("%H o'clock, 100%%");
    EXPECT_EQ(literal.stringFromDate(at(3600 * 7)).toUtf8(), "07 o'clock, 100%");
}

TEST_F(DateFormats, DateStylesFollowTheLocaleAndZone) {
    const Date late = at(1199318399);  // 2008-01-02T23:59:59Z
    EXPECT_EQ(BVNSDate::shortDateString(late).toUtf8(), "1/2/08");
    EXPECT_EQ(BVNSDate::mediumDateString(late).toUtf8(), "Jan 2, 2008");
    EXPECT_EQ(BVNSDate::longDateString(late).toUtf8(), "January 2, 2008");
    EXPECT_EQ(BVNSDate::fullDateString(late).toUtf8(), "Wednesday, January 2, 2008");
    EXPECT_EQ(BVNSDate::stringWithFormatterStyle(late, 0).toUtf8(), "");
    EXPECT_EQ(BVNSDate::stringWithFormatterStyle(late, 5).toUtf8(), "");
    useZone("Pacific/Kiritimati");
    EXPECT_EQ(BVNSDate::shortDateString(late).toUtf8(), "1/3/08");
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale("fr_FR"), status);
    EXPECT_EQ(BVNSDate::longDateString(late).toUtf8(), "3 janvier 2008");
}

TEST_F(DateFormats, TimestampsOfTheCurrentMoment) {
    Date::setClock([] { return at(1794806130.25); });  // 2026-11-16T05:15:30.250Z
    EXPECT_EQ(bv::BVNSCalendarDate::timestamp().toUtf8(), "11/16/26 05:15:30.250");
    EXPECT_EQ(bv::BVNSCalendarDate::timestampWithoutSpace().toUtf8(), "16Nov2026_051530");
    useZone("Etc/GMT+12");
    EXPECT_EQ(bv::BVNSCalendarDate::timestamp().toUtf8(), "11/15/26 17:15:30.250");
    EXPECT_EQ(bv::BVNSCalendarDate::timestampWithoutSpace().toUtf8(), "15Nov2026_171530");
}

}  // namespace
