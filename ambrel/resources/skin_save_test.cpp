// Saving the running skin with what an application changed.
#include "ambrel/resources/save_fixture.h"

#include <fstream>
#include <vector>

#include <wincrypt.h>

namespace ambrel::testing {
namespace {

TEST_F(SkinSaveTest, EveryDefaultPackageThatNobodyChangedIsSavedAsItIs)
{
    int seen = 0;
    for (const auto& entry : fs::directory_iterator(L"" MORVANE_SKINS_DIR)) {
        if (entry.path().extension() != ".zip")
            continue;
        ++seen;
        ASSERT_EQ(open(entry.path()), S_OK) << entry.path() << errorText();
        const auto opened = skin::loadSkin(entry.path());
        ASSERT_TRUE(opened);
        const auto button = addButton(nullptr); // follows the first button of the skin, when it has one
        for (const fs::path& target : {folder / "saved.zip", folder / "saved" / ""}) {
            ASSERT_EQ(save(target), S_OK) << entry.path() << errorText();
            const auto saved = skin::loadSkin(target);
            ASSERT_TRUE(saved) << saved.error().text();
            EXPECT_TRUE(saved.value() == opened.value()) << entry.path();
        }
        fs::remove_all(folder / "saved");
        VARIANT_BOOL removed = VARIANT_FALSE;
        resources->DeleteResObj(button.get(), &removed);
    }
    EXPECT_GE(seen, 10);
}

TEST_F(SkinSaveTest, WhatAnApplicationChangedIsThereAgainWhenTheSavedSkinIsOpened)
{
    const fs::path packaged = fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip";
    ASSERT_EQ(open(packaged), S_OK) << errorText();
    const auto button = addButton(L"Button1"); // as the package calls its own
    const auto other = addButton(L"Other");
    const auto third = addButton(L"Untouched");
    ASSERT_TRUE(button && other && third);
    const std::wstring untouched = text(*third.get(), L"Text", L"Text");
    const wchar_t* const words = L"Caf\u00E9 <&> \"\u4F60\"";
    ASSERT_EQ(setText(*button.get(), L"Text", L"Text", words), S_OK);
    ASSERT_EQ(setText(*other.get(), L"AutoResize", L"MaxTextWidth", L"77"), S_OK);
    ASSERT_EQ(setText(*other.get(), L"Text", L"Text", L"Another"), S_OK);
    const auto style = styleOf(*button.get(), L"Normal");
    ASSERT_TRUE(style);
    style->put_clrText(0x00112233);
    ComPtr<IVexObj> added;
    ASSERT_EQ(
        resources->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, Bstr(L"Added style").get(), VARIANT_FALSE, added.put()),
        S_OK);
    added.as<IVexTextStyle>()->put_nLeftOffset(7);
    ASSERT_EQ(property(*other.get(), L"Hot", L"TextStyle")->SetDispatch(added.get()), S_OK);
    other->SetOpacity(99);
    const std::wstring maximum = text(*button.get(), L"AutoResize", L"MaxTextWidth");
    ASSERT_NE(maximum, L"77");

    fs::create_directories(folder / "changed");
    for (const fs::path& target : {folder / "changed.zip", folder / "changed"}) {
        ASSERT_EQ(save(target), S_OK) << errorText();
        EXPECT_EQ(skin::loadSkin(target)->objects.size(), 3u) << "one for each that differs";
        Reader reader(runtime, target);
        ASSERT_EQ(reader.status, S_OK) << errorText();
        const auto again = reader.add(L"Button1");
        const auto otherAgain = reader.add(L"Other");
        EXPECT_EQ(text(*again.get(), L"Text", L"Text"), words);
        EXPECT_EQ(text(*again.get(), L"AutoResize", L"MaxTextWidth"), maximum);
        EXPECT_EQ(text(*otherAgain.get(), L"Text", L"Text"), L"Another");
        EXPECT_EQ(text(*reader.add(L"Untouched").get(), L"Text", L"Text"), untouched) << "not the first button's";
        EXPECT_EQ(text(*otherAgain.get(), L"AutoResize", L"MaxTextWidth"), L"77");
        OLE_COLOR colour = 0;
        styleOf(*again.get(), L"Normal")->get_clrText(&colour);
        EXPECT_EQ(colour, 0x00112233u);
        EXPECT_EQ(text(*otherAgain.get(), L"Hot", L"TextStyle"), L"Added style");
        short offset = 0;
        styleOf(*otherAgain.get(), L"Hot")->get_nLeftOffset(&offset);
        EXPECT_EQ(offset, 7);
        short opacity = 0;
        otherAgain->GetOpacity(&opacity);
        EXPECT_EQ(opacity, 99);
    }
}

TEST_F(SkinSaveTest, LooksOfPackagesAndPicturesAreSavedWithTheirFiles)
{
    // No skin is open: what is saved is made of the window.
    const auto button = addButton(L"OK");
    VARIANT_BOOL saved = VARIANT_TRUE;
    EXPECT_EQ(resources->Save(nullptr, &saved), E_INVALIDARG);
    ASSERT_EQ(runtime.AmbrelApplySkin()(resources.get(), button.get(), module, 2080), S_OK);
    ASSERT_EQ(save(folder / "made.zip"), S_OK) << errorText();
    const auto made = skin::loadSkin(folder / "made.zip");
    ASSERT_TRUE(made) << made.error().text();
    EXPECT_EQ(made->layout, skin::Layout::Full);
    const auto packaged = skin::loadSkin(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip");
    ASSERT_EQ(made->resources.pictures.size(), packaged->resources.pictures.size());
    EXPECT_EQ(made->resources.pictures[0].files.size(), packaged->resources.pictures[0].files.size())
        << "the larger forms, too";

    Reader reader(runtime, folder / "made.zip");
    ASSERT_EQ(reader.status, S_OK) << errorText();
    const auto again = reader.add(L"OK");
    for (const auto* state : {L"Normal", L"Hot", L"Press", L"Disabled"})
        EXPECT_EQ(text(*again.get(), state, L"Image"), text(*button.get(), state, L"Image")) << state;
}

TEST_F(SkinSaveTest, TextsFollowTheLanguageAndTheFileForTranslatorsIsReadBack)
{
    const fs::path home = folder / "texts";
    fs::create_directories(home);
    skin::Skin skin = skin::loadSkin(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip").value();
    skin.languages = {{VEX_GERMAN,
                       {{"close", "Schlie\xC3\x9F"
                                  "en"},
                        {"unused", ""}}}};
    ASSERT_TRUE(skin::saveSkin(skin, home));
    ASSERT_EQ(open(home), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    const auto words = property(*button.get(), L"Text", L"Text");
    const auto bound = reinterpret_cast<hyper>(words.get());
    const Bstr key(L"close");
    ASSERT_EQ(resources->AddStrProp(key.get(), Bstr(L"Close").get(), bound), S_OK);
    ASSERT_EQ(resources->AddStrProp(Bstr(L"save").get(), Bstr(L"Save").get(), 12345), S_OK) << "never followed";
    EXPECT_EQ(resources->AddStrProp(nullptr, key.get(), bound), E_INVALIDARG);

    ASSERT_EQ(resources->ChangeLanguage(VEX_GERMAN), S_OK);
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"Schlie\u00DFen");
    EXPECT_EQ(resources->ChangeLanguage(VEX_GERMAN), S_FALSE);
    EXPECT_EQ(resources->ChangeLanguage(VEX_LANGUAGE_LAST), E_INVALIDARG);
    ASSERT_EQ(resources->ChangeLanguage(VEX_ENGLISH), S_OK);
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"Close") << "its own text where the skin has none";
    Bstr found;
    EXPECT_EQ(resources->GetString(VEX_GERMAN, key.get(), found.put()), S_OK);
    EXPECT_EQ(found.view(), L"Schlie\u00DFen");
    EXPECT_EQ(resources->GetString(VEX_FRENCH, key.get(), found.put()), S_FALSE);
    EXPECT_EQ(found.view(), L"");
    VEX_LANGUAGE languages[1] = {VEX_JAPANESE};
    long count = 0;
    EXPECT_EQ(resources->GetCurAllLang(languages, 1, &count), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(languages[0], VEX_ENGLISH);

    EXPECT_EQ(resources->GenerateLanguageXML(nullptr), E_INVALIDARG);
    EXPECT_TRUE(FAILED(resources->GenerateLanguageXML(Bstr((folder / "none" / "x.xml").wstring()).get())));
    ASSERT_EQ(resources->GenerateLanguageXML(Bstr((home / "languages.xml").wstring()).get()), S_OK);
    const auto translated = skin::loadSkin(home);
    ASSERT_TRUE(translated) << translated.error().text();
    ASSERT_EQ(translated->languages.size(), 2u);
    EXPECT_EQ(*translated->languages[0].find("unused"), "");
    EXPECT_EQ(*translated->languages[1].find("save"), "Save");

    EXPECT_EQ(resources->RemoveStrProp(key.get(), bound), S_OK);
    EXPECT_EQ(resources->RemoveStrProp(key.get(), bound), S_FALSE);
    ASSERT_EQ(resources->ChangeLanguage(VEX_GERMAN), S_OK);
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"Close");
}

struct Seen {
    std::vector<IVexObj*> objects;
    static void STDMETHODCALLTYPE see(IVexObj* object, hyper context)
    {
        reinterpret_cast<Seen*>(context)->objects.push_back(object);
    }
};

TEST_F(SkinSaveTest, AResourceWithTwoNamesIsOneResourceAndGoesWithBoth)
{
    skin::Skin skin;
    skin::TextStyle style;
    style.id = "TextStyle1";
    style.name = "Plain";
    skin.resources.textStyles = {style};
    ASSERT_TRUE(skin::saveSkin(skin, folder / "one.zip"));
    ASSERT_EQ(open(folder / "one.zip"), S_OK) << errorText();
    const auto seen = [&](VexObjType type) {
        Seen result;
        EXPECT_EQ(resources->EnumObjectsToCallback(type, reinterpret_cast<hyper>(&Seen::see),
                                                   reinterpret_cast<hyper>(&result)),
                  S_OK);
        return result.objects;
    };
    EXPECT_EQ(seen(VEXOBJTYPE_TEXTSTYLE).size(), 1u);
    ComPtr<IVexObj> first;
    ASSERT_EQ(resources->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, Bstr(L"First").get(), VARIANT_TRUE, first.put()),
              S_OK);
    EXPECT_EQ(seen(VEXOBJTYPE_TEXTSTYLE).front(), first.get());

    const auto plain = resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"Plain");
    EXPECT_EQ(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"TextStyle1"), plain);
    VARIANT_BOOL removed = VARIANT_FALSE;
    EXPECT_EQ(resources->RemoveResObject(plain.get(), &removed), S_OK);
    EXPECT_FALSE(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"Plain"));
    EXPECT_FALSE(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"TextStyle1"));
    EXPECT_EQ(resources->RemoveResObject(plain.get(), &removed), S_FALSE);

    EXPECT_EQ(resource<IAmbrel>(VEXOBJTYPE_AMBREL, L"Main"), root) << "windows are found like other objects";
    EXPECT_EQ(seen(VEXOBJTYPE_AMBREL).size(), 1u);
}

TEST_F(SkinSaveTest, ResourcesOfAFormerSkinAreNotFoundInTheNextOne)
{
    for (const char* name : {"Old", "New"}) {
        skin::Skin skin;
        skin::TextStyle style;
        style.id = name;
        skin.resources.textStyles = {style};
        ASSERT_TRUE(skin::saveSkin(skin, folder / "style.zip"));
        ASSERT_EQ(open(folder / "style.zip"), S_OK) << errorText();
    }
    EXPECT_TRUE(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"New"));
    EXPECT_FALSE(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, L"Old"));
}

TEST_F(SkinSaveTest, AControlHasTheCursorThatTheSkinGivesIt)
{
    skin::Skin skin = skin::loadSkin(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip").value();
    skin::Cursor hand;
    hand.id = "Hand";
    hand.standardCursor = 32649;
    skin.resources.cursors.push_back(hand);
    skin.objects[0].settings.customCursor = "Hand";
    ASSERT_TRUE(skin::saveSkin(skin, folder / "hand.zip"));
    ASSERT_EQ(open(folder / "hand.zip"), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    const auto number = [&] {
        ComPtr<IVexCursor> cursor;
        long id = 0;
        button->GetCursorPtr(cursor.put());
        return cursor && SUCCEEDED(cursor->GetStandardCursorID(&id)) ? id : 0;
    };
    EXPECT_EQ(number(), 32649);
    skin.objects[0].settings.customCursor = "";
    skin.objects[0].settings.cursor = 32514;
    ASSERT_TRUE(skin::saveSkin(skin, folder / "wait.zip"));
    ASSERT_EQ(open(folder / "wait.zip"), S_OK) << errorText();
    EXPECT_EQ(number(), 32514);
    skin.objects[0].settings.cursor = 32512;
    ASSERT_TRUE(skin::saveSkin(skin, folder / "arrow.zip"));
    ASSERT_EQ(open(folder / "arrow.zip"), S_OK) << errorText();
    EXPECT_EQ(number(), 0);
}

/// The files that docs/writing-a-skin.md has one type: a line with a file's name, then a block with what is in it.
void typeInThePage(const fs::path& home)
{
    std::ifstream page(AMBREL_SKIN_PAGE);
    std::string name;
    std::string content;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        const bool isFence = line.starts_with("```");
        if (isFence && isInside && name.ends_with(".xml"))
            std::ofstream(home / name, std::ios::binary) << content;
        if (isFence && isInside && name.ends_with(".bmp")) {
            DWORD size = 0;
            std::vector<BYTE> bytes(content.size());
            size = static_cast<DWORD>(bytes.size());
            ASSERT_TRUE(
                CryptStringToBinaryA(content.c_str(), 0, CRYPT_STRING_BASE64, bytes.data(), &size, nullptr, nullptr));
            std::ofstream(home / name, std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(size));
        }
        if (isFence) {
            isInside = !isInside && !name.empty();
            name = isInside ? name : std::string();
            content.clear();
        } else if (isInside) {
            content += line + '\n';
        } else if (line.size() > 2 && line.front() == '`' && line.find('`', 1) == line.size() - 1) {
            name = line.substr(1, line.size() - 2);
        } else if (!line.empty()) {
            name.clear();
        }
    }
}

TEST_F(SkinSaveTest, TheExampleOfThePageAboutSkinsIsAButtonThatShowsAsItSays)
{
    typeInThePage(folder);
    ASSERT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 5);
    ASSERT_EQ(open(folder), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"Press me");
    ComPtr<IVexRect> rect;
    SkinRect place{};
    button->GetRect(rect.put());
    rect->GetRectStruct(&place);
    EXPECT_EQ(place.left, 16);
    EXPECT_EQ(place.top, 16);
    EXPECT_EQ(place.right - place.left, 120);
    EXPECT_EQ(place.bottom - place.top, 28);
    std::vector<std::uint32_t> pixels(300 * 200);
    ASSERT_EQ(runtime.AmbrelRenderWindow()(root.get(), 300, 200, pixels.data()), S_OK);
    const auto at = [&](int x, int y) { return pixels[static_cast<std::size_t>(y * 300 + x)] & 0xFFFFFFu; };
    EXPECT_EQ(at(16, 16), 0x2563D9u);
    EXPECT_EQ(at(135, 43), 0x2563D9u);
    EXPECT_EQ(at(16, 30), 0x2563D9u) << "the border";
    EXPECT_EQ(at(17, 17), 0xFFFFFFu) << "and no more of it";
    EXPECT_NE(at(15, 16), 0x2563D9u);
    long dark = 0;
    for (int y = 18; y < 42; ++y) {
        for (int x = 18; x < 134; ++x)
            dark += (at(x, y) & 0xFFu) < 0x80u;
    }
    EXPECT_GT(dark, 30) << "the letters";
}

TEST_F(SkinSaveTest, AnOpenFolderIsTakenUpHoweverEditorsWrite)
{
    const fs::path home = folder / "edited";
    fs::create_directories(home);
    skin::Skin skin = skin::loadSkin(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip").value();
    ASSERT_TRUE(skin::saveSkin(skin, home));
    ASSERT_EQ(open(home), S_OK);
    const auto button = addButton(L"Button1");
    const auto shows = [&](const wchar_t* wanted) {
        const DWORD start = GetTickCount();
        while (text(*button.get(), L"Text", L"Text") != wanted && GetTickCount() - start < 8000) {
            MSG message;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
        return text(*button.get(), L"Text", L"Text");
    };
    const auto packageWith = [&](const char* words) {
        setPlain(skin, "Text", "Text", words);
        return skin::writeSkin(skin).value();
    };
    const auto write = [](const fs::path& path, const skin::Bytes& bytes, std::size_t count) {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(count));
    };

    // A fresh file that takes the old one's place, all files of the package one after the other.
    const auto renamed = packageWith("renamed");
    for (const auto& [name, bytes] : renamed.all()) {
        write(home / "edit.tmp", bytes, bytes.size());
        fs::rename(home / "edit.tmp", home / name);
    }
    EXPECT_EQ(shows(L"renamed"), L"renamed");

    // Half a file first: the running skin stays, and the other half is heard of.
    const auto halved = packageWith("in two halves");
    const skin::Bytes& prop = *halved.find("prop.xml");
    const skin::Bytes& objects = *halved.find("objects.xml");
    write(home / "prop.xml", prop, prop.size() / 2);
    EXPECT_EQ(shows(L"never"), L"renamed");
    write(home / "prop.xml", prop, prop.size());
    write(home / "objects.xml", objects, objects.size());
    EXPECT_EQ(shows(L"in two halves"), L"in two halves");
}

TEST_F(SkinSaveTest, APictureThatWasImportedIsSavedAndOneWithoutAFileIsAnError)
{
    typeInThePage(folder); // for face.bmp
    const fs::path packaged = fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip";
    ASSERT_EQ(open(packaged), S_OK);
    const auto opened = skin::loadSkin(packaged);
    const skin::ImageSection& first = opened->resources.imageSections.at(0);
    const auto section =
        resource<IVexImageBase>(VEXOBJTYPE_IMAGEBASE, std::wstring(first.id.begin(), first.id.end()).c_str());
    ASSERT_TRUE(section);
    ComPtr<IVexObj> added;
    ASSERT_EQ(resources->AddResObject(VEXOBJTYPE_IMAGE, nullptr, Bstr(L"Face").get(), VARIANT_FALSE, added.put()),
              S_OK);
    section->put_ImageObj(added.as<IVexPicture>().get());
    EXPECT_TRUE(FAILED(save(folder / "saved.zip")));
    EXPECT_NE(errorText().find("(error 400)"), std::string::npos) << "there is no picture in it yet";
    EXPECT_FALSE(fs::exists(folder / "saved.zip"));

    VARIANT_BOOL imported = VARIANT_FALSE;
    added.as<IVexPicture>()->ImportFile(Bstr((folder / "face.bmp").wstring()).get(), &imported);
    ASSERT_NE(imported, VARIANT_FALSE);
    SkinRect whole{0, 0, 4, 4};
    section->put_rect(&whole);
    section->put_rcBorder({1, 1, 1, 1});
    ASSERT_EQ(save(folder / "saved.zip"), S_OK) << errorText();
    const auto saved = skin::loadSkin(folder / "saved.zip");
    ASSERT_TRUE(saved) << saved.error().text();
    const skin::Picture* const picture = saved->picture(saved->imageSection(first.id)->picture);
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->files.at(0).info.kind, skin::PictureKind::Bmp);
    EXPECT_EQ(saved->resources.pictures.size(), opened->resources.pictures.size() + 1);
}

TEST_F(SkinSaveTest, SavingIntoTheOpenFolderIsNoNewSkinAndKeepsWhatChanged)
{
    const fs::path home = folder / "open";
    fs::create_directories(home);
    ASSERT_TRUE(skin::saveSkin(skin::loadSkin(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip").value(), home));
    ASSERT_EQ(open(home), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    ASSERT_EQ(setText(*button.get(), L"Text", L"Text", L"Changed"), S_OK);
    VARIANT_BOOL saved = VARIANT_FALSE;
    ASSERT_EQ(resources->Save(nullptr, &saved), S_OK) << errorText();
    const auto first = skin::loadSkin(home);
    ASSERT_TRUE(first);
    ASSERT_EQ(setText(*button.get(), L"Text", L"Text", L"Changed again"), S_OK);
    ASSERT_EQ(open(home), S_OK);
    EXPECT_EQ(text(*button.get(), L"Text", L"Text"), L"Changed again") << "the skin says what it said before";
    ASSERT_EQ(save(home), S_OK);
    EXPECT_EQ(skin::loadSkin(home)->valueOf(skin::loadSkin(home)->objects[0], "Text", "Text")->value, "Changed again");
}

TEST_F(SkinSaveTest, AFileThatCannotBeWrittenOrReadBackIsAnErrorAndTheOldOneStays)
{
    ASSERT_EQ(open(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip"), S_OK);
    EXPECT_TRUE(FAILED(save(folder / "no such folder" / "skin.zip")));
    EXPECT_NE(errorText().find("(error 112)"), std::string::npos);

    const auto button = addButton(L"Button1");
    ASSERT_EQ(save(folder / "skin.zip"), S_OK);
    const auto whole = skin::loadSkin(folder / "skin.zip");
    styleOf(*button.get(), L"Normal")->put_nHAlign(7); // kept by the object, no alignment for a skin
    EXPECT_TRUE(FAILED(save(folder / "skin.zip")));
    const std::string error = errorText();
    EXPECT_NE(error.find("HAlign"), std::string::npos) << error;
    EXPECT_TRUE(skin::loadSkin(folder / "skin.zip").value() == whole.value());
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

} // namespace
} // namespace ambrel::testing
