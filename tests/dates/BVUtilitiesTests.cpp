// BVUtilities: digests, identifiers, numbers, geometry, validation, preferences and the states table.
#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Md5.hpp"
#include "support/Scratch.hpp"

namespace {

using bv::BVUtilities;
using bv::Point;
using bv::Rect;
using bv::Text;
namespace fs = std::filesystem;

// 2026-03-05 14:07:09 UTC: day 64 of the year.
constexpr double kMarchFifth = 1772719629.0;

class FixedClock : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("TZ", "UTC", 1);
        tzset();
        previous_ = bv::Date::setClock([this] { return bv::Date::fromTimeIntervalSince1970(now_); });
    }
    void TearDown() override { bv::Date::setClock(previous_); }
    double now_ = kMarchFifth;

  private:
    std::function<bv::Date()> previous_;
};

TEST(BVUtilitiesDigest, MD5OfTextAndData) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [message, digest] : cases) {
        EXPECT_EQ(BVUtilities::MD5ForString(Text(message)), Text(digest)) << message;
        const std::string bytes(message);
        EXPECT_EQ(BVUtilities::MD5ForData(bv::ByteData(bytes.begin(), bytes.end())), Text(digest));
    }
}

TEST(BVUtilitiesDigest, StreamedPiecesGiveTheWholeDigest) {
    bv::Md5 md5;
    for (const char* piece :
         {"1234567890123456789012345678901234567890", "1234567890123456789", "012345678901234567890"})
        md5.update(piece, std::string(piece).size());
    EXPECT_EQ(bv::Md5::hex(md5.finish()), "57edf4a22be3c955ac49da2e2107b67a");
    EXPECT_EQ(bv::Md5::hex(md5.finish()), "d41d8cd98f00b204e9800998ecf8427e");  // starts afresh
    EXPECT_EQ(BVUtilities::MD5ForString(Text(u"\u00e9")), Text("66ddcd97cfdeabb2f6fb8a999b4bc76f"))
        << "UTF-8 bytes c3 a9";
}

TEST(BVUtilitiesIdentifiers, UUIDTextForms) {
    const std::regex lower("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    const std::string plain = BVUtilities::generatedUUID().toUtf8();
    EXPECT_TRUE(std::regex_match(plain, lower)) << plain;
    EXPECT_NE(BVUtilities::generatedUUID(), BVUtilities::generatedUUID());
    const std::string braced = BVUtilities::generatedUUIDWithBraces(true).toUtf8();
    EXPECT_TRUE(braced.front() == '{' && braced.back() == '}' &&
                std::regex_match(braced.substr(1, braced.size() - 2), lower))
        << braced;

    const std::array<std::uint8_t, 16> bytes{0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07,
                                             0x08, 0x09, 0x0a, 0x0b, 0xfc, 0xfd, 0xfe, 0xff};
    EXPECT_EQ(BVUtilities::generatedUUIDWithBytes(bytes), Text("00010203-0405-0607-0809-0A0BFCFDFEFF"));

    const std::pair<const char*, const char*> guids[] = {
        {"{6ba7b810-9dad-11d1-80b4-00c04fd430c8}", "6BA7B810-9DAD-11D1-80B4-00C04FD430C8"},
        {"{{ab}}", "AB"},
        {"a{b}c", "A{B}C"},  // braces inside stay
        {"}{", ""},
    };
    for (const auto& [guid, uuid] : guids)
        EXPECT_EQ(BVUtilities::UUIDForGUID(Text(guid)), Text(uuid)) << guid;
}

TEST_F(FixedClock, DateBasedNumbersLeaveOutTheHourAndStepPastTheLastOne) {
    const std::int64_t first = BVUtilities::dateBasedUniqueNumber();
    EXPECT_EQ(first, 260640709);  // 26, day 064, minute 07, second 09
    const std::int64_t second = BVUtilities::dateBasedUniqueNumber();
    EXPECT_GT(second, first);
    EXPECT_LT(second, first + 1000);
    EXPECT_EQ(BVUtilities::dateBasedUniqueNumber(), first) << "only the last number is avoided";

    now_ += 3600;  // an hour later the number is the same
    const bv::ValueArray numbers = BVUtilities::numberOfDateBasedUniqueNumbers(20);
    ASSERT_EQ(numbers.size(), 20u);
    std::set<long long> distinct;
    for (const bv::Value& number : numbers)
        distinct.insert(number.number()->int64Value());
    EXPECT_EQ(distinct.size(), 20u);
    EXPECT_EQ(*distinct.begin(), first);

    EXPECT_EQ(BVUtilities::autoSaveNameDatePortion(), Text("305_1507"));
    now_ = 1795424700.0;  // 2026-11-23 09:05:00
    EXPECT_EQ(BVUtilities::autoSaveNameDatePortion(), Text("1123_905"));
}

TEST(BVUtilitiesNumbers, TestNumbersHaveEightDigitsOfZeroToEight) {
    EXPECT_TRUE(BVUtilities::isValidTestNumber(99999999));
    EXPECT_FALSE(BVUtilities::isValidTestNumber(100000000));
    for (int draw = 0; draw < 2000; ++draw) {
        const std::string digits = std::to_string(BVUtilities::randomTestNumber());
        ASSERT_EQ(digits.size(), 8u) << digits;
        ASSERT_EQ(digits.find('9'), std::string::npos) << digits;
    }
}

TEST(BVUtilitiesCells, OrderedByTagKeepingEqualTagsInInputOrder) {
    struct Cell {
        long tagValue;
        char name;
        [[nodiscard]] long tag() const { return tagValue; }
    };
    const std::vector<Cell> cells{{3, 'a'}, {1, 'b'}, {2, 'c'}, {1, 'd'}, {3, 'e'}, {0, 'f'}};
    std::string order;
    for (const Cell& cell : BVUtilities::cellsOrderedByTag(cells))
        order += cell.name;
    EXPECT_EQ(order, "fbdcae");
}

TEST(BVUtilitiesGeometry, RoundingGoesThroughThirtyTwoBitFloats) {
    struct Case {
        double value;
        std::uint64_t digits;
        double expected;
    };
    const Case cases[] = {
        {2.675, 2, 2.68f},          // 267.49999999999997 is 267.5 as a float; the tie goes to 268
        {1.005, 2, 1.0f},           // 100.49999999999999 becomes 100.5, the tie goes to 100
        {0.125, 2, 0.12f},          // 12.5 ties to 12
        {-2.5, 0, -2.0},            // ties to even
        {3.14159, 0, 3.0},          //
        {1234.5678, 3, 1234.568f},  // 1234567.8 is 1234567.75 as a float
    };
    for (const Case& c : cases)
        EXPECT_EQ(BVUtilities::roundedValueOfValueToDigitPosition(c.value, c.digits), c.expected)
            << c.value << " to " << c.digits;
}

TEST(BVUtilitiesGeometry, RectanglesWorkedOutByHand) {
    const Rect outer{{10, 20}, {300, 200}};
    const Rect r{{0, 5}, {100, 50}};
    EXPECT_EQ(BVUtilities::flippedYCoordinateOfRectInRect(r, outer), 145);
    EXPECT_EQ(BVUtilities::pixelValueFromPercentageOfPixels(50, 333), 166.5);
    EXPECT_EQ(BVUtilities::pixelValueFromPercentageOfPixels(10, 3),
              0.30000001192092896);  // 0.1f x 3 in float
    EXPECT_EQ(BVUtilities::centerPointInRectangle({{0.1, 0.2}, {1, 1}}),
              (Point{0.60000002384185791, 0.69999998807907104}));
    EXPECT_EQ(BVUtilities::originOfRectangleCenteredAroundPoint(r, {0, 0}), (Point{-50, -25}));
    EXPECT_EQ(BVUtilities::rectangleOfSizeCenteredAroundPoint({100, 50}, {200, 100}),
              (Rect{{150, 75}, {100, 50}}));
    EXPECT_EQ(BVUtilities::originOfRectCenteredInRect(r, outer), (Point{110, 95}));
    EXPECT_EQ(BVUtilities::xOriginOfRectCenteredHorizontallyInRect(r, outer), 110);
    EXPECT_EQ(BVUtilities::yOriginOfRectCenteredVerticallyInRect(r, outer), 95);
    EXPECT_EQ(BVUtilities::originOfRectCenteredAtBottomOfRectFlipped(r, outer, true), (Point{110, 170}));
    EXPECT_EQ(BVUtilities::originOfRectCenteredAtBottomOfRectFlipped(r, outer, false), (Point{110, 20}));
    EXPECT_EQ(BVUtilities::originOfRectInLowerRightCornerOfRectFlipped(r, outer, true), (Point{210, 170}));
    EXPECT_EQ(BVUtilities::originForPercentagesWithinRect({50, 25}, outer), (Point{150, 50}));  // no origin

    const std::tuple<Rect, bv::Size, Rect> fits[] = {
        {{{10, 20}, {400, 300}}, {16, 9}, {{10, 57.5}, {400, 225}}},  // too wide: full width
        {{{10, 20}, {400, 300}}, {1, 1}, {{60, 20}, {300, 300}}},     // narrower: full height
        {{{0, 0}, {100, 100}}, {3, 1}, {{0, 33.33333206176758}, {100, 33.33333206176758}}},  // floats
    };
    for (const auto& [in, size, expected] : fits)
        EXPECT_EQ(BVUtilities::boundsOfRectScaledProportionallyToSize(in, size), expected);
}

TEST(BVUtilitiesGeometry, WindowPositionsTakeTheTopFromTheScreenWidth) {
    struct FakeWindow : BVUtilities::Window {
        Rect frame() const override { return {{5, 5}, {200, 100}}; }
        Rect mainScreenVisibleFrame() const override { return {{0, 25}, {1440, 875}}; }
        void setFrameOrigin(Point origin) override { placed = origin; }
        Point placed;
    } window;
    // left 0, bottom 25, right 1440 - 200, top 1440 - 100, middles 620 and 412.5
    const std::pair<long, Point> positions[] = {
        {1, {0, 1340}}, {2, {620, 1340}}, {3, {1240, 1340}}, {4, {1240, 412.5}}, {5, {1240, 25}},
        {6, {620, 25}}, {7, {0, 25}},     {8, {0, 412.5}},   {0, {620, 412.5}},  {9, {620, 412.5}},
    };
    for (const auto& [position, origin] : positions) {
        BVUtilities::positionWindowAtScreenPosition(window, position);
        EXPECT_EQ(window.placed, origin) << position;
    }
}

TEST(BVUtilitiesValidation, NumbersAndFractionsWithTheirAlert) {
    icu::Locale::setDefault(icu::Locale("en_US"), *std::make_unique<UErrorCode>(U_ZERO_ERROR));
    bvtest::LogCapture silenced;
    struct Case {
        std::optional<Text> text;
        bool fractions;
        bool valid;
    };
    const Case cases[] = {
        {std::nullopt, false, true},  {Text(""), false, true},
        {Text("3"), false, true},     {Text("-3.5"), false, true},
        {Text("3/4"), true, true},    {Text("3/4"), false, false},
        {Text("3/0"), true, false},   {Text("3/0.5"), true, false},
        {Text("3/"), true, false},    {Text("/4"), true, false},
        {Text("1/2/3"), true, false}, {Text(" 3"), false, false},
        {Text("3 "), false, false},   {Text("abc"), false, false},
        {Text("3/4x"), true, true},  // denominator length unchecked
    };
    for (const Case& c : cases) {
        bv::AlertRecorder alerts;
        EXPECT_EQ(
            BVUtilities::validateDoubleMessageAllowFractions(c.text, Text("Type a number."), c.fractions),
            c.valid)
            << (c.text ? c.text->toUtf8() : "null");
        ASSERT_EQ(alerts.alerts().size(), c.valid ? 0u : 1u);
        if (!c.valid) {
            EXPECT_EQ(alerts.alerts()[0].title, Text("Invalid Number"));
            EXPECT_EQ(alerts.alerts()[0].message, Text("Type a number."));
            EXPECT_EQ(alerts.alerts()[0].buttons, std::vector<Text>{Text("OK")});
        }
    }
    bv::AlertRecorder alerts;
    EXPECT_FALSE(BVUtilities::validateDoubleMessageAllowFractions(Text("x"), std::nullopt, false));
    EXPECT_TRUE(alerts.alerts().empty()) << "no message, no alert";
}

TEST(BVUtilitiesStates, NamesAndAbbreviationsSplitLinesDifferently) {
    bvtest::ScratchFolder resources;
    setenv("BV_RESOURCES", resources.root().c_str(), 1);
    EXPECT_TRUE(BVUtilities::stateNames().empty()) << "no resource yet";
    EXPECT_EQ(BVUtilities::abbreviationForState(Text("Beta")), std::nullopt);

    resources.write("states.txt",
                    "\r\n Alpha,AA\r\nBeta, BX\r\n\r\ngamma , gg \nDelta, DD\r\nBeta, BB\r\n\r\n");
    const bv::ValueArray names = BVUtilities::stateNames();
    // Trimmed as a whole, split at "\r\n" only: a bare line feed stays inside a line.
    const bv::ValueArray expected{Text("Alpha"), Text("Beta"), Text(""), Text("gamma "), Text("Beta")};
    EXPECT_EQ(names, expected);
    EXPECT_EQ(BVUtilities::abbreviationForState(Text("alpha")), std::nullopt) << "a comma without a space";
    EXPECT_EQ(BVUtilities::abbreviationForState(Text("BETA")), Text("BB")) << "the later line wins";
    EXPECT_EQ(BVUtilities::abbreviationForState(Text("Gamma")), Text("gg \nDelta"));
    EXPECT_EQ(BVUtilities::abbreviationForState(Text("Atlantis")), std::nullopt);
    unsetenv("BV_RESOURCES");
}

TEST(BVUtilitiesPreferences, MachineWideDictionariesPerApplication) {
    bvtest::ScratchFolder folder;
    const fs::path preferences = folder.root() / "etc";
    setenv("BV_SYSTEM_PREFERENCES", preferences.c_str(), 1);
    const Text app("com.Brevant.Pageweave");
    const bv::ValueDictionary license{{Text("seats"), 30}, {Text("owner"), Text("School")}};

    EXPECT_EQ(BVUtilities::globalPreferencesForKeyWithAppBundleID(Text("License"), app), std::nullopt);
    EXPECT_TRUE(BVUtilities::setGlobalPreferenceForKeyWithAppBundleID(license, Text("License"), app));
    EXPECT_TRUE(BVUtilities::setGlobalPreferenceForKeyWithAppBundleID(Text("plain"), Text("Note"), app));
    EXPECT_TRUE(fs::exists(preferences / "com.Brevant.Pageweave.plist"));
    EXPECT_EQ(BVUtilities::globalPreferencesForKeyWithAppBundleID(Text("License"), app), license);
    EXPECT_EQ(BVUtilities::globalPreferencesForKeyWithAppBundleID(Text("Note"), app), std::nullopt)
        << "not a dictionary";
    EXPECT_TRUE(BVUtilities::setGlobalPreferenceForKeyWithAppBundleID(nullptr, Text("License"), app));
    EXPECT_EQ(BVUtilities::globalPreferencesForKeyWithAppBundleID(Text("License"), app), std::nullopt)
        << "removed";

    bvtest::LogCapture log;
    folder.write("etc/broken.plist", "<plist><dict><key>");
    EXPECT_EQ(BVUtilities::globalPreferencesForKeyWithAppBundleID(Text("License"), Text("broken")),
              std::nullopt);
    EXPECT_FALSE(
        BVUtilities::setGlobalPreferenceForKeyWithAppBundleID(license, Text("License"), Text("broken")));
    unsetenv("BV_SYSTEM_PREFERENCES");
    ASSERT_FALSE(log.lines.empty());
    EXPECT_NE(log.lines[0].find((preferences / "broken.plist").string()), std::string::npos) << log.lines[0];
    EXPECT_EQ(folder.read("etc/broken.plist"), "<plist><dict><key>") << "left as it was";
}

}  // namespace
