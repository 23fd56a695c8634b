#include "ambrel/window/message_registry.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace ambrel {
namespace {

struct Owner final : NodeOwner {};

class MessageRegistryTest : public testing::Test {
protected:
    MessageRegistryTest()
    {
        for (auto& each : nodes)
            each = std::make_unique<ObjectNode>(owner);
    }

    /// The indices of the nodes served, in order; `during` runs at each.
    std::vector<int> serve(
        std::uint32_t message, const std::function<void(int)>& during = [](int) {})
    {
        std::vector<int> served;
        registry.serve(message, [&](ObjectNode& node, bool) {
            int index = 0;
            while (nodes[static_cast<std::size_t>(index)].get() != &node)
                ++index;
            served.push_back(index);
            during(index);
        });
        return served;
    }

    Owner owner;
    std::array<std::unique_ptr<ObjectNode>, 4> nodes;
    MessageRegistry registry;
};

using Served = std::vector<int>;

TEST_F(MessageRegistryTest, EachRegistrationIsServedOnceAndLeavesNothingBehind)
{
    EXPECT_TRUE(registry.add(5, *nodes[1], false));
    EXPECT_TRUE(registry.add(5, *nodes[0], false));
    EXPECT_FALSE(registry.add(5, *nodes[1], true));
    registry.addWhole(*nodes[2], false);
    registry.add(5, *nodes[2], false);
    EXPECT_EQ(serve(5), Served({2, 1, 0}));
    EXPECT_EQ(serve(6), Served({2}));
    EXPECT_TRUE(registry.remove(5, *nodes[1]));
    EXPECT_FALSE(registry.remove(5, *nodes[1]));
    EXPECT_FALSE(registry.remove(9, *nodes[0]));
    nodes[0].reset();
    registry.remove(5, *nodes[2]);
    registry.removeWhole(*nodes[2]);
    EXPECT_TRUE(registry.isEmpty());
    EXPECT_EQ(serve(5), Served());
}

TEST_F(MessageRegistryTest, RegistrationsMayChangeWhileAMessageIsServed)
{
    for (int i = 0; i < 3; ++i)
        registry.add(5, *nodes[static_cast<std::size_t>(i)], false);
    const auto changing = [&](int index) {
        if (index != 0)
            return;
        registry.remove(5, *nodes[0]);
        nodes[1].reset();
        registry.add(5, *nodes[3], false); // waits
        for (std::uint32_t other = 100; other < 200; ++other)
            registry.add(other, *nodes[3], false); // moves the lists about
        EXPECT_EQ(serve(5), Served({2, 3}));       // again, from inside
    };
    EXPECT_EQ(serve(5, changing), Served({0, 2}));
    EXPECT_EQ(serve(5, [&](int) { registry.removeAll(); }), Served({2}));
    EXPECT_TRUE(registry.isEmpty());
}

} // namespace
} // namespace ambrel
