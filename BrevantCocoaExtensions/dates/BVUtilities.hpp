// BVUtilities: the odds and ends the suite's applications share, as class operations with no instances:
// which sibling applications are installed or running, machine-wide preferences, the built-in thumbnails,
// date-based unique numbers, test numbers and identifiers, MD5 digests, cells ordered by tag, the rounding
// and rectangle geometry that places windows and pictures, number validation, and the states table.
//
// Several results keep deliberate oddities that callers rely on; each is named at its operation. The
// shared state (the states list and map, the last unique number) is meant for the main thread.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVUtilities {
  public:
    BVUtilities() = delete;

    // A window as positionWindowAtScreenPosition sees it; the interface library adapts its windows to it.
    class Window {
      public:
        virtual ~Window() = default;
        [[nodiscard]] virtual Rect frame() const = 0;
        virtual void setFrameOrigin(Point origin) = 0;
        // The visible frame of the main screen (without menu bars and docks).
        [[nodiscard]] virtual Rect mainScreenVisibleFrame() const = 0;
    };

    // --- Running and installed applications, machine-wide preferences ---------------------------------

    // The first running application whose "NSApplicationName" equals the name exactly: a dictionary with
    // "NSApplicationName", "NSApplicationBundleIdentifier", "NSApplicationPath" (when known) and
    // "NSApplicationProcessIdentifier" (when known); null when none.
    [[nodiscard]] static std::optional<ValueDictionary> attributesForRunningApplicationNamed(
        const Text& name);
    // The first running application whose identifier equals the argument ignoring case; null when none.
    [[nodiscard]] static std::optional<ValueDictionary> attributesForRunningApplicationWithBundleID(
        const Text& identifier);
    // Whether a running application's identifier equals the argument ignoring case.
    [[nodiscard]] static bool applicationIsRunningWithBundleID(const Text& identifier);
    // 0 to 6 from which of the tools application ("com.Brevant.BrevantTools") and the three products
    // ("com.Brevant.Pageweave", "com.brevant.Slidemark", "Marblet", each passed exactly so) are installed.
    [[nodiscard]] static int getProductConfiguration();
    // True when the product configuration is 0 or 1.
    [[nodiscard]] static bool productConfigurationIsThirdPartyOnly();
    // Stores the value under the key in the machine-wide preferences of the application (the property list
    // IDENTIFIER.plist in the machine preferences folder; a null value removes the key) and answers whether
    // the file was written. A damaged file is logged with its path and left as it is (false).
    static bool setGlobalPreferenceForKeyWithAppBundleID(const Value& value, const Text& key,
                                                         const Text& identifier);
    // A copy of the dictionary stored under the key in the application's machine-wide preferences; null
    // when the file, the key or a dictionary under it is missing.
    [[nodiscard]] static std::optional<ValueDictionary> globalPreferencesForKeyWithAppBundleID(
        const Text& key, const Text& identifier);

    // --- Built-in thumbnails ---------------------------------------------------------------------------

    // A JPEG image of 480 x 360 pixels (18,454 bytes) as Base64 text of 24,608 characters (spelled so).
    [[nodiscard]] static const Text& spontaneousQuestionThumbnailImageAsBas64String();
    // A JPEG image of 640 x 480 pixels (37,597 bytes) as Base64 text of 50,132 characters.
    [[nodiscard]] static const Text& answerKeyThumbnailImageAsBase64String();

    // --- Numbers and identifiers -----------------------------------------------------------------------

    // YYDDDMMSS of the local time now (two-digit year, day of the year, minute, second; no hour, on
    // purpose) as a number, raised by random steps of 0 to 99 while it equals the last number returned.
    [[nodiscard]] static std::int64_t dateBasedUniqueNumber();
    // Count distinct numbers from dateBasedUniqueNumber, in the order drawn (redrawing repeats).
    [[nodiscard]] static ValueArray numberOfDateBasedUniqueNumbers(std::uint64_t count);
    // The local time now as "MDD_HMM": month and hour without a leading zero, day and minute with.
    [[nodiscard]] static Text autoSaveNameDatePortion();
    // True below 100000000 (at most eight digits).
    [[nodiscard]] static bool isValidTestNumber(std::uint64_t number);
    // Eight random digits of 0 to 8 (never 9), the first not 0: 10000000 to 88888888.
    [[nodiscard]] static std::int64_t randomTestNumber();
    // A new random UUID in lower case, 8-4-4-4-12 hexadecimal digits.
    [[nodiscard]] static Text generatedUUID();
    // As generatedUUID, wrapped in "{" and "}" when asked.
    [[nodiscard]] static Text generatedUUIDWithBraces(bool braces);
    // The UUID of those bytes in order, in upper case (unlike generatedUUID, on purpose).
    [[nodiscard]] static Text generatedUUIDWithBytes(const std::array<std::uint8_t, 16>& bytes);
    // The text without "{" and "}" at either end, in upper case; braces inside are kept.
    [[nodiscard]] static Text UUIDForGUID(const Text& guid);

    // --- Digests ---------------------------------------------------------------------------------------

    // The MD5 digest of the text's UTF-8 bytes, as MD5ForData gives it.
    [[nodiscard]] static Text MD5ForString(const Text& string);
    // The MD5 digest as 32 lower-case hexadecimal digits. The byte count goes to the digest as a 32-bit
    // length, so of data of 4 GiB or more only the first (size mod 2^32) bytes count; stream larger input
    // through bv::Md5 instead.
    [[nodiscard]] static Text MD5ForData(const ByteData& data);

    // --- Cells, rounding and geometry ------------------------------------------------------------------

    // The cells in ascending tag order, equal tags in their input order. A cell is anything with tag()
    // (directly or through a pointer); another tag function may be given.
    template <class Cell, class TagOf>
    [[nodiscard]] static std::vector<Cell> cellsOrderedByTag(const std::vector<Cell>& cells, TagOf tagOf) {
        std::vector<Cell> ordered(cells);
        std::stable_sort(ordered.begin(), ordered.end(),
                         [&](const Cell& a, const Cell& b) { return tagOf(a) < tagOf(b); });
        return ordered;
    }
    template <class Cell>
    [[nodiscard]] static std::vector<Cell> cellsOrderedByTag(const std::vector<Cell>& cells) {
        return cellsOrderedByTag(cells, [](const Cell& cell) {
            if constexpr (requires { cell->tag(); })
                return cell->tag();
            else
                return cell.tag();
        });
    }

    // value x 10^digits rounded to the nearest integer (ties to even) and divided back, in 32-bit float
    // steps: the power and the product are 32-bit floats, and so is the quotient.
    [[nodiscard]] static double roundedValueOfValueToDigitPosition(double value, std::uint64_t digits);
    // outer.height - r.y - r.height.
    [[nodiscard]] static double flippedYCoordinateOfRectInRect(const Rect& r, const Rect& outer);
    // pixels x (percentage / 100), in 32-bit floats.
    [[nodiscard]] static double pixelValueFromPercentageOfPixels(float percentage, float pixels);
    // The rectangle's centre, each coordinate rounded to a 32-bit float.
    [[nodiscard]] static Point centerPointInRectangle(const Rect& rect);
    // The origin that centres a rectangle of r's size on the point.
    [[nodiscard]] static Point originOfRectangleCenteredAroundPoint(const Rect& r, Point center);
    // A rectangle of the size centred on the point.
    [[nodiscard]] static Rect rectangleOfSizeCenteredAroundPoint(Size size, Point center);
    // The origin that centres r in outer.
    [[nodiscard]] static Point originOfRectCenteredInRect(const Rect& r, const Rect& outer);
    [[nodiscard]] static double xOriginOfRectCenteredHorizontallyInRect(const Rect& r, const Rect& outer);
    [[nodiscard]] static double yOriginOfRectCenteredVerticallyInRect(const Rect& r, const Rect& outer);
    // x centred; y at the top of outer (outer.y + outer.height - r.height) when flipped, else outer.y.
    [[nodiscard]] static Point originOfRectCenteredAtBottomOfRectFlipped(const Rect& r, const Rect& outer,
                                                                         bool flipped);
    // x at outer's right edge minus r's width; y as originOfRectCenteredAtBottomOfRectFlipped.
    [[nodiscard]] static Point originOfRectInLowerRightCornerOfRectFlipped(const Rect& r, const Rect& outer,
                                                                           bool flipped);
    // (rect.width x px / 100, rect.height x py / 100); the rectangle's origin is not added, on purpose.
    [[nodiscard]] static Point originForPercentagesWithinRect(Point percentages, const Rect& rect);
    // A rectangle of s's proportions fitted in r and centred, each value rounded to a 32-bit float.
    [[nodiscard]] static Rect boundsOfRectScaledProportionallyToSize(const Rect& r, Size s);
    // Moves the window to a place on the main screen's visible frame: 1 to 8 clockwise from the top-left
    // corner, anything else the centre. "Right" and "top" are the visible frame's width less the window's
    // width and height (its width, not its height, for the top; no origin added), on purpose.
    static void positionWindowAtScreenPosition(Window& window, long position);

    // --- Validation and states -------------------------------------------------------------------------

    // Whether the text is a number (or, with fractions allowed, "number/number" with a non-zero whole
    // denominator) in the current locale's decimal format, untrimmed; null and empty are valid. On failure
    // with a message, shows the alert "Invalid Number" with it and the button "OK".
    static bool validateDoubleMessageAllowFractions(const std::optional<Text>& text,
                                                    const std::optional<Text>& message, bool allowFractions);
    // The state names of the library's "states" resource, in file order (the text before each line's first
    // ","). Read on first use; empty, and read again next time, when the resource cannot be read.
    [[nodiscard]] static const ValueArray& stateNames();
    // The abbreviation of the state, named in any case; null when unknown. Lines are split at ", ", so a
    // line with a comma but no space gives a name but no abbreviation.
    [[nodiscard]] static std::optional<Text> abbreviationForState(const Text& state);
};

}  // namespace bv
