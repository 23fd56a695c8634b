#include "ambrel/objects/focus_order.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

namespace ambrel {
namespace {

class FocusOrderTest : public testing::Test, protected FocusGroups {
protected:
    FocusOrderTest()
    {
        for (ObjectNode& node : nodes) {
            node.setRect({0, 0, 10, 10});
            node.set(NodeFlag::TabStop, true);
            root.append(node);
        }
    }

    std::optional<FocusGroup> groupOf(ObjectNode& node) const override
    {
        const auto number = numbers.find(&node);
        return number == numbers.end() ? std::nullopt : std::optional(FocusGroup{nullptr, number->second});
    }
    bool isChosen(const ObjectNode& node) const override { return chosen.contains(&node); }

    void group(long number, std::initializer_list<int> members)
    {
        for (const int member : members)
            numbers[&nodes[static_cast<std::size_t>(member)]] = number;
    }
    ObjectNode& at(int index) { return nodes[static_cast<std::size_t>(index)]; }
    /// Where Tab leads from a node: its number, -1 for nowhere.
    int tab(int from, bool forward = true)
    {
        return numberOf(nextTabStop(root, from < 0 ? nullptr : &at(from), forward, this));
    }
    int arrow(int from, bool forward = true) { return numberOf(nextInGroup(root, at(from), forward, *this)); }

    struct Owner final : NodeOwner {
    } owner;
    ObjectNode root{owner};
    std::array<ObjectNode, 6> nodes{ObjectNode{owner}, ObjectNode{owner}, ObjectNode{owner},
                                    ObjectNode{owner}, ObjectNode{owner}, ObjectNode{owner}};
    std::map<const ObjectNode*, long> numbers;
    std::set<const ObjectNode*> chosen;

private:
    int numberOf(const ObjectNode* node) const { return node ? static_cast<int>(node - nodes.data()) : -1; }
};

TEST_F(FocusOrderTest, StopsWithAPlaceInTheTabOrderComeFirst)
{
    at(4).setTabOrder(1);
    at(2).setTabOrder(0);
    at(5).setTabOrder(1);
    const auto round = [&](bool forward) {
        std::vector<int> met;
        for (int i = 0, next = -1; i < 6; ++i)
            met.push_back(next = tab(next, forward));
        return met;
    };
    EXPECT_EQ(round(true), (std::vector{2, 4, 5, 0, 1, 3}));
    EXPECT_EQ(round(false), (std::vector{3, 1, 0, 5, 4, 2}));
    EXPECT_EQ(tab(3), 2) << "around again";
    at(4).set(NodeFlag::Enabled, false);
    EXPECT_EQ(tab(4), 5) << "from one that was just disabled, on from its place";
}

TEST_F(FocusOrderTest, TabStopsOnceInAGroupAtTheChosenMember)
{
    group(1, {1, 2, 3});
    chosen = {&at(2)};
    EXPECT_EQ(tab(0), 2);
    EXPECT_EQ(tab(2), 4);
    EXPECT_EQ(tab(1), 4); // the focus may be on another one
    EXPECT_EQ(tab(4, false), 2);
    EXPECT_EQ(tab(2, false), 0);
    EXPECT_EQ(tab(5), 0);
}

TEST_F(FocusOrderTest, WithoutAChoiceThatCanBeReachedTabStopsAtTheMemberItMeetsFirst)
{
    group(1, {1, 2, 3});
    EXPECT_EQ(tab(0), 1);
    EXPECT_EQ(tab(4, false), 3);
    EXPECT_EQ(tab(1), 4);
    chosen = {&at(2)};
    at(2).set(NodeFlag::Enabled, false);
    EXPECT_EQ(tab(0), 1);
    group(2, {0, 4, 5}); // nothing but the two groups
    EXPECT_EQ(tab(1), 4);
    EXPECT_EQ(tab(4), 1);
}

TEST_F(FocusOrderTest, AWindowOfOneGroupAloneHasNowhereToGo)
{
    group(1, {0, 1, 2, 3, 4, 5});
    EXPECT_EQ(tab(0), -1);
    EXPECT_EQ(tab(-1), 0);
    EXPECT_EQ(tab(-1, false), 5);
}

TEST_F(FocusOrderTest, ArrowsGoRoundInTheGroupPastWhatIsDisabledOrHidden)
{
    group(1, {1, 3, 4, 5});
    at(3).set(NodeFlag::Enabled, false);
    EXPECT_EQ(arrow(1), 4);
    EXPECT_EQ(arrow(5), 1);
    EXPECT_EQ(arrow(1, false), 5);
    at(5).set(NodeFlag::Visible, false);
    EXPECT_EQ(arrow(4), 1);
    EXPECT_EQ(arrow(0), -1);
    at(1).set(NodeFlag::Visible, false);
    EXPECT_EQ(arrow(4), -1);
}

} // namespace
} // namespace ambrel
