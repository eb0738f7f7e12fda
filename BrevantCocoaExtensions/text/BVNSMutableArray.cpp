// In-place helpers over ValueArray.
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSArrayInternal.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv::BVNSMutableArray {

namespace {

[[noreturn]] void beyondBounds(std::uint64_t index, std::size_t count) {
    throw RangeException("index " + std::to_string(index) + " beyond bounds [0 .. " + std::to_string(count) +
                         "]");
}

CompareMode modeFor(bool caseInsensitive) {
    return caseInsensitive ? CompareMode::CaseInsensitive : CompareMode::Literal;
}

// The list with `objects` inserted so that the k-th object lands at the k-th smallest index.
ValueArray withInsertions(const ValueArray& self, const ValueArray& objects, const IndexSet& indexes) {
    ValueArray result;
    result.reserve(self.size() + objects.size());
    auto target = indexes.begin();
    std::size_t nextObject = 0;
    std::size_t nextElement = 0;
    for (std::size_t position = 0; position < self.size() + objects.size(); ++position) {
        if (target != indexes.end() && *target == position) {
            result.push_back(objects[nextObject++]);
            ++target;
        } else {
            result.push_back(self[nextElement++]);
        }
    }
    return result;
}

}  // namespace

void addObjects(ValueArray& self, std::initializer_list<Value> objects) {
    self.insert(self.end(), objects.begin(), objects.end());
}

void addBool(ValueArray& self, bool value) {
    self.emplace_back(Number::boolean(value));
}

void addShort(ValueArray& self, std::int16_t value) {
    self.emplace_back(Number::int16(value));
}

void addUnsignedShort(ValueArray& self, std::uint16_t value) {
    self.emplace_back(Number::uint16(value));
}

void addInteger(ValueArray& self, std::int64_t value) {
    self.emplace_back(Number::int64(value));
}

void addUnsignedInteger(ValueArray& self, std::uint64_t value) {
    self.emplace_back(Number::uint64(value));
}

void addLong(ValueArray& self, std::int64_t value) {
    self.emplace_back(Number::int64(value));
}

void addLongLong(ValueArray& self, std::int64_t value) {
    self.emplace_back(Number::int64(value));
}

void addUnsignedLong(ValueArray& self, std::uint64_t value) {
    self.emplace_back(Number::uint64(value));
}

void addUnsignedLongLong(ValueArray& self, std::uint64_t value) {
    self.emplace_back(Number::uint64(value));
}

void addFloat(ValueArray& self, float value) {
    self.emplace_back(Number::float32(value));
}

void addChar(ValueArray& self, char16_t character) {
    self.emplace_back(
        Text::fromUnit(static_cast<char16_t>(character & 0xFF)));  // "%c": the low byte as Latin-1
}

void addASCIICharactersFromTo(ValueArray& self, char16_t first, char16_t last) {
    for (std::uint32_t unit = first; unit <= last; ++unit)
        addChar(self, static_cast<char16_t>(unit));
}

void addNumericValuesFromTo(ValueArray& self, std::int64_t first, std::int64_t last) {
    if (first > last) return;
    for (std::int64_t value = first;; ++value) {
        addInteger(self, value);
        if (value == last) break;  // stops before the increment could overflow at the largest value
    }
}

void addNumberOfNullPlaceholders(ValueArray& self, std::uint64_t count) {
    self.resize(self.size() + count);
}

bool addUniqueObject(ValueArray& self, const Value& object) {
    if (std::find(self.begin(), self.end(), object) != self.end()) return false;
    self.push_back(object);
    return true;
}

bool addUniqueStringCaseInsensitiveCompare(ValueArray& self, const Text& text, bool caseInsensitive) {
    if (BVNSArray::containsStringCaseInsensitiveCompare(self, text, caseInsensitive)) return false;
    self.emplace_back(text);
    return true;
}

void addUniqueStringsFromArrayCaseInsensitiveCompare(ValueArray& self, const std::vector<Text>& texts,
                                                     bool caseInsensitive) {
    // The same outcome as adding one by one, with a hash of comparison keys instead of a scan per text.
    CompareMode mode = modeFor(caseInsensitive);
    std::unordered_set<Text> present;
    for (const Value& element : self) {
        if (const Text* text = element.text()) present.insert(text->comparisonKey(mode));
    }
    for (const Text& text : texts) {
        if (present.insert(text.comparisonKey(mode)).second) self.emplace_back(text);
    }
}

void appendPathExtensionToStrings(ValueArray& self, const Text& extension) {
    Text suffix = Text(".") + extension;
    for (Value& element : self) {
        if (Text* text = element.get<Text>()) text->append(suffix);
    }
}

void convertNumbersToStrings(ValueArray& self) {
    for (Value& element : self) {
        if (const Number* number = element.number()) element = number->stringValue();
    }
}

void moveObjectAtIndexToIndex(ValueArray& self, std::uint64_t from, std::uint64_t to) {
    if (from >= self.size()) beyondBounds(from, self.size());
    moveObjectToIndex(self, Value(self[from]), to);
}

void moveObjectToIndex(ValueArray& self, const Value& object, std::uint64_t to) {
    Value moved = object;  // the object may be an element of the list itself
    auto first = std::find(self.begin(), self.end(), moved);
    bool before = first != self.end() && static_cast<std::uint64_t>(first - self.begin()) < to;
    std::uint64_t insertAt = before ? to - 1 : to;
    auto remaining = self.size() - static_cast<std::size_t>(std::count(first, self.end(), moved));
    if (insertAt > remaining) beyondBounds(insertAt, remaining);
    self.erase(std::remove(first, self.end(), moved), self.end());
    self.insert(self.begin() + static_cast<std::ptrdiff_t>(insertAt), std::move(moved));
}

void moveObjectsToIndexes(ValueArray& self, const ValueArray& objects, const IndexSet& indexes) {
    IndexSet old = BVNSArray::indexesOfObjects(self, objects);
    if (objects.size() != indexes.size()) {
        throw InvalidArgumentException("moving " + std::to_string(objects.size()) + " objects to " +
                                       std::to_string(indexes.size()) + " indexes");
    }
    std::size_t k = 0;
    for (std::size_t index : indexes) {
        if (index > self.size() + k) beyondBounds(index, self.size() + k);
        ++k;
    }
    ValueArray inserted = withInsertions(self, objects, indexes);
    ValueArray result;
    result.reserve(inserted.size() - old.size());
    auto removed = old.begin();
    for (std::size_t i = 0; i < inserted.size(); ++i) {
        if (removed != old.end() && *removed == i) {
            ++removed;
        } else {
            result.push_back(std::move(inserted[i]));
        }
    }
    self = std::move(result);
}

bool replaceObjectWithObject(ValueArray& self, const Value& object, const Value& replacement) {
    auto found = std::find(self.begin(), self.end(), object);
    if (found == self.end()) return false;
    *found = replacement;
    return true;
}

bool replaceFirstOccurrenceOfStringWithStringCaseInsensitiveCompare(ValueArray& self, const Text& text,
                                                                    const Text& replacement,
                                                                    bool caseInsensitive) {
    std::uint64_t index = BVNSArray::indexOfStringObjectCaseInsensitiveCompare(self, text, caseInsensitive);
    if (index == NotFound) return false;
    self[index] = replacement;
    return true;
}

void removeObjectWithStringCaseInsensitiveCompare(ValueArray& self, const Text& text, bool caseInsensitive) {
    std::uint64_t index = BVNSArray::indexOfStringObjectCaseInsensitiveCompare(self, text, caseInsensitive);
    if (index != NotFound) self.erase(self.begin() + static_cast<std::ptrdiff_t>(index));
}

void removeEmptyStrings(ValueArray& self) {
    std::erase_if(self, [](const Value& element) {
        const Text* text = element.text();
        return text && BVNSString::isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters(*text);
    });
}

void removeObjectsWithPathExtensions(ValueArray& self, const std::vector<Text>& extensions) {
    std::unordered_set<Text> wanted(extensions.begin(), extensions.end());
    std::erase_if(self, [&wanted](const Value& element) {
        const Text* text = element.text();
        return text && wanted.count(BVNSArray::detail::pathExtensionOf(*text)) != 0;
    });
}

void removeObjectsWithPathExtension(ValueArray& self, const Text& extension) {
    removeObjectsWithPathExtensions(self, {extension});
}

}  // namespace bv::BVNSMutableArray
