// Text: UTF-8 conversion, case mapping and the three comparison modes, all through ICU.
#include "BrevantCocoaExtensions/platform/Text.hpp"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <ostream>
#include <vector>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

const icu::Normalizer2& nfd() {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status) || normalizer == nullptr)
        throw InternalInconsistencyException("ICU NFD data missing");
    return *normalizer;
}

std::u16string normalizeNfd(std::u16string_view units) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString source(false, units.data(), static_cast<int32_t>(units.size()));
    icu::UnicodeString result = nfd().normalize(source, status);
    if (U_FAILURE(status)) return std::u16string(units);
    return std::u16string(result.getBuffer(), static_cast<std::size_t>(result.length()));
}

bool isNfd(std::u16string_view units) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString source(false, units.data(), static_cast<int32_t>(units.size()));
    return nfd().quickCheck(source, status) == UNORM_YES && U_SUCCESS(status);
}

// Runs an ICU case operation (which reports the needed size when the buffer is short) into a string.
template <class CaseOperation>
std::u16string mapCase(std::u16string_view units, CaseOperation operation) {
    if (units.empty()) return {};
    std::u16string out(units.size() + 8, u'\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        UErrorCode status = U_ZERO_ERROR;
        int32_t length = operation(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()),
                                   reinterpret_cast<const UChar*>(units.data()),
                                   static_cast<int32_t>(units.size()), &status);
        if (status == U_BUFFER_OVERFLOW_ERROR) {
            out.assign(static_cast<std::size_t>(length), u'\0');
            continue;
        }
        if (U_FAILURE(status)) break;
        out.resize(static_cast<std::size_t>(std::max(length, 0)));
        return out;
    }
    return std::u16string(units);
}

std::u16string foldCase(std::u16string_view units) {
    return mapCase(units,
                   [](UChar* out, int32_t capacity, const UChar* in, int32_t length, UErrorCode* status) {
                       return u_strFoldCase(out, capacity, in, length, U_FOLD_CASE_DEFAULT, status);
                   });
}

std::u16string upperCase(std::u16string_view units) {
    return mapCase(units,
                   [](UChar* out, int32_t capacity, const UChar* in, int32_t length, UErrorCode* status) {
                       return u_strToUpper(out, capacity, in, length, "", status);
                   });
}

std::u16string lowerCase(std::u16string_view units) {
    return mapCase(units,
                   [](UChar* out, int32_t capacity, const UChar* in, int32_t length, UErrorCode* status) {
                       return u_strToLower(out, capacity, in, length, "", status);
                   });
}

// The comparison key of a text in a mode: itself, its NFD form, or NFD(fold(NFD)).
std::u16string keyOf(std::u16string_view units, CompareMode mode) {
    switch (mode) {
        case CompareMode::Literal:
            return std::u16string(units);
        case CompareMode::Default:
            return isNfd(units) ? std::u16string(units) : normalizeNfd(units);
        case CompareMode::CaseInsensitive:
            return normalizeNfd(foldCase(normalizeNfd(units)));
    }
    return std::u16string(units);
}

// A haystack turned into its comparison key, remembering where each normalization segment (a run that
// starts with a character having a boundary before it) begins in the key and in the original text, so
// that a match found in the key maps back to whole characters of the original.
struct KeyedText {
    std::u16string key;
    std::vector<std::size_t> keyStarts;   // key offset of each segment, then key.size()
    std::vector<std::size_t> textStarts;  // original offset of each segment, then the text length
};

KeyedText buildKeyed(std::u16string_view units, CompareMode mode) {
    KeyedText keyed;
    const icu::Normalizer2& normalizer = nfd();
    std::size_t segmentStart = 0;
    auto flush = [&](std::size_t end) {
        if (end == segmentStart) return;
        keyed.keyStarts.push_back(keyed.key.size());
        keyed.textStarts.push_back(segmentStart);
        keyed.key += keyOf(units.substr(segmentStart, end - segmentStart), mode);
        segmentStart = end;
    };
    std::size_t i = 0;
    while (i < units.size()) {
        UChar32 c;
        std::size_t next = i;
        U16_NEXT(units.data(), next, units.size(), c);
        if (i != 0 && normalizer.hasBoundaryBefore(c)) flush(i);
        i = next;
    }
    flush(units.size());
    keyed.keyStarts.push_back(keyed.key.size());
    keyed.textStarts.push_back(units.size());
    return keyed;
}

Range findKeyed(const KeyedText& keyed, const std::u16string& needleKey) {
    std::size_t position = keyed.key.find(needleKey);
    while (position != std::u16string::npos) {
        auto start = std::lower_bound(keyed.keyStarts.begin(), keyed.keyStarts.end(), position);
        auto end = std::lower_bound(start, keyed.keyStarts.end(), position + needleKey.size());
        if (start != keyed.keyStarts.end() && *start == position && end != keyed.keyStarts.end() &&
            *end == position + needleKey.size()) {
            std::size_t from = keyed.textStarts[static_cast<std::size_t>(start - keyed.keyStarts.begin())];
            std::size_t to = keyed.textStarts[static_cast<std::size_t>(end - keyed.keyStarts.begin())];
            return Range{from, to - from};
        }
        position = keyed.key.find(needleKey, position + 1);
    }
    return Range{NotFound, 0};
}

bool hasBoundaryAt(std::u16string_view units, std::size_t index) {
    if (index == 0 || index >= units.size()) return true;
    UChar32 c;
    U16_GET(units.data(), 0, index, units.size(), c);
    return nfd().hasBoundaryBefore(c);
}

// Default-mode search when both sides are already in NFD: a literal search whose match must start and
// end on character boundaries (so "e" does not match the first half of "e" + U+0301).
Range findNormalized(std::u16string_view hay, std::u16string_view needle) {
    std::size_t position = hay.find(needle);
    while (position != std::u16string_view::npos) {
        if (hasBoundaryAt(hay, position) && hasBoundaryAt(hay, position + needle.size()))
            return Range{position, needle.size()};
        position = hay.find(needle, position + 1);
    }
    return Range{NotFound, 0};
}

}  // namespace

Text::Text(std::string_view utf8) {
    if (utf8.empty()) return;
    units_.resize(utf8.size());
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(units_.data()), static_cast<int32_t>(units_.size()),
                         &length, utf8.data(), static_cast<int32_t>(utf8.size()), 0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) {
        units_.clear();
        return;
    }
    units_.resize(static_cast<std::size_t>(length));
}

Text Text::fromLatin1(std::string_view bytes) {
    std::u16string units(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), units.begin(),
                   [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
    return Text(std::move(units));
}

std::string Text::toUtf8() const {
    if (units_.empty()) return {};
    std::string out(units_.size() * 3, '\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &length,
                       reinterpret_cast<const UChar*>(units_.data()), static_cast<int32_t>(units_.size()),
                       0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) return {};
    out.resize(static_cast<std::size_t>(length));
    return out;
}

char16_t Text::at(std::size_t index) const {
    if (index >= units_.size())
        throw RangeException("index " + std::to_string(index) + " beyond bounds of text of length " +
                             std::to_string(units_.size()));
    return units_[index];
}

Text Text::substring(std::size_t location, std::size_t length) const {
    if (location > units_.size() || length > units_.size() - location)
        throw RangeException("range {" + std::to_string(location) + ", " + std::to_string(length) +
                             "} beyond bounds of text of length " + std::to_string(units_.size()));
    return Text(units_.substr(location, length));
}

Text Text::substringFrom(std::size_t location) const {
    if (location > units_.size())
        throw RangeException("index " + std::to_string(location) + " beyond bounds of text of length " +
                             std::to_string(units_.size()));
    return Text(units_.substr(location));
}

int Text::compare(const Text& other, CompareMode mode) const {
    if (mode == CompareMode::Literal) {
        int result = units_.compare(other.units_);
        return (result > 0) - (result < 0);
    }
    int result = keyOf(units_, mode).compare(keyOf(other.units_, mode));
    return (result > 0) - (result < 0);
}

Range Text::find(const Text& needle, CompareMode mode, std::size_t from) const {
    if (needle.empty() || from >= units_.size()) return Range{NotFound, 0};
    std::u16string_view hay = std::u16string_view(units_).substr(from);
    Range found{NotFound, 0};
    if (mode == CompareMode::Literal) {
        std::size_t position = hay.find(needle.units_);
        if (position != std::u16string_view::npos) found = Range{position, needle.units_.size()};
    } else if (mode == CompareMode::Default && isNfd(hay) && isNfd(needle.units_)) {
        found = findNormalized(hay, needle.units_);
    } else {
        found = findKeyed(buildKeyed(hay, mode), keyOf(needle.units_, mode));
    }
    if (found.location != NotFound) found.location += from;
    return found;
}

Text Text::uppercased() const {
    return Text(upperCase(units_));
}

Text Text::lowercased() const {
    return Text(lowerCase(units_));
}

Text Text::caseFolded() const {
    return Text(foldCase(units_));
}

Text Text::canonicalDecomposition() const {
    return Text(normalizeNfd(units_));
}

Text Text::comparisonKey(CompareMode mode) const {
    return Text(keyOf(units_, mode));
}

std::ostream& operator<<(std::ostream& out, const Text& text) {
    return out << text.toUtf8();
}

}  // namespace bv
