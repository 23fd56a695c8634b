// The helper with which objects draw on a plain device context.
#include "ambrel/objects/memory_bitmap.h"
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"
#include "ambrel/render/render_dc.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel::testing_objects {
namespace {

constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr Pixel kRed = 0xFFFF0000;
constexpr Pixel kBlue = 0xFF0000FF;

class ObjectDrawTest : public testing::Test {
protected:
    ObjectDrawTest()
    {
        CoCreateInstance(morvane::kClsidObjectDraw, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexObjectDraw>(),
                         draw.putVoid());
        control = TestControl::make();
        hyper created = 0;
        control->CreateObj(0, 0, VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
        SkinRect place{10, 20, 50, 60};
        long changed = 0;
        control->Resize(&place, &changed);
    }

    HRESULT begin(bool isMemoryDc = false)
    {
        return draw->BeginDraw(target.dc(), control->asControl(), VARIANT_TRUE,
                               isMemoryDc ? VARIANT_TRUE : VARIANT_FALSE);
    }

    HDC blendDc()
    {
        hyper dc = 0;
        EXPECT_EQ(draw->GetDC(VARIANT_TRUE, &dc), S_OK);
        return reinterpret_cast<HDC>(dc);
    }

    static void fill(HDC dc, RECT rect, COLORREF colour)
    {
        const morvane::UniqueBrush brush(CreateSolidBrush(colour));
        FillRect(dc, &rect, brush.get());
    }

    RuntimeClasses classes;
    ComPtr<IVexObjectDraw> draw;
    ComPtr<TestControl> control;
    MemoryBitmap target{80, 80, kWhite};
    VARIANT_BOOL done = VARIANT_FALSE;
};

TEST_F(ObjectDrawTest, HandsOutTheCallersContextAndTheObjectsPlace)
{
    ASSERT_EQ(begin(), S_OK);
    hyper dc = 0;
    EXPECT_EQ(draw->GetDC(VARIANT_FALSE, &dc), S_OK);
    EXPECT_EQ(dc, target.dc());
    SkinRect rect{};
    EXPECT_EQ(draw->GetDrawRect(&rect), S_OK);
    EXPECT_EQ(morvane::toRect(rect), (Rect{10, 20, 50, 60}));
    ASSERT_EQ(begin(true), S_OK);
    draw->GetDrawRect(&rect);
    EXPECT_EQ(morvane::toRect(rect), (Rect{0, 0, 40, 40})) << "a memory context begins at the object's corner";
    EXPECT_EQ(draw->EndDraw(), S_OK);
    EXPECT_EQ(draw->GetDC(VARIANT_FALSE, &dc), S_FALSE);
    EXPECT_EQ(dc, 0);
    EXPECT_EQ(draw->BeginDraw(0, nullptr, VARIANT_TRUE, VARIANT_FALSE), E_INVALIDARG);
    EXPECT_EQ(draw->GetDC(VARIANT_FALSE, nullptr), E_POINTER);
}

TEST_F(ObjectDrawTest, WhatIsDrawnAsideCoversAtTheSamePlaceWhenBlended)
{
    begin();
    EXPECT_EQ(draw->Blend(&done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "nothing was drawn aside";
    fill(blendDc(), {10, 20, 30, 60}, RGB(255, 0, 0));
    EXPECT_EQ(target.at(15, 25), kWhite) << "not yet";
    hyper bits = 0;
    draw->GetBmpBits(&bits);
    EXPECT_NE(bits, 0);
    EXPECT_EQ(draw->Blend(&done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(target.at(10, 20), kRed);
    EXPECT_EQ(target.at(29, 59), kRed);
    EXPECT_EQ(target.at(30, 59), kWhite) << "where nothing was drawn the target stays";
    EXPECT_EQ(target.at(9, 20), kWhite);
}

TEST_F(ObjectDrawTest, BlendingWeakensByTheObjectsOpacity)
{
    control->SetOpacity(128);
    begin();
    fill(blendDc(), {10, 20, 30, 60}, RGB(0, 0, 255));
    draw->Blend(&done);
    EXPECT_EQ(target.at(15, 25), 0xFF7F7FFFu);
}

TEST_F(ObjectDrawTest, BitmapsAreStretchedIntoThePlaceOrAPartOfIt)
{
    const MemoryBitmap halves(4, 4, kRed);
    fill(reinterpret_cast<HDC>(halves.dc()), {2, 0, 4, 4}, RGB(0, 0, 255)); // GDI clears the alpha there
    const auto bitmap = reinterpret_cast<hyper>(GetCurrentObject(reinterpret_cast<HDC>(halves.dc()), OBJ_BITMAP));
    begin();
    EXPECT_EQ(draw->PaintImageAll(bitmap, VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(target.at(12, 40), kRed);
    EXPECT_EQ(target.at(9, 40), kWhite);
    EXPECT_EQ(draw->PaintPartImagePart({60, 0, 70, 10}, {0, 0, 2, 4}, bitmap, &done), S_OK);
    EXPECT_EQ(target.at(60, 0), kRed);
    EXPECT_EQ(target.at(69, 9), kRed);
    EXPECT_EQ(target.at(70, 10), kWhite);
    EXPECT_EQ(draw->PaintImagePart({0, 70, 8, 78}, bitmap, &done), S_OK);
    EXPECT_EQ(target.at(0, 70), kRed);
    EXPECT_EQ(draw->PaintPartImagePart({60, 0, 70, 10}, {40, 40, 50, 50}, bitmap, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "no such part";
    EXPECT_EQ(draw->PaintImagePart({0, 0, 5, 5}, brushHandle(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "no bitmap";
    EXPECT_EQ(draw->PaintIcon({0, 0, 5, 5}, brushHandle(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "no icon";
    EXPECT_EQ(draw->DrawText(nullptr, nullptr, &done), E_POINTER);
}

TEST_F(ObjectDrawTest, AnIconKeepsItsShape)
{
    begin();
    const auto icon = reinterpret_cast<hyper>(LoadIconW(nullptr, MAKEINTRESOURCEW(32513))); // the round error sign
    EXPECT_EQ(draw->PaintIcon({10, 20, 42, 52}, icon, &done), S_OK);
    ASSERT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(target.at(10, 20), kWhite) << "outside of the circle";
    EXPECT_NE(target.at(26, 24), kWhite);
}

TEST_F(ObjectDrawTest, ARenderContextIsKeptAndGivesItsDeviceContextOutsideOfADrawing)
{
    ComPtr<IVexRenderDC> none;
    EXPECT_EQ(draw->GetRenderDC(none.put()), S_OK);
    EXPECT_FALSE(none);
    EXPECT_EQ(draw->SetRenderDC(nullptr), S_OK);
    EXPECT_EQ(draw->GetRenderDC(nullptr), E_POINTER);
    EXPECT_EQ(draw->SaveBitmap(nullptr, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "outside of a drawing";
}

TEST_F(ObjectDrawTest, AContextHoldsTheControlThatItDrawsUntilItIsToldOfAnother)
{
    const auto references = [&] {
        control->AddRef();
        return control->Release();
    };
    const auto context = morvane::Instance<RenderDC>::make();
    const ULONG before = references();
    context->SetCurrentControl(control->asControl());
    EXPECT_EQ(references(), before + 1);
    ComPtr<IVexControlBase> current;
    EXPECT_EQ(context->GetCurrentControl(current.put()), S_OK);
    EXPECT_EQ(current.get(), control->asControl());
    current.reset();
    context->SetCurrentControl(nullptr);
    EXPECT_EQ(references(), before);
}

} // namespace
} // namespace ambrel::testing_objects
