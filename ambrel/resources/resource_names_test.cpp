// Names: under which resources are found, and how long.
#include "ambrel/resources/save_fixture.h"

namespace ambrel::testing {
namespace {

class ResourceNamesTest : public SkinSaveTest {
protected:
    ComPtr<IVexObj> style(const wchar_t* name) { return resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, name); }

    ComPtr<IVexObj> add(VexObjType type, const wchar_t* name)
    {
        ComPtr<IVexObj> made;
        resources->AddResObject(type, nullptr, Bstr(name).get(), VARIANT_FALSE, made.put());
        return made;
    }

    static HRESULT rename(IVexObj& object, const wchar_t* name) { return object.SetName(Bstr(name).get()); }

    static std::wstring nameOf(IVexObj& object)
    {
        Bstr name;
        object.GetName(name.put());
        return name.str();
    }

    /// A text style with an id and a name, one with an id only.
    void openTwoStyles()
    {
        skin::Skin skin;
        skin.resources.textStyles.resize(2);
        skin.resources.textStyles[0].id = "TextStyle1";
        skin.resources.textStyles[0].name = "Plain";
        skin.resources.textStyles[1].id = "Other";
        ASSERT_TRUE(skin::saveSkin(skin, folder / "styles.zip"));
        ASSERT_EQ(open(folder / "styles.zip"), S_OK) << errorText();
    }
};

TEST_F(ResourceNamesTest, ARenamedResourceIsFoundByItsNewNameOnly)
{
    const auto heading = add(VEXOBJTYPE_TEXTSTYLE, L"Heading");
    ASSERT_TRUE(heading);
    EXPECT_EQ(rename(*heading.get(), L"Title"), S_OK);
    EXPECT_EQ(style(L"Title"), heading);
    EXPECT_FALSE(style(L"Heading"));
    EXPECT_NE(add(VEXOBJTYPE_TEXTSTYLE, L"Heading"), heading) << "the old name is free";
    VARIANT_BOOL removed = VARIANT_FALSE;
    EXPECT_EQ(resources->RemoveResObject(heading.get(), &removed), S_OK);
    EXPECT_FALSE(style(L"Title"));
    EXPECT_EQ(rename(*heading.get(), L"Heading"), S_OK) << "one that is not kept may be called as it likes";
    EXPECT_NE(style(L"Heading"), heading);
}

TEST_F(ResourceNamesTest, ANameThatIsTakenIsRefusedAndNothingChanges)
{
    openTwoStyles();
    const auto plain = style(L"Plain");
    const auto added = add(VEXOBJTYPE_TEXTSTYLE, L"Added");
    ASSERT_TRUE(plain && added);
    for (const auto& [object, name] : {std::pair(plain, L"Added"), std::pair(added, L"Plain"),
                                       std::pair(added, L"TextStyle1"), std::pair(plain, L"Other")}) {
        const std::wstring before = nameOf(*object.get());
        EXPECT_TRUE(FAILED(rename(*object.get(), name))) << name;
        EXPECT_NE(errorText().find("another resource of this kind has the name (error 310)"), std::string::npos);
        EXPECT_EQ(nameOf(*object.get()), before);
        EXPECT_EQ(style(before.c_str()), object);
    }
    VARIANT_BOOL made = VARIANT_TRUE;
    EXPECT_TRUE(FAILED(added.as<IVexTextStyle>()->CreateTextStyle(Bstr(L"Plain").get(), 0, &made)));
    EXPECT_EQ(made, VARIANT_FALSE);
    EXPECT_TRUE(SUCCEEDED(rename(*add(VEXOBJTYPE_FONTEX, L"Font").get(), L"Plain"))) << "each kind has its names";
    EXPECT_TRUE(SUCCEEDED(rename(*plain.get(), L"Plain")));
    EXPECT_TRUE(SUCCEEDED(rename(*plain.get(), L"TextStyle1"))) << "its own id";
    EXPECT_EQ(style(L"TextStyle1"), plain);
    EXPECT_FALSE(style(L"Plain"));
}

TEST_F(ResourceNamesTest, TheSavedSkinHasTheNewNames)
{
    openTwoStyles();
    ASSERT_EQ(rename(*style(L"Plain").get(), L"Fancy"), S_OK);
    ASSERT_EQ(rename(*style(L"Other").get(), L"Another"), S_OK);
    ASSERT_EQ(save(folder / "saved.zip"), S_OK) << errorText();
    Reader reader(runtime, folder / "saved.zip");
    ASSERT_EQ(reader.status, S_OK) << errorText();
    const auto has = [&](const wchar_t* name) {
        ComPtr<IVexObj> found;
        return reader.resources->GetResObject(VEXOBJTYPE_TEXTSTYLE, Bstr(name).get(), nullptr, VARIANT_FALSE,
                                              found.put()) == S_OK;
    };
    EXPECT_TRUE(has(L"Fancy"));
    EXPECT_TRUE(has(L"Another"));
    EXPECT_FALSE(has(L"Plain"));
    // The names of one skin do not stand in the way of those of the next one.
    ASSERT_EQ(open(folder / "styles.zip"), S_OK) << errorText();
    EXPECT_TRUE(style(L"Plain"));
    EXPECT_FALSE(style(L"Fancy"));
}

TEST_F(ResourceNamesTest, AResourceMayOutliveWhatItBelongedTo)
{
    ComPtr<IVexRes> own;
    ASSERT_EQ(runtime.AmbrelCreateRes()(own.put()), S_OK);
    ComPtr<IVexObj> made;
    ASSERT_EQ(own->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, Bstr(L"Left").get(), VARIANT_FALSE, made.put()), S_OK);
    own.reset();
    EXPECT_EQ(rename(*made.get(), L"Alone"), S_OK);
    EXPECT_EQ(nameOf(*made.get()), L"Alone");
    ComPtr<IVexRes> none;
    made->GetVexRes(none.put());
    EXPECT_FALSE(none);
}

TEST_F(ResourceNamesTest, AnImageKeepsItsNameUntilEachUseWasGivenBack)
{
    hyper device = 0;
    ASSERT_EQ(root->GetRenderDevice(&device), S_OK);
    const Bstr name(L"shared");
    const auto icon = reinterpret_cast<hyper>(LoadIconW(nullptr, IDI_ERROR));
    ComPtr<IVexRenderImage> first;
    ComPtr<IVexRenderImage> second;
    ASSERT_EQ(resources->CreateImageByHandle(device, name.get(), icon, VEX_PT_ICO, first.put()), S_OK);
    ASSERT_EQ(resources->CreateImageByHandle(device, name.get(), icon, VEX_PT_ICO, second.put()), S_OK);
    ComPtr<IVexRenderImage> fetched;
    ASSERT_EQ(resources->GetImageByName(device, name.get(), fetched.put()), S_OK);
    EXPECT_EQ(fetched, second) << "the latest one of the name";
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_OK);
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_OK);
    fetched.reset();
    ASSERT_EQ(resources->GetImageByName(device, name.get(), fetched.put()), S_OK) << "one use is left";
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_OK);
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_OK);
    fetched.reset();
    EXPECT_EQ(resources->GetImageByName(device, name.get(), fetched.put()), S_FALSE);
    EXPECT_FALSE(fetched);
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_FALSE) << "one release too many";
    EXPECT_EQ(done, VARIANT_FALSE);
    ASSERT_EQ(resources->CreateImageByHandle(device, name.get(), icon, VEX_PT_ICO, first.put()), S_OK);
    resources->GetImageByName(device, name.get(), fetched.put());
    EXPECT_EQ(resources->DestroyImage(first.get(), &done), S_OK) << "however often it was fetched";
    EXPECT_EQ(resources->ReleaseImageByName(device, name.get(), &done), S_FALSE);
}

} // namespace
} // namespace ambrel::testing
