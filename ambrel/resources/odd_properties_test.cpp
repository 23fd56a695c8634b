// Saving what no skin can hold: characters that XML does not know, names that are none.
#include "ambrel/resources/save_fixture.h"
#include "host/typed_properties.h"

namespace ambrel::testing {
namespace {

TEST_F(SkinSaveTest, ATextWithCharactersThatNoSkinCanHoldIsSavedWithoutThem)
{
    ASSERT_EQ(open(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip"), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    const Bstr odd(std::wstring_view(L"a\0b\x1\x1F\tc\r\n\xD83D \xFFFE\x7F", 13));
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = odd.get();
    ASSERT_EQ(property(*button.get(), L"Text", L"Text")->SetVariant(value), S_OK);
    ASSERT_EQ(save(folder / "odd.zip"), S_OK) << errorText();
    Reader reader(runtime, folder / "odd.zip");
    ASSERT_EQ(reader.status, S_OK) << errorText();
    EXPECT_EQ(text(*reader.add(L"Button1").get(), L"Text", L"Text"), L"ab\tc\r\n\xFFFD \x7F");
}

TEST_F(SkinSaveTest, APropertyWhoseNameIsNoneInASkinIsLeftOut)
{
    ASSERT_EQ(open(fs::path(L"" MORVANE_SKINS_DIR) / "2080.zip"), S_OK) << errorText();
    const auto button = addButton(L"Button1");
    ComPtr<ICtrlPluginProp> group;
    ASSERT_EQ(button->CreateGroupProp(nullptr, Bstr(L"Mine").get(), VARIANT_TRUE, group.put()), S_OK);
    for (const auto* name : {L"a b=\"<", L"", L"Good"}) {
        ComPtr<IVexPropBase> made;
        ASSERT_EQ(button->CreateProp(group.get(), _PROPTYPE_LONG, Bstr(name).get(), nullptr, VARIANT_FALSE, nullptr,
                                     made.put()),
                  S_OK);
        static_cast<morvane::LongProperty&>(*made.get()).SetValue(5);
    }
    ASSERT_EQ(save(folder / "names.zip"), S_OK) << errorText();
    const auto saved = skin::loadSkin(folder / "names.zip");
    ASSERT_TRUE(saved) << saved.error().text();
    EXPECT_EQ(saved->valueOf(saved->objects.at(0), "Mine", "Good")->value, "5");
}

} // namespace
} // namespace ambrel::testing
