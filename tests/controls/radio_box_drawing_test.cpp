// What a radio box draws, where and in which order, on render devices and on device contexts.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::Log;
using testing::LongObject;

class RadioBoxDrawingTest : public testing::RadioBoxFixture {
protected:
    void SetUp() override
    {
        testing::RadioBoxFixture::SetUp();
        for (const wchar_t* group : {L"Unchecked.Normal", L"Checked.Normal", L"Unchecked.Hot", L"Unchecked.Disabled"})
            giveSection(box, group, L"Box", {0, 0, 12, 12});
    }
};

TEST_F(RadioBoxDrawingTest, BackgroundBoxAndTextInThisOrder)
{
    EXPECT_EQ(render(box),
              Log({"draw Unchecked.Normal.Back 10,20,110,60 #0", "draw Unchecked.Normal.Box 10,34,22,46 #0",
                   "draw Unchecked.Normal.TextStyle 24,20,110,60 \"RadioBox\"", "draw focus"}));
}

TEST_F(RadioBoxDrawingTest, MirroredTheBoxStandsAtTheRight)
{
    box.base->mirrored = VARIANT_TRUE;
    EXPECT_EQ(render(box),
              Log({"draw Unchecked.Normal.Back 10,20,110,60 #0", "draw Unchecked.Normal.Box 98,34,110,46 #0",
                   "draw Unchecked.Normal.TextStyle 10,20,96,60 \"RadioBox\"", "draw focus"}));
}

TEST_F(RadioBoxDrawingTest, AColourMayStandForTheBackgroundImage)
{
    box->SetBackDrawColor(VARIANT_TRUE);
    EXPECT_EQ(render(box)[0], "draw Unchecked.Normal.Color 10,20,110,60");
}

TEST_F(RadioBoxDrawingTest, StackedTheTextHasTheWholeControl)
{
    box->SetUpDownMode(VARIANT_TRUE, VARIANT_FALSE);
    EXPECT_EQ(render(box)[2], "draw Unchecked.Normal.TextStyle 10,20,110,60 \"RadioBox\"");
}

TEST_F(RadioBoxDrawingTest, AStateIsDroppedWhenThePointerIsGoneUnlessTheBoxIsDisabled)
{
    const auto boxLook = [this] { return render(box)[1].substr(5, 13); };
    box->SetButtonState(VEX_RADIOBOX_HOT, VARIANT_FALSE);
    box.base->mouseOver = VARIANT_TRUE;
    EXPECT_EQ(boxLook(), "Unchecked.Hot");
    box.base->mouseOver = VARIANT_FALSE;
    EXPECT_EQ(boxLook(), "Unchecked.Nor");
    notify(box, VEXSM_ENABLEOBJECT, 0, 0);
    EXPECT_EQ(boxLook(), "Unchecked.Dis");
    notify(box, VEXSM_ENABLEOBJECT, -1, 0);
    box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE);
    EXPECT_EQ(boxLook(), "Checked.Norma");
}

TEST_F(RadioBoxDrawingTest, TheGraphicComesFromTheStripThenTheBitmapThenTheSection)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    box->ShowText(VARIANT_FALSE, VARIANT_FALSE);
    EXPECT_EQ(render(box).size(), 3u);
    giveSection(box, L"Unchecked.Normal", L"Graphics", {0, 0, 20, 10});
    EXPECT_EQ(render(box)[2], "draw Unchecked.Normal.Graphics 10,35,30,45 #0");
    box->SetGraphicsBmp(VEX_RADIOBOX_NORMAL, VARIANT_FALSE, 0xB17, &done);
    Log drawn = render(box);
    EXPECT_EQ(drawn[2], "make 0x00000B17 of b17 type 2 device de71ce");
    EXPECT_EQ(drawn[3], "draw 0x00000B17 10,32,34,48 from 0,0,24,16");
    EXPECT_EQ(box->SetGraphicsFilePath(Bstr(L"mail.png").get(), 2, 3, 4, VARIANT_TRUE), S_OK);
    EXPECT_EQ(render(box)[2], "draw strip 12,35,28,51 from 0,0,16,16 #0");
    box->SetGraphicSize(32, 32, VARIANT_FALSE, &done);
    EXPECT_EQ(render(box)[2], "draw strip 12,27,44,59 from 0,0,16,16 #0");
    notify(box, VEXSM_ENABLEOBJECT, 0, 0);
    EXPECT_EQ(render(box)[2], "draw strip 12,27,44,59 from 48,0,64,16 #0");
}

TEST_F(RadioBoxDrawingTest, BitmapsAreGivenBackWhenReplacedAndAtTheEnd)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    std::int64_t bitmap = 0;
    box->SetGraphicsBmp(VEX_RADIOBOX_NORMAL, VARIANT_FALSE, 0xB17, &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(box->GetGraphicsBmp(VEX_RADIOBOX_NORMAL, VARIANT_FALSE, &bitmap), S_OK);
    EXPECT_EQ(bitmap, 0xB17);
    render(box);
    box->SetGraphicsBmp(VEX_RADIOBOX_NORMAL, VARIANT_FALSE, 0xB18, &done);
    EXPECT_EQ(log(), Log({"destroy 0x00000B17"}));
    render(box);
    box.control.reset();
    EXPECT_EQ(log(), Log({"destroy 0x00000B18", "no real control"}));
}

TEST_F(RadioBoxDrawingTest, BlinkAndChildPicturesAreDrawnOnBothPaths)
{
    box->ShowText(VARIANT_FALSE, VARIANT_FALSE);
    box->SetBlinkImage(Bstr(L"alarm.png").get());
    box->SetChildWndImage(Bstr(L"close.png").get(), 5, 6);
    box->StartBlink(7, 500);
    EXPECT_EQ(render(box), Log({"draw strip 10,20,110,60 from 0,0,64,16 #0", "draw Unchecked.Normal.Box 10,34,22,46 #0",
                                "draw strip 41,26,105,42 from 0,0,64,16 #0", "draw focus"}));
    EXPECT_EQ(drawOnDc(box),
              Log({"dc strip 10,20,110,60", "dc Unchecked.Normal.Box 10,34,22,46", "dc strip 41,26,105,42"}));
}

TEST_F(RadioBoxDrawingTest, TheDeviceContextGetsTheSameParts)
{
    giveStyle(box, L"Unchecked.Normal");
    giveSection(box, L"Unchecked.Normal", L"Back", {0, 0, 5, 5});
    giveSection(box, L"Unchecked.Normal", L"Graphics", {0, 0, 20, 10});
    EXPECT_EQ(drawOnDc(box), Log({"dc Unchecked.Normal.Back 10,20,110,60", "dc Unchecked.Normal.Box 10,34,22,46",
                                  "dc Unchecked.Normal.Graphics 10,35,30,45", "dc text 24,20,110,60 \"RadioBox\""}));
    box->SetGraphicsFilePath(Bstr(L"mail.png").get(), 0, 0, 4, VARIANT_TRUE);
    EXPECT_EQ(drawOnDc(box)[2], "dc strip 10,32,26,48");
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(box->DrawObject(nullptr, SkinRect{}, &drawn), E_POINTER);
}

TEST_F(RadioBoxDrawingTest, ATextThatIsSetFitsTheBoxWhenAskedTo)
{
    box.property<BoolObject>(L"AutoResize", L"IsEnableAutoSize").value = VARIANT_TRUE;
    giveStyle(box, L"Unchecked.Normal");
    box.base->position.horzPos.nSpaceType = PHST_FASTNESS;
    box->SetText(Bstr(L"four").get(), VARIANT_FALSE);
    EXPECT_EQ(log(), Log({"position", "resize"}));
    EXPECT_EQ(box.base->position.horzPos.nWidth_Height, 28 + 4 + 12 + 2 + 3);
}

TEST_F(RadioBoxDrawingTest, ASizeChangeFitsItOnlyWhenRectangleOrTextChanged)
{
    box.property<BoolObject>(L"AutoResize", L"IsEnableAutoSize").value = VARIANT_TRUE;
    giveStyle(box, L"Unchecked.Normal");
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log({"position", "resize"}));
    box.base->position = {};
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log());
    box.base->rect.right += 1;
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log({"position", "resize"})) << "its text may wrap elsewhere now";
}

} // namespace
} // namespace morvane
