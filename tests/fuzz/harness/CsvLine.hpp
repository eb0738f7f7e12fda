// Harness: splitting one CSV line into fields.
#pragma once

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableString.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

// Splits the input at U+001F into the values of a round trip.
inline std::vector<Text> unitSeparatedValues(const Text& text) {
    std::vector<Text> values(1);
    for (char16_t unit : text.units()) {
        if (unit == 0x1F)
            values.emplace_back();
        else
            values.back() += unit;
    }
    return values;
}

}  // namespace detail

// The input is split as one line: a blank line gives null and changes nothing; a split line gives
// trimmed fields and fixes the field count; an unterminated quote throws RangeException, the error the
// reader defines for it. Then the input cut at U+001F into values, written with appendCSV, must split
// back into the same values (when each is non-empty and already trimmed: the reader trims fields and
// reads an empty quoted field as one quote).
inline void csvLine(const std::uint8_t* data, std::size_t size) {
    silenceAlerts();
    const Text line = Text::fromUtf8(asChars(data, size));
    CSVReader reader;
    std::optional<std::vector<Text>> fields;
    try {
        fields = reader.readRecord(line);
    } catch (const RangeException&) {
        return;
    }
    if (BVNSString::trimmedString(line).empty())
        check(!fields && reader.currentRecord() == 0, "a blank line gives null and changes nothing");
    if (fields) {
        check(!fields->empty() && reader.numFields() == fields->size(), "the first record fixes the count");
        check(reader.currentFields() == *fields, "the fields become the current ones");
        for (const Text& field : *fields)
            check(field == BVNSString::trimmedString(field), "fields are trimmed");
    }

    const std::vector<Text> values = detail::unitSeparatedValues(line);
    for (const Text& value : values)
        if (value.empty() || value != BVNSString::trimmedString(value)) return;
    Text written;
    for (const Text& value : values)
        BVNSMutableString::appendCSV(written, value);
    CSVReader again;
    check(again.readRecord(written) == values, "appendCSV fields split back into the same values");
}

}  // namespace bv::fuzz
