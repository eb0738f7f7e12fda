// Harness: reading XML property lists (user defaults, preferences, dictionaries saved as XML).
#pragma once

#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// A document reads as a value or fails with an error; a value that has a property-list form writes a
// document that reads back into a value writing the very same document (bytes compared, so that NaN,
// which equals nothing, takes part too).
inline void propertyListReading(const std::uint8_t* data, std::size_t size) {
    Error error;
    const std::optional<Value> value = PropertyList::fromXmlData(asChars(data, size), &error);
    if (!value) {
        check(error.code == 3840, "a failed read says why");
        return;
    }
    if (!PropertyList::isValidPropertyList(*value)) return;
    const ByteData written = PropertyList::xmlData(*value);
    const std::optional<Value> again = PropertyList::fromXmlData(written);
    check(again.has_value(), "a written property list reads back");
    check(PropertyList::xmlData(*again) == written, "reading and writing again gives the same document");
}

}  // namespace bv::fuzz
