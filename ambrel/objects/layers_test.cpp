// Layers of a window whose objects are plain rectangles of one colour.
#include "ambrel/objects/memory_bitmap.h"
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambrel::testing_objects {
namespace {

constexpr OLE_COLOR kRed = 0x000000FF;
constexpr OLE_COLOR kGreen = 0x0000FF00;
constexpr OLE_COLOR kBlue = 0x00FF0000;
constexpr Pixel kRedPixel = 0xFFFF0000;
constexpr Pixel kGreenPixel = 0xFF00FF00;
constexpr Pixel kBluePixel = 0xFF0000FF;
constexpr Pixel kGround = 0xFFF3F4F7;
constexpr Pixel kNothing = 0;

class ColouredControl : public TestControl {
public:
    static ComPtr<ColouredControl> make() { return morvane::Instance<ColouredControl>::make(); }

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    STDMETHODIMP RenderDrawObject(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept override
    {
        if (onDraw)
            onDraw(rect);
        lastContext = ComPtr<IVexRenderDC>(dc);
        return dc->FillSolidColor(&rect, colour, result);
    }

    OLE_COLOR colour = 0;
    ComPtr<IVexRenderDC> lastContext;
};

/// Reads a layer in window coordinates.
Pixel pixelOf(ILayerGraphics* layer, int x, int y)
{
    SkinRect place{};
    hyper bits = 0;
    EXPECT_EQ(layer->GetRect(&place), S_OK);
    EXPECT_EQ(layer->GetBits(&bits), S_OK);
    EXPECT_TRUE(morvane::toRect(place).contains(Point{x, y}));
    return reinterpret_cast<const Pixel*>(bits)[(y - place.top) * (place.right - place.left) + (x - place.left)];
}

///  panel (red)      10..110
///    below (green)  20..60
///    above (blue)   40..80
///  other (green)    100..140, over the panel
class LayersTest : public testing::Test {
protected:
    void SetUp() override
    {
        root = openTestWindow();
        ASSERT_TRUE(root);
        panel = make(root.get(), {10, 10, 110, 110}, kRed);
        below = make(panel->asControl(), {20, 20, 60, 60}, kGreen);
        above = make(panel->asControl(), {40, 40, 80, 80}, kBlue);
        other = make(root.get(), {100, 100, 140, 140}, kGreen);
    }

    void TearDown() override
    {
        hyper window = 0;
        root->GetWindowHandle(&window);
        DestroyWindow(reinterpret_cast<HWND>(window));
    }

    ComPtr<ColouredControl> make(ISkinObjResBase* parent, Rect rect, OLE_COLOR colour)
    {
        auto control = ColouredControl::make();
        control->colour = colour;
        control->enter(parent, rect);
        return control;
    }

    void paintWindow()
    {
        const MemoryBitmap target(400, 300, 0);
        VARIANT_BOOL drawn = VARIANT_FALSE;
        root->Draw(target.dc(), {0, 0, 400, 300}, &drawn);
    }

    RuntimeClasses classes;
    ComPtr<IAmbrel> root;
    ComPtr<ColouredControl> panel;
    ComPtr<ColouredControl> below;
    ComPtr<ColouredControl> above;
    ComPtr<ColouredControl> other;
    VARIANT_BOOL done = VARIANT_FALSE;
};

TEST_F(LayersTest, BehindAnObjectLieItsAncestorsWhatIsLowerAndTheGround)
{
    ComPtr<ILayerGraphics> back;
    ASSERT_EQ(above->GetLayerBack({0, 0, 130, 130}, back.put()), S_OK);
    EXPECT_EQ(pixelOf(back.get(), 5, 5), kGround);
    EXPECT_EQ(pixelOf(back.get(), 15, 15), kRedPixel);
    EXPECT_EQ(pixelOf(back.get(), 50, 50), kGreenPixel) << "the sibling beneath it, not the object";
    EXPECT_EQ(pixelOf(back.get(), 70, 70), kRedPixel);
    EXPECT_EQ(pixelOf(back.get(), 120, 120), kGround) << "what lies over it is not behind it";
}

TEST_F(LayersTest, InFrontOfAnObjectLiesWhatIsDrawnLaterOnNothing)
{
    ComPtr<ILayerGraphics> fore;
    ASSERT_EQ(below->GetLayerFore({20, 20, 130, 130}, fore.put()), S_OK);
    EXPECT_EQ(pixelOf(fore.get(), 25, 25), kNothing);
    EXPECT_EQ(pixelOf(fore.get(), 50, 50), kBluePixel);
    EXPECT_EQ(pixelOf(fore.get(), 90, 90), kNothing) << "its parent lies behind it";
    EXPECT_EQ(pixelOf(fore.get(), 105, 105), kGreenPixel);
}

TEST_F(LayersTest, AnObjectsOwnLayerHasItsChildrenAndItsOpacity)
{
    panel->SetOpacity(128);
    ComPtr<ILayerGraphics> mine;
    ASSERT_EQ(panel->GetLayerMe(mine.put()), S_OK);
    SkinRect place{};
    mine->GetRect(&place);
    EXPECT_EQ(morvane::toRect(place), (Rect{10, 10, 110, 110}));
    EXPECT_EQ(pixelOf(mine.get(), 15, 15), 0x80800000u);
    EXPECT_EQ(pixelOf(mine.get(), 50, 50), 0x80000080u);
    EXPECT_EQ(pixelOf(mine.get(), 105, 105), 0x80800000u) << "what lies over it is another object";
}

TEST_F(LayersTest, TheThreeLayersOverEachOtherAreTheWindowsPicture)
{
    panel->SetOpacity(128);
    above->SetOpacity(100);
    paintWindow();
    ComPtr<ILayerGraphics> shown;
    ASSERT_EQ(panel->GetAmbrelLayerCache(shown.put()), S_OK);
    ComPtr<ILayerGraphics> layers[3];
    const SkinRect all{0, 0, 150, 150};
    panel->GetLayerBack(all, layers[0].put());
    panel->GetLayerMe(layers[1].put());
    panel->GetLayerFore(all, layers[2].put());
    const auto over = [](Pixel source, Pixel beneath) {
        Pixel result = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            const Pixel rest = ((beneath >> shift & 0xFF) * (255 - (source >> 24)) + 127) / 255;
            result |= (((source >> shift & 0xFF) + rest) & 0xFF) << shift;
        }
        return result;
    };
    for (const Point at : {Point{15, 15}, Point{25, 25}, Point{50, 50}, Point{70, 70}, Point{105, 105}}) {
        Pixel sum = pixelOf(layers[0].get(), at.x, at.y);
        sum = over(pixelOf(layers[1].get(), at.x, at.y), sum);
        sum = over(pixelOf(layers[2].get(), at.x, at.y), sum);
        const Pixel whole = pixelOf(shown.get(), at.x, at.y);
        for (int shift = 0; shift < 32; shift += 8)
            EXPECT_NEAR(static_cast<int>(sum >> shift & 0xFF), static_cast<int>(whole >> shift & 0xFF), 1)
                << at.x << ", byte " << shift / 8;
    }
}

TEST_F(LayersTest, WhatIsHiddenIsBehindNobodyButHasALayerOfItsOwn)
{
    below->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    ComPtr<ILayerGraphics> back;
    ASSERT_EQ(above->GetLayerBack({45, 45, 55, 55}, back.put()), S_OK);
    EXPECT_EQ(pixelOf(back.get(), 50, 50), kRedPixel);
    panel->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    ASSERT_EQ(above->GetLayerBack({45, 45, 55, 55}, back.put()), S_OK);
    EXPECT_EQ(pixelOf(back.get(), 50, 50), kGround);
    ComPtr<ILayerGraphics> mine;
    ASSERT_EQ(panel->GetLayerMe(mine.put()), S_OK) << "a module that is drawn into cells is hidden itself";
    EXPECT_EQ(pixelOf(mine.get(), 15, 15), kRedPixel);
    EXPECT_EQ(pixelOf(mine.get(), 70, 70), kBluePixel) << "its children as they would be seen";
    EXPECT_EQ(pixelOf(mine.get(), 25, 25), kRedPixel) << "a child that is hidden itself stays hidden";
}

TEST_F(LayersTest, EmptyAndImpossibleRectanglesHaveNoLayer)
{
    for (const SkinRect odd : {SkinRect{}, SkinRect{50, 50, 40, 60}, SkinRect{0, 0, 100000, 5},
                               SkinRect{-2147483647 - 1, 0, 2147483647, 10}}) {
        ComPtr<ILayerGraphics> layer;
        EXPECT_EQ(above->GetLayerBack(odd, layer.put()), S_FALSE);
        EXPECT_FALSE(layer);
        EXPECT_EQ(above->GetLayerFore(odd, layer.put()), S_FALSE);
    }
    EXPECT_EQ(above->GetLayerBack({0, 0, 5, 5}, nullptr), E_POINTER);
    EXPECT_EQ(above->GetLayerMe(nullptr), E_POINTER);
    ComPtr<ILayerGraphics> layer;
    ASSERT_EQ(above->GetLayerBack({-20, -20, 5, 5}, layer.put()), S_OK);
    EXPECT_EQ(pixelOf(layer.get(), -10, -10), kNothing) << "beyond the window";
    EXPECT_EQ(pixelOf(layer.get(), 2, 2), kGround);
    long changed = 0;
    SkinRect none{};
    other->Resize(&none, &changed);
    EXPECT_EQ(other->GetLayerMe(layer.put()), S_FALSE);
}

TEST_F(LayersTest, AnObjectThatAsksForLayersWhileItIsDrawnComesToAnEnd)
{
    int drawings = 0;
    HRESULT nested = S_OK;
    panel->onDraw = [&](const SkinRect&) {
        ++drawings;
        ComPtr<ILayerGraphics> layer;
        nested = panel->GetLayerMe(layer.put());
        other->GetLayerBack({0, 0, 50, 50}, layer.put()); // draws the panel
    };
    other->onDraw = [&](const SkinRect&) {
        ++drawings;
        ComPtr<ILayerGraphics> layer;
        panel->GetLayerFore({100, 100, 120, 120}, layer.put()); // draws the other one
    };
    ComPtr<ILayerGraphics> layer;
    ASSERT_EQ(panel->GetLayerMe(layer.put()), S_OK);
    EXPECT_EQ(nested, S_FALSE);
    EXPECT_EQ(pixelOf(layer.get(), 15, 15), kRedPixel);
    EXPECT_LT(drawings, 10);
}

TEST_F(LayersTest, TheTreeMayChangeWhileALayerIsDrawn)
{
    ComPtr<ILayerGraphics> layer;
    below->onDraw = [&](const SkinRect&) { above->Remove(&done); };
    ASSERT_EQ(above->GetLayerBack({0, 0, 100, 100}, layer.put()), S_OK);
    EXPECT_EQ(pixelOf(layer.get(), 25, 25), kGreenPixel);
    below->onDraw = [&](const SkinRect&) { panel->DelAllSubObjects(); };
    ComPtr<IVexControlBase> alone(below->asControl());
    below.reset();
    EXPECT_EQ(alone->GetLayerMe(layer.put()), S_OK);
    hyper window = 0;
    root->GetWindowHandle(&window);
    panel->onDraw = [&](const SkinRect&) { DestroyWindow(reinterpret_cast<HWND>(window)); };
    EXPECT_EQ(panel->GetLayerMe(layer.put()), S_OK);
    EXPECT_EQ(pixelOf(layer.get(), 15, 15), kRedPixel) << "its window ended meanwhile";
}

TEST_F(LayersTest, AContextThatWasKeptDrawsNothingAfterwards)
{
    ComPtr<ILayerGraphics> layer;
    ASSERT_EQ(panel->GetLayerMe(layer.put()), S_OK);
    SkinRect rect{10, 10, 110, 110};
    EXPECT_EQ(panel->lastContext->FillSolidColor(&rect, kBlue, &done), S_FALSE);
    EXPECT_EQ(pixelOf(layer.get(), 15, 15), kRedPixel);
}

TEST_F(LayersTest, WhatAnObjectWantsRedrawnWhileItsLayerIsDrawnIsNotForgotten)
{
    paintWindow();
    hyper handle = 0;
    root->GetWindowHandle(&handle);
    const HWND window = reinterpret_cast<HWND>(handle);
    ValidateRect(window, nullptr);
    panel->onDraw = [&](const SkinRect&) { panel->DirectRedraw(nullptr); };
    ComPtr<ILayerGraphics> layer;
    panel->GetLayerMe(layer.put());
    panel->onDraw = nullptr;
    panel->lastContext.reset();
    int drawings = 0;
    panel->onDraw = [&](const SkinRect&) { ++drawings; };
    ShowWindow(window, SW_SHOWNOACTIVATE);
    UpdateWindow(window);
    EXPECT_GT(drawings, 0);
}

TEST_F(LayersTest, TheCurrentLayerIsPutOverADeviceContextInWindowCoordinates)
{
    const MemoryBitmap target(200, 200, 0xFFFFFFFF);
    panel->SetOpacity(128);
    EXPECT_EQ(panel->DrawCurrentLayer(target.dc(), VARIANT_TRUE, {0, 0, 45, 45}, VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(target.at(5, 5), 0xFFFFFFFFu);
    EXPECT_EQ(target.at(15, 15), 0xFFFF7F7Fu);
    EXPECT_EQ(target.at(25, 25), 0xFF7FFF7Fu);
    EXPECT_EQ(target.at(42, 42), 0xFF7F7FFFu);
    EXPECT_EQ(target.at(50, 15), 0xFFFFFFFFu) << "outside the update rectangle";
}

TEST_F(LayersTest, OnAMemoryContextOfItsOwnTheObjectBeginsAtTheCorner)
{
    const MemoryBitmap target(100, 100, 0);
    EXPECT_EQ(panel->DrawCurrentLayer(target.dc(), VARIANT_FALSE, {0, 0, 400, 300}, VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(target.at(0, 0), kRedPixel) << "with alpha, ready to be blended";
    EXPECT_EQ(target.at(40, 40), kRedPixel) << "without its children";
    EXPECT_EQ(target.at(99, 99), kRedPixel);
}

TEST_F(LayersTest, WhatCannotBeDrawnIsRefused)
{
    const MemoryBitmap target(50, 50, 0xFFFFFFFF);
    const SkinRect all{0, 0, 400, 300};
    EXPECT_EQ(panel->DrawCurrentLayer(0, VARIANT_TRUE, all, VARIANT_FALSE, &done), E_INVALIDARG);
    EXPECT_EQ(panel->DrawCurrentLayer(brushHandle(), VARIANT_TRUE, all, VARIANT_FALSE, &done), E_INVALIDARG);
    EXPECT_EQ(panel->DrawCurrentLayer(target.dc(), VARIANT_TRUE, all, VARIANT_FALSE, nullptr), E_POINTER);
    EXPECT_EQ(panel->DrawCurrentLayer(target.dc(), VARIANT_TRUE, {}, VARIANT_FALSE, &done), S_FALSE);
    EXPECT_EQ(panel->DrawCurrentLayer(target.dc(), VARIANT_TRUE, {200, 200, 210, 210}, VARIANT_FALSE, &done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(panel->DrawChildren(brushHandle(), all), E_INVALIDARG);
}

TEST_F(LayersTest, ChildrenAreDrawnOntoADeviceContextByTheirRenderPath)
{
    const MemoryBitmap target(200, 200, 0xFFFFFFFF);
    EXPECT_EQ(panel->DrawChildren(target.dc(), {0, 0, 70, 70}), S_OK);
    EXPECT_EQ(target.at(15, 15), 0xFFFFFFFFu) << "not the panel itself";
    EXPECT_EQ(target.at(25, 25), kGreenPixel);
    EXPECT_EQ(target.at(65, 65), kBluePixel);
    EXPECT_EQ(target.at(75, 75), 0xFFFFFFFFu);
}

TEST_F(LayersTest, TheWindowsPictureIsACopyAndCanBeChangedUntilItIsDrawnAgain)
{
    ComPtr<ILayerGraphics> picture;
    const auto fresh = ColouredControl::make();
    EXPECT_EQ(fresh->GetAmbrelLayerCache(picture.put()), S_FALSE) << "in no window";
    paintWindow();
    ASSERT_EQ(above->GetAmbrelLayerCache(picture.put()), S_OK);
    EXPECT_EQ(pixelOf(picture.get(), 15, 15), kRedPixel);

    const MemoryBitmap source(4, 4, 0x00123456);
    EXPECT_EQ(above->UpdateAmbrelLayerCache({12, 12, 20, 20}, source.dc(), {0, 0, 4, 4}, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(pixelOf(picture.get(), 15, 15), kRedPixel) << "an earlier copy stays";
    above->GetAmbrelLayerCache(picture.put());
    EXPECT_EQ(pixelOf(picture.get(), 15, 15), 0xFF123456u);
    EXPECT_EQ(pixelOf(picture.get(), 11, 11), kRedPixel);
    paintWindow();
    above->GetAmbrelLayerCache(picture.put());
    EXPECT_EQ(pixelOf(picture.get(), 15, 15), kRedPixel);

    EXPECT_EQ(above->UpdateAmbrelLayerCache({}, source.dc(), {0, 0, 4, 4}, &done), S_FALSE);
    EXPECT_EQ(above->UpdateAmbrelLayerCache({12, 12, 20, 20}, brushHandle(), {0, 0, 4, 4}, &done), E_INVALIDARG);
    EXPECT_EQ(fresh->UpdateAmbrelLayerCache({12, 12, 20, 20}, source.dc(), {0, 0, 4, 4}, &done), S_FALSE);
}

TEST_F(LayersTest, AColourFilterOfTheSkinShowsAtTheNextDrawing)
{
    ComPtr<IVexRes> resources;
    ASSERT_EQ(root->GetVexRes(resources.put()), S_OK);
    ComPtr<IVexObj> made;
    ASSERT_EQ(
        resources->AddResObject(VEXOBJTYPE_GRADIENTCLR, nullptr, Bstr(L"Ground").get(), VARIANT_FALSE, made.put()),
        S_OK);
    const auto fill = made.as<IFillColor>();
    fill->put_clrStart(0x00404040);
    fill->put_clrEnd(0x00404040);
    panel->AddFillColor(fill.get(), {12, 12, 18, 18});
    const auto shown = [&] {
        ComPtr<ILayerGraphics> layer;
        panel->GetLayerMe(layer.put());
        return pixelOf(layer.get(), 15, 15);
    };
    EXPECT_EQ(shown(), 0xFF404040u);
    EXPECT_EQ(resources->AddColorFilterShiftRGB(16, -16, 255, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(shown(), 0xFF5030FFu);
    EXPECT_EQ(resources->AddColorFilterColorize(0, 0, 255, &done), S_OK);
    const Pixel grey = shown();
    EXPECT_EQ(grey & 0xFF, grey >> 16 & 0xFF) << "no colour is left";
    EXPECT_EQ(resources->AddColorFilterColorize(256, 0, 0, &done), E_INVALIDARG);
    EXPECT_EQ(resources->AddColorFilterShiftRGB(0, -256, 0, &done), E_INVALIDARG);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(resources->RemoveColorFilters(&done), S_OK);
    EXPECT_EQ(shown(), 0xFF404040u);
    EXPECT_EQ(resources->RemoveColorFilters(&done), S_FALSE);
    EXPECT_EQ(resources->RemoveColorFilters(nullptr), E_POINTER);

    // A colour case tints beside the filters, until another one is chosen or it goes.
    fill->put_clrStart(0x000000FF);
    fill->put_clrEnd(0x000000FF);
    VEX_COLORCASE grey255{};
    grey255.bEnabled = VARIANT_TRUE;
    grey255.fBlend = 1;
    VEX_COLORCASE plain{};
    resources->AddColorCase(Bstr(L"Grey").get(), &grey255);
    resources->AddColorCase(Bstr(L"Plain").get(), &plain);
    EXPECT_EQ(shown(), kRedPixel) << "none is chosen";
    EXPECT_EQ(resources->SetCurColorCase(Bstr(L"Grey").get(), &done), S_OK);
    const Pixel tinted = shown();
    EXPECT_EQ(tinted & 0xFF, tinted >> 16 & 0xFF);
    EXPECT_EQ(resources->AddColorFilterShiftRGB(0, 255, 0, &done), S_OK);
    EXPECT_EQ(shown() >> 8 & 0xFF, 0xFFu);
    EXPECT_EQ(resources->RemoveColorFilters(&done), S_OK);
    EXPECT_EQ(shown(), tinted) << "filters go, the case stays";
    EXPECT_EQ(resources->SetCurColorCase(Bstr(L"Plain").get(), &done), S_OK);
    EXPECT_EQ(shown(), kRedPixel);
    resources->SetCurColorCase(Bstr(L"Grey").get(), &done);
    grey255.fBlend = std::numeric_limits<float>::quiet_NaN();
    resources->AddColorCase(Bstr(L"Grey").get(), &grey255);
    EXPECT_EQ(shown(), kRedPixel) << "the chosen one was replaced";
}

TEST_F(LayersTest, TheRootsLayersAreTheWholeWindow)
{
    ComPtr<ILayerGraphics> mine;
    ASSERT_EQ(root->GetLayerMe(mine.put()), S_OK);
    EXPECT_EQ(pixelOf(mine.get(), 5, 5), kNothing);
    EXPECT_EQ(pixelOf(mine.get(), 120, 120), kGreenPixel);
    ComPtr<ILayerGraphics> back;
    ASSERT_EQ(root->GetLayerBack({0, 0, 150, 150}, back.put()), S_OK);
    EXPECT_EQ(pixelOf(back.get(), 120, 120), kGround);
}

} // namespace
} // namespace ambrel::testing_objects
