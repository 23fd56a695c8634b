// The selection controls used by keyboard alone, in a real window of the runtime: messages as the system makes them.
#include "ambrel/window/window_fixture.h"
#include "host/typed_properties.h"
#include "module/loaded_module.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

namespace morvane {
namespace {

using ambrel::testing::Log;

constexpr long kButtonSkin = 2080;
constexpr long kCheckBoxSkin = 2092;
constexpr long kRadioBoxSkin = 2086;
constexpr LPARAM kAltHeld = 1 << 29; // of a key message
constexpr LPARAM kWasDown = 1 << 30;
constexpr long kShift = 1; // of a hot key
constexpr long kControl = 2;
constexpr long kAlt = 4;

class KeyboardTest : public ambrel::testing::WindowTest {
protected:
    void TearDown() override
    {
        holdModifiers(0);
        WindowTest::TearDown();
        EXPECT_EQ(module.canUnloadNow(), S_OK);
    }

    template <class Interface>
    ComPtr<Interface> make(REFCLSID classId, const wchar_t* name, long skin, ISkinObjResBase* parent = nullptr)
    {
        ComPtr<Interface> control;
        module.factory(classId)->CreateInstance(nullptr, iidOf<Interface>(), control.putVoid());
        hyper created = 0;
        ISkinObjResBase* const above = parent ? parent : root.get();
        control->CreateObj(reinterpret_cast<hyper>(resources.get()), reinterpret_cast<hyper>(above), VEXOBJTYPE_PLUGIN,
                           VARIANT_FALSE, &created);
        control->SetName(Bstr(name).get());
        SkinRect place{10, m_top, 110, m_top + 20};
        m_top += 20;
        long changed = 0;
        control->Resize(&place, &changed);
        if (skin) {
            EXPECT_EQ(runtime.AmbrelApplySkin()(resources.get(), control.get(), module.handle(), skin), S_OK);
        }
        control->FinalCreate(VARIANT_TRUE);
        taken();
        return control;
    }
    ComPtr<ICmdButton> button(const wchar_t* name, const wchar_t* text = L"")
    {
        auto made = make<ICmdButton>(iidOf<::CmdButton>(), name, kButtonSkin);
        made->SetText(Bstr(text).get());
        return made;
    }
    ComPtr<IVexCheckBox> checkBox(const wchar_t* name, const wchar_t* text = L"")
    {
        auto made = make<IVexCheckBox>(iidOf<::VexCheckBox>(), name, kCheckBoxSkin);
        made->SetText(Bstr(text).get());
        return made;
    }
    ComPtr<IRadioBox> radioBox(const wchar_t* name, long group, ISkinObjResBase* parent = nullptr)
    {
        auto made = make<IRadioBox>(iidOf<::RadioBox>(), name, kRadioBoxSkin, parent);
        VARIANT_BOOL done = VARIANT_FALSE;
        made->SetGroupID(group, &done);
        made->SetText(Bstr(name).get(), VARIANT_TRUE);
        return made;
    }

    /// As a designer or an application does that knows nothing but names.
    static ComPtr<IVexPropBase> property(IVexControlBase& control, std::wstring_view group, std::wstring_view name)
    {
        hyper list = 0;
        control.GetPropList(&list);
        for (auto* each = reinterpret_cast<ICtrlPluginProp**>(list); each && *each; ++each) {
            Bstr groupName;
            long count = 0;
            (*each)->get_strName(groupName.put());
            if (groupName.view() != group)
                continue;
            (*each)->GetPropBaseCount(&count);
            for (long i = 0; i < count; ++i) {
                ComPtr<IVexPropBase> found;
                Bstr foundName;
                (*each)->GetAtPropBase(i, found.put());
                found->GetName(foundName.put());
                if (foundName.view() == name)
                    return found;
            }
        }
        return nullptr;
    }
    static void setFlag(IVexControlBase& control, std::wstring_view name, bool on)
    {
        static_cast<BoolProperty&>(*property(control, L"Hotkey", name)).SetValue(on ? VARIANT_TRUE : VARIANT_FALSE);
    }
    static ComPtr<IVexHotkey> hotKey(IVexControlBase& control, std::wstring_view name, long key, long modifiers)
    {
        ComPtr<IVexHotkey> hotkey;
        static_cast<HotkeyProperty&>(*property(control, L"Hotkey", name)).GetObject(hotkey.put());
        hotkey->put_wVirtualKeyCode(key);
        hotkey->put_wModifiers(modifiers);
        return hotkey;
    }
    static void enable(IVexControlBase& control, bool on)
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        control.EnableObject(on ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_FALSE, &done);
    }
    void focus(IVexControlBase& control)
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        control.SetFocus(&done);
        taken();
    }
    std::string focusName()
    {
        const ComPtr<ISkinObjResBase> object = focused();
        Bstr name;
        if (object)
            object->GetName(name.put());
        std::string text;
        for (const wchar_t c : name.view())
            text += static_cast<char>(c);
        return text;
    }

    /// What GetKeyState answers for the modifiers.
    static void holdModifiers(long held)
    {
        BYTE keys[256] = {};
        const auto down = [](long bit) { return static_cast<BYTE>(bit ? 0x80 : 0); };
        keys[VK_SHIFT] = down(held & kShift);
        keys[VK_CONTROL] = down(held & kControl);
        keys[VK_MENU] = down(held & kAlt);
        SetKeyboardState(keys);
    }
    /// Presses and lets go of a key.
    void type(int key, long modifiers = 0)
    {
        holdModifiers(modifiers);
        const bool isSystem = modifiers == kAlt || modifiers == (kAlt | kShift);
        const LPARAM alt = isSystem ? kAltHeld : 0;
        send(isSystem ? WM_SYSKEYDOWN : WM_KEYDOWN, static_cast<WPARAM>(key), alt);
        send(isSystem ? WM_SYSKEYUP : WM_KEYUP, static_cast<WPARAM>(key), alt | kWasDown);
        holdModifiers(0);
    }
    /// A character with or without Alt, as the keyboard's layout makes it.
    void character(wchar_t c) { send(WM_CHAR, c); }
    void altCharacter(wchar_t c) { send(WM_SYSCHAR, c, kAltHeld); }

    testing::LoadedModule module;

private:
    long m_top = 0;
};

int value(IVexCheckBox& box)
{
    VEXCHECKBOX_VALUE result{};
    box.GetValue(&result);
    return result;
}

std::vector<int> values(std::initializer_list<ComPtr<IRadioBox>> boxes)
{
    std::vector<int> result;
    for (const auto& box : boxes) {
        VEXRADIOBOX_VALUE each{};
        box->GetValue(&each);
        result.push_back(each);
    }
    return result;
}
using Values = std::vector<int>;

const Log kPressed{"a down", "a up"};

TEST_F(KeyboardTest, AHotKeyPropertyPressesItsButtonFromAnywhereWhileItIsShownAndEnabled)
{
    const auto form = make<IUIFormObj>(iidOf<::UIFormObj>(), L"form", 0);
    const auto a = make<ICmdButton>(iidOf<::CmdButton>(), L"a", kButtonSkin, form.get());
    const auto other = checkBox(L"other");
    focus(*other);
    type('S', kControl);
    EXPECT_EQ(taken(), Log()) << "nothing is set yet";
    const auto key = hotKey(*a, L"Hotkey1", 'S', kControl);
    hotKey(*a, L"Hotkey2", VK_F5, 0);
    type('S', kControl);
    EXPECT_EQ(taken(), kPressed);
    type('S', kControl | kShift);
    type('S', kControl | kAlt);
    type('S');
    type(VK_F6);
    EXPECT_EQ(taken(), Log());
    type(VK_F5);
    EXPECT_EQ(taken(), kPressed);
    key->put_wVirtualKeyCode('T'); // whoever holds the key may change it
    type('S', kControl);
    EXPECT_EQ(taken(), Log());
    type('T', kControl);
    EXPECT_EQ(taken(), kPressed);
    EXPECT_EQ(focusName(), "other");

    enable(*form, false);
    taken();
    type('T', kControl);
    EXPECT_EQ(taken(), Log());
    enable(*form, true);
    form->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    taken();
    type('T', kControl);
    EXPECT_EQ(taken(), Log());
    form->SetVisible(VARIANT_TRUE, VARIANT_FALSE, VARIANT_FALSE);
    root->RegisterHotkey(VARIANT_FALSE);
    taken();
    type('T', kControl);
    EXPECT_EQ(taken(), Log());
    root->RegisterHotkey(VARIANT_TRUE);
    type('T', kControl);
    EXPECT_EQ(taken(), kPressed);
}

TEST_F(KeyboardTest, EscapeIsAHotKeyLikeAnyOtherAndWhatWasGivenBySetHotkeyPtrCountsToo)
{
    const auto a = button(L"a");
    const auto b = button(L"b");
    const auto key = hotKey(*a, L"Hotkey1", VK_ESCAPE, 0);
    type(VK_ESCAPE);
    EXPECT_EQ(taken(), kPressed);
    key->put_wVirtualKeyCode(0);
    type(VK_ESCAPE);
    EXPECT_EQ(taken(), Log());
    key->put_wVirtualKeyCode('Q');
    b->SetHotkeyPtr(key.get(), nullptr);
    enable(*a, false);
    taken();
    type('Q');
    EXPECT_EQ(taken(), Log({"b down", "b up"}));
}

TEST_F(KeyboardTest, HotKeysAndTheDefaultButtonMayComeFromTheSkin)
{
    const auto folder = std::filesystem::temp_directory_path() / "morvane_keyboard_test";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "shareres.xml") << "<Ambrel><share/></Ambrel>";
    std::ofstream(folder / "objects.xml")
        << "<Ambrel><SkinInfo Version=\"2.5\"/><Objects><Guid0000000000000000000000000000000A "
           "AddinGuid=\"{9D16F301-CDF1-46B8-B95E-982AF85E06AE}\" Name=\"Save\" Type=\"90000\" "
           "HotkeyHotkey2=\"595\" HotkeyIsEnter=\"1\"/></Objects><SkinCtrls/></Ambrel>";
    const auto a = button(L"a");
    a->SetClassId(Bstr(L"{9D16F301-CDF1-46B8-B95E-982AF85E06AE}").get());
    EXPECT_EQ(runtime.AmbrelApplySkinFile()(resources.get(), a.get(), folder.c_str()), S_OK);
    std::filesystem::remove_all(folder);
    taken();
    type('S', kControl);
    EXPECT_EQ(taken(), kPressed);
    type(VK_RETURN);
    EXPECT_EQ(taken(), kPressed);
}

TEST_F(KeyboardTest, TheObjectIsAskedBeforeItsHotKeyPressesIt)
{
    const auto a = button(L"a");
    hotKey(*a, L"Hotkey1", 'K', kControl | kAlt);
    std::vector<long> asked;
    runtime.AmbrelSetTraceSink()(
        [](void* context, const AmbrelTraceEntry* entry) {
            if (entry->kind == AMBREL_TRACE_NOTIFICATION && entry->id == VEXSM_AMBRELHOTKEY)
                static_cast<std::vector<long>*>(context)->push_back(static_cast<long>(entry->a));
        },
        &asked);
    type('K', kControl | kAlt);
    EXPECT_EQ(asked, std::vector<long>({kControl | kAlt}));
}

TEST_F(KeyboardTest, EnterPressesTheDefaultButtonUnlessAButtonHasTheFocus)
{
    const auto check = checkBox(L"check");
    const auto a = button(L"a");
    const auto b = button(L"b");
    focus(*check);
    type(VK_RETURN);
    EXPECT_EQ(value(*check), 1) << "nobody else wants it";
    setFlag(*a, L"IsEnter", true);
    setFlag(*a, L"IsBackspace", true);
    taken();
    type(VK_RETURN);
    EXPECT_EQ(taken(), kPressed);
    EXPECT_EQ(value(*check), 1);
    type(VK_BACK);
    EXPECT_EQ(taken(), kPressed);
    focus(*b);
    type(VK_RETURN);
    EXPECT_EQ(taken(), Log({"b down", "b up"}));
    setFlag(*a, L"IsEnter", false);
    focus(*check);
    b->SetBackEnterHotkey(VARIANT_FALSE, VARIANT_TRUE);
    type(VK_RETURN);
    EXPECT_EQ(taken(), Log({"b down", "b up"}));
}

TEST_F(KeyboardTest, AnAccessKeyTogglesChecksAndPressesAndBringsTheFocus)
{
    const auto check = checkBox(L"check", L"&Updates");
    const auto a = button(L"a", L"Öff&nen && schließen");
    const auto local = button(L"local", L"&Ändern");
    const auto first = radioBox(L"first", 3);
    const auto second = radioBox(L"second", 3);
    second->SetText(Bstr(L"&Second").get(), VARIANT_TRUE);
    altCharacter(L'u');
    EXPECT_EQ(value(*check), 1);
    EXPECT_EQ(focusName(), "check");
    character(L'U');
    EXPECT_EQ(value(*check), 0);
    altCharacter(L's');
    EXPECT_EQ(values({first, second}), Values({0, 1}));
    EXPECT_EQ(focusName(), "second");
    taken();
    character(L'n');
    EXPECT_EQ(taken(), Log({"second blur", "a focus", "a down", "a up"}));
    altCharacter(L'ä');
    EXPECT_EQ(focusName(), "local");
}

TEST_F(KeyboardTest, OnlyWhatIsShownUnderlinedIsAnAccessKey)
{
    const auto check = checkBox(L"check", L"&Updates");
    const auto a = button(L"a", L"&Go");
    const auto bare = make<ICmdButton>(iidOf<::CmdButton>(), L"bare", 0);
    bare->SetText(Bstr(L"&Bare").get());
    check->ShowText(VARIANT_FALSE);
    ComPtr<IVexTextStyle> style;
    a->GetBackTextStyle(VEX_BTN_NORMAL, style.put());
    ASSERT_TRUE(style);
    style->put_bHotkeyPrefixShow(VARIANT_FALSE);
    for (const wchar_t c : {L'u', L'g', L'b'})
        altCharacter(c);
    EXPECT_EQ(taken(), Log());
    check->ShowText(VARIANT_TRUE);
    style->put_bHotkeyPrefixShow(VARIANT_TRUE);
    character(L'u');
    character(L'g');
    EXPECT_EQ(value(*check), 1);
    EXPECT_EQ(focusName(), "a");
    enable(*check, false);
    character(L'u');
    EXPECT_EQ(value(*check), 1);
}

TEST_F(KeyboardTest, OfSeveralWithOneAccessKeyTheFocusGoesRoundWithoutPressing)
{
    const auto one = checkBox(L"one", L"&Same");
    const auto two = checkBox(L"two", L"&Same");
    const auto three = checkBox(L"three", L"&Same");
    enable(*two, false);
    std::string order;
    for (int i = 0; i < 3; ++i) {
        altCharacter(L's');
        order += focusName() + ' ';
    }
    EXPECT_EQ(order, "one three one ");
    EXPECT_EQ(value(*one) + value(*three), 0);
}

TEST_F(KeyboardTest, AnObjectThatTakesKeysIsWrittenInNotPressed)
{
    const auto a = button(L"a", L"&Go");
    IVexControlBase* const editor = add(L"editor", {10, 150, 110, 170});
    VARIANT_BOOL done = VARIANT_FALSE;
    root->RegisterMessage(WM_CHAR, editor, VARIANT_FALSE, &done);
    hotKey(*a, L"Hotkey1", 'X', 0);
    focus(*editor);
    character(L'g');
    type('X');
    EXPECT_EQ(taken(), Log({"editor WM_CHAR"}));
    altCharacter(L'g');
    EXPECT_EQ(taken(), Log({"editor blur", "a focus", "a down", "a up"}));
    type('X');
    EXPECT_EQ(taken(), kPressed);
}

TEST_F(KeyboardTest, ArrowsChooseInTheirGroupAndTabStopsThereOnce)
{
    const auto before = button(L"before");
    const auto form = make<IUIFormObj>(iidOf<::UIFormObj>(), L"form", 0);
    SkinRect place{0, 0, 200, 200};
    long changed = 0;
    form->Resize(&place, &changed);
    const auto one = radioBox(L"one", 0, form.get());
    const auto two = radioBox(L"two", 0, form.get());
    const auto three = radioBox(L"three", 0, form.get());
    const auto apart = radioBox(L"apart", 9);
    focus(*before);
    type(VK_TAB);
    EXPECT_EQ(focusName(), "one") << "nothing is chosen yet";
    type(VK_DOWN);
    EXPECT_EQ(values({one, two, three, apart}), Values({0, 1, 0, 0}));
    EXPECT_EQ(focusName(), "two");
    type(VK_TAB);
    EXPECT_EQ(focusName(), "apart");
    type(VK_TAB, kShift);
    EXPECT_EQ(focusName(), "two");
    enable(*three, false);
    type(VK_RIGHT);
    EXPECT_EQ(values({one, two, three}), Values({1, 0, 0})) << "round, past what is disabled";
    enable(*three, true);
    type(VK_LEFT);
    EXPECT_EQ(values({one, two, three}), Values({0, 0, 1}));
    two->SetValue(VEXRADIOBOX_CHECKED, VARIANT_FALSE); // by the application
    focus(*before);
    type(VK_TAB);
    EXPECT_EQ(focusName(), "two");
    focus(*before);
    taken();
    type(VK_DOWN);
    EXPECT_EQ(taken(), Log());
}

TEST_F(KeyboardTest, AUsedKeyLeavesNoCharacterNorOpensTheWindowMenu)
{
    const auto a = button(L"a", L"&Go");
    IVexControlBase* const editor = add(L"editor", {10, 150, 110, 170});
    VARIANT_BOOL done = VARIANT_FALSE;
    root->RegisterMessage(WM_CHAR, editor, VARIANT_FALSE, &done);
    focus(*a);
    holdModifiers(0);
    send(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(focusName(), "editor");
    send(WM_CHAR, VK_TAB);
    EXPECT_EQ(taken(), Log({"a blur", "editor focus"})) << "the tab is not written";
    send(WM_KEYUP, VK_TAB, kWasDown);
    send(WM_CHAR, L'x');
    EXPECT_EQ(taken(), Log({"editor WM_CHAR"}));

    static int s_menus = 0;
    s_menus = 0;
    static WNDPROC s_default = nullptr;
    s_default = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC,
                          reinterpret_cast<LONG_PTR>(+[](HWND w, UINT message, WPARAM command, LPARAM key) -> LRESULT {
                              const LRESULT result = CallWindowProcW(s_default, w, message, command, key);
                              if (message == WM_INITMENU) {
                                  ++s_menus;
                                  PostMessageW(w, WM_KEYDOWN, VK_ESCAPE, 0); // out of its loop again
                              }
                              return result;
                          })));
    // Alt, a hot key or an access key, and Alt up again first: the window menu stays away.
    hotKey(*a, L"Hotkey1", 'K', kAlt);
    for (const WPARAM key : {'K', 'G'}) {
        holdModifiers(kAlt);
        send(WM_SYSKEYDOWN, VK_MENU, kAltHeld);
        send(WM_SYSKEYDOWN, key, kAltHeld);
        altCharacter(static_cast<wchar_t>(key));
        holdModifiers(0);
        send(WM_KEYUP, VK_MENU, kWasDown);
        send(WM_KEYUP, key, kWasDown);
    }
    EXPECT_EQ(s_menus, 0);
    EXPECT_EQ(focusName(), "a");
}

TEST_F(KeyboardTest, SpaceLetsGoAlsoWhenAltWasPressedMeanwhile)
{
    const auto a = button(L"a");
    focus(*a);
    send(WM_KEYDOWN, VK_SPACE);
    send(WM_SYSKEYUP, VK_SPACE, kAltHeld | kWasDown);
    EXPECT_EQ(taken(), kPressed);
}

TEST_F(KeyboardTest, AKeyThatMeansNothingCostsLittleAmongThousands)
{
    std::vector<ComPtr<ICmdButton>> buttons;
    for (int i = 0; i < 2000; ++i)
        buttons.push_back(make<ICmdButton>(iidOf<::CmdButton>(), L"a", 0));
    focus(*buttons.front());
    const auto start = std::chrono::steady_clock::now();
    constexpr int kTimes = 20;
    for (int i = 0; i < kTimes; ++i)
        type('Q', kControl);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    RecordProperty("microsecondsPerKey", static_cast<int>(took.count() / kTimes));
    EXPECT_LT(took.count() / kTimes, 20'000) << "microseconds a key";
}

} // namespace
} // namespace morvane
