// Decimal and C-library readings of numbers from text.
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>

#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"

namespace bv {

namespace {

std::size_t skipWhitespace(const std::u16string& units) {
    static const CharacterSet kWhitespace = CharacterSet::whitespaceAndNewlineCharacterSet();
    std::size_t i = 0;
    while (i < units.size() && kWhitespace.contains(units[i]))
        ++i;
    return i;
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// Optional sign and decimal digits after leading white space, saturating at the given bounds.
std::int64_t readDecimal(const Text& text, std::int64_t low, std::int64_t high) {
    const std::u16string& units = text.units();
    std::size_t i = skipWhitespace(units);
    bool negative = false;
    if (i < units.size() && (units[i] == u'+' || units[i] == u'-')) negative = units[i++] == u'-';
    std::int64_t value = 0;
    for (; i < units.size() && isDigit(units[i]); ++i) {
        int digit = units[i] - u'0';
        if (!negative) {
            value = value > (high - digit) / 10 ? high : value * 10 + digit;
        } else {
            value = value < (low + digit) / 10 ? low : value * 10 - digit;
        }
    }
    return value;
}

}  // namespace

bool boolValue(const Text& text) {
    if (text.empty()) return false;
    char16_t first = text[0];
    if (first == u'T' || first == u't' || first == u'Y' || first == u'y') return true;
    return intValue(text) != 0;
}

std::int32_t intValue(const Text& text) {
    return static_cast<std::int32_t>(readDecimal(text, std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max()));
}

std::int64_t integerValue(const Text& text) {
    return readDecimal(text, std::numeric_limits<std::int64_t>::min(),
                       std::numeric_limits<std::int64_t>::max());
}

double doubleValue(const Text& text) {
    const std::u16string& units = text.units();
    std::size_t i = skipWhitespace(units);
    std::string ascii;
    if (i < units.size() && (units[i] == u'+' || units[i] == u'-')) {
        if (units[i] == u'-') ascii += '-';
        ++i;
    }
    auto takeDigits = [&] {
        while (i < units.size() && isDigit(units[i]))
            ascii += static_cast<char>(units[i++]);
    };
    takeDigits();
    if (i < units.size() && units[i] == u'.') {
        ascii += '.';
        ++i;
        takeDigits();
    }
    if (i < units.size() && (units[i] == u'e' || units[i] == u'E')) {
        std::size_t mark = ascii.size();
        std::size_t resume = i;
        ascii += 'e';
        ++i;
        if (i < units.size() && (units[i] == u'+' || units[i] == u'-'))
            ascii += static_cast<char>(units[i++]);
        std::size_t before = ascii.size();
        takeDigits();
        if (ascii.size() == before) {  // an "e" without digits is not part of the number
            ascii.resize(mark);
            i = resume;
        }
    }
    double value = 0.0;
    std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    return value;
}

float floatValue(const Text& text) {
    return static_cast<float>(doubleValue(text));
}

std::int64_t longValue(const Text& text) {
    return longLongValue(text);
}

std::uint64_t unsignedLongValue(const Text& text) {
    return unsignedLongLongValue(text);
}

std::int64_t longLongValue(const Text& text) {
    std::string utf8 = text.toUtf8();
    int saved = errno;
    long long value = std::strtoll(utf8.c_str(), nullptr, 0);
    errno = saved;
    return value;
}

std::uint64_t unsignedLongLongValue(const Text& text) {
    std::string utf8 = text.toUtf8();
    int saved = errno;
    unsigned long long value = std::strtoull(utf8.c_str(), nullptr, 0);
    errno = saved;
    return value;
}

}  // namespace bv
