// Key-value access on dictionaries and library objects.
#include "BrevantCocoaExtensions/platform/KeyValue.hpp"

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

[[noreturn]] void unknownKey(const Value& element, const Text& key) {
    throw UnrecognizedOperationException("the value " + element.description().toUtf8() +
                                         " is not key value coding-compliant for the key " + key.toUtf8());
}

}  // namespace

std::optional<Value> valueForKey(const Value& element, const Text& key) {
    if (element.isNull()) return std::nullopt;
    if (const ValueDictionary* dictionary = element.dictionary()) {
        auto found = dictionary->find(key);
        if (found == dictionary->end()) return std::nullopt;
        return found->second;
    }
    if (std::shared_ptr<Object> object = element.object()) return object->valueForKey(key);
    if (key == Text("self")) return element;
    unknownKey(element, key);
}

std::optional<Value> valueForKeyPath(const Value& element, const Text& keyPath) {
    std::optional<Value> current = element;
    const std::u16string& units = keyPath.units();
    std::size_t start = 0;
    while (current) {
        std::size_t dot = units.find(u'.', start);
        std::size_t end = dot == std::u16string::npos ? units.size() : dot;
        current = valueForKey(*current, Text(units.substr(start, end - start)));
        if (dot == std::u16string::npos) break;
        start = dot + 1;
    }
    return current;
}

void setValueForKey(Value& element, const Value& value, const Text& key) {
    if (ValueDictionary* dictionary = element.get<ValueDictionary>()) {
        dictionary->insert_or_assign(key, value);
        return;
    }
    if (std::shared_ptr<Object> object = element.object()) {
        object->setValueForKey(value, key);
        return;
    }
    unknownKey(element, key);
}

}  // namespace bv
