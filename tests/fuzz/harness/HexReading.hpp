// Harness: reading hexadecimal text into bytes, strict and skipping other characters.
#pragma once

#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "Common.hpp"

namespace bv::fuzz {

namespace detail {

inline int nibble(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return -1;
}

// The reading rules written out slowly: digits pair up in order; with `ignore`, anything else is skipped
// and an odd last digit dropped; without it, anything else or an odd digit count gives nothing.
inline std::optional<ByteData> referenceHex(const std::u16string& units, bool ignore) {
    ByteData bytes;
    int pending = -1;
    for (char16_t unit : units) {
        const int value = nibble(unit);
        if (value < 0) {
            if (!ignore) return std::nullopt;
            continue;
        }
        if (pending < 0) {
            pending = value;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(pending * 16 + value));
            pending = -1;
        }
    }
    if (pending >= 0 && !ignore) return std::nullopt;
    return bytes;
}

}  // namespace detail

// The input, read as UTF-8, is read in both modes and compared with the reference; the input bytes
// written as hexadecimal (either case) read back as themselves.
inline void hexReading(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    const std::optional<ByteData> strict = BVNSData::initWithHexStringIgnoreOtherCharacters(text, false);
    const std::optional<ByteData> lenient = BVNSData::initWithHexStringIgnoreOtherCharacters(text, true);
    check(strict == detail::referenceHex(text.units(), false), "strict reading follows the rules");
    check(lenient == detail::referenceHex(text.units(), true), "lenient reading follows the rules");
    check(BVNSData::dataWithHexString(text) == lenient, "dataWithHexString is the lenient reading");

    const ByteData bytes(data, data + size);
    for (bool uppercase : {true, false}) {
        const Text hex = BVNSData::hexStringRepresentationUppercase(bytes, uppercase);
        check(hex.length() == 2 * size, "two digits per byte");
        check(BVNSData::initWithHexStringIgnoreOtherCharacters(hex, false) == bytes,
              "hexadecimal reads back");
    }
}

}  // namespace bv::fuzz
