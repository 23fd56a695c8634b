// The property tables of the selection controls: names and order are the keys of saved skins.
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::Log;

/// What the control itself set.
std::string defaultOf(IVexPropBase* object)
{
    if (const auto* flag = dynamic_cast<testing::BoolObject*>(object); flag && flag->wasSet)
        return " = " + std::to_string(flag->value);
    if (const auto* number = dynamic_cast<testing::LongObject*>(object); number && number->wasSet)
        return " = " + std::to_string(number->value);
    if (const auto* text = dynamic_cast<testing::StringObject*>(object); text && text->wasSet)
        return " = \"" + testing::narrow(text->value) + "\"";
    return "";
}

Log tableOf(const testing::BaseObject& base)
{
    Log rows;
    for (const testing::MadeProperty& property : base.properties)
        rows.push_back(testing::narrow(property.group + L"." + property.name) + " type " +
                       std::to_string(property.type) + (property.isStyle ? " style" : " content") +
                       defaultOf(property.object.get()));
    return rows;
}

struct NamedType {
    const char* name;
    const char* type;
};

/// Rows of every look: each value's states, each state's properties.
void addLooks(Log& rows, std::initializer_list<const char*> values, std::initializer_list<const char*> states,
              std::initializer_list<NamedType> properties)
{
    for (const char* value : values)
        for (const char* state : states)
            for (const auto& [name, type] : properties)
                rows.push_back(std::string(value) + "." + state + "." + name + " type " + type + " style");
}

void add(Log& rows, Log more)
{
    rows.insert(rows.end(), more.begin(), more.end());
}

const Log kAutoResize = {"AutoResize.IsEnableAutoSize type 4 style = 0", "AutoResize.MinTextHeight type 3 style = 14",
                         "AutoResize.MaxTextHeight type 3 style = 0", "AutoResize.MinTextWidth type 3 style = 0",
                         "AutoResize.MaxTextWidth type 3 style = 100"};

class PropertyTablesTest : public testing::ControlsFixture {
protected:
    template <class Interface>
    Log tableOfNew(REFCLSID classId)
    {
        const auto made = create<Interface>(classId, L"one");
        const Log oddities = log();
        EXPECT_EQ(oddities, Log({"real control"})) << "expanded groups, empty help texts, no callbacks";
        return tableOf(*made.base);
    }
};

TEST_F(PropertyTablesTest, CheckBox)
{
    Log expected;
    addLooks(expected, {"Unchecked", "Checked", "HalfChecked"}, {"Normal", "Hot", "Press", "Disabled", "Inactive"},
             {{"Image", "0"}, {"Graphics", "0"}, {"TextStyle", "1"}});
    add(expected,
        {"Text.Text type 6 content = \"CheckBox\"", "Text.ShowText type 4 content = -1",
         "Tooltip.Tooltip type 6 content", "ThreeState.ThreeState type 4 content", "Cursor.Cursor type 10 style",
         "PushButtonLike.Value type 4 style = 0", "Graphics.x type 3 style = 0", "Graphics.y type 3 style = 0"});
    add(expected, kAutoResize);
    add(expected, {"Misc.DisbaleAutoCheck type 4 style", "Misc.AutoChangeThreeState type 4 style = 1"});
    EXPECT_EQ(tableOfNew<IVexCheckBox>(iidOf<::VexCheckBox>()), expected);
}

TEST_F(PropertyTablesTest, RadioBox)
{
    Log expected = {"DrawMode.DrawColor type 4 style = 0"};
    addLooks(expected, {"Unchecked", "Checked"}, {"Normal", "Hot", "Press", "Disabled"},
             {{"Back", "0"}, {"Color", "8"}, {"Box", "0"}, {"Graphics", "0"}, {"TextStyle", "1"}});
    add(expected,
        {"Text.Text type 6 style = \"RadioBox\"", "Text.ShowText type 4 style = -1", "Tooltip.Tooltip type 6 style",
         "Graphics.UpDownMode type 4 style", "Graphics.RightAlign type 4 style", "Graphics.x type 3 style",
         "Graphics.y type 3 style", "Graphics.width type 3 style", "Graphics.height type 3 style",
         "Group.GroupID type 3 style", "Cursor.Cursor type 10 style"});
    add(expected, kAutoResize);
    EXPECT_EQ(tableOfNew<IRadioBox>(iidOf<::RadioBox>()), expected);
}

TEST_F(PropertyTablesTest, FormObject)
{
    EXPECT_EQ(tableOfNew<IUIFormObj>(iidOf<::UIFormObj>()),
              Log({"Back.DrawColor type 4 style", "Back.Image type 0 style", "Back.Color type 13 style",
                   "Misc.DisposeMouse type 4 style"}));
}

} // namespace
} // namespace morvane
