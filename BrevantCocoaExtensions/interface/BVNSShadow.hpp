// BVNSShadow: drop shadows stored as dictionaries, and the shadow in force for drawing.
//
// The dictionary holds texts: "Color" (the colour as ARGBHexString), "HorizontalOffset", "VerticalOffset"
// and "Blur" (whole numbers, "%d"). Offsets and radius are truncated to whole numbers when written.
#pragma once

#include <QColor>
#include <QPointF>
#include <optional>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// A drop shadow: colour (none draws no shadow), offset and blur radius.
struct Shadow {
    std::optional<QColor> color;
    QPointF offset;
    double blurRadius = 0.0;
    friend bool operator==(const Shadow&, const Shadow&) = default;
};

namespace BVNSShadow {

// A new shadow from a dictionary: colour through colorForARGBHexString, offsets and blur from the float
// values of their texts (a missing key reads as 0, a missing colour as none).
[[nodiscard]] Shadow shadowForAttributes(const ValueDictionary& attributes);
// The four keys of the shadow.
[[nodiscard]] ValueDictionary shadowAttributes(const Shadow& self);
// Offset (0, 0), blur 0, no colour.
void reset(Shadow& self);
// Makes a reset shadow the one in force, clearing any shadow set before.
void reset();
// Makes the shadow the one in force for the library's drawing.
void set(const Shadow& self);
// The shadow in force (a reset shadow until one is set).
[[nodiscard]] const Shadow& currentShadow();

}  // namespace BVNSShadow
}  // namespace bv
