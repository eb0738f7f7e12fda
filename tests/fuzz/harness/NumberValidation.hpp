// Harness: checking typed text as a number or a fraction, with its alert.
#pragma once

#include <unicode/uchar.h>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// The input, read as UTF-8, is checked with and without fractions. An alert comes exactly with a false
// answer; a slash or leading white space never passes without fractions; what passes without fractions
// passes with them.
inline void numberValidation(const std::uint8_t* data, std::size_t size) {
    const Text text = Text::fromUtf8(asChars(data, size));
    bool answers[2] = {false, false};
    for (const bool fractions : {false, true}) {
        int alerts = 0;
        const auto previous = AlertCenter::setPresenter([&](const Alert&) { return ++alerts, 0; });
        answers[fractions] = BVUtilities::validateDoubleMessageAllowFractions(text, Text("m"), fractions);
        AlertCenter::setPresenter(previous);
        check(alerts == (answers[fractions] ? 0 : 1), "one alert exactly when the number is invalid");
    }
    check(!text.empty() || (answers[0] && answers[1]), "an empty text is valid");
    check(!text.contains(Text("/")) || !answers[0], "a slash needs fractions");
    check(text.empty() || !u_isUWhiteSpace(text[0]) || !answers[1], "leading white space is invalid");
    check(!answers[0] || answers[1], "a plain number is also valid with fractions");
}

}  // namespace bv::fuzz
