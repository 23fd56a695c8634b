// The property table of the command button: its names and their order are the keys of saved skins.
#include "tests/frame/control_fixture.h"

#include <array>
#include <variant>

namespace morvane {
namespace {

using testing::BoolObject;
using testing::LongObject;
using testing::StringObject;

struct NoDefault {
    friend bool operator==(NoDefault, NoDefault) = default;
};
using Default = std::variant<NoDefault, bool, long, std::wstring>;

struct Row {
    std::wstring group;
    std::wstring name;
    enumPropType type;
    bool isStyle;
    Default initial;

    friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << ::testing::PrintToString(row.group) << "." << ::testing::PrintToString(row.name) << " type " << row.type
         << (row.isStyle ? " style" : " content") << " default kind " << row.initial.index();
}

const Default kNone = NoDefault{};

const std::vector<Row> kTable = {
    {L"Normal", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Normal", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Normal", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Press", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Press", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Press", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Disabled", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Disabled", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Disabled", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Hot", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Hot", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Hot", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Focus", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Focus", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Focus", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Inactive", L"Image", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Inactive", L"Graphics", _PROPTYPE_IMAGESECTION, true, kNone},
    {L"Inactive", L"TextStyle", _PROPTYPE_TEXTSTYLE, true, kNone},
    {L"Text", L"Text", _PROPTYPE_STRING, false, std::wstring(L"PushButton")},
    {L"Text", L"ShowText", _PROPTYPE_BOOL, false, true},
    {L"Tooltip", L"Tooltip", _PROPTYPE_STRING, false, std::wstring()},
    {L"Graphics", L"UpDownMode", _PROPTYPE_BOOL, true, kNone},
    {L"Graphics", L"RightAlign", _PROPTYPE_BOOL, true, kNone},
    {L"Graphics", L"x", _PROPTYPE_LONG, true, 0L},
    {L"Graphics", L"y", _PROPTYPE_LONG, true, 0L},
    {L"AutoResize", L"IsEnableAutoSize", _PROPTYPE_BOOL, true, false},
    {L"AutoResize", L"MinTextHeight", _PROPTYPE_LONG, true, 14L},
    {L"AutoResize", L"MaxTextHeight", _PROPTYPE_LONG, true, 0L},
    {L"AutoResize", L"MinTextWidth", _PROPTYPE_LONG, true, 0L},
    {L"AutoResize", L"MaxTextWidth", _PROPTYPE_LONG, true, 100L},
    {L"Hotkey", L"Hotkey1", _PROPTYPE_HOTKEY, true, kNone},
    {L"Hotkey", L"Hotkey2", _PROPTYPE_HOTKEY, true, kNone},
    {L"Hotkey", L"IsBackspace", _PROPTYPE_BOOL, true, kNone},
    {L"Hotkey", L"IsEnter", _PROPTYPE_BOOL, true, kNone},
    {L"Cursor", L"Cursor", _PROPTYPE_CURSOR, true, kNone},
};

const std::vector<std::wstring> kGroups = {L"Normal", L"Press",   L"Disabled", L"Hot",        L"Focus",  L"Inactive",
                                           L"Text",   L"Tooltip", L"Graphics", L"AutoResize", L"Hotkey", L"Cursor"};

/// What the control itself set.
Default defaultOf(IVexPropBase* object)
{
    if (const auto* flag = dynamic_cast<BoolObject*>(object); flag && flag->wasSet)
        return flag->value == VARIANT_TRUE;
    if (const auto* number = dynamic_cast<LongObject*>(object); number && number->wasSet)
        return number->value;
    if (const auto* text = dynamic_cast<StringObject*>(object); text && text->wasSet)
        return text->value;
    return NoDefault{};
}

class PropertyTableTest : public testing::ControlFixture {
protected:
    void SetUp() override
    {
        createButton();
        log();
    }

    std::vector<Row> made()
    {
        std::vector<Row> result;
        for (const testing::MadeProperty& property : host.base().properties)
            result.push_back(
                {property.group, property.name, property.type, property.isStyle, defaultOf(property.object.get())});
        return result;
    }
};

TEST_F(PropertyTableTest, HasTheGroupsPropertiesAndDefaultsThatSavedSkinsName)
{
    EXPECT_EQ(button->CreateProps(), S_OK);
    EXPECT_EQ(host.base().groups, kGroups);
    EXPECT_EQ(made(), kTable);
    EXPECT_EQ(log(), testing::Log()) << "expanded groups, empty help texts, no callbacks";
}

TEST_F(PropertyTableTest, GroupsAreTheHostsToKeep)
{
    button->CreateProps();
    for (const std::string& alive : host.ledger.alive())
        EXPECT_EQ(alive.find("Group"), std::string::npos) << alive;
    EXPECT_EQ(host.base().properties.front().object.get(),
              host.base().find<testing::ImageSectionObject>(L"Normal", L"Image"));
}

TEST_F(PropertyTableTest, MakingTheTableAgainUsesTheNewProperties)
{
    button->CreateProps();
    auto* const first = host.base().find<StringObject>(L"Text", L"Text");
    host.base().properties.clear();
    EXPECT_EQ(first->references(), 1u) << "the control's handle";
    button->CreateProps();
    EXPECT_EQ(made(), kTable);
    EXPECT_EQ(first->references(), 0u);
    button->SetText(Bstr(L"new").get());
    EXPECT_EQ(host.base().find<StringObject>(L"Text", L"Text")->value, L"new");
}

TEST_F(PropertyTableTest, ATableThatBreaksOffAnywhereLeavesAControlThatWorksAsFarAsItGoes)
{
    const auto dc = host.ledger.make<testing::RenderDc>();
    for (std::size_t allowed = 0; allowed < kTable.size(); ++allowed) {
        createButton();
        host.base().propertiesAllowed = allowed;
        EXPECT_EQ(button->CreateProps(), S_OK);
        EXPECT_EQ(host.base().properties.size(), allowed);
        host.attach();
        notify(VEXSM_FINALCREATE);
        point(VEXSM_MOUSEENTER, 1, 1);
        notify(VEXSM_SIZE);
        VARIANT_BOOL drawn = VARIANT_FALSE;
        short length = 0;
        Bstr text;
        EXPECT_EQ(button->RenderDrawObject(dc.get(), SkinRect{}, &drawn), S_OK);
        EXPECT_EQ(button->SetText(Bstr(L"x").get()), S_OK);
        EXPECT_EQ(button->GetText(text.put()), S_OK);
        EXPECT_EQ(button->GetTextLength(&length), S_FALSE) << "there is no text style";
        EXPECT_EQ(button->ShowText(VARIANT_TRUE), allowed > 19 ? S_OK : S_FALSE);
        EXPECT_EQ(button->SetGraphicOffset(1, 2), allowed > 24 ? S_OK : S_FALSE);
        notify(VEXSM_DESTROYING);
    }
}

TEST_F(PropertyTableTest, ValuesAreReadFromTheHostEachTime)
{
    button->CreateProps();
    auto* const shown = host.base().find<BoolObject>(L"Text", L"ShowText");
    VARIANT_BOOL result = VARIANT_TRUE;
    shown->value = VARIANT_FALSE;
    EXPECT_EQ(button->IsShowText(&result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    shown->value = 7; // an application may store any bits
    EXPECT_EQ(button->IsShowText(&result), S_OK);
    EXPECT_EQ(result, 7);
}

TEST_F(PropertyTableTest, DrawingUsesTheDocumentedPositionsOnly)
{
    button->CreateProps();
    host.attach();
    notify(VEXSM_FINALCREATE);
    log();
    const auto dc = host.ledger.make<testing::RenderDc>();
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(button->RenderDrawObject(dc.get(), SkinRect{1, 2, 3, 4}, &drawn), S_OK);
    EXPECT_EQ(log(), testing::Log({"draw Normal.Image 10,20,110,60 #0",
                                   "draw Normal.TextStyle 10,20,110,60 \"PushButton\"", "draw focus"}));
    notify(VEXSM_DESTROYING);
}

} // namespace
} // namespace morvane
