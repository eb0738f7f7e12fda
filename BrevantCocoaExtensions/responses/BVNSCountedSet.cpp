// BVNSCountedSet: modes and popularity of a counted set, in the 32-bit arithmetic the charts use.
#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"

#include <algorithm>
#include <numeric>
#include <vector>

namespace bv::BVNSCountedSet {

namespace {

const Text kCountKey("count");
const Text kObjectKey("object");

// A count as a signed 32-bit integer, keeping the low 32 bits.
std::int32_t count32(std::size_t count) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(count));
}

// Signed 32-bit addition and multiplication that wrap instead of overflowing.
std::int32_t add32(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
std::int32_t multiply32(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

// Signed 32-bit division truncated toward zero; 0 for a zero divisor, and the one overflowing quotient
// (INT32_MIN / -1) wraps back to INT32_MIN.
std::int32_t divide32(std::int32_t dividend, std::int32_t divisor) {
    if (divisor == 0) return 0;
    if (divisor == -1) return multiply32(dividend, -1);
    return dividend / divisor;
}

Value int32Value(std::int32_t number) {
    return Value(Number::int32(number));
}

ValueDictionary popularityEntry(std::int32_t count, const Value& object) {
    return ValueDictionary{{kCountKey, int32Value(count)}, {kObjectKey, object}};
}

// The "count" of a popularity entry as a signed 32-bit integer.
std::int32_t entryCount(const Value& entry) {
    const ValueDictionary* dictionary = entry.dictionary();
    if (dictionary == nullptr) return 0;
    auto found = dictionary->find(kCountKey);
    if (found == dictionary->end() || found->second.number() == nullptr) return 0;
    return found->second.number()->as<std::int32_t>();
}

}  // namespace

std::optional<ValueDictionary> modeDictionary(const ValueCountedSet& self) {
    std::int32_t highest = 0;
    for (const auto& entry : self.entries())
        highest = std::max(highest, count32(entry.count));
    if (highest == 0) return std::nullopt;

    std::int32_t total = 0;
    std::int32_t modesShare = 0;
    ValueArray modes;
    for (const auto& entry : self.entries()) {
        std::int32_t count = count32(entry.count);
        total = add32(total, count);
        if (count != highest) continue;
        modes.push_back(entry.value);
        modesShare = add32(modesShare, count);
    }
    std::int32_t percent = divide32(multiply32(modesShare, 100), total);
    return ValueDictionary{{Text("modes"), Value(std::move(modes))},
                           {Text("totalCount"), int32Value(total)},
                           {Text("modeCount"), int32Value(highest)},
                           {Text("modePercent"), int32Value(percent)}};
}

ValueArray objectsByPopularity(const ValueCountedSet& self) {
    const auto& entries = self.entries();
    // Sort positions by count, highest first and stable, then build each entry once in its final place.
    std::vector<std::size_t> order(entries.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return count32(entries[a].count) > count32(entries[b].count);
    });
    ValueArray popularity;
    popularity.reserve(entries.size());
    for (std::size_t position : order) {
        popularity.emplace_back(popularityEntry(count32(entries[position].count), entries[position].value));
    }
    return popularity;
}

ValueArray objectsByPopularityWithRank(const ValueCountedSet& self, std::int32_t rank) {
    ValueArray popularity = objectsByPopularity(self);
    // The rank is widened, sign-extended, to unsigned 64 bits: a negative rank is larger than any length.
    auto widenedRank = static_cast<std::uint64_t>(static_cast<std::int64_t>(rank));
    if (popularity.size() <= widenedRank) return popularity;

    std::int32_t otherCount = 0;
    for (std::size_t i = static_cast<std::size_t>(rank); i < popularity.size(); ++i) {
        otherCount = add32(otherCount, entryCount(popularity[i]));
    }
    popularity.resize(static_cast<std::size_t>(rank));
    popularity.emplace_back(popularityEntry(otherCount, Value(Text("other"))));
    return popularity;
}

std::optional<ValueArray> duplicates(const ValueCountedSet& self) {
    ValueArray repeated;
    for (const auto& entry : self.entries()) {
        if (entry.count > 1) repeated.push_back(entry.value);
    }
    if (repeated.empty()) return std::nullopt;
    return repeated;
}

std::uint32_t countForStringCaseInsensitive(const ValueCountedSet& self, const Text& string) {
    auto count = [&](const Text& text) { return static_cast<std::uint32_t>(self.countFor(Value(text))); };
    if (std::uint32_t exact = count(string); exact != 0) return exact;
    Text lower = string.lowercased();
    if (std::uint32_t lowered = count(lower); lowered != 0) return lowered;
    return count(lower.uppercased());
}

}  // namespace bv::BVNSCountedSet
