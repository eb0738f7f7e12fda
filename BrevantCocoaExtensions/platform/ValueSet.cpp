// The ordered set of distinct Values.
#include "BrevantCocoaExtensions/platform/ValueSet.hpp"

namespace bv {

ValueSet::ValueSet(std::initializer_list<Value> values) {
    for (const Value& value : values)
        insert(value);
}

ValueSet::ValueSet(const ValueArray& values) {
    for (const Value& value : values)
        insert(value);
}

bool ValueSet::insert(const Value& value) {
    if (contains(value)) return false;
    positionsByHash_.emplace(value.hash(), members_.size());
    members_.push_back(value);
    return true;
}

bool ValueSet::contains(const Value& value) const {
    auto [first, last] = positionsByHash_.equal_range(value.hash());
    for (auto it = first; it != last; ++it) {
        if (members_[it->second] == value) return true;
    }
    return false;
}

}  // namespace bv
