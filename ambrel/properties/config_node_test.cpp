#include "ambrel/properties/config_node.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

TEST(ConfigNodeTest, AttributesKeepTheirOrderAndAreReplacedInPlace)
{
    const auto node = ConfigNode::create(L"Button1");
    node->setAttribute(L"TextText", L"OK");
    node->setAttribute(L"Width", L"200");
    node->setAttribute(L"TextText", L"Cancel");
    ASSERT_EQ(node->attributes().size(), 2u);
    EXPECT_EQ(node->attributes()[0].name, L"TextText");
    EXPECT_EQ(*node->attribute(L"TextText"), L"Cancel");
    EXPECT_TRUE(node->removeAttribute(L"TextText"));
    EXPECT_FALSE(node->removeAttribute(L"TextText"));
    EXPECT_EQ(node->attribute(L"TextText"), nullptr);
    EXPECT_EQ(node->attribute(L"width"), nullptr) << "names are told apart by case";
}

TEST(ConfigNodeTest, ChildrenMoveBetweenParentsAndWithinOne)
{
    const auto left = ConfigNode::create(L"left");
    const auto right = ConfigNode::create(L"right");
    const auto a = left->addChild(L"a");
    const auto b = left->addChild(L"b");
    const auto c = left->addChild(L"c");
    EXPECT_TRUE(left->insertChild(3, a)); // behind the last, although its own leaving shortens the list
    EXPECT_EQ(left->children().back(), a);
    EXPECT_EQ(b->nextSibling(), c);
    EXPECT_EQ(a->nextSibling(), nullptr);
    EXPECT_TRUE(right->appendChild(b));
    EXPECT_EQ(b->parent(), right.get());
    EXPECT_EQ(left->children().size(), 2u);
    EXPECT_FALSE(left->insertChild(9, b));
    EXPECT_EQ(b->parent(), right.get()) << "a refused insertion changes nothing";
}

TEST(ConfigNodeTest, ANodeCannotBePutIntoItself)
{
    const auto root = ConfigNode::create(L"root");
    const auto child = root->addChild(L"child");
    const auto grandchild = child->addChild(L"grandchild");
    EXPECT_FALSE(grandchild->appendChild(root));
    EXPECT_FALSE(child->appendChild(child));
    EXPECT_EQ(grandchild->parent(), child.get());
}

TEST(ConfigNodeTest, AHandleLastsAsLongAsItsNodeAndIsNeverReused)
{
    auto node = ConfigNode::create(L"node");
    const NodeHandle handle = node->handle();
    EXPECT_EQ(node->handle(), handle);
    EXPECT_EQ(ConfigNode::fromHandle(handle), node);
    node.reset();
    EXPECT_EQ(ConfigNode::fromHandle(handle), nullptr);
    EXPECT_NE(ConfigNode::create(L"other")->handle(), handle);
    for (const NodeHandle wrong : {NodeHandle{0}, NodeHandle{1}, NodeHandle{-1}, handle + 100})
        EXPECT_EQ(ConfigNode::fromHandle(wrong), nullptr);
}

TEST(ConfigNodeTest, WhatIsStillSharedSurvivesItsTree)
{
    auto root = ConfigNode::create(L"root");
    const auto kept = root->addChild(L"between")->addChild(L"kept");
    kept->addChild(L"leaf");
    root.reset();
    EXPECT_EQ(kept->parent(), nullptr);
    EXPECT_EQ(kept->children().size(), 1u);
    kept->detach(); // harmless outside a tree
}

TEST(ConfigNodeTest, AVeryDeepTreeGoesWithoutDeepRecursion)
{
    auto root = ConfigNode::create(L"root");
    auto deepest = root;
    for (int i = 0; i < 100000; ++i)
        deepest = deepest->addChild(L"n");
    deepest.reset();
    root.reset();
}

} // namespace
} // namespace ambrel
