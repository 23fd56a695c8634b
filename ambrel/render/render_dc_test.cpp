#include "ambrel/pixels/gradient.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/focus_mark.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/render_image.h"
#include "ambrel/render/resource_factory.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::ComPtr;

/// A handle of another kind. Small numbers are no good here: the system takes them for handles as they come.
const hyper kBrush = reinterpret_cast<hyper>(GetStockObject(WHITE_BRUSH));

class RenderDCTest : public testing::Test {
protected:
    RenderDCTest()
    {
        m_device.resize({40, 30});
        SkinRect all{0, 0, 40, 30};
        dc().FillSolidColor(&all, 0x00FFFFFF, &m_drawn);
    }
    ~RenderDCTest() override { setCurrentScale(Scale()); }

    RenderDC& dc() { return m_device.renderDC(); }
    Pixel at(int x, int y)
    {
        dc().finishDrawing();
        return m_device.surface()->pixels().at(x, y);
    }

    RenderDevice m_device;
    VARIANT_BOOL m_drawn = VARIANT_FALSE;
};

TEST_F(RenderDCTest, DrawsInsideTheUpdateRectangleAndTheViewportOnly)
{
    SkinRect everything{-100, -100, 100, 100};
    dc().SetUpdateRect({5, 5, 30, 20});
    dc().SetViewport({10, 0, 100, 12});
    EXPECT_EQ(dc().FillSolidColor(&everything, kRedColour, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(10, 5), kRed);
    EXPECT_EQ(at(29, 11), kRed);
    for (const Point outside : {Point{9, 6}, Point{30, 6}, Point{12, 12}, Point{12, 4}})
        EXPECT_EQ(at(outside.x, outside.y), kWhite);
    SkinRect inside{12, 6, 13, 7};
    SkinRect beyond{0, 0, 5, 5};
    dc().IsValidateRect(&inside, &m_drawn);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    dc().IsValidateRect(&beyond, &m_drawn);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
}

TEST_F(RenderDCTest, RefusesMissingPlacesAndDrawsNothingWithoutATarget)
{
    SkinRect r{0, 0, 5, 5};
    EXPECT_EQ(dc().FillSolidColor(&r, 0, nullptr), E_POINTER);
    EXPECT_EQ(dc().FillSolidColor(nullptr, 0, &m_drawn), E_POINTER);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
    EXPECT_EQ(dc().GetViewport(nullptr), E_POINTER);
    EXPECT_EQ(dc().FlushHDC(12345, 0, 0, nullptr, VARIANT_TRUE), E_INVALIDARG);
    const auto alone = morvane::Instance<RenderDC>::make();
    EXPECT_EQ(alone->FillColor(&r, 0, 0, 0, &m_drawn), S_FALSE);
    hyper none = 1;
    EXPECT_EQ(alone->GetDC(&none), S_OK);
    EXPECT_EQ(none, 0);
}

TEST_F(RenderDCTest, WhatGdiDrawsIsOpaque)
{
    HDC gdi = dc().beginGdi();
    RECT r{2, 2, 8, 8};
    FillRect(gdi, &r, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(at(4, 4), 0xFF000000u);
    EXPECT_EQ(at(20, 20), kWhite);
}

TEST_F(RenderDCTest, ALayerIsPutDownWithItsOpacity)
{
    SkinRect r{0, 0, 10, 10};
    dc().pushLayer({0, 0, 20, 20}, 128);
    dc().FillSolidColor(&r, kRedColour, &m_drawn);
    dc().pushLayer({0, 0, 20, 20}, 255); // costs nothing, draws into the one around it
    SkinRect second{10, 0, 20, 10};
    dc().FillSolidColor(&second, kRedColour, &m_drawn);
    EXPECT_EQ(m_device.surface()->pixels().at(5, 5), kWhite); // not yet
    dc().popLayer();
    dc().popLayer();
    EXPECT_EQ(at(5, 5), packPixel(255, 255, 127, 127));
    EXPECT_EQ(at(15, 5), packPixel(255, 255, 127, 127));
    EXPECT_EQ(at(15, 15), kWhite);
}

TEST_F(RenderDCTest, AScratchDeviceContextIsBlendedWhereItWasDrawnOn)
{
    hyper scratch = 0;
    ASSERT_EQ(dc().GetHDC(10, 10, &scratch), S_OK);
    const morvane::UniqueBrush red(CreateSolidBrush(RGB(255, 0, 0)));
    RECT r{0, 0, 5, 10};
    FillRect(reinterpret_cast<HDC>(scratch), &r, red.get());
    EXPECT_EQ(dc().FlushHDC(scratch, 20, 10, nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(at(22, 12), kRed);
    EXPECT_EQ(at(27, 12), kWhite);
    EXPECT_EQ(dc().FlushHDC(scratch, 20, 10, nullptr, VARIANT_TRUE), E_INVALIDARG); // gone

    ASSERT_EQ(dc().GetHDCNoAlpha(4, 4, &scratch), S_OK);
    EXPECT_EQ(dc().FlushHDC(scratch, 0, 0, nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(at(1, 1), 0xFF000000u); // all of it covers
    EXPECT_EQ(dc().GetHDC(-1, 10, &scratch), E_INVALIDARG);
}

TEST_F(RenderDCTest, AForeignDeviceContextIsCopied)
{
    DibSurface foreign({10, 10});
    const morvane::UniqueBrush red(CreateSolidBrush(RGB(255, 0, 0)));
    RECT r{0, 0, 10, 10};
    FillRect(foreign.dc(), &r, red.get());
    SkinRect part{0, 0, 3, 3};
    EXPECT_EQ(dc().DrawHDC(reinterpret_cast<hyper>(foreign.dc()), 6, 7, &part), S_OK);
    EXPECT_EQ(at(8, 9), kRed);
    EXPECT_EQ(at(9, 9), kWhite);
    EXPECT_EQ(dc().DrawHDC(kBrush, 6, 7, &part), E_INVALIDARG);
}

TEST(RenderDeviceTest, OnlyHandlesOfLivingDevicesAreKnown)
{
    hyper handle = 0;
    ComPtr<IVexRenderDC> dc;
    {
        RenderDevice device;
        device.resize({4, 4});
        handle = device.handle();
        dc = ComPtr<IVexRenderDC>(&device.renderDC());
        EXPECT_EQ(RenderDevice::fromHandle(handle), &device);
    }
    EXPECT_EQ(RenderDevice::fromHandle(handle), nullptr);
    EXPECT_EQ(RenderDevice::fromHandle(0), nullptr);
    EXPECT_EQ(RenderDevice::fromHandle(99), nullptr);
    SkinRect r{0, 0, 2, 2};
    VARIANT_BOOL drawn = VARIANT_TRUE;
    EXPECT_EQ(dc->FillSolidColor(&r, 0, &drawn), S_FALSE); // outlived its device
    EXPECT_EQ(dc->GetRenderDevice(&handle), S_OK);
    EXPECT_EQ(handle, 0);
}

TEST_F(RenderDCTest, ImagesFromHandlesAreKnownByNameAndDrawn)
{
    DibSurface source({4, 4});
    fillRect(source.canvas(), {0, 0, 2, 4}, kRed);
    ComPtr<IVexRenderImage> image;
    const auto bitmap = reinterpret_cast<hyper>(source.bitmap());
    ASSERT_EQ(createRenderImageFromHandle(m_device.handle(), L"0x00000001", bitmap, VEX_PT_BMP, image.put()), S_OK);
    EXPECT_EQ(m_device.findImage(L"0x00000001"), image);
    EXPECT_EQ(image->DrawAll(&dc(), {10, 10, 18, 18}, VARIANT_TRUE, 0, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(11, 14), kRed);
    EXPECT_EQ(at(17, 14), kWhite); // the bitmap's alpha
    image->Draw(&dc(), {20, 10, 40, 18}, {1, 0, 3, 4}, VARIANT_FALSE, 0, &m_drawn);
    EXPECT_EQ(at(20, 10), kRed);
    EXPECT_EQ(at(21, 10), kWhite);
    EXPECT_TRUE(m_device.dropImage(image.get()));
    EXPECT_FALSE(m_device.releaseImage(L"0x00000001"));
    EXPECT_EQ(createRenderImageFromHandle(m_device.handle(), L"x", 5, VEX_PT_BMP, image.put()), E_INVALIDARG);
    EXPECT_EQ(createRenderImageFromHandle(99, L"x", bitmap, VEX_PT_BMP, image.put()), E_INVALIDARG);
}

TEST_F(RenderDCTest, IconsKeepTheirShape)
{
    ComPtr<IVexRenderImage> image;
    HICON icon = LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    ASSERT_EQ(
        createRenderImageFromHandle(m_device.handle(), L"icon", reinterpret_cast<hyper>(icon), VEX_PT_ICO, image.put()),
        S_OK);
    long width = 0;
    VARIANT_BOOL hasAlpha = VARIANT_FALSE;
    image->GetWidth(&width);
    image->HasAlphaChannel(&hasAlpha);
    EXPECT_GT(width, 0);
    EXPECT_EQ(hasAlpha, VARIANT_TRUE);
}

TEST_F(RenderDCTest, ABitmapsPartIsDrawnStretchedOrInItsOwnSizeCutToTheTarget)
{
    DibSurface source({4, 4});
    fillRect(source.canvas(), {0, 0, 2, 4}, kRed);
    fillRect(source.canvas(), {2, 0, 4, 4}, kBlue);
    const auto bitmap = reinterpret_cast<hyper>(source.bitmap());
    SkinRect target{10, 10, 20, 20};
    SkinRect right{2, 0, 4, 4};
    EXPECT_EQ(dc().RenderPartImagePart(&target, &right, bitmap, VARIANT_TRUE, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(10, 10), kBlue);
    EXPECT_EQ(at(19, 19), kBlue);
    EXPECT_EQ(at(20, 20), kWhite);
    SkinRect small{0, 0, 3, 2};
    dc().RenderPartImagePart(&small, nullptr, bitmap, VARIANT_FALSE, &m_drawn);
    EXPECT_EQ(at(1, 1), kRed);
    EXPECT_EQ(at(2, 1), kBlue);
    EXPECT_EQ(at(3, 1), kWhite) << "cut to the target";
    EXPECT_EQ(at(1, 2), kWhite);
    SkinRect beyond{9, 9, 12, 12};
    EXPECT_EQ(dc().RenderPartImagePart(&target, &beyond, bitmap, VARIANT_TRUE, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
    EXPECT_EQ(dc().RenderPartImagePart(&target, nullptr, kBrush, VARIANT_TRUE, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
}

TEST_F(RenderDCTest, AnImagesTransparentColourIsLeftOutAndSmallPartsStaySharpAtTheirSize)
{
    Surface pixels = surfaceOf({4, 4}, kGreen);
    fillRect({pixels.view(), {}, pixels.view().bounds()}, {0, 0, 2, 4}, packPixel(255, 255, 0, 255));
    const auto image = RenderImage::make(std::move(pixels), VEX_PT_BMP);
    constexpr OLE_COLOR kMagenta = 0x00FF00FF;
    SkinRect target{0, 0, 8, 8};
    SkinRect all{0, 0, 4, 4};
    EXPECT_EQ(dc().DrawImage(image.get(), &target, &all, VARIANT_FALSE, kMagenta, VARIANT_FALSE, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(1, 1), kWhite);
    EXPECT_EQ(at(2, 1), kGreen);
    EXPECT_EQ(at(4, 1), kWhite) << "not stretched";
    EXPECT_EQ(dc().DrawImage(nullptr, &target, &all, VARIANT_FALSE, 0, VARIANT_FALSE, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
    EXPECT_EQ(dc().DrawImage(image.get(), nullptr, &all, VARIANT_FALSE, 0, VARIANT_FALSE, &m_drawn), E_POINTER);
}

TEST_F(RenderDCTest, ASectionRecordDrawsTheNamedImageOfItsDevice)
{
    Surface strip({8, 4});
    const Canvas canvas{strip.view(), {}, strip.view().bounds()};
    fillRect(canvas, {0, 0, 4, 4}, kRed);
    fillRect(canvas, {4, 0, 8, 4}, kBlue);
    const auto image = RenderImage::make(std::move(strip), VEX_PT_BMP);
    m_device.keepImage(L"strip", image.get());
    const morvane::Bstr name(L"strip");
    const morvane::Bstr unknown(L"other");
    SkinImageSection section{};
    section.szImageName = name.get();
    section.rect = {4, 0, 8, 4};
    section.bClientAreaStretch = VARIANT_TRUE;
    section.nOpacity = 128;
    section.clrColorize = 0xFFFFFFFF;
    SkinRect target{10, 10, 20, 20};
    EXPECT_EQ(dc().DrawImageSection(&section, &target, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(15, 15), packPixel(255, 127, 127, 255));
    EXPECT_EQ(at(20, 20), kWhite);
    section.szImageName = unknown.get();
    EXPECT_EQ(dc().DrawImageSection(&section, &target, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
    EXPECT_EQ(dc().DrawImageSection(nullptr, &target, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_FALSE);
}

TEST_F(RenderDCTest, LinesHaveTheirWidthAndAlphaAndEndWhereTheyShould)
{
    dc().DrawLine(5, 10, 14, 10, 1, 255, kRedColour, &m_drawn);
    EXPECT_EQ(at(5, 10), kRed);
    EXPECT_EQ(at(14, 10), kRed);
    for (const Point beside : {Point{4, 10}, Point{15, 10}, Point{10, 9}, Point{10, 11}})
        EXPECT_EQ(at(beside.x, beside.y), kWhite);
    dc().DrawLine(5, 20, 14, 20, 1, 128, kRedColour, &m_drawn);
    EXPECT_EQ(at(10, 20), packPixel(255, 255, 127, 127));
    dc().DrawLine(30, 5, 30, 25, 3, 255, kRedColour, &m_drawn);
    int width = 0;
    for (int x = 25; x < 36; ++x)
        width += at(x, 15) == kRed;
    EXPECT_EQ(width, 3);
}

TEST_F(RenderDCTest, SystemFramesAreDrawnOpaqueInsideTheirRectangle)
{
    SkinRect target{5, 5, 25, 25};
    for (const auto& [type, state] :
         {std::pair<long, long>{DFC_BUTTON, DFCS_BUTTONPUSH}, {DFC_SCROLL, DFCS_SCROLLUP}}) {
        SkinRect all{0, 0, 40, 30};
        dc().FillSolidColor(&all, 0x00FF00FF, &m_drawn);
        EXPECT_EQ(dc().DrawFrameControl(&target, type, state, &m_drawn), S_OK);
        EXPECT_EQ(m_drawn, VARIANT_TRUE);
        EXPECT_NE(at(15, 7), packPixel(255, 255, 0, 255));
        EXPECT_EQ(alphaOf(at(15, 15)), 255);
        EXPECT_EQ(at(26, 26), packPixel(255, 255, 0, 255));
    }
}

TEST_F(RenderDCTest, AContextOfAnotherSurfaceKeepsItsTransparency)
{
    const DibSurface aside({20, 20});
    const auto guest = morvane::Instance<RenderDC>::make();
    guest->setDevice(&m_device);
    guest->setTarget(&aside, {10, 5});
    SkinRect rect{10, 5, 15, 25};
    guest->FillSolidColor(&rect, kRedColour, &m_drawn);
    HDC gdi = guest->beginGdi();
    RECT square{20, 5, 22, 8};
    FillRect(gdi, &square, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    guest->finishDrawing();
    EXPECT_EQ(aside.pixels().at(0, 0), kRed);
    EXPECT_EQ(aside.pixels().at(10, 0), kWhite) << "drawn by GDI";
    EXPECT_EQ(aside.pixels().at(6, 6), 0u) << "though its device is opaque";
    guest->setTarget(nullptr);
}

TEST(FocusMarkTest, IsARingInsideTheEdgeAsWideAsTheScaleSaysAndSeenOnEveryGround)
{
    for (const int percent : {100, 200}) {
        const int width = 2 * percent / 100;
        for (const Pixel ground : {kWhite, Pixel{0xFF1E2126}, Pixel{0xFF2563D9}}) {
            Surface surface = surfaceOf({60, 60}, ground);
            const Canvas canvas{surface.view(), {100, 50}, {100, 50, 160, 110}};
            drawFocusMark(canvas, {110, 60, 150, 100}, Scale(percent));
            const auto at = [&](int x, int y) { return surface.view().at(x - 100, y - 50); };
            const Pixel ring = at(110, 80);
            EXPECT_NE(ring, ground) << std::hex << ground;
            EXPECT_EQ(at(110 + width - 1, 80), ring);
            EXPECT_EQ(at(110 + width, 80), ground);
            EXPECT_EQ(at(149, 80), ring);
            EXPECT_EQ(at(130, 99), ring);
            EXPECT_EQ(at(109, 80), ground) << "outside";
            EXPECT_EQ(at(110, 60), ground) << "the corner is round";
            const Pixel accent = ground == kWhite ? 0xFF2563D9 : 0xFF6EA0FF;
            EXPECT_EQ(ring, accent);
        }
    }
}

TEST(FocusMarkTest, APartDrawnLaterLooksAsItDidAndNothingOutsideTheClipChanges)
{
    Surface surface = surfaceOf({40, 40}, kWhite);
    const Canvas part{surface.view(), {}, {30, 0, 40, 40}};
    drawFocusMark(part, {0, 0, 40, 40}, Scale());
    EXPECT_EQ(surface.view().at(39, 20), 0xFF2563D9u);
    EXPECT_EQ(surface.view().at(0, 20), kWhite);
    drawFocusMark({surface.view(), {100, 100}, {100, 100, 140, 140}}, {90, 90, 150, 150}, Scale()); // edges beyond
    EXPECT_EQ(surface.view().at(0, 20), kWhite);
}

TEST(RenderDeviceTest, EveryContextThatDrawsForItIsToldOfItsEnd)
{
    const auto guest = morvane::Instance<RenderDC>::make();
    {
        RenderDevice device;
        guest->setDevice(&device);
        guest->setDevice(&device);
        EXPECT_EQ(guest->device(), &device);
        const auto passing = morvane::Instance<RenderDC>::make();
        passing->setDevice(&device); // goes before the device
    }
    EXPECT_EQ(guest->device(), nullptr);
}

TEST(RenderPicturesTest, GradientsLinesAndRingsLookAsTheyDid)
{
    RenderDevice device;
    device.resize({200, 60});
    const Canvas canvas = device.renderDC().canvas();
    fillRect(canvas, canvas.clip, 0xFFF3F4F7);
    for (int i = 0; i < 4; ++i)
        fillGradient(canvas, Rect::at({5 + i * 45, 5}, {40, 20}), 0xFF2563D9, kWhite, i * 45);
    for (int i = 0; i < 4; ++i)
        drawLine(canvas, {5, 30}, {45, 30 + i * 8}, 1 + i, 0xFF2563D9);
    drawRing(canvas, {60, 32, 110, 56}, 4, 2, 0xFF2563D9);
    drawRing(canvas, {120, 32, 170, 56}, 8, 1, 0xFF8A93A0);
    expectLooksLike(L"gradients_lines_rings", device.surface()->pixels());
}

TEST(RenderBalanceTest, DevicesTextsAndPicturesGiveEveryHandleBack)
{
    const auto useEverything = [] {
        RenderDevice device;
        device.resize({64, 64});
        auto style = morvane::Instance<TextStyle>::make();
        style->draw(device.renderDC().canvas(), {0, 0, 64, 20}, L"Text \x05E9\x4E2D", Scale());
        DibSurface bitmap({8, 8});
        ComPtr<IVexRenderImage> image;
        createRenderImageFromHandle(device.handle(), L"a", reinterpret_cast<hyper>(bitmap.bitmap()), VEX_PT_BMP,
                                    image.put());
        device.renderDC().pushLayer({0, 0, 20, 20}, 100);
        device.renderDC().beginGdi();
        device.renderDC().popLayer();
        hyper dc = 0;
        device.renderDC().GetHDC(5, 5, &dc);
        style.reset();
        FontCache::instance().clear();
    };
    useEverything(); // what the system makes once
    const int handles = gdiObjectCount();
    const long objects = morvane::ModuleLock::count();
    ASSERT_GT(handles, 0);
    for (int i = 0; i < 30; ++i)
        useEverything();
    EXPECT_EQ(gdiObjectCount(), handles);
    EXPECT_EQ(morvane::ModuleLock::count(), objects);
}

/// Four pixels in a row: red, green, blue, black.
Surface fourColours()
{
    Surface row({4, 1});
    Pixel* const pixels = row.view().row(0);
    pixels[0] = kRed;
    pixels[1] = kGreen;
    pixels[2] = kBlue;
    pixels[3] = 0xFF000000u;
    return row;
}

TEST_F(RenderDCTest, APartThatReachesBeyondItsImageKeepsItsPlace)
{
    const auto image = RenderImage::make(fourColours(), VEX_PT_BMP);
    const morvane::UniqueBitmap bitmap = bitmapOf(fourColours().view());
    const auto expectShifted = [&](int y) {
        EXPECT_EQ(at(10, y), kWhite);
        EXPECT_EQ(at(11, y), kWhite);
        EXPECT_EQ(at(12, y), kRed);
        EXPECT_EQ(at(13, y), kGreen);
        EXPECT_EQ(at(14, y), kWhite) << "beyond the target";
    };
    SkinRect beyond{-2, 0, 4, 1};
    SkinRect target{10, 0, 14, 1};
    EXPECT_EQ(dc().DrawImage(image.get(), &target, &beyond, VARIANT_FALSE, 0, VARIANT_FALSE, &m_drawn), S_OK);
    expectShifted(0);
    target = {10, 1, 14, 2};
    EXPECT_EQ(image->Draw(&dc(), target, beyond, VARIANT_FALSE, 0x00FF0000, &m_drawn), S_OK);
    expectShifted(1);
    target = {10, 2, 14, 3};
    EXPECT_EQ(
        dc().RenderPartImagePart(&target, &beyond, reinterpret_cast<hyper>(bitmap.get()), VARIANT_FALSE, &m_drawn),
        S_OK);
    expectShifted(2);
    hyper scratch = 0;
    ASSERT_EQ(dc().GetHDC(4, 1, &scratch), S_OK);
    SetPixel(reinterpret_cast<HDC>(scratch), 0, 0, RGB(255, 0, 0));
    SetPixel(reinterpret_cast<HDC>(scratch), 1, 0, RGB(0, 255, 0));
    EXPECT_EQ(dc().FlushHDC(scratch, 10, 3, &beyond, VARIANT_TRUE), S_OK);
    expectShifted(3);
}

TEST_F(RenderDCTest, OfTargetsBeyondAllLimitsThatWhichShowsIsDrawn)
{
    const auto image = RenderImage::make(fourColours(), VEX_PT_BMP);
    const morvane::Bstr name(L"four");
    m_device.keepImage(name.view(), image.get());
    SkinImageSection section{};
    section.szImageName = name.get();
    section.bClientAreaStretch = VARIANT_TRUE;
    section.nOpacity = 255;
    section.clrColorize = 0xFFFFFFFF;
    const morvane::UniqueBitmap bitmap = bitmapOf(fourColours().view());
    SkinRect large{-75000, 0, 125000, 100000}; // the window lies in the middle of its second quarter
    EXPECT_EQ(dc().DrawImageSection(&section, &large, &m_drawn), S_OK);
    EXPECT_EQ(m_drawn, VARIANT_TRUE);
    EXPECT_EQ(at(20, 20), kGreen);
    large = {-125000, 0, 75000, 100000}; // of its third
    SkinRect all{0, 0, 4, 1};
    EXPECT_EQ(dc().RenderPartImagePart(&large, &all, reinterpret_cast<hyper>(bitmap.get()), VARIANT_TRUE, &m_drawn),
              S_OK);
    EXPECT_EQ(at(20, 20), kBlue);
}

TEST_F(RenderDCTest, AnEmptyViewportShowsNothingAndNoneEverything)
{
    SkinRect everything{0, 0, 40, 30};
    dc().SetViewport({20, 5, 10, 25}); // what is left of two that have nothing in common
    dc().FillSolidColor(&everything, kRedColour, &m_drawn);
    EXPECT_EQ(at(15, 10), kWhite);
    EXPECT_EQ(at(0, 0), kWhite);
    dc().SetViewport({});
    dc().FillSolidColor(&everything, kRedColour, &m_drawn);
    EXPECT_EQ(at(15, 10), kRed);
}

} // namespace
} // namespace ambrel
