// BVUtilities: number validation with its alerts, and the states table read from the library's resources.
#include <unicode/numfmt.h>
#include <unicode/parsepos.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv {

namespace {

// --- Number validation --------------------------------------------------------------------------------

struct ParsedNumber {
    bool parsed = false;
    std::size_t length = 0;  // code units read
    double value = 0;
};

// Parses from the start with the current locale's decimal format, as a typed number is read; a failure
// logs the formatter's error. White space is no part of a number, even where the formatter would skip it.
ParsedNumber parseDecimal(const Text& text) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(icu::Locale::getDefault(), status));
    ParsedNumber result;
    if (U_SUCCESS(status) && !text.empty() && !u_isUWhiteSpace(text[0])) {
        const icu::UnicodeString source(false, text.units().data(), static_cast<int32_t>(text.length()));
        icu::Formattable number;
        icu::ParsePosition position(0);
        format->parse(source, number, position);
        if (position.getIndex() > 0 && position.getErrorIndex() < 0) {
            UErrorCode valueStatus = U_ZERO_ERROR;
            result = {true, static_cast<std::size_t>(position.getIndex()), number.getDouble(valueStatus)};
        }
    }
    if (!result.parsed)
        log("Error Domain=NSCocoaErrorDomain Code=2048 \"The value \u201c" + text.toUtf8() +
            "\u201d is invalid.\"");
    return result;
}

bool invalid(const std::optional<Text>& message) {
    if (message)
        AlertCenter::show(Alert{AlertStyle::Warning, Text("Invalid Number"), *message, {Text("OK")}});
    return false;
}

// --- States -------------------------------------------------------------------------------------------

// The lines of the "states" resource (split at "\r\n" only), or nullopt when it cannot be read.
std::optional<std::vector<Text>> stateLines() {
    const auto path = BVNSBundle::pathForResourceOfTypeInFramework(Text("states"), Text("txt"),
                                                                   Text("BrevantCocoaExtensions"));
    if (!path) return std::nullopt;
    std::ifstream in(path->toUtf8(), std::ios::binary);
    if (!in) return std::nullopt;
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return BVNSString::componentsSeparatedByStrings(BVNSString::trimmedString(Text(bytes)), {Text("\r\n")});
}

ValueArray& sharedStateNames() {
    static ValueArray names;
    return names;
}

ValueDictionary& sharedAbbreviations() {
    static ValueDictionary abbreviations;
    return abbreviations;
}

}  // namespace

bool BVUtilities::validateDoubleMessageAllowFractions(const std::optional<Text>& text,
                                                      const std::optional<Text>& message,
                                                      bool allowFractions) {
    if (!text || text->empty()) return true;
    const std::vector<Text> parts = BVNSString::componentsSeparatedByStrings(*text, {Text("/")});
    if (!allowFractions && parts.size() > 1) return invalid(message);
    if (allowFractions && (parts.size() > 2 || (parts.size() == 2 && parts[1].empty())))
        return invalid(message);
    if (parts[0].empty()) return invalid(message);
    const ParsedNumber numerator = parseDecimal(parts[0]);
    if (!numerator.parsed || numerator.length < parts[0].length()) return invalid(message);
    if (!allowFractions || parts.size() == 1) return true;
    const ParsedNumber denominator = parseDecimal(parts[1]);  // its parsed length is not checked
    if (!denominator.parsed || !(std::fabs(denominator.value) >= 1.0)) return invalid(message);
    return true;
}

const ValueArray& BVUtilities::stateNames() {
    ValueArray& names = sharedStateNames();
    if (!names.empty()) return names;
    const auto lines = stateLines();
    if (!lines) return names;
    for (const Text& line : *lines) {
        const Range comma = line.find(Text(","));
        names.emplace_back(comma.location == NotFound ? line : line.substring(0, comma.location));
    }
    return names;
}

std::optional<Text> BVUtilities::abbreviationForState(const Text& state) {
    ValueDictionary& abbreviations = sharedAbbreviations();
    if (abbreviations.empty()) {
        for (const Text& line : stateLines().value_or(std::vector<Text>{})) {
            const auto fields = BVNSString::componentsSeparatedByStrings(line, {Text(", ")});
            if (fields.size() > 1)
                abbreviations[BVNSString::trimmedString(fields[0]).uppercased()] =
                    BVNSString::trimmedString(fields[1]);
        }
    }
    const auto found = abbreviations.find(state.uppercased());
    if (found == abbreviations.end() || found->second.text() == nullptr) return std::nullopt;
    return *found->second.text();
}

}  // namespace bv
