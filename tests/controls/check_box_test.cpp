// The check box: its notifications, values and interface methods.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::kHandled;
using testing::kLeftToFramework;
using testing::Log;

const std::string kRedrawOwn = "redraw 10,20,110,60";

class CheckBoxTest : public testing::CheckBoxFixture {
protected:
    std::vector<int> valuesAfterClicks(int clicks)
    {
        std::vector<int> values;
        for (; clicks > 0; --clicks) {
            click(box);
            values.push_back(value());
        }
        return values;
    }
};

using Values = std::vector<int>;

// Notifications
// -----------------------------------------------------------------------------------------------------------

TEST_F(CheckBoxTest, PressingRedrawsItsRectangleThenCallsBack)
{
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN, 5, 10), kHandled);
    EXPECT_EQ(log(), Log({kRedrawOwn, "callback 1027 control a0005"}));
}

TEST_F(CheckBoxTest, ReleasingStepsTheValueThenRedrawsThenCallsBack)
{
    EXPECT_EQ(point(box, VEXSM_LBUTTONUP, 5, 10), kHandled);
    EXPECT_EQ(log(), Log({kRedrawOwn, kRedrawOwn, "callback 1028 control a0005"}))
        << "one for the value, one for the release";
    EXPECT_EQ(value(), VEXCHECKBOX_CHECKED);
}

TEST_F(CheckBoxTest, TheCallbackOfAReleaseSeesTheNewValue)
{
    int seen = -1;
    box.base->onCallback = [&](long) { seen = value(); };
    point(box, VEXSM_LBUTTONUP);
    EXPECT_EQ(seen, VEXCHECKBOX_CHECKED);
}

TEST_F(CheckBoxTest, ADisabledBoxLeavesButtonsToTheFramework)
{
    box.base->enabled = VARIANT_FALSE;
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN), kLeftToFramework);
    EXPECT_EQ(point(box, VEXSM_LBUTTONUP), kLeftToFramework);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(value(), VEXCHECKBOX_UNCHECKED);
}

TEST_F(CheckBoxTest, InTheDesignerAClickIsReportedButChangesNothing)
{
    res->designStatus = VARIANT_TRUE;
    EXPECT_EQ(point(box, VEXSM_LBUTTONUP, 1, 1), kHandled);
    EXPECT_EQ(log(), Log({kRedrawOwn, "callback 1028 control 10001"}));
    EXPECT_EQ(value(), VEXCHECKBOX_UNCHECKED);
}

TEST_F(CheckBoxTest, TheFirstMoveMarksThePointerAndRedraws)
{
    EXPECT_EQ(point(box, VEXSM_MOUSEMOVE, 1, 2), kLeftToFramework);
    EXPECT_EQ(log(), Log({"mouse over", "redraw", "callback 1861 control 20001"}));
    EXPECT_EQ(point(box, VEXSM_MOUSEMOVE, 1, 3), kLeftToFramework);
    EXPECT_EQ(log(), Log({"callback 1861 control 30001"}));
}

TEST_F(CheckBoxTest, EnteringLeavingAndDoubleClickingCallNobodyBack)
{
    box.property<testing::StringObject>(L"Tooltip", L"Tooltip").value = L"Remember me";
    EXPECT_EQ(point(box, VEXSM_MOUSEENTER), kHandled);
    EXPECT_EQ(log(), Log({"tip \"Remember me\" one", kRedrawOwn}));
    EXPECT_EQ(point(box, VEXSM_MOUSELEAVE), kHandled);
    EXPECT_EQ(log(), Log({"mouse gone", kRedrawOwn}));
    EXPECT_EQ(point(box, VEXSM_LBUTTONDBCLICK), kHandled);
    EXPECT_EQ(log(), Log({kRedrawOwn}));
}

TEST_F(CheckBoxTest, WhatItDoesNotHandleIsLeftToTheFramework)
{
    for (VexMsgID id :
         {VEXSM_DRAWPREVIEW, VEXSM_ONSETFOCUS, VEXSM_ONKILLFOCUS, VEXSM_TIMER, VEXSM_SIZE, VEXSM_ENABLEOBJECT})
        EXPECT_EQ(notify(box, id), kLeftToFramework) << id;
    EXPECT_EQ(log(), Log());
}

TEST_F(CheckBoxTest, FinalCreationRegistersNoWindowMessage)
{
    EXPECT_EQ(notify(box, VEXSM_FINALCREATE), kHandled);
    EXPECT_EQ(notify(box, VEXSM_DESTROYING), kLeftToFramework);
    EXPECT_EQ(log(), Log());
}

TEST_F(CheckBoxTest, LoadingTheSkinAnewUnchecksQuietly)
{
    box->SetValue(VEXCHECKBOX_CHECKED);
    log();
    EXPECT_EQ(notify(box, VEXSM_AUTOLOADINIT), kHandled);
    EXPECT_EQ(value(), VEXCHECKBOX_UNCHECKED);
    EXPECT_EQ(log(), Log());
}

TEST_F(CheckBoxTest, NameAndDefaultSkin)
{
    const wchar_t* name = nullptr;
    EXPECT_EQ(notify(box, VEXSM_GETCONTROLTYPENAME, testing::addressOf(name)), kHandled);
    EXPECT_STREQ(name, L"CheckBox");
    EXPECT_EQ(notify(box, VEXSM_IMPORTCONFIG, reinterpret_cast<std::int64_t>(static_cast<IVexRes*>(res.get())), 7),
              kHandled);
    EXPECT_EQ(log(), Log({"import 2092 UIFILES 7"}));
    EXPECT_EQ(notify(box, VEXSM_DESTROYBMPPERPIXEL), kHandled);
}

// Clicking
// ----------------------------------------------------------------------------------------------------------------

TEST_F(CheckBoxTest, ClicksCycleTwoValuesByDefaultAndThreeWhenAskedFor)
{
    EXPECT_EQ(valuesAfterClicks(3), Values({1, 0, 1}));
    box->SetValue(VEXCHECKBOX_UNCHECKED);
    box->SetThreeState(VARIANT_TRUE);
    EXPECT_EQ(valuesAfterClicks(4), Values({1, 2, 0, 1}));
}

TEST_F(CheckBoxTest, AHalfCheckedValueLeftToTheApplicationIsNotReachedByClicks)
{
    box->SetThreeState(VARIANT_TRUE);
    set(L"Misc", L"AutoChangeThreeState", VARIANT_FALSE);
    box->SetValue(VEXCHECKBOX_HALFCHECKED);
    EXPECT_EQ(valuesAfterClicks(3), Values({0, 1, 0}));
}

TEST_F(CheckBoxTest, OnlyTheExactTrueKeepsClicksFromChangingTheValue)
{
    set(L"Misc", L"DisbaleAutoCheck", VARIANT_TRUE);
    log();
    EXPECT_EQ(valuesAfterClicks(1), Values({0}));
    EXPECT_EQ(log(), Log({kRedrawOwn, "callback 1027 control 280032", kRedrawOwn, "callback 1028 control 280032"}));
    set(L"Misc", L"DisbaleAutoCheck", 1);
    EXPECT_EQ(valuesAfterClicks(1), Values({1}));
}

// Methods
// -----------------------------------------------------------------------------------------------------------------

TEST_F(CheckBoxTest, ValuesAreStoredAndRedrawnAndOthersRefused)
{
    EXPECT_EQ(box->SetValue(VEXCHECKBOX_HALFCHECKED), S_OK) << "though it has no third state for clicks";
    EXPECT_EQ(value(), VEXCHECKBOX_HALFCHECKED);
    EXPECT_EQ(log(), Log({kRedrawOwn}));
    for (long odd : {-1, 3, 0x7FFFFFFF})
        EXPECT_EQ(box->SetValue(static_cast<VEXCHECKBOX_VALUE>(odd)), E_INVALIDARG) << odd;
    EXPECT_EQ(value(), VEXCHECKBOX_HALFCHECKED);
    EXPECT_EQ(log(), Log());
}

TEST_F(CheckBoxTest, SettersRedrawItsRectangleExceptWhereTheyOnlyStore)
{
    const Bstr text(L"Stay signed in");
    EXPECT_EQ(box->SetText(text.get()), S_OK);
    EXPECT_EQ(box->SetThreeState(VARIANT_TRUE), S_OK);
    EXPECT_EQ(box->ShowText(VARIANT_FALSE), S_OK);
    EXPECT_EQ(box->SetButtonState(VEX_CHECKBOX_PRESS), S_OK);
    EXPECT_EQ(log(), Log({kRedrawOwn, kRedrawOwn, kRedrawOwn, kRedrawOwn}));
    EXPECT_EQ(box->SetTooltip(text.get()), S_OK);
    EXPECT_EQ(box->SetPushButtonLike(VARIANT_TRUE), S_OK);
    EXPECT_EQ(box->SetData(1LL << 40), S_OK);
    EXPECT_EQ(box->SetGraphics(77, VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log());

    Bstr back;
    VARIANT_BOOL flag = VARIANT_FALSE;
    VEX_CHECKBOXSTATE state{};
    std::int64_t data = 0;
    EXPECT_EQ(box->GetText(back.put()), S_OK);
    EXPECT_EQ(back.view(), L"Stay signed in");
    EXPECT_EQ(box->GetTooltip(back.put()), S_OK);
    EXPECT_EQ(back.view(), L"Stay signed in");
    EXPECT_EQ(box->GetThreeState(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(box->IsPushButtonLike(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(box->IsShowText(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(box->GetButtonState(&state), S_OK);
    EXPECT_EQ(state, VEX_CHECKBOX_PRESS);
    EXPECT_EQ(box->GetData(&data), S_OK);
    EXPECT_EQ(data, 1LL << 40);
}

TEST_F(CheckBoxTest, TheFirstActivationIsAChangeBecauseTheBitsDiffer)
{
    VARIANT_BOOL active = VARIANT_FALSE;
    EXPECT_EQ(box->IsActive(&active), S_OK);
    EXPECT_EQ(active, VARIANT_TRUE);
    EXPECT_EQ(box->SetActive(VARIANT_TRUE), S_OK);
    EXPECT_EQ(box->SetActive(VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(log(), Log({kRedrawOwn}));
    EXPECT_EQ(box->SetActive(VARIANT_FALSE), S_OK);
    EXPECT_EQ(box->IsActive(&active), S_OK);
    EXPECT_EQ(active, VARIANT_FALSE);
}

TEST_F(CheckBoxTest, GraphicsAreIndexedByValueAndStateAsOneArray)
{
    const auto section = host.ledger.make<testing::ImageSection>();
    long pastTheLast = 11; // 2 times 4 and 3
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(box->SetImage(VEX_CHECKBOX_PRESS, VEXCHECKBOX_CHECKED, section.get()), S_OK);
    EXPECT_EQ(box.property<testing::ImageSectionObject>(L"Checked.Press", L"Graphics").section.get(), section.get());
    EXPECT_EQ(box->SetGraphicsImage(static_cast<VEX_CHECKBOXSTATE>(pastTheLast), VEXCHECKBOX_UNCHECKED, section.get(),
                                    VARIANT_FALSE, &done),
              S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(box.property<testing::ImageSectionObject>(L"HalfChecked.Disabled", L"Graphics").section.get(),
              section.get());
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(box->SetGraphicsImage(VEX_CHECKBOX_HOT, VEXCHECKBOX_CHECKED, section.get(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(log(), Log({"redraw"}));

    ComPtr<IVexImageBase> back;
    EXPECT_EQ(box->GetImage(VEX_CHECKBOX_PRESS, VEXCHECKBOX_CHECKED, back.put()), S_OK);
    EXPECT_EQ(back.get(), section.get());
    EXPECT_EQ(box->GetGraphicsImage(VEX_CHECKBOX_DISABLE, VEXCHECKBOX_HALFCHECKED, back.put()), S_OK);
    EXPECT_EQ(back.get(), section.get());
    EXPECT_EQ(box->GetGraphicsImage(VEX_CHECKBOX_NORMAL, VEXCHECKBOX_UNCHECKED, back.put()), S_OK);
    EXPECT_EQ(back.get(), nullptr);
}

TEST_F(CheckBoxTest, IndexesThatLeadNowhereAreRefused)
{
    const auto section = host.ledger.make<testing::ImageSection>();
    const std::pair<long, long> nowhere[] = {{13, 0}, {12, 0}, {4, 2},  {-1, 0},
                                             {-1, 1}, {0, 3},  {0, -1}, {0, 0x7FFFFFFF}};
    for (const auto& [state, index] : nowhere) {
        const auto eState = static_cast<VEX_CHECKBOXSTATE>(state);
        const auto eValue = static_cast<VEXCHECKBOX_VALUE>(index);
        VARIANT_BOOL done = VARIANT_TRUE;
        auto* back = reinterpret_cast<IVexImageBase*>(this);
        EXPECT_EQ(box->SetGraphicsImage(eState, eValue, section.get(), VARIANT_TRUE, &done), S_FALSE);
        EXPECT_EQ(done, VARIANT_FALSE);
        EXPECT_EQ(box->GetGraphicsImage(eState, eValue, &back), S_FALSE);
        EXPECT_EQ(back, nullptr);
        EXPECT_EQ(box->SetImage(eState, eValue, section.get()), E_INVALIDARG);
        EXPECT_EQ(box->GetImage(eState, eValue, &back), E_INVALIDARG);
    }
    EXPECT_EQ(box->SetButtonState(VEX_CHECKBOX_LAST), E_INVALIDARG);
    EXPECT_EQ(box->SetGraphics(0, VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(section->references(), 1u);
    EXPECT_EQ(log(), Log());
}

TEST_F(CheckBoxTest, NullPlacesAreRefused)
{
    EXPECT_EQ(box->GetText(nullptr), E_POINTER);
    EXPECT_EQ(box->GetButtonState(nullptr), E_POINTER);
    EXPECT_EQ(box->GetValue(nullptr), E_POINTER);
    EXPECT_EQ(box->GetThreeState(nullptr), E_POINTER);
    EXPECT_EQ(box->GetTooltip(nullptr), E_POINTER);
    EXPECT_EQ(box->IsShowText(nullptr), E_POINTER);
    EXPECT_EQ(box->IsPushButtonLike(nullptr), E_POINTER);
    EXPECT_EQ(box->IsActive(nullptr), E_POINTER);
    EXPECT_EQ(box->GetData(nullptr), E_POINTER);
    EXPECT_EQ(box->GetImage(VEX_CHECKBOX_NORMAL, VEXCHECKBOX_CHECKED, nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicsImage(VEX_CHECKBOX_NORMAL, VEXCHECKBOX_CHECKED, nullptr), E_POINTER);
    EXPECT_EQ(box->SetGraphicsImage(VEX_CHECKBOX_NORMAL, VEXCHECKBOX_CHECKED, nullptr, VARIANT_TRUE, nullptr),
              E_POINTER);
    EXPECT_EQ(box->SetText(nullptr), S_OK) << "the empty text";
    EXPECT_EQ(box.property<testing::StringObject>(L"Text", L"Text").value, L"");
}

TEST_F(CheckBoxTest, WithoutItsPropertiesItRefusesWhatNeedsThem)
{
    const testing::Made<IVexCheckBox> bare{host.create<IVexCheckBox>(iidOf<::VexCheckBox>()), &host.base()};
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(bare->SetValue(VEXCHECKBOX_HALFCHECKED), S_FALSE);
    EXPECT_EQ(bare->SetValue(VEXCHECKBOX_CHECKED), S_OK);
    EXPECT_EQ(bare->SetThreeState(VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(bare->ShowText(VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(bare->IsShowText(&flag), S_FALSE);
    EXPECT_EQ(flag, VARIANT_FALSE);
}

// Taken away in the middle
// ------------------------------------------------------------------------------------------------

TEST_F(CheckBoxTest, ACallbackMayReleaseIt)
{
    box.base->onCallback = [this](long) { box.control.reset(); };
    IVexCheckBox* const borrowed = box.control.get();
    VexNotify record{VEXSM_LBUTTONUP, 0, 0, 5, 5, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_EQ(handled, VARIANT_TRUE);
    EXPECT_EQ(box.base->references(), 0u) << "gone when the call returns";
}

TEST_F(CheckBoxTest, TheHostWindowMayReleaseItWhileTheTipIsSet)
{
    onMessage = [this](UINT) { box.control.reset(); };
    IVexCheckBox* const borrowed = box.control.get();
    VexNotify record{VEXSM_MOUSEENTER, 0, 0, 5, 5, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_EQ(box.base->references(), 0u);
}

TEST_F(CheckBoxTest, ARedrawThatSetsTheValueAgainHasTheLastWord)
{
    box.base->onRedraw = [this] {
        box.base->onRedraw = nullptr;
        box->SetValue(VEXCHECKBOX_HALFCHECKED);
    };
    EXPECT_EQ(box->SetValue(VEXCHECKBOX_CHECKED), S_OK);
    EXPECT_EQ(value(), VEXCHECKBOX_HALFCHECKED);
}

} // namespace
} // namespace morvane
