#include "controls/buttons/radio_box/radio_members.h"

#include <gtest/gtest.h>

using namespace morvane;

namespace {
struct Box {};
} // namespace

TEST(RadioMembersTest, ANameStandsForOneMember)
{
    Box first;
    Box second;
    RadioMembers<Box> members;
    EXPECT_TRUE(members.add(L"Radio1", &first));
    EXPECT_FALSE(members.add(L"Radio1", &second));
    EXPECT_EQ(members.find(L"Radio1"), &first);
    EXPECT_EQ(members.find(L"Radio2"), nullptr);
    EXPECT_TRUE(members.has(&first));
    EXPECT_FALSE(members.has(&second));
    members.remove(&second); // not one of them
    EXPECT_TRUE(members.has(&first));
}

TEST(RadioMembersTest, TheCurrentMemberLeavesTheGroupWithoutOne)
{
    Box first;
    Box second;
    RadioMembers<Box> members;
    members.add(L"Radio1", &first);
    members.add(L"Radio2", &second);
    EXPECT_EQ(members.makeCurrent(&first), nullptr);
    EXPECT_EQ(members.makeCurrent(&second), &first);
    members.remove(&first);
    EXPECT_EQ(members.current(), &second);
    members.remove(&second);
    EXPECT_EQ(members.current(), nullptr);
    EXPECT_TRUE(members.isEmpty());
}
