// What a check box draws, where and in which order, and how it fits itself to its text.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::Log;
using testing::LongObject;

const SkinRect kBox = {0, 0, 13, 13};

class CheckBoxDrawingTest : public testing::CheckBoxFixture {
protected:
    void SetUp() override
    {
        testing::CheckBoxFixture::SetUp();
        for (const wchar_t* group : {L"Unchecked.Normal", L"Checked.Normal", L"Unchecked.Hot", L"Unchecked.Inactive"})
            giveSection(box, group, L"Image", kBox);
    }
};

TEST_F(CheckBoxDrawingTest, TheBoxStandsAtTheLeftInTheMiddleAndTheTextTwoPixelsBesideIt)
{
    EXPECT_EQ(render(box), Log({"draw Unchecked.Normal.Image 10,33,23,46 #0",
                                "draw Unchecked.Normal.TextStyle 25,20,110,60 \"CheckBox\"", "draw focus"}));
}

TEST_F(CheckBoxDrawingTest, MirroredItStandsAtTheRight)
{
    box.base->mirrored = VARIANT_TRUE;
    EXPECT_EQ(render(box), Log({"draw Unchecked.Normal.Image 97,33,110,46 #0",
                                "draw Unchecked.Normal.TextStyle 10,20,95,60 \"CheckBox\"", "draw focus"}));
}

TEST_F(CheckBoxDrawingTest, LikeAPushButtonBoxAndTextFillTheControl)
{
    box->SetPushButtonLike(VARIANT_TRUE);
    EXPECT_EQ(render(box), Log({"draw Unchecked.Normal.Image 10,20,110,60 #0",
                                "draw Unchecked.Normal.TextStyle 10,20,110,60 \"CheckBox\"", "draw focus"}));
}

TEST_F(CheckBoxDrawingTest, TheLookFollowsValueAndState)
{
    const auto boxLook = [this] { return render(box)[0].substr(5, std::string("Unchecked.Normal").size()); };
    box.base->mouseOver = VARIANT_TRUE;
    EXPECT_EQ(boxLook(), "Unchecked.Hot.Im");
    box.base->leftButtonDown = VARIANT_TRUE;
    EXPECT_EQ(boxLook(), "Unchecked.Press.");
    box.base->enabled = VARIANT_FALSE;
    EXPECT_EQ(boxLook(), "Unchecked.Disabl");
    box.base->enabled = VARIANT_TRUE;
    box.base->leftButtonDown = box.base->mouseOver = VARIANT_FALSE;
    box->SetActive(VARIANT_FALSE);
    EXPECT_EQ(boxLook(), "Unchecked.Inacti");
    box.base->mouseOver = VARIANT_TRUE;
    EXPECT_EQ(boxLook(), "Unchecked.Hot.Im") << "inactive shows in the normal state only";
    box->SetValue(VEXCHECKBOX_HALFCHECKED);
    EXPECT_EQ(boxLook(), "HalfChecked.Hot.");
}

TEST_F(CheckBoxDrawingTest, InTheDesignerTheStateIsTheOneThatWasSet)
{
    box->SetButtonState(VEX_CHECKBOX_PRESS);
    EXPECT_EQ(render(box)[0].substr(0, 21), "draw Unchecked.Normal") << "worked out again";
    box->SetButtonState(VEX_CHECKBOX_PRESS);
    res->designStatus = VARIANT_TRUE;
    EXPECT_EQ(render(box)[0].substr(0, 20), "draw Unchecked.Press");
}

TEST_F(CheckBoxDrawingTest, NoTextIsDrawnWhenItIsHiddenOrEmpty)
{
    const Log withoutText = {"draw Unchecked.Normal.Image 10,33,23,46 #0", "draw focus"};
    box->ShowText(VARIANT_FALSE);
    EXPECT_EQ(render(box), withoutText);
    box->ShowText(VARIANT_TRUE);
    box->SetText(nullptr);
    EXPECT_EQ(render(box), withoutText);
}

TEST_F(CheckBoxDrawingTest, AnIconIsDrawnInTheCornerOnceItWasMadeAnImage)
{
    box->ShowText(VARIANT_FALSE);
    box->SetGraphics(0xABC, VARIANT_TRUE);
    EXPECT_EQ(render(box),
              Log({"draw Unchecked.Normal.Image 10,33,23,46 #0", "make 0x00000ABC of abc type 5 device de71ce",
                   "draw 0x00000ABC 10,20,34,36 from 0,0,24,16", "draw focus"}));
    box.base->mirrored = VARIANT_TRUE;
    EXPECT_EQ(render(box)[1], "draw 0x00000ABC 86,20,110,36 from 0,0,24,16") << "the same image";
    box->SetGraphics(0xABC, 1);
    EXPECT_EQ(log(), Log({"destroy 0x00000ABC"}));
    EXPECT_EQ(render(box).size(), 2u) << "a bitmap is drawn on device contexts only";
}

TEST_F(CheckBoxDrawingTest, TheGraphicOfTheUncheckedValueDecidesPlaceAndSizeForAllValues)
{
    box->ShowText(VARIANT_FALSE);
    box->SetValue(VEXCHECKBOX_CHECKED);
    giveSection(box, L"Checked.Normal", L"Graphics", {0, 0, 40, 40});
    EXPECT_EQ(render(box).size(), 2u) << "the unchecked value has none";
    giveSection(box, L"Unchecked.Normal", L"Graphics", {0, 0, 20, 10});
    box.property<LongObject>(L"Graphics", L"x").value = 5;
    box.property<LongObject>(L"Graphics", L"y").value = 3;
    EXPECT_EQ(render(box)[1], "draw Checked.Normal.Graphics 15,38,35,48 #0");
    box.base->mirrored = VARIANT_TRUE;
    EXPECT_EQ(render(box)[1], "draw Checked.Normal.Graphics 95,38,115,48 #0");
}

TEST_F(CheckBoxDrawingTest, OnADeviceContextItNeedsABoxAndDrawsTheSameParts)
{
    giveStyle(box, L"Unchecked.Normal");
    giveSection(box, L"Unchecked.Normal", L"Graphics", {0, 0, 20, 10});
    EXPECT_EQ(drawOnDc(box), Log({"dc Unchecked.Normal.Image 10,33,23,46", "dc text 25,20,110,60 \"CheckBox\"",
                                  "dc Unchecked.Normal.Graphics 10,35,30,45"}));
    box->SetValue(VEXCHECKBOX_HALFCHECKED);
    EXPECT_EQ(drawOnDc(box), Log({"status 1"})) << "no box picture";
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(box->DrawObject(nullptr, SkinRect{}, &drawn), E_POINTER);
}

/// A 32-bit picture of 4 by 4 pixels, half transparent white.
HBITMAP makeBitmap()
{
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 4, -4, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    std::fill_n(static_cast<std::uint32_t*>(bits), 16, 0x80808080u);
    return bitmap;
}

TEST_F(CheckBoxDrawingTest, ABitmapIsBlendedByItsAlphaOnADeviceContext)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 120, -80, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP surface = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(dc, surface);
    const HBITMAP bitmap = makeBitmap();
    box->SetGraphics(reinterpret_cast<std::int64_t>(bitmap), VARIANT_FALSE);
    const auto draw = host.ledger.make<testing::ObjectDraw>();
    draw->dc = reinterpret_cast<std::int64_t>(dc);
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(box->DrawObject(draw.get(), SkinRect{}, &drawn), S_OK);
    EXPECT_EQ(GetPixel(dc, 10, 20), RGB(0x80, 0x80, 0x80)) << "premultiplied white over black";
    EXPECT_EQ(GetPixel(dc, 13, 23), RGB(0x80, 0x80, 0x80));
    EXPECT_EQ(GetPixel(dc, 14, 23), RGB(0, 0, 0)) << "at its natural size";
    DeleteObject(bitmap);
    SelectObject(dc, former);
    DeleteObject(surface);
    DeleteDC(dc);
}

// Fitting itself to its text: seven pixels a character, fourteen a line, a margin of three
// ----------------------------------

TEST_F(CheckBoxDrawingTest, ASetTextGivesItTextBoxGapAndMarginAsWidth)
{
    set(L"AutoResize", L"IsEnableAutoSize", VARIANT_TRUE);
    giveStyle(box, L"Unchecked.Normal");
    box.base->position.horzPos.nSpaceType = PHST_FASTNESS;
    box.property<LongObject>(L"Graphics", L"x").value = 50; // does not count
    box->SetText(Bstr(L"four").get());
    EXPECT_EQ(log(), Log({"position", "resize", "redraw 10,20,110,60"}));
    EXPECT_EQ(box.base->position.horzPos.nWidth_Height, 28 + 4 + 13 + 2 + 3);
    EXPECT_EQ(box.base->position.vertPos.nWidth_Height, 14);
}

TEST_F(CheckBoxDrawingTest, ASizeChangeFitsItOnlyWhenRectangleOrTextChanged)
{
    set(L"AutoResize", L"IsEnableAutoSize", VARIANT_TRUE);
    giveStyle(box, L"Unchecked.Normal");
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log({"position", "resize"}));
    box.base->position = {};
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log());
    box.base->rect.right += 1;
    notify(box, VEXSM_SIZE);
    EXPECT_EQ(log(), Log({"position", "resize"}));
}

TEST_F(CheckBoxDrawingTest, TheStyleOfTheUncheckedValueMeasuresAndAWidthBetweenEdgesStays)
{
    set(L"AutoResize", L"IsEnableAutoSize", VARIANT_TRUE);
    giveStyle(box, L"Checked.Normal");
    box->SetValue(VEXCHECKBOX_CHECKED);
    box.base->position.horzPos = {{}, PHST_RIGHTWIDTH, 0, 0, 77};
    box.base->position.vertPos.nWidth_Height = 30;
    box->SetText(Bstr(L"four").get());
    EXPECT_EQ(box.base->position.vertPos.nWidth_Height, 14) << "the least height: there is no style to measure with";
    EXPECT_EQ(box.base->position.horzPos.nWidth_Height, 77);
}

} // namespace
} // namespace morvane
