// BVNode: the model object behind one row of an outline or thumbnail strip: a titled node with an ordered
// list of children, a non-owning reference to its parent, the index it holds among its siblings, an
// expanded flag, icon names and a row height. No view is involved; BVThumbnail (interface library) adds
// a picture.
//
// A parent owns its children (shared pointers); a child refers to its parent weakly. The operations that
// "restamp" leave every child's nodeIndex equal to its position and its parent the receiver.
//
// Pitfalls callers rely on:
//   - With canHaveChildren false, every child-adding operation and setExpanded do nothing, silently.
//   - moveChild..., moveChildren... and reorderChildrenByIndex do not restamp; call
//     setChildrenIndexesInAscendingOrder afterwards when the stamps must match the order.
//   - indexOfChild answers the node's own stamp, whether or not it is a child of the receiver.
//   - firstChildWithTitleRecursiveCaseSensitive ignores its case flag and always compares exactly.
//   - isDescendantOfNode looks at the parent and the grandparent only; for any deeper ancestor it throws
//     InternalInconsistencyException (the check it performs never ends there). Use containsNode on the
//     candidate ancestor for the complete test.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/IndexSet.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVNode : public Object, public std::enable_shared_from_this<BVNode> {
  public:
    using NodePointer = std::shared_ptr<BVNode>;
    using NodeList = std::vector<NodePointer>;

    BVNode() = default;
    ~BVNode() override = default;
    BVNode(const BVNode&) = delete;
    BVNode& operator=(const BVNode&) = delete;

    // A new plain node with the initial values, also when called through a subclass.
    [[nodiscard]] static NodePointer node();
    [[nodiscard]] static NodePointer init();
    // A new node of the receiver's own class with the same title and copies of all children (recursively);
    // every other field has its initial value.
    [[nodiscard]] NodePointer copyWithZone() const;

    // --- Tree building (ignored when canHaveChildren is false; each restamps) --------------------------

    // Replaces the child list by the nodes, or by copies of them when copyNodes is set.
    void setChildrenCopyNodes(const NodeList& children, bool copyNodes);
    void addChildren(const NodeList& children);
    void addChild(const NodePointer& child);
    // The index is clamped to 0 .. numberOfChildren: -5 inserts at the front, 99 appends.
    void insertChildAtIndex(const NodePointer& child, std::int64_t index);
    // Inserts the nodes at the ascending indexes, each counted in the list as it grows. A count mismatch
    // throws InvalidArgumentException, an index past the end RangeException; the list is then unchanged.
    void insertChildrenAtIndexes(const NodeList& children, const IndexSet& indexes);

    // --- Removal (each clears the removed nodes' parent; all but removeChildren restamp) ---------------

    void removeChildren();
    // Removes every occurrence of the node.
    void removeChild(const NodePointer& child);
    // Nothing when the index is negative as a signed number or not below the count.
    void removeChildAtIndex(std::uint64_t index);
    // RangeException (list unchanged) when an index is not below the count.
    void removeChildrenAtIndexes(const IndexSet& indexes);
    // RangeException (list unchanged) when the range reaches past the end.
    void removeChildNodesInRange(const Range& range);
    // Clears each node's parent; the child list is not changed.
    static void detachChildren(const NodeList& children);
    // removeChild of the receiver on its parent; nothing for a root.
    void removeFromParentNode();

    // --- Order and index -------------------------------------------------------------------------------

    // The restamp: each child's nodeIndex becomes its position.
    void setChildrenIndexesInAscendingOrder();
    // Rebuilds the order by inserting each child, in the current order, at its nodeIndex in a new list
    // (stamps 0, 1, 1 give first, third, second). A stamp beyond the new list's length throws
    // RangeException and leaves the order unchanged. No restamp.
    void reorderChildrenByIndex();
    // The list moves of BVNSMutableArray (moveObjectToIndex, moveObjectsToIndexes); no restamp.
    void moveChildToIndex(const NodePointer& child, std::uint64_t index);
    void moveChildrenToIndexes(const NodeList& children, const IndexSet& indexes);
    // The new node takes the old one's nodeIndex and place and gets the receiver as parent; the old node's
    // parent is left as it was.
    void replaceChildWithChild(const NodePointer& oldChild, const NodePointer& newChild);
    // The node's own nodeIndex.
    [[nodiscard]] static std::uint64_t indexOfChild(const NodePointer& child);
    // The child, or null when the index is negative as a signed number or not below the count.
    [[nodiscard]] NodePointer childAtIndex(std::uint64_t index) const;

    // --- Queries ---------------------------------------------------------------------------------------

    [[nodiscard]] const NodeList& children() const noexcept { return childNodes_; }
    [[nodiscard]] bool hasChildren() const noexcept { return !childNodes_.empty(); }
    [[nodiscard]] std::uint64_t numberOfChildren() const noexcept { return childNodes_.size(); }
    // All nodes below: the children first, then each child's descendants in child order.
    [[nodiscard]] NodeList descendants() const;
    // The direct children that can have children, in order.
    [[nodiscard]] NodeList nodesThatCanHaveChildren() const;
    // Root first, receiver last.
    [[nodiscard]] NodeList lineage();
    [[nodiscard]] NodePointer rootNode();
    [[nodiscard]] bool isRootNode() const { return parentNode_.expired(); }
    // True when the node is the parent or the grandparent, false without a parent or grandparent; throws
    // InternalInconsistencyException when a grandparent exists and is not the node (see the file comment).
    [[nodiscard]] bool isDescendantOfNode(const NodePointer& node) const;
    // True when the receiver is the node or any descendant is.
    [[nodiscard]] bool containsNode(const NodePointer& node) const;
    // The children whose title equals the text (exactly, or ignoring case), each followed by its own
    // matches when recursive: pre-order.
    [[nodiscard]] NodeList childrenWithTitleRecursiveSearchCaseSensitive(const Text& title,
                                                                         bool recursiveSearch,
                                                                         bool caseSensitive) const;
    [[nodiscard]] NodeList childrenWithTitleRecursiveSearch(const Text& title, bool recursiveSearch) const;
    // The first match, always compared exactly (the case flag is not used); null when none.
    [[nodiscard]] NodePointer firstChildWithTitleRecursiveCaseSensitive(const Text& title, bool recursive,
                                                                        bool caseSensitive) const;
    [[nodiscard]] NodePointer firstChildWithTitleRecursive(const Text& title, bool recursive) const;

    // --- Accessors -------------------------------------------------------------------------------------

    // The stored text, or the empty text when none was set.
    [[nodiscard]] Text title() const { return title_.value_or(Text()); }
    void setTitle(const Text& title) { title_ = title; }
    [[nodiscard]] Text toolTip() const { return toolTip_.value_or(Text()); }
    void setToolTip(const Text& toolTip) { toolTip_ = toolTip; }
    [[nodiscard]] const std::optional<Text>& iconImageName() const noexcept { return iconImageName_; }
    void setIconImageName(const std::optional<Text>& name) { iconImageName_ = name; }
    [[nodiscard]] const std::optional<Text>& alternateIconImageName() const noexcept {
        return alternateIconImageName_;
    }
    void setAlternateIconImageName(const std::optional<Text>& name) { alternateIconImageName_ = name; }
    [[nodiscard]] const std::optional<Text>& iconImageFilePath() const noexcept { return iconImageFilePath_; }
    void setIconImageFilePath(const std::optional<Text>& path) { iconImageFilePath_ = path; }
    [[nodiscard]] NodePointer parentNode() const { return parentNode_.lock(); }
    void setParentNode(const NodePointer& parent) { parentNode_ = parent; }
    [[nodiscard]] float nodeHeight() const noexcept { return nodeHeight_; }
    void setDesiredNodeHeight(float height) noexcept { nodeHeight_ = height; }
    [[nodiscard]] std::uint64_t nodeIndex() const noexcept { return nodeIndex_; }
    void setNodeIndex(std::uint64_t index) noexcept { nodeIndex_ = index; }
    [[nodiscard]] bool canHaveChildren() const noexcept { return canHaveChildren_; }
    void setCanHaveChildren(bool flag) noexcept { canHaveChildren_ = flag; }
    [[nodiscard]] bool isExpanded() const noexcept { return isExpanded_; }
    // Acts only when canHaveChildren is true.
    void setExpanded(bool flag) noexcept;

    [[nodiscard]] Text description() const override;

  protected:
    // A new node of the receiver's own class with its initial values (copyWithZone starts from it).
    [[nodiscard]] virtual NodePointer newNodeOfSameClass() const;

  private:
    void adopt(const NodeList& children);
    static void detach(const NodePointer& child);
    [[nodiscard]] ValueArray childrenAsValues() const;
    void setChildrenFromValues(const ValueArray& values);

    std::optional<Text> title_;
    std::optional<Text> toolTip_;
    std::optional<Text> iconImageName_;
    std::optional<Text> alternateIconImageName_;
    std::optional<Text> iconImageFilePath_;
    std::weak_ptr<BVNode> parentNode_;
    NodeList childNodes_;
    float nodeHeight_ = 0.0f;
    std::uint64_t nodeIndex_ = 0;
    bool canHaveChildren_ = true;
    bool isExpanded_ = false;
};

}  // namespace bv
