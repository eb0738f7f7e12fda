// Harness: reading RFC 3339 date-time text and writing it back.
#pragma once

#include <memory>

#include "BrevantCocoaExtensions/dates/RFC3339DateTime.hpp"
#include "BrevantCocoaExtensions/dates/RFC3339ReadingInternal.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// The components as the text gave them: the reader keeps each 32-bit value in the low half of its slot.
inline std::shared_ptr<DateComponents> asWritten(const DateComponents& read) {
    auto plain = std::make_shared<DateComponents>(read);
    for (std::int64_t* slot : {&plain->year, &plain->month, &plain->day, &plain->hour, &plain->minute}) {
        if (*slot != UndefinedDateComponent) *slot = static_cast<std::int32_t>(*slot);
    }
    return plain;
}

// The value with its components as written in the text, written out again.
inline Text rewritten(const RFC3339DateTime& read) {
    RFC3339DateTime plain = read;
    plain.setDateComponents(asWritten(*read.dateComponents()));
    return plain.RFC3339String();
}

// What the writer can say so that the reader reads it back: a full date whose month and day follow a "-"
// without a sign of their own, a second other than -1 (the reader's "no second"), and, with a time, an
// offset of whole minutes under a day.
inline bool writesBack(const RFC3339DateTime& read) {
    const std::shared_ptr<DateComponents> written = asWritten(*read.dateComponents());
    const DateComponents& parts = *written;
    if (parts.year == UndefinedDateComponent || parts.month == UndefinedDateComponent ||
        parts.day == UndefinedDateComponent || parts.month < 0 || parts.day < 0 || parts.second == -1)
        return false;
    const std::int64_t offset = read.offsetSeconds();
    return !read.hasTime() || offset == UndefinedDateComponent ||
           (offset > -86400 && offset < 86400 && offset % 60 == 0);
}

// The straight reader, where it takes a text, gives what the token reader gives.
inline void readersAgree(const Text& text) {
    DateComponents straight, tokens;
    bool straightUniversal = false, tokensUniversal = false;
    std::int64_t straightOffset = 0, tokensOffset = 0;
    if (!RFC3339Reading::readCanonical(text.view(), straight, straightUniversal, straightOffset)) return;
    RFC3339Reading::readTokens(text.view(), tokens, tokensUniversal, tokensOffset);
    check(straight.year == tokens.year && straight.month == tokens.month && straight.day == tokens.day &&
              straight.hour == tokens.hour && straight.minute == tokens.minute &&
              straight.second == tokens.second && straightUniversal == tokensUniversal &&
              straightOffset == tokensOffset,
          "the straight reader gives what the token reader gives");
}

}  // namespace detail

// Any text reads (never fails) into a value with a components record whose instant and description can be
// asked for; a readable date-time, written back, reads to the same components, offset and universal flag.
// The straight reader of the usual texts agrees with the token reader.
inline void rfc3339(const std::uint8_t* data, std::size_t size) {
    detail::readersAgree(Text::fromUtf8(asChars(data, size)));
    const RFC3339DateTime read =
        RFC3339DateTime::dateTimeWithRFC3339String(Text::fromUtf8(asChars(data, size)));
    check(read.dateComponents() != nullptr, "reading always makes a components record");
    (void)read.date();
    (void)read.description();
    check(read.isEqual(read.copyWithZone()), "a copy is equal to its source");
    if (!detail::writesBack(read)) return;

    const Text written = detail::rewritten(read);
    const RFC3339DateTime again = RFC3339DateTime::dateTimeWithRFC3339String(written);
    check(detail::rewritten(again) == written, "written text reads back to the same components");
    check(again.hasTime() == read.hasTime(), "the time survives a round trip");
    // A date alone is written without a zone and reads as universal time. (An hour or minute of -1 lands on
    // the undefined marker, so a text with a zone can still give a value without time.)
    check(again.isUniversalTime() == (read.isUniversalTime() || !read.hasTime()),
          "universal time survives a round trip");
    check(again.offsetSeconds() == (read.hasTime() ? read.offsetSeconds() : 0),
          "the offset survives a round trip");
}

}  // namespace bv::fuzz
