#include "ambrel/properties/properties_fixture.h"
#include "ambrel/properties/property_factory.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::iidOf;

TEST_F(PropertiesTest, ABooleanKeepsTheBitsItWasGiven)
{
    const auto property = make<morvane::BoolProperty>(_PROPTYPE_BOOL);
    VARIANT_BOOL value = VARIANT_TRUE;
    EXPECT_EQ(property->GetValue(&value), S_OK);
    EXPECT_EQ(value, 0);
    for (const VARIANT_BOOL bits : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_BOOL{0x7FFF}, VARIANT_FALSE}) {
        property->SetValue(bits);
        property->GetValue(&value);
        EXPECT_EQ(value, bits);
        VARIANT variant;
        property->GetVariant(&variant);
        EXPECT_EQ(variant.vt, VT_BOOL);
        EXPECT_EQ(variant.boolVal, bits);
    }
    EXPECT_EQ(property->GetValue(nullptr), E_POINTER);
}

TEST_F(PropertiesTest, AnEmptyTextIsAStringAndNotNull)
{
    const auto property = make<morvane::StringProperty>(_PROPTYPE_STRING);
    for (const wchar_t* text : {L"PushButton", L"", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(property->SetValue(text), S_OK);
        Bstr value;
        EXPECT_EQ(property->GetValue(value.put()), S_OK);
        ASSERT_NE(value.get(), nullptr);
        EXPECT_EQ(value.view(), text ? text : L"");
    }
}

TEST_F(PropertiesTest, OnlyADifferentValueIsAnnouncedToTheCallbackAndThenToTheOwner)
{
    Callback callback;
    int calls = 0;
    callback.action = [&](IVexControlBase* told) {
        EXPECT_EQ(told, owner.get());
        EXPECT_EQ(notified, calls++) << "the callback comes first";
    };
    {
        const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"x", nullptr, &callback);
        property->SetValue(0);
        EXPECT_EQ(calls, 0);
        property->SetValue(7);
        property->SetVariant(variantOf(7));
        property->SetPrivateValue(variantOf(8));
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(notified, 1);
        EXPECT_EQ(lastNotified, property.get());
        property->SetVariant(variantOf(9));
        EXPECT_EQ(notified, 2);
        property->DoCallbackFunc();
        EXPECT_EQ(calls, 3);
        EXPECT_EQ(notified, 2);
    }
    table.detach();
    EXPECT_EQ(callback.references, 0);
}

TEST_F(PropertiesTest, AChangeMayTakeAwayTheOwnerThePropertyAndTheWholeTree)
{
    Callback callback;
    const auto home = group(L"Group");
    auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"x", home.get(), &callback);
    morvane::LongProperty* bare = property.get();
    callback.action = [&](IVexControlBase*) {
        property.reset();
        home->RemoveAllPropBase(); // the last reference outside the call
        table.detach();
    };
    EXPECT_EQ(bare->SetValue(1), S_OK);
    EXPECT_EQ(notified, 0) << "the owner is no longer the property's";
}

TEST_F(PropertiesTest, APropertySetAgainWhileItIsAnnouncedSettles)
{
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG);
    onNotified = [&] { property->SetValue(5); };
    property->SetValue(1);
    long value = 0;
    property->GetValue(&value);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(notified, 2);
}

TEST_F(PropertiesTest, ADetachedOwnerHearsNothingAndValuesStayUsable)
{
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG);
    table.detach();
    EXPECT_EQ(property->SetValue(4), S_OK);
    long value = 0;
    property->GetValue(&value);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(notified, 0);
    ComPtr<IVexRes> resources;
    EXPECT_EQ(property->GetVexRes(resources.put()), S_OK);
    EXPECT_EQ(resources, nullptr);
}

TEST_F(PropertiesTest, VariantsAreConvertedAndRefusedOnesChangeNothing)
{
    const auto number = make<morvane::LongProperty>(_PROPTYPE_INT);
    const Bstr digits(L"42");
    const Bstr word(L"many");
    EXPECT_EQ(number->SetVariant(variantOf(digits.get())), S_OK);
    EXPECT_TRUE(FAILED(number->SetVariant(variantOf(word.get()))));
    EXPECT_EQ(textOf(number.get()), L"42");
    const auto fraction = make<morvane::FloatProperty>(_PROPTYPE_FLOAT);
    const Bstr half(L"0.5");
    EXPECT_EQ(fraction->SetVariant(variantOf(half.get())), S_OK);
    EXPECT_EQ(textOf(fraction.get()), L"0.5");
    const auto color = make<IColorProp>(_PROPTYPE_COLOR);
    EXPECT_EQ(color->SetVariant(variantOf(static_cast<long>(0x8000000F))), S_OK);
    EXPECT_EQ(textOf(color.get()), L"0x8000000F");
    EXPECT_TRUE(FAILED(color->SetVariant(variantOf(word.get()))));
    const auto truth = make<morvane::BoolProperty>(_PROPTYPE_BOOL);
    EXPECT_EQ(truth->SetVariant(variantOf(3)), S_OK);
    VARIANT_BOOL value = 0;
    truth->GetValue(&value);
    EXPECT_EQ(value, VARIANT_TRUE);
}

TEST_F(PropertiesTest, AChoiceIsOneOfItsItemsOrNone)
{
    const auto property = make<morvane::ComboProperty>(_PROPTYPE_COMBO);
    for (const auto* item : {L"Gif", L"Frames", L"Images"})
        EXPECT_EQ(property->AddItem(item), S_OK);
    long index = 5;
    property->GetSelection(&index);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(property->SetSelection(2), S_OK);
    EXPECT_EQ(property->SetSelection(3), E_INVALIDARG);
    EXPECT_EQ(property->SetSelection(-2), E_INVALIDARG);
    EXPECT_EQ(textOf(property.get()), L"2");
    const Bstr frames(L"Frames");
    EXPECT_EQ(property->SetVariant(variantOf(frames.get())), S_OK);
    Bstr text;
    EXPECT_EQ(property->GetItem(1, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"Frames");
    EXPECT_EQ(property->GetItem(3, text.put()), E_INVALIDARG);

    const auto copy = make<morvane::ComboProperty>(_PROPTYPE_COMBO, L"Copy");
    EXPECT_EQ(copy->Clone(property.get()), S_OK);
    long count = 0;
    copy->GetItemCount(&count);
    copy->GetSelection(&index);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(index, 1);
    property->RemoveAllItems();
    EXPECT_EQ(textOf(property.get()), L"-1");
}

TEST_F(PropertiesTest, AnImagePropertyForwardsToItsSection)
{
    const auto property = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION);
    TestDouble<IVexImageBase> section;
    section.answer(
        kSlotImageGetWidth, +[](TestDouble<IVexImageBase>*, long* width) {
            *width = 90;
            return S_OK;
        });
    section.answer(
        kSlotImageRenderDraw,
        +[](TestDouble<IVexImageBase>* self, IVexRenderDC*, const SkinRect* rect, short index, VARIANT_BOOL* drawn) {
            self->noted = rect->right * 100 + index;
            *drawn = VARIANT_TRUE;
            return S_OK;
        });
    TestDouble<IVexRenderDC> dc;
    const SkinRect rect = {1, 2, 30, 40};
    VARIANT_BOOL drawn = VARIANT_TRUE;
    EXPECT_EQ(property->RenderDraw(dc.get(), &rect, 0, 0, &drawn), S_FALSE);
    EXPECT_EQ(drawn, VARIANT_FALSE);

    property->SetImageSection(section.get());
    property->SetImageSection(section.get());
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(property->RenderDraw(dc.get(), &rect, 3, 0, &drawn), S_OK);
    EXPECT_EQ(section.noted, 3003);
    short width = 0;
    property->GetImageWidth(&width);
    EXPECT_EQ(width, 90);
    EXPECT_EQ(property->SetImageCount(3), S_OK);
    property->GetImageWidth(&width);
    EXPECT_EQ(width, 30);
    EXPECT_EQ(property->SetImageCount(0), E_INVALIDARG);
    EXPECT_EQ(property->RenderDraw(dc.get(), nullptr, 0, 0, &drawn), E_POINTER);
    EXPECT_EQ(property->RenderDraw(nullptr, &rect, 0, 0, &drawn), E_POINTER);
    EXPECT_EQ(property->RenderDraw(dc.get(), &rect, 40000, 0, &drawn), S_FALSE);

    VARIANT_BOOL released = VARIANT_FALSE;
    property->ReleaseResource(&released);
    EXPECT_EQ(released, VARIANT_TRUE);
    EXPECT_EQ(section.references(), 0);
}

TEST_F(PropertiesTest, AnObjectOfTheWrongKindIsRefused)
{
    const auto property = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION);
    TestDouble<IFillColor> fill;
    EXPECT_EQ(property->SetDispatch(fill.get()), E_NOINTERFACE);
    TestDouble<IVexImageBase> section;
    EXPECT_EQ(property->SetDispatch(section.get()), S_OK);
    ComPtr<IDispatch> value;
    EXPECT_EQ(property->GetDispatch(value.put()), S_OK);
    EXPECT_TRUE(morvane::isSameObject(value.get(), section.get()));
    value.reset();
    EXPECT_EQ(property->SetDispatch(nullptr), S_OK);
    EXPECT_EQ(section.references(), 0);
}

TestDouble<IFillColor>* g_madeFill = nullptr;

TEST_F(PropertiesTest, AnUnsetFillIsMadeOnceWhenAskedForAndDrawsOnlyWhenColoured)
{
    const auto property = make<morvane::FillColorProperty>(_PROPTYPE_FILLCOLOR);
    ComPtr<IFillColor> given;
    EXPECT_EQ(property->GetFill(given.put()), S_FALSE) << "nothing makes fills yet";

    TestDouble<IFillColor> fill;
    fill.answer(
        kSlotFillGetStart, +[](TestDouble<IFillColor>* self, OLE_COLOR* color) {
            *color = static_cast<OLE_COLOR>(self->noted);
            return S_OK;
        });
    fill.answer(
        kSlotFillPutStart, +[](TestDouble<IFillColor>* self, OLE_COLOR color) {
            self->noted = color;
            return S_OK;
        });
    fill.answer(
        kSlotFillGetStart + 2, +[](TestDouble<IFillColor>*, OLE_COLOR* color) {
            *color = 0xFFFFFFFF;
            return S_OK;
        });
    fill.answer(
        kSlotFillRenderDraw, +[](TestDouble<IFillColor>* self, IVexRenderDC*, const SkinRect*, VARIANT_BOOL* drawn) {
            ++self->called;
            *drawn = VARIANT_TRUE;
            return S_OK;
        });
    g_madeFill = &fill;
    setFillFactory([](IFillColor** result) {
        return g_madeFill->get()->QueryInterface(iidOf<IFillColor>(), reinterpret_cast<void**>(result));
    });
    EXPECT_EQ(property->GetFill(given.put()), S_OK);
    EXPECT_EQ(given.get(), fill.get());
    TestDouble<IVexRenderDC> dc;
    const SkinRect rect = {0, 0, 10, 10};
    VARIANT_BOOL drawn = VARIANT_TRUE;
    property->RenderDraw(dc.get(), &rect, &drawn);
    EXPECT_EQ(fill.called, 0);
    EXPECT_EQ(property->SetStartColor(0x00112233), S_OK);
    EXPECT_EQ(property->SetStartColor(0x00112233), S_FALSE);
    EXPECT_EQ(notified, 1);
    property->RenderDraw(dc.get(), &rect, &drawn);
    EXPECT_EQ(fill.called, 1);
    setFillFactory(nullptr);
    given.reset();
    property->SetFill(nullptr);
    EXPECT_EQ(fill.references(), 0);
}

TEST_F(PropertiesTest, AHotKeyPropertyOwnsItsKeyAndClonesItsMeaning)
{
    const auto property = make<morvane::HotkeyProperty>(_PROPTYPE_HOTKEY);
    EXPECT_EQ(textOf(property.get()), L"");
    ComPtr<IVexHotkey> key;
    EXPECT_EQ(property->GetObject(key.put()), S_OK);
    EXPECT_EQ(key->put_wVirtualKeyCode('A'), S_OK);
    EXPECT_EQ(key->put_wModifiers(6), S_OK);
    EXPECT_EQ(key->put_wModifiers(8), E_INVALIDARG);
    EXPECT_EQ(key->put_wVirtualKeyCode(256), E_INVALIDARG);
    EXPECT_EQ(textOf(property.get()), L"0x00000641");
    const auto copy = make<morvane::HotkeyProperty>(_PROPTYPE_HOTKEY, L"Copy");
    copy->Clone(property.get());
    key->put_wModifiers(0);
    EXPECT_EQ(textOf(copy.get()), L"0x00000641") << "a copy does not share the key";
    EXPECT_EQ(setPropertyText(copy.get(), L"0x00000941", SkinResources(nullptr), Notify::No), TextResult::NotThisType);
}

TEST_F(PropertiesTest, AColourDrawsLinesWithinTheContextsCoordinates)
{
    const auto color = make<IColorProp>(_PROPTYPE_COLOR);
    TestDouble<IVexRenderDC> dc;
    dc.answer(
        kSlotDcDrawLine,
        +[](TestDouble<IVexRenderDC>* self, short, short, short, short, short, short, OLE_COLOR, VARIANT_BOOL* drawn) {
            ++self->called;
            *drawn = VARIANT_TRUE;
            return S_OK;
        });
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(color->DrawLine(dc.get(), 0, 0, 10, 10, 1, 0, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    color->DrawLine(dc.get(), 0, 0, 100000, 10, 1, 0, &drawn);
    EXPECT_EQ(drawn, VARIANT_FALSE);
    EXPECT_EQ(dc.called, 1);
    color->DrawArcTickLine(dc.get(), {0, 0, 100, 100}, 40, 0, 180, 90, 5, 1, 0, 0, &drawn);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(dc.called, 4);
    EXPECT_EQ(color->DrawArc(nullptr, {}, 1, 0, 1, 0, 1, 0, &drawn), E_POINTER);
}

} // namespace
} // namespace ambrel
