// bv::ValueSet: the platform's set, distinct Values (by Value equality: 1, 1.0 and true are one member).
//
// Members are kept in first-insertion order so that enumeration, descriptions and messages built from a set
// are reproducible; membership is a hash lookup.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <unordered_map>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class ValueSet {
  public:
    ValueSet() = default;
    ValueSet(std::initializer_list<Value> values);
    explicit ValueSet(const ValueArray& values);

    // Adds the value unless an equal one is a member; true when added.
    bool insert(const Value& value);
    [[nodiscard]] bool contains(const Value& value) const;
    [[nodiscard]] std::size_t size() const noexcept { return members_.size(); }
    [[nodiscard]] bool empty() const noexcept { return members_.empty(); }
    // The members in first-insertion order.
    [[nodiscard]] const ValueArray& allObjects() const noexcept { return members_; }
    [[nodiscard]] ValueArray::const_iterator begin() const noexcept { return members_.begin(); }
    [[nodiscard]] ValueArray::const_iterator end() const noexcept { return members_.end(); }

  private:
    ValueArray members_;
    std::unordered_multimap<std::size_t, std::size_t> positionsByHash_;  // hash -> position in members_
};

}  // namespace bv
