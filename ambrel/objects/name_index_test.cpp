#include "ambrel/objects/name_index.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace ambrel {
namespace {

constexpr long kAnyType = 90000;

/// An object with a name and a type; the first of a tree may have an index.
class Thing final : public NodeOwner {
public:
    explicit Thing(std::wstring name, long type = 1) : m_name(std::move(name)), m_type(type) {}

    std::wstring_view name() const noexcept override { return m_name; }
    bool answersTo(std::wstring_view name, long type) const noexcept override
    {
        return (type == kAnyType || type == m_type) && name == m_name;
    }
    NameIndex* nameIndex() noexcept override { return m_index.get(); }

    void giveIndex() { m_index = std::make_unique<NameIndex>(); }
    bool hasBuiltIndex() const { return m_index && m_index->isBuilt(); }
    void rename(std::wstring name)
    {
        m_name = std::move(name);
        node.nameChanged();
    }

private:
    std::unique_ptr<NameIndex> m_index; // outlives the node
    std::wstring m_name;
    long m_type;

public:
    ObjectNode node{*this};
};

ObjectNode* plainWalk(ObjectNode& from, const NameQuery& query)
{
    for (ObjectNode* child : from.children()) {
        if (child->owner().answersTo(query.name, query.type))
            return child;
        if (ObjectNode* found = query.deep ? plainWalk(*child, query) : nullptr)
            return found;
    }
    return nullptr;
}

class NameIndexTest : public testing::Test {
protected:
    NameIndexTest()
    {
        root.giveIndex();
        for (int i = 0; i < 100; ++i)
            add(root, L"Filler" + std::to_wstring(i));
    }

    Thing& add(Thing& parent, std::wstring name, long type = 1)
    {
        things.push_back(std::make_unique<Thing>(std::move(name), type));
        parent.node.append(things.back()->node);
        return *things.back();
    }
    Thing* find(Thing& from, std::wstring_view name, long type = kAnyType, bool deep = true)
    {
        ObjectNode* const found = findByName(from.node, {name, type, deep});
        return found ? static_cast<Thing*>(&found->owner()) : nullptr;
    }
    void build()
    {
        find(root, L"nowhere");
        ASSERT_TRUE(root.hasBuiltIndex());
    }

    Thing root{L"Root"};
    std::vector<std::unique_ptr<Thing>> things;
};

TEST_F(NameIndexTest, IsMadeOnceASearchHadToPassManyObjects)
{
    EXPECT_EQ(find(root, L"Filler3"), things[3].get());
    EXPECT_FALSE(root.hasBuiltIndex());
    EXPECT_EQ(find(root, L"Filler99"), things[99].get());
    EXPECT_TRUE(root.hasBuiltIndex());
    EXPECT_EQ(find(root, L"Filler98"), things[98].get());
}

TEST_F(NameIndexTest, FollowsNamesAdditionsMovesAndEnds)
{
    build();
    Thing& group = add(root, L"Group");
    Thing& part = add(group, L"Part");
    EXPECT_EQ(find(root, L"Part"), &part);
    EXPECT_EQ(find(root, L"Part", kAnyType, false), nullptr) << "no direct child";
    part.rename(L"Other");
    EXPECT_EQ(find(root, L"Part"), nullptr);
    EXPECT_EQ(find(root, L"Other"), &part);
    group.node.remove();
    EXPECT_EQ(find(root, L"Other"), nullptr);
    EXPECT_EQ(find(group, L"Other"), &part) << "a tree without an index";
    part.rename(L"Renamed outside");
    things[0]->node.append(group.node);
    EXPECT_EQ(find(root, L"Renamed outside"), &part);
    EXPECT_EQ(find(*things[1], L"Renamed outside"), nullptr) << "not beneath that one";
    things.pop_back();
    EXPECT_EQ(find(root, L"Renamed outside"), nullptr);
}

TEST_F(NameIndexTest, AnEndedParentTakesItsChildrenOutOfTheTree)
{
    Thing child(L"Child");
    {
        Thing parent(L"Parent");
        root.node.append(parent.node);
        parent.node.append(child.node);
        build();
        EXPECT_EQ(find(root, L"Child"), &child);
    }
    EXPECT_EQ(find(root, L"Child"), nullptr);
}

TEST_F(NameIndexTest, OfEqualNamesTheFirstInTreeOrderIsFound)
{
    build();
    Thing& deepLast = add(*things[50], L"Same", 7);
    Thing& top = add(root, L"Same", 8);
    EXPECT_EQ(find(root, L"Same"), &deepLast);
    EXPECT_EQ(find(root, L"Same", 8), &top);
    EXPECT_EQ(find(root, L"Same", kAnyType, false), &top);
    root.node.moveChild(top.node, 0);
    EXPECT_EQ(find(root, L"Same"), &top);
    Thing& below = add(top, L"Same");
    EXPECT_EQ(find(root, L"Same"), &top) << "a parent comes before its children";
    EXPECT_EQ(find(top, L"Same"), &below) << "the object asked is not part of what it searches";
    for (int i = 0; i < 20; ++i)
        add(root, L"Same", 9);
    EXPECT_EQ(find(root, L"Same", 9), things[things.size() - 20].get()) << "more than are listed";
    while (things.size() > 103)
        things.pop_back();
    EXPECT_EQ(find(root, L"Same", 9), nullptr);
    EXPECT_EQ(find(root, L"Same", 7), &deepLast);
}

/// Whatever happens to two windows' trees and what lies outside of them, a search finds what a walk finds.
TEST_F(NameIndexTest, AgreesWithAWalkAfterAnyChange)
{
    std::mt19937 random(20261121);
    const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    const auto name = [&] {
        const auto number = below(12) ? below(60) : 100; // one name that many share, and none at all
        return number < 3 ? std::wstring() : L"Name" + std::to_wstring(number);
    };
    Thing second(L"Second");
    second.giveIndex();
    std::size_t found = 0;
    for (int step = 0; step < 20'000; ++step) {
        const auto any = [&]() -> Thing& {
            return below(8) ? *things[below(things.size())] : below(2) ? root : second;
        };
        switch (below(8)) {
        case 0:
        case 1: {
            things.push_back(std::make_unique<Thing>(name(), static_cast<long>(below(3))));
            ObjectNode& node = things.back()->node;
            Thing& parent = things.size() > 2 ? any() : root;
            parent.node.insert(node, below(parent.node.childCount() + 1));
            break;
        }
        case 2:
            if (things.size() > 150) {
                std::swap(things[below(things.size())], things.back());
                things.pop_back();
            }
            break;
        case 3:
            any().rename(name());
            break;
        case 4: {
            Thing& parent = any();
            Thing& child = *things[below(things.size())];
            parent.node.insert(child.node, below(parent.node.childCount() + 1)); // refused when it would be a cycle
            break;
        }
        case 5:
            if (below(10) == 0)
                things[below(things.size())]->node.remove();
            break;
        case 6: {
            ObjectNode& parent = any().node;
            if (parent.childCount())
                parent.moveChild(*parent.childAt(below(parent.childCount())), below(parent.childCount()));
            break;
        }
        default:
            break;
        }
        Thing& from = below(2) ? root : any();
        const std::wstring wanted = name();
        const NameQuery query{wanted, below(3) ? kAnyType : static_cast<long>(below(3)), below(3) != 0};
        ObjectNode* const expected = plainWalk(from.node, query);
        ASSERT_EQ(findByName(from.node, query), expected) << "step " << step;
        found += expected != nullptr;
    }
    EXPECT_TRUE(root.hasBuiltIndex());
    EXPECT_GT(found, 3000u) << "the searches were too hard";
}

} // namespace
} // namespace ambrel
