#include "ambrel/render/layer_graphics.h"
#include "ambrel/render/test_support.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::Instance;

TEST(LayerGraphicsTest, IsABitmapPlacedInTheWindow)
{
    const auto layer = Instance<LayerGraphics>::make();
    VARIANT_BOOL created = VARIANT_FALSE;
    hyper dc = 1;
    EXPECT_EQ(layer->GetDC(&dc), S_OK);
    EXPECT_EQ(dc, 0) << "before it is created";
    EXPECT_EQ(layer->Clear({0, 0, 1, 1}), S_FALSE);
    ASSERT_EQ(layer->Create({10, 20, 14, 23}, &created), S_OK);
    ASSERT_EQ(created, VARIANT_TRUE);

    hyper bits = 0;
    hyper bitmap = 0;
    hyper info = 0;
    layer->GetDC(&dc);
    layer->GetBits(&bits);
    layer->GetBitmap(&bitmap);
    layer->GetBmpInfo(&info);
    const auto* pixels = reinterpret_cast<const Pixel*>(bits);
    const auto& header = reinterpret_cast<const BITMAPINFO*>(info)->bmiHeader;
    EXPECT_EQ(header.biWidth, 4);
    EXPECT_EQ(header.biHeight, -3) << "top row first";
    EXPECT_EQ(GetCurrentObject(reinterpret_cast<HDC>(dc), OBJ_BITMAP), reinterpret_cast<HGDIOBJ>(bitmap));
    EXPECT_EQ(pixels[0], 0u);
    SetPixel(reinterpret_cast<HDC>(dc), 3, 2, RGB(255, 0, 0));
    GdiFlush();
    EXPECT_EQ(pixels[11] & 0xFFFFFF, 0xFF0000u);
    EXPECT_EQ(layer->Clear({13, 22, 14, 23}), S_OK);
    EXPECT_EQ(pixels[11], 0u) << "in window coordinates";
}

TEST(LayerGraphicsTest, KeepsWhatItHasWhenItCannotBecomeAnother)
{
    const auto layer = Instance<LayerGraphics>::make();
    VARIANT_BOOL created = VARIANT_FALSE;
    layer->Create({0, 0, 4, 3}, &created);
    for (const SkinRect odd :
         {SkinRect{}, SkinRect{5, 0, 4, 3}, SkinRect{0, 0, 1000000, 3}, SkinRect{-2147483647 - 1, 0, 2147483647, 1}}) {
        EXPECT_EQ(layer->Create(odd, &created), S_OK);
        EXPECT_EQ(created, VARIANT_FALSE);
    }
    SkinRect rect{};
    layer->GetRect(&rect);
    EXPECT_EQ(rect.right, 4);
    hyper pointer = 0;
    EXPECT_EQ(layer->SetLayerBmp(77), S_OK);
    EXPECT_EQ(layer->GetLayerBmp(&pointer), S_OK);
    EXPECT_EQ(pointer, 77);
    EXPECT_EQ(layer->Destroy(), S_OK);
    EXPECT_EQ(layer->GetBits(&pointer), S_OK);
    EXPECT_EQ(pointer, 0);
    EXPECT_EQ(layer->GetRect(nullptr), E_POINTER);
}

} // namespace
} // namespace ambrel
