#include "controls/buttons/radio_box/radio_members.h"

#include <gtest/gtest.h>

#include <memory>

using namespace morvane;

namespace {
struct Box {
    int number = -1;
};
} // namespace

TEST(RadioMembersTest, MembersAreFoundByWhatTheyAre)
{
    Box first{1};
    Box second{2};
    RadioMembers<Box> members;
    members.add(&first);
    EXPECT_TRUE(members.has(&first));
    EXPECT_FALSE(members.has(&second));
    EXPECT_EQ(members.find([](const Box* box) { return box->number == 1; }), &first);
    EXPECT_EQ(members.find([](const Box* box) { return box->number == 2; }), nullptr);
}

TEST(RadioMembersTest, MembersMayComeAndGoWhileOneIsLookedFor)
{
    std::vector<std::unique_ptr<Box>> boxes;
    for (int number = 0; number < 4; ++number)
        boxes.push_back(std::make_unique<Box>(Box{number}));
    RadioMembers<Box> members;
    for (const auto& box : boxes)
        members.add(box.get());
    const auto letGo = [&](std::size_t index) {
        members.remove(boxes[index].get());
        boxes[index].reset();
    };
    Box late[64];
    const Box* const found = members.find([&](const Box* box) {
        if (box->number == 0) {
            letGo(1); // before it is its turn
            for (Box& other : late)
                members.add(&other);
        }
        return box->number == 3;
    });
    EXPECT_EQ(found, boxes[3].get());
    EXPECT_EQ(members.find([&](const Box* box) {
        if (box != boxes[3].get())
            return false;
        letGo(3); // while it is asked
        return true;
    }),
              nullptr);
}

TEST(RadioMembersTest, TheCurrentMemberLeavesTheGroupWithoutOne)
{
    Box first{1};
    Box second{2};
    RadioMembers<Box> members;
    members.add(&first);
    members.add(&second);
    EXPECT_EQ(members.makeCurrent(&first), nullptr);
    EXPECT_EQ(members.makeCurrent(&second), &first);
    members.remove(&first);
    EXPECT_EQ(members.current(), &second);
    members.remove(&second);
    EXPECT_EQ(members.current(), nullptr);
    members.remove(&second); // no member any more
    EXPECT_TRUE(members.all().empty());
}
