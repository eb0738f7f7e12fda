// bv::ArrayController: the list controller model without a user interface: content, the arranged objects
// (the content filtered by a predicate and sorted by sort keys, stable) and a selection.
//
// Arranged objects are views of content elements: mutableArrangedObjectAt edits the content element itself.
// The arrangement is recomputed when the content, the filter or the sort keys change, and on
// rearrangeObjects (call it after editing elements in a way that changes their filter or sort result). The
// selection follows the selected elements through rearrangements; elements that are filtered out or
// removed leave it. A filter or sort that throws leaves the controller unchanged.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "BrevantCocoaExtensions/platform/IndexSet.hpp"
#include "BrevantCocoaExtensions/platform/SortDescriptor.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class ArrayController {
  public:
    using FilterPredicate = std::function<bool(const Value&)>;

    ArrayController() = default;
    explicit ArrayController(ValueArray content);

    // --- Content ---
    [[nodiscard]] const ValueArray& content() const noexcept { return content_; }
    // Replaces the content, rearranges and clears the selection.
    void setContent(ValueArray content);
    // Appends to the content and rearranges.
    void addObject(Value object);
    // Removes the content elements shown at the arranged positions; RangeException (nothing removed) for a
    // position past the arranged count.
    void removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes);

    // --- Arrangement ---
    // Only elements for which the predicate answers true are arranged; an empty predicate keeps all.
    void setFilterPredicate(FilterPredicate predicate);
    void setSortDescriptors(std::vector<SortDescriptor> descriptors);
    [[nodiscard]] const std::vector<SortDescriptor>& sortDescriptors() const noexcept {
        return sortDescriptors_;
    }
    void rearrangeObjects();
    [[nodiscard]] std::size_t arrangedSize() const noexcept { return arranged_.size(); }
    // The arranged object at a position; RangeException past the end.
    [[nodiscard]] const Value& arrangedObjectAt(std::size_t index) const;
    // The content element shown at the position, for editing in place (no rearrangement follows).
    [[nodiscard]] Value& mutableArrangedObjectAt(std::size_t index);
    [[nodiscard]] ValueArray arrangedObjects() const;

    // --- Selection, as arranged positions ---
    [[nodiscard]] IndexSet selectionIndexes() const;
    // Selects the arranged objects at the positions; RangeException (selection unchanged) past the end.
    void setSelectionIndexes(const IndexSet& indexes);
    // The selected objects in arranged order.
    [[nodiscard]] ValueArray selectedObjects() const;

  private:
    [[nodiscard]] static std::vector<std::size_t> arrangementOf(
        const ValueArray& content, const FilterPredicate& filter,
        const std::vector<SortDescriptor>& descriptors);
    void commitArrangement(std::vector<std::size_t> arranged);
    [[nodiscard]] std::size_t contentPositionAt(std::size_t arrangedIndex) const;

    ValueArray content_;
    FilterPredicate filter_;
    std::vector<SortDescriptor> sortDescriptors_;
    std::vector<std::size_t> arranged_;  // content positions in arranged order
    std::vector<bool> selected_;         // per content position
};

}  // namespace bv
