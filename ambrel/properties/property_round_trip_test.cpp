// What is written is read back, for every type; and values in forms that clients may choose.
#include "ambrel/properties/config_node.h"
#include "ambrel/properties/hotkey.h"
#include "ambrel/properties/properties_fixture.h"
#include "ambrel/properties/xml_node.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>
#include <vector>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::iidOf;

/// Lets an image section be known as the shared object that it is, which has a name.
void nameAsked(TestDouble<IVexImageBase>& section)
{
    section.answer(
        0, +[](TestDouble<IVexImageBase>* self, const IID* iid, void** result) -> HRESULT {
            const bool isKnown = *iid == IID_IUnknown || *iid == IID_IDispatch || *iid == iidOf<IVexObj>() ||
                                 *iid == iidOf<IVexImageBase>();
            *result = isKnown ? self->get() : nullptr;
            if (isKnown)
                self->get()->AddRef();
            return isKnown ? S_OK : E_NOINTERFACE;
        });
}

/// Gives out one image section under one name.
struct OneResource {
    TestDouble<IVexRes> resources;
    TestDouble<IVexImageBase> section;

    OneResource()
    {
        resources.context = this;
        resources.answer(
            kSlotResGetObject,
            +[](TestDouble<IVexRes>* self, VexObjType type, BSTR name, ISkinObjResBase*, VARIANT_BOOL,
                IVexObj** result) -> HRESULT {
                auto& all = *static_cast<OneResource*>(self->context);
                if (all.onAsked)
                    all.onAsked();
                *result = nullptr;
                if (type != VEXOBJTYPE_IMAGEBASE || morvane::viewOf(name) != L"Section1")
                    return S_FALSE;
                return all.section.get()->QueryInterface(iidOf<IVexImageBase>(), reinterpret_cast<void**>(result));
            });
        nameAsked(section);
        section.answer(
            kSlotObjGetName, +[](TestDouble<IVexImageBase>*, BSTR* name) {
                *name = SysAllocString(L"Section1");
                return S_OK;
            });
    }

    std::function<void()> onAsked;
};

class RoundTripTest : public PropertiesTest {
protected:
    /// A property of the type with the value of the text.
    ComPtr<IVexPropBase> with(enumPropType type, const std::wstring& text)
    {
        const auto property = make<IVexPropBase>(type, L"Value", group(L"Written").get());
        if (type == _PROPTYPE_COMBO)
            addItems(*property.get());
        property->SetVexRes(one.resources.get());
        EXPECT_EQ(
            setPropertyText(property.get(), text, SkinResources(ComPtr<IVexRes>(one.resources.get())), Notify::No),
            TextResult::Taken)
            << type;
        return property;
    }

    static void addItems(IVexPropBase& combo)
    {
        for (const auto* item : {L"10", L"", L"Images"})
            static_cast<morvane::ComboProperty&>(combo).AddItem(item);
    }

    /// Written to a node, read into a fresh property and cloned into another.
    std::wstring roundTrip(IVexPropBase& property, enumPropType type)
    {
        const auto node = ConfigNode::create(L"Node");
        const Bstr key(L"Key");
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(property.AccessConfig(node->handle(), key.get(), VARIANT_FALSE, VARIANT_TRUE, &done), S_OK);
        EXPECT_EQ(done, VARIANT_TRUE);
        const auto fresh = make<IVexPropBase>(type, L"Value", group(L"Read").get());
        if (type == _PROPTYPE_COMBO)
            addItems(*fresh.get());
        fresh->SetVexRes(one.resources.get());
        EXPECT_EQ(fresh->AccessConfig(node->handle(), key.get(), VARIANT_TRUE, VARIANT_TRUE, &done), S_OK);
        EXPECT_EQ(done, VARIANT_TRUE) << type;
        const auto copy = make<IVexPropBase>(type, L"Value", group(L"Cloned").get());
        EXPECT_EQ(copy->Clone(fresh.get()), S_OK);
        EXPECT_EQ(sameValue(property, *copy.get()), true) << type;
        return textOf(copy.get());
    }

    static bool sameValue(IVexPropBase& one, IVexPropBase& other)
    {
        VARIANT a;
        VARIANT b;
        one.GetVariant(&a);
        other.GetVariant(&b);
        // A hot key is a value, although an object carries it: the texts tell.
        const bool isSame = a.vt == b.vt && (a.vt == VT_BSTR ? morvane::viewOf(a.bstrVal) == morvane::viewOf(b.bstrVal)
                                             : a.vt == VT_R4 ? a.fltVal == b.fltVal
                                             : a.vt == VT_BOOL ? a.boolVal == b.boolVal
                                             : a.vt == VT_I4   ? a.lVal == b.lVal
                                             : a.vt == VT_UI4  ? a.ulVal == b.ulVal
                                                               : true);
        VariantClear(&a);
        VariantClear(&b);
        return isSame && textOf(&one) == textOf(&other);
    }

    OneResource one;
};

TEST_F(RoundTripTest, WhatIsWrittenIsReadAndClonedForEveryType)
{
    const std::wstring odd(L"a\0\x1 <&\"\xD83D \x4E2D", 9);
    const std::wstring huge(200'000, L'\x4E2D');
    const std::pair<enumPropType, std::vector<std::wstring>> values[] = {
        {_PROPTYPE_IMAGESECTION, {L"", L"Section1"}},
        {_PROPTYPE_TEXTSTYLE, {L""}},
        {_PROPTYPE_INT, {L"0", L"-2147483648", L"2147483647"}},
        {_PROPTYPE_LONG, {L"0", L"-2147483648", L"2147483647"}},
        {_PROPTYPE_BOOL, {L"0", L"1"}},
        {_PROPTYPE_COMBO, {L"-1", L"0", L"2"}},
        {_PROPTYPE_STRING, {L"", L" ", L"0,5", odd, huge}},
        {_PROPTYPE_FONT, {L""}},
        {_PROPTYPE_COLOR, {L"0x00000000", L"0x8000000F", L"0xFFFFFFFF"}},
        {_PROPTYPE_PLUGIN, {L"", L"C:\\a\\b.png|C:\\c.png", odd}},
        {_PROPTYPE_CURSOR, {L""}},
        {_PROPTYPE_FLOAT, {L"0", L"-0.5", L"3.4028235e+38", L"1e-45", L"0.1"}},
        {_PROPTYPE_HOTKEY, {L"", L"0x00000600", L"0x000007FF"}},
        {_PROPTYPE_FILLCOLOR, {L""}},
    };
    for (const auto& [type, texts] : values)
        for (const std::wstring& text : texts) {
            const auto property = with(type, text);
            EXPECT_EQ(roundTrip(*property.get(), type), text) << type;
        }
    EXPECT_EQ(std::size(values), 14u);
}

TEST_F(RoundTripTest, AnObjectWithoutANameIsNotLostByWritingAndReading)
{
    const auto home = group(L"Home");
    const auto property = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION, L"Image", home.get());
    TestDouble<IVexImageBase> unnamed;
    property->SetImageSection(unnamed.get());
    const auto node = ConfigNode::create(L"Node");
    const std::wstring key = L"HomeImage.ImageSecId";
    node->setAttribute(key, L"Former");
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(property->AccessConfig(node->handle(), Bstr(key).get(), VARIANT_FALSE, VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(node->attribute(key), nullptr) << "it is not the former one";
    home->AccessConfig(node->handle(), VARIANT_FALSE, &done);
    home->AccessConfig(node->handle(), VARIANT_TRUE, &done);
    ComPtr<IVexImageBase> section;
    property->GetImageSection(section.put());
    EXPECT_EQ(section.get(), unnamed.get());
    section.reset();
    property->SetImageSection(nullptr);
}

TEST_F(RoundTripTest, AnyNumberIsReadBackAsItWasWritten)
{
    std::mt19937 random(20261121);
    const auto whole = make<morvane::LongProperty>(_PROPTYPE_LONG);
    const auto fraction = make<morvane::FloatProperty>(_PROPTYPE_FLOAT);
    const auto color = make<IColorProp>(_PROPTYPE_COLOR);
    for (int i = 0; i < 500; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        const auto number = std::bit_cast<float>(bits);
        whole->SetValue(static_cast<long>(bits));
        color->SetValue(bits);
        roundTrip(*whole.get(), _PROPTYPE_LONG);
        roundTrip(*color.get(), _PROPTYPE_COLOR);
        if (SUCCEEDED(fraction->SetValue(number)))
            roundTrip(*fraction.get(), _PROPTYPE_FLOAT);
    }
}

TEST_F(RoundTripTest, AClonedPlugInPropertyNamesTheSameDialog)
{
    const auto property = make<morvane::PluginProperty>(_PROPTYPE_PLUGIN);
    EXPECT_EQ(property->SetVariant(variantOf(2095)), S_OK);
    EXPECT_EQ(notified, 0) << "the dialog's number is no content";
    const auto copy = make<morvane::PluginProperty>(_PROPTYPE_PLUGIN, L"Copy");
    EXPECT_EQ(copy->Clone(property.get()), S_OK);
    VARIANT value;
    EXPECT_EQ(copy->GetVariant(&value), S_OK);
    EXPECT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 2095);
    ComPtr<IVexPropType> descriptor;
    copy->GetPropTypePtr(descriptor.put());
    long identifier = 0;
    descriptor->get_lPropId(&identifier);
    EXPECT_EQ(identifier, 2095);

    // A text is the value as soon as there is one; an object comes before both.
    const Bstr files(L"a.png");
    EXPECT_EQ(copy->SetVariant(variantOf(files.get())), S_OK);
    EXPECT_EQ(notified, 1);
    copy->GetVariant(&value);
    EXPECT_EQ(value.vt, VT_BSTR);
    VariantClear(&value);
    TestDouble<IDispatch> object;
    EXPECT_EQ(copy->SetObject(object.get()), S_OK);
    copy->GetVariant(&value);
    EXPECT_EQ(value.vt, VT_DISPATCH);
    VariantClear(&value);
    VARIANT_BOOL released = VARIANT_FALSE;
    EXPECT_EQ(copy->ReleaseResource(&released), S_OK);
    EXPECT_EQ(released, VARIANT_TRUE);
    EXPECT_EQ(textOf(copy.get()), L"a.png");
    EXPECT_EQ(object.references(), 0);
}

TEST_F(RoundTripTest, ATruthOfAnyBitsIsSavedAsATruth)
{
    const auto property = make<morvane::BoolProperty>(_PROPTYPE_BOOL);
    for (const VARIANT_BOOL bits : {VARIANT_TRUE, VARIANT_BOOL{1}, VARIANT_BOOL{2}, VARIANT_BOOL{0x7FFF}}) {
        property->SetValue(bits);
        EXPECT_EQ(textOf(property.get()), L"1") << bits;
    }
}

TEST_F(RoundTripTest, FractionsAreFinite)
{
    const auto property = make<morvane::FloatProperty>(_PROPTYPE_FLOAT);
    property->SetValue(1.5f);
    using Limits = std::numeric_limits<float>;
    for (const float number : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
        EXPECT_EQ(property->SetValue(number), E_INVALIDARG);
        VARIANT variant;
        VariantInit(&variant);
        variant.vt = VT_R4;
        variant.fltVal = number;
        EXPECT_TRUE(FAILED(property->SetVariant(variant)));
        variant.vt = VT_R8;
        variant.dblVal = number;
        EXPECT_TRUE(FAILED(property->SetVariant(variant)));
        const auto whole = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Whole");
        EXPECT_TRUE(FAILED(whole->SetVariant(variant)));
        EXPECT_EQ(textOf(whole.get()), L"0");
    }
    for (const auto* text : {L"1e300", L"-1e39", L"nan", L"inf", L"1e999"})
        EXPECT_EQ(setPropertyText(property.get(), text, SkinResources(nullptr), Notify::No), TextResult::NotThisType)
            << text;
    EXPECT_EQ(textOf(property.get()), L"1.5");
    EXPECT_EQ(notified, 1);

    const auto node = ConfigNode::create(L"Node");
    node->setAttribute(L"Large", L"1e300");
    const auto face = xmlNodeOf(node->handle());
    float number = 7;
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(face->AccessAttribFloat(Bstr(L"Large").get(), &number, VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(number, 7);
    double noNumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(face->AccessAttribDouble(Bstr(L"Odd").get(), &noNumber, VARIANT_FALSE, &done), E_INVALIDARG);
    EXPECT_EQ(node->attribute(L"Odd"), nullptr) << "nobody could read it";
}

/// What a user may have set in the system, for the life of a test.
class DecimalComma {
public:
    DecimalComma()
    {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_former, static_cast<int>(std::size(m_former)));
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L",");
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;
    ~DecimalComma() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_former); }

private:
    wchar_t m_former[8] = L".";
};

TEST_F(RoundTripTest, NumbersInTextsAreTheSameForEveryUser)
{
    const auto fraction = make<morvane::FloatProperty>(_PROPTYPE_FLOAT);
    const auto words = make<morvane::StringProperty>(_PROPTYPE_STRING, L"Words");
    const Bstr half(L"0.5");
    const Bstr comma(L"0,5");
    VARIANT number;
    VariantInit(&number);
    number.vt = VT_R8;
    number.dblVal = 0.25;
    {
        const DecimalComma user;
        EXPECT_EQ(words->SetVariant(number), S_OK);
        EXPECT_EQ(fraction->SetVariant(variantOf(half.get())), S_OK);
    }
    EXPECT_EQ(textOf(words.get()), L"0.25");
    EXPECT_EQ(textOf(fraction.get()), L"0.5");
    EXPECT_EQ(fraction->SetVariant(variantOf(comma.get())), DISP_E_TYPEMISMATCH) << "and not five";
    EXPECT_EQ(textOf(fraction.get()), L"0.5");
    const auto whole = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Whole");
    const Bstr hexadecimal(L"0x10");
    EXPECT_EQ(whole->SetVariant(variantOf(hexadecimal.get())), S_OK) << "as a skin writes it";
    EXPECT_EQ(textOf(whole.get()), L"16");
}

TEST_F(RoundTripTest, ValuesByReferenceAreTakenLikeOthers)
{
    const auto combo = make<morvane::ComboProperty>(_PROPTYPE_COMBO);
    addItems(*combo.get());
    Bstr images(L"Images");
    VARIANT inner = variantOf(images.get());
    VARIANT outer;
    VariantInit(&outer);
    outer.vt = VT_BYREF | VT_VARIANT; // how scripts pass a variable
    outer.pvarVal = &inner;
    EXPECT_EQ(combo->SetVariant(outer), S_OK);
    EXPECT_EQ(textOf(combo.get()), L"2");

    const auto image = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION, L"Image");
    IDispatch* section = one.section.get();
    outer.vt = VT_BYREF | VT_DISPATCH;
    outer.ppdispVal = &section;
    EXPECT_EQ(image->SetVariant(outer), S_OK);
    EXPECT_EQ(textOf(image.get()), L"Section1");
    for (const int type : std::initializer_list<int>{VT_VARIANT, VT_DISPATCH, VT_BSTR, VT_I4, VT_RECORD, VT_ARRAY}) {
        outer.vt = static_cast<VARTYPE>(VT_BYREF | type);
        outer.byref = nullptr;
        EXPECT_TRUE(FAILED(image->SetVariant(outer))) << type;
    }
    EXPECT_EQ(textOf(image.get()), L"Section1");
}

TEST_F(RoundTripTest, AnyVariantIsTakenOrRefusedAndWhatIsRefusedChangesNothing)
{
    TestDouble<IDispatch> stranger;
    const Bstr word(L"no number");
    std::vector<VARIANT> odd;
    const auto add = [&](VARTYPE type, LONGLONG bits) {
        VARIANT value;
        VariantInit(&value);
        value.llVal = bits;
        value.vt = type;
        odd.push_back(value);
    };
    for (const VARTYPE type :
         std::initializer_list<VARTYPE>{VT_EMPTY, VT_NULL, VT_BSTR, VT_DISPATCH, VT_UNKNOWN, VT_ARRAY | VT_I4})
        add(type, 0);
    for (const VARTYPE type :
         std::initializer_list<VARTYPE>{VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_I8, VT_UI8, VT_R4, VT_R8, VT_CY,
                                        VT_DATE, VT_ERROR, VT_BOOL, 0x3F, 0xFFF})
        for (const LONGLONG bits : {0LL, -1LL, std::numeric_limits<LONGLONG>::max(),
                                    std::numeric_limits<LONGLONG>::min(), 0x7FF8000000000000LL})
            add(type, bits);
    odd.push_back(variantOf(word.get()));
    add(VT_DISPATCH, reinterpret_cast<LONGLONG>(stranger.get()));
    add(VT_UNKNOWN, reinterpret_cast<LONGLONG>(stranger.get()));
    for (int type = 0; type < 14; ++type) {
        const auto property = make<IVexPropBase>(static_cast<enumPropType>(type));
        for (const VARIANT& value : odd) {
            const std::wstring before = textOf(property.get());
            notified = 0;
            if (FAILED(property->SetVariant(value))) {
                EXPECT_EQ(textOf(property.get()), before) << type << " takes " << value.vt;
                EXPECT_EQ(notified, 0) << type << " takes " << value.vt;
            }
            EXPECT_LE(notified, 1);
            property->SetPrivateValue(value);
        }
        EXPECT_EQ(property->SetDispatch(nullptr), property->SetDispatch(nullptr));
        VARIANT result;
        EXPECT_EQ(property->GetVariant(&result), S_OK);
        VariantClear(&result);
        EXPECT_EQ(property->GetVariant(nullptr), E_POINTER);
        EXPECT_EQ(property->GetDispatch(nullptr), E_POINTER);
    }
    EXPECT_EQ(stranger.references(), 0);
}

TEST_F(RoundTripTest, WhatADesignerWritesIntoTheChoicesPlaceChoosesAnItemOrNone)
{
    const auto combo = make<morvane::ComboProperty>(_PROPTYPE_COMBO);
    addItems(*combo.get());
    ComPtr<IVexPropType> descriptor;
    combo->GetPropTypePtr(descriptor.put());
    long* place = nullptr;
    ASSERT_EQ(descriptor->GetComboSelItemIndexPtr(&place), S_OK);
    long index = 0;
    for (const long wrong : {3L, -2L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()}) {
        *place = wrong;
        combo->GetSelection(&index);
        EXPECT_EQ(index, -1) << "controls index by it";
        descriptor->get_nComboSelItem(&index);
        EXPECT_EQ(index, -1);
        EXPECT_EQ(textOf(combo.get()), L"-1");
    }
    *place = 2;
    combo->GetSelection(&index);
    EXPECT_EQ(index, 2);
}

TEST_F(RoundTripTest, AHotKeyOfAPropertyIsNoticedHoweverItComes)
{
    const auto home = group(L"Hotkey");
    const auto property = make<morvane::HotkeyProperty>(_PROPTYPE_HOTKEY, L"Hotkey1", home.get());
    const auto key = Hotkey::create();
    key->put_wVirtualKeyCode('K');
    const auto grows = [](const char* how, auto change) {
        const auto before = hotkeyRevision();
        change();
        EXPECT_GT(hotkeyRevision(), before) << how;
    };
    grows("as an object", [&] { property->SetObject(key.get()); });
    grows("as a dispatch", [&] { property->SetDispatch(key.get()); });
    grows("with its group", [&] { group(L"Outer")->AddProp(home.get()); });
    grows("made when asked for", [&] {
        ComPtr<IVexHotkey> made;
        make<morvane::HotkeyProperty>(_PROPTYPE_HOTKEY)->GetObject(made.put());
    });
    grows("into a table", [&] { home->SetControlBasePtr(owner.get()); });
}

// A foreign object's methods run foreign code: it may take away what called it.

TEST_F(RoundTripTest, ASkinThatIsAskedForAResourceMayTakeTheTableAway)
{
    auto outer = group(L"Outer");
    auto inner = group(L"Inner", outer.get());
    for (const auto* name : {L"A", L"B", L"C"}) {
        make<IVexPropBase>(_PROPTYPE_IMAGESECTION, name, outer.get());
        make<IVexPropBase>(_PROPTYPE_IMAGESECTION, name, inner.get());
    }
    outer->SetVexRes(one.resources.get());
    const auto node = ConfigNode::create(L"Node");
    for (const auto* key : {L"OuterA", L"OuterB", L"OuterC", L"OuterInnerA", L"OuterInnerB"})
        node->setAttribute(std::wstring(key) + L".ImageSecId", L"Section1");
    int asked = 0;
    one.onAsked = [&] {
        ++asked;
        outer->RemoveAllPropBase();
        inner->RemoveAllPropBase();
        if (asked > 1)
            return;
        outer->RemoveProp(inner.get());
        inner.reset();
        table.detach();
    };
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(outer->AccessConfig(node->handle(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(asked, 1) << "what is gone is not read";
    outer->SetVexRes(nullptr);
}

TEST_F(RoundTripTest, AForeignSectionMayReleaseThePropertyThatCallsIt)
{
    struct Case {
        std::size_t slot;
        std::function<void(morvane::ImageSectionProperty&)> use;
    };
    SkinRect rect = {1, 2, 3, 4};
    short length = 0;
    Bstr name;
    const Case cases[] = {
        {kSlotImagePutRect, [&](auto& p) { p.SetSectionRect(&rect); }},
        {kSlotImageGetRect, [&](auto& p) { p.GetSectionRect(&rect); }},
        {kSlotImageGetWidth, [&](auto& p) { p.GetImageWidth(&length); }},
        {kSlotObjGetName, [&](auto& p) { p.GetResourceName(name.put()); }},
    };
    for (const Case& each : cases) {
        struct State {
            ComPtr<ICtrlPluginProp> home;
            ComPtr<morvane::ImageSectionProperty> property;
        } state;
        TestDouble<IVexImageBase> section;
        nameAsked(section);
        section.context = &state;
        section.answer(
            each.slot, +[](TestDouble<IVexImageBase>* self, void*) {
                auto& all = *static_cast<State*>(self->context);
                all.property->SetImageSection(nullptr);
                all.home->RemoveAllPropBase();
                all.property.reset();
                ++self->called;
                return S_OK;
            });
        state.home = group(L"Home");
        state.property = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION, L"Image", state.home.get());
        state.property->SetImageSection(section.get());
        each.use(*state.property.get());
        EXPECT_EQ(section.called, 1);
        EXPECT_EQ(section.references(), 0);
    }
}

TEST_F(RoundTripTest, AGroupWhoseControlEndedStaysNobodysWhenPropertiesAreMadeInIt)
{
    ComPtr<ICtrlPluginProp> stray;
    {
        TestTable gone;
        stray = gone.group(owner.get(), nullptr, L"Stray");
    }
    make<IVexPropBase>(_PROPTYPE_LONG, L"x", stray.get());
    ComPtr<IVexControlBase> holder;
    stray->GetControlBasePtr(holder.put());
    EXPECT_EQ(holder.get(), nullptr);
}

} // namespace
} // namespace ambrel
