// One piece of code per control; the reference pages in docs/controls quote the pieces between "// [name]" and "//
// [end]". Runs them all against a window that is not shown, prints what they find, and ends with 0 when it is what the
// pages say.
#include "ambrel/ambrel.h"
#include "controls/control_interfaces.h"
#include "frame/com/bstr.h"
#include "gallery/component_library.h"

#include <cstdio>
#include <string>

using morvane::Bstr;
using morvane::ComPtr;

namespace {

/// A window with its resource object, and the library whose looks its controls wear.
struct Window {
    ComPtr<IVexRes> resources;
    ComPtr<IAmbrel> root;
    HINSTANCE controls;
};

Window makeWindow(HINSTANCE controls)
{
    Window window{{}, {}, controls};
    ComPtr<IDispatch> object;
    VARIANT_BOOL done = VARIANT_FALSE;
    AmbrelCreateRes(window.resources.put());
    window.resources->CreateAmbrel(Bstr(L"Samples").get(), 0, object.put());
    window.root = object.as<IAmbrel>();
    window.root->Create(0, {0, 0, 400, 300}, &done);
    return window;
}

/// A new control with a name of its own, in a parent: the window's root or a form.
template <class Interface>
ComPtr<Interface> addControl(const Window& window, REFCLSID classId, ISkinObjResBase* parent, const wchar_t* name,
                             SkinRect place)
{
    wchar_t id[40] = L"";
    StringFromGUID2(classId, id, 40);
    ComPtr<IVexControlBase> control;
    long changed = 0;
    window.resources->AddPluginResObject(parent, Bstr(name).get(), Bstr(id).get(), control.put());
    if (control)
        control->Resize(&place, &changed);
    return control.as<Interface>();
}

bool check(bool isSo, const char* what)
{
    std::printf("%s: %s\n", what, isSo ? "yes" : "NO");
    return isSo;
}

// [command button]
/// A button that stays down while `isOn`, as in a tool bar.
ComPtr<ICmdButton> addToggle(const Window& window, bool isOn)
{
    const auto button =
        addControl<ICmdButton>(window, __uuidof(CmdButton), window.root.get(), L"Bold", {10, 10, 90, 38});
    AmbrelApplySkin(window.resources.get(), button.get(), window.controls, 2080);
    button->SetText(Bstr(L"&Bold").get());
    button->SetTooltip(Bstr(L"Bold letters").get());
    button->SetButtonState(isOn ? VEX_BTN_PRESS : VEX_BTN_NORMAL); // normal: it follows mouse and focus again
    return button;
}
// [end]

// [check box]
/// Called at each release of the left button on the box, after the value has changed.
VARIANT_BOOL STDMETHODCALLTYPE onToggled(hyper context, long, hyper, hyper)
{
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    reinterpret_cast<IVexCheckBox*>(context)->GetValue(&value);
    std::printf("the box is %s\n", value == VEXCHECKBOX_CHECKED ? "checked" : "not checked");
    return VARIANT_FALSE; // others hear of it too
}

ComPtr<IVexCheckBox> addUpdates(const Window& window)
{
    const auto box =
        addControl<IVexCheckBox>(window, __uuidof(VexCheckBox), window.root.get(), L"Updates", {10, 50, 200, 70});
    AmbrelApplySkin(window.resources.get(), box.get(), window.controls, 2092);
    box->SetText(Bstr(L"Look for &updates").get());
    VARIANT_BOOL added = VARIANT_FALSE;
    box->AddMsgCallback(VEXSM_LBUTTONUP, reinterpret_cast<hyper>(&onToggled), reinterpret_cast<hyper>(box.get()),
                        &added);
    return box;
}
// [end]

// [form object]
/// A plain surface of one colour that other controls are put into.
ComPtr<IUIFormObj> addPanel(const Window& window, OLE_COLOR color)
{
    const auto form =
        addControl<IUIFormObj>(window, __uuidof(UIFormObj), window.root.get(), L"Panel", {0, 80, 400, 300});
    ComPtr<IVexObj> object;
    window.resources->AddResObject(VEXOBJTYPE_GRADIENTCLR, nullptr, Bstr(L"Panel.Fill").get(), VARIANT_FALSE,
                                   object.put());
    const auto fill = object.as<IFillColor>();
    fill->put_clrStart(color);
    fill->put_clrEnd(color); // another one here would make it a gradient
    form->SetBackColor(fill.get());
    form->SetDrawColor(VARIANT_TRUE);
    return form;
}
// [end]

// [radio box]
/// Two boxes of one parent: with the group number left at 0 they belong together.
ComPtr<IRadioBox> addChoice(const Window& window, IUIFormObj& panel)
{
    const auto light = addControl<IRadioBox>(window, __uuidof(RadioBox), &panel, L"Light", {10, 90, 200, 110});
    const auto dark = addControl<IRadioBox>(window, __uuidof(RadioBox), &panel, L"Dark", {10, 120, 200, 140});
    for (const auto& box : {light, dark})
        AmbrelApplySkin(window.resources.get(), box.get(), window.controls, 2086);
    light->SetText(Bstr(L"&Light").get(), VARIANT_TRUE);
    dark->SetText(Bstr(L"&Dark").get(), VARIANT_TRUE);
    light->FinalCreate(VARIANT_TRUE); // showing the window does the same; a box has its group from then on
    dark->FinalCreate(VARIANT_TRUE);
    light->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    dark->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE); // unchecks the other
    return light;
}
// [end]

bool runAll(HINSTANCE controls)
{
    const Window window = makeWindow(controls);
    const auto toggle = addToggle(window, true);
    const auto box = addUpdates(window);
    const auto panel = addPanel(window, 0x00F7F2F1);
    const auto light = addChoice(window, *panel);

    VEX_BUTTONSTATE state = VEX_BTN_NORMAL;
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    VEXRADIOBOX_VALUE lightValue = VEXRADIOBOX_CHECKED;
    ComPtr<IVexRadioGroup> group;
    ComPtr<IRadioBox> chosen;
    Bstr name;
    toggle->GetButtonState(&state);
    long result = 0;
    box->OnLButtonDown(0, 20, 60, &result);
    box->OnLButtonUp(0, 20, 60, &result);
    box->GetValue(&value);
    light->GetValue(&lightValue);
    light->GetGroup(group.put());
    if (group)
        group->GetRadio(chosen.put());
    if (chosen)
        chosen->GetName(name.put());
    const bool right[] = {check(state == VEX_BTN_PRESS, "the toggle is down"),
                          check(value == VEXCHECKBOX_CHECKED, "a click checks the box"),
                          check(lightValue == VEXRADIOBOX_UNCHECKED, "the other radio box is unchecked"),
                          check(name.str() == L"Dark", "the group knows the checked one")};
    return right[0] && right[1] && right[2] && right[3];
}

} // namespace

int main()
{
    if (FAILED(OleInitialize(nullptr)) || FAILED(AmbrelRegisterClasses()))
        return 1;
    const gallery::ComponentLibrary library(
        {__uuidof(CmdButton), __uuidof(VexCheckBox), __uuidof(RadioBox), __uuidof(UIFormObj)});
    return runAll(library.module()) ? 0 : 1;
}
