// Typed readings of one Value: the conversion rules behind the dictionary and list getters.
#include "BrevantCocoaExtensions/text/TypedValueInternal.hpp"

#include <iterator>
#include <string>
#include <type_traits>
#include <variant>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"

namespace bv::typedValue {

namespace {

bool isAbsent(const Value* value) {
    return value == nullptr || value->isNull();
}

[[noreturn]] void unsupported(const char* reading, const Value& value) {
    throw UnrecognizedOperationException(std::string(reading) + " sent to a " + kindName(value));
}

// A number converted to T (signed types through the saturating 64-bit reading, unsigned ones through the
// unsigned reading, then wrapped), a text through `fromText` when given, otherwise an exception.
template <class T>
T readInteger(const Value* value, const char* reading, T (*fromText)(const Text&)) {
    if (isAbsent(value)) return 0;
    if (const Number* number = value->number()) {
        if constexpr (std::is_signed_v<T>) {
            return static_cast<T>(number->int64Value());
        } else {
            return static_cast<T>(number->uint64Value());
        }
    }
    if (const Text* text = value->text(); text != nullptr && fromText != nullptr) return fromText(*text);
    unsupported(reading, *value);
}

template <class Structure>
Structure readStructure(const Value* value, const char* reading) {
    if (isAbsent(value)) return Structure{};
    if (const auto* structure = value->get<Structure>()) return *structure;
    unsupported(reading, *value);
}

bool isFalseWord(const Text& text) {
    static const Text kFalseWords[] = {Text("False"), Text("F"), Text("No"), Text("N")};
    for (const Text& word : kFalseWords) {
        if (text.equals(word, CompareMode::CaseInsensitive)) return true;
    }
    return false;
}

}  // namespace

const char* kindName(const Value& value) {
    static constexpr const char* kNames[] = {"null",       "text",  "number", "date",  "data", "list",
                                             "dictionary", "point", "size",   "range", "rect", "object"};
    static_assert(std::variant_size_v<Value::Storage> == std::size(kNames));
    return kNames[value.storage().index()];
}

bool toBool(const Value* value) {
    if (isAbsent(value)) return false;
    if (const Number* number = value->number()) return number->boolValue();
    if (const Text* text = value->text()) {
        if (isFalseWord(*text) || *text == Text("0")) return false;
        return !text->empty();
    }
    return false;
}

std::int8_t toChar(const Value* value) {
    return readInteger<std::int8_t>(value, "charValue", nullptr);
}

std::uint8_t toUnsignedChar(const Value* value) {
    return readInteger<std::uint8_t>(value, "unsignedCharValue", nullptr);
}

std::int16_t toShort(const Value* value) {
    return readInteger<std::int16_t>(value, "shortValue", nullptr);
}

std::uint16_t toUnsignedShort(const Value* value) {
    return readInteger<std::uint16_t>(value, "unsignedShortValue", nullptr);
}

std::int64_t toInteger(const Value* value) {
    return readInteger<std::int64_t>(value, "integerValue", &integerValue);
}

std::uint64_t toUnsignedInteger(const Value* value) {
    if (isAbsent(value)) return 0;
    if (const Number* number = value->number()) return number->uint64Value();
    if (const Text* text = value->text()) return unsignedLongLongValue(*text);
    return 0;
}

std::int64_t toLong(const Value* value) {
    return readInteger<std::int64_t>(value, "longValue", &longValue);
}

std::int64_t toLongLong(const Value* value) {
    return readInteger<std::int64_t>(value, "longLongValue", &longLongValue);
}

std::uint64_t toUnsignedLong(const Value* value) {
    return readInteger<std::uint64_t>(value, "unsignedLongValue", &unsignedLongValue);
}

std::uint64_t toUnsignedLongLong(const Value* value) {
    return readInteger<std::uint64_t>(value, "unsignedLongLongValue", &unsignedLongLongValue);
}

float toFloat(const Value* value) {
    if (isAbsent(value)) return 0.0F;
    if (const Number* number = value->number()) return number->floatValue();
    if (const Text* text = value->text()) return floatValue(*text);
    unsupported("floatValue", *value);
}

Point toPoint(const Value* value) {
    return readStructure<Point>(value, "pointValue");
}

Size toSize(const Value* value) {
    return readStructure<Size>(value, "sizeValue");
}

Range toRange(const Value* value) {
    return readStructure<Range>(value, "rangeValue");
}

Rect toRect(const Value* value) {
    return readStructure<Rect>(value, "rectValue");
}

}  // namespace bv::typedValue
