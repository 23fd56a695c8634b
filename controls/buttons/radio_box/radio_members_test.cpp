#include "controls/buttons/radio_box/radio_members.h"

#include <gtest/gtest.h>

using namespace morvane;

namespace {
struct Box {
    int number;
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
