// Outline tree nodes: building, removing, ordering and searching children.
#include "BrevantCocoaExtensions/documents/BVNode.hpp"

#include <algorithm>
#include <utility>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"

namespace bv {

namespace {
bool titleMatches(const Text& title, const Text& wanted, bool caseSensitive) {
    return caseSensitive ? title == wanted : title.compare(wanted, CompareMode::CaseInsensitive) == 0;
}

bool isNegativeAsSigned(std::uint64_t index) {
    return static_cast<std::int64_t>(index) < 0;
}
}  // namespace

BVNode::NodePointer BVNode::node() {
    return std::make_shared<BVNode>();
}

BVNode::NodePointer BVNode::init() {
    return node();
}

BVNode::NodePointer BVNode::newNodeOfSameClass() const {
    return std::make_shared<BVNode>();
}

BVNode::NodePointer BVNode::copyWithZone() const {
    NodePointer copy = newNodeOfSameClass();
    copy->title_ = title_;
    copy->setChildrenCopyNodes(childNodes_, true);
    return copy;
}

void BVNode::adopt(const NodeList& children) {
    const NodePointer self = std::const_pointer_cast<BVNode>(shared_from_this());
    for (const NodePointer& child : children)
        child->parentNode_ = self;
}

void BVNode::detach(const NodePointer& child) {
    if (child) child->parentNode_.reset();
}

void BVNode::setChildrenCopyNodes(const NodeList& children, bool copyNodes) {
    if (!canHaveChildren_) return;
    NodeList replacement;
    replacement.reserve(children.size());
    for (const NodePointer& child : children)
        replacement.push_back(copyNodes ? child->copyWithZone() : child);
    childNodes_ = std::move(replacement);
    adopt(childNodes_);
    setChildrenIndexesInAscendingOrder();
}

void BVNode::addChildren(const NodeList& children) {
    if (!canHaveChildren_) return;
    childNodes_.insert(childNodes_.end(), children.begin(), children.end());
    adopt(childNodes_);
    setChildrenIndexesInAscendingOrder();
}

void BVNode::addChild(const NodePointer& child) {
    addChildren({child});
}

void BVNode::insertChildAtIndex(const NodePointer& child, std::int64_t index) {
    if (!canHaveChildren_) return;
    const auto clamped = std::clamp<std::int64_t>(index, 0, static_cast<std::int64_t>(childNodes_.size()));
    childNodes_.insert(childNodes_.begin() + clamped, child);
    adopt({child});
    setChildrenIndexesInAscendingOrder();
}

void BVNode::insertChildrenAtIndexes(const NodeList& children, const IndexSet& indexes) {
    if (!canHaveChildren_) return;
    if (children.size() != indexes.size()) {
        throw InvalidArgumentException("insertChildrenAtIndexes: the node and index counts differ");
    }
    std::size_t grownSize = childNodes_.size();
    for (std::size_t index : indexes) {
        if (index > grownSize++) throw RangeException("insertChildrenAtIndexes: index beyond the end");
    }
    auto child = children.begin();
    for (std::size_t index : indexes)
        childNodes_.insert(childNodes_.begin() + index, *child++);
    adopt(childNodes_);
    setChildrenIndexesInAscendingOrder();
}

void BVNode::removeChildren() {
    for (const NodePointer& child : childNodes_)
        detach(child);
    childNodes_.clear();
}

void BVNode::removeChild(const NodePointer& child) {
    detach(child);
    std::erase(childNodes_, child);
    setChildrenIndexesInAscendingOrder();
}

void BVNode::removeChildAtIndex(std::uint64_t index) {
    if (isNegativeAsSigned(index) || index >= childNodes_.size()) return;
    detach(childNodes_[index]);
    childNodes_.erase(childNodes_.begin() + static_cast<std::ptrdiff_t>(index));
    setChildrenIndexesInAscendingOrder();
}

void BVNode::removeChildrenAtIndexes(const IndexSet& indexes) {
    if (!indexes.empty() && *indexes.rbegin() >= childNodes_.size()) {
        throw RangeException("removeChildrenAtIndexes: index beyond the end");
    }
    for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
        detach(childNodes_[*index]);
        childNodes_.erase(childNodes_.begin() + static_cast<std::ptrdiff_t>(*index));
    }
    setChildrenIndexesInAscendingOrder();
}

void BVNode::removeChildNodesInRange(const Range& range) {
    if (range.location > childNodes_.size() || range.length > childNodes_.size() - range.location) {
        throw RangeException("removeChildNodesInRange: range beyond the end");
    }
    const auto first = childNodes_.begin() + static_cast<std::ptrdiff_t>(range.location);
    const auto last = first + static_cast<std::ptrdiff_t>(range.length);
    std::for_each(first, last, detach);
    childNodes_.erase(first, last);
    setChildrenIndexesInAscendingOrder();
}

void BVNode::detachChildren(const NodeList& children) {
    for (const NodePointer& child : children)
        detach(child);
}

void BVNode::removeFromParentNode() {
    if (const NodePointer parent = parentNode()) parent->removeChild(shared_from_this());
}

void BVNode::setChildrenIndexesInAscendingOrder() {
    for (std::size_t position = 0; position < childNodes_.size(); ++position) {
        childNodes_[position]->nodeIndex_ = position;
    }
}

void BVNode::reorderChildrenByIndex() {
    NodeList reordered;
    reordered.reserve(childNodes_.size());
    for (const NodePointer& child : childNodes_) {
        if (child->nodeIndex_ > reordered.size()) {
            throw RangeException("reorderChildrenByIndex: a node index beyond the list being built");
        }
        reordered.insert(reordered.begin() + static_cast<std::ptrdiff_t>(child->nodeIndex_), child);
    }
    childNodes_ = std::move(reordered);
}

ValueArray BVNode::childrenAsValues() const {
    ValueArray values;
    values.reserve(childNodes_.size());
    for (const NodePointer& child : childNodes_)
        values.emplace_back(std::static_pointer_cast<Object>(child));
    return values;
}

void BVNode::setChildrenFromValues(const ValueArray& values) {
    NodeList children;
    children.reserve(values.size());
    for (const Value& value : values)
        children.push_back(std::static_pointer_cast<BVNode>(value.object()));
    childNodes_ = std::move(children);
}

void BVNode::moveChildToIndex(const NodePointer& child, std::uint64_t index) {
    ValueArray values = childrenAsValues();
    BVNSMutableArray::moveObjectToIndex(values, Value(std::static_pointer_cast<Object>(child)), index);
    setChildrenFromValues(values);
}

void BVNode::moveChildrenToIndexes(const NodeList& children, const IndexSet& indexes) {
    ValueArray values = childrenAsValues();
    ValueArray moved;
    for (const NodePointer& child : children)
        moved.emplace_back(std::static_pointer_cast<Object>(child));
    BVNSMutableArray::moveObjectsToIndexes(values, moved, indexes);
    setChildrenFromValues(values);
}

void BVNode::replaceChildWithChild(const NodePointer& oldChild, const NodePointer& newChild) {
    newChild->nodeIndex_ = oldChild->nodeIndex_;
    const auto found = std::find(childNodes_.begin(), childNodes_.end(), oldChild);
    if (found != childNodes_.end()) *found = newChild;
    adopt({newChild});
}

std::uint64_t BVNode::indexOfChild(const NodePointer& child) {
    return child->nodeIndex_;
}

BVNode::NodePointer BVNode::childAtIndex(std::uint64_t index) const {
    if (isNegativeAsSigned(index) || index >= childNodes_.size()) return nullptr;
    return childNodes_[index];
}

BVNode::NodeList BVNode::descendants() const {
    // Each node visited contributes its whole child list, then its children are visited in order.
    NodeList result;
    std::vector<const BVNode*> pending{this};
    while (!pending.empty()) {
        const BVNode* node = pending.back();
        pending.pop_back();
        result.insert(result.end(), node->childNodes_.begin(), node->childNodes_.end());
        for (auto child = node->childNodes_.rbegin(); child != node->childNodes_.rend(); ++child) {
            pending.push_back(child->get());
        }
    }
    return result;
}

BVNode::NodeList BVNode::nodesThatCanHaveChildren() const {
    NodeList result;
    std::copy_if(childNodes_.begin(), childNodes_.end(), std::back_inserter(result),
                 [](const NodePointer& child) { return child->canHaveChildren_; });
    return result;
}

BVNode::NodeList BVNode::lineage() {
    NodeList path;
    for (NodePointer node = shared_from_this(); node; node = node->parentNode())
        path.push_back(node);
    std::reverse(path.begin(), path.end());
    return path;
}

BVNode::NodePointer BVNode::rootNode() {
    NodePointer node = shared_from_this();
    while (NodePointer parent = node->parentNode())
        node = parent;
    return node;
}

bool BVNode::isDescendantOfNode(const NodePointer& node) const {
    const NodePointer parent = parentNode();
    if (!parent) return false;
    if (parent == node) return true;
    const NodePointer grandparent = parent->parentNode();
    if (!grandparent) return false;
    if (grandparent == node) return true;
    // The check asks the parent for its parent again and again and would never finish.
    throw InternalInconsistencyException(
        "isDescendantOfNode: the node is neither the parent nor the "
        "grandparent; use containsNode on the ancestor instead");
}

bool BVNode::containsNode(const NodePointer& node) const {
    std::vector<const BVNode*> pending{this};
    while (!pending.empty()) {
        const BVNode* candidate = pending.back();
        pending.pop_back();
        if (candidate == node.get()) return true;
        for (auto child = candidate->childNodes_.rbegin(); child != candidate->childNodes_.rend(); ++child) {
            pending.push_back(child->get());
        }
    }
    return false;
}

BVNode::NodeList BVNode::childrenWithTitleRecursiveSearchCaseSensitive(const Text& title,
                                                                       bool recursiveSearch,
                                                                       bool caseSensitive) const {
    NodeList found;
    std::vector<const BVNode*> pending;
    for (auto child = childNodes_.rbegin(); child != childNodes_.rend(); ++child)
        pending.push_back(child->get());
    while (!pending.empty()) {
        const BVNode* node = pending.back();
        pending.pop_back();
        if (titleMatches(node->title(), title, caseSensitive)) {
            found.push_back(std::const_pointer_cast<BVNode>(node->shared_from_this()));
        }
        if (!recursiveSearch) continue;
        for (auto child = node->childNodes_.rbegin(); child != node->childNodes_.rend(); ++child) {
            pending.push_back(child->get());
        }
    }
    return found;
}

BVNode::NodeList BVNode::childrenWithTitleRecursiveSearch(const Text& title, bool recursiveSearch) const {
    return childrenWithTitleRecursiveSearchCaseSensitive(title, recursiveSearch, true);
}

BVNode::NodePointer BVNode::firstChildWithTitleRecursiveCaseSensitive(const Text& title, bool recursive,
                                                                      bool /*caseSensitive*/) const {
    const NodeList found = childrenWithTitleRecursiveSearch(title, recursive);
    return found.empty() ? nullptr : found.front();
}

BVNode::NodePointer BVNode::firstChildWithTitleRecursive(const Text& title, bool recursive) const {
    return firstChildWithTitleRecursiveCaseSensitive(title, recursive, true);
}

void BVNode::setExpanded(bool flag) noexcept {
    if (canHaveChildren_) isExpanded_ = flag;
}

Text BVNode::description() const {
    return Text("BVNode \"") + title() + Text("\" (") + Text(std::to_string(childNodes_.size())) +
           Text(" children)");
}

}  // namespace bv
