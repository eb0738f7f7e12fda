// Typed getters over ValueDictionary, its property-list form and the universal-permissions attributes.
#include "BrevantCocoaExtensions/text/BVNSDictionary.hpp"

#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/text/TypedValueInternal.hpp"

namespace bv::BVNSDictionary {

namespace {

const Value* lookUp(const ValueDictionary& self, const Text& key) {
    auto found = self.find(key);
    return found == self.end() ? nullptr : &found->second;
}

}  // namespace

bool boolForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toBool(lookUp(self, key));
}

std::int8_t charForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toChar(lookUp(self, key));
}

std::uint8_t unsignedCharForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toUnsignedChar(lookUp(self, key));
}

std::int16_t shortForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toShort(lookUp(self, key));
}

std::uint16_t unsignedShortForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toUnsignedShort(lookUp(self, key));
}

std::int64_t integerForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toInteger(lookUp(self, key));
}

std::uint64_t unsignedIntegerForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toUnsignedInteger(lookUp(self, key));
}

std::int64_t longForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toLong(lookUp(self, key));
}

std::int64_t longLongForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toLongLong(lookUp(self, key));
}

std::uint64_t unsignedLongForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toUnsignedLong(lookUp(self, key));
}

std::uint64_t unsignedLongLongForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toUnsignedLongLong(lookUp(self, key));
}

float floatForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toFloat(lookUp(self, key));
}

Point pointForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toPoint(lookUp(self, key));
}

Size sizeForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toSize(lookUp(self, key));
}

Range rangeForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toRange(lookUp(self, key));
}

Rect rectForKey(const ValueDictionary& self, const Text& key) {
    return typedValue::toRect(lookUp(self, key));
}

ByteData xmlDataRepresentation(const ValueDictionary& self) {
    return PropertyList::xmlData(self);
}

Text xmlDescription(const ValueDictionary& self) {
    ByteData data = xmlDataRepresentation(self);
    return Text::fromUtf8(std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
}

ValueDictionary universallyWritablePermissions() {
    return ValueDictionary{{Text("NSFilePosixPermissions"), Value(Number::int64(0777))}};
}

}  // namespace bv::BVNSDictionary
