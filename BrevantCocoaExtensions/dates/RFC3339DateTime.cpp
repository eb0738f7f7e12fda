// RFC 3339 date-time values: the token reader, the writer, and the conversions to and from instants.
#include "BrevantCocoaExtensions/dates/RFC3339DateTime.hpp"

#include <locale.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "BrevantCocoaExtensions/dates/RFC3339ReadingInternal.hpp"
#include "BrevantCocoaExtensions/platform/CharacterSet.hpp"

namespace bv {

namespace {

// --- Reading -------------------------------------------------------------------------------------------

bool isSkipped(char16_t unit) {
    if (unit < 0x80) return unit == u' ' || (unit >= 0x09 && unit <= 0x0D);
    static const CharacterSet whiteSpace = CharacterSet::whitespaceAndNewlineCharacterSet();
    return whiteSpace.contains(unit);
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}
// The four separator sets, each its own type so that the scanner's loop over it is compiled inline.
constexpr auto isDateSeparator = [](char16_t unit) { return unit == u'-'; };
constexpr auto isDateTimeSeparator = [](char16_t unit) {
    return unit == u'T' || unit == u't' || unit == u' ';
};
constexpr auto isTimeSeparator = [](char16_t unit) { return unit == u':'; };
constexpr auto isZoneDesignator = [](char16_t unit) {
    return unit == u'+' || unit == u'-' || unit == u'z' || unit == u'Z';
};

// The upper half of slots that start undefined: integers read from text keep it.
constexpr std::uint64_t kReadFromTextUpper = 0x7FFFFFFF00000000ULL;

// Writes a 32-bit value into the low half of a 64-bit slot, keeping the upper half as it was.
void storeLow32(std::int64_t& slot, std::int32_t value) {
    const std::uint64_t upper = static_cast<std::uint64_t>(slot) & 0xFFFFFFFF00000000ULL;
    slot = static_cast<std::int64_t>(upper | static_cast<std::uint32_t>(value));
}

// A double rounded to float; past the float range it becomes an infinity (never undefined behaviour).
float toFloat(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    if (value > largest) return std::numeric_limits<float>::infinity();
    if (value < -largest) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

// The decimal number in ASCII, correctly rounded to a double whatever the process's locale.
double doubleOfText(const std::string& ascii) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return strtod_l(ascii.c_str(), nullptr, cLocale);
}

// Digits read so far of a decimal number: at most 15 significant ones are exact in a double.
struct Mantissa {
    std::uint64_t value = 0;
    int significantDigits = 0;
    int fractionDigits = 0;
    bool exact = true;

    void add(int digit, bool inFraction) {
        if (value != 0 || digit != 0) ++significantDigits;
        if (significantDigits > 15) exact = false;
        value = value * 10 + static_cast<std::uint64_t>(digit);
        if (inFraction) ++fractionDigits;
    }
    // value / 10^fractionDigits is one correctly rounded division when both are exact doubles.
    [[nodiscard]] bool fast() const { return exact && fractionDigits <= 22; }
    [[nodiscard]] double quotient() const {
        static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
        return static_cast<double>(value) / powers[fractionDigits];
    }
};

// Reads tokens in turn, skipping white space and line ends before each one. A token that does not read
// answers false and leaves nothing consumed worth keeping (reading ends there).
class Scanner {
  public:
    explicit Scanner(std::u16string_view text) : text_(text) {}

    // An optionally signed decimal integer, saturated to 32 bits, into the low half of the slot.
    bool scanInt(std::int64_t& slot) {
        skip();
        std::size_t at = position_;
        const bool negative = at < text_.size() && text_[at] == u'-';
        if (at < text_.size() && (text_[at] == u'-' || text_[at] == u'+')) ++at;
        if (at >= text_.size() || !isDigit(text_[at])) return false;
        std::int64_t magnitude = 0;
        for (; at < text_.size() && isDigit(text_[at]); ++at) {
            if (magnitude <= std::int64_t{1} << 31) magnitude = magnitude * 10 + (text_[at] - u'0');
        }
        const std::int64_t value = negative ? -magnitude : magnitude;
        storeLow32(slot, static_cast<std::int32_t>(
                             std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int32_t>::max())));
        position_ = at;
        return true;
    }

    // One or more consecutive members of a character set; the run is handed back when asked for.
    template <typename Member>
    bool scanRun(Member member, std::u16string_view* run = nullptr) {
        skip();
        std::size_t end = position_;
        while (end < text_.size() && member(text_[end]))
            ++end;
        if (end == position_) return false;
        if (run) *run = text_.substr(position_, end - position_);
        position_ = end;
        return true;
    }

    // A decimal number: optional sign, digits with an optional point (at least one digit), optional
    // exponent; read as a 32-bit float.
    bool scanFloat(float& value) {
        skip();
        std::size_t at = position_;
        const bool negative = at < text_.size() && text_[at] == u'-';
        if (at < text_.size() && (text_[at] == u'-' || text_[at] == u'+')) ++at;
        Mantissa mantissa;
        bool sawDigit = false;
        bool sawPoint = false;
        for (; at < text_.size(); ++at) {
            if (isDigit(text_[at])) {
                sawDigit = true;
                mantissa.add(text_[at] - u'0', sawPoint);
            } else if (text_[at] == u'.' && !sawPoint) {
                sawPoint = true;
            } else {
                break;
            }
        }
        if (!sawDigit) return false;
        const std::size_t end = at + exponentLength(at);
        double number = 0;
        if (end == at && mantissa.fast()) {
            number = negative ? -mantissa.quotient() : mantissa.quotient();
        } else {
            number = doubleOfText(std::string(text_.begin() + static_cast<std::ptrdiff_t>(position_),
                                              text_.begin() + static_cast<std::ptrdiff_t>(end)));
        }
        value = toFloat(number);
        position_ = end;
        return true;
    }

  private:
    void skip() {
        while (position_ < text_.size() && isSkipped(text_[position_]))
            ++position_;
    }

    // The length of "e", "E", an optional sign and at least one digit at `at`; 0 when there is none.
    [[nodiscard]] std::size_t exponentLength(std::size_t at) const {
        if (at >= text_.size() || (text_[at] != u'e' && text_[at] != u'E')) return 0;
        std::size_t end = at + 1;
        if (end < text_.size() && (text_[end] == u'-' || text_[end] == u'+')) ++end;
        const std::size_t digits = end;
        while (end < text_.size() && isDigit(text_[end]))
            ++end;
        return end == digits ? 0 : end - at;
    }

    std::u16string_view text_;
    std::size_t position_ = 0;
};

// A float truncated toward zero to 64 bits, saturating past the range.
std::int64_t truncatedSecond(float seconds) {
    constexpr float limit = 9223372036854775808.0f;  // 2^63
    if (seconds >= limit) return std::numeric_limits<std::int64_t>::max();
    if (seconds < -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(seconds);
}

// --- Writing -------------------------------------------------------------------------------------------

// The two digits of 0 to 99, in pairs.
constexpr char16_t kDigitPairs[] =
    u"00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    u"40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    u"8081828384858687888990919293949596979899";

constexpr std::uint64_t kPart = 100000000;  // numbers are written in parts below 10^8

// Exactly eight digits of a value below 10^8, in 32-bit arithmetic.
void eightDigits(std::uint32_t value, char16_t* out) {
    for (int at = 6; at >= 0; at -= 2) {
        const std::uint32_t pair = value % 100 * 2;
        value /= 100;
        out[at] = kDigitPairs[pair];
        out[at + 1] = kDigitPairs[pair + 1];
    }
}

// How many digits a value below 10^8 has (1 for 0).
int shortLength(std::uint32_t value) {
    int length = 1;
    for (std::uint32_t limit = 10; length < 8 && value >= limit; limit *= 10)
        ++length;
    return length;
}

// The `length` digits of a value below 10^8, written from the last one backwards.
void shortDigits(std::uint32_t value, int length, char16_t* out) {
    for (int at = length - 1; at >= 0; --at) {
        out[at] = static_cast<char16_t>(u'0' + value % 10);
        value /= 10;
    }
}

// Components read from text hold 0x7FFFFFFF above their 32-bit value: 9223372032559808512 + (0 to 2^32 - 1),
// up to 2^63 itself. All of them start "922337203" and end in ten digits of 2559808512 plus the low half.
constexpr std::uint64_t kReadFromText = kReadFromTextUpper;

void readFromTextDigits(std::uint64_t magnitude, char16_t* out) {
    const std::uint64_t low = magnitude - kReadFromText;
    if (low < 10000) {  // the usual case: 2559808512 + low is "25598" and the five digits of 8512 + low
        static constexpr char16_t fixed[] = u"92233720325598";
        std::copy_n(fixed, 14, out);
        const auto five = static_cast<std::uint32_t>(8512 + low);
        out[14] = static_cast<char16_t>(u'0' + five / 10000);
        const std::uint32_t four = five % 10000;
        std::copy_n(kDigitPairs + four / 100 * 2, 2, out + 15);
        std::copy_n(kDigitPairs + four % 100 * 2, 2, out + 17);
        return;
    }
    static constexpr char16_t prefix[] = u"922337203";
    std::copy_n(prefix, 9, out);
    const std::uint64_t rest = 2559808512ULL + (magnitude - kReadFromText);  // below 10^10
    const auto pair = static_cast<std::size_t>(rest / kPart) * 2;
    out[9] = kDigitPairs[pair];
    out[10] = kDigitPairs[pair + 1];
    eightDigits(static_cast<std::uint32_t>(rest % kPart), out + 11);
}

// How many decimal digits a 64-bit magnitude has.
int decimalLength(std::uint64_t magnitude) {
    if (magnitude >= kReadFromText) return 19;
    if (magnitude < kPart) return shortLength(static_cast<std::uint32_t>(magnitude));
    const std::uint64_t high = magnitude / kPart;
    if (high < kPart) return shortLength(static_cast<std::uint32_t>(high)) + 8;
    return shortLength(static_cast<std::uint32_t>(high / kPart)) + 16;
}

// The decimal digits of a 64-bit magnitude, most significant first, `length` of them (decimalLength). The
// number is cut into parts below 10^8, written independently (the components read from text have 19 digits).
void decimalDigits(std::uint64_t magnitude, int length, char16_t* out) {
    if (magnitude >= kReadFromText) return readFromTextDigits(magnitude, out);
    if (length <= 8) return shortDigits(static_cast<std::uint32_t>(magnitude), length, out);
    const std::uint64_t high = magnitude / kPart;
    eightDigits(static_cast<std::uint32_t>(magnitude % kPart), out + length - 8);
    if (length <= 16) return shortDigits(static_cast<std::uint32_t>(high), length - 8, out);
    eightDigits(static_cast<std::uint32_t>(high % kPart), out + length - 16);
    shortDigits(static_cast<std::uint32_t>(high / kPart), length - 16, out);
}

// Builds the written text in place, in room enough for six 20-character numbers and the separators.
class Writer {
  public:
    static constexpr std::size_t kCapacity = 160;

    void put(char16_t unit) { units_[size_++] = unit; }
    void put(std::u16string_view text) {
        for (char16_t unit : text)
            put(unit);
    }

    // printf's "%0<width>ld": the sign counts toward the width, zeros go after it.
    void number(std::int64_t value, int width) {
        if (value >= 0 && value < 100 && width == 2) {  // seconds and offsets: one digit pair
            std::copy_n(kDigitPairs + value * 2, 2, units_ + size_);
            size_ += 2;
            return;
        }
        if (static_cast<std::uint64_t>(value) - kReadFromText < 10000) {  // read from text: always 19 digits
            readFromTextDigits(static_cast<std::uint64_t>(value), units_ + size_);
            size_ += 19;
            return;
        }
        const std::uint64_t magnitude =
            value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
        const int length = decimalLength(magnitude);
        if (value < 0) put(u'-');
        for (int pad = width - length - (value < 0 ? 1 : 0); pad > 0; --pad)
            put(u'0');
        decimalDigits(magnitude, length, units_ + size_);
        size_ += static_cast<std::size_t>(length);
    }

    // "Z", "+hh:mm" / "-hh:mm" (hours mod 24), or "-00:00" for an unknown offset.
    void zoneSuffix(bool universal, std::int64_t offset) {
        if (universal) return put(u'Z');
        if (offset == UndefinedDateComponent) return put(u"-00:00");
        const std::uint64_t magnitude =
            offset < 0 ? 0 - static_cast<std::uint64_t>(offset) : static_cast<std::uint64_t>(offset);
        put(offset < 0 ? u'-' : u'+');
        number(static_cast<std::int64_t>(magnitude / 3600 % 24), 2);
        put(u':');
        number(static_cast<std::int64_t>(magnitude / 60 % 60), 2);
    }

    [[nodiscard]] Text text() const { return Text(std::u16string(units_, size_)); }

  private:
    char16_t units_[kCapacity];
    std::size_t size_ = 0;
};

const DateComponents& zeroComponents() {
    static const DateComponents zeros{0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    return zeros;
}

std::shared_ptr<TimeZone> universalZone() {
    return TimeZone::timeZoneWithName("Universal");
}

}  // namespace

namespace RFC3339Reading {

// The token reader: white space skipped before each token, each separator a run of one or more of its
// characters; the first step that fails ends reading and what was read so far is kept.
void readTokens(std::u16string_view text, DateComponents& components, bool& universal, std::int64_t& offset) {
    float seconds = -1.0f;
    std::u16string_view sign;
    std::int64_t offsetHours = 0;
    std::int64_t offsetMinutes = 0;
    Scanner scanner(text);
    (void)(scanner.scanInt(components.year) && scanner.scanRun(isDateSeparator) &&
           scanner.scanInt(components.month) && scanner.scanRun(isDateSeparator) &&
           scanner.scanInt(components.day) && scanner.scanRun(isDateTimeSeparator) &&
           scanner.scanInt(components.hour) && scanner.scanRun(isTimeSeparator) &&
           scanner.scanInt(components.minute) && scanner.scanRun(isTimeSeparator) &&
           scanner.scanFloat(seconds) && scanner.scanRun(isZoneDesignator, &sign) &&
           scanner.scanInt(offsetHours) && scanner.scanRun(isTimeSeparator) &&
           scanner.scanInt(offsetMinutes));

    // An unordered comparison (a NaN) counts as "equal to -1": the second stays undefined.
    if (seconds > -1.0f || seconds < -1.0f) components.second = truncatedSecond(seconds);

    // A missing designator counts as "Z", deliberately.
    universal = sign.empty() || (sign.size() == 1 && (sign[0] == u'Z' || sign[0] == u'z'));
    offset = 0;
    if (!universal) {
        offset = offsetMinutes * 60 + offsetHours * 3600;
        if (sign == u"-") offset = offset == 0 ? UndefinedDateComponent : -offset;
    }
}

// The usual texts, "2008-01-02T10:11:12Z" and "2008-01-02T10:11:12.250+05:30" (a fraction of a second or
// none, nothing before or after), read in one straight pass to exactly what the token reader gives for them;
// false for any other text, which the token reader then reads.
bool readCanonical(std::u16string_view text, DateComponents& components, bool& universal,
                   std::int64_t& offset) {
    const std::size_t length = text.size();
    if (length < 20) return false;
    const auto digit = [text](std::size_t at) { return static_cast<std::uint32_t>(text[at]) - u'0'; };
    for (std::size_t at : {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18}) {
        if (digit(at) > 9) return false;
    }
    if (text[4] != u'-' || text[7] != u'-' || (text[10] != u'T' && text[10] != u't') || text[13] != u':' ||
        text[16] != u':')
        return false;
    const auto two = [&digit](std::size_t at) {
        return static_cast<std::int64_t>(digit(at) * 10 + digit(at + 1));
    };

    // Seconds as the token reader reads them: a decimal number made a 32-bit float, then truncated.
    Mantissa seconds;
    seconds.add(static_cast<int>(digit(17)), false);
    seconds.add(static_cast<int>(digit(18)), false);
    std::size_t zone = 19;
    if (text[zone] == u'.') {
        for (++zone; zone < length && digit(zone) <= 9; ++zone)
            seconds.add(static_cast<int>(digit(zone)), true);
        if (seconds.fractionDigits == 0 || !seconds.fast() || zone >= length) return false;
    }

    std::int64_t zoneHours = 0;
    std::int64_t zoneMinutes = 0;
    const char16_t designator = text[zone];
    if (designator == u'Z' || designator == u'z') {
        if (length != zone + 1) return false;
    } else {
        if ((designator != u'+' && designator != u'-') || length != zone + 6 || digit(zone + 1) > 9 ||
            digit(zone + 2) > 9 || text[zone + 3] != u':' || digit(zone + 4) > 9 || digit(zone + 5) > 9)
            return false;
        zoneHours = two(zone + 1);
        zoneMinutes = two(zone + 4);
    }

    // Integers read from text land in the low half of slots that start undefined (0x7FFFFFFF above).
    constexpr auto upper = static_cast<std::int64_t>(kReadFromTextUpper);
    components.year = upper | (two(0) * 100 + two(2));
    components.month = upper | two(5);
    components.day = upper | two(8);
    components.hour = upper | two(11);
    components.minute = upper | two(14);
    components.second = truncatedSecond(toFloat(seconds.quotient()));
    universal = designator == u'Z' || designator == u'z';
    offset = zoneMinutes * 60 + zoneHours * 3600;
    if (designator == u'-') offset = offset == 0 ? UndefinedDateComponent : -offset;
    return true;
}

}  // namespace RFC3339Reading

// --- Construction --------------------------------------------------------------------------------------

RFC3339DateTime::RFC3339DateTime(const RFC3339DateTime& other)
    : dateComponents_(other.dateComponents_),
      offsetSeconds_(other.offsetSeconds_),
      isUniversalTime_(other.isUniversalTime_),
      timeZone_(other.timeZone()) {}

RFC3339DateTime& RFC3339DateTime::operator=(const RFC3339DateTime& other) {
    if (this != &other) *this = RFC3339DateTime(other);
    return *this;
}

RFC3339DateTime RFC3339DateTime::dateTimeWithRFC3339String(const Text& text) {
    return initWithRFC3339String(text);
}

RFC3339DateTime RFC3339DateTime::dateTimeWithDateTimeZone(Date date, std::shared_ptr<TimeZone> zone) {
    return initWithDateTimeZone(date, std::move(zone));
}

RFC3339DateTime RFC3339DateTime::initWithRFC3339String(const Text& text) {
    RFC3339DateTime value;
    value.setFromRFC3339String(text);
    return value;
}

RFC3339DateTime RFC3339DateTime::initWithDateTimeZone(Date date, std::shared_ptr<TimeZone> zone) {
    RFC3339DateTime value;
    value.setFromDateTimeZone(date, std::move(zone));
    return value;
}

// --- Reading and splitting -----------------------------------------------------------------------------

void RFC3339DateTime::setFromRFC3339String(const Text& text) {
    auto components = std::make_shared<DateComponents>();
    bool universal = false;
    std::int64_t offset = 0;
    if (!RFC3339Reading::readCanonical(text.view(), *components, universal, offset))
        RFC3339Reading::readTokens(text.view(), *components, universal, offset);
    dateComponents_ = std::move(components);
    timeZone_ = nullptr;
    isUniversalTime_ = universal;
    offsetSeconds_ = offset;
}

void RFC3339DateTime::setFromDateTimeZone(Date date, std::shared_ptr<TimeZone> zone) {
    Calendar calendar;
    if (zone) calendar.setTimeZone(zone);
    dateComponents_ = std::make_shared<DateComponents>(calendar.componentsFromDate(date));
    isUniversalTime_ = false;
    std::int64_t offset = UndefinedDateComponent;
    if (zone) {
        offset = zone->secondsFromGMTForDate(date);
        const std::shared_ptr<TimeZone> universal = universalZone();
        if (offset == 0 && universal && zone->isEqualToTimeZone(*universal)) isUniversalTime_ = true;
    }
    offsetSeconds_ = offset;
    timeZone_ = std::move(zone);
}

// --- Writing and instants ------------------------------------------------------------------------------

Text RFC3339DateTime::RFC3339String() const {
    const DateComponents& parts = components();
    Writer out;
    out.number(parts.year, 4);
    out.put(u'-');
    out.number(parts.month, 2);
    out.put(u'-');
    out.number(parts.day, 2);
    if (hasTime()) {
        out.put(u'T');
        out.number(parts.hour, 2);
        out.put(u':');
        out.number(parts.minute, 2);
        out.put(u':');
        out.number(parts.second, 2);
        out.zoneSuffix(isUniversalTime_, offsetSeconds_);
    }
    return out.text();
}

std::optional<Date> RFC3339DateTime::date() const {
    if (!dateComponents_) return std::nullopt;
    Calendar calendar = this->calendar();
    if (hasTime()) return calendar.dateFromComponents(*dateComponents_);
    DateComponents noon;
    noon.year = dateComponents_->year;
    noon.month = dateComponents_->month;
    noon.day = dateComponents_->day;
    noon.hour = 12;
    noon.minute = 0;
    noon.second = 0;
    calendar.setTimeZone(universalZone());
    return calendar.dateFromComponents(noon);
}

Calendar RFC3339DateTime::calendar() const {
    Calendar calendar;
    if (std::shared_ptr<TimeZone> zone = timeZone()) calendar.setTimeZone(std::move(zone));
    return calendar;
}

// --- Zone and time -------------------------------------------------------------------------------------

std::shared_ptr<TimeZone> RFC3339DateTime::timeZone() const {
    if (timeZone_) return timeZone_;
    if (isUniversalTime_) return universalZone();
    if (offsetSeconds_ != UndefinedDateComponent) return TimeZone::timeZoneForSecondsFromGMT(offsetSeconds_);
    return nullptr;
}

void RFC3339DateTime::setTimeZone(std::shared_ptr<TimeZone> zone) {
    timeZone_ = std::move(zone);
    if (!timeZone_) {
        offsetSeconds_ = UndefinedDateComponent;
        return;
    }
    // Without an instant the offset is the zone's at the reference date 2001-01-01.
    const Date instant = date().value_or(Date::fromTimeIntervalSinceReferenceDate(0));
    offsetSeconds_ = timeZone_->secondsFromGMTForDate(instant);
}

void RFC3339DateTime::setTimeZoneWithOffsetSeconds(std::shared_ptr<TimeZone> zone,
                                                   std::int64_t offsetSeconds) {
    timeZone_ = std::move(zone);
    offsetSeconds_ = offsetSeconds;
}

bool RFC3339DateTime::hasTime() const {
    const DateComponents& parts = components();
    return parts.hour != UndefinedDateComponent && parts.minute != UndefinedDateComponent;
}

void RFC3339DateTime::setHasTime(bool hasTime) {
    if (hasTime == this->hasTime()) return;
    const std::int64_t timeValue = hasTime ? 0 : UndefinedDateComponent;
    if (dateComponents_) {
        dateComponents_->hour = timeValue;
        dateComponents_->minute = timeValue;
        dateComponents_->second = timeValue;
    }
    offsetSeconds_ = UndefinedDateComponent;
    isUniversalTime_ = false;
    if (!hasTime) timeZone_ = nullptr;
}

// --- Comparison and description ------------------------------------------------------------------------

bool RFC3339DateTime::doesDateComponentsEqualDateComponents(
    const std::shared_ptr<DateComponents>& first, const std::shared_ptr<DateComponents>& second) const {
    const DateComponents& a = first ? *first : zeroComponents();
    const DateComponents& b = second ? *second : zeroComponents();
    return a.era == b.era && a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second && a.week == b.week && a.weekday == b.weekday &&
           a.weekdayOrdinal == b.weekdayOrdinal;
}

bool RFC3339DateTime::isEqual(const RFC3339DateTime& other) const {
    if (this == &other) return true;
    return offsetSeconds_ == other.offsetSeconds_ && isUniversalTime_ == other.isUniversalTime_ &&
           timeZone() == other.timeZone() &&
           doesDateComponentsEqualDateComponents(dateComponents_, other.dateComponents_);
}

Text RFC3339DateTime::description() const {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(this));
    return Text("RFC3339DateTime ") + Text(address) + Text(": {") + RFC3339String() + Text("}");
}

const DateComponents& RFC3339DateTime::components() const noexcept {
    return dateComponents_ ? *dateComponents_ : zeroComponents();
}

}  // namespace bv
