// Hot keys among many objects: those that have none are not asked at each key, and nobody who gets one is overlooked.
#include "ambrel/properties/hotkey.h"
#include "ambrel/window/host_fixture.h"
#include "host/typed_properties.h"

#include <array>

namespace ambrel::testing {
namespace {

int g_asked = 0;

/// Counts how often it is asked for its hot keys.
class AskedControl : public TestControl {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;
    STDMETHODIMP GetHotkeyPtr(IVexHotkey** first, IVexHotkey** second) noexcept override
    {
        ++g_asked;
        return TestControl::GetHotkeyPtr(first, second);
    }
};

class HotKeyTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        words = {{VEXSM_LBUTTONDOWN, "down"}};
        a = add("a", {0, 0, 100, 50});
        b = add("b", {100, 0, 200, 50});
        group = makeGroup(*a, L"Hotkey");
        property = makeProperty(*a, *group.get());
        pressKey(); // nobody has it; both are known to have none from here on
    }
    void TearDown() override
    {
        property = {};
        group.reset();
        HostTest::TearDown();
    }

    static ComPtr<ICtrlPluginProp> makeGroup(IVexControlBase& control, const wchar_t* name)
    {
        ComPtr<ICtrlPluginProp> made;
        control.CreateGroupProp(nullptr, Bstr(name).get(), VARIANT_TRUE, made.put());
        return made;
    }
    static ComPtr<IVexPropBase> makeProperty(IVexControlBase& control, ICtrlPluginProp& in)
    {
        ComPtr<IVexPropBase> made;
        control.CreateProp(&in, _PROPTYPE_HOTKEY, Bstr(L"Hotkey1").get(), Bstr(L"").get(), VARIANT_FALSE, nullptr,
                           made.put());
        return made;
    }
    static morvane::HotkeyProperty& typed(IVexPropBase* of) { return *static_cast<morvane::HotkeyProperty*>(of); }
    static ComPtr<IVexHotkey> keyOf(IVexPropBase* of)
    {
        ComPtr<IVexHotkey> key;
        typed(of).GetObject(key.put());
        return key;
    }
    static ComPtr<IVexHotkey> f9()
    {
        ComPtr<IVexHotkey> key = Hotkey::create();
        key->put_wVirtualKeyCode(VK_F9);
        return key;
    }

    Log pressKey()
    {
        taken();
        send(WM_KEYDOWN, VK_F9);
        return taken();
    }

    TestControl* a = nullptr;
    TestControl* b = nullptr;
    ComPtr<ICtrlPluginProp> group;
    ComPtr<IVexPropBase> property;
};

TEST_F(HotKeyTest, ObjectsWithoutHotKeysAreAskedOnce)
{
    const ComPtr<TestControl> asked = morvane::Instance<AskedControl>::make();
    asked->enter(root.get(), {0, 50, 100, 100});
    g_asked = 0;
    pressKey();
    EXPECT_GT(g_asked, 0);
    g_asked = 0;
    EXPECT_EQ(pressKey(), Log());
    EXPECT_EQ(g_asked, 0);
    controls.push_back(asked);
}

TEST_F(HotKeyTest, WhoeverComesToAHotKeyIsPressedByIt)
{
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"in the property's own object", [&] { keyOf(property.get())->put_wVirtualKeyCode(VK_F9); }},
        {"as the property's object", [&] { typed(property.get()).SetObject(f9().get()); }},
        {"beside the properties", [&] { a->SetHotkeyPtr(nullptr, f9().get()); }},
        {"in a group of another name",
         [&] {
             group->put_strName(Bstr(L"Keys").get());
             keyOf(property.get())->put_wVirtualKeyCode(VK_F9);
             EXPECT_EQ(pressKey(), Log());
             group->put_strName(Bstr(L"Hotkey").get());
         }},
    };
    for (const auto& [how, give] : ways) {
        give();
        EXPECT_EQ(pressKey(), Log({"a down"})) << how;
        a->SetHotkeyPtr(nullptr, nullptr);
        typed(property.get()).SetObject(nullptr);
        EXPECT_EQ(pressKey(), Log()) << how;
    }
}

TEST_F(HotKeyTest, AHotKeyThatSomebodyHoldsMayChangeWithoutNotice)
{
    const ComPtr<IVexHotkey> key = keyOf(property.get());
    EXPECT_EQ(pressKey(), Log());
    key->put_wVirtualKeyCode(VK_F9);
    EXPECT_EQ(pressKey(), Log({"a down"}));
}

TEST_F(HotKeyTest, APropertyOrGroupThatComesWithAHotKeyIsSeen)
{
    keyOf(property.get())->put_wVirtualKeyCode(VK_F9);
    ComPtr<ICtrlPluginProp> other = makeGroup(*b, L"Hotkey");
    EXPECT_EQ(pressKey(), Log({"a down"}));
    group->RemovePropBase(property.get());
    EXPECT_EQ(pressKey(), Log());
    other->AddPropBase(property.get());
    EXPECT_EQ(pressKey(), Log({"b down"}));
    TestControl* const c = add("c", {0, 100, 100, 150});
    b->Remove(std::array<VARIANT_BOOL, 1>().data());
    EXPECT_EQ(pressKey(), Log());
    c->AddProp(other.get());
    EXPECT_EQ(pressKey(), Log({"c down"}));
}

TEST_F(HotKeyTest, AnObjectBringsItsHotKeyIntoAnotherWindow)
{
    const ComPtr<IAmbrel> second = open(L"Second", {500, 100, 600, 200});
    TestControl* const moving = add("moving", {0, 0, 50, 50}, second.get());
    const auto pressThere = [&] { SendMessageW(windowOf(second.get()), WM_KEYDOWN, VK_F9, 0); };
    const ComPtr<ICtrlPluginProp> keys = makeGroup(*moving, L"Hotkey");
    const ComPtr<IVexPropBase> its = makeProperty(*moving, *keys.get());
    pressThere(); // without one there
    keyOf(its.get())->put_wVirtualKeyCode(VK_F9);
    EXPECT_EQ(pressKey(), Log()); // this window has looked again, that one not
    VARIANT_BOOL done = VARIANT_FALSE;
    root->AddSubObject(moving, VARIANT_FALSE, &done);
    EXPECT_EQ(pressKey(), Log({"moving down"}));
    DestroyWindow(windowOf(second.get()));
}

TEST_F(HotKeyTest, OfSeveralTheFirstThatIsShownIsPressed)
{
    a->SetHotkeyPtr(f9().get(), nullptr);
    b->SetHotkeyPtr(f9().get(), nullptr);
    EXPECT_EQ(pressKey(), Log({"a down"}));
    a->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    EXPECT_EQ(pressKey(), Log({"b down"}));
    a->SetVisible(VARIANT_TRUE, VARIANT_FALSE, VARIANT_FALSE);
    EXPECT_EQ(pressKey(), Log({"a down"}));
}

} // namespace
} // namespace ambrel::testing
