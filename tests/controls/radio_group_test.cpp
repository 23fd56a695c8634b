// Radio groups: who belongs to which, what a selection does and tells, and boxes that come and go meanwhile.
#include "tests/controls/controls_fixture.h"

#include <map>

namespace morvane {
namespace {

using testing::Log;
using testing::LongObject;

class RadioGroupTest : public testing::ControlsFixture {
protected:
    using Box = testing::Made<IRadioBox>;

    void TearDown() override
    {
        boxes.clear();
        ControlsFixture::TearDown();
    }

    Box& makeBox(const wchar_t* name, long groupId = 0, testing::BaseObject* parent = nullptr)
    {
        Box box = create<IRadioBox>(iidOf<::RadioBox>(), name, parent);
        box.property<LongObject>(L"Group", L"GroupID").value = groupId;
        notify(box, VEXSM_FINALCREATE);
        log();
        return *boxes.emplace_back(std::make_unique<Box>(box));
    }
    /// The framework takes a box out of the tree and lets it go.
    void destroy(Box& box)
    {
        std::erase(box.base->treeParent->children, box.base);
        if (box.control)
            notify(box, VEXSM_DESTROYING);
        box.control.reset();
    }
    static int value(const Box& box)
    {
        VEXRADIOBOX_VALUE result{};
        EXPECT_EQ(box->GetValue(&result), S_OK);
        return result;
    }
    static ComPtr<IVexRadioGroup> groupOf(const Box& box)
    {
        ComPtr<IVexRadioGroup> group;
        EXPECT_EQ(box->GetGroup(group.put()), S_OK);
        return group;
    }
    static long numberOf(const ComPtr<IVexRadioGroup>& group)
    {
        long number = 0;
        EXPECT_EQ(group->GetID(&number), S_OK);
        return number;
    }
    static ComPtr<IRadioBox> current(const ComPtr<IVexRadioGroup>& group)
    {
        ComPtr<IRadioBox> box;
        EXPECT_EQ(group->GetRadio(box.put()), S_OK);
        return box;
    }
    /// The values of all boxes that are there, in the order of their making.
    std::vector<int> values() const
    {
        std::vector<int> result;
        for (const auto& box : boxes)
            if (box->control)
                result.push_back(value(*box));
        return result;
    }

    std::vector<std::unique_ptr<Box>> boxes;
};

using Values = std::vector<int>;

// Who belongs to which
// ----------------------------------------------------------------------------------------------------

TEST_F(RadioGroupTest, BoxesWithoutANumberGroupByTheirParent)
{
    const auto otherForm = host.ledger.make<testing::BaseObject>();
    Box& first = makeBox(L"first");
    Box& second = makeBox(L"second");
    Box& elsewhere = makeBox(L"elsewhere", 0, otherForm.get());
    EXPECT_EQ(groupOf(first), groupOf(second));
    EXPECT_NE(groupOf(first), groupOf(elsewhere));
    EXPECT_EQ(numberOf(groupOf(first)),
              static_cast<long>(reinterpret_cast<std::intptr_t>(static_cast<ISkinObjResBase*>(form.get()))));
    long number = 5;
    EXPECT_EQ(first->GetGroupID(&number), S_OK);
    EXPECT_EQ(number, 0);
}

TEST_F(RadioGroupTest, ANumberGroupsAcrossParentsOfOneRootButNotAcrossRoots)
{
    const auto otherForm = host.ledger.make<testing::BaseObject>();
    const auto strangeForm = host.ledger.make<testing::BaseObject>();
    const auto otherRoot = host.ledger.make<testing::BaseObject>();
    strangeForm->treeRoot = otherRoot.get();
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3, otherForm.get());
    Box& stranger = makeBox(L"stranger", 3, strangeForm.get());
    Box& neighbour = makeBox(L"neighbour", 4);
    EXPECT_EQ(groupOf(first), groupOf(second));
    EXPECT_NE(groupOf(first), groupOf(stranger));
    EXPECT_NE(groupOf(first), groupOf(neighbour));
    click(first);
    click(second);
    click(stranger);
    click(neighbour);
    EXPECT_EQ(values(), Values({0, 1, 1, 1}));
}

TEST_F(RadioGroupTest, ReadingASavedConfigurationJoinsTooJustConfiguringDoesNot)
{
    Box box = create<IRadioBox>(iidOf<::RadioBox>(), L"one");
    notify(box, VEXSM_ACCESSCONFIGED, 0);
    EXPECT_EQ(groupOf(box), nullptr);
    notify(box, VEXSM_ACCESSCONFIGED, 1);
    EXPECT_NE(groupOf(box), nullptr);
    const auto group = groupOf(box);
    notify(box, VEXSM_FINALCREATE);
    EXPECT_EQ(groupOf(box), group);
}

TEST_F(RadioGroupTest, ABoxWithoutAParentJoinsNothing)
{
    Box box = create<IRadioBox>(iidOf<::RadioBox>(), L"one");
    box.base->treeParent = nullptr;
    notify(box, VEXSM_FINALCREATE);
    EXPECT_EQ(groupOf(box), nullptr);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(box->SetGroupID(7, &done), S_OK);
    EXPECT_EQ(box.property<LongObject>(L"Group", L"GroupID").value, 7);
    EXPECT_EQ(groupOf(box), nullptr);
}

TEST_F(RadioGroupTest, CheckingABoxOutsideAnyGroupIsRefused)
{
    Box box = create<IRadioBox>(iidOf<::RadioBox>(), L"one");
    log();
    EXPECT_EQ(box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(value(box), VEXRADIOBOX_UNCHECKED);
    EXPECT_EQ(box->SetValue(VEXRADIOBOX_UNCHECKED, VARIANT_FALSE), S_OK);
    click(box);
    EXPECT_EQ(value(box), VEXRADIOBOX_UNCHECKED) << "nobody would uncheck the others";
}

TEST_F(RadioGroupTest, ANumberInAWindowMeansTheSameGroupWhileSomebodyHoldsIt)
{
    ComPtr<IVexRadioGroup> held = groupOf(makeBox(L"first", 3));
    destroy(*boxes[0]);
    EXPECT_EQ(groupOf(makeBox(L"second", 3)), held);
    destroy(*boxes[1]);
    held.reset();
    EXPECT_NE(groupOf(makeBox(L"third", 3)), nullptr);
}

// Selections
// --------------------------------------------------------------------------------------------------------------

TEST_F(RadioGroupTest, ASelectionUnchecksTheFormerChecksTheNewThenTellsTheHostWindow)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    EXPECT_EQ(first->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE), S_OK);
    EXPECT_EQ(log(), Log({"redraw", "message 3025 3 first"}));
    EXPECT_EQ(second->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log({"redraw", "redraw", "message 3025 3 second", "redraw"}))
        << "the last one because it was asked for";
    EXPECT_EQ(values(), Values({0, 1}));
    EXPECT_EQ(current(groupOf(first)).get(), second.control.get());
    EXPECT_EQ(second->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE), S_OK);
    EXPECT_EQ(log(), Log()) << "nothing changes";
}

TEST_F(RadioGroupTest, SelectingTheCurrentBoxAgainTellsAgain)
{
    Box& first = makeBox(L"first", 3);
    const auto group = groupOf(first);
    EXPECT_EQ(group->SetRadio(first.control.get()), S_OK);
    log();
    EXPECT_EQ(group->SetRadio(first.control.get()), S_OK);
    EXPECT_EQ(log(), Log({"redraw", "redraw", "message 3025 3 first"}));
    EXPECT_EQ(value(first), VEXRADIOBOX_CHECKED);
}

TEST_F(RadioGroupTest, UncheckingTellsNobodyAndAClickChecksAgain)
{
    Box& first = makeBox(L"first", 3);
    click(first);
    log();
    EXPECT_EQ(first->SetValue(VEXRADIOBOX_UNCHECKED, VARIANT_FALSE), S_OK);
    EXPECT_EQ(log(), Log());
    click(first);
    EXPECT_EQ(value(first), VEXRADIOBOX_CHECKED);
}

TEST_F(RadioGroupTest, TheGroupsMethodsRefuseNullsStrangersAndNamesTwice)
{
    Box& first = makeBox(L"first", 3);
    Box& stranger = makeBox(L"stranger", 4);
    const auto group = groupOf(first);
    EXPECT_EQ(group->AddObject(nullptr), S_FALSE);
    EXPECT_EQ(group->SetRadio(nullptr), S_FALSE);
    EXPECT_EQ(group->GetID(nullptr), E_POINTER);
    EXPECT_EQ(group->GetRadio(nullptr), E_POINTER);
    EXPECT_EQ(group->SetRadio(stranger.control.get()), S_OK);
    EXPECT_EQ(value(stranger), VEXRADIOBOX_UNCHECKED);
    EXPECT_EQ(group->AddObject(first.control.get()), S_FALSE);
    EXPECT_EQ(group->RemoveObject(Bstr(L"nobody").get()), S_FALSE);
    EXPECT_EQ(group->RemoveObject(nullptr), S_FALSE);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(group->AddObject(stranger.control.get()), S_OK) << "a client may make it a member of two groups";
    EXPECT_EQ(group->SetRadio(stranger.control.get()), S_OK);
    EXPECT_EQ(value(stranger), VEXRADIOBOX_CHECKED);
    EXPECT_EQ(group->RemoveObject(Bstr(L"stranger").get()), S_OK);
    EXPECT_EQ(current(group), nullptr);
}

TEST_F(RadioGroupTest, ABoxWhoseNameIsTakenIsNoMemberAndDoesNotSelectItsNamesake)
{
    Box& first = makeBox(L"same", 3);
    Box& second = makeBox(L"same", 3);
    EXPECT_EQ(groupOf(first), groupOf(second));
    log();
    click(second);
    EXPECT_EQ(values(), Values({0, 0}));
    click(first);
    EXPECT_EQ(values(), Values({1, 0}));
}

TEST_F(RadioGroupTest, BoxesThatNobodyNamedAreMembersLikeOthers)
{
    Box& first = makeBox(L"", 3);
    Box& second = makeBox(L"", 3);
    click(first);
    click(second);
    EXPECT_EQ(values(), Values({0, 1}));
}

TEST_F(RadioGroupTest, ARenamedBoxStaysAMemberAndLeavesCleanly)
{
    Box& first = makeBox(L"first", 3);
    const auto group = groupOf(first);
    first.base->objectName = L"renamed";
    EXPECT_EQ(group->AddObject(first.control.get()), S_FALSE) << "one box, one place";
    click(first);
    EXPECT_EQ(value(first), VEXRADIOBOX_CHECKED);
    EXPECT_EQ(group->RemoveObject(Bstr(L"first").get()), S_FALSE);
    EXPECT_EQ(group->RemoveObject(Bstr(L"renamed").get()), S_OK);
    destroy(first);
    EXPECT_EQ(current(group), nullptr);
}

// Moving between groups
// ---------------------------------------------------------------------------------------------------

TEST_F(RadioGroupTest, SetGroupIdMovesABoxAndTheSameNumberChangesNothing)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    const auto former = groupOf(first);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(first->SetGroupID(3, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(groupOf(first), former);
    EXPECT_EQ(first->SetGroupID(8, &done), S_OK);
    EXPECT_EQ(numberOf(groupOf(first)), 8);
    EXPECT_EQ(first.property<LongObject>(L"Group", L"GroupID").value, 8);
    click(first);
    click(second);
    EXPECT_EQ(values(), Values({1, 1}));
    EXPECT_EQ(former->RemoveObject(Bstr(L"first").get()), S_FALSE) << "it has left";
    EXPECT_EQ(first->SetGroupID(0, &done), S_OK);
    EXPECT_EQ(numberOf(groupOf(first)),
              static_cast<long>(reinterpret_cast<std::intptr_t>(static_cast<ISkinObjResBase*>(form.get()))));
}

TEST_F(RadioGroupTest, ACheckedBoxThatMovesKeepsOneCheckedInItsNewGroup)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    Box& third = makeBox(L"third", 4);
    click(first);
    const auto former = groupOf(first);
    VARIANT_BOOL done = VARIANT_FALSE;
    first->SetGroupID(4, &done);
    EXPECT_EQ(current(former), nullptr);
    EXPECT_EQ(current(groupOf(third)).get(), first.control.get()) << "nobody was checked there";
    click(second);
    log();
    second->SetGroupID(4, &done);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(values(), Values({1, 0, 0})) << "the one there is stays";
    click(third);
    EXPECT_EQ(values(), Values({0, 0, 1}));
}

// Coming and going in the middle
// --------------------------------------------------------------------------------------------

TEST_F(RadioGroupTest, ADestroyedBoxLeavesItsGroupWithoutACurrentOne)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    click(first);
    const auto group = groupOf(second);
    destroy(first);
    EXPECT_EQ(current(group), nullptr);
    click(second);
    EXPECT_EQ(values(), Values({1}));
}

TEST_F(RadioGroupTest, ABoxThatIsReleasedWithoutAWordIsForgottenToo)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    click(first);
    std::erase(form->children, first.base);
    first.control.reset();
    EXPECT_EQ(first.base->references(), 0u);
    EXPECT_EQ(current(groupOf(second)), nullptr);
}

TEST_F(RadioGroupTest, TheHostWindowMayDestroyTheOtherBoxesWhenItHearsOfASelection)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    Box& third = makeBox(L"third", 3);
    click(first);
    log();
    onMessage = [&](UINT) {
        destroy(first);
        destroy(third);
    };
    click(second);
    EXPECT_EQ(values(), Values({1}));
    EXPECT_EQ(log(), Log({"redraw", "redraw", "redraw", "message 3025 3 second", "no real control", "no real control",
                          "redraw", "callback 1028 control 280032"}));
}

TEST_F(RadioGroupTest, TheHostWindowMayDestroyTheSelectedBoxAndItsGroup)
{
    Box& first = makeBox(L"first", 3);
    onMessage = [&](UINT) { destroy(first); };
    IRadioBox* const borrowed = first.control.get();
    VexNotify record{VEXSM_LBUTTONUP, 0, 0, 5, 5, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_EQ(first.base->references(), 0u);
}

TEST_F(RadioGroupTest, ARedrawThatSelectsAnotherBoxHasTheLastWord)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    Box& third = makeBox(L"third", 3);
    click(first);
    first.base->onRedraw = [&] {
        first.base->onRedraw = nullptr;
        third->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE);
    };
    log();
    second->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE);
    EXPECT_EQ(values(), Values({0, 0, 1}));
    EXPECT_EQ(current(groupOf(first)).get(), third.control.get());
    EXPECT_EQ(host.entriesOf("message"), Log({"message 3025 3 third"})) << "the other selection never came about";
}

TEST_F(RadioGroupTest, ARedrawOfTheFormerBoxMayDestroyTheNewOne)
{
    Box& first = makeBox(L"first", 3);
    Box& second = makeBox(L"second", 3);
    click(first);
    first.base->onRedraw = [&] {
        first.base->onRedraw = nullptr;
        destroy(second);
    };
    const auto group = groupOf(first);
    const ComPtr<IRadioBox> held = second.control;
    log();
    EXPECT_EQ(group->SetRadio(held.get()), S_OK);
    EXPECT_EQ(host.entriesOf("message"), Log());
    EXPECT_EQ(current(group), nullptr);
}

/// Three boxes of group 3, the first of them checked; what happens to the second while the host does things with any of
/// them, inside every call that the controls make.
class BusyGroupTest : public RadioGroupTest {
protected:
    struct Three {
        Box& first;
        Box& second;
        Box& third;
    };
    using Act = std::function<void(Three&)>;

    static void setGroup(Box& box, long id)
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        if (box.control)
            box->SetGroupID(id, &done);
    }
    static void check(Box& box)
    {
        if (box.control)
            box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    }
    Act destroying(Box& (*which)(Three&))
    {
        return [this, which](Three& three) {
            Box& box = which(three);
            if (box.control)
                destroy(box);
        };
    }
    static Box& firstOf(Three& three) { return three.first; }
    static Box& secondOf(Three& three) { return three.second; }

    /// The boxes that a box's group knows as its members are those whose group it is, and one of them is checked at
    /// most.
    void expectOrder()
    {
        std::map<IVexRadioGroup*, int> checkedOf;
        for (const auto& box : boxes) {
            if (!box->control)
                continue;
            const auto group = groupOf(*box);
            ASSERT_NE(group, nullptr);
            checkedOf[group.get()] += value(*box);
            EXPECT_EQ(value(*box) != 0, current(group).get() == box->control.get());
            for (const auto& other : boxes) {
                if (!other->control || groupOf(*other) == group)
                    continue;
                EXPECT_EQ(groupOf(*other)->RemoveObject(Bstr(box->base->objectName).get()), S_FALSE)
                    << "a member of two groups";
            }
        }
        for (const auto& [group, checked] : checkedOf)
            EXPECT_LE(checked, 1);
    }

    /// Gives how many calls were interrupted.
    int runInsideEveryCall(const Act& act, const Act& inside)
    {
        for (int call = 1;; ++call) {
            SCOPED_TRACE("call out " + std::to_string(call));
            Three three{makeBox(L"first", 3), makeBox(L"second", 3), makeBox(L"third", 3)};
            check(three.first);
            int calls = 0;
            host.ledger.onCallOut = [&] {
                if (++calls == call)
                    inside(three);
            };
            const ComPtr<IRadioBox> held = three.second.control;
            act(three);
            host.ledger.onCallOut = nullptr;
            expectOrder();
            for (const auto& box : boxes)
                destroy(*box);
            boxes.clear();
            if (calls < call || HasFailure())
                return call - 1;
        }
    }
};

TEST_F(BusyGroupTest, WhateverHappensInsideACallBoxesHaveOneGroupAndOneOfThemIsCheckedAtMost)
{
    const std::pair<const char*, Act> acts[] = {
        {"checked", [](Three& three) { check(three.second); }},
        {"moved", [](Three& three) { setGroup(three.second, 4); }},
        {"moved while checked",
         [](Three& three) {
             check(three.second);
             setGroup(three.second, 4);
             setGroup(three.second, 3);
         }},
        {"created anew",
         [](Three& three) {
             IRadioBox& box = *three.second.control.get();
             VARIANT_BOOL handled = VARIANT_FALSE;
             for (const VexMsgID id : {VEXSM_DESTROYING, VEXSM_FINALCREATE}) {
                 VexNotify record{id, 0, 0, 0, 0, 0, 0, VARIANT_FALSE};
                 box.EventNotify(&record, &handled);
             }
         }},
    };
    const std::pair<const char*, Act> insides[] = {
        {"the first is destroyed", destroying(&firstOf)},
        {"it is destroyed", destroying(&secondOf)},
        {"the third is checked", [](Three& three) { check(three.third); }},
        {"it is moved", [](Three& three) { setGroup(three.second, 8); }},
        {"the first is moved", [](Three& three) { setGroup(three.first, 8); }},
        {"it is created",
         [](Three& three) {
             if (three.second.control)
                 notify(three.second, VEXSM_FINALCREATE);
         }},
    };
    int calls = 0;
    for (const auto& [actName, act] : acts)
        for (const auto& [insideName, inside] : insides) {
            SCOPED_TRACE(std::string(actName) + ", " + insideName);
            calls += runInsideEveryCall(act, inside);
            if (HasFailure())
                return;
        }
    EXPECT_GT(calls, 100);
}

TEST_F(RadioGroupTest, ABoxWhoseWindowComesLaterLetsTheGroupTellIt)
{
    host.root->window = nullptr;
    Box& first = makeBox(L"first", 3);
    click(first);
    EXPECT_EQ(host.entriesOf("message"), Log());
    host.root->window = host.window.handle();
    Box& second = makeBox(L"second", 3);
    click(second);
    EXPECT_EQ(host.entriesOf("message"), Log({"message 3025 3 second"}));
}

TEST_F(RadioGroupTest, AGroupWhoseWindowIsGoneTellsTheOneItsBoxesHaveNow)
{
    auto former = std::make_unique<testing::HostWindow>();
    host.root->window = former->handle();
    Box& first = makeBox(L"first", 3);
    former.reset();
    host.root->window = host.window.handle();
    notify(first, VEXSM_ACCESSCONFIGED, 1);
    log();
    click(first);
    EXPECT_EQ(host.entriesOf("message"), Log({"message 3025 3 first"}));
}

} // namespace
} // namespace morvane
