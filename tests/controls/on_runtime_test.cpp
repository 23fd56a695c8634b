// The selection controls in a real window of the runtime: posted mouse messages, drawing, messages to the window.
#include "ambrel/window/window_fixture.h"
#include "module/loaded_module.h"

#include <algorithm>

namespace morvane {
namespace {

using Picture = std::vector<std::uint32_t>;
using Values = std::vector<int>;

constexpr long kCheckBoxSkin = 2092;
constexpr long kRadioBoxSkin = 2086;
constexpr UINT kGroupSelectionChanged = 3025;
constexpr SIZE kWindow{300, 200};

class SelectionControlsTest : public ambrel::testing::WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        s_test = this;
        m_procedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SelectionControlsTest::procedure)));
    }
    void TearDown() override
    {
        onSelection = nullptr;
        WindowTest::TearDown();
        EXPECT_EQ(module.canUnloadNow(), S_OK);
    }

    /// A finished control with the library's own look.
    template <class Interface>
    ComPtr<Interface> make(REFCLSID classId, const wchar_t* name, SkinRect rect, long skin = 0)
    {
        ComPtr<Interface> control;
        module.factory(classId)->CreateInstance(nullptr, iidOf<Interface>(), control.putVoid());
        hyper created = 0;
        EXPECT_EQ(control->CreateObj(reinterpret_cast<hyper>(resources.get()), reinterpret_cast<hyper>(root.get()),
                                     VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created),
                  S_OK);
        control->SetName(Bstr(name).get());
        long changed = 0;
        control->Resize(&rect, &changed);
        if (skin != 0) {
            EXPECT_EQ(runtime.AmbrelApplySkin()(resources.get(), control.get(), module.handle(), skin), S_OK);
        }
        control->FinalCreate(VARIANT_TRUE);
        return control;
    }
    ComPtr<IVexCheckBox> makeCheckBox()
    {
        return make<IVexCheckBox>(iidOf<::VexCheckBox>(), L"check", kCheckPlace, kCheckBoxSkin);
    }
    ComPtr<IRadioBox> makeRadioBox(const wchar_t* name, long top)
    {
        return make<IRadioBox>(iidOf<::RadioBox>(), name, {10, top, 110, top + 24}, kRadioBoxSkin);
    }

    /// As the system delivers a click: through the queue.
    void clickAt(int x, int y)
    {
        PostMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
        PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        pass(5000); // the next click is one of its own
    }

    Picture picture()
    {
        Picture pixels(kWindow.cx * kWindow.cy);
        EXPECT_EQ(runtime.AmbrelRenderWindow()(root.get(), kWindow.cx, kWindow.cy, pixels.data()), S_OK);
        return pixels;
    }
    /// Whether pictures differ inside the rectangle and nowhere else.
    static bool differOnlyIn(const SkinRect& r, const Picture& a, const Picture& b)
    {
        bool differInside = false;
        for (long i = 0; i < kWindow.cx * kWindow.cy; ++i) {
            const long x = i % kWindow.cx;
            const long y = i / kWindow.cx;
            const bool isInside = x >= r.left && x < r.right && y >= r.top && y < r.bottom;
            if (a[i] != b[i] && !isInside)
                return false;
            differInside |= a[i] != b[i];
        }
        return differInside;
    }

    static constexpr SkinRect kCheckPlace{10, 10, 130, 34};
    testing::LoadedModule module;
    std::function<void(IRadioBox&)> onSelection; // what the application's window does
    std::vector<long> toldGroups;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == kGroupSelectionChanged) {
            s_test->toldGroups.push_back(static_cast<long>(wParam));
            if (s_test->onSelection)
                s_test->onSelection(*reinterpret_cast<IRadioBox*>(lParam));
        }
        return CallWindowProcW(s_test->m_procedure, window, message, wParam, lParam);
    }

    static inline SelectionControlsTest* s_test = nullptr;
    WNDPROC m_procedure = nullptr;
};

template <class Box>
int value(const ComPtr<Box>& box)
{
    VEXCHECKBOX_VALUE result{};
    box->GetValue(&result);
    return result;
}

int value(const ComPtr<IRadioBox>& box)
{
    VEXRADIOBOX_VALUE result{};
    box->GetValue(&result);
    return result;
}

TEST_F(SelectionControlsTest, ClicksCycleACheckBoxThroughItsValues)
{
    const auto box = makeCheckBox();
    Values values;
    for (int i = 0; i < 2; ++i) {
        clickAt(15, 20);
        values.push_back(value(box));
    }
    box->SetThreeState(VARIANT_TRUE);
    for (int i = 0; i < 3; ++i) {
        clickAt(15, 20);
        values.push_back(value(box));
    }
    EXPECT_EQ(values, Values({1, 0, 1, 2, 0}));
    clickAt(200, 150);
    EXPECT_EQ(value(box), 0) << "a click beside it";
}

TEST_F(SelectionControlsTest, ADisabledCheckBoxTakesNoClicks)
{
    const auto box = makeCheckBox();
    VARIANT_BOOL done = VARIANT_FALSE;
    box->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    clickAt(15, 20);
    EXPECT_EQ(value(box), 0);
}

TEST_F(SelectionControlsTest, ACheckedBoxLooksDifferentInItsOwnPlaceOnly)
{
    const auto box = makeCheckBox();
    const Picture unchecked = picture();
    box->SetValue(VEXCHECKBOX_CHECKED);
    const Picture checked = picture();
    EXPECT_TRUE(differOnlyIn({10, 10, 34, 34}, unchecked, checked)) << "the box itself";
    box->SetValue(VEXCHECKBOX_UNCHECKED);
    EXPECT_EQ(picture(), unchecked);
    box->SetText(Bstr(L"Another text").get());
    EXPECT_TRUE(differOnlyIn(kCheckPlace, unchecked, picture()));
    box->ShowText(VARIANT_FALSE);
    box->MirrorObject(VARIANT_TRUE);
    EXPECT_TRUE(differOnlyIn(kCheckPlace, unchecked, picture()));
}

TEST_F(SelectionControlsTest, OfThreeRadioBoxesTheClickedOneIsCheckedAndTheWindowHears)
{
    const auto first = makeRadioBox(L"first", 10);
    const auto second = makeRadioBox(L"second", 40);
    const auto third = makeRadioBox(L"third", 70);
    const Picture before = picture();
    clickAt(15, 20);
    clickAt(15, 80);
    clickAt(15, 80);
    clickAt(200, 150); // the pointer goes away
    EXPECT_EQ(Values({value(first), value(second), value(third)}), Values({0, 0, 1}));
    ComPtr<IVexRadioGroup> group;
    long number = 0;
    first->GetGroup(group.put());
    ASSERT_NE(group, nullptr);
    group->GetID(&number);
    EXPECT_EQ(toldGroups, std::vector<long>({number, number})) << "the third click changed nothing";
    EXPECT_TRUE(differOnlyIn({10, 70, 110, 94}, before, picture())) << "the first box looks as it did";
}

TEST_F(SelectionControlsTest, TheWindowMayTakeTheOtherBoxesAwayWhenItHearsOfASelection)
{
    auto first = makeRadioBox(L"first", 10);
    auto second = makeRadioBox(L"second", 40);
    clickAt(15, 20);
    onSelection = [&](IRadioBox&) {
        VARIANT_BOOL done = VARIANT_FALSE;
        first->Remove(&done);
        first.reset();
    };
    clickAt(15, 50);
    EXPECT_EQ(value(second), 1);
    clickAt(15, 20);
    EXPECT_EQ(toldGroups.size(), 2u) << "nobody is there any more";
}

TEST_F(SelectionControlsTest, WhatAClassSaysOfItselfComesThroughTheBaseObject)
{
    const auto box = makeCheckBox();
    Bstr text[4];
    EXPECT_EQ(box->GetControlTypeName(text[0].put()), S_OK);
    EXPECT_EQ(text[0].view(), L"CheckBox");
    EXPECT_EQ(box->GetCategoryName(text[0].put()), S_OK);
    EXPECT_EQ(text[0].view(), L"MorvaneControls");
    EXPECT_EQ(box->GetAuthorInfo(text[0].put(), text[1].put(), text[2].put(), text[3].put()), S_OK);
    EXPECT_EQ(text[0].view(), L"Brellin");
    EXPECT_EQ(text[1].view(), L"Halvard Software Co,Ltd.");
    EXPECT_EQ(text[3].view(), L"1.0.0");
    hyper icon = 0;
    hyper cursor = 0;
    EXPECT_EQ(box->GetControlIcon(32, 32, &icon), S_OK);
    EXPECT_TRUE(DestroyIcon(reinterpret_cast<HICON>(icon)));
    EXPECT_EQ(box->GetDragCursor(&cursor), S_OK);
    EXPECT_NE(cursor, 0);
}

TEST_F(SelectionControlsTest, ADefaultSkinLeavesWhatItDoesNotNameAtTheControlsDefaults)
{
    const auto button = make<ICmdButton>(iidOf<::CmdButton>(), L"button", {150, 10, 250, 34}, 2080);
    const auto box = makeCheckBox();
    long limit = 0;
    EXPECT_EQ(button->GetMaxWidth(&limit), S_OK);
    EXPECT_EQ(limit, 100);
    EXPECT_EQ(button->GetMinHeight(&limit), S_OK);
    EXPECT_EQ(limit, 14);
    box->SetThreeState(VARIANT_TRUE);
    box->SetValue(VEXCHECKBOX_CHECKED);
    clickAt(15, 20);
    EXPECT_EQ(value(box), VEXCHECKBOX_HALFCHECKED) << "clicks reach it by default";
}

TEST_F(SelectionControlsTest, AFormShowsItsColourBehindItsChildren)
{
    const auto form = make<IUIFormObj>(iidOf<::UIFormObj>(), L"form", {0, 0, 150, 100});
    ComPtr<IFillColor> fill;
    ComPtr<IVexObj> made;
    resources->AddResObject(VEXOBJTYPE_GRADIENTCLR, nullptr, Bstr(L"sea").get(), VARIANT_FALSE, made.put());
    fill = made.as<IFillColor>();
    ASSERT_NE(fill, nullptr);
    fill->put_clrStart(RGB(0, 64, 128));
    fill->put_clrEnd(RGB(0, 64, 128));
    form->SetBackColor(fill.get());
    form->SetDrawColor(VARIANT_TRUE);
    const Picture pixels = picture();
    EXPECT_EQ(pixels[0], 0xFF004080u);
    EXPECT_EQ(pixels[99 * kWindow.cx + 149], 0xFF004080u);
    EXPECT_NE(pixels[99 * kWindow.cx + 150], 0xFF004080u);
    EXPECT_NE(pixels[100 * kWindow.cx], 0xFF004080u);
}

} // namespace
} // namespace morvane
