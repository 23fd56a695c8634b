// A saved skin says what the running objects say.
#include "ambrel/render/picture_decoder.h"
#include "ambrel/resources/save_fixture.h"
#include "host/typed_properties.h"

#include <fstream>

namespace ambrel::testing {
namespace {

class SkinSaveChangesTest : public SkinSaveTest {
protected:
    const fs::path packaged = fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip";

    fs::path write(const char* name, Size size, Pixel colour)
    {
        Surface pixels(size);
        for (int y = 0; y < size.height; ++y)
            std::fill_n(pixels.view().row(y), size.width, colour);
        const auto bytes = encodePng(pixels.view());
        std::ofstream(folder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return folder / name;
    }

    template <class Object>
    ComPtr<Object> add(VexObjType type, const wchar_t* name)
    {
        ComPtr<IVexObj> made;
        resources->AddResObject(type, nullptr, Bstr(name).get(), VARIANT_FALSE, made.put());
        return made ? made.as<Object>() : nullptr;
    }

    static bool importFile(IVexPicture& picture, const fs::path& file)
    {
        VARIANT_BOOL imported = VARIANT_FALSE;
        picture.ImportFile(Bstr(file.wstring()).get(), &imported);
        return imported != VARIANT_FALSE;
    }

    static void pumpFor(DWORD milliseconds)
    {
        const DWORD start = GetTickCount();
        while (GetTickCount() - start < milliseconds) {
            MSG message;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
    }

    bool remove(IVexObj* object)
    {
        VARIANT_BOOL removed = VARIANT_FALSE;
        resources->DeleteResObj(object, &removed);
        return removed != VARIANT_FALSE;
    }

    skin::Skin saved()
    {
        EXPECT_EQ(save(folder / "saved.zip"), S_OK) << errorText();
        auto read = skin::loadSkin(folder / "saved.zip");
        EXPECT_TRUE(read) << read.error().text();
        return std::move(read.value());
    }
};

TEST_F(SkinSaveChangesTest, AnImportedPictureIsSavedWithItsLargerFormsAndItsName)
{
    const fs::path small = write("mark.png", {40, 40}, 0xFFFF0000);
    write("mark@150.png", {60, 60}, 0xFF00FF00);
    write("mark@200.png", {80, 80}, 0xFF0000FF);
    ASSERT_EQ(open(packaged), S_OK);
    const auto opened = skin::loadSkin(packaged);
    const skin::Picture& first = opened->resources.pictures.at(0);
    const auto known =
        resource<IVexPicture>(VEXOBJTYPE_IMAGE, std::wstring(first.caption.begin(), first.caption.end()).c_str());
    const auto added = add<IVexPicture>(VEXOBJTYPE_IMAGE, L"A mark");
    ASSERT_TRUE(known && added);
    ASSERT_TRUE(add<IVexPicture>(VEXOBJTYPE_IMAGE, L"Empty so far"));
    ASSERT_TRUE(importFile(*added.get(), small));
    const skin::Skin once = saved();
    ASSERT_EQ(once.resources.pictures.size(), opened->resources.pictures.size() + 1);
    const skin::Picture& mark = once.resources.pictures.back();
    EXPECT_EQ(mark.name, "A mark");
    ASSERT_EQ(mark.files.size(), 3u);
    EXPECT_EQ(mark.files[1].scale, 150);
    EXPECT_EQ(mark.files[2].info.width, 80);
    EXPECT_EQ(once.resources.pictures.at(0).files, first.files) << "untouched";

    write("mark@150.png", {60, 60}, 0xFF808080);
    fs::remove(folder / "mark@200.png");
    ASSERT_TRUE(importFile(*added.get(), small));
    const skin::Skin twice = saved();
    const skin::Picture& again = twice.resources.pictures.back();
    ASSERT_EQ(again.files.size(), 2u);
    EXPECT_FALSE(std::ranges::equal(twice.bytesOf(again.files[1]), once.bytesOf(mark.files[1])))
        << "only the larger form differs";
    Reader reader(runtime, folder / "saved.zip");
    ComPtr<IVexObj> found;
    EXPECT_EQ(
        reader.resources->GetResObject(VEXOBJTYPE_IMAGE, Bstr(L"A mark").get(), nullptr, VARIANT_FALSE, found.put()),
        S_OK);
}

TEST_F(SkinSaveChangesTest, APictureOfAKindThatPackagesDoNotHoldIsSavedAsTheSamePicture)
{
    std::string file(18, '\0'); // a Truevision picture: its header, then blue, green, red, alpha
    file[2] = 2;
    file[12] = 2;
    file[14] = 1;
    file[16] = 32;
    file[17] = 8;
    file += "\xFF\x01\x02\xFF"
            "\x03\x04\xFE\xFF";
    std::ofstream(folder / "two.tga", std::ios::binary) << file;
    ASSERT_EQ(open(packaged), S_OK);
    const auto added = add<IVexPicture>(VEXOBJTYPE_IMAGE, L"two.tga");
    ASSERT_TRUE(importFile(*added.get(), folder / "two.tga"));
    const skin::Skin skin = saved();
    const skin::Picture& picture = skin.resources.pictures.back();
    const auto decoded = decodePicture(skin.bytesOf(picture.files.at(0)));
    ASSERT_TRUE(decoded);
    const ConstPixelView pixels = decoded->frames.front().view();
    ASSERT_EQ(pixels.width, 2);
    EXPECT_EQ(pixels.at(0, 0), 0xFF0201FFu);
    EXPECT_EQ(pixels.at(1, 0), 0xFFFE0403u);
}

TEST_F(SkinSaveChangesTest, NamesThatAreOneFileInAFolderAreRefusedThere)
{
    skin::Skin skin = skin::loadSkin(packaged).value();
    skin.files.add("\xC3\x84.txt", {1});
    skin.files.add("\xC3\xA4.txt", {2});
    ASSERT_TRUE(skin::saveSkin(skin, folder / "both.zip"));
    ASSERT_EQ(open(folder / "both.zip"), S_OK) << errorText();
    EXPECT_TRUE(FAILED(save(folder / "both" / "")));
    EXPECT_NE(errorText().find("(error 106)"), std::string::npos) << errorText();
    EXPECT_FALSE(fs::exists(folder / "both" / "objects.xml"));
}

TEST_F(SkinSaveChangesTest, AFolderThatIsReplacedByAnotherOneIsTakenUp)
{
    const fs::path home = folder / "home";
    skin::Skin skin = skin::loadSkin(packaged).value();
    ASSERT_TRUE(skin::saveSkin(skin, home / ""));
    ASSERT_EQ(open(home), S_OK);
    const auto button = addButton(L"Button1");
    setPlain(skin, "Text", "Text", "from the next folder");
    ASSERT_TRUE(skin::saveSkin(skin, folder / "next" / ""));
    fs::rename(home, folder / "former");
    pumpFor(700);
    EXPECT_TRUE(resource<IVexObj>(VEXOBJTYPE_IMAGEBASE, L"ImageSection1")) << "the skin stays while there is none";
    fs::rename(folder / "next", home);
    for (int i = 0; i < 40 && text(*button.get(), L"Text", L"Text") != L"from the next folder"; ++i)
        pumpFor(100);
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"from the next folder");
}

TEST_F(SkinSaveChangesTest, ARemovedResourceLeavesTheSavedSkinUnlessSomethingShowsIt)
{
    skin::Skin skin = skin::loadSkin(packaged).value();
    const skin::Skin before = skin;
    skin.resources.textStyles.emplace_back().id = "StyleUnused";
    skin.resources.fonts.emplace_back().id = "FontOfIt";
    skin.resources.textStyles.back().font = "FontOfIt";
    skin.resources.pictures.push_back({{"PicUnused", "unused.png", {}}, {}, false, {}});
    std::ifstream in(write("unused.png", {4, 4}, 0xFFFF0000), std::ios::binary);
    const skin::Bytes bytes(std::istreambuf_iterator<char>(in), {});
    ASSERT_TRUE(skin::replacePicture(skin, skin.resources.pictures.back(), {{100, bytes}}));
    const fs::path home = folder / "home";
    ASSERT_TRUE(skin::saveSkin(skin, home / ""));
    ASSERT_EQ(open(home), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    const auto shown = styleOf(*button.get(), L"Normal");
    ASSERT_TRUE(remove(resource<IVexObj>(VEXOBJTYPE_FONTEX, L"FontOfIt").get()));
    EXPECT_TRUE(saved() == skin) << "a style refers to it";
    ASSERT_TRUE(remove(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"StyleUnused").get()));
    ASSERT_TRUE(remove(resource<IVexObj>(VEXOBJTYPE_IMAGE, L"PicUnused").get()));
    ASSERT_TRUE(remove(shown.get()));
    EXPECT_TRUE(saved() == before) << "all three are gone, the button's style stays";
    VARIANT_BOOL done = VARIANT_FALSE;
    ASSERT_EQ(resources->Save(nullptr, &done), S_OK) << errorText();
    EXPECT_TRUE(skin::loadSkin(home).value() == before);
    EXPECT_FALSE(fs::exists(home / "unused.png"));
}

TEST_F(SkinSaveChangesTest, TabOrderCanvasAndCursorOfAControlAreSaved)
{
    skin::Skin skin = skin::loadSkin(packaged).value();
    skin.objects[0].settings.tabOrder = 3;
    skin.resources.cursors.emplace_back().id = "Hand";
    skin.resources.cursors.back().standardCursor = 32649;
    skin.objects[0].settings.customCursor = "Hand";
    ASSERT_TRUE(skin::saveSkin(skin, folder / "skin.zip"));
    ASSERT_EQ(open(folder / "skin.zip"), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    EXPECT_TRUE(saved() == skin);
    VARIANT_BOOL changed = VARIANT_FALSE;
    ASSERT_EQ(button->SetHaveCanvas(VARIANT_TRUE, VEX_HCF_ALWAYS, &changed), S_OK);
    ASSERT_EQ(button->SetCursorPtr(nullptr), S_OK);
    skin.objects[0].settings.haveCanvas = 1;
    skin.objects[0].settings.canvasFlags = VEX_HCF_ALWAYS;
    skin.objects[0].settings.customCursor = "";
    skin.objects[0].settings.cursor = 32512;
    EXPECT_TRUE(saved() == skin);
    Reader reader(runtime, folder / "saved.zip");
    const auto again = reader.add(L"Button1");
    VEX_HAVECANVASFLAGES flags = VEX_HCF_NONE;
    EXPECT_EQ(again->IsHaveCanvas(&flags, &changed), S_OK);
    EXPECT_EQ(flags, VEX_HCF_ALWAYS);
    EXPECT_EQ(changed, VARIANT_TRUE);
}

TEST_F(SkinSaveChangesTest, AFillThatWasTurnedMoreThanOnceIsSavedAsItLooks)
{
    ASSERT_EQ(open(packaged), S_OK);
    const auto fill = add<IFillColor>(VEXOBJTYPE_GRADIENTCLR, L"Turned");
    ASSERT_TRUE(fill);
    fill->put_nGradientIrotation(1170);
    EXPECT_EQ(std::ranges::count(saved().resources.gradients, 90, &skin::Gradient::rotation), 1);
}

TEST_F(SkinSaveChangesTest, TheNumberOfImagesInASectionIsSavedAndDividesWhatIsShown)
{
    ASSERT_EQ(open(packaged), S_OK);
    const auto button = addButton(L"Button1");
    const auto found = property(*button.get(), L"Normal", L"Image");
    auto* const image = static_cast<morvane::ImageSectionProperty*>(found.get());
    short whole = 0;
    long count = 0;
    image->GetImageWidth(&whole);
    ASSERT_EQ(image->GetImageCount(&count), S_OK);
    EXPECT_EQ(count, 1);
    ASSERT_EQ(image->SetImageCount(2), S_OK);
    short width = 0;
    short height = 0;
    image->GetImageWidth(&width);
    image->GetImageHeight(&height);
    EXPECT_TRUE(width == whole / 2 || height < whole) << "one of two";
    const skin::Skin skin = saved();
    const auto& sections = skin.resources.imageSections;
    EXPECT_EQ(std::ranges::count(sections, 2, &skin::ImageSection::imageCount), 1);
    Reader reader(runtime, folder / "saved.zip");
    const auto again = property(*reader.add(L"Button1").get(), L"Normal", L"Image");
    static_cast<morvane::ImageSectionProperty*>(again.get())->GetImageCount(&count);
    EXPECT_EQ(count, 2);
}

} // namespace
} // namespace ambrel::testing
