// What the resource object draws and makes for applications: bitmaps, regions, image lists, render images, fonts.
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/window/host_fixture.h"
#include "frame/com/instance.h"
#include "frame/platform/handles.h"

#include <commctrl.h>
#include <filesystem>
#include <fstream>

namespace ambrel::testing {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

hyper number(const void* handle)
{
    return reinterpret_cast<hyper>(handle);
}

class ResDrawingTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        root->GetRenderDevice(&device);
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(kThreeColours), sizeof kThreeColours);
    }
    void TearDown() override
    {
        std::filesystem::remove(path);
        HostTest::TearDown();
    }

    ComPtr<IVexImageBase> section()
    {
        ComPtr<IVexImageBase> made;
        EXPECT_EQ(resources->GetImageBaseFromFile(Bstr(path.wstring()).get(), made.put()), S_OK);
        return made;
    }

    /// Its pixel; the handle is ours from then on.
    static COLORREF pixelOf(const morvane::UniqueBitmap& bitmap, int x, int y)
    {
        const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
        const morvane::SelectedObject selected(dc.get(), bitmap.get());
        return GetPixel(dc.get(), x, y);
    }

    morvane::UniqueBitmap drawn(IVexImageBase* from, SkinRect rect)
    {
        hyper bitmap = 0;
        EXPECT_EQ(resources->DrawImageSection(rect, from, &bitmap), S_OK);
        return morvane::UniqueBitmap(reinterpret_cast<HBITMAP>(bitmap));
    }

    const std::filesystem::path path = std::filesystem::temp_directory_path() / "ambrel_three_colours.bmp";
    hyper device = 0;

    /// A bitmap file of 3 by 1 pixels: red, green, blue.
    static constexpr std::uint8_t kThreeColours[] = {'B', 'M', 66, 0, 0, 0,   0, 0,   0, 0,   54, 0,  0, 0, 40, 0, 0,
                                                     0,   3,   0,  0, 0, 1,   0, 0,   0, 1,   0,  24, 0, 0, 0,  0, 0,
                                                     12,  0,   0,  0, 0, 0,   0, 0,   0, 0,   0,  0,  0, 0, 0,  0, 0,
                                                     0,   0,   0,  0, 0, 255, 0, 255, 0, 255, 0,  0,  0, 0, 0};
};

TEST_F(ResDrawingTest, ASectionOfAFileIsDrawnIntoABitmapOfTheRectanglesSize)
{
    const auto whole = section();
    ASSERT_TRUE(whole);
    const auto bitmap = drawn(whole.get(), {100, 50, 103, 51});
    EXPECT_EQ(pixelOf(bitmap, 0, 0), kRed);
    EXPECT_EQ(pixelOf(bitmap, 1, 0), kGreen);
    EXPECT_EQ(pixelOf(bitmap, 2, 0), kBlue);
    BITMAP size{};
    GetObjectW(bitmap.get(), sizeof size, &size);
    EXPECT_EQ(size.bmWidth, 3);
    ComPtr<IVexImageBase> none;
    EXPECT_EQ(resources->GetImageBaseFromFile(Bstr(L"Z:\\no such picture.bmp").get(), none.put()), S_FALSE);
    EXPECT_FALSE(none);
    hyper nothing = 1;
    EXPECT_EQ(resources->DrawImageSection({0, 0, 3, 1}, nullptr, &nothing), E_POINTER);
    EXPECT_EQ(resources->DrawImageSection({5, 5, 5, 5}, whole.get(), &nothing), S_FALSE);
    EXPECT_EQ(nothing, 0);
}

TEST_F(ResDrawingTest, ARegionIsWhereABitmapHasAnotherColour)
{
    const auto bitmap = drawn(section().get(), {0, 0, 3, 1});
    hyper made = 0;
    ASSERT_EQ(resources->GetRgnFromHBitmap(number(bitmap.get()), kGreen, &made), S_OK);
    const morvane::UniqueRegion region(reinterpret_cast<HRGN>(made));
    EXPECT_TRUE(PtInRegion(region.get(), 0, 0));
    EXPECT_FALSE(PtInRegion(region.get(), 1, 0));
    EXPECT_TRUE(PtInRegion(region.get(), 2, 0));
    EXPECT_EQ(resources->GetRgnFromHBitmap(0, kGreen, &made), E_INVALIDARG);
}

TEST_F(ResDrawingTest, GradientsAndIconsGoToTheContextThatIsGiven)
{
    const auto bitmap = drawn(section().get(), {0, 0, 32, 32});
    const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    const morvane::SelectedObject selected(dc.get(), bitmap.get());
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(resources->GradientFill(number(dc.get()), {0, 0, 32, 32}, kRed, kRed, 0, &done), S_OK);
    EXPECT_EQ(GetPixel(dc.get(), 31, 31), kRed);
    EXPECT_EQ(resources->DrawSkinImage(number(dc.get()), {0, 0, 3, 1}, section().get(), &done), S_OK);
    EXPECT_EQ(GetPixel(dc.get(), 1, 0), kGreen);
    PatBlt(dc.get(), 0, 0, 32, 32, BLACKNESS);
    EXPECT_EQ(resources->DrawIcon(number(dc.get()), 0, 0, 32, 32, number(LoadIconW(nullptr, IDI_ERROR)), &done), S_OK);
    EXPECT_NE(GetPixel(dc.get(), 16, 6), RGB(0, 0, 0));
    EXPECT_EQ(resources->DrawIcon(number(dc.get()), 0, 0, 32, 32, 0, &done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(ResDrawingTest, ImageListsComeFromFilesSectionsAndThePlatform)
{
    ComPtr<IVexImageList> list;
    EXPECT_EQ(resources->GetImageListFromFile(Bstr(path.wstring()).get(), 1, 0xFFFFFFFF, list.put()), S_OK);
    EXPECT_TRUE(list);
    list.reset();
    EXPECT_EQ(resources->GetImageListFromImageBase(section().get(), 1, 0xFFFFFFFF, list.put()), S_OK);
    EXPECT_TRUE(list);
    list.reset();
    EXPECT_EQ(resources->GetImageListFromImageBase(nullptr, 1, 0, list.put()), E_POINTER);
    EXPECT_EQ(resources->GetImageListFromFile(Bstr(L"no such file").get(), 1, 0, list.put()), S_FALSE);
    EXPECT_EQ(resources->GetImageListFromHIMAGELIST(0, list.put()), E_INVALIDARG);
    const HIMAGELIST platform = ImageList_Create(16, 16, ILC_COLOR32, 1, 1);
    ImageList_ReplaceIcon(platform, -1, LoadIconW(nullptr, IDI_ERROR));
    EXPECT_EQ(resources->GetImageListFromHIMAGELIST(number(platform), list.put()), S_OK);
    EXPECT_TRUE(list);
    ImageList_Destroy(platform);
}

TEST_F(ResDrawingTest, PicturesInMirroredControlsAreNotTurnedRound)
{
    RenderDevice screen;
    screen.resize({6, 1});
    RenderDC& dc = screen.renderDC();
    TestControl* const control = add("picture", {0, 0, 6, 1});
    control->MirrorObject(VARIANT_TRUE);
    dc.SetCurrentControl(control->asControl());
    ASSERT_TRUE(dc.isMirrored());
    const auto picture = morvane::Instance<Picture>::make();
    ASSERT_TRUE(picture->loadFromMemory(kThreeColours));
    const auto image = morvane::Instance<ImageBase>::make();
    image->setPicture(picture.get());
    VARIANT_BOOL shown = VARIANT_FALSE;
    EXPECT_EQ(image->RenderDraw(&dc, {0, 0, 3, 1}, 0, &shown), S_OK);
    ComPtr<IVexRenderImage> whole;
    ASSERT_EQ(image->GetVexRenderImage(0, 0, whole.put()), S_OK);
    EXPECT_EQ(whole->DrawAll(&dc, {3, 0, 6, 1}, VARIANT_FALSE, 0, &shown), S_OK);
    for (const int left : {0, 3}) {
        EXPECT_EQ(screen.surface()->pixels().at(left, 0), opaquePixel(kRed));
        EXPECT_EQ(screen.surface()->pixels().at(left + 2, 0), opaquePixel(kBlue));
    }
    dc.SetCurrentControl(nullptr);
}

TEST_F(ResDrawingTest, AnImageListShowsItsImagesSideBySide)
{
    const auto colours = [&](IVexImageList* list) {
        const auto bitmap = drawn(section().get(), {0, 0, 4, 2});
        {
            const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
            const morvane::SelectedObject selected(dc.get(), bitmap.get());
            PatBlt(dc.get(), 0, 0, 4, 2, BLACKNESS);
            VARIANT_BOOL shown = VARIANT_FALSE;
            EXPECT_EQ(list->DrawPreview(number(dc.get()), {0, 0, 2, 2}, &shown), S_OK);
            EXPECT_EQ(shown, VARIANT_TRUE);
            EXPECT_EQ(list->IsValidateData(&shown), S_OK);
            EXPECT_EQ(shown, VARIANT_TRUE);
        }
        std::vector<COLORREF> seen;
        for (int i = 0; i < 4; ++i)
            seen.push_back(pixelOf(bitmap, i % 2, i / 2));
        return seen;
    };
    const Bstr file(path.wstring());
    const std::vector<COLORREF> kAll = {kRed, kGreen, kBlue, RGB(0, 0, 0)}; // two fit side by side
    ComPtr<IVexImageList> list;
    ASSERT_EQ(resources->GetImageListFromFile(file.get(), 1, 0xFFFFFFFF, list.put()), S_OK);
    EXPECT_EQ(colours(list.get()), kAll);
    list.reset();
    ASSERT_EQ(resources->GetImageListFromFile(file.get(), 1, kGreen, list.put()), S_OK);
    EXPECT_EQ(colours(list.get()), (std::vector<COLORREF>{kRed, RGB(0, 0, 0), kBlue, RGB(0, 0, 0)}));
    list.reset();
    ASSERT_EQ(resources->GetImageListFromFile(file.get(), 1, CLR_DEFAULT, list.put()), S_OK);
    EXPECT_EQ(colours(list.get()), (std::vector<COLORREF>{RGB(0, 0, 0), kGreen, kBlue, RGB(0, 0, 0)}));
    list.reset();
    EXPECT_EQ(resources->GetImageListFromFile(file.get(), 4, 0xFFFFFFFF, list.put()), E_INVALIDARG);
    EXPECT_FALSE(list) << "not one image fits";
    ASSERT_EQ(resources->GetImageListFromFile(file.get(), 2, 0xFFFFFFFF, list.put()), S_OK);
    EXPECT_EQ(colours(list.get()), (std::vector<COLORREF>{kRed, kGreen, RGB(0, 0, 0), RGB(0, 0, 0)}));
}

TEST_F(ResDrawingTest, ImagesOfThePlatformsListsKeepTheirMaskAndAlpha)
{
    // Two images of 2 x 1, the left half of the second one is of another colour.
    const auto shown = [&](UINT kind, Pixel colour, Pixel other, COLORREF mask) {
        Surface strip({4, 1});
        std::fill_n(strip.view().row(0), 4, colour);
        strip.view().row(0)[2] = other;
        const morvane::UniqueBitmap bitmap = bitmapOf(strip.view());
        const HIMAGELIST platform = ImageList_Create(2, 1, kind, 2, 0);
        if (mask != CLR_NONE)
            ImageList_AddMasked(platform, bitmap.get(), mask);
        else
            ImageList_Add(platform, bitmap.get(), nullptr);
        ComPtr<IVexImageList> list;
        EXPECT_EQ(resources->GetImageListFromHIMAGELIST(number(platform), list.put()), S_OK);
        ImageList_Destroy(platform);
        const morvane::UniqueBitmap target = bitmapOf(Surface({4, 1}).view());
        {
            const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
            const morvane::SelectedObject selected(dc.get(), target.get());
            PatBlt(dc.get(), 0, 0, 4, 1, BLACKNESS);
            VARIANT_BOOL done = VARIANT_FALSE;
            EXPECT_EQ(list->DrawPreview(number(dc.get()), {0, 0, 4, 1}, &done), S_OK);
        }
        std::vector<COLORREF> seen;
        for (int x = 0; x < 4; ++x)
            seen.push_back(pixelOf(target, x, 0));
        return seen;
    };
    EXPECT_EQ(shown(ILC_COLOR24 | ILC_MASK, 0x00FF0000u, 0x0000FF00u, kGreen),
              (std::vector<COLORREF>{kRed, kRed, RGB(0, 0, 0), kRed}));
    EXPECT_EQ(shown(ILC_COLOR32, 0x80FF0000u, opaquePixel(kBlue), CLR_NONE), // straight, as such lists have it
              (std::vector<COLORREF>{RGB(128, 0, 0), RGB(128, 0, 0), kBlue, RGB(128, 0, 0)}));
}

TEST_F(ResDrawingTest, RenderImagesAreFoundByNameUntilTheyAreGivenBack)
{
    const auto bitmap = drawn(section().get(), {0, 0, 3, 1});
    const Bstr name(L"Three colours");
    ComPtr<IVexRenderImage> image;
    ASSERT_EQ(resources->CreateImageByHandle(device, name.get(), number(bitmap.get()), VEX_PT_BMP, image.put()), S_OK);
    ComPtr<IVexRenderImage> found;
    EXPECT_EQ(resources->GetImageByName(device, name.get(), found.put()), S_OK);
    EXPECT_EQ(found.get(), image.get());
    VARIANT_BOOL done = VARIANT_FALSE;
    for (int use = 0; use < 2; ++use) // made and fetched
        EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_OK);
    found.reset();
    EXPECT_EQ(resources->GetImageByName(device, name.get(), found.put()), S_FALSE);
    EXPECT_EQ(resources->DestroyImage(image.get(), &done), S_FALSE) << "it has no name any more";
    EXPECT_EQ(resources->GetImageByName(12345, name.get(), found.put()), E_INVALIDARG);
    image.reset();
    EXPECT_EQ(resources->CreateImageByPath(device, Bstr(path.wstring()).get(), image.put()), S_OK);
    EXPECT_TRUE(image);
    EXPECT_EQ(resources->DestroyImage(image.get(), &done), S_OK);
}

TEST_F(ResDrawingTest, AFontOfANameStaysUntilEachUseOfItWasGivenBack)
{
    const Bstr name(L"Heading");
    const Bstr face(L"Tahoma");
    VEXLOGFONT description{};
    description.lfHeight = -20;
    description.lfFaceName = face.get();
    hyper font = 0;
    ASSERT_EQ(resources->GetFontByLogFont(device, name.get(), &description, &font), S_OK);
    hyper again = 0;
    EXPECT_EQ(resources->GetFontByLogFont(device, name.get(), &description, &again), S_OK);
    EXPECT_EQ(again, font) << "who has the handle goes on drawing with it";
    EXPECT_EQ(resources->GetFontByName(device, name.get(), &again), S_OK);
    EXPECT_EQ(again, font);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(resources->ReleaseFontByName(device, name.get(), &done), S_OK);
    EXPECT_EQ(resources->ReleaseFontByHandle(device, font, &done), S_OK);
    EXPECT_EQ(resources->ReleaseFontByHandle(device, font, &done), S_OK);
    EXPECT_EQ(resources->ReleaseFontByHandle(device, font, &done), S_FALSE);
    EXPECT_EQ(resources->GetFontByName(device, name.get(), &again), S_FALSE);
    EXPECT_EQ(again, 0);
    EXPECT_EQ(resources->GetFontByLogFont(device, name.get(), nullptr, &again), E_POINTER);
}

TEST_F(ResDrawingTest, AWindowIsPrintedAsItShows)
{
    TestControl* panel = add("panel", {0, 0, 300, 200});
    panel->onRender = [](IVexRenderDC& dc, SkinRect rect) {
        VARIANT_BOOL done = VARIANT_FALSE;
        dc.FillSolidColor(&rect, kBlue, &done);
    };
    show();
    hyper printed = 0;
    ASSERT_EQ(resources->GetHwndPrintBmp(0, number(window), &printed), S_OK);
    const morvane::UniqueBitmap bitmap(reinterpret_cast<HBITMAP>(printed));
    EXPECT_EQ(pixelOf(bitmap, 150, 100), kBlue);
    EXPECT_EQ(resources->GetHwndPrintBmp(0, 0, &printed), S_FALSE);
    EXPECT_EQ(printed, 0);
}

} // namespace
} // namespace ambrel::testing
