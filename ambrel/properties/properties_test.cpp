#include "ambrel/properties/config_node.h"
#include "ambrel/properties/property_factory.h"
#include "ambrel/properties/property_lookup.h"
#include "ambrel/properties/test_doubles.h"
#include "ambrel/properties/xml_node.h"
#include "frame/com/module_lock.h"
#include "host/typed_properties.h"

#include <gtest/gtest.h>

#include <functional>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::iidOf;

/// Runs what a test wants to happen when a property changes.
class Callback final : public IPropChangedCallback {
public:
    std::function<void(IVexControlBase*)> action;
    long references = 0;

    STDMETHODIMP QueryInterface(REFIID, void** result) noexcept override
    {
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }
    STDMETHODIMP Do(IVexControlBase* owner) noexcept override
    {
        action(owner);
        return S_OK;
    }
};

class PropertiesTest : public testing::Test {
protected:
    PropertiesTest()
    {
        owner.answer(kSlotPropChangedNotify, &notifyOwner);
        owner.context = this;
    }

    ~PropertiesTest() override
    {
        tree.detach();
        EXPECT_EQ(owner.references(), 0);
    }

    ComPtr<ICtrlPluginProp> group(std::wstring_view name, ICtrlPluginProp* parent = nullptr)
    {
        ComPtr<ICtrlPluginProp> result;
        tree.createGroup(owner.get(), parent, Bstr(name).get(), true, result.put());
        return result;
    }

    template <class Typed>
    ComPtr<Typed> make(enumPropType type, std::wstring_view name = L"Value", ICtrlPluginProp* where = nullptr,
                       IPropChangedCallback* callback = nullptr)
    {
        const auto home = where ? ComPtr<ICtrlPluginProp>(where) : group(L"Group");
        ComPtr<IVexPropBase> property;
        EXPECT_EQ(tree.createProp(owner.get(), home.get(), type, Bstr(name).get(), nullptr, true, callback, property.put()),
                  S_OK);
        return ComPtr<Typed>(static_cast<Typed*>(property.get()));
    }

    static HRESULT STDMETHODCALLTYPE notifyOwner(TestDouble<IVexControlBase>* self, IVexPropBase* property)
    {
        auto& test = *static_cast<PropertiesTest*>(self->context);
        ++test.notified;
        test.lastNotified = property;
        if (test.onNotified)
            test.onNotified();
        return S_OK;
    }

    TestDouble<IVexControlBase> owner;
    PropertyTree tree;
    int notified = 0;
    IVexPropBase* lastNotified = nullptr;
    std::function<void()> onNotified;
};

std::wstring textOf(IVexPropBase* property) { return propertyText(property); }

VARIANT variantOf(long value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_I4;
    result.lVal = value;
    return result;
}

VARIANT variantOf(BSTR value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_BSTR;
    result.bstrVal = value;
    return result;
}

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
    tree.detach();
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
        tree.detach();
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
    tree.detach();
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
    section.answer(kSlotImageGetWidth, +[](TestDouble<IVexImageBase>*, long* width) { *width = 90; return S_OK; });
    section.answer(kSlotImageRenderDraw, +[](TestDouble<IVexImageBase>* self, IVexRenderDC*, const SkinRect* rect, short index,
                                             VARIANT_BOOL* drawn) {
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
    fill.answer(kSlotFillGetStart, +[](TestDouble<IFillColor>* self, OLE_COLOR* color) {
        *color = static_cast<OLE_COLOR>(self->noted);
        return S_OK;
    });
    fill.answer(kSlotFillPutStart, +[](TestDouble<IFillColor>* self, OLE_COLOR color) { self->noted = color; return S_OK; });
    fill.answer(kSlotFillGetStart + 2, +[](TestDouble<IFillColor>*, OLE_COLOR* color) { *color = 0xFFFFFFFF; return S_OK; });
    fill.answer(kSlotFillRenderDraw, +[](TestDouble<IFillColor>* self, IVexRenderDC*, const SkinRect*, VARIANT_BOOL* drawn) {
        ++self->called;
        *drawn = VARIANT_TRUE;
        return S_OK;
    });
    g_madeFill = &fill;
    setFillFactory([](IFillColor** result) { return g_madeFill->get()->QueryInterface(iidOf<IFillColor>(), reinterpret_cast<void**>(result)); });
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
    dc.answer(kSlotDcDrawLine, +[](TestDouble<IVexRenderDC>* self, short, short, short, short, short, short, OLE_COLOR,
                                   VARIANT_BOOL* drawn) {
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

TEST_F(PropertiesTest, GroupsHoldTheirPropertiesAndSubGroupsInOrder)
{
    const auto outer = group(L"Unchecked");
    const auto inner = group(L"Normal", outer.get());
    const auto first = make<morvane::LongProperty>(_PROPTYPE_LONG, L"First", inner.get());
    const auto second = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Second", inner.get());
    long count = 0;
    inner->GetPropBaseCount(&count);
    EXPECT_EQ(count, 2);
    ComPtr<IVexPropBase> found;
    EXPECT_EQ(inner->GetAtPropBase(1, found.put()), S_OK);
    EXPECT_EQ(found.get(), second.get());
    EXPECT_EQ(inner->GetAtPropBase(2, found.put()), S_FALSE);
    EXPECT_EQ(inner->GetAtPropBase(-1, found.put()), S_FALSE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(inner->AddProp(outer.get()), E_INVALIDARG) << "a group cannot contain itself";
    ComPtr<ICtrlPluginProp> parent;
    inner->GetParent(parent.put());
    EXPECT_EQ(parent.get(), outer.get());
    EXPECT_EQ(findProperty(tree, L"Unchecked/Normal", L"Second").get(), second.get());
    EXPECT_EQ(findProperty(tree, L"Normal", L"Second").get(), nullptr);
    EXPECT_EQ(findProperty(tree, L"", L"Second").get(), nullptr);
    EXPECT_EQ(inner->RemovePropBase(first.get()), S_OK);
    EXPECT_EQ(inner->RemovePropBase(first.get()), S_FALSE);
    first->SetValue(3);
    EXPECT_EQ(notified, 0) << "outside a group a property has no owner";
    EXPECT_EQ(outer->RemoveProp(inner.get()), S_OK);
    inner->GetParent(parent.put());
    EXPECT_EQ(parent, nullptr);
}

TEST_F(PropertiesTest, ADescriptorReadsAndWritesThroughItsProperty)
{
    const auto home = group(L"Group");
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"x", home.get());
    ComPtr<IVexPropType> descriptor;
    ASSERT_EQ(property->GetPropTypePtr(descriptor.put()), S_OK);
    ComPtr<IVexPropType> again;
    home->GetSkinPropTypeFromIndex(0, again.put());
    EXPECT_EQ(again.get(), descriptor.get());
    const Bstr text(L"12");
    EXPECT_EQ(descriptor->put_strValue(text.get()), S_OK);
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(textOf(property.get()), L"12");
    descriptor->put_lPropId(2104);
    EXPECT_EQ(descriptor->SetLongPropMinMax(5, 1), E_INVALIDARG);
    EXPECT_EQ(descriptor->SetLongPropMinMax(1, 5), S_OK);
    descriptor.reset();
    again.reset();
    property->GetPropTypePtr(descriptor.put());
    long identifier = 0;
    long least = 0;
    long most = 0;
    descriptor->get_lPropId(&identifier);
    descriptor->GetLongPropMinMax(&least, &most);
    EXPECT_EQ(identifier, 2104) << "what the designer notes stays with the property";
    EXPECT_EQ(least * 10 + most, 15);
    home->RemoveSkinProp(descriptor.get());
    long count = -1;
    home->GetSkinPropTypeCount(&count);
    EXPECT_EQ(count, 0);
    home->AddSkinProp(descriptor.get());
    home->GetSkinPropTypeCount(&count);
    EXPECT_EQ(count, 1);
}

TEST_F(PropertiesTest, ConfigurationKeysAreTheGroupPathThePropertyAndTheKindOfResource)
{
    const auto outer = group(L"Unchecked");
    const auto inner = group(L"Normal", outer.get());
    const auto number = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Width", inner.get());
    TestDouble<IVexImageBase> section;
    const auto image = make<morvane::ImageSectionProperty>(_PROPTYPE_IMAGESECTION, L"Image", inner.get());
    const auto truth = make<morvane::BoolProperty>(_PROPTYPE_BOOL, L"Shown", outer.get());
    number->SetValue(-5);
    truth->SetValue(1);
    notified = 0;

    const auto node = ConfigNode::create(L"CheckBox1");
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(outer->AccessConfig(node->handle(), VARIANT_FALSE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(*node->attribute(L"UncheckedNormalWidth"), L"-5");
    EXPECT_EQ(*node->attribute(L"UncheckedNormalImage.ImageSecId"), L"");
    EXPECT_EQ(*node->attribute(L"UncheckedShown"), L"1");
    EXPECT_EQ(*node->attribute(L"UncheckedNormalIsExpand"), L"1");

    node->setAttribute(L"UncheckedNormalWidth", L"66");
    node->setAttribute(L"UncheckedNormalIsExpand", L"0");
    node->setAttribute(L"UncheckedShown", L"perhaps");
    EXPECT_EQ(outer->AccessConfig(node->handle(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(textOf(number.get()), L"66");
    VARIANT_BOOL bits = 0;
    truth->GetValue(&bits);
    EXPECT_EQ(bits, 1) << "a text that does not fit leaves the value alone";
    VARIANT_BOOL expanded = VARIANT_TRUE;
    inner->IsExpand(&expanded);
    EXPECT_EQ(expanded, VARIANT_FALSE);
    EXPECT_EQ(notified, 0) << "loading is not a change";

    const Bstr prefix(L"Ambrel1_CheckBox1");
    EXPECT_EQ(inner->ExportConfig(prefix.get(), node->handle(), &done), S_OK);
    EXPECT_EQ(*node->attribute(L"Ambrel1_CheckBox1UncheckedNormalWidth"), L"66");
    EXPECT_EQ(outer->AccessConfig(1234, VARIANT_TRUE, &done), E_INVALIDARG);
    EXPECT_EQ(number->SetPropertyNode(1234), E_INVALIDARG);
    EXPECT_EQ(number->SetPropertyNode(node->handle()), S_OK);
}

TEST_F(PropertiesTest, StylePropertiesAreKeptInTheirStyleNodeWhenThatIsAskedFor)
{
    const auto home = group(L"Group");
    const auto style = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Style", home.get());
    const auto content = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Content", home.get());
    content->SetStyle(VARIANT_FALSE);
    const auto node = ConfigNode::create(L"own");
    const auto styleNode = ConfigNode::create(L"style");
    EXPECT_EQ(home->RebuildPropBaseStyleNode(styleNode->handle()), S_OK);
    VARIANT_BOOL done = VARIANT_FALSE;
    home->AccessConfig3(nullptr, node->handle(), VARIANT_FALSE, &done);
    EXPECT_NE(styleNode->attribute(L"GroupStyle"), nullptr);
    EXPECT_EQ(styleNode->attribute(L"GroupContent"), nullptr);
    EXPECT_NE(node->attribute(L"GroupContent"), nullptr);
    EXPECT_EQ(node->attribute(L"GroupStyle"), nullptr);
}

TEST_F(PropertiesTest, CloningATreeCopiesWhatBothHave)
{
    const auto from = make<morvane::LongProperty>(_PROPTYPE_LONG, L"x", group(L"Graphics").get());
    from->SetValue(12);
    notified = 0;
    PropertyTree other;
    ComPtr<ICtrlPluginProp> home;
    other.createGroup(owner.get(), nullptr, Bstr(L"Graphics").get(), true, home.put());
    ComPtr<IVexPropBase> same;
    ComPtr<IVexPropBase> otherType;
    other.createProp(owner.get(), home.get(), _PROPTYPE_STRING, Bstr(L"y").get(), nullptr, true, nullptr, otherType.put());
    other.createProp(owner.get(), home.get(), _PROPTYPE_LONG, Bstr(L"x").get(), nullptr, true, nullptr, same.put());
    other.copyFrom(tree);
    EXPECT_EQ(textOf(same.get()), L"12");
    EXPECT_EQ(textOf(otherType.get()), L"");
    EXPECT_EQ(notified, 0);
}

TEST_F(PropertiesTest, AListingNamesEveryPropertyInTheOrderOfCreation)
{
    const auto outer = group(L"Back");
    make<morvane::LongProperty>(_PROPTYPE_LONG, L"Width", group(L"Inner", outer.get()).get())->SetValue(3);
    make<morvane::StringProperty>(_PROPTYPE_STRING, L"Text", outer.get())->SetValue(L"ok");
    const auto entries = listProperties(tree);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].groupPath, L"Back");
    EXPECT_EQ(entries[0].name, L"Text");
    EXPECT_EQ(entries[0].value, L"ok");
    EXPECT_EQ(entries[1].groupPath, L"Back/Inner");
    EXPECT_EQ(entries[1].type, _PROPTYPE_LONG);
    EXPECT_EQ(typeName(entries[1].type), L"Long");
}

TEST_F(PropertiesTest, OddCreationsAreRefused)
{
    const auto home = group(L"Group");
    ComPtr<IVexPropBase> property;
    const Bstr name(L"x");
    for (const int type : {-1, 14, 1000})
        EXPECT_EQ(tree.createProp(owner.get(), home.get(), static_cast<enumPropType>(type), name.get(), nullptr, true, nullptr,
                                  property.put()),
                  E_INVALIDARG);
    EXPECT_EQ(tree.createProp(owner.get(), nullptr, _PROPTYPE_LONG, name.get(), nullptr, true, nullptr, property.put()),
              E_INVALIDARG);
    EXPECT_EQ(tree.createProp(owner.get(), home.get(), _PROPTYPE_LONG, name.get(), nullptr, true, nullptr, nullptr), E_POINTER);
    TestDouble<ICtrlPluginProp> foreign;
    EXPECT_EQ(tree.createProp(owner.get(), foreign.get(), _PROPTYPE_LONG, name.get(), nullptr, true, nullptr, property.put()),
              E_INVALIDARG);
    EXPECT_EQ(home->AddProp(foreign.get()), E_INVALIDARG);
}

TEST(XmlNodeTest, NodesAreReadWrittenAndMovedThroughTheInterface)
{
    const auto root = ConfigNode::create(L"root");
    const auto node = xmlNodeOf(root->handle());
    const Bstr name(L"a");
    long number = 7;
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(node->AccessAttribLong(name.get(), &number, VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(number, 7) << "an absent attribute leaves the value alone";
    node->AccessAttribLong(name.get(), &number, VARIANT_FALSE, &done);
    Bstr text;
    EXPECT_EQ(node->Attribute(name.get(), text.put()), S_OK);
    EXPECT_EQ(text.view(), L"7");
    EXPECT_EQ(node->AccessAttribString(name.get(), text.put(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(text.view(), L"7");
    EXPECT_EQ(node->AccessAttribLong(name.get(), nullptr, VARIANT_TRUE, &done), E_POINTER);

    ComPtr<IVexXMLNode> first;
    ComPtr<IVexXMLNode> second;
    node->CreateNewVexXMLNode(name.get(), first.put());
    node->CreateNewVexXMLNode(name.get(), second.put());
    EXPECT_EQ(node->InsertEndChild(second.get()), S_OK);
    EXPECT_EQ(node->InsertBeforeChild(second.get(), first.get()), S_OK);
    EXPECT_EQ(first->InsertEndChild(node.get()), E_INVALIDARG);
    ComPtr<IVexXMLNode> found;
    EXPECT_EQ(first->NextChild(found.put()), S_OK);
    hyper expected = 0;
    hyper actual = 0;
    second->GetXMLNode(&expected);
    found->GetXMLNode(&actual);
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(node->RemoveChild(first.get(), VARIANT_TRUE), S_OK);
    EXPECT_EQ(root->children().size(), 1u);
    EXPECT_EQ(first->SetAttribute(name.get(), name.get()), S_FALSE) << "the deleted node's object is empty";
    EXPECT_EQ(first->SetXMLNode(99), E_INVALIDARG);
    EXPECT_EQ(xmlNodeOf(99), nullptr);
}

/// The shape of the largest common table: a button's.
void makeButtonTable(PropertyTree& tree)
{
    const auto add = [&](std::wstring_view groupName, std::initializer_list<std::pair<const wchar_t*, enumPropType>> list) {
        ComPtr<ICtrlPluginProp> home = createGroup(nullptr, nullptr, groupName, true);
        tree.add(home.get());
        for (const auto& [name, type] : list) {
            ComPtr<IVexPropBase> property;
            createProperty(nullptr, home.get(), type, name, {}, true, nullptr, property.put());
        }
    };
    for (const auto* state : {L"Normal", L"Press", L"Disabled", L"Hot", L"Focus", L"Inactive"})
        add(state, {{L"Image", _PROPTYPE_IMAGESECTION}, {L"Graphics", _PROPTYPE_IMAGESECTION}, {L"TextStyle", _PROPTYPE_TEXTSTYLE}});
    add(L"Text", {{L"Text", _PROPTYPE_STRING}, {L"ShowText", _PROPTYPE_BOOL}});
    add(L"Tooltip", {{L"Tooltip", _PROPTYPE_STRING}});
    add(L"Graphics", {{L"UpDownMode", _PROPTYPE_BOOL}, {L"RightAlign", _PROPTYPE_BOOL}, {L"x", _PROPTYPE_LONG}, {L"y", _PROPTYPE_LONG}});
    add(L"AutoResize", {{L"AutoResize", _PROPTYPE_BOOL}, {L"MinTextHeight", _PROPTYPE_LONG}, {L"MaxTextHeight", _PROPTYPE_LONG}, {L"MaxTextWidth", _PROPTYPE_LONG}});
    add(L"Hotkey", {{L"Hotkey1", _PROPTYPE_HOTKEY}, {L"Hotkey2", _PROPTYPE_HOTKEY}, {L"IsBackspace", _PROPTYPE_BOOL}, {L"IsEnter", _PROPTYPE_BOOL}});
}

TEST(PropertyMemoryTest, AButtonsTableFitsInTwoAndAHalfKilobytesAndLeavesNothingBehind)
{
    const long objects = morvane::ModuleLock::count();
    const std::size_t before = blockBytesInUse();
    {
        PropertyTree tree;
        makeButtonTable(tree);
        EXPECT_EQ(listProperties(tree).size(), 33u);
        EXPECT_LE(blockBytesInUse() - before, 2560u);
        RecordProperty("bytes", static_cast<int>(blockBytesInUse() - before));
    }
    EXPECT_EQ(blockBytesInUse(), before);
    EXPECT_EQ(morvane::ModuleLock::count(), objects);
}

} // namespace
} // namespace ambrel
