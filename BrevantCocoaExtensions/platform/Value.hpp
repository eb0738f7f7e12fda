// bv::Value: the dynamically typed value used where operations look at kinds (typed getters, mode
// statistics, property lists), with its collections.
//
// A Value is null, a Text, a Number (which keeps its kind: boolean, 8/16/32/64-bit signed or unsigned
// integer, 32/64-bit float), a Date, ByteData, a ValueArray, a ValueDictionary, a structure (Point, Size,
// Range, Rect) or a shared Object. Values compare and hash by content the way the platform's isEqual:
// does: numbers by numeric value across kinds (1 == 1.0 == true), texts code unit by code unit, objects
// by identity.
//
//   ValueArray       an ordered list of Values (std::vector)
//   ValueDictionary  a map from Text keys to Values, ordered by key code units (std::map)
//   ValueCountedSet  distinct Values with occurrence counts, enumerated in first-insertion order
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "BrevantCocoaExtensions/platform/Date.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class Value;
class Object;

// A contiguous byte buffer.
using ByteData = std::vector<std::uint8_t>;
using ValueArray = std::vector<Value>;
using ValueDictionary = std::map<Text, Value>;

struct Point {
    double x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};
struct Size {
    double width = 0, height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};
struct Rect {
    Point origin;
    Size size;
    friend bool operator==(const Rect&, const Rect&) = default;
};

// A number that keeps its kind. Conversions between kinds follow C: truncation toward zero from floating
// values (saturating instead of undefined when out of range; NaN reads as 0), wrap-around to narrower
// integers.
class Number {
  public:
    enum class Kind { Bool, Int8, UInt8, Int16, UInt16, Int32, UInt32, Int64, UInt64, Float, Double };

    Number() = default;
    [[nodiscard]] static Number boolean(bool value) { return Number(Kind::Bool, std::int64_t{value}); }
    [[nodiscard]] static Number int8(std::int8_t value) { return Number(Kind::Int8, std::int64_t{value}); }
    [[nodiscard]] static Number uint8(std::uint8_t value) { return Number(Kind::UInt8, std::int64_t{value}); }
    [[nodiscard]] static Number int16(std::int16_t value) { return Number(Kind::Int16, std::int64_t{value}); }
    [[nodiscard]] static Number uint16(std::uint16_t value) {
        return Number(Kind::UInt16, std::int64_t{value});
    }
    [[nodiscard]] static Number int32(std::int32_t value) { return Number(Kind::Int32, std::int64_t{value}); }
    [[nodiscard]] static Number uint32(std::uint32_t value) {
        return Number(Kind::UInt32, std::int64_t{value});
    }
    [[nodiscard]] static Number int64(std::int64_t value) { return Number(Kind::Int64, value); }
    [[nodiscard]] static Number uint64(std::uint64_t value);
    [[nodiscard]] static Number float32(float value);
    [[nodiscard]] static Number float64(double value);

    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] bool isBool() const noexcept { return kind_ == Kind::Bool; }
    [[nodiscard]] bool isFloating() const noexcept { return kind_ == Kind::Float || kind_ == Kind::Double; }
    [[nodiscard]] bool isUnsigned64() const noexcept { return kind_ == Kind::UInt64; }

    [[nodiscard]] bool boolValue() const noexcept;  // true when not zero
    [[nodiscard]] std::int64_t int64Value() const noexcept;
    [[nodiscard]] std::uint64_t uint64Value() const noexcept;
    [[nodiscard]] double doubleValue() const noexcept;
    [[nodiscard]] float floatValue() const noexcept { return static_cast<float>(doubleValue()); }
    template <class Integer>
    [[nodiscard]] Integer as() const noexcept {  // wraps to the narrower type, as a C cast does
        return static_cast<Integer>(uint64Value());
    }

    // The number as text: "1"/"0" for booleans, decimal for integers, %.7g for floats, %.16g for doubles.
    [[nodiscard]] Text stringValue() const;
    // Numeric comparison across kinds: -1, 0 or 1 (NaN sorts below everything).
    [[nodiscard]] int compare(const Number& other) const noexcept;
    friend bool operator==(const Number& a, const Number& b) noexcept { return a.compare(b) == 0; }
    [[nodiscard]] std::size_t hash() const noexcept;

  private:
    Number(Kind kind, std::int64_t value) : kind_(kind), integer_(value) {}
    Kind kind_ = Kind::Int32;
    std::int64_t integer_ = 0;  // signed kinds, booleans, and UInt64 stored as its bit pattern
    double floating_ = 0.0;     // Float and Double
};

// Behaviour shared by the library's objects that live inside Values by identity: a description and
// key-value access (the list controller and sort helpers read values for keys through it).
class Object {
  public:
    virtual ~Object() = default;
    [[nodiscard]] virtual Text description() const;
    // The value under a key, or nullopt when the object has no such key.
    [[nodiscard]] virtual std::optional<Value> valueForKey(const Text& key) const;
    // Stores a value under a key; the default throws UnrecognizedOperationException.
    virtual void setValueForKey(const Value& value, const Text& key);
};

class Value {
  public:
    using Storage = std::variant<std::monostate, Text, Number, Date, ByteData, ValueArray, ValueDictionary,
                                 Point, Size, Range, Rect, std::shared_ptr<Object>>;

    Value() = default;
    Value(std::nullptr_t) {}                                 // NOLINT: implicit by design
    Value(Text text) : storage_(std::move(text)) {}          // NOLINT
    Value(const char* utf8) : storage_(Text(utf8)) {}        // NOLINT
    Value(Number number) : storage_(number) {}               // NOLINT
    Value(Date date) : storage_(date) {}                     // NOLINT
    Value(ByteData data) : storage_(std::move(data)) {}      // NOLINT
    Value(ValueArray array) : storage_(std::move(array)) {}  // NOLINT
    Value(ValueDictionary dictionary);                       // NOLINT
    Value(Point point) : storage_(point) {}                  // NOLINT
    Value(Size size) : storage_(size) {}                     // NOLINT
    Value(Range range) : storage_(range) {}                  // NOLINT
    Value(Rect rect) : storage_(rect) {}                     // NOLINT
    Value(std::shared_ptr<Object> object);                   // NOLINT
    // Convenience number constructors keep the C++ kind: bool, int (32-bit), int64, uint64, double.
    Value(bool value) : storage_(Number::boolean(value)) {}               // NOLINT
    Value(int value) : storage_(Number::int32(value)) {}                  // NOLINT
    Value(long value) : storage_(Number::int64(value)) {}                 // NOLINT
    Value(long long value) : storage_(Number::int64(value)) {}            // NOLINT
    Value(unsigned long value) : storage_(Number::uint64(value)) {}       // NOLINT
    Value(unsigned long long value) : storage_(Number::uint64(value)) {}  // NOLINT
    Value(double value) : storage_(Number::float64(value)) {}             // NOLINT

    [[nodiscard]] bool isNull() const noexcept { return std::holds_alternative<std::monostate>(storage_); }
    [[nodiscard]] const Storage& storage() const noexcept { return storage_; }
    [[nodiscard]] Storage& storage() noexcept { return storage_; }

    template <class T>
    [[nodiscard]] bool is() const noexcept {
        return std::holds_alternative<T>(storage_);
    }
    // The held T, or nullptr when the value holds another kind.
    template <class T>
    [[nodiscard]] const T* get() const noexcept {
        return std::get_if<T>(&storage_);
    }
    template <class T>
    [[nodiscard]] T* get() noexcept {
        return std::get_if<T>(&storage_);
    }
    [[nodiscard]] const Text* text() const noexcept { return get<Text>(); }
    [[nodiscard]] const Number* number() const noexcept { return get<Number>(); }
    [[nodiscard]] const ValueArray* array() const noexcept { return get<ValueArray>(); }
    [[nodiscard]] const ValueDictionary* dictionary() const noexcept { return get<ValueDictionary>(); }
    [[nodiscard]] std::shared_ptr<Object> object() const;

    // The value as text, as the platform's description does: a text is itself, a number its
    // stringValue, null "<null>", lists "(a, b)", dictionaries "{k = v; }", data "<0a1b>".
    [[nodiscard]] Text description() const;

    friend bool operator==(const Value& a, const Value& b);
    [[nodiscard]] std::size_t hash() const noexcept;

  private:
    Storage storage_;
};

// Distinct values with an occurrence count of at least 1 each, enumerated in first-insertion order.
class ValueCountedSet {
  public:
    struct Entry {
        Value value;
        std::size_t count = 0;
    };

    ValueCountedSet() = default;
    explicit ValueCountedSet(const ValueArray& values);

    // Adds one occurrence (a new value goes to the end of the enumeration order).
    void add(const Value& value, std::size_t occurrences = 1);
    // Removes one occurrence; the value leaves the set when its count reaches 0.
    void remove(const Value& value);
    // The count of a value, 0 when absent.
    [[nodiscard]] std::size_t countFor(const Value& value) const;
    [[nodiscard]] bool contains(const Value& value) const { return countFor(value) != 0; }
    // The number of distinct values.
    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }
    [[nodiscard]] bool empty() const noexcept { return entries_.empty(); }
    // The distinct values with their counts, in first-insertion order.
    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return entries_; }
    [[nodiscard]] ValueArray allObjects() const;

  private:
    struct ValueHash {
        std::size_t operator()(const Value& value) const noexcept { return value.hash(); }
    };
    std::vector<Entry> entries_;
    std::unordered_map<Value, std::size_t, ValueHash> index_;  // value -> position in entries_
};

}  // namespace bv

template <>
struct std::hash<bv::Value> {
    std::size_t operator()(const bv::Value& value) const noexcept { return value.hash(); }
};
