// Outline nodes: restamping after every change, clamped insertion, guarded removal, the reorder and
// search orders, lineage, the limited descendant check and deep copies.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/documents/BVNode.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

using namespace bv;

namespace {
BVNode::NodePointer titled(const char* title) {
    auto node = BVNode::node();
    node->setTitle(Text(title));
    return node;
}

std::string titles(const BVNode::NodeList& nodes) {
    std::string out;
    for (const auto& node : nodes)
        out += node->title().toUtf8() + "/" + std::to_string(node->nodeIndex()) + " ";
    return out;
}
}  // namespace

TEST(BVNode, ChildChangesRestampAndSetTheParent) {
    auto root = titled("root");
    root->addChildren({titled("a"), titled("b"), titled("c")});
    root->insertChildAtIndex(titled("front"), -5);
    root->insertChildAtIndex(titled("end"), 99);
    EXPECT_EQ(titles(root->children()), "front/0 a/1 b/2 c/3 end/4 ");
    for (const auto& child : root->children())
        EXPECT_EQ(child->parentNode(), root);

    const auto b = root->childAtIndex(2);
    root->removeChildAtIndex(5);      // equal to the count: nothing
    root->removeChildAtIndex(~0ull);  // negative as a signed number: nothing
    EXPECT_EQ(root->childAtIndex(~0ull), nullptr);
    root->removeChild(b);
    EXPECT_EQ(titles(root->children()), "front/0 a/1 c/2 end/3 ");
    EXPECT_EQ(b->parentNode(), nullptr);

    root->insertChildrenAtIndexes({titled("x"), titled("y")}, IndexSet{1, 3});
    EXPECT_EQ(titles(root->children()), "front/0 x/1 a/2 y/3 c/4 end/5 ");
    EXPECT_THROW(root->insertChildrenAtIndexes({titled("z")}, IndexSet{9}), RangeException);
    EXPECT_THROW(root->removeChildrenAtIndexes(IndexSet{0, 6}), RangeException);
    EXPECT_EQ(root->numberOfChildren(), 6u);
    root->removeChildrenAtIndexes(IndexSet{0, 2});
    root->removeChildNodesInRange(Range{1, 2});
    EXPECT_EQ(titles(root->children()), "x/0 end/1 ");
    EXPECT_THROW(root->removeChildNodesInRange(Range{1, 2}), RangeException);

    const auto x = root->childAtIndex(0);
    x->removeFromParentNode();
    EXPECT_TRUE(x->isRootNode());
    root->removeChildren();
    EXPECT_FALSE(root->hasChildren());
}

TEST(BVNode, ALeafIgnoresChildrenAndExpansion) {
    auto leaf = titled("leaf");
    leaf->setCanHaveChildren(false);
    leaf->addChild(titled("a"));
    leaf->insertChildAtIndex(titled("b"), 0);
    leaf->setChildrenCopyNodes({titled("c")}, false);
    leaf->setExpanded(true);
    EXPECT_EQ(leaf->numberOfChildren(), 0u);
    EXPECT_FALSE(leaf->isExpanded());
}

TEST(BVNode, ReorderInsertsAtEachStampInTurn) {
    auto root = titled("root");
    root->addChildren({titled("first"), titled("second"), titled("third")});
    root->childAtIndex(2)->setNodeIndex(1);
    root->childAtIndex(1)->setNodeIndex(1);
    root->reorderChildrenByIndex();
    EXPECT_EQ(titles(root->children()), "first/0 third/1 second/1 ");  // no restamp

    root->childAtIndex(0)->setNodeIndex(2);  // beyond the empty list being built
    EXPECT_THROW(root->reorderChildrenByIndex(), RangeException);
    EXPECT_EQ(root->childAtIndex(0)->title(), Text("first"));
}

TEST(BVNode, MovesAndReplacementKeepStampsAsTheListOperationsLeaveThem) {
    auto root = titled("root");
    auto a = titled("a"), b = titled("b"), c = titled("c"), d = titled("d");
    root->addChildren({a, b, c, d});
    root->moveChildToIndex(b, 3);
    EXPECT_EQ(titles(root->children()), "a/0 c/2 b/1 d/3 ");
    auto e = titled("e");
    root->replaceChildWithChild(c, e);
    EXPECT_EQ(titles(root->children()), "a/0 e/2 b/1 d/3 ");
    EXPECT_EQ(e->parentNode(), root);
    EXPECT_EQ(c->parentNode(), root);  // left as it was
    EXPECT_EQ(BVNode::indexOfChild(c), 2u);
}

TEST(BVNode, QueriesWalkInTheirOrders) {
    // root: intro (a (Intro)), b, Intro
    auto root = titled("root");
    auto intro = titled("intro"), a = titled("a"), deep = titled("Intro"), b = titled("b"),
         last = titled("Intro");
    root->addChildren({intro, b, last});
    intro->addChild(a);
    a->addChild(deep);
    b->setCanHaveChildren(false);

    EXPECT_EQ(titles(root->descendants()), "intro/0 b/1 Intro/2 a/0 Intro/0 ");
    EXPECT_EQ(titles(root->nodesThatCanHaveChildren()), "intro/0 Intro/2 ");
    EXPECT_EQ(titles(deep->lineage()), "root/0 intro/0 a/0 Intro/0 ");
    EXPECT_EQ(deep->rootNode(), root);
    EXPECT_EQ(root->childrenWithTitleRecursiveSearchCaseSensitive(Text("intro"), true, false),
              (BVNode::NodeList{intro, deep, last}));
    EXPECT_EQ(root->childrenWithTitleRecursiveSearch(Text("Intro"), false), (BVNode::NodeList{last}));
    EXPECT_EQ(root->firstChildWithTitleRecursiveCaseSensitive(Text("Intro"), true, false), deep);
    EXPECT_EQ(root->firstChildWithTitleRecursiveCaseSensitive(Text("INTRO"), true, false), nullptr);
    EXPECT_TRUE(root->containsNode(deep));
    EXPECT_FALSE(intro->containsNode(last));

    EXPECT_TRUE(a->isDescendantOfNode(intro));
    EXPECT_TRUE(a->isDescendantOfNode(root));
    EXPECT_FALSE(root->isDescendantOfNode(a));
    EXPECT_FALSE(intro->isDescendantOfNode(b));
    EXPECT_THROW((void)deep->isDescendantOfNode(b), InternalInconsistencyException);
}

TEST(BVNode, CopyKeepsTitleAndDeepCopiesChildrenOnly) {
    auto root = titled("root");
    root->setToolTip(Text("tip"));
    root->setDesiredNodeHeight(40);
    root->addChild(titled("child"));
    root->childAtIndex(0)->addChild(titled("grandchild"));
    EXPECT_EQ(BVNode::node()->title(), Text(""));

    const auto copy = root->copyWithZone();
    EXPECT_EQ(copy->title(), Text("root"));
    EXPECT_EQ(copy->toolTip(), Text(""));
    EXPECT_EQ(copy->nodeHeight(), 0.0f);
    ASSERT_EQ(copy->numberOfChildren(), 1u);
    EXPECT_NE(copy->childAtIndex(0), root->childAtIndex(0));
    EXPECT_EQ(copy->childAtIndex(0)->parentNode(), copy);
    EXPECT_EQ(copy->childAtIndex(0)->childAtIndex(0)->title(), Text("grandchild"));
}
