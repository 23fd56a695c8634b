#include "ambrel/objects/focus_order.h"
#include "ambrel/objects/object_node.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace ambrel {
namespace {

struct Owner final : NodeOwner {};

class ObjectNodeTest : public testing::Test {
protected:
    ObjectNodeTest()
    {
        for (auto* node : {&a, &b, &c}) {
            root.append(*node);
            node->setRect({0, 0, 10, 10});
        }
        root.setRect({0, 0, 100, 100});
    }

    std::vector<ObjectNode*> childrenOf(ObjectNode& node) { return {node.children().begin(), node.children().end()}; }

    Owner owner;
    ObjectNode root{owner}, a{owner}, b{owner}, c{owner};
};

using Nodes = std::vector<ObjectNode*>;

TEST_F(ObjectNodeTest, ChildrenKeepTheirOrderThroughInsertionsAndMoves)
{
    ObjectNode d(owner);
    EXPECT_TRUE(root.insert(d, 1));
    EXPECT_EQ(childrenOf(root), (Nodes{&a, &d, &b, &c}));
    EXPECT_TRUE(root.moveChild(a, 99));
    EXPECT_EQ(childrenOf(root), (Nodes{&d, &b, &c, &a}));
    EXPECT_FALSE(root.moveChild(a, 3));
    b.append(d); // from one parent to another
    EXPECT_EQ(childrenOf(root), (Nodes{&b, &c, &a}));
    EXPECT_EQ(d.parent(), &b);
    EXPECT_EQ(root.indexOf(d), -1);
    EXPECT_EQ(&d.root(), &root);
}

TEST_F(ObjectNodeTest, CyclesAreRefusedAndChangeNothing)
{
    a.append(b);
    EXPECT_FALSE(b.append(a));
    EXPECT_FALSE(a.append(a));
    EXPECT_FALSE(b.append(root));
    EXPECT_EQ(a.parent(), &root);
    EXPECT_EQ(childrenOf(root), (Nodes{&a, &c}));
}

TEST_F(ObjectNodeTest, AWalkMeetsEachRemainingChildOnceWhateverIsRemovedOrAdded)
{
    auto d = std::make_unique<ObjectNode>(owner);
    ObjectNode late(owner);
    root.append(*d);
    Nodes met;
    ChildIteration walk(root);
    while (ObjectNode* node = walk.next()) {
        met.push_back(node);
        if (node == &b) {
            root.insert(late, 0);
            a.remove(); // behind
            b.remove(); // itself
            d.reset();  // ahead
        }
    }
    EXPECT_EQ(met, (Nodes{&a, &b, &c}));
    EXPECT_EQ(childrenOf(root), (Nodes{&late, &c}));
}

TEST_F(ObjectNodeTest, AWalkNearAPartMeetsAllThatTouchItWhateverHasMoved)
{
    // 300 nodes move about, come and go while a walk is under way; what it may leave out touches nothing of the part.
    std::mt19937 random(20261121);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<std::unique_ptr<ObjectNode>> nodes;
    ObjectNode parent(owner);
    for (int i = 0; i < 300; ++i) {
        nodes.push_back(std::make_unique<ObjectNode>(owner));
        parent.append(*nodes.back());
        nodes.back()->setRect(Rect::at({below(1000), i * 10}, {20, 8}));
    }
    for (const auto order : {ChildIteration::Order::BottomToTop, ChildIteration::Order::TopToBottom}) {
        int met = 0;
        ChildIteration walk(parent, order);
        while (walk.nextNear({0, 2000, 1000, 2010}))
            ++met;
        EXPECT_GT(met, 0);
        EXPECT_LE(met, 64) << "one block of five: far ones are left out";
    }
    for (int round = 0; round < 200; ++round) {
        const Rect part = Rect::at({below(1000), below(3000)}, {1 + below(200), 1 + below(200)});
        Nodes expected;
        for (ObjectNode* node : parent.children())
            if (!node->rect().intersection(part).isEmpty())
                expected.push_back(node);
        const auto order = round % 2 ? ChildIteration::Order::BottomToTop : ChildIteration::Order::TopToBottom;
        if (order == ChildIteration::Order::TopToBottom)
            std::reverse(expected.begin(), expected.end());
        Nodes touching;
        ChildIteration walk(parent, order);
        while (ObjectNode* node = walk.nextNear(part)) {
            if (!node->rect().intersection(part).isEmpty())
                touching.push_back(node);
        }
        EXPECT_EQ(touching, expected) << "round " << round;
        ObjectNode& moved = *nodes[static_cast<std::size_t>(below(300))];
        if (below(2))
            moved.setRect(Rect::at({below(1000), below(3000)}, {20, 8}));
        else
            parent.moveChild(moved, static_cast<std::size_t>(below(300)));
    }

    ChildIteration walk(parent);
    ASSERT_NE(walk.nextNear({0, 0, 1100, 4000}), nullptr);
    nodes.clear(); // each leaves its parent
    EXPECT_EQ(walk.nextNear({0, 0, 1000, 4000}), nullptr);
}

TEST_F(ObjectNodeTest, AWalkFromTheTopSurvivesRemovalsAndTheEndOfTheParent)
{
    auto parent = std::make_unique<ObjectNode>(owner);
    for (auto* node : {&a, &b, &c})
        parent->append(*node);
    ChildIteration walk(*parent, ChildIteration::Order::TopToBottom);
    ChildIteration nested(*parent);
    EXPECT_EQ(walk.next(), &c);
    c.remove();
    EXPECT_EQ(walk.next(), &b);
    parent.reset();
    EXPECT_EQ(walk.next(), nullptr);
    EXPECT_EQ(nested.next(), nullptr);
    EXPECT_EQ(a.parent(), nullptr);
}

TEST_F(ObjectNodeTest, WeakPointersTurnNullWithTheirNode)
{
    auto node = std::make_unique<ObjectNode>(owner);
    WeakNode first(node.get());
    const WeakNode second = first;
    WeakNode third(&a);
    third = second;
    first.reset(&b);
    node.reset();
    EXPECT_EQ(first.get(), &b);
    EXPECT_FALSE(second);
    EXPECT_FALSE(third);
}

TEST_F(ObjectNodeTest, WhatIsShownDependsOnEveryAncestor)
{
    a.append(b);
    a.setRect({10, 10, 30, 30});
    b.setRect({20, 20, 200, 25});
    EXPECT_EQ(b.shownRect(), (Rect{20, 20, 30, 25}));
    root.set(NodeFlag::Visible, false);
    EXPECT_FALSE(b.isShown());
    EXPECT_TRUE(b.has(NodeFlag::Visible));
    EXPECT_TRUE(b.shownRect().isEmpty());
    a.set(NodeFlag::Enabled, false);
    EXPECT_FALSE(b.isUsable());
}

TEST_F(ObjectNodeTest, TabWalksOverUsableStopsBothWaysAndWrapsRound)
{
    ObjectNode inner(owner);
    inner.setRect({0, 0, 5, 5});
    a.append(inner);
    for (auto* node : {&inner, &b, &c})
        node->set(NodeFlag::TabStop, true);
    EXPECT_EQ(nextTabStop(root, nullptr, true), &inner);
    EXPECT_EQ(nextTabStop(root, nullptr, false), &c);
    EXPECT_EQ(nextTabStop(root, &inner, true), &b);
    EXPECT_EQ(nextTabStop(root, &c, true), &inner);
    EXPECT_EQ(nextTabStop(root, &inner, false), &c);
    b.set(NodeFlag::Enabled, false);
    EXPECT_EQ(nextTabStop(root, &inner, true), &c);
    a.set(NodeFlag::Visible, false); // the focused object sits in a part that has just been hidden
    EXPECT_EQ(nextTabStop(root, &inner, true), &c);
    c.setRect({});
    EXPECT_EQ(nextTabStop(root, &inner, true), nullptr);
}

} // namespace
} // namespace ambrel
