// Date formatters on ICU: the legacy percent codes become a Unicode pattern; styles come from the locale.
#include "BrevantCocoaExtensions/dates/DateFormatter.hpp"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace bv {

struct DateFormatter::Impl {
    std::unique_ptr<icu::DateFormat> formatter;  // nullptr: neither a format nor a style
};

namespace {

icu::UnicodeString toIcu(const Text& text) {
    return icu::UnicodeString(text.units().data(), static_cast<std::int32_t>(text.length()));
}

Text fromIcu(const icu::UnicodeString& text) {
    return Text(std::u16string_view(text.getBuffer(), static_cast<std::size_t>(text.length())));
}

// The Unicode pattern of one legacy percent code; nullptr for a code that has none.
const char16_t* patternOfCode(char16_t code) {
    switch (code) {
        case u'a':
            return u"EEE";
        case u'A':
            return u"EEEE";
        case u'b':
            return u"MMM";
        case u'B':
            return u"MMMM";
        case u'd':
            return u"dd";
        case u'e':
            return u"d";
        case u'F':
            return u"SSS";
        case u'H':
            return u"HH";
        case u'I':
            return u"hh";
        case u'j':
            return u"DDD";
        case u'm':
            return u"MM";
        case u'M':
            return u"mm";
        case u'p':
            return u"a";
        case u'S':
            return u"ss";
        case u'y':
            return u"yy";
        case u'Y':
            return u"yyyy";
        case u'Z':
            return u"zzz";
        case u'z':
            return u"ZZZ";
        default:
            return nullptr;
    }
}

bool isPatternLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// Appends a run of literal text to a Unicode pattern: quoted as a whole (quotes doubled) when it holds a
// letter or a quote, as it stands otherwise.
void appendLiteral(std::u16string& pattern, std::u16string_view literal) {
    const bool needsQuotes = std::any_of(
        literal.begin(), literal.end(), [](char16_t unit) { return unit == u'\'' || isPatternLetter(unit); });
    if (!needsQuotes) {
        pattern += literal;
        return;
    }
    pattern += u'\'';
    for (char16_t unit : literal) {
        pattern += unit;
        if (unit == u'\'') pattern += unit;
    }
    pattern += u'\'';
}

std::u16string patternOfLegacyFormat(std::u16string_view format) {
    std::u16string pattern;
    std::u16string literal;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char16_t* replacement =
            format[i] == u'%' && i + 1 < format.size() ? patternOfCode(format[i + 1]) : nullptr;
        if (replacement == nullptr) {
            literal += format[i];
            // "%%" is one percent sign; any other unknown code stays as written.
            if (format[i] == u'%' && i + 1 < format.size() && format[i + 1] == u'%') ++i;
            continue;
        }
        appendLiteral(pattern, literal);
        literal.clear();
        pattern += replacement;
        ++i;
    }
    appendLiteral(pattern, literal);
    return pattern;
}

icu::DateFormat::EStyle icuStyle(std::int64_t style) {
    switch (style) {
        case DateFormatter::ShortStyle:
            return icu::DateFormat::kShort;
        case DateFormatter::MediumStyle:
            return icu::DateFormat::kMedium;
        case DateFormatter::LongStyle:
            return icu::DateFormat::kLong;
        case DateFormatter::FullStyle:
            return icu::DateFormat::kFull;
        default:
            return icu::DateFormat::kNone;
    }
}

icu::Locale localeOf(const Text& identifier) {
    if (identifier.empty()) return icu::Locale::getDefault();
    std::string name = identifier.toUtf8();
    for (char& c : name)
        if (c == '-') c = '_';
    return icu::Locale(name.c_str());
}

}  // namespace

DateFormatter::DateFormatter() : impl_(std::make_unique<Impl>()) {}
DateFormatter::~DateFormatter() = default;
DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;

void DateFormatter::changed() {
    impl_->formatter.reset();
}

void DateFormatter::setFormatterBehavior(std::int64_t behavior) {
    behavior_ = behavior;
    changed();
}
void DateFormatter::setDateFormat(const Text& format) {
    format_ = format;
    changed();
}
void DateFormatter::setLocale(const Text& identifier) {
    locale_ = identifier;
    changed();
}
void DateFormatter::setDateStyle(std::int64_t style) {
    dateStyle_ = style;
    changed();
}
void DateFormatter::setTimeStyle(std::int64_t style) {
    timeStyle_ = style;
    changed();
}

Text DateFormatter::pattern() const {
    if (!format_.empty()) {
        return behavior_ == Behavior10_0 ? Text(patternOfLegacyFormat(format_.view())) : format_;
    }
    if (icuStyle(dateStyle_) == icu::DateFormat::kNone && icuStyle(timeStyle_) == icu::DateFormat::kNone)
        return Text();
    std::unique_ptr<icu::DateFormat> styled(icu::DateFormat::createDateTimeInstance(
        icuStyle(dateStyle_), icuStyle(timeStyle_), localeOf(locale_)));
    auto* simple = dynamic_cast<icu::SimpleDateFormat*>(styled.get());
    if (simple == nullptr) return Text();
    icu::UnicodeString result;
    return fromIcu(simple->toPattern(result));
}

bool DateFormatter::prepare() const {
    if (impl_->formatter) return true;
    const Text unicodePattern = pattern();
    if (unicodePattern.empty()) return false;
    UErrorCode status = U_ZERO_ERROR;
    auto made = std::make_unique<icu::SimpleDateFormat>(toIcu(unicodePattern), localeOf(locale_), status);
    if (U_FAILURE(status)) return false;
    impl_->formatter = std::move(made);
    return true;
}

Text DateFormatter::stringFromDate(Date date) const {
    if (!prepare()) return Text();
    icu::UnicodeString result;
    impl_->formatter->format(date.timeIntervalSince1970() * 1000.0, result);
    return fromIcu(result);
}

std::optional<Date> DateFormatter::dateFromString(const Text& text) const {
    if (!prepare()) return std::nullopt;
    icu::ParsePosition position(0);
    const icu::UnicodeString source = toIcu(text);
    const UDate milliseconds = impl_->formatter->parse(source, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != source.length()) return std::nullopt;
    return Date::fromTimeIntervalSince1970(milliseconds / 1000.0);
}

}  // namespace bv
