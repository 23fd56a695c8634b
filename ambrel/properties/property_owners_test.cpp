// Who a property belongs to while groups and properties are moved, removed and copied, and what its callbacks may do.
#include "ambrel/properties/properties_fixture.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;

long countOf(ICtrlPluginProp& group)
{
    long count = 0;
    group.GetPropBaseCount(&count);
    return count;
}

TEST_F(PropertiesTest, AGroupThatWasRemovedForgetsItsControl)
{
    const auto outer = group(L"Outer");
    const auto inner = group(L"Inner", outer.get());
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", inner.get());
    ASSERT_EQ(inner->SetControlBasePtr(owner.get()), S_OK);
    ASSERT_EQ(outer->RemoveProp(inner.get()), S_OK);
    ComPtr<IVexControlBase> holder;
    inner->GetControlBasePtr(holder.put());
    EXPECT_EQ(holder.get(), nullptr) << "the control may end without the group hearing of it";
    property->SetValue(3);
    EXPECT_EQ(notified, 0);

    ASSERT_EQ(inner->SetParent(outer.get()), S_OK);
    property->SetValue(4);
    EXPECT_EQ(notified, 1);
    ASSERT_EQ(inner->SetControlBasePtr(owner.get()), S_OK);
    ASSERT_EQ(inner->SetParent(nullptr), S_OK);
    property->SetValue(5);
    EXPECT_EQ(notified, 1);
}

TEST_F(PropertiesTest, AGroupThatMovesToAnotherControlTellsThatOne)
{
    TestDouble<IVexControlBase> second;
    second.answer(
        kSlotPropChangedNotify, +[](TestDouble<IVexControlBase>* self, IVexPropBase*) {
            ++self->called;
            return S_OK;
        });
    TestTable other;
    const auto home = other.group(second.get(), nullptr, L"Home");
    const auto outer = group(L"Outer");
    const auto inner = group(L"Inner", outer.get());
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", inner.get());
    ASSERT_EQ(inner->SetControlBasePtr(owner.get()), S_OK);
    ASSERT_EQ(home->AddProp(inner.get()), S_OK);
    property->SetValue(1);
    EXPECT_EQ(notified, 0);
    EXPECT_EQ(second.called, 1);
    long count = -1;
    outer->GetAddinPropCount(&count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(home->AddProp(inner.get()), S_FALSE);
    EXPECT_EQ(inner->AddProp(home.get()), E_INVALIDARG) << "a group inside itself";
    EXPECT_EQ(inner->AddProp(inner.get()), E_INVALIDARG);
}

TEST_F(PropertiesTest, APropertyIsInOneGroupAtATime)
{
    const auto first = group(L"First");
    const auto second = group(L"Second");
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", first.get());
    ASSERT_EQ(second->AddPropBase(property.get()), S_OK);
    EXPECT_EQ(second->AddPropBase(property.get()), S_FALSE);
    EXPECT_EQ(countOf(*first.get()), 0);
    EXPECT_EQ(countOf(*second.get()), 1);
    ASSERT_EQ(second->RemovePropBase(property.get()), S_OK);
    EXPECT_EQ(second->RemovePropBase(property.get()), S_FALSE);
    property->SetValue(1);
    EXPECT_EQ(notified, 0);
    EXPECT_EQ(second->AddPropBase(nullptr), E_POINTER);
    EXPECT_EQ(second->RemovePropBase(nullptr), E_POINTER);
}

TEST_F(PropertiesTest, AnyIndexOutsideFindsNothing)
{
    const auto home = group(L"Home");
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", home.get());
    for (const long index : {-1L, 1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
        ComPtr<IVexPropType> descriptor;
        ComPtr<IVexPropBase> found;
        ComPtr<ICtrlPluginProp> child;
        EXPECT_EQ(home->GetSkinPropTypeFromIndex(index, descriptor.put()), S_FALSE) << index;
        EXPECT_EQ(home->GetAtPropBase(index, found.put()), S_FALSE) << index;
        EXPECT_EQ(home->GetAddinPropByIndex(index, child.put()), S_FALSE) << index;
        EXPECT_FALSE(descriptor || found || child);
    }
    EXPECT_EQ(home->GetSkinPropTypeFromIndex(0, nullptr), E_POINTER);
}

TEST_F(PropertiesTest, WhoAnswersEveryValueWithAnotherOneIsNotToldForEver)
{
    const auto property = make<morvane::LongProperty>(_PROPTYPE_LONG);
    onNotified = [&] { property->SetValue(notified); };
    property->SetValue(-1);
    EXPECT_LE(notified, 16);
    const int first = notified;
    long value = 0;
    property->GetValue(&value);
    EXPECT_EQ(value, first) << "the last value stands";
    onNotified = nullptr;
    property->SetValue(-1);
    EXPECT_EQ(notified, first + 1) << "later changes are told as ever";
}

TEST_F(PropertiesTest, ACallbackMayTakeItsPropertyAndItsGroupAway)
{
    Callback callback;
    const auto home = group(L"Home");
    const auto inner = group(L"Inner", home.get());
    const auto property = make<morvane::StringProperty>(_PROPTYPE_STRING, L"Text", inner.get(), &callback);
    callback.action = [&](IVexControlBase*) {
        inner->RemoveAllPropBase();
        home->RemoveProp(inner.get());
        property->SetChangedCallback(nullptr);
    };
    property->SetValue(L"changed");
    EXPECT_EQ(notified, 0) << "it belongs to nobody when the callback returns";
    EXPECT_EQ(textOf(property.get()), L"changed");
    EXPECT_EQ(callback.references, 0);
}

TEST_F(PropertiesTest, AGroupMayBeCopiedFromItselfItsParentAndItsChild)
{
    const auto outer = group(L"Outer");
    const auto inner = group(L"Inner", outer.get());
    const auto above = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", outer.get());
    const auto beneath = make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", inner.get());
    above->SetValue(1);
    beneath->SetValue(2);
    EXPECT_EQ(outer->Clone(outer.get()), S_OK);
    EXPECT_EQ(textOf(above.get()), L"1");
    EXPECT_EQ(outer->Clone(inner.get()), S_OK);
    EXPECT_EQ(textOf(above.get()), L"2");
    EXPECT_EQ(outer->Clone(nullptr), E_POINTER);
    EXPECT_EQ(above->Clone(above.get()), S_OK);
    EXPECT_EQ(above->Clone(nullptr), E_POINTER);
    const auto word = make<morvane::StringProperty>(_PROPTYPE_STRING, L"Word", outer.get());
    word->SetValue(L"no number");
    EXPECT_TRUE(FAILED(above->Clone(word.get())));
    EXPECT_EQ(textOf(above.get()), L"2");
    word->SetValue(L"12");
    EXPECT_EQ(above->Clone(word.get()), S_OK) << "another type's value, as far as it converts";
    EXPECT_EQ(textOf(above.get()), L"12");
}

TEST_F(PropertiesTest, TheKeyOfAPropertyIsThatOfSkins)
{
    const auto node = ConfigNode::create(L"Node");
    const auto home = group(L"Look");
    struct Row {
        enumPropType type;
        const wchar_t* key;
    };
    for (const Row& row :
         {Row{_PROPTYPE_IMAGESECTION, L"LookValue.ImageSecId"}, Row{_PROPTYPE_TEXTSTYLE, L"LookValue.TextStyleId"},
          Row{_PROPTYPE_FONT, L"LookValue.FontExId"}, Row{_PROPTYPE_CURSOR, L"LookValue.SkinCursorId"},
          Row{_PROPTYPE_FILLCOLOR, L"LookValue.GradientColorId"}, Row{_PROPTYPE_LONG, L"LookValue"}}) {
        make<IVexPropBase>(row.type, L"Value", home.get());
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(home->AccessConfig(node->handle(), VARIANT_FALSE, &done), S_OK);
        EXPECT_NE(node->attribute(row.key), nullptr) << row.type;
        home->RemoveAllPropBase();
        node->removeAttribute(row.key);
        EXPECT_EQ(node->attributes().size(), 1u) << "only whether the group is open is left";
    }
}

} // namespace
} // namespace ambrel
