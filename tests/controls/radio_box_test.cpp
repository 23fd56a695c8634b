// The radio box: its notifications, states, blinking, clickable picture and interface methods.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::kHandled;
using testing::kLeftToFramework;
using testing::Log;

class RadioBoxTest : public testing::RadioBoxFixture {
protected:
    void SetUp() override
    {
        testing::RadioBoxFixture::SetUp();
        form->objectName = L"form";
        parentNumber = static_cast<long>(reinterpret_cast<std::intptr_t>(static_cast<ISkinObjResBase*>(form.get())));
    }

    std::string told() const { return "message 3025 " + testing::hex(parentNumber) + " one"; }

    long parentNumber = 0;
};

// Notifications
// -----------------------------------------------------------------------------------------------------------

TEST_F(RadioBoxTest, PressingShowsThePressedStateAndCallsNobodyBack)
{
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN), kHandled);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(state(), VEX_RADIOBOX_PRESS);
}

TEST_F(RadioBoxTest, ReleasingChecksTellsTheHostWindowThenRedrawsThenCallsBack)
{
    EXPECT_EQ(point(box, VEXSM_LBUTTONUP, 5, 10), kHandled);
    EXPECT_EQ(log(), Log({"redraw", told(), "redraw", "callback 1028 control a0005"}));
    EXPECT_EQ(value(), VEXRADIOBOX_CHECKED);
    EXPECT_EQ(state(), VEX_RADIOBOX_HOT);
}

TEST_F(RadioBoxTest, ClickingACheckedBoxDoesNotAskTheGroupAgain)
{
    click(box);
    log();
    click(box);
    EXPECT_EQ(log(), Log({"redraw", "redraw", "callback 1028 control 280032"}));
}

TEST_F(RadioBoxTest, InTheDesignerAClickChangesNoValue)
{
    res->designStatus = VARIANT_TRUE;
    point(box, VEXSM_LBUTTONUP, 1, 1);
    EXPECT_EQ(log(), Log({"redraw", "callback 1028 control 10001"}));
    EXPECT_EQ(value(), VEXRADIOBOX_UNCHECKED);
}

TEST_F(RadioBoxTest, EnteringShowsTheTipAndTheHotStateLeavingTheNormalOne)
{
    box.property<testing::StringObject>(L"Tooltip", L"Tooltip").value = L"By post";
    EXPECT_EQ(point(box, VEXSM_MOUSEENTER), kHandled);
    EXPECT_EQ(log(), Log({"tip \"By post\" one", "redraw"}));
    EXPECT_EQ(state(), VEX_RADIOBOX_HOT);
    EXPECT_EQ(point(box, VEXSM_MOUSEMOVE, 1, 2), kLeftToFramework);
    EXPECT_EQ(log(), Log({"callback 1861 control 20001"}));
    EXPECT_EQ(point(box, VEXSM_MOUSELEAVE), kHandled);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(state(), VEX_RADIOBOX_NORMAL);
    EXPECT_EQ(point(box, VEXSM_LBUTTONDBCLICK), kHandled);
    EXPECT_EQ(log(), Log({"redraw"}));
}

TEST_F(RadioBoxTest, ThePointerThatComesBackWhilePressedShowsHotAndTheReleaseCounts)
{
    point(box, VEXSM_LBUTTONDOWN);
    point(box, VEXSM_MOUSELEAVE);
    EXPECT_EQ(state(), VEX_RADIOBOX_NORMAL);
    point(box, VEXSM_MOUSEENTER);
    EXPECT_EQ(state(), VEX_RADIOBOX_HOT);
    point(box, VEXSM_LBUTTONUP);
    EXPECT_EQ(value(), VEXRADIOBOX_CHECKED);
}

TEST_F(RadioBoxTest, DisablingHoldsTheStateUntilItIsEnabled)
{
    EXPECT_EQ(notify(box, VEXSM_ENABLEOBJECT, 0, 1), kHandled);
    EXPECT_EQ(log(), Log({"redraw"}));
    point(box, VEXSM_MOUSEENTER);
    point(box, VEXSM_LBUTTONDOWN);
    point(box, VEXSM_MOUSELEAVE);
    EXPECT_EQ(box->SetButtonState(VEX_RADIOBOX_HOT, VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(state(), VEX_RADIOBOX_DISABLE);
    log();
    EXPECT_EQ(notify(box, VEXSM_ENABLEOBJECT, -1, 0), kHandled);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(state(), VEX_RADIOBOX_NORMAL);
}

TEST_F(RadioBoxTest, EnableAndRedrawFlagsAreTheLowSixteenBits)
{
    notify(box, VEXSM_ENABLEOBJECT, 0x10000, 0x10000);
    EXPECT_EQ(state(), VEX_RADIOBOX_DISABLE);
    EXPECT_EQ(log(), Log());
}

TEST_F(RadioBoxTest, OtherNotificationsAreTheFramesOrTheFrameworks)
{
    EXPECT_EQ(notify(box, VEXSM_DRAWPREVIEW), kLeftToFramework);
    EXPECT_EQ(log(), Log({"redraw 10,20,110,60"}));
    for (VexMsgID id : {VEXSM_ONSETFOCUS, VEXSM_ONKILLFOCUS, VEXSM_SIZE, VEXSM_AUTOLOADINIT})
        EXPECT_EQ(notify(box, id), kLeftToFramework) << id;
    EXPECT_EQ(notify(box, VEXSM_DESTROYBMPPERPIXEL), kHandled);
    EXPECT_EQ(notify(box, VEXSM_IMPORTCONFIG, reinterpret_cast<std::int64_t>(static_cast<IVexRes*>(res.get())), 7),
              kHandled);
    EXPECT_EQ(log(), Log({"import 2086 UIFILES 7"}));
    const wchar_t* name = nullptr;
    EXPECT_EQ(notify(box, VEXSM_GETCONTROLTYPENAME, testing::addressOf(name)), kHandled);
    EXPECT_STREQ(name, L"RadioBox");
}

// The clickable picture: 64 by 16 pixels, at 41,25,105,41 of the window
// ---------------------------------------------------

class ChildImageTest : public RadioBoxTest {
protected:
    void SetUp() override
    {
        RadioBoxTest::SetUp();
        EXPECT_EQ(box->SetChildWndImage(Bstr(L"close.png").get(), 5, 5), S_OK);
        EXPECT_EQ(log(), Log({"picture close.png", "import close.png", "redraw"}));
    }
};

TEST_F(ChildImageTest, PressingItTellsTheHostWindowAndDoesNotPressTheBox)
{
    point(box, VEXSM_MOUSEENTER, 41, 25);
    log();
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN, 41, 25), kLeftToFramework);
    EXPECT_EQ(log(), Log({"message 3024 one 0"}));
    EXPECT_EQ(state(), VEX_RADIOBOX_HOT);
}

TEST_F(ChildImageTest, ThePointerCountsWhereItIsNotWhereItCameIn)
{
    const auto pressAt = [this](int x, int y) {
        point(box, VEXSM_MOUSEMOVE, x, y);
        return point(box, VEXSM_LBUTTONDOWN, x, y);
    };
    point(box, VEXSM_MOUSEENTER, 20, 30);
    EXPECT_EQ(pressAt(104, 40), kLeftToFramework);
    EXPECT_EQ(pressAt(105, 40), kHandled);
    EXPECT_EQ(pressAt(104, 41), kHandled);
    EXPECT_EQ(pressAt(40, 30), kHandled);
    pressAt(60, 30);
    point(box, VEXSM_MOUSELEAVE);
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN), kHandled) << "the pointer has left";
}

TEST_F(ChildImageTest, AFileThatCannotBeReadLeavesNone)
{
    point(box, VEXSM_MOUSEENTER, 60, 30);
    EXPECT_EQ(box->SetChildWndImage(Bstr(L"missing.png").get(), 5, 5), S_FALSE);
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN, 60, 30), kHandled);
    point(box, VEXSM_MOUSEENTER, 60, 30);
    EXPECT_EQ(point(box, VEXSM_LBUTTONDOWN, 60, 30), kHandled);
}

TEST_F(ChildImageTest, TheHostWindowMayReleaseTheBox)
{
    point(box, VEXSM_MOUSEENTER, 60, 30);
    onMessage = [this](UINT message) {
        if (message == 3024)
            box.control.reset();
    };
    IRadioBox* const borrowed = box.control.get();
    VexNotify record{VEXSM_LBUTTONDOWN, 0, 0, 60, 30, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_TRUE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_EQ(handled, VARIANT_FALSE);
    EXPECT_EQ(box.base->references(), 0u);
}

// Blinking
// ----------------------------------------------------------------------------------------------------------------

class BlinkTest : public RadioBoxTest {
protected:
    /// Whether the host window has a timer of that number; it is gone afterwards.
    bool takeTimer(UINT_PTR id) { return KillTimer(host.window.handle(), id) != FALSE; }
    bool showsBlinkPicture() { return render(box)[0].substr(0, 10) == "draw strip"; }
};

TEST_F(BlinkTest, ItStartsWithThePictureAndEachTickOfItsTimerFlips)
{
    EXPECT_EQ(box->SetBlinkImage(Bstr(L"alarm.png").get()), S_OK);
    EXPECT_FALSE(showsBlinkPicture());
    EXPECT_EQ(box->StartBlink(7, 500), S_OK);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_TRUE(showsBlinkPicture());
    EXPECT_EQ(notify(box, VEXSM_TIMER, 7), kHandled);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_FALSE(showsBlinkPicture());
    EXPECT_EQ(notify(box, VEXSM_TIMER, 8), kLeftToFramework);
    EXPECT_EQ(log(), Log());
}

TEST_F(BlinkTest, StoppingKillsTheTimer)
{
    box->SetBlinkImage(Bstr(L"alarm.png").get());
    box->StartBlink(7, 500);
    log();
    EXPECT_EQ(box->StopBlink(), S_OK);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_FALSE(takeTimer(7));
    EXPECT_FALSE(showsBlinkPicture());
    EXPECT_EQ(notify(box, VEXSM_TIMER, 7), kLeftToFramework) << "one that was on its way";
    EXPECT_EQ(notify(box, VEXSM_TIMER, 0), kLeftToFramework);
}

TEST_F(BlinkTest, ASecondStartReplacesTheFirstTimer)
{
    box->StartBlink(7, 500);
    box->StartBlink(8, -1);
    EXPECT_FALSE(takeTimer(7));
    EXPECT_TRUE(takeTimer(8));
}

TEST_F(BlinkTest, DestructionAndTheLastReleaseKillTheTimer)
{
    box->StartBlink(7, 500);
    notify(box, VEXSM_DESTROYING);
    EXPECT_FALSE(takeTimer(7));
    notify(box, VEXSM_FINALCREATE);
    box->StartBlink(9, 500);
    box.control.reset();
    EXPECT_FALSE(takeTimer(9));
}

TEST_F(BlinkTest, ABoxThatIsCreatedAnewDoesNotBlink)
{
    box->SetBlinkImage(Bstr(L"alarm.png").get());
    box->StartBlink(7, 500);
    notify(box, VEXSM_DESTROYING);
    notify(box, VEXSM_FINALCREATE);
    EXPECT_FALSE(showsBlinkPicture()) << "nothing would ever take the picture away";
}

TEST_F(BlinkTest, ZeroIsATimerNumberLikeOthers)
{
    box->SetBlinkImage(Bstr(L"alarm.png").get());
    box->StartBlink(0, 500);
    EXPECT_EQ(notify(box, VEXSM_TIMER, 0), kHandled);
    EXPECT_FALSE(showsBlinkPicture());
}

TEST_F(BlinkTest, WithoutAWindowItWaitsForOne)
{
    host.root->window = nullptr;
    notify(box, VEXSM_ACCESSCONFIGED, 1);
    box->StartBlink(7, 500);
    EXPECT_FALSE(takeTimer(7));
    host.root->window = host.window.handle();
    notify(box, VEXSM_FINALCREATE);
    EXPECT_TRUE(takeTimer(7));
    box->StopBlink();
    notify(box, VEXSM_FINALCREATE);
    EXPECT_FALSE(takeTimer(7)) << "it was stopped";
}

TEST_F(BlinkTest, TheTimerIsKilledOnTheWindowItWasStartedOn)
{
    box->StartBlink(7, 500);
    testing::HostWindow other;
    host.root->window = other.handle();
    notify(box, VEXSM_ACCESSCONFIGED, 1);
    box->StopBlink();
    EXPECT_FALSE(takeTimer(7));
}

TEST_F(BlinkTest, APictureThatCannotBeReadIsRefusedAndTheFormerOneGone)
{
    box->SetBlinkImage(Bstr(L"alarm.png").get());
    EXPECT_EQ(box->SetBlinkImage(Bstr(L"missing.png").get()), S_FALSE);
    box->StartBlink(7, 500);
    EXPECT_FALSE(showsBlinkPicture());
}

// Methods
// -----------------------------------------------------------------------------------------------------------------

TEST_F(RadioBoxTest, SettersRedrawWhenAsked)
{
    const Bstr text(L"By post");
    VARIANT_BOOL done = VARIANT_FALSE;
    const auto callAll = [&](VARIANT_BOOL redraw) {
        EXPECT_EQ(box->SetText(text.get(), redraw), S_OK);
        EXPECT_EQ(box->SetButtonState(VEX_RADIOBOX_HOT, redraw), S_OK);
        EXPECT_EQ(box->SetUpDownMode(VARIANT_TRUE, redraw), S_OK);
        EXPECT_EQ(box->SetGraphicOffset(3, -4, redraw), S_OK);
        EXPECT_EQ(box->ShowText(VARIANT_FALSE, redraw), S_OK);
        EXPECT_EQ(box->SetGraphicSize(20, 30, redraw, &done), S_OK);
        EXPECT_EQ(done, VARIANT_TRUE);
        EXPECT_EQ(box->SetValue(VEXRADIOBOX_UNCHECKED, redraw), S_OK);
        return log();
    };
    EXPECT_EQ(callAll(VARIANT_FALSE), Log());
    EXPECT_EQ(callAll(VARIANT_TRUE), Log(7, "redraw"));

    Bstr back;
    VARIANT_BOOL flag = VARIANT_FALSE;
    long first = 0;
    long second = 0;
    box->GetText(back.put());
    EXPECT_EQ(back.view(), L"By post");
    box->IsUpDownMode(&flag);
    EXPECT_EQ(flag, VARIANT_TRUE);
    box->IsShowText(&flag);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(box->GetGraphicOffset(&first, &second), S_OK);
    EXPECT_EQ(std::pair(first, second), std::pair(3L, -4L));
    EXPECT_EQ(box->GetGraphicSize(&first, &second), S_OK);
    EXPECT_EQ(std::pair(first, second), std::pair(20L, 30L));
}

TEST_F(RadioBoxTest, PropertiesOfLooksAreReachedByStateAndValue)
{
    const auto section = host.ledger.make<testing::ImageSection>();
    const auto textStyle = style();
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(box->SetBackImage(VEX_RADIOBOX_HOT, 1, section.get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(box.property<testing::ImageSectionObject>(L"Checked.Hot", L"Back").section.get(), section.get());
    EXPECT_EQ(box->SetBoxImage(VEX_RADIOBOX_PRESS, 0, section.get(), &done), S_OK);
    EXPECT_EQ(box.property<testing::ImageSectionObject>(L"Unchecked.Press", L"Box").section.get(), section.get());
    EXPECT_EQ(box->SetGraphicsImage(VEX_RADIOBOXSTATE(7), 0, section.get(), &done), S_OK) << "one array of eight";
    EXPECT_EQ(box.property<testing::ImageSectionObject>(L"Checked.Disabled", L"Graphics").section.get(), section.get());
    EXPECT_EQ(box->SetBackColor(VEX_RADIOBOX_NORMAL, VARIANT_TRUE, 0x123456, &done), S_OK);
    EXPECT_EQ(box.property<testing::ColorObject>(L"Checked.Normal", L"Color").value, 0x123456u);
    EXPECT_EQ(box->SetTextStyle(VEX_RADIOBOX_NORMAL, 0, textStyle.get(), &done), S_OK);
    EXPECT_EQ(box->SetBackDrawColor(VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log()) << "none of these redraws";

    ComPtr<IVexImageBase> image;
    ComPtr<IVexTextStyle> styleBack;
    OLE_COLOR color = 0;
    EXPECT_EQ(box->GetBackImage(VEX_RADIOBOX_HOT, VARIANT_TRUE, image.put()), S_OK);
    EXPECT_EQ(image.get(), section.get());
    EXPECT_EQ(box->GetBoxImage(VEX_RADIOBOX_PRESS, 0, image.put()), S_OK);
    EXPECT_EQ(image.get(), section.get());
    EXPECT_EQ(box->GetGraphicsImage(VEX_RADIOBOX_DISABLE, VARIANT_TRUE, image.put()), S_OK);
    EXPECT_EQ(image.get(), section.get());
    EXPECT_EQ(box->GetBackColor(VEX_RADIOBOX_NORMAL, VARIANT_TRUE, &color), S_OK);
    EXPECT_EQ(color, 0x123456u);
    EXPECT_EQ(box->GetTextStyle(VEX_RADIOBOX_NORMAL, 0, styleBack.put()), S_OK);
    EXPECT_EQ(styleBack, textStyle);
}

TEST_F(RadioBoxTest, IndexesThatLeadNowhereAreRefused)
{
    const std::pair<long, VARIANT_BOOL> nowhere[] = {
        {8, 0}, {4, VARIANT_TRUE}, {-1, 0}, {-1, VARIANT_TRUE}, {0x7FFFFFFF, 1}};
    for (const auto& [number, checked] : nowhere) {
        const auto eState = static_cast<VEX_RADIOBOXSTATE>(number);
        VARIANT_BOOL done = VARIANT_TRUE;
        auto* image = reinterpret_cast<IVexImageBase*>(this);
        OLE_COLOR color = 1;
        std::int64_t bitmap = 1;
        EXPECT_EQ(box->SetBackImage(eState, checked, nullptr, &done), E_INVALIDARG);
        EXPECT_EQ(done, VARIANT_FALSE);
        EXPECT_EQ(box->GetBoxImage(eState, checked, &image), E_INVALIDARG);
        EXPECT_EQ(image, nullptr);
        EXPECT_EQ(box->GetBackColor(eState, checked, &color), E_INVALIDARG);
        EXPECT_EQ(box->SetGraphicsBmp(eState, checked, 5, &done), E_INVALIDARG);
        EXPECT_EQ(box->GetGraphicsBmp(eState, checked, &bitmap), E_INVALIDARG);
        EXPECT_EQ(bitmap, 0);
    }
    EXPECT_EQ(box->SetButtonState(VEX_RADIOBOX_LAST, VARIANT_TRUE), E_INVALIDARG);
    for (long odd : {-1, 2})
        EXPECT_EQ(box->SetValue(static_cast<VEXRADIOBOX_VALUE>(odd), VARIANT_TRUE), E_INVALIDARG);
    EXPECT_EQ(log(), Log());
}

TEST_F(RadioBoxTest, NullPlacesAreRefused)
{
    long number = 0;
    EXPECT_EQ(box->GetText(nullptr), E_POINTER);
    EXPECT_EQ(box->GetButtonState(nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicsFilePath(nullptr), E_POINTER);
    EXPECT_EQ(box->GetValue(nullptr), E_POINTER);
    EXPECT_EQ(box->IsUpDownMode(nullptr), E_POINTER);
    EXPECT_EQ(box->GetTooltip(nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicOffset(&number, nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicOffset(nullptr, &number), E_POINTER);
    EXPECT_EQ(box->IsShowText(nullptr), E_POINTER);
    EXPECT_EQ(box->SetBackImage(VEX_RADIOBOX_NORMAL, 0, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(box->GetBackColor(VEX_RADIOBOX_NORMAL, 0, nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicsBmp(VEX_RADIOBOX_NORMAL, 0, nullptr), E_POINTER);
    EXPECT_EQ(box->GetTextStyle(VEX_RADIOBOX_NORMAL, 0, nullptr), E_POINTER);
    EXPECT_EQ(box->GetBackDrawColor(nullptr), E_POINTER);
    EXPECT_EQ(box->GetData(nullptr), E_POINTER);
    EXPECT_EQ(box->SetGraphicSize(1, 1, VARIANT_TRUE, nullptr), E_POINTER);
    EXPECT_EQ(box->GetGraphicSize(nullptr, &number), E_POINTER);
    EXPECT_EQ(box->SetGroupID(5, nullptr), E_POINTER);
    EXPECT_EQ(box->GetGroupID(nullptr), E_POINTER);
    EXPECT_EQ(box->GetGroup(nullptr), E_POINTER);
    EXPECT_EQ(log(), Log());
}

} // namespace
} // namespace morvane
