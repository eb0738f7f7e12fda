// BVNSString: operations on any Text. See the header for the deliberate oddities kept here.
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

#include "BrevantCocoaExtensions/text/BVNSArray.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string_view>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"

namespace bv::BVNSString {

namespace {

// The 8-bit character append: only the low byte of the code unit survives, read as Latin-1.
constexpr char16_t narrowTo8Bit(char16_t unit) {
    return static_cast<char16_t>(unit & 0xFF);
}

// Trims the code units for which inSet holds from both ends.
template <class Predicate>
Text trimWhere(const Text& self, Predicate inSet) {
    const std::u16string& units = self.units();
    std::size_t begin = 0;
    std::size_t end = units.size();
    while (begin < end && inSet(units[begin]))
        ++begin;
    while (end > begin && inSet(units[end - 1]))
        --end;
    return Text(std::u16string_view(units).substr(begin, end - begin));
}

Text trimSet(const Text& self, const CharacterSet& set) {
    return trimWhere(self, [&set](char16_t unit) { return set.contains(unit); });
}

// Every literal occurrence of `target` replaced by `replacement`, left to right, not overlapping.
Text replaceOccurrences(const Text& self, std::u16string_view target, std::u16string_view replacement) {
    std::u16string_view source = self.view();
    std::u16string out;
    out.reserve(source.size());
    std::size_t from = 0;
    for (std::size_t at = source.find(target); at != std::u16string_view::npos;
         at = source.find(target, from)) {
        out.append(source.substr(from, at - from));
        out.append(replacement);
        from = at + target.size();
    }
    out.append(source.substr(from));
    return Text(std::move(out));
}

// The value of a base-36 digit (either the text "0".."9" or "A".."Z"), else the not-found index.
std::uint64_t base36DigitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'A' && unit <= u'Z') return unit - u'A' + 10;
    return NotFound;
}

// --- Entity references --------------------------------------------------------------------------------

struct NamedEntity {
    std::u16string_view reference;
    char16_t character;
};
constexpr NamedEntity kNamedEntities[] = {
    {u"&amp;", u'&'}, {u"&lt;", u'<'}, {u"&gt;", u'>'}, {u"&quot;", u'"'}, {u"&apos;", u'\''},
};

// The escape of one character, or an empty view when it needs none.
constexpr std::u16string_view entityFor(char16_t unit) {
    switch (unit) {
        case u'&':
            return u"&amp;";
        case u'<':
            return u"&lt;";
        case u'>':
            return u"&gt;";
        case u'"':
            return u"&quot;";
        case u'\'':
            return u"&apos;";
        default:
            return {};
    }
}

int digitValue(char16_t unit, bool hexadecimal) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (!hexadecimal) return -1;
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return -1;
}

// Decodes "&#65;" or "&#x41;" at `at` (which holds "&#"), appending the character; answers the length
// consumed, or 0 when it is not a well-formed reference to a code point up to U+10FFFF.
std::size_t decodeCharacterReference(std::u16string_view source, std::size_t at, std::u16string& out) {
    std::size_t i = at + 2;
    const bool hexadecimal = i < source.size() && source[i] == u'x';
    if (hexadecimal) ++i;
    const std::size_t digitsStart = i;
    char32_t value = 0;
    for (int digit = 0; i < source.size() && (digit = digitValue(source[i], hexadecimal)) >= 0; ++i) {
        value = value * (hexadecimal ? 16 : 10) + static_cast<char32_t>(digit);
        if (value > 0x10FFFF) return 0;
    }
    if (i == digitsStart || i >= source.size() || source[i] != u';') return 0;
    if (value <= 0xFFFF) {
        out.push_back(static_cast<char16_t>(value));
    } else {
        value -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (value >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (value & 0x3FF)));
    }
    return i + 1 - at;
}

// Decodes the reference at `at` (which holds "&"); answers the length consumed, 0 when there is none.
std::size_t decodeReference(std::u16string_view source, std::size_t at, std::u16string& out) {
    std::u16string_view rest = source.substr(at);
    for (const NamedEntity& entity : kNamedEntities) {
        if (rest.starts_with(entity.reference)) {
            out.push_back(entity.character);
            return entity.reference.size();
        }
    }
    if (rest.size() > 1 && rest[1] == u'#') return decodeCharacterReference(source, at, out);
    return 0;
}

void appendHexReference(std::u16string& out, char16_t unit) {
    constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    out.append(u"&#x");
    if (unit >= 16) out.push_back(kDigits[unit >> 4]);
    out.push_back(kDigits[unit & 0xF]);
    out.push_back(u';');
}

// strtol base 16 on the code units between "&#x" and ";" (at most 6), keeping the low 16 bits. Code
// units outside ASCII stop the conversion like any other non-hexadecimal character.
char16_t hexReferenceValue(std::u16string_view digits) {
    char ascii[8] = {};
    for (std::size_t i = 0; i < digits.size() && i < 7; ++i)
        ascii[i] = digits[i] < 0x80 ? static_cast<char>(digits[i]) : '!';
    const long value = std::strtol(ascii, nullptr, 16);
    return static_cast<char16_t>(static_cast<unsigned long>(value) & 0xFFFF);
}

// The process-wide cursor of nextStringChar. Atomic only so that misuse from two threads garbles the
// iterations instead of being undefined behaviour; it is not a lock.
std::atomic<std::uint64_t> gCharacterCursor{0};

}  // namespace

// --- Construction and tests ---------------------------------------------------------------------------

std::optional<Text> stringWithDataUsingEncoding(const ByteData& data, TextEncoding encoding) {
    return decodeText(data, encoding);
}

Text stringWithUnichar(char16_t unit) {
    return Text::fromUnit(unit);
}

bool isEmptyString(const Text& self) {
    return self.empty();
}

bool isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters(const Text& self) {
    const CharacterSet set = CharacterSet::whitespaceAndNewlineCharacterSet();
    return std::all_of(self.units().begin(), self.units().end(),
                       [&set](char16_t unit) { return set.contains(unit); });
}

bool isNullOrEmptyString(const std::optional<Text>& text) {
    return !text || isEmptyString(*text);
}

bool isNullOrEmptyAfterTrimmingWhitespaceAndNewlineCharactersFromString(const std::optional<Text>& text) {
    return !text || isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters(*text);
}

char16_t lastCharacter(const Text& self) {
    return self.empty() ? char16_t{0} : self.units().back();
}

Text lastPathComponentWithoutExtension(const Text& self) {
    std::u16string_view path = self.view();
    while (path.size() > 1 && path.back() == u'/')
        path.remove_suffix(1);
    if (path == u"/") return Text(path);
    std::u16string_view component = path.substr(path.find_last_of(u'/') + 1);  // npos + 1 is 0
    std::size_t dot = component.find_last_of(u'.');
    return Text(component.substr(0, dot));
}

// --- Searching and counting ---------------------------------------------------------------------------

bool containsString(const Text& self, const Text& other) {
    return self.contains(other, CompareMode::Default);
}

bool containsStringCaseInsensitiveCompare(const Text& self, const Text& other, bool caseInsensitive) {
    if (!caseInsensitive) return containsString(self, other);
    return self.uppercased().contains(other.uppercased(), CompareMode::Default);
}

bool startsWithStringCaseInsensitiveCompare(const Text& self, const Text& other, bool caseInsensitive) {
    if (!caseInsensitive) return !other.empty() && self.view().starts_with(other.view());
    return self.find(other, CompareMode::CaseInsensitive).location == 0;
}

bool startsWithString(const Text& self, const Text& other) {
    return startsWithStringCaseInsensitiveCompare(self, other, false);
}

std::uint64_t occurrencesOfString(const Text& self, const Text& other) {
    if (other.empty()) return 0;
    std::u16string_view source = self.view();
    std::uint64_t count = 0;
    for (std::size_t at = source.find(other.view()); at != std::u16string_view::npos;
         at = source.find(other.view(), at + other.length()))
        ++count;
    return count;
}

std::vector<Text> componentsSeparatedByStrings(const Text& self, const std::vector<Text>& separators) {
    std::vector<Text> parts{self};
    for (const Text& separator : separators) {
        if (separator.empty()) continue;  // the empty text is never found, so nothing splits
        const std::u16string_view target = separator.view();
        std::vector<Text> split;
        split.reserve(parts.size());
        for (const Text& part : parts) {
            const std::u16string_view source = part.view();
            std::size_t from = 0;
            for (std::size_t at = source.find(target); at != std::u16string_view::npos;
                 at = source.find(target, from)) {
                split.emplace_back(source.substr(from, at - from));
                from = at + target.size();
            }
            split.emplace_back(source.substr(from));
        }
        parts = std::move(split);
    }
    return parts;
}

// --- Trimming -----------------------------------------------------------------------------------------

Text stringTrimmedByCharactersInString(const Text& self, const Text& characters) {
    return trimSet(self, CharacterSet::fromCharactersInText(characters));
}

Text stringByTrimmingWhitespaceAndNewlineCharactersAndCharactersInString(const Text& self,
                                                                         const Text& characters) {
    CharacterSet set = CharacterSet::whitespaceAndNewlineCharacterSet();
    set.addCharactersInText(characters);
    return trimSet(self, set);
}

// "\r\n" is already in the white space and line break set, so the plain set serves.
Text trimmedString(const Text& self) {
    return trimSet(self, CharacterSet::whitespaceAndNewlineCharacterSet());
}

Text trimmedCSVString(const Text& self) {
    static const CharacterSet kCSVTrimSet = [] {
        CharacterSet set = CharacterSet::whitespaceAndNewlineCharacterSet();
        set.addCharactersInText(Text(",\"\r\n"));
        return set;
    }();
    return trimSet(self, kCSVTrimSet);
}

// --- Removing and replacing characters ----------------------------------------------------------------

Text stringByRemovingCharactersInSet(const Text& self, bool remove, const CharacterSet& set) {
    std::u16string out;
    out.reserve(self.length());
    for (char16_t unit : self.units()) {
        if (set.contains(unit) != remove) out.push_back(narrowTo8Bit(unit));
    }
    return Text(std::move(out));
}

Text stringByRemovingCharactersInSet(const Text& self, const CharacterSet& set) {
    return stringByRemovingCharactersInSet(self, true, set);
}

Text stringByRemovingCharactersOtherThanCharactersInSet(const Text& self, const CharacterSet& set) {
    return stringByRemovingCharactersInSet(self, false, set);
}

Text stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpaces(const Text& self,
                                                                         bool preserveWhiteSpaces) {
    return stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpacesPreservePunctuationPreserveSymbols(
        self, preserveWhiteSpaces, false, false);
}

Text stringByRemovingNonAlphaNumericCharactersWhilePreservingWhiteSpacesPreservePunctuationPreserveSymbols(
    const Text& self, bool preserveWhiteSpaces, bool preservePunctuation, bool preserveSymbols) {
    CharacterSet kept = CharacterSet::alphanumericCharacterSet();
    if (preserveWhiteSpaces) {
        kept.formUnion(CharacterSet::whitespaceCharacterSet());
        kept.add(u'\n');  // only the line feed: carriage returns go even when white space stays
    }
    if (preservePunctuation) kept.formUnion(CharacterSet::punctuationCharacterSet());
    if (preserveSymbols) kept.formUnion(CharacterSet::symbolCharacterSet());
    return stringByRemovingCharactersOtherThanCharactersInSet(self, kept);
}

Text cleanedString(const Text& self) {
    return stringByRemovingCharactersInSet(self, CharacterSet::whitespaceAndNewlineCharacterSet());
}

Text stringByRemovingLeadingOccurrencesOfCharacter(const Text& self, char16_t character) {
    std::u16string out = self.units();
    std::erase(out, character);
    return Text(std::move(out));
}

Text stringByRemovingCharacterAtIndex(const Text& self, std::uint64_t index) {
    if (index >= self.length())
        throw RangeException("index " + std::to_string(index) + " beyond bounds of text of length " +
                             std::to_string(self.length()));
    std::u16string out = self.units();
    out.erase(static_cast<std::size_t>(index), 1);
    return Text(std::move(out));
}

std::optional<Text> stringByStrippingSubstring(const std::optional<Text>& self, const Text& substring) {
    if (!self) return std::nullopt;
    if (self->empty() || !self->contains(substring, CompareMode::Default)) return self;
    return replaceOccurrences(*self, substring.view(), {});
}

Text stringByStrippingHyphens(const Text& self) {
    return *stringByStrippingSubstring(self, Text("-"));
}

Text reversedString(const Text& self) {
    std::vector<Text> units = charStrings(self);
    std::u16string out;
    out.reserve(units.size());
    for (auto unit = units.rbegin(); unit != units.rend(); ++unit)
        out.append(unit->units());
    return Text(std::move(out));
}

std::vector<Text> charStrings(const Text& self) {
    std::vector<Text> units;
    units.reserve(self.length());
    while (std::optional<Text> unit = nextStringChar(self))
        units.push_back(std::move(*unit));
    return units;
}

std::optional<Text> nextStringChar(const Text& self) {
    const std::uint64_t cursor = gCharacterCursor.load(std::memory_order_relaxed);
    if (cursor == self.length()) {
        gCharacterCursor.store(0, std::memory_order_relaxed);
        return std::nullopt;
    }
    Text unit = Text::fromUnit(self.at(static_cast<std::size_t>(cursor)));  // throws past the end
    gCharacterCursor.store(cursor + 1, std::memory_order_relaxed);
    return unit;
}

// --- Escaping -----------------------------------------------------------------------------------------

Text stringByEscapingQuotes(const Text& self) {
    return replaceOccurrences(self, u"\"", u"\\\"");
}

Text stringByUnescapingQuotes(const Text& self) {
    return replaceOccurrences(self, u"\\\"", u"\"");
}

Text stringByEscapingEntities(const Text& self) {
    std::u16string out;
    out.reserve(self.length() + self.length() / 8);
    for (char16_t unit : self.units()) {
        std::u16string_view entity = entityFor(unit);
        if (entity.empty()) {
            out.push_back(unit);
        } else {
            out.append(entity);
        }
    }
    return Text(std::move(out));
}

Text stringByUnescapingEntities(const Text& self) {
    std::u16string_view source = self.view();
    std::u16string out;
    out.reserve(source.size());
    std::size_t from = 0;
    for (std::size_t at = source.find(u'&'); at != std::u16string_view::npos; at = source.find(u'&', from)) {
        out.append(source.substr(from, at - from));
        std::size_t consumed = decodeReference(source, at, out);
        if (consumed == 0) {
            out.push_back(u'&');
            consumed = 1;
        }
        from = at + consumed;
    }
    out.append(source.substr(from));
    return Text(std::move(out));
}

Text stringByEscapingEntitiesAndControlCharacters(const Text& self) {
    std::u16string out;
    out.reserve(self.length() + self.length() / 8);
    for (char16_t unit : self.units()) {
        std::u16string_view entity = entityFor(unit);
        if (!entity.empty()) {
            out.append(entity);
        } else if (unit < 32) {
            appendHexReference(out, unit);
        } else {
            out.push_back(narrowTo8Bit(unit));
        }
    }
    return Text(std::move(out));
}

// Each round looks for the first "&#x" and the first ";" of the whole work text. Instead of searching
// from the start again, the text is kept as a settled prefix (`out`) and the rest of `work` from `next`:
// the settled prefix holds neither a ";" nor any part of a "&#x", so only the decoded unit and the two
// units before it can start a new marker. Those are put back in front of the rest, which keeps the
// whole operation linear while giving exactly the results of searching from the start each time.
Text stringByUnescapingEntitiesAndControlCharacters(const Text& self) {
    constexpr std::u16string_view kMarker = u"&#x";
    constexpr std::size_t kLongestSpan = 10;  // marker, up to 6 digits and ";"
    std::u16string work = stringByUnescapingEntities(self).units();
    std::u16string out;
    out.reserve(work.size());
    std::size_t next = 0;
    for (;;) {
        const std::u16string_view rest = std::u16string_view(work).substr(next);
        const std::size_t marker = rest.find(kMarker);
        if (marker == std::u16string_view::npos) break;
        // The settled prefix holds no ";", so the first ";" of the whole text is the first one in rest.
        const std::size_t semicolon = rest.substr(0, marker + kLongestSpan).find(u';');
        if (semicolon == std::u16string_view::npos) break;  // none at all, or the span would be 11 or more
        if (semicolon < marker)
            throw RangeException("\";\" at " + std::to_string(out.size() + semicolon) +
                                 " before \"&#x\" at " + std::to_string(out.size() + marker));
        const char16_t decoded = hexReferenceValue(rest.substr(marker + 3, semicolon - marker - 3));
        out.append(rest.substr(0, marker));
        // Replace the span by the decoded unit and step back over up to two settled units, all written
        // into the consumed span (at least 4 units long).
        std::size_t write = next + semicolon;
        work[write] = decoded;
        for (int i = 0; i < 2 && !out.empty(); ++i) {
            work[--write] = out.back();
            out.pop_back();
        }
        next = write;
    }
    out.append(std::u16string_view(work).substr(next));
    return Text(std::move(out));
}

// --- Fixed forms --------------------------------------------------------------------------------------

Text stringEnclosedInBraces(const Text& self) {
    return Text("{") + self + Text("}");
}

Text stringByAppendingColon(const Text& self) {
    return self + Text(":");
}

Text stringByAppendingEllipses(const Text& self) {
    return self + Text::fromUnit(u'\u2026');
}

Text stringByAppendingPluralBasedOnCount(const Text& self, std::int64_t count) {
    const char16_t last = lastCharacter(self);
    if (count == 1 || last == u's' || last == u'S') return self;
    return self + Text("s");
}

Text applescriptFileReference(const Text& self) {
    std::u16string out = self.units();
    std::replace(out.begin(), out.end(), u'/', u':');
    return Text(std::move(out));
}

Text stringURLBeginningWithHTTP(const Text& self) {
    if (self.contains(Text("http://"), CompareMode::CaseInsensitive) ||
        self.contains(Text("https://"), CompareMode::CaseInsensitive))
        return self;
    return Text("http://") + self;
}

// --- Numbers from text --------------------------------------------------------------------------------

bool boolValue(const Text& self) {
    return bv::boolValue(self);
}
std::int64_t longValue(const Text& self) {
    return bv::longValue(self);
}
std::uint64_t unsignedLongValue(const Text& self) {
    return bv::unsignedLongValue(self);
}
std::int64_t longLongValue(const Text& self) {
    return bv::longLongValue(self);
}
std::uint64_t unsignedLongLongValue(const Text& self) {
    return bv::unsignedLongLongValue(self);
}

// --- Base 36 ------------------------------------------------------------------------------------------

std::vector<Text> base36() {
    std::vector<Text> digits;
    digits.reserve(36);
    for (char16_t unit = u'0'; unit <= u'9'; ++unit)
        digits.push_back(Text::fromUnit(unit));
    for (char16_t unit = u'A'; unit <= u'Z'; ++unit)
        digits.push_back(Text::fromUnit(unit));
    return digits;
}

Text randomBase36Char() {
    const std::vector<Text> digits = base36();
    return *BVNSArray::randomObject(ValueArray(digits.begin(), digits.end()))->text();
}

Text base36StringForValue(std::uint64_t value) {
    const std::vector<Text> digits = base36();
    Text leastSignificantFirst;
    for (; value != 0; value /= 36)
        leastSignificantFirst.append(digits[value % 36]);
    return reversedString(leastSignificantFirst);
}

std::int64_t valueForBase36String(const Text& text) {
    const Text digits = reversedString(text).uppercased();
    std::uint64_t sum = 0;
    std::uint64_t weight = 1;  // 36^i, exact up to i = 12; wraps beyond like the sum
    for (char16_t unit : digits.units()) {
        sum += base36DigitValue(unit) * weight;
        weight *= 36;
    }
    return static_cast<std::int64_t>(sum);
}

// --- Symbols ------------------------------------------------------------------------------------------

Text dashSymbol() {
    return Text::fromUnit(u'\u2212');
}
Text writingSymbol() {
    return Text::fromUnit(u'\u270D');
}
Text smileFaceSymbol() {
    return Text::fromUnit(u'\u263A');
}
Text boxSymbol() {
    return Text::fromUnit(u'\u2610');
}
Text checkSymbol() {
    return Text::fromUnit(u'\u2714');
}
Text crossSymbol() {
    return Text::fromUnit(u'\u2718');
}
Text heartSymbol() {
    return Text::fromUnit(u'\u2661');
}

// --- Base64 text --------------------------------------------------------------------------------------

std::optional<ByteData> newDecodedDataWithNewLines(const Text& self, bool ignoreNewLines) {
    return base64::decode(self.view(), ignoreNewLines);
}

std::optional<ByteData> decodedDataWithNewLines(const Text& self, bool ignoreNewLines) {
    return newDecodedDataWithNewLines(self, ignoreNewLines);
}

std::optional<ByteData> newDecodedData(const Text& self) {
    return newDecodedDataWithNewLines(self, false);
}

std::optional<ByteData> decodedData(const Text& self) {
    return newDecodedData(self);
}

std::optional<Text> decodedString(const Text& self) {
    std::optional<ByteData> data = decodedData(self);
    if (!data) return std::nullopt;
    return decodeText(*data, TextEncoding::UTF8);
}

// --- Files --------------------------------------------------------------------------------------------

bool writeToUniversallyWritableFileAtomicallyEncodingError(const Text& self, const Text& path,
                                                           bool atomically, TextEncoding encoding,
                                                           Error* error) {
    const std::string filePath = path.toUtf8();
    bool written = false;
    if (std::optional<ByteData> bytes = encodeText(self, encoding)) {
        written = writeBytesToFile(filePath, bytes->data(), bytes->size(), atomically, error);
    } else {
        Error::report(error, Error{"NSCocoaErrorDomain", 517,
                                   Text("The file couldn\xE2\x80\x99t be saved using the text encoding."),
                                   Text("The text holds characters that the encoding cannot represent.")});
    }
    (void)setPosixPermissions(filePath, 0777);  // a failure here is silent by design
    return written;
}

}  // namespace bv::BVNSString
