// printf-style formatting with "%@": each directive is parsed here and its number written by snprintf.
#include "BrevantCocoaExtensions/platform/Format.hpp"

#include <cstdio>
#include <string_view>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

struct Directive {
    std::size_t position = 0;  // 1-based argument position, 0 for the next one
    std::string flags;         // flags, width and precision as written, for snprintf
    std::string length;        // "", "h", "hh", "l", "ll", "q", "z", "t", "j", "L"
    char16_t conversion = 0;
    std::size_t end = 0;  // index just past the directive
};

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// Appends the digits from `at` on to `out` and answers the index after them. More than four digits (a
// width or precision nobody means) end the format there, so the directive is copied instead of padded.
std::size_t copyDigits(std::u16string_view format, std::size_t at, std::string& out) {
    const std::size_t start = at;
    while (at < format.size() && isDigit(format[at]))
        out += static_cast<char>(format[at++]);
    return at - start > 4 ? format.size() : at;
}

// Parses the directive whose "%" is at `start`; conversion 0 when the format ends inside it.
Directive parseDirective(std::u16string_view format, std::size_t start) {
    Directive directive;
    std::size_t at = start + 1;
    std::size_t digits = at;
    while (digits < format.size() && isDigit(format[digits]))
        ++digits;
    if (digits > at && digits < format.size() && format[digits] == u'$') {
        for (std::size_t i = at; i < digits; ++i)
            directive.position = directive.position * 10 + static_cast<std::size_t>(format[i] - u'0');
        at = digits + 1;
    }
    while (at < format.size() && std::u16string_view(u"-+ #0").find(format[at]) != std::u16string_view::npos)
        directive.flags += static_cast<char>(format[at++]);
    at = copyDigits(format, at, directive.flags);
    if (at < format.size() && format[at] == u'.') {
        directive.flags += '.';
        at = copyDigits(format, at + 1, directive.flags);
    }
    while (at < format.size() &&
           std::u16string_view(u"hlqztjL").find(format[at]) != std::u16string_view::npos)
        directive.length += static_cast<char>(format[at++]);
    directive.conversion = at < format.size() ? format[at] : 0;
    directive.end = at < format.size() ? at + 1 : format.size();
    return directive;
}

bool isWide(const std::string& length) {
    return !length.empty() && length != "h" && length != "hh";
}

std::int64_t signedArgument(const Value& value, const std::string& length) {
    const std::int64_t whole = value.number() ? value.number()->int64Value() : 0;
    if (length == "hh") return static_cast<std::int8_t>(whole);
    if (length == "h") return static_cast<std::int16_t>(whole);
    return isWide(length) ? whole : static_cast<std::int32_t>(whole);
}

std::uint64_t unsignedArgument(const Value& value, const std::string& length) {
    const std::uint64_t whole = value.number() ? value.number()->uint64Value() : 0;
    if (length == "hh") return static_cast<std::uint8_t>(whole);
    if (length == "h") return static_cast<std::uint16_t>(whole);
    return isWide(length) ? whole : static_cast<std::uint32_t>(whole);
}

template <class T>
Text printed(const std::string& pattern, T value) {
    const int needed = std::snprintf(nullptr, 0, pattern.c_str(), value);
    if (needed <= 0) return Text();
    std::string out(static_cast<std::size_t>(needed) + 1, '\0');
    std::snprintf(out.data(), out.size(), pattern.c_str(), value);
    out.resize(static_cast<std::size_t>(needed));
    return Text(out);
}

Text described(const Value& value) {
    return value.isNull() ? Text("(null)") : value.description();
}

bool isKnownConversion(char16_t conversion) {
    return conversion != 0 &&
           std::u16string_view(u"@sSdiuoxXfFeEgGaAcC").find(conversion) != std::u16string_view::npos;
}

// The directive's text for its argument (the conversion is a known one).
Text convert(const Directive& directive, const Value& value) {
    const std::string flags = "%" + directive.flags;
    switch (directive.conversion) {
        case u'@':
        case u's':
        case u'S':
            return described(value);
        case u'd':
        case u'i':
            return printed(flags + "lld", static_cast<long long>(signedArgument(value, directive.length)));
        case u'u':
        case u'o':
        case u'x':
        case u'X':
            return printed(flags + "ll" + static_cast<char>(directive.conversion),
                           static_cast<unsigned long long>(unsignedArgument(value, directive.length)));
        case u'f':
        case u'F':
        case u'e':
        case u'E':
        case u'g':
        case u'G':
        case u'a':
        case u'A':
            return printed(flags + static_cast<char>(directive.conversion),
                           value.number() ? value.number()->doubleValue() : 0.0);
        default:  // 'c', 'C'
            return Text::fromUnit(static_cast<char16_t>(unsignedArgument(value, "h")));
    }
}

}  // namespace

Text stringWithFormatArguments(const Text& format, const ValueArray& arguments) {
    const std::u16string_view units = format.view();
    Text out;
    std::size_t nextArgument = 0;
    std::size_t at = 0;
    while (at < units.size()) {
        const std::size_t percent = units.find(u'%', at);
        out += Text(units.substr(
            at, percent == std::u16string_view::npos ? std::u16string_view::npos : percent - at));
        if (percent == std::u16string_view::npos) break;
        const Directive directive = parseDirective(units, percent);
        at = directive.end;
        if (directive.conversion == u'%') {
            out += u'%';
            continue;
        }
        if (!isKnownConversion(directive.conversion)) {  // unknown: copied as it stands
            out += Text(units.substr(percent, directive.end - percent));
            continue;
        }
        const std::size_t index = directive.position != 0 ? directive.position - 1 : nextArgument++;
        if (index >= arguments.size())
            throw InvalidArgumentException("the format \"" + format.toUtf8() + "\" needs more arguments");
        out += convert(directive, arguments[index]);
    }
    return out;
}

}  // namespace bv
