// Counting members' texts, the uniqueness validation error and random members of a ValueSet.
#include "BrevantCocoaExtensions/text/BVNSSet.hpp"

#include "BrevantCocoaExtensions/platform/KeyValue.hpp"
#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"

namespace bv::BVNSSet {

namespace {

constexpr const char* kValidationDomain = "data validation";
constexpr std::int64_t kDuplicateAttributeCode = 1550;

}  // namespace

ValueCountedSet stringValuesForKey(const ValueSet& self, const Text& key) {
    ValueCountedSet texts;
    for (const Value& member : self) {
        std::optional<Value> value = valueForKey(member, key);
        if (!value || value->isNull()) continue;
        texts.add(value->text() ? *value : Value(value->description()));
    }
    return texts;
}

bool assertUniqueAttributeDisplayNameErrors(const ValueSet& self, const Text& attribute,
                                            const Text& displayName, std::vector<Error>& errors) {
    std::optional<ValueArray> duplicates = BVNSCountedSet::duplicates(stringValuesForKey(self, attribute));
    if (!duplicates || duplicates->empty()) return true;
    Text description =
        Text("duplicate '") + displayName + Text("' found: ") + Value(*duplicates).description();
    errors.push_back(Error{kValidationDomain, kDuplicateAttributeCode, description, Text()});
    return false;
}

std::optional<Value> anyRandomObject(const ValueSet& self) {
    return BVNSArray::randomObject(self.allObjects());
}

}  // namespace bv::BVNSSet
