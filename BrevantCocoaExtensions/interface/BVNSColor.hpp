// BVNSColor: colours as hexadecimal text, exact colour comparison and the "Crayons" colour list, on QColor.
//
// Pitfalls callers rely on:
//   - colorForARGBHexString reads alpha first: "80FF0000" is half-transparent red, and a six-digit RGB text
//     is not accepted (a text shorter than eight digits throws RangeException).
//   - The writers truncate each component × 255 to an integer, so 0.999 writes "FE", never rounding up.
//   - RGBHexString and hexStringWithoutPrefix write no "#" and no alpha.
#pragma once

#include <QColor>
#include <QImage>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSColor {

// The colour of an "AARRGGBB" text: white space, line ends and "#" around it are trimmed; each two-digit
// piece is read as base 16 up to its first non-digit (an unreadable piece gives 0). Null for a null or blank
// text; RangeException when fewer than eight characters remain.
[[nodiscard]] std::optional<QColor> colorForARGBHexString(const std::optional<Text>& string);
// "RRGGBB" in upper-case hexadecimal, each component × 255 truncated.
[[nodiscard]] Text RGBHexString(const QColor& self);
// "AARRGGBB" the same way, alpha first.
[[nodiscard]] Text ARGBHexString(const QColor& self);
// RGBHexString of the calibrated RGB form (the same RGB form here), without a prefix.
[[nodiscard]] Text hexStringWithoutPrefix(const QColor& self);
// An image of that size filled with the colour.
[[nodiscard]] QImage imageWithSize(const QColor& self, const Size& size);
// False for null; otherwise red, green and blue (and alpha when asked) compared as 32-bit floats for exact
// equality.
[[nodiscard]] bool isSameColorAsIncludeAlpha(const QColor& self, const std::optional<QColor>& color,
                                             bool includeAlpha);
// The colour with that key ("Cantaloupe", "Sky", "Licorice", ...) in the "Crayons" list; null when absent.
[[nodiscard]] std::optional<QColor> crayonColorNamed(const Text& key);
// The keys of the "Crayons" list, in the list's order.
[[nodiscard]] std::vector<Text> crayonColorKeys();

}  // namespace bv::BVNSColor
