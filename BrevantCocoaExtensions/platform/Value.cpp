// Numbers, values and the counted set: conversions, descriptions, equality and hashing.
#include "BrevantCocoaExtensions/platform/Value.hpp"

#include <cmath>
#include <cstdio>
#include <limits>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

// A double truncated toward zero into 64 bits, saturating instead of undefined behaviour.
std::int64_t truncateToInt64(double value) {
    if (std::isnan(value)) return 0;
    if (value >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
    if (value <= -9223372036854775808.0) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

std::uint64_t truncateToUint64(double value) {
    if (std::isnan(value)) return 0;
    if (value < 0) return static_cast<std::uint64_t>(truncateToInt64(value));  // wraps as C does on x86
    if (value >= 18446744073709551616.0) return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(value);
}

std::size_t mix(std::size_t hashSoFar, std::size_t value) {
    return hashSoFar ^ (value + 0x9e3779b97f4a7c15ULL + (hashSoFar << 6) + (hashSoFar >> 2));
}

std::string hexBytes(const ByteData& data) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string out = "<";
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (i != 0 && i % 4 == 0) out += ' ';
        out += kDigits[data[i] >> 4];
        out += kDigits[data[i] & 0xF];
    }
    return out + ">";
}

}  // namespace

// --- Number ------------------------------------------------------------------------------------------

Number Number::uint64(std::uint64_t value) {
    return Number(Kind::UInt64, static_cast<std::int64_t>(value));
}

Number Number::float32(float value) {
    Number number(Kind::Float, 0);
    number.floating_ = static_cast<double>(value);
    return number;
}

Number Number::float64(double value) {
    Number number(Kind::Double, 0);
    number.floating_ = value;
    return number;
}

bool Number::boolValue() const noexcept {
    return isFloating() ? floating_ != 0.0 : integer_ != 0;
}

std::int64_t Number::int64Value() const noexcept {
    return isFloating() ? truncateToInt64(floating_) : integer_;
}

std::uint64_t Number::uint64Value() const noexcept {
    return isFloating() ? truncateToUint64(floating_) : static_cast<std::uint64_t>(integer_);
}

double Number::doubleValue() const noexcept {
    if (isFloating()) return floating_;
    if (kind_ == Kind::UInt64) return static_cast<double>(static_cast<std::uint64_t>(integer_));
    return static_cast<double>(integer_);
}

Text Number::stringValue() const {
    char buffer[64];
    switch (kind_) {
        case Kind::Float:
            std::snprintf(buffer, sizeof buffer, "%.7g", floating_);
            break;
        case Kind::Double:
            std::snprintf(buffer, sizeof buffer, "%.16g", floating_);
            break;
        case Kind::UInt64:
            std::snprintf(buffer, sizeof buffer, "%llu", static_cast<unsigned long long>(integer_));
            break;
        default:
            std::snprintf(buffer, sizeof buffer, "%lld", static_cast<long long>(integer_));
            break;
    }
    return Text(buffer);
}

int Number::compare(const Number& other) const noexcept {
    if (isFloating() || other.isFloating()) {
        double a = doubleValue();
        double b = other.doubleValue();
        if (std::isnan(a) || std::isnan(b)) return std::isnan(a) ? (std::isnan(b) ? 0 : -1) : 1;
        return (a > b) - (a < b);
    }
    bool aBig = kind_ == Kind::UInt64 && integer_ < 0;  // above INT64_MAX
    bool bBig = other.kind_ == Kind::UInt64 && other.integer_ < 0;
    if (aBig || bBig) {
        if (aBig != bBig) return aBig ? 1 : -1;
        std::uint64_t a = static_cast<std::uint64_t>(integer_),
                      b = static_cast<std::uint64_t>(other.integer_);
        return (a > b) - (a < b);
    }
    return (integer_ > other.integer_) - (integer_ < other.integer_);
}

std::size_t Number::hash() const noexcept {
    // Integral values hash as their integer so that 1, 1.0 and true hash alike.
    if (isFloating()) {
        double integral;
        if (std::modf(floating_, &integral) == 0.0 && floating_ >= -9.2e18 && floating_ <= 9.2e18)
            return std::hash<std::int64_t>{}(static_cast<std::int64_t>(floating_));
        return std::hash<double>{}(floating_);
    }
    return std::hash<std::int64_t>{}(integer_);
}

// --- Object ------------------------------------------------------------------------------------------

Text Object::description() const {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "<Object: %p>", static_cast<const void*>(this));
    return Text(buffer);
}

std::optional<Value> Object::valueForKey(const Text&) const {
    return std::nullopt;
}

void Object::setValueForKey(const Value&, const Text& key) {
    throw UnrecognizedOperationException("this object is not key value coding-compliant for the key " +
                                         key.toUtf8());
}

// --- Value -------------------------------------------------------------------------------------------

Value::Value(ValueDictionary dictionary) : storage_(std::move(dictionary)) {}

Value::Value(std::shared_ptr<Object> object) {
    if (object) storage_ = std::move(object);
}

std::shared_ptr<Object> Value::object() const {
    const auto* held = get<std::shared_ptr<Object>>();
    return held != nullptr ? *held : nullptr;
}

Text Value::description() const {
    struct Describe {
        Text operator()(std::monostate) const { return Text("<null>"); }
        Text operator()(const Text& text) const { return text; }
        Text operator()(const Number& number) const { return number.stringValue(); }
        Text operator()(const Date& date) const {
            char buffer[64];
            std::snprintf(buffer, sizeof buffer, "%.3f", date.timeIntervalSince1970());
            return Text(buffer);
        }
        Text operator()(const ByteData& data) const { return Text(hexBytes(data)); }
        Text operator()(const ValueArray& array) const {
            Text out("(");
            for (std::size_t i = 0; i < array.size(); ++i) {
                if (i != 0) out += Text(", ");
                out += array[i].description();
            }
            return out + Text(")");
        }
        Text operator()(const ValueDictionary& dictionary) const {
            Text out("{");
            for (const auto& [key, value] : dictionary)
                out += key + Text(" = ") + value.description() + Text("; ");
            return out + Text("}");
        }
        Text operator()(const Point& p) const { return format("{%g, %g}", p.x, p.y); }
        Text operator()(const Size& s) const { return format("{%g, %g}", s.width, s.height); }
        Text operator()(const Range& r) const {
            char buffer[64];
            std::snprintf(buffer, sizeof buffer, "{%llu, %llu}", static_cast<unsigned long long>(r.location),
                          static_cast<unsigned long long>(r.length));
            return Text(buffer);
        }
        Text operator()(const Rect& r) const {
            char buffer[128];
            std::snprintf(buffer, sizeof buffer, "{{%g, %g}, {%g, %g}}", r.origin.x, r.origin.y, r.size.width,
                          r.size.height);
            return Text(buffer);
        }
        Text operator()(const std::shared_ptr<Object>& object) const { return object->description(); }
        static Text format(const char* pattern, double a, double b) {
            char buffer[64];
            std::snprintf(buffer, sizeof buffer, pattern, a, b);
            return Text(buffer);
        }
    };
    return std::visit(Describe{}, storage_);
}

bool operator==(const Value& a, const Value& b) {
    return a.storage_ == b.storage_;
}

std::size_t Value::hash() const noexcept {
    std::size_t kindHash = storage_.index();
    struct Hash {
        std::size_t operator()(std::monostate) const { return 0; }
        std::size_t operator()(const Text& text) const { return std::hash<Text>{}(text); }
        std::size_t operator()(const Number& number) const { return number.hash(); }
        std::size_t operator()(const Date& date) const {
            return std::hash<double>{}(date.timeIntervalSince1970());
        }
        std::size_t operator()(const ByteData& data) const {
            return std::hash<std::string_view>{}(
                std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
        }
        std::size_t operator()(const ValueArray& array) const { return array.size(); }
        std::size_t operator()(const ValueDictionary& dictionary) const { return dictionary.size(); }
        std::size_t operator()(const Point& p) const {
            return mix(std::hash<double>{}(p.x), std::hash<double>{}(p.y));
        }
        std::size_t operator()(const Size& s) const {
            return mix(std::hash<double>{}(s.width), std::hash<double>{}(s.height));
        }
        std::size_t operator()(const Range& r) const { return mix(r.location, r.length); }
        std::size_t operator()(const Rect& r) const { return mix((*this)(r.origin), (*this)(r.size)); }
        std::size_t operator()(const std::shared_ptr<Object>& object) const {
            return std::hash<const void*>{}(object.get());
        }
    };
    return mix(kindHash, std::visit(Hash{}, storage_));
}

// --- ValueCountedSet ---------------------------------------------------------------------------------

ValueCountedSet::ValueCountedSet(const ValueArray& values) {
    for (const Value& value : values)
        add(value);
}

void ValueCountedSet::add(const Value& value, std::size_t occurrences) {
    if (occurrences == 0) return;
    auto [position, inserted] = index_.try_emplace(value, entries_.size());
    if (inserted) {
        entries_.push_back(Entry{value, occurrences});
    } else {
        entries_[position->second].count += occurrences;
    }
}

void ValueCountedSet::remove(const Value& value) {
    auto found = index_.find(value);
    if (found == index_.end()) return;
    std::size_t position = found->second;
    if (--entries_[position].count != 0) return;
    index_.erase(found);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
    for (std::size_t i = position; i < entries_.size(); ++i)
        index_[entries_[i].value] = i;
}

std::size_t ValueCountedSet::countFor(const Value& value) const {
    auto found = index_.find(value);
    return found == index_.end() ? 0 : entries_[found->second].count;
}

ValueArray ValueCountedSet::allObjects() const {
    ValueArray values;
    values.reserve(entries_.size());
    for (const Entry& entry : entries_)
        values.push_back(entry.value);
    return values;
}

}  // namespace bv
