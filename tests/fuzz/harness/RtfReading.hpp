// Fuzz harness: bytes read as RTF. Damaged input gives null; styled text that reads is written again, the
// written RTF is ASCII, and it reads back to the same styled text (so the writer can say all the reader
// makes, and the reader takes all the writer says).
#pragma once

#include <algorithm>

#include "BrevantCocoaExtensions/interface/RTF.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "Common.hpp"

namespace bv::fuzz {

inline void rtfReading(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = [] {
        setLogSink([](const std::string&) {});  // damaged input logs a line each time
        return true;
    }();
    (void)quiet;
    const std::optional<AttributedString> text = RTF::read(asChars(data, size));
    if (!text) return;
    const std::string written = RTF::write(*text);
    check(std::all_of(written.begin(), written.end(), [](char byte) { return (byte & 0x80) == 0; }),
          "written RTF is ASCII");
    const std::optional<AttributedString> back = RTF::read(written);
    check(back.has_value(), "written RTF reads");
    check(*back == *text, "written RTF reads back to the same styled text");
}

}  // namespace bv::fuzz
