// The smallest application: a window with a button that counts how often it was pressed.
// Nothing is registered: Morvane.dll and Ambrel.dll lie beside the program. samples/README.md says how to build it.
#include "ambrel/ambrel.h"
#include "controls/control_interfaces.h"
#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"

#include <cstdio>

using morvane::Bstr;
using morvane::ComPtr;

namespace {

constexpr long kButtonSkin = 2080; // the look of buttons that Morvane.dll carries

/// Runs at each release of the left button on the control; `context` is the button. True keeps the event from others.
VARIANT_BOOL STDMETHODCALLTYPE onPressed(hyper context, long, hyper, hyper)
{
    static int count = 0;
    const std::wstring text = L"Pressed " + std::to_wstring(++count);
    reinterpret_cast<ICmdButton*>(context)->SetText(Bstr(text).get());
    std::printf("%ls\n", text.c_str());
    std::fflush(stdout);
    return VARIANT_FALSE;
}

/// Makes command buttons known to this process, in place of an entry in the registry.
bool registerButtons(HMODULE controls)
{
    const auto classObject =
        reinterpret_cast<LPFNGETCLASSOBJECT>(reinterpret_cast<void*>(GetProcAddress(controls, "DllGetClassObject")));
    ComPtr<IUnknown> factory;
    DWORD cookie = 0;
    return classObject && SUCCEEDED(classObject(__uuidof(CmdButton), IID_IClassFactory, factory.putVoid())) &&
           SUCCEEDED(CoRegisterClassObject(__uuidof(CmdButton), factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                           &cookie));
}

int run(HMODULE controls)
{
    ComPtr<IVexRes> resources; // fonts, pictures and windows of the application
    ComPtr<IDispatch> window;
    VARIANT_BOOL done = VARIANT_FALSE;
    hyper handle = 0;
    if (!registerButtons(controls) || FAILED(AmbrelCreateRes(resources.put())))
        return 1;
    resources->CreateAmbrel(Bstr(L"Minimal").get(), 0, window.put());
    const auto root = window.as<IAmbrel>();
    root->Create(0, {100, 100, 340, 200}, &done);
    root->SetDragabled(VARIANT_TRUE); // the window has no title bar: it is moved by its ground, closed by Alt+F4
    root->GetWindowHandle(&handle);

    ComPtr<IVexControlBase> control;
    resources->AddPluginResObject(root.get(), Bstr(L"Press").get(), Bstr(L"Morvane17").get(), control.put());
    const auto button = control.as<ICmdButton>();
    if (!button || FAILED(AmbrelApplySkin(resources.get(), button.get(), controls, kButtonSkin)))
        return 1;
    SkinRect place{60, 34, 180, 66};
    long changed = 0;
    button->Resize(&place, &changed);
    button->SetText(Bstr(L"Press me").get());
    button->AddMsgCallback(VEXSM_LBUTTONUP, reinterpret_cast<hyper>(&onPressed), reinterpret_cast<hyper>(button.get()),
                           &done);

    const auto frame = reinterpret_cast<HWND>(handle);
    ShowWindow(frame, SW_SHOW);
    for (MSG message; IsWindow(frame) && GetMessageW(&message, nullptr, 0, 0) > 0; DispatchMessageW(&message))
        TranslateMessage(&message);
    return 0;
}

} // namespace

int main()
{
    const HMODULE controls = LoadLibraryW(L"Morvane.dll");
    const bool isReady = controls && SUCCEEDED(OleInitialize(nullptr)) && SUCCEEDED(AmbrelRegisterClasses());
    return isReady ? run(controls) : 1;
}
