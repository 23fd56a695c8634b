// The mark around the object with the keyboard, in the picture of a real window of which only what changed is drawn
// anew.
#include "ambrel/objects/memory_bitmap.h"
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

namespace ambrel::testing_objects {
namespace {

constexpr OLE_COLOR kRed = 0x000000FF;
constexpr Pixel kRedPixel = 0xFFFF0000;
constexpr Pixel kMark = 0xFF2563D9; // on light ground
constexpr Pixel kMarkOnRed = 0xFF6EA0FF;
constexpr Pixel kGround = 0xFFF3F4F7;

///  panel       10..210 across, 10..110 down, without a picture of its own
///    inner     50..90, 40..60
///    beside    100..140, 40..60
///    wide      10..210, 80..110: as wide as its parent, along its bottom
class FocusMarkAroundTest : public testing::Test {
protected:
    void SetUp() override
    {
        root = openTestWindow();
        ASSERT_TRUE(root);
        hyper handle = 0;
        root->GetWindowHandle(&handle);
        window = reinterpret_cast<HWND>(handle);
        panel = make(root.get(), {10, 10, 210, 110}, false);
        inner = make(panel->asControl(), {50, 40, 90, 60}, true);
        beside = make(panel->asControl(), {100, 40, 140, 60}, true);
        wide = make(panel->asControl(), {10, 80, 210, 110}, true);
        focus(*inner);
        SendMessageW(window, WM_KEYDOWN, VK_PRIOR, 0); // a key that moves nothing, but shows where the keyboard is
    }

    void TearDown() override { DestroyWindow(window); }

    ComPtr<TestControl> make(ISkinObjResBase* parent, Rect rect, bool isRed)
    {
        auto control = TestControl::make();
        if (isRed) {
            control->onRender = [object = control.get()](IVexRenderDC& dc, SkinRect part) {
                VARIANT_BOOL drawn = VARIANT_FALSE;
                dc.FillSolidColor(&part, kRed, &drawn);
                object->RenderDrawFocus(&dc);
            };
        }
        control->enter(parent, rect);
        control->SetDrawFocus(VARIANT_TRUE);
        return control;
    }

    void focus(TestControl& control)
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        control.SetFocus(&done);
        ASSERT_EQ(done, VARIANT_TRUE);
    }

    /// What the window shows, after it has drawn what it was asked to, and no more.
    Pixel shownAt(int x, int y)
    {
        const MemoryBitmap picture(400, 300, 0);
        SendMessageW(window, WM_PRINTCLIENT, static_cast<WPARAM>(picture.dc()), PRF_CLIENT);
        return picture.at(x, y);
    }

    RuntimeClasses classes;
    ComPtr<IAmbrel> root;
    HWND window = nullptr;
    ComPtr<TestControl> panel;
    ComPtr<TestControl> inner;
    ComPtr<TestControl> beside;
    ComPtr<TestControl> wide;
};

TEST_F(FocusMarkAroundTest, LiesAroundTheObjectAndCoversNothingOfIt)
{
    EXPECT_EQ(shownAt(50, 50), kRedPixel);
    EXPECT_EQ(shownAt(89, 59), kRedPixel);
    EXPECT_EQ(shownAt(49, 50), kGround) << "a gap";
    EXPECT_EQ(shownAt(48, 50), kMark);
    EXPECT_EQ(shownAt(47, 50), kMark);
    EXPECT_EQ(shownAt(46, 50), kGround);
    EXPECT_EQ(shownAt(92, 50), kMark);
    EXPECT_EQ(shownAt(70, 62), kMark);
}

TEST_F(FocusMarkAroundTest, StaysWhileOnlyTheGroundOrTheObjectIsDrawnAnewAndGoesWithTheFocus)
{
    ASSERT_EQ(shownAt(48, 50), kMark);
    SkinRect ground{0, 30, 50, 70};
    root->AddDirtyRect(ground);
    EXPECT_EQ(shownAt(48, 50), kMark) << "only the ground around the object was drawn";
    inner->DirectRedraw(nullptr);
    EXPECT_EQ(shownAt(48, 50), kMark);

    focus(*beside);
    EXPECT_EQ(shownAt(48, 50), kGround);
    EXPECT_EQ(shownAt(98, 50), kMark);
    EXPECT_EQ(shownAt(142, 50), kMark);
    beside->SetDrawFocus(VARIANT_FALSE);
    SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(300, 200)); // the pointer takes the mark away
    focus(*inner);
    EXPECT_EQ(shownAt(48, 50), kGround);
}

TEST_F(FocusMarkAroundTest, FollowsTheObjectAndNeverLeavesItsParent)
{
    SkinRect record{60, 40, 100, 60};
    long changed = 0;
    inner->Resize(&record, &changed);
    EXPECT_EQ(shownAt(48, 50), kGround) << "where it was";
    EXPECT_EQ(shownAt(58, 50), kMark);
    inner->SetVisible(VARIANT_FALSE, VARIANT_TRUE, VARIANT_TRUE);
    EXPECT_EQ(shownAt(58, 50), kGround);

    focus(*wide);
    EXPECT_EQ(shownAt(10, 95), kMarkOnRed) << "along the inside of an edge that is the parent's, too";
    EXPECT_EQ(shownAt(9, 95), kGround);
    EXPECT_EQ(shownAt(100, 109), kMarkOnRed);
    EXPECT_EQ(shownAt(100, 110), kGround);
    EXPECT_EQ(shownAt(100, 77), kMarkOnRed) << "outside, where there is room";
}

TEST_F(FocusMarkAroundTest, WhatCoversTheObjectCoversTheMark)
{
    const auto over = make(panel->asControl(), {30, 45, 55, 55}, true);
    EXPECT_EQ(shownAt(48, 50), kRedPixel);
    EXPECT_EQ(shownAt(48, 57), kMark);
    over->onRender = nullptr;
}

TEST_F(FocusMarkAroundTest, AnObjectThatDoesNotAskForItHasNone)
{
    inner->onRender = [](IVexRenderDC& dc, SkinRect part) {
        VARIANT_BOOL drawn = VARIANT_FALSE;
        dc.FillSolidColor(&part, kRed, &drawn);
    };
    root->AddDirtyRect({0, 0, 400, 300});
    EXPECT_EQ(shownAt(48, 50), kGround);
    EXPECT_EQ(shownAt(50, 50), kRedPixel);
}

} // namespace
} // namespace ambrel::testing_objects
