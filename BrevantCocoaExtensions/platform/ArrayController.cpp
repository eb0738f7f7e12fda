// The list controller model: arrangement by filter and sort keys, and a selection that follows elements.
#include "BrevantCocoaExtensions/platform/ArrayController.hpp"

#include <string>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

[[noreturn]] void beyondBounds(std::size_t index, std::size_t count) {
    throw RangeException("index " + std::to_string(index) + " beyond bounds [0 .. " + std::to_string(count) +
                         ")");
}

}  // namespace

ArrayController::ArrayController(ValueArray content) {
    setContent(std::move(content));
}

// Each change computes the new arrangement before it commits anything, so that a filter or a sort that
// throws leaves the controller as it was.
std::vector<std::size_t> ArrayController::arrangementOf(const ValueArray& content,
                                                        const FilterPredicate& filter,
                                                        const std::vector<SortDescriptor>& descriptors) {
    std::vector<std::size_t> arranged;
    arranged.reserve(content.size());
    for (std::size_t i = 0; i < content.size(); ++i) {
        if (!filter || filter(content[i])) arranged.push_back(i);
    }
    sortIndexesUsingDescriptors(arranged, content, descriptors);
    return arranged;
}

void ArrayController::commitArrangement(std::vector<std::size_t> arranged) {
    // Elements no longer arranged leave the selection.
    std::vector<bool> shown(content_.size(), false);
    for (std::size_t position : arranged)
        shown[position] = true;
    for (std::size_t i = 0; i < content_.size(); ++i)
        selected_[i] = selected_[i] && shown[i];
    arranged_ = std::move(arranged);
}

void ArrayController::setContent(ValueArray content) {
    std::vector<std::size_t> arranged = arrangementOf(content, filter_, sortDescriptors_);
    content_ = std::move(content);
    selected_.assign(content_.size(), false);
    commitArrangement(std::move(arranged));
}

void ArrayController::addObject(Value object) {
    content_.push_back(std::move(object));
    try {
        std::vector<std::size_t> arranged = arrangementOf(content_, filter_, sortDescriptors_);
        selected_.push_back(false);
        commitArrangement(std::move(arranged));
    } catch (...) {
        content_.pop_back();
        throw;
    }
}

void ArrayController::removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes) {
    if (!indexes.empty() && *indexes.rbegin() >= arranged_.size())
        beyondBounds(*indexes.rbegin(), arranged_.size());
    std::vector<bool> doomed(content_.size(), false);
    for (std::size_t index : indexes)
        doomed[arranged_[index]] = true;
    ValueArray kept;
    std::vector<bool> keptSelected;
    kept.reserve(content_.size() - indexes.size());
    for (std::size_t i = 0; i < content_.size(); ++i) {
        if (doomed[i]) continue;
        kept.push_back(content_[i]);
        keptSelected.push_back(selected_[i]);
    }
    std::vector<std::size_t> arranged = arrangementOf(kept, filter_, sortDescriptors_);
    content_ = std::move(kept);
    selected_ = std::move(keptSelected);
    commitArrangement(std::move(arranged));
}

void ArrayController::setFilterPredicate(FilterPredicate predicate) {
    std::vector<std::size_t> arranged = arrangementOf(content_, predicate, sortDescriptors_);
    filter_ = std::move(predicate);
    commitArrangement(std::move(arranged));
}

void ArrayController::setSortDescriptors(std::vector<SortDescriptor> descriptors) {
    std::vector<std::size_t> arranged = arrangementOf(content_, filter_, descriptors);
    sortDescriptors_ = std::move(descriptors);
    commitArrangement(std::move(arranged));
}

void ArrayController::rearrangeObjects() {
    commitArrangement(arrangementOf(content_, filter_, sortDescriptors_));
}

std::size_t ArrayController::contentPositionAt(std::size_t arrangedIndex) const {
    if (arrangedIndex >= arranged_.size()) beyondBounds(arrangedIndex, arranged_.size());
    return arranged_[arrangedIndex];
}

const Value& ArrayController::arrangedObjectAt(std::size_t index) const {
    return content_[contentPositionAt(index)];
}

Value& ArrayController::mutableArrangedObjectAt(std::size_t index) {
    return content_[contentPositionAt(index)];
}

ValueArray ArrayController::arrangedObjects() const {
    ValueArray objects;
    objects.reserve(arranged_.size());
    for (std::size_t position : arranged_)
        objects.push_back(content_[position]);
    return objects;
}

IndexSet ArrayController::selectionIndexes() const {
    IndexSet indexes;
    for (std::size_t i = 0; i < arranged_.size(); ++i) {
        if (selected_[arranged_[i]]) indexes.insert(indexes.end(), i);
    }
    return indexes;
}

void ArrayController::setSelectionIndexes(const IndexSet& indexes) {
    if (!indexes.empty() && *indexes.rbegin() >= arranged_.size())
        beyondBounds(*indexes.rbegin(), arranged_.size());
    selected_.assign(content_.size(), false);
    for (std::size_t index : indexes)
        selected_[arranged_[index]] = true;
}

ValueArray ArrayController::selectedObjects() const {
    ValueArray objects;
    for (std::size_t position : arranged_) {
        if (selected_[position]) objects.push_back(content_[position]);
    }
    return objects;
}

}  // namespace bv
