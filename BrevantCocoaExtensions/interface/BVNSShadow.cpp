// Shadow dictionaries and the shadow in force.
#include "BrevantCocoaExtensions/interface/BVNSShadow.hpp"

#include "BrevantCocoaExtensions/interface/BVNSColor.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"

namespace bv::BVNSShadow {

namespace {
Shadow& shadowInForce() {
    static Shadow shadow;
    return shadow;
}

double floatValueFor(const ValueDictionary& attributes, const char* key) {
    const auto found = attributes.find(Text(key));
    if (found == attributes.end() || !found->second.text()) return 0.0;
    return floatValue(*found->second.text());
}

Value wholeNumberText(double value) {
    return Value(Text(std::to_string(static_cast<int>(value))));
}
}  // namespace

Shadow shadowForAttributes(const ValueDictionary& attributes) {
    Shadow shadow;
    const auto color = attributes.find(Text("Color"));
    if (color != attributes.end() && color->second.text()) {
        shadow.color = BVNSColor::colorForARGBHexString(*color->second.text());
    }
    shadow.offset =
        QPointF(floatValueFor(attributes, "HorizontalOffset"), floatValueFor(attributes, "VerticalOffset"));
    shadow.blurRadius = floatValueFor(attributes, "Blur");
    return shadow;
}

ValueDictionary shadowAttributes(const Shadow& self) {
    ValueDictionary attributes;
    attributes[Text("Color")] = self.color ? Value(BVNSColor::ARGBHexString(*self.color)) : Value();
    attributes[Text("HorizontalOffset")] = wholeNumberText(self.offset.x());
    attributes[Text("VerticalOffset")] = wholeNumberText(self.offset.y());
    attributes[Text("Blur")] = wholeNumberText(self.blurRadius);
    return attributes;
}

void reset(Shadow& self) {
    self = Shadow{};
}

void reset() {
    Shadow shadow;
    reset(shadow);
    set(shadow);
}

void set(const Shadow& self) {
    shadowInForce() = self;
}

const Shadow& currentShadow() {
    return shadowInForce();
}

}  // namespace bv::BVNSShadow
