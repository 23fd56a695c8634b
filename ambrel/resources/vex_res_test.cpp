// Members of the resource object that belong to no skin's story of their own.
#include "ambrel/resources/save_fixture.h"

namespace ambrel::testing {
namespace {

class VexResTest : public SkinSaveTest {
protected:
    HRESULT choose(const wchar_t* name)
    {
        VARIANT_BOOL changed = VARIANT_FALSE;
        const HRESULT status = resources->SetCurColorCase(Bstr(name).get(), &changed);
        EXPECT_EQ(changed != VARIANT_FALSE, status == S_OK);
        return status;
    }

    std::wstring chosen()
    {
        Bstr name;
        EXPECT_EQ(resources->GetCurColorCaseName(name.put()), S_OK);
        return name.str();
    }

    /// Of the next colour case of the walk, empty at its end.
    std::wstring next(bool first = false)
    {
        VEX_COLORCASE record{};
        if ((first ? resources->GetFirstColorCase(&record) : resources->GetNextColorCase(&record)) != S_OK)
            return {};
        SysFreeString(record.strText);
        SysFreeString(record.strFile);
        std::wstring name(morvane::viewOf(record.strName));
        SysFreeString(record.strName);
        return name;
    }

    void addCases(std::initializer_list<const wchar_t*> names)
    {
        for (const wchar_t* each : names) {
            VEX_COLORCASE record{};
            ASSERT_EQ(resources->AddColorCase(Bstr(each).get(), &record), S_OK);
        }
    }

    bool removeCase(const wchar_t* name)
    {
        VARIANT_BOOL removed = VARIANT_FALSE;
        resources->RemoveColorCase(Bstr(name).get(), &removed);
        return removed != VARIANT_FALSE;
    }

    ComPtr<IAmbrel> openWindow()
    {
        ComPtr<IDispatch> made;
        resources->CreateAmbrel(Bstr(L"Other").get(), 0, made.put());
        return made.as<IAmbrel>();
    }
};

TEST_F(VexResTest, AColourCaseThatIsRemovedIsNotTheChosenOneAnyMore)
{
    addCases({L"Red", L"Green"});
    ASSERT_EQ(choose(L"Green"), S_OK);
    EXPECT_EQ(choose(L"Green"), S_FALSE);
    EXPECT_EQ(choose(L"Blue"), S_FALSE) << "there is none";
    EXPECT_EQ(chosen(), L"Green");
    ASSERT_TRUE(removeCase(L"Green"));
    EXPECT_EQ(chosen(), L"");
    addCases({L"Green"});
    EXPECT_EQ(chosen(), L"") << "another one of the name";
    ASSERT_EQ(choose(L"Green"), S_OK);
    EXPECT_EQ(choose(L""), S_OK) << "none";
    EXPECT_EQ(choose(L""), S_FALSE);
    EXPECT_EQ(chosen(), L"");
}

TEST_F(VexResTest, AColourCaseHasAName)
{
    const Bstr name(L"Named by its record");
    VEX_COLORCASE record{};
    EXPECT_EQ(resources->AddColorCase(nullptr, &record), E_INVALIDARG);
    record.strName = name.get();
    EXPECT_EQ(resources->AddColorCase(nullptr, &record), S_OK);
    EXPECT_EQ(resources->AddColorCase(name.get(), nullptr), E_POINTER);
    EXPECT_EQ(next(true), L"Named by its record");
    EXPECT_EQ(next(), L"");
}

TEST_F(VexResTest, AWalkOverColourCasesMissesNoneWhenOneThatWasSeenIsRemoved)
{
    addCases({L"A", L"B", L"C", L"D"});
    EXPECT_EQ(next(true), L"A");
    EXPECT_EQ(next(), L"B");
    ASSERT_TRUE(removeCase(L"A"));
    EXPECT_EQ(next(), L"C");
    ASSERT_TRUE(removeCase(L"D"));
    EXPECT_EQ(next(), L"");
}

TEST_F(VexResTest, AFontOfAWindowThatIsGoneIsNotThatOfTheNextOneAtItsPlace)
{
    const Bstr name(L"Heading");
    const Bstr face(L"Tahoma");
    VEXLOGFONT description{};
    description.lfHeight = -20;
    description.lfFaceName = face.get();
    hyper former = 0;
    hyper font = 0;
    ComPtr<IAmbrel> other = openWindow();
    other->GetRenderDevice(&former);
    ASSERT_EQ(resources->GetFontByLogFont(former, name.get(), &description, &font), S_OK);
    bool isAtItsPlace = false;
    for (int i = 0; i < 50 && !isAtItsPlace; ++i) {
        hyper handle = 0;
        hyper device = 0;
        other->GetWindowHandle(&handle);
        DestroyWindow(reinterpret_cast<HWND>(handle));
        other.reset();
        other = openWindow();
        other->GetRenderDevice(&device);
        isAtItsPlace = device == former;
        if (isAtItsPlace) {
            EXPECT_EQ(resources->GetFontByName(device, name.get(), &font), S_FALSE);
            EXPECT_EQ(font, 0);
        }
    }
    hyper handle = 0;
    other->GetWindowHandle(&handle);
    DestroyWindow(reinterpret_cast<HWND>(handle));
    if (!isAtItsPlace)
        GTEST_SKIP() << "no window got the former one's place";
}

TEST_F(VexResTest, ResourcesWithoutANameGetOneEach)
{
    ComPtr<IVexObj> first;
    ComPtr<IVexObj> second;
    ASSERT_EQ(resources->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, nullptr, VARIANT_FALSE, first.put()), S_OK);
    ASSERT_EQ(resources->AddResObject(VEXOBJTYPE_TEXTSTYLE, nullptr, nullptr, VARIANT_FALSE, second.put()), S_OK);
    EXPECT_NE(first, second);
    Bstr name;
    second->GetName(name.put());
    EXPECT_EQ(resource<IVexObj>(VEXOBJTYPE_TEXTSTYLE, name.str().c_str()), second);
}

TEST_F(VexResTest, AnEntryIsFoundByTheIdThatTheSkinGivesIt)
{
    skin::Skin skin;
    skin::TextStyle style;
    style.id = "Guid0A44CA5AACF649CCABDBA9A9B685B7C2";
    skin.resources.textStyles = {style};
    ASSERT_TRUE(skin::saveSkin(skin, folder / "one.zip"));
    ASSERT_EQ(open(folder / "one.zip"), S_OK) << errorText();
    for (const wchar_t* id : {L"Guid0A44CA5AACF649CCABDBA9A9B685B7C2", L"{0a44ca5a-acf6-49cc-abdb-a9a9b685b7c2}"}) {
        ComPtr<IVexObj> found;
        EXPECT_EQ(resources->GetResObjectByGuid(VEXOBJTYPE_TEXTSTYLE, Bstr(id).get(), found.put()), S_OK) << id;
        EXPECT_TRUE(found);
    }
    ComPtr<IVexObj> none;
    EXPECT_EQ(resources->GetResObjectByGuid(VEXOBJTYPE_TEXTSTYLE, Bstr(L"0A44").get(), none.put()), S_FALSE);
    EXPECT_EQ(resources->GetResObjectByGuid(VEXOBJTYPE_FONTEX, Bstr(L"Guid0A44CA5AACF649CCABDBA9A9B685B7C2").get(),
                                            none.put()),
              S_FALSE);
}

TEST_F(VexResTest, WhatIsNoPackageIsRefusedAndTheOpenSkinStays)
{
    const fs::path packaged = fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip";
    ASSERT_EQ(open(packaged), S_OK) << errorText();
    const std::wstring stream = packaged.wstring() + L":stream";
    const std::wstring endless(40000, L'a');
    for (const wchar_t* path : {L"", L"NUL", L"CON", L"\\\\.\\NUL", L"\\\\.\\pipe\\none", L"C:\\no such file", L"a?b*c",
                                L"..\\..\\..", stream.c_str(), endless.c_str()}) {
        VARIANT_BOOL opened = VARIANT_TRUE;
        EXPECT_TRUE(FAILED(resources->ChangeSkn(Bstr(path).get(), &opened))) << std::wstring(path).substr(0, 40);
        EXPECT_EQ(opened, VARIANT_FALSE);
        ComPtr<IVexObj> made;
        resources->AddResObject(VEXOBJTYPE_IMAGE, nullptr, nullptr, VARIANT_FALSE, made.put());
        EXPECT_EQ(made.as<IVexPicture>()->ImportFile(Bstr(path).get(), &opened), S_OK);
        EXPECT_EQ(opened, VARIANT_FALSE);
    }
    Bstr now;
    EXPECT_EQ(resources->GetSkinFilePath(now.put()), S_OK);
    EXPECT_EQ(now.view(), packaged.wstring());
    for (const wchar_t* path : {L"NUL", L"\\\\.\\NUL", L"C:\\no such folder\\skin.zip", L"a?b*c", endless.c_str()})
        EXPECT_TRUE(FAILED(save(path))) << std::wstring(path).substr(0, 40);
}

TEST_F(VexResTest, WithoutAParentObjectsOfAllWindowsAreSearchedAsDeepAsIsAsked)
{
    const auto outer = addButton(L"outer");
    const auto inner = SkinSaveTest::addButton(*resources.get(), *root.get(), L"inner");
    inner->SetParent(outer.get());
    const auto found = [&](const wchar_t* name, VARIANT_BOOL deep) {
        ComPtr<IVexObj> object;
        resources->GetResObject(VEXOBJTYPE_PLUGIN, Bstr(name).get(), nullptr, deep, object.put());
        return object != nullptr;
    };
    EXPECT_TRUE(found(L"outer", VARIANT_FALSE));
    EXPECT_FALSE(found(L"inner", VARIANT_FALSE));
    EXPECT_TRUE(found(L"inner", VARIANT_TRUE));
    ComPtr<IVexObj> anywhere;
    EXPECT_EQ(resources->GetGlobalResObj(VEXOBJTYPE_PLUGIN, Bstr(L"inner").get(), anywhere.put()), S_OK);
}

TEST_F(VexResTest, AShownWindowHasBothStyles)
{
    hyper made = 0;
    ASSERT_EQ(resources->ShowAmbrelWnd(Bstr(L"Shown").get(), WS_HSCROLL, WS_VSCROLL, ShowWindowFlags(SW_HIDE), &made),
              S_OK);
    const auto handle = reinterpret_cast<HWND>(made);
    const LONG_PTR style = GetWindowLongPtrW(handle, GWL_STYLE);
    EXPECT_TRUE(style & WS_HSCROLL);
    EXPECT_TRUE(style & WS_VSCROLL);
    DestroyWindow(handle);
}

} // namespace
} // namespace ambrel::testing
