#include "ambrel/pixels/encoded_pictures.h"
#include "ambrel/pixels/gradient.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/cursor.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/image_list.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/resource_factory.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::Bstr;
using morvane::ComPtr;
using morvane::Instance;

/// 6 x 4: red for 50 ms, then a blue square of 2 x 2 at (2, 1) over it for 200 ms.
constexpr std::uint8_t kAnimation[] = {
    0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x06, 0x00, 0x04, 0x00, 0xf0, 0x00, 0x00, 0xff, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x21, 0xf9, 0x04, 0x04, 0x05, 0x00, 0x00, 0x00, 0x21, 0xff, 0x0b, 0x4e, 0x45, 0x54, 0x53, 0x43, 0x41, 0x50, 0x45,
    0x32, 0x2e, 0x30, 0x03, 0x01, 0x00, 0x00, 0x00, 0x2c, 0x00, 0x00, 0x00, 0x00, 0x06, 0x00, 0x04, 0x00, 0x00, 0x02,
    0x04, 0x84, 0x8f, 0xa9, 0x57, 0x00, 0x21, 0xf9, 0x04, 0x04, 0x14, 0x00, 0x00, 0x00, 0x2c, 0x02, 0x00, 0x01, 0x00,
    0x02, 0x00, 0x02, 0x00, 0x80, 0x00, 0x00, 0xff, 0x00, 0x00, 0x00, 0x02, 0x02, 0x84, 0x51, 0x00, 0x3b};

/// Three squares of 4 x 4 side by side: red, green, blue.
Surface threeColours()
{
    Surface strip({12, 4});
    const Canvas canvas{strip.view(), {}, strip.view().bounds()};
    fillRect(canvas, {0, 0, 4, 4}, kRed);
    fillRect(canvas, {4, 0, 8, 4}, kGreen);
    fillRect(canvas, {8, 0, 12, 4}, kBlue);
    return strip;
}

ComPtr<Picture> pictureOf(const Surface& surface)
{
    auto picture = Instance<Picture>::make();
    EXPECT_TRUE(picture->loadFromMemory(encodePng(surface.view())));
    return picture;
}

Canvas wholeOf(Surface& surface)
{
    return {surface.view(), {}, surface.view().bounds()};
}

TEST(PictureTest, LoadsByContentAndKeepsWhatItHasWhenBytesAreBad)
{
    const auto picture = pictureOf(threeColours());
    const std::uint8_t rubbish[] = {'B', 'M', 1, 2, 3};
    EXPECT_FALSE(picture->loadFromMemory(rubbish));
    EXPECT_FALSE(picture->loadFromMemory({}));
    short width = 0;
    picture->GetWidth(&width);
    EXPECT_EQ(width, 12);
    VEX_PICTURE_TYPE type = VEX_PT_UNKNOWN;
    picture->GetImageType(&type);
    EXPECT_EQ(type, VEX_PT_PNG);
    EXPECT_EQ(picture->frameTable(), nullptr);
    EXPECT_EQ(picture->frame({}).pixels.at(5, 2), kGreen);
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(picture->ImportFile(Bstr(L"no such file.png").get(), &loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_FALSE);
}

TEST(PictureTest, APictureBeyondTheLimitsIsRefusedByItsHeader)
{
    auto bytes = encodePng(threeColours().view());
    bytes[17] = 1; // 65548 wide
    EXPECT_FALSE(decodePicture(bytes));
}

TEST(PictureTest, AFileComesBackAsItWas)
{
    const auto picture = pictureOf(threeColours());
    wchar_t path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    const Bstr file(std::wstring(path) + L"ambrel_picture_test.dat"); // the extension does not count
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(picture->ExportFile(file.get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    const auto second = Instance<Picture>::make();
    second->ImportFile(file.get(), &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(second->size(), (Size{12, 4}));
    DeleteFileW(file.get());
}

TEST(PictureTest, AnAnimationHasItsFramesAsTheyAreSeenAndTheirDelays)
{
    const auto picture = Instance<Picture>::make();
    ASSERT_TRUE(picture->loadFromMemory(kAnimation));
    const morvane::PictureFrameTable* table = picture->frameTable();
    ComPtr<PictureFrames> asked; // as the properties do
    EXPECT_EQ(picture->QueryInterface(kIidPictureFrames, asked.putVoid()), S_OK);
    EXPECT_EQ(asked ? asked->frameTable() : nullptr, table);
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->frameCount, 2);
    EXPECT_EQ(table->delaysMs[0], 50);
    EXPECT_EQ(table->delaysMs[1], 200);
    EXPECT_EQ(table->reserved[0], 0) << "shown for ever";
    EXPECT_EQ(picture->frame({}, 0).pixels.at(2, 1), kRed);
    EXPECT_EQ(picture->frame({}, 1).pixels.at(2, 1), kBlue);
    EXPECT_EQ(picture->frame({}, 1).pixels.at(0, 0), kRed); // the first one still shows
    EXPECT_EQ(picture->frame({}, 99).pixels.at(2, 1), kBlue);
}

TEST(PictureTest, TheNearestLargerFormIsTaken)
{
    const auto picture = pictureOf(surfaceOf({10, 10}, kRed));
    EXPECT_TRUE(picture->loadVariantFromMemory(200, encodePng(surfaceOf({20, 20}, kBlue).view())));
    EXPECT_TRUE(picture->loadVariantFromMemory(150, encodePng(surfaceOf({15, 15}, kGreen).view())));
    EXPECT_EQ(picture->frame(Scale(100)).percent, 100);
    EXPECT_EQ(picture->frame(Scale(125)).percent, 150);
    EXPECT_EQ(picture->frame(Scale(150)).percent, 150);
    EXPECT_EQ(picture->frame(Scale(175)).percent, 200);
    EXPECT_EQ(picture->frame(Scale(300)).percent, 200);
    EXPECT_EQ(picture->size(), (Size{10, 10}));
}

TEST(PictureTest, BitmapsHaveAlphaAndTheKeyColourIsGone)
{
    const auto picture = pictureOf(surfaceOf({3, 3}, packPixel(255, 255, 0, 255)));
    hyper bitmap = 0;
    ASSERT_EQ(picture->GetBitmap(0xFFFFFFFF, 0x00FF00FF, &bitmap), S_OK);
    const morvane::UniqueBitmap owner(reinterpret_cast<HBITMAP>(bitmap));
    DIBSECTION section{};
    ASSERT_NE(GetObjectW(owner.get(), sizeof section, &section), 0);
    EXPECT_EQ(*static_cast<const Pixel*>(section.dsBm.bmBits), 0u);
    EXPECT_EQ(Instance<Picture>::make()->GetBitmap(0xFFFFFFFF, 0, &bitmap), S_FALSE);
}

TEST(ImageBaseTest, TheIndexChoosesAnImageOfTheStrip)
{
    const auto image = Instance<ImageBase>::make();
    const auto picture = pictureOf(threeColours());
    Surface target({8, 8});
    EXPECT_FALSE(image->draw(wholeOf(target), {0, 0, 8, 8}, 0, {}));
    image->setPicture(picture.get());
    image->setImageCount(3);
    const std::pair<int, Pixel> kExpected[] = {{0, kRed}, {1, kGreen}, {2, kBlue}, {3, kBlue}, {-1, kRed}};
    for (const auto& [index, colour] : kExpected) {
        EXPECT_TRUE(image->draw(wholeOf(target), {0, 0, 8, 8}, index, {}));
        EXPECT_EQ(target.view().at(4, 4), colour) << index;
    }
    EXPECT_EQ(image->naturalSize(Scale(150)), (Size{6, 6}));
}

TEST(ImageBaseTest, ASectionWithoutARectangleIsTheWholePicture)
{
    const auto image = Instance<ImageBase>::make();
    SkinRect rect{1, 1, 1, 1};
    long width = -1;
    EXPECT_EQ(image->get_rect(&rect), S_OK);
    EXPECT_TRUE(morvane::toRect(rect).isEmpty());
    const auto picture = pictureOf(threeColours());
    image->setPicture(picture.get());
    image->get_rect(&rect);
    EXPECT_EQ(morvane::toRect(rect), (Rect{0, 0, 12, 4})) << "controls take an image's size from it";
    SkinRect part{4, 1, 8, 3};
    image->put_rect(&part);
    image->get_rect(&rect);
    EXPECT_EQ(morvane::toRect(rect), (Rect{4, 1, 8, 3}));
    SkinRect odd{5, 0, 2, 4};
    image->put_ImageObj(nullptr);
    image->put_rect(&odd);
    image->GetWidth(&width);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(image->get_rect(nullptr), E_POINTER);
    EXPECT_EQ(image->put_rect(nullptr), E_POINTER);
}

TEST(ImageBaseTest, OfATargetBeyondAllLimitsThatWhichShowsIsDrawn)
{
    const auto image = Instance<ImageBase>::make();
    const auto picture = pictureOf(threeColours());
    image->setPicture(picture.get());
    const Rect large{-150000, -10, 150000, 1000000}; // each third a colour
    const auto renderImage = RenderImage::make(threeColours(), VEX_PT_PNG);
    for (const auto& [left, colour] : {std::pair{-140000, kRed}, {0, kGreen}, {140000, kBlue}}) {
        Surface target({4, 4});
        const Canvas canvas{target.view(), {left, 500000}, {left, 500000, left + 4, 500004}};
        EXPECT_TRUE(image->draw(canvas, large, 0, {}));
        EXPECT_EQ(target.view().at(1, 1), colour) << left;
        Surface second({4, 4});
        const Canvas other{second.view(), {left, 500000}, {left, 500000, left + 4, 500004}};
        EXPECT_TRUE(renderImage->draw(other, large, {0, 0, 12, 4}, true, 0));
        EXPECT_EQ(second.view().at(1, 1), colour) << left;
    }
}

TEST(ImageBaseTest, DrawingFollowsEveryChange)
{
    const auto image = Instance<ImageBase>::make();
    const auto picture = pictureOf(threeColours());
    image->put_ImageObj(picture.get());
    Surface target({4, 4});
    const auto drawn = [&] {
        fillRect(wholeOf(target), {0, 0, 4, 4}, kWhite);
        image->draw(wholeOf(target), {0, 0, 4, 4}, 0, {});
        return target.view().at(2, 2);
    };
    SkinRect middle{4, 0, 8, 4};
    image->put_rect(&middle);
    EXPECT_EQ(drawn(), kGreen);
    image->put_nOpacity(128);
    EXPECT_EQ(drawn(), packPixel(255, 127, 255, 127));
    image->put_nOpacity(255);
    image->put_clrColorize(0x000000FF);
    EXPECT_EQ(drawn(), kRed);
    image->put_clrColorize(0xFFFFFFFF);
    image->put_clrTrans(0x0000FF00);
    image->put_bTransparent(VARIANT_TRUE);
    EXPECT_EQ(drawn(), kWhite);
    image->put_bTransparent(VARIANT_FALSE);
    picture->loadFromMemory(encodePng(surfaceOf({12, 4}, kBlue).view()));
    EXPECT_EQ(drawn(), kBlue);
    image->put_ImageObj(nullptr);
    EXPECT_EQ(drawn(), kWhite);
}

TEST(ImageBaseTest, TheRecordCarriesEverySetting)
{
    const auto image = Instance<ImageBase>::make();
    SkinImageSection record{};
    record.rect = {1, 2, 30, 40};
    record.nTopHeight = 3;
    record.nBottomHeight = 4;
    record.nLeftWidth = 5;
    record.nRightWidth = 6;
    record.bTopEdgeStretch = 1;
    record.bClientAreaStretch = -1;
    record.clrTrans = 0x00112233;
    record.bTrans = 1;
    record.nOpacity = 77;
    record.clrColorize = 0x00445566;
    ASSERT_EQ(image->SetImageSection(&record), S_OK);
    SkinImageSection back{};
    ASSERT_EQ(image->GetImageSection(&back), S_OK);
    SysFreeString(back.szImageName);
    EXPECT_EQ(back.rect.bottom, 40);
    EXPECT_EQ(back.nTopHeight, 3);
    EXPECT_EQ(back.nRightWidth, 6);
    EXPECT_EQ(back.bTopEdgeStretch, VARIANT_TRUE);
    EXPECT_EQ(back.bLeftEdgeStretch, VARIANT_FALSE);
    EXPECT_EQ(back.bClientAreaStretch, VARIANT_TRUE);
    EXPECT_EQ(back.clrTrans, 0x00112233u);
    EXPECT_EQ(back.nOpacity, 77);
    EXPECT_EQ(back.clrColorize, 0x00445566u);
    SkinRect border{};
    image->get_rcBorder(&border);
    EXPECT_EQ(border.left, 5);
    EXPECT_EQ(border.bottom, 4);
    EXPECT_EQ(image->SetImageSection(nullptr), E_POINTER);
    EXPECT_EQ(image->GetImageSection(nullptr), E_POINTER);
}

TEST(ImageBaseTest, SectionsLookAsTheyDid)
{
    Surface face({16, 16});
    fillGradient(wholeOf(face), {0, 0, 16, 16}, kWhite, 0xFFD0D8E4, 90);
    fillRect(wholeOf(face), {7, 7, 9, 9}, 0xFF2563D9);
    drawRing(wholeOf(face), {0, 0, 16, 16}, 0, 1, 0xFF8A93A0);
    const auto image = Instance<ImageBase>::make();
    const auto picture = pictureOf(face);
    image->setPicture(picture.get());
    image->put_rcBorder({4, 4, 4, 4});
    Surface sheet({180, 60});
    fillRect(wholeOf(sheet), sheet.view().bounds(), 0xFFF3F4F7);
    image->draw(wholeOf(sheet), {4, 4, 56, 40}, 0, Scale(100));
    image->draw(wholeOf(sheet), {60, 4, 112, 40}, 0, Scale(200));
    image->draw(wholeOf(sheet), {4, 44, 9, 49}, 0, Scale(100));
    image->StretchAll(VARIANT_FALSE);
    image->draw(wholeOf(sheet), {116, 4, 176, 40}, 0, Scale(100));
    expectLooksLike(L"sections", sheet.view());
}

TEST(ImageBaseTest, RenderImagesAreMadeOncePerIndexAndFollowThePicture)
{
    const auto image = Instance<ImageBase>::make();
    ComPtr<IVexRenderImage> none;
    EXPECT_EQ(image->GetVexRenderImage(0, 0, none.put()), S_FALSE) << "without a picture";
    const auto picture = pictureOf(threeColours());
    image->setPicture(picture.get());
    image->setImageCount(3);
    ComPtr<IVexRenderImage> second;
    ComPtr<IVexRenderImage> again;
    ASSERT_EQ(image->GetVexRenderImage(0, 1, second.put()), S_OK);
    image->GetVexRenderImage(0, 1, again.put());
    EXPECT_EQ(second, again);
    hyper bits = 0;
    second->GetBits(&bits);
    EXPECT_EQ(reinterpret_cast<const Pixel*>(bits)[0], kGreen);
    hyper borrowed = 0;
    EXPECT_EQ(image->GetRenderImage(0, 1, &borrowed), S_OK);
    EXPECT_EQ(borrowed, reinterpret_cast<hyper>(second.get()));
    for (const short odd : {short{-1}, short{3}, short{32767}}) {
        EXPECT_EQ(image->GetRenderImage(0, odd, &borrowed), S_FALSE);
        EXPECT_EQ(borrowed, 0);
    }
    long left = -1;
    EXPECT_EQ(image->ReleaseRenderImage(VEX_RENDERENGINE_GDI, 1, &left), S_OK);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(image->GetAllRenderImages(0), S_OK);
    image->ReleaseRenderImage(VEX_RENDERENGINE_GDI, -5, &left);
    EXPECT_EQ(left, 3);
    picture->loadFromMemory(encodePng(surfaceOf({12, 4}, kRed).view()));
    again.reset();
    image->GetVexRenderImage(0, 1, again.put());
    again->GetBits(&bits);
    EXPECT_EQ(reinterpret_cast<const Pixel*>(bits)[0], kRed) << "a changed picture has other images";
    picture->loadFromMemory(encodePng(threeColours().view()));
    SkinRect last{8, 0, 12, 4};
    image->put_rect(&last);
    image->setImageCount(1);
    again.reset();
    image->GetVexRenderImage(0, 0, again.put());
    again->GetBits(&bits);
    EXPECT_EQ(reinterpret_cast<const Pixel*>(bits)[0], kBlue) << "a changed section has other images";
}

TEST(ImageBaseTest, EdgesAreTiledOrStretchedEachByItsOwnFlag)
{
    // Borders of 2; the top edge is half red, half blue, everything else green.
    Surface pixels = surfaceOf({8, 8}, kGreen);
    fillRect(wholeOf(pixels), {2, 0, 4, 2}, kRed);
    fillRect(wholeOf(pixels), {4, 0, 6, 2}, kBlue);
    const auto picture = pictureOf(pixels);
    const auto image = Instance<ImageBase>::make();
    image->setPicture(picture.get());
    image->put_rcBorder({2, 2, 2, 2});
    image->StretchAll(VARIANT_FALSE);
    Surface target({20, 20});
    image->draw(wholeOf(target), {0, 0, 20, 20}, 0, {});
    for (int x = 2; x < 18; ++x)
        EXPECT_EQ(target.view().at(x, 0), (x - 2) % 4 < 2 ? kRed : kBlue) << x;
    EXPECT_EQ(target.view().at(0, 0), kGreen) << "a corner is never stretched";
    image->put_bTopEdgeStretch(VARIANT_TRUE);
    image->draw(wholeOf(target), {0, 0, 20, 20}, 0, {});
    EXPECT_EQ(target.view().at(3, 0), kRed);
    EXPECT_EQ(target.view().at(6, 0), kRed) << "one half of the edge";
    EXPECT_EQ(target.view().at(16, 0), kBlue);
    EXPECT_EQ(target.view().at(10, 19), kGreen);
}

TEST(FontTest, ADescriptionComesBackAndItsSystemFontHasItsHeightAtTheScale)
{
    const auto font = Instance<Font>::make();
    const Bstr face(L"DejaVu Sans");
    VEXLOGFONT record{};
    record.lfHeight = -20;
    record.lfWeight = 700;
    record.lfItalic = 1;
    record.lfFaceName = face.get();
    const unsigned before = font->generation();
    EXPECT_EQ(font->SetLogFont(record), S_OK);
    EXPECT_NE(font->generation(), before);
    VEXLOGFONT back{};
    ASSERT_EQ(font->GetLogFont(&back), S_OK);
    EXPECT_EQ(morvane::viewOf(back.lfFaceName), face.view());
    EXPECT_NE(back.lfFaceName, record.lfFaceName) << "a copy of the caller's own";
    SysFreeString(back.lfFaceName);
    EXPECT_EQ(back.lfHeight, -20);
    EXPECT_EQ(back.lfWeight, 700);
    EXPECT_NE(back.lfItalic, 0);
    for (const int percent : {100, 200}) {
        setCurrentScale(Scale(percent));
        hyper handle = 0;
        ASSERT_EQ(font->GetHFont(&handle), S_OK);
        LOGFONTW system{};
        ASSERT_NE(GetObjectW(reinterpret_cast<HFONT>(handle), sizeof system, &system), 0);
        EXPECT_EQ(system.lfHeight, -20 * percent / 100);
        EXPECT_EQ(system.lfWeight, 700);
    }
    setCurrentScale(Scale());
    const Bstr tooLong(std::wstring(200, L'x'));
    record.lfFaceName = tooLong.get();
    font->SetLogFont(record);
    font->GetLogFont(&back);
    EXPECT_EQ(morvane::viewOf(back.lfFaceName).size(), LF_FACESIZE - 1u) << "cut to what the system keeps";
    SysFreeString(back.lfFaceName);
    EXPECT_EQ(font->GetLogFont(nullptr), E_POINTER);
}

TEST(CursorTest, StandardCursorsAreTheSystemsAndUnknownOnesTheArrow)
{
    const auto cursor = Instance<Cursor>::make();
    hyper handle = 0;
    constexpr long kHand = 32649;
    cursor->setStandard(kHand);
    cursor->GetCursorHandle(&handle);
    EXPECT_EQ(reinterpret_cast<HCURSOR>(handle), LoadCursorW(nullptr, MAKEINTRESOURCEW(kHand)));
    const HCURSOR arrow = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    for (const long odd : {-1L, 1L, 70000L, 0L}) {
        cursor->setStandard(odd);
        cursor->GetCursorHandle(&handle);
        EXPECT_EQ(reinterpret_cast<HCURSOR>(handle), arrow) << odd;
    }
    EXPECT_EQ(cursor->GetCursorHandle(nullptr), E_POINTER);
}

TEST(CursorTest, APictureReplacesTheArrowAndTakingItAwayBringsTheArrowBack)
{
    const auto cursor = Instance<Cursor>::make();
    VARIANT_BOOL isStandard = VARIANT_FALSE;
    hyper arrow = 0;
    hyper drawn = 0;
    cursor->GetCursorHandle(&arrow);
    const auto picture = pictureOf(surfaceOf({16, 16}, kRed));
    cursor->put_ImageObj(picture.get());
    cursor->IsStandardCursor(&isStandard);
    cursor->GetCursorHandle(&drawn);
    EXPECT_EQ(isStandard, VARIANT_FALSE);
    EXPECT_NE(drawn, 0);
    EXPECT_NE(drawn, arrow);
    cursor->put_ImageObj(nullptr);
    cursor->GetCursorHandle(&drawn);
    EXPECT_EQ(drawn, arrow);
}

/// What the system knows of a cursor.
struct CursorInfo {
    Surface pixels;
    Point hotSpot;
};

CursorInfo infoOf(IVexCursor* cursor)
{
    hyper handle = 0;
    EXPECT_EQ(cursor->GetCursorHandle(&handle), S_OK);
    ICONINFO info{};
    EXPECT_TRUE(GetIconInfo(reinterpret_cast<HICON>(handle), &info));
    const morvane::UniqueBitmap mask(info.hbmMask);
    const morvane::UniqueBitmap colour(info.hbmColor);
    return {surfaceOfIcon(reinterpret_cast<HICON>(handle)),
            {static_cast<int>(info.xHotspot), static_cast<int>(info.yHotspot)}};
}

TEST(CursorTest, ACursorFileShowsItsBestPictureAndPointsWhereThatDoes)
{
    const auto picture = Instance<Picture>::make();
    ASSERT_TRUE(picture->loadFromMemory(cursorFile({{32, 4, 0xFF00FF00}, {32, 32, 0xFFFF0000}}, {{1, 30}, {7, 9}})));
    const auto cursor = Instance<Cursor>::make();
    cursor->put_ImageObj(picture.get());
    const CursorInfo info = infoOf(cursor.get());
    EXPECT_EQ(info.hotSpot, (Point{7, 9}));
    ASSERT_EQ(info.pixels.size(), (Size{32, 32}));
    EXPECT_EQ(info.pixels.view().at(5, 5), kRed);
    setCurrentScale(Scale(200));
    const CursorInfo large = infoOf(cursor.get());
    EXPECT_EQ(large.hotSpot, (Point{14, 18}));
    EXPECT_EQ(large.pixels.size(), (Size{64, 64}));
    setCurrentScale(Scale());
}

TEST(CursorTest, HalfTransparentPixelsKeepTheirColourAndBlankOnesShowNothing)
{
    constexpr Pixel kHalfWhite = packPixel(128, 128, 128, 128);
    const auto picture = pictureOf(surfaceOf({16, 16}, kHalfWhite));
    const auto cursor = Instance<Cursor>::make();
    cursor->put_ImageObj(picture.get());
    EXPECT_EQ(infoOf(cursor.get()).pixels.view().at(3, 3), kHalfWhite);
    picture->loadFromMemory(encodePng(surfaceOf({16, 16}, 0).view()));
    EXPECT_EQ(infoOf(cursor.get()).pixels.view().at(3, 3), 0u) << "it follows its picture";
}

TEST(ImageListTest, AStripIsCutIntoImages)
{
    const auto list = Instance<ImageList>::make();
    list->setStrip(threeColours(), 4, 0x0000FF00);
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->image(0).at(1, 1), kRed);
    EXPECT_EQ(list->image(1).at(1, 1), 0u); // the key colour
    EXPECT_TRUE(list->image(3).isEmpty());
    EXPECT_TRUE(list->image(-1).isEmpty());
    EXPECT_FALSE(list->setStrip(threeColours(), 13, 0xFFFFFFFF)) << "wider than the strip";
    EXPECT_FALSE(list->setStrip({}, 0, ImageList::kKeyOfFirstPixel));
    EXPECT_EQ(list->count(), 3) << "it keeps what it has";
    EXPECT_TRUE(list->setStrip(threeColours(), 5, ImageList::kKeyOfFirstPixel));
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->imageSize(), (Size{5, 4}));
    EXPECT_EQ(list->image(0).at(0, 0), 0u) << "the first pixel's colour";
    EXPECT_EQ(list->image(0).at(4, 0), kGreen);
    EXPECT_TRUE(list->setStrip(threeColours(), 0, 0xFFFFFFFF));
    EXPECT_EQ(list->imageSize(), (Size{12, 4})) << "one image of all";
}

TEST(ImageListTest, AnEmptyListIsNotComplete)
{
    VARIANT_BOOL complete = VARIANT_TRUE;
    EXPECT_EQ(Instance<ImageList>::make()->IsValidateData(&complete), S_OK);
    EXPECT_EQ(complete, VARIANT_FALSE);
}

TEST(ColourKeyTest, SystemColoursAreKeysToo)
{
    constexpr OLE_COLOR kButtonFace = 0x80000000u | COLOR_BTNFACE;
    const Pixel face = opaquePixel(GetSysColor(COLOR_BTNFACE));
    ASSERT_NE(face, opaquePixel(COLOR_BTNFACE));
    const auto picture = pictureOf(surfaceOf({4, 4}, face));
    const auto image = Instance<ImageBase>::make();
    image->setPicture(picture.get());
    image->put_clrTrans(kButtonFace);
    image->put_bTransparent(VARIANT_TRUE);
    Surface target = surfaceOf({4, 4}, kRed);
    image->draw(wholeOf(target), {0, 0, 4, 4}, 0, {});
    EXPECT_EQ(target.view().at(1, 1), kRed);
    const auto drawn = RenderImage::make(surfaceOf({4, 4}, face), VEX_PT_BMP);
    drawn->draw(wholeOf(target), {0, 0, 4, 4}, {0, 0, 4, 4}, true, kButtonFace);
    EXPECT_EQ(target.view().at(1, 1), kRed);
}

class EveryResource : public testing::TestWithParam<VexObjType> {};

TEST_P(EveryResource, HasANameATypeAndCounts)
{
    ComPtr<IVexObj> object;
    ASSERT_EQ(createResource(GetParam(), L"Name1", nullptr, object.put()), S_OK);
    Bstr name;
    object->GetName(name.put());
    EXPECT_EQ(name.view(), L"Name1");
    object->SetName(nullptr);
    object->GetName(name.put());
    EXPECT_TRUE(name.empty());
    VexObjType type = VEXOBJTYPE_LAST;
    object->GetType(&type);
    EXPECT_EQ(type, GetParam());
    long count = 0;
    object->AddInterRef(&count);
    object->AddInterRef(&count);
    EXPECT_EQ(count, 2);
    object->ReleaseInterRef(&count);
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(object.as<ISkinShareBase>());
    EXPECT_TRUE(object.as<IDispatch>());
    EXPECT_EQ(object->GetName(nullptr), E_POINTER);
}

TEST_P(EveryResource, ReadsBackWhatItWrote)
{
    ComPtr<IVexObj> object;
    createResource(GetParam(), L"", nullptr, object.put());
    const auto share = object.as<ISkinShareBase>();
    const auto node = ConfigNode::create(L"entry");
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(share->AccessConfig2(node->handle(), nullptr, VARIANT_FALSE, VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(share->AccessConfig2(node->handle(), Bstr(L"absent").get(), VARIANT_TRUE, VARIANT_FALSE, &done), S_FALSE);
    EXPECT_EQ(share->AccessConfig2(12345678, nullptr, VARIANT_TRUE, VARIANT_FALSE, &done), E_INVALIDARG);
    const auto again = ConfigNode::create(L"entry");
    ComPtr<IVexObj> second;
    createResource(GetParam(), L"", nullptr, second.put());
    const auto secondShare = second.as<ISkinShareBase>();
    secondShare->AccessConfig2(node->handle(), nullptr, VARIANT_TRUE, VARIANT_FALSE, &done);
    secondShare->ExportConfig(again->handle(), &done);
    ASSERT_EQ(node->attributes().size(), again->attributes().size());
    for (const ConfigNode::Attribute& attribute : node->attributes())
        EXPECT_EQ(*again->attribute(attribute.name), attribute.value);
}

INSTANTIATE_TEST_SUITE_P(AllTypes, EveryResource,
                         testing::Values(VEXOBJTYPE_IMAGE, VEXOBJTYPE_IMAGEBASE, VEXOBJTYPE_TEXTSTYLE,
                                         VEXOBJTYPE_FONTEX, VEXOBJTYPE_CURSOR, VEXOBJTYPE_GRADIENTCLR,
                                         VEXOBJTYPE_IMAGELIST));

TEST(ResourceFactoryTest, UnknownTypesAreRefused)
{
    ComPtr<IVexObj> object;
    EXPECT_EQ(createResource(VEXOBJTYPE_PLUGIN, L"x", nullptr, object.put()), E_INVALIDARG);
    EXPECT_EQ(createResource(VEXOBJTYPE_IMAGE, L"x", nullptr, nullptr), E_POINTER);
}

} // namespace
} // namespace ambrel
