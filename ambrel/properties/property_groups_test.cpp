#include "ambrel/properties/config_node.h"
#include "ambrel/properties/properties_fixture.h"
#include "ambrel/properties/property_factory.h"
#include "ambrel/properties/xml_node.h"
#include "frame/com/module_lock.h"

#include <gtest/gtest.h>

#include <vector>

namespace ambrel {
namespace {

using morvane::Bstr;
using morvane::ComPtr;

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
    EXPECT_EQ(inner->RemovePropBase(first.get()), S_OK);
    EXPECT_EQ(inner->RemovePropBase(first.get()), S_FALSE);
    first->SetValue(3);
    EXPECT_EQ(notified, 0) << "outside a group a property has no owner";
    EXPECT_EQ(outer->RemoveProp(inner.get()), S_OK);
    inner->GetParent(parent.put());
    EXPECT_EQ(parent, nullptr);
}

TEST_F(PropertiesTest, AGroupMadeInsideAnothersBelongsToThatOnesOwner)
{
    const auto outer = group(L"Outer");
    TestDouble<IVexControlBase> stranger; // may end before the group does
    TestTable other;
    const auto inner = other.group(stranger.get(), outer.get(), L"Inner");
    ComPtr<IVexControlBase> holder;
    EXPECT_EQ(inner->GetControlBasePtr(holder.put()), S_OK);
    EXPECT_EQ(holder.get(), owner.get());
    outer->RemoveProp(inner.get());
    inner->GetControlBasePtr(holder.put());
    EXPECT_EQ(holder.get(), nullptr);
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

TEST_F(PropertiesTest, CloningAGroupCopiesWhatBothHave)
{
    const auto source = group(L"Graphics");
    make<morvane::LongProperty>(_PROPTYPE_LONG, L"x", source.get())->SetValue(12);
    make<morvane::LongProperty>(_PROPTYPE_LONG, L"y", source.get())->SetValue(13);
    make<morvane::LongProperty>(_PROPTYPE_LONG, L"Deep", group(L"Inner", source.get()).get())->SetValue(14);
    notified = 0;
    const auto target = group(L"Other");
    const auto same = make<IVexPropBase>(_PROPTYPE_LONG, L"x", target.get());
    const auto otherType = make<IVexPropBase>(_PROPTYPE_STRING, L"y", target.get());
    const auto deep = make<IVexPropBase>(_PROPTYPE_LONG, L"Deep", group(L"Inner", target.get()).get());
    EXPECT_EQ(target->Clone(source.get()), S_OK);
    EXPECT_EQ(textOf(same.get()), L"12");
    EXPECT_EQ(textOf(otherType.get()), L"");
    EXPECT_EQ(textOf(deep.get()), L"14");
    EXPECT_EQ(notified, 0);
}

TEST_F(PropertiesTest, GroupsLieInsideEachOtherOnlySoDeep)
{
    std::vector<ComPtr<ICtrlPluginProp>> line = {group(L"g")};
    for (int i = 0; i < 100'000 && line.back(); ++i)
        line.push_back(group(L"g", line.back().get()));
    ASSERT_FALSE(line.back());
    line.pop_back();
    EXPECT_LE(line.size(), 1000u);
    make<morvane::LongProperty>(_PROPTYPE_LONG, L"Value", line.back().get());
    const auto node = ConfigNode::create(L"Node");
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(line.front()->AccessConfig(node->handle(), VARIANT_FALSE, &done), S_OK);
    const auto tall = group(L"tall");
    group(L"top", tall.get());
    EXPECT_EQ(line.back()->AddProp(tall.get()), E_INVALIDARG);
    EXPECT_EQ(line[line.size() - 3]->AddProp(tall.get()), S_OK) << "where there is room for both";
}

TEST_F(PropertiesTest, OddCreationsAreRefused)
{
    const auto home = group(L"Group");
    ComPtr<IVexPropBase> property;
    for (const int type : {14, 15, -1})
        EXPECT_EQ(createProperty(home.get(), static_cast<enumPropType>(type), L"x", {}, true, nullptr, property.put()),
                  E_INVALIDARG);
    EXPECT_EQ(createProperty(nullptr, _PROPTYPE_LONG, L"x", {}, true, nullptr, property.put()), E_INVALIDARG);
    EXPECT_EQ(createProperty(home.get(), _PROPTYPE_LONG, L"x", {}, true, nullptr, nullptr), E_POINTER);
    TestDouble<ICtrlPluginProp> foreign;
    EXPECT_EQ(createProperty(foreign.get(), _PROPTYPE_LONG, L"x", {}, true, nullptr, property.put()), E_INVALIDARG);
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
int makeButtonTable(TestTable& table)
{
    int made = 0;
    const auto add = [&](std::wstring_view groupName,
                         std::initializer_list<std::pair<const wchar_t*, enumPropType>> list) {
        const auto home = table.group(nullptr, nullptr, groupName);
        for (const auto& [name, type] : list) {
            ComPtr<IVexPropBase> property;
            made += createProperty(home.get(), type, name, {}, true, nullptr, property.put()) == S_OK;
        }
    };
    for (const auto* state : {L"Normal", L"Press", L"Disabled", L"Hot", L"Focus", L"Inactive"})
        add(state, {{L"Image", _PROPTYPE_IMAGESECTION},
                    {L"Graphics", _PROPTYPE_IMAGESECTION},
                    {L"TextStyle", _PROPTYPE_TEXTSTYLE}});
    add(L"Text", {{L"Text", _PROPTYPE_STRING}, {L"ShowText", _PROPTYPE_BOOL}});
    add(L"Tooltip", {{L"Tooltip", _PROPTYPE_STRING}});
    add(L"Graphics", {{L"UpDownMode", _PROPTYPE_BOOL},
                      {L"RightAlign", _PROPTYPE_BOOL},
                      {L"x", _PROPTYPE_LONG},
                      {L"y", _PROPTYPE_LONG}});
    add(L"AutoResize", {{L"AutoResize", _PROPTYPE_BOOL},
                        {L"MinTextHeight", _PROPTYPE_LONG},
                        {L"MaxTextHeight", _PROPTYPE_LONG},
                        {L"MaxTextWidth", _PROPTYPE_LONG}});
    add(L"Hotkey", {{L"Hotkey1", _PROPTYPE_HOTKEY},
                    {L"Hotkey2", _PROPTYPE_HOTKEY},
                    {L"IsBackspace", _PROPTYPE_BOOL},
                    {L"IsEnter", _PROPTYPE_BOOL}});
    return made;
}

TEST(PropertyMemoryTest, AButtonsTableFitsInTwoAndAHalfKilobytesAndLeavesNothingBehind)
{
    const long objects = morvane::ModuleLock::count();
    const std::size_t before = blockBytesInUse();
    {
        TestTable table;
        EXPECT_EQ(makeButtonTable(table), 33);
        EXPECT_LE(blockBytesInUse() - before, 2560u);
        RecordProperty("bytes", static_cast<int>(blockBytesInUse() - before));
    }
    EXPECT_EQ(blockBytesInUse(), before);
    EXPECT_EQ(morvane::ModuleLock::count(), objects);
}

} // namespace
} // namespace ambrel
