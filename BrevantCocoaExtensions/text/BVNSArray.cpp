// Reading, text searching and list building over ValueArray.
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"

#include <random>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/KeyValue.hpp"
#include "BrevantCocoaExtensions/platform/SortDescriptor.hpp"
#include "BrevantCocoaExtensions/text/BVNSArrayInternal.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSSortDescriptor.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "BrevantCocoaExtensions/text/TypedValueInternal.hpp"

namespace bv::BVNSArray {

namespace {

const Value* elementAt(const ValueArray& self, std::uint64_t index) {
    if (index >= self.size()) {
        throw RangeException("index " + std::to_string(index) + " beyond bounds [0 .. " +
                             std::to_string(self.size()) + ")");
    }
    return &self[index];
}

bool textsEqual(const Text& a, const Text& b, bool caseInsensitive) {
    return caseInsensitive ? a.equals(b, CompareMode::CaseInsensitive) : a == b;
}

// Keys under which path extensions equal ignoring case, for hash lookups.
std::unordered_set<Text> caseInsensitiveKeys(const std::vector<Text>& texts) {
    std::unordered_set<Text> keys;
    for (const Text& text : texts)
        keys.insert(text.comparisonKey(CompareMode::CaseInsensitive));
    return keys;
}

bool containsExtensionKey(const ValueArray& self, const std::unordered_set<Text>& keys) {
    if (keys.empty()) return false;
    for (const Value& element : self) {
        const Text* text = element.text();
        if (text &&
            keys.count(detail::pathExtensionOf(*text).comparisonKey(CompareMode::CaseInsensitive)) != 0) {
            return true;
        }
    }
    return false;
}

template <class Predicate>
bool anyNumber(const ValueArray& self, Predicate matches) {
    for (const Value& element : self) {
        if (const Number* number = element.number(); number && matches(*number)) return true;
    }
    return false;
}

template <class Transform>
std::vector<Text> mapTexts(const ValueArray& self, Transform transform) {
    std::vector<Text> result;
    for (const Value& element : self) {
        if (const Text* text = element.text()) result.push_back(transform(*text));
    }
    return result;
}

}  // namespace

Text detail::pathExtensionOf(const Text& path) {
    std::u16string_view component = path.view();
    while (!component.empty() && component.back() == u'/')
        component.remove_suffix(1);
    if (std::size_t slash = component.rfind(u'/'); slash != std::u16string_view::npos) {
        component.remove_prefix(slash + 1);
    }
    std::size_t dot = component.rfind(u'.');
    return dot == std::u16string_view::npos ? Text() : Text(component.substr(dot + 1));
}

// --- Reading ---------------------------------------------------------------------------------------------

std::optional<Value> firstObject(const ValueArray& self) {
    if (self.empty()) return std::nullopt;
    return self.front();
}

std::optional<Value> randomObject(const ValueArray& self) {
    if (self.empty()) return std::nullopt;
    thread_local std::mt19937_64 engine{std::random_device{}()};
    std::uniform_int_distribution<std::size_t> pick(0, self.size() - 1);
    return self[pick(engine)];
}

std::uint64_t lastIndex(const ValueArray& self) {
    return self.empty() ? 0 : self.size() - 1;
}

IndexSet objectIndexes(const ValueArray& self) {
    IndexSet indexes;
    for (std::size_t i = 0; i < self.size(); ++i)
        indexes.insert(indexes.end(), i);
    return indexes;
}

IndexSet indexesOfObjects(const ValueArray& self, const ValueArray& objects) {
    std::unordered_map<Value, std::size_t> firstIndex;
    firstIndex.reserve(self.size());
    for (std::size_t i = 0; i < self.size(); ++i)
        firstIndex.try_emplace(self[i], i);
    IndexSet indexes;
    for (const Value& object : objects) {
        auto found = firstIndex.find(object);
        if (found == firstIndex.end()) {
            throw RangeException("the object " + object.description().toUtf8() + " is not in the list");
        }
        indexes.insert(found->second);
    }
    return indexes;
}

ValueArray objectsForKey(const ValueArray& self, const Text& key) {
    ValueArray values;
    for (const Value& element : self) {
        if (std::optional<Value> value = valueForKey(element, key)) values.push_back(std::move(*value));
    }
    return values;
}

std::int8_t charAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toChar(elementAt(self, index));
}

std::uint8_t unsignedCharAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toUnsignedChar(elementAt(self, index));
}

std::int16_t shortAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toShort(elementAt(self, index));
}

std::uint16_t unsignedShortAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toUnsignedShort(elementAt(self, index));
}

std::int64_t integerAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toInteger(elementAt(self, index));
}

std::uint64_t unsignedIntegerAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toUnsignedInteger(elementAt(self, index));
}

std::int64_t longAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toLong(elementAt(self, index));
}

std::int64_t longLongAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toLongLong(elementAt(self, index));
}

std::uint64_t unsignedLongAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toUnsignedLong(elementAt(self, index));
}

std::uint64_t unsignedlongLongAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toUnsignedLongLong(elementAt(self, index));
}

float floatAtIndex(const ValueArray& self, std::uint64_t index) {
    return typedValue::toFloat(elementAt(self, index));
}

// --- Searching texts -------------------------------------------------------------------------------------

std::uint64_t indexOfStringObjectCaseInsensitiveCompare(const ValueArray& self, const Text& text,
                                                        bool caseInsensitive) {
    for (std::size_t i = 0; i < self.size(); ++i) {
        const Text* element = self[i].text();
        if (element && textsEqual(*element, text, caseInsensitive)) return i;
    }
    return NotFound;
}

std::optional<Text> stringObjectCaseInsensitiveCompare(const ValueArray& self, const Text& text,
                                                       bool caseInsensitive) {
    std::uint64_t index = indexOfStringObjectCaseInsensitiveCompare(self, text, caseInsensitive);
    if (index == NotFound) return std::nullopt;
    return *self[index].text();
}

bool containsStringCaseInsensitiveCompare(const ValueArray& self, const Text& text, bool caseInsensitive) {
    return indexOfStringObjectCaseInsensitiveCompare(self, text, caseInsensitive) != NotFound;
}

bool containsAnyStringFromCaseInsensitiveCompare(const ValueArray& self, const std::vector<Text>& texts,
                                                 bool caseInsensitive) {
    if (texts.empty()) return false;
    // One pass over the receiver with a hash of the wanted texts instead of one scan per text.
    CompareMode mode = caseInsensitive ? CompareMode::CaseInsensitive : CompareMode::Literal;
    std::unordered_set<Text> wanted;
    for (const Text& text : texts)
        wanted.insert(text.comparisonKey(mode));
    for (const Value& element : self) {
        if (const Text* text = element.text(); text && wanted.count(text->comparisonKey(mode)) != 0)
            return true;
    }
    return false;
}

std::vector<Text> pathExtensions(const ValueArray& self) {
    return mapTexts(self, &detail::pathExtensionOf);
}

bool containsPathExtension(const ValueArray& self, const Text& extension) {
    return containsExtensionKey(self, caseInsensitiveKeys({extension}));
}

bool containsAnyPathExtensions(const ValueArray& self, const std::vector<Text>& extensions) {
    return containsExtensionKey(self, caseInsensitiveKeys(extensions));
}

bool containsInt(const ValueArray& self, std::int32_t value) {
    return anyNumber(self, [value](const Number& n) { return n.int64Value() == value; });
}

bool containsUnsignedInt(const ValueArray& self, std::uint32_t value) {
    return anyNumber(self, [value](const Number& n) { return n.uint64Value() == value; });
}

bool containsLong(const ValueArray& self, std::int64_t value) {
    return anyNumber(self, [value](const Number& n) { return n.int64Value() == value; });
}

bool containsUnsignedLong(const ValueArray& self, std::uint64_t value) {
    return anyNumber(self, [value](const Number& n) { return n.uint64Value() == value; });
}

// --- Building new lists ----------------------------------------------------------------------------------

ValueArray arrayWithUniqueStringsFromArrayCaseInsensitiveCompare([[maybe_unused]] const ValueArray& self,
                                                                 const std::vector<Text>& texts,
                                                                 bool caseInsensitive) {
    ValueArray unique;
    BVNSMutableArray::addUniqueStringsFromArrayCaseInsensitiveCompare(unique, texts, caseInsensitive);
    return unique;
}

std::optional<std::vector<ValueArray>> arrayDividedIntoGroupsOf(const ValueArray& self, std::uint64_t size) {
    if (self.empty() || size == 0) return std::nullopt;
    std::vector<ValueArray> groups;
    groups.reserve((self.size() + size - 1) / size);
    for (std::size_t start = 0; start < self.size();
         start += std::min<std::uint64_t>(size, self.size() - start)) {
        std::size_t end = start + std::min<std::uint64_t>(size, self.size() - start);
        groups.emplace_back(self.begin() + static_cast<std::ptrdiff_t>(start),
                            self.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return groups;
}

std::vector<Text> arrayByRemovingFromEachObjectCharactersInSet(const ValueArray& self,
                                                               const CharacterSet& set) {
    return mapTexts(
        self, [&set](const Text& text) { return BVNSString::stringByRemovingCharactersInSet(text, set); });
}

std::vector<Text> arrayByRemovingFromEachStringLeadingOccurrencesOfCharacter(const ValueArray& self,
                                                                             char16_t character) {
    return mapTexts(self, [character](const Text& text) {
        return BVNSString::stringByRemovingLeadingOccurrencesOfCharacter(text, character);
    });
}

std::vector<Text> arrayByTrimmingEachStringCharactersInSet(const ValueArray& self, const CharacterSet& set) {
    return mapTexts(self, [&set](const Text& text) {
        const std::u16string& units = text.units();
        std::size_t start = 0;
        std::size_t end = units.size();
        while (start < end && set.contains(units[start]))
            ++start;
        while (end > start && set.contains(units[end - 1]))
            --end;
        return Text(units.substr(start, end - start));
    });
}

ValueArray arraySortedOnKey(const ValueArray& self, const Text& key) {
    return sortedArrayUsingDescriptors(self, BVNSSortDescriptor::descriptorsForKeyAscendingOrder(key, true));
}

}  // namespace bv::BVNSArray
