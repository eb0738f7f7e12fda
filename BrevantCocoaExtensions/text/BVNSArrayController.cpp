// Helpers over the arranged objects of a list controller.
#include "BrevantCocoaExtensions/text/BVNSArrayController.hpp"

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/KeyValue.hpp"
#include "BrevantCocoaExtensions/text/TypedValueInternal.hpp"

namespace bv::BVNSArrayController {

namespace {

const Text& stateKey() {
    static const Text kState("state");
    return kState;
}

bool matchesIgnoringCase(const std::optional<Value>& candidate, const Text& value) {
    if (!candidate || candidate->isNull()) return true;  // an absent value compares as the same
    const Text* text = candidate->text();
    if (text == nullptr) {
        throw UnrecognizedOperationException(std::string("caseInsensitiveCompare sent to a ") +
                                             typedValue::kindName(*candidate));
    }
    return text->equals(value, CompareMode::CaseInsensitive);
}

bool matchesExactly(const std::optional<Value>& candidate, const Text& value) {
    const Text* text = candidate ? candidate->text() : nullptr;
    return text != nullptr && *text == value;
}

}  // namespace

std::uint64_t arrangedObjectCount(const ArrayController& self) {
    return self.arrangedSize();
}

std::optional<Value> firstObject(const ArrayController& self) {
    if (self.arrangedSize() == 0) return std::nullopt;
    return self.arrangedObjectAt(0);
}

std::optional<Value> lastObject(const ArrayController& self) {
    if (self.arrangedSize() == 0) return std::nullopt;
    return self.arrangedObjectAt(self.arrangedSize() - 1);
}

Value objectAtIndex(const ArrayController& self, std::uint64_t index) {
    return self.arrangedObjectAt(index);
}

std::uint64_t indexOfObject(const ArrayController& self, const Value& object) {
    for (std::size_t i = 0; i < self.arrangedSize(); ++i) {
        if (self.arrangedObjectAt(i) == object) return i;
    }
    return NotFound;
}

std::uint64_t indexOfLastObject(const ArrayController& self) {
    return self.arrangedSize() == 0 ? NotFound : self.arrangedSize() - 1;
}

std::uint64_t indexOfObjectWithStringValueCaseInsensitiveCompareForKey(const ArrayController& self,
                                                                       const Text& value,
                                                                       bool caseInsensitive,
                                                                       const Text& key) {
    for (std::size_t i = 0; i < self.arrangedSize(); ++i) {
        std::optional<Value> candidate = valueForKey(self.arrangedObjectAt(i), key);
        bool matches =
            caseInsensitive ? matchesIgnoringCase(candidate, value) : matchesExactly(candidate, value);
        if (matches) return i;
    }
    return NotFound;
}

std::optional<Value> selectedObject(const ArrayController& self) {
    IndexSet selection = self.selectionIndexes();
    if (selection.empty()) return std::nullopt;
    return self.arrangedObjectAt(*selection.begin());
}

void removeArrangedObjects(ArrayController& self) {
    IndexSet all;
    for (std::size_t i = 0; i < self.arrangedSize(); ++i)
        all.insert(all.end(), i);
    self.removeObjectsAtArrangedObjectIndexes(all);
}

bool areAllItemsInState(const ArrayController& self, std::int64_t state) {
    for (std::size_t i = 0; i < self.arrangedSize(); ++i) {
        std::optional<Value> value = valueForKey(self.arrangedObjectAt(i), stateKey());
        if (typedValue::toInteger(value ? &*value : nullptr) != state) return false;
    }
    return true;
}

void setState(ArrayController& self, std::int64_t state) {
    Value stored(Number::int32(static_cast<std::int32_t>(state)));
    for (std::size_t i = 0; i < self.arrangedSize(); ++i)
        setValueForKey(self.mutableArrangedObjectAt(i), stored, stateKey());
}

}  // namespace bv::BVNSArrayController
