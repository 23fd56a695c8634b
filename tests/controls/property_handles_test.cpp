// The frame's typed handles on property objects of the runtime, declared into the table of a living control.
#include "ambrel/window/window_fixture.h"
#include "controls/buttons/form_object/form_object.h"
#include "module/loaded_module.h"

#include <limits>
#include <utility>

namespace morvane {
namespace {

enum class Mode { Gif, Frames, Images, Count };

struct EveryHandle {
    ComboProp mode;
    FloatProp ratio;
    IntProp offset;
    ColorProp mask;
    PluginProp files;
    CursorProp cursor;
    HotkeyProp hotkey;
    FontProp font;

    void declare(PropertyTable& table)
    {
        auto group = table.group(L"Tested");
        group.style(mode, L"Mode", Choices{{L"Gif", L"Frames", L"Images"}, 1});
        group.style(ratio, L"Ratio", 0.5f);
        group.style(offset, L"Offset", -3);
        group.style(mask, L"Mask", OLE_COLOR{0x00FF00FF});
        group.style(files, L"Files", 2095);
        group.style(cursor, L"Cursor");
        group.style(hotkey, L"Hotkey1");
        group.style(font, L"Font");
    }
};

/// A control with more properties than it draws, which keeps one of them in range.
class Listening : public CUIFormObj {
public:
    EveryHandle p;
    std::vector<std::string> heard;

protected:
    void declareProperties(PropertyTable& table) override
    {
        CUIFormObj::declareProperties(table);
        p.declare(table);
        heard.clear(); // defaults are told like any change
    }
    Handled onPropertyChanged(IVexPropBase* changed) override
    {
        heard.push_back(p.ratio.is(changed) ? "ratio" : p.mode.is(changed) ? "mode" : "another");
        if (p.ratio.value() > 1)
            p.ratio.set(1);
        return Handled::No;
    }
};

class PropertyHandlesTest : public ambrel::testing::WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        module.factory(iidOf<::VexCheckBox>())->CreateInstance(nullptr, iidOf<IVexCheckBox>(), control.putVoid());
        ASSERT_TRUE(control);
        PropertyTable table(*control);
        p.declare(table);
    }
    void TearDown() override
    {
        p = {};
        control.reset();
        WindowTest::TearDown();
    }

    static std::wstring textOf(IVexPropBase* property)
    {
        ComPtr<IVexPropType> descriptor;
        property->GetPropTypePtr(descriptor.put());
        Bstr text;
        descriptor->get_strValue(text.put());
        return text.str();
    }

    testing::LoadedModule module;
    ComPtr<IVexCheckBox> control;
    EveryHandle p;
};

TEST_F(PropertyHandlesTest, DeclaredDefaultsAreTheValuesOfTheProperties)
{
    EXPECT_EQ(p.mode.selection(), 1);
    EXPECT_EQ(p.mode.choice(Mode::Count, Mode::Gif), Mode::Frames);
    p.mode.select(-1);
    EXPECT_EQ(p.mode.choice(Mode::Count, Mode::Gif), Mode::Gif) << "none is chosen";
    EXPECT_EQ(p.ratio.value(), 0.5f);
    p.ratio.set(std::numeric_limits<float>::infinity());
    EXPECT_EQ(p.ratio.value(), 0.5f);
    EXPECT_EQ(p.offset.value(), -3);
    EXPECT_EQ(p.mask.value(), 0x00FF00FFu);
    EXPECT_EQ(textOf(p.mode.get()), L"-1");
}

TEST_F(PropertyHandlesTest, APlugInPropertyHasItsDialogAndLaterAText)
{
    ComPtr<IVexPropType> descriptor;
    p.files.get()->GetPropTypePtr(descriptor.put());
    long identifier = 0;
    descriptor->get_lPropId(&identifier);
    EXPECT_EQ(identifier, 2095);
    EXPECT_TRUE(p.files.text().empty());
    p.files.setText(L"(3)files");
    EXPECT_EQ(p.files.text().view(), L"(3)files");
    EXPECT_EQ(textOf(p.files.get()), L"(3)files") << "as it is saved";
    descriptor->get_lPropId(&identifier);
    EXPECT_EQ(identifier, 2095);
}

TEST_F(PropertyHandlesTest, ObjectsAreReachedAndReplaced)
{
    const ComPtr<IVexHotkey> key = p.hotkey.object();
    ASSERT_TRUE(key);
    key->put_wVirtualKeyCode('A');
    EXPECT_EQ(textOf(p.hotkey.get()), L"0x00000041");
    p.hotkey.set(nullptr);
    EXPECT_EQ(textOf(p.hotkey.get()), L"");
    EXPECT_FALSE(p.cursor.object());
    EXPECT_FALSE(p.font.object());
}

TEST_F(PropertyHandlesTest, AHandleKnowsItsPropertyByItsAddressAlone)
{
    EXPECT_TRUE(p.ratio.is(p.ratio.get()));
    EXPECT_FALSE(p.ratio.is(p.mode.get()));
    EXPECT_FALSE(p.ratio.is(reinterpret_cast<IVexPropBase*>(-1)));
    EXPECT_FALSE(FloatProp().is(nullptr)) << "an empty handle is nobody's";
}

TEST_F(PropertyHandlesTest, OneHandlerHearsOfEveryPropertyOfTheTable)
{
    using Heard = std::vector<std::string>;
    const auto listening = Instance<Listening>::make();
    ASSERT_EQ(listening->CreateProps(), S_OK);
    EveryHandle& own = listening->p;
    own.ratio.set(0.25f);
    own.ratio.set(0.25f);
    EXPECT_EQ(std::exchange(listening->heard, {}), Heard{"ratio"}) << "the same value is no change";
    own.ratio.set(7);
    EXPECT_EQ(std::exchange(listening->heard, {}), (Heard{"ratio", "ratio"})) << "the control's own answer, too";
    EXPECT_EQ(own.ratio.value(), 1);
    own.mode.select(2);
    own.offset.set(8);
    EXPECT_EQ(std::exchange(listening->heard, {}), (Heard{"mode", "another"}));
    VARIANT quiet;
    VariantInit(&quiet);
    quiet.vt = VT_I4;
    own.mode.get()->SetPrivateValue(quiet);
    EXPECT_EQ(own.mode.selection(), 0);
    EXPECT_EQ(listening->heard, Heard()) << "a skin's values come unsaid";
}

TEST_F(PropertyHandlesTest, EmptyHandlesReadAsNothingAndTakeNothing)
{
    EveryHandle empty;
    empty.ratio.set(1);
    empty.files.setDialog(1);
    empty.files.setText(L"text");
    empty.hotkey.set(nullptr);
    EXPECT_EQ(empty.ratio.value(), 0);
    EXPECT_TRUE(empty.files.text().empty());
    EXPECT_FALSE(empty.hotkey.object());
}

} // namespace
} // namespace morvane
