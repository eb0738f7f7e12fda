// Typed setters on ValueDictionary: numbers of a kind, structures, and numbers written as text.
#include "BrevantCocoaExtensions/text/BVNSMutableDictionary.hpp"

#include <cinttypes>
#include <cstdio>

namespace bv::BVNSMutableDictionary {

namespace {

void store(ValueDictionary& self, Value value, const Text& key) {
    self.insert_or_assign(key, std::move(value));
}

template <class... Arguments>
void storeFormatted(ValueDictionary& self, const Text& key, const char* format, Arguments... arguments) {
    char buffer[512];  // "%f" of the largest float needs 46 characters
    std::snprintf(buffer, sizeof buffer, format, arguments...);
    store(self, Text(buffer), key);
}

}  // namespace

void setBoolForKey(ValueDictionary& self, bool value, const Text& key) {
    store(self, Number::boolean(value), key);
}

void setCharForKey(ValueDictionary& self, std::int8_t value, const Text& key) {
    store(self, Number::int8(value), key);
}

void setUnsignedCharForKey(ValueDictionary& self, std::uint8_t value, const Text& key) {
    store(self, Number::uint8(value), key);
}

void setShortForKey(ValueDictionary& self, std::int16_t value, const Text& key) {
    store(self, Number::int16(value), key);
}

void setUnsignedShortForKey(ValueDictionary& self, std::uint16_t value, const Text& key) {
    store(self, Number::uint16(value), key);
}

void setIntForKey(ValueDictionary& self, std::int32_t value, const Text& key) {
    store(self, Number::int32(value), key);
}

void setUnsignedIntForKey(ValueDictionary& self, std::uint32_t value, const Text& key) {
    store(self, Number::uint32(value), key);
}

void setIntegerForKey(ValueDictionary& self, std::int64_t value, const Text& key) {
    store(self, Number::int64(value), key);
}

void setUnsignedIntegerForKey(ValueDictionary& self, std::uint64_t value, const Text& key) {
    store(self, Number::uint64(value), key);
}

void setLongForKey(ValueDictionary& self, std::int64_t value, const Text& key) {
    store(self, Number::int64(value), key);
}

void setUnsignedLongForKey(ValueDictionary& self, std::uint64_t value, const Text& key) {
    store(self, Number::uint64(value), key);
}

void setLongLongForKey(ValueDictionary& self, std::int64_t value, const Text& key) {
    store(self, Number::int64(value), key);
}

void setUnsignedLongLongForKey(ValueDictionary& self, std::uint64_t value, const Text& key) {
    store(self, Number::uint64(value), key);
}

void setFloatForKey(ValueDictionary& self, float value, const Text& key) {
    store(self, Number::float32(value), key);
}

void setPointForKey(ValueDictionary& self, Point value, const Text& key) {
    store(self, value, key);
}

void setSizeForKey(ValueDictionary& self, Size value, const Text& key) {
    store(self, value, key);
}

void setRangeForKey(ValueDictionary& self, Range value, const Text& key) {
    store(self, value, key);
}

void setRectForKey(ValueDictionary& self, Rect value, const Text& key) {
    store(self, value, key);
}

void setUnsignedCharToStringForKey(ValueDictionary& self, std::uint8_t value, const Text& key) {
    store(self, Text::fromUnit(value), key);  // "%c": the byte itself, read as Latin-1
}

void setShortToStringForKey(ValueDictionary& self, std::int16_t value, const Text& key) {
    storeFormatted(self, key, "%hi", value);
}

void setUnsignedShortToStringForKey(ValueDictionary& self, std::uint16_t value, const Text& key) {
    storeFormatted(self, key, "%hu", value);
}

void setIntToStringForKey(ValueDictionary& self, std::int32_t value, const Text& key) {
    storeFormatted(self, key, "%" PRId32, value);
}

void setUnsignedIntToStringForKey(ValueDictionary& self, std::uint32_t value, const Text& key) {
    storeFormatted(self, key, "%" PRIu32, value);
}

void setIntegerToStringForKey(ValueDictionary& self, std::int64_t value, const Text& key) {
    storeFormatted(self, key, "%" PRId64, value);
}

void setUnsignedIntegerToStringForKey(ValueDictionary& self, std::uint64_t value, const Text& key) {
    storeFormatted(self, key, "%" PRIu64, value);
}

void setLongToStringForKey(ValueDictionary& self, std::int64_t value, const Text& key) {
    setIntToStringForKey(self, static_cast<std::int32_t>(value), key);  // keeps the low 32 bits on purpose
}

void setUnsignedLongToStringForKey(ValueDictionary& self, std::uint64_t value, const Text& key) {
    setUnsignedIntToStringForKey(self, static_cast<std::uint32_t>(value), key);  // low 32 bits on purpose
}

void setFloatToStringForKey(ValueDictionary& self, float value, const Text& key) {
    storeFormatted(self, key, "%f", static_cast<double>(value));
}

}  // namespace bv::BVNSMutableDictionary
