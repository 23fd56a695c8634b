// The form object: its background, its bitmap and what it leaves to the framework.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::kHandled;
using testing::kLeftToFramework;
using testing::Log;

class FormObjectTest : public testing::ControlsFixture {
protected:
    void SetUp() override { surface = bringUp<IUIFormObj>(iidOf<::UIFormObj>()); }
    void TearDown() override
    {
        surface.control.reset();
        ControlsFixture::TearDown();
    }
    VARIANT_BOOL showsBitmap()
    {
        VARIANT_BOOL shows = 0x55;
        EXPECT_EQ(surface->IsShowBitmap(&shows), S_OK);
        return shows;
    }

    testing::Made<IUIFormObj> surface;
};

const Log kImage = {"draw Back.Image 10,20,110,60 #0", "draw focus"};
const Log kColour = {"draw Back.Color 10,20,110,60", "draw focus"};

// Notifications
// -----------------------------------------------------------------------------------------------------------

TEST_F(FormObjectTest, ItTellsOfMovesAndReleasesWithoutRedrawing)
{
    EXPECT_EQ(point(surface, VEXSM_MOUSEENTER, 1, 2), kLeftToFramework);
    EXPECT_EQ(point(surface, VEXSM_MOUSEMOVE, 3, 4), kLeftToFramework);
    EXPECT_EQ(log(), Log({"callback 1861 control 20001", "callback 1861 control 40003"})) << "entering is a move";
    EXPECT_EQ(point(surface, VEXSM_LBUTTONUP, 5, 6), kLeftToFramework);
    surface.base->callbackAnswer = VARIANT_TRUE;
    EXPECT_EQ(point(surface, VEXSM_LBUTTONUP, 5, 6), kHandled) << "as the callbacks answer";
    EXPECT_EQ(log(), Log({"callback 1028 control 60005", "callback 1028 control 60005"}));
}

TEST_F(FormObjectTest, WhatItDoesNotHandleIsLeftToTheFramework)
{
    for (VexMsgID id :
         {VEXSM_LBUTTONDOWN, VEXSM_LBUTTONDBCLICK, VEXSM_MOUSELEAVE, VEXSM_ONSETFOCUS, VEXSM_ONKILLFOCUS, VEXSM_SIZE,
          VEXSM_TIMER, VEXSM_DESIGNSTATUSCHANGED, VEXSM_DRAWPREVIEW, VEXSM_IMPORTCONFIG, VEXSM_DISPOSEMOUSEMOVE})
        EXPECT_EQ(notify(surface, id), kLeftToFramework) << id;
    EXPECT_EQ(notify(surface, VEXSM_DESTROYBMPPERPIXEL), kHandled);
    EXPECT_EQ(log(), Log());
}

TEST_F(FormObjectTest, ItTakesMouseMovesWhenItsPropertySaysSo)
{
    surface.property<BoolObject>(L"Misc", L"DisposeMouse").value = VARIANT_TRUE;
    EXPECT_EQ(notify(surface, VEXSM_DISPOSEMOUSEMOVE), kHandled);
}

TEST_F(FormObjectTest, FinalCreationMakesItDraggableAndTheAnswerFollowsTheFramework)
{
    EXPECT_EQ(notify(surface, VEXSM_FINALCREATE), kHandled);
    EXPECT_EQ(log(), Log({"draggable"}));
    VARIANT_BOOL drag = 0x55;
    EXPECT_EQ(notify(surface, VEXSM_ISDRAGABLED, testing::addressOf(drag)), kHandled);
    EXPECT_EQ(drag, VARIANT_TRUE);
    surface.base->draggable = VARIANT_FALSE;
    notify(surface, VEXSM_ISDRAGABLED, testing::addressOf(drag));
    EXPECT_EQ(drag, VARIANT_FALSE);
}

TEST_F(FormObjectTest, ItTakesNoTabStopAndDrawsNoFocus)
{
    VARIANT_BOOL takesTab = 0x55;
    VARIANT_BOOL drawsFocus = 0x55;
    EXPECT_EQ(notify(surface, VEXSM_GETTABINFO, testing::addressOf(takesTab), testing::addressOf(drawsFocus)),
              kHandled);
    EXPECT_EQ(takesTab, VARIANT_FALSE);
    EXPECT_EQ(drawsFocus, VARIANT_FALSE);
    const wchar_t* name = nullptr;
    EXPECT_EQ(notify(surface, VEXSM_GETCONTROLTYPENAME, testing::addressOf(name)), kHandled);
    EXPECT_STREQ(name, L"UIForm");
}

TEST_F(FormObjectTest, WithoutAnInnerBaseObjectItCanBeDragged)
{
    host.givesBase = false;
    const testing::Made<IUIFormObj> bare{host.create<IUIFormObj>(iidOf<::UIFormObj>()), nullptr};
    VARIANT_BOOL drag = 0x55;
    EXPECT_EQ(notify(bare, VEXSM_ISDRAGABLED, testing::addressOf(drag)), kHandled);
    EXPECT_EQ(drag, VARIANT_TRUE);
}

// Background
// --------------------------------------------------------------------------------------------------------------

TEST_F(FormObjectTest, TheBackgroundIsImageOrColour)
{
    EXPECT_EQ(render(surface), kImage);
    EXPECT_EQ(surface->SetDrawColor(VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log()) << "no redraw";
    EXPECT_EQ(render(surface), kColour);
    VARIANT_BOOL drawsColor = VARIANT_FALSE;
    EXPECT_EQ(surface->GetDrawColor(&drawsColor), S_OK);
    EXPECT_EQ(drawsColor, VARIANT_TRUE);
}

TEST_F(FormObjectTest, ImageAndFillAreTheProperties)
{
    const auto section = host.ledger.make<testing::ImageSection>();
    const auto fill = host.ledger.make<testing::Fill>();
    ComPtr<IVexImageBase> sectionBack;
    ComPtr<IFillColor> fillBack;
    EXPECT_EQ(surface->SetBackImageSec(section.get()), S_OK);
    EXPECT_EQ(surface->GetBackImageSec(sectionBack.put()), S_OK);
    EXPECT_EQ(sectionBack.get(), section.get());
    EXPECT_EQ(surface->SetBackColor(fill.get()), S_OK);
    EXPECT_EQ(surface->GetBackColor(fillBack.put()), S_OK);
    EXPECT_EQ(fillBack.get(), fill.get());
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(drawOnDc(surface), Log({"dc section 10,20,110,60"}));
    surface->SetDrawColor(VARIANT_TRUE);
    EXPECT_EQ(drawOnDc(surface), Log({"dc fill 10,20,110,60"}));
}

// The bitmap
// --------------------------------------------------------------------------------------------------------------

TEST_F(FormObjectTest, ABitmapCoversTheFormUntilItIsHiddenOrDeleted)
{
    IVexRenderImage* image = nullptr;
    std::int64_t number = 5;
    EXPECT_EQ(surface->GetBackBitmap(&number), S_FALSE);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(surface->SetBackBitmap(0xB17, &image), S_OK);
    EXPECT_EQ(log(), Log({"make 0x00000B17 of b17 type 2 device de71ce", "redraw 10,20,110,60"}));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(static_cast<testing::RenderImage*>(image)->references(), 1u) << "lent, not given";
    EXPECT_EQ(surface->GetBackBitmap(&number), S_OK);
    EXPECT_EQ(number, reinterpret_cast<std::int64_t>(image));
    EXPECT_EQ(showsBitmap(), VARIANT_TRUE);
    EXPECT_EQ(render(surface), Log({"draw all of 0x00000B17 10,20,110,60", "draw focus"}));

    EXPECT_EQ(surface->SetShowBitmap(VARIANT_FALSE), S_OK);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(render(surface), kImage);
    surface->SetShowBitmap(1);
    EXPECT_EQ(showsBitmap(), 1) << "the bits that were set";
    EXPECT_EQ(render(surface)[0], "draw all of 0x00000B17 10,20,110,60");

    EXPECT_EQ(surface->DeleteBackBitmap(), S_OK);
    EXPECT_EQ(log(), Log({"destroy 0x00000B17", "redraw"}));
    EXPECT_EQ(showsBitmap(), VARIANT_FALSE);
    EXPECT_EQ(render(surface), kImage);
    EXPECT_EQ(surface->DeleteBackBitmap(), S_OK) << "nothing to delete";
}

TEST_F(FormObjectTest, ANewBitmapReplacesTheFormerAndTheLastGoesWithTheForm)
{
    IVexRenderImage* image = nullptr;
    surface->SetBackBitmap(0xB17, &image);
    log();
    surface->SetBackBitmap(0xB18, &image);
    EXPECT_EQ(log(), Log({"destroy 0x00000B17", "make 0x00000B18 of b18 type 2 device de71ce", "redraw 10,20,110,60"}));
    surface.control.reset();
    EXPECT_EQ(log(), Log({"destroy 0x00000B18", "no real control"}));
}

TEST_F(FormObjectTest, AFileIsShownButTheResultStaysFalse)
{
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(surface->SetBackBitmapPath(Bstr(L"sky.png").get(), VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(log(), Log({"make sky.png device de71ce"}));
    EXPECT_EQ(showsBitmap(), VARIANT_TRUE);
    EXPECT_EQ(surface->SetBackBitmapPath(Bstr(L"sea.png").get(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(log(), Log({"make sea.png device de71ce", "redraw 10,20,110,60"}))
        << "the former is not destroyed: others may show it";
    EXPECT_EQ(render(surface)[0], "draw all of sea.png 10,20,110,60");
    Bstr path;
    EXPECT_EQ(surface->GetBackBitmapPath(path.put()), S_OK);
    EXPECT_EQ(path.view(), L"sea.png");
}

TEST_F(FormObjectTest, ANullPathChangesNothingAndWithoutAPathThePlaceIsLeftAlone)
{
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(surface->SetBackBitmapPath(nullptr, VARIANT_TRUE, &done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(showsBitmap(), VARIANT_FALSE);
    auto* untouched = reinterpret_cast<BSTR>(this);
    EXPECT_EQ(surface->GetBackBitmapPath(&untouched), S_OK);
    EXPECT_EQ(untouched, reinterpret_cast<BSTR>(this));
}

TEST_F(FormObjectTest, NullPlacesAreRefused)
{
    EXPECT_EQ(surface->GetDrawColor(nullptr), E_POINTER);
    EXPECT_EQ(surface->GetBackImageSec(nullptr), E_POINTER);
    EXPECT_EQ(surface->GetBackColor(nullptr), E_POINTER);
    EXPECT_EQ(surface->SetBackBitmapPath(Bstr(L"sky.png").get(), VARIANT_TRUE, nullptr), E_POINTER);
    EXPECT_EQ(surface->GetBackBitmapPath(nullptr), E_POINTER);
    EXPECT_EQ(surface->IsShowBitmap(nullptr), E_POINTER);
    EXPECT_EQ(surface->SetBackBitmap(0xB17, nullptr), E_POINTER);
    EXPECT_EQ(surface->GetBackBitmap(nullptr), E_POINTER);
    EXPECT_EQ(log(), Log());
}

TEST_F(FormObjectTest, ACallbackMayReleaseIt)
{
    surface.base->onCallback = [this](long) { surface.control.reset(); };
    IUIFormObj* const borrowed = surface.control.get();
    VexNotify record{VEXSM_LBUTTONUP, 0, 0, 5, 5, 0, 0, VARIANT_FALSE};
    VARIANT_BOOL handled = VARIANT_FALSE;
    EXPECT_EQ(borrowed->EventNotify(&record, &handled), S_OK);
    EXPECT_EQ(surface.base->references(), 0u);
}

} // namespace
} // namespace morvane
