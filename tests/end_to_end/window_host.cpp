// A window of the runtime with two command buttons and a text line on standard output for everything that happens to them:
// what run.sh drives with the real pointer and keyboard. Ends when its window is closed.
#include "ambrel/module/loaded_runtime.h"
#include "frame/com/bstr.h"

#include <cstdio>
#include <map>

namespace {

using ambrel::testing::LoadedRuntime;
using morvane::Bstr;
using morvane::BstrLiteral;
using morvane::ComPtr;

constexpr CLSID kButton{0x9D16F301, 0xCDF1, 0x46B8, {0xB9, 0x5E, 0x98, 0x2A, 0xF8, 0x5E, 0x06, 0xAE}};
constexpr long kButtonSkin = 2080;

void STDMETHODCALLTYPE say(void*, const AmbrelTraceEntry* entry)
{
    static const std::map<long, const char*> words = {
        {VEXSM_MOUSEENTER, "enter"}, {VEXSM_MOUSELEAVE, "leave"}, {VEXSM_LBUTTONDOWN, "down"},      {VEXSM_LBUTTONUP, "up"},
        {VEXSM_LBUTTONDBCLICK, "double"}, {VEXSM_ONSETFOCUS, "focus"}, {VEXSM_ONKILLFOCUS, "blur"}, {VEXSM_DESTROYING, "end"}};
    const auto word = words.find(entry->id);
    if (entry->kind != AMBREL_TRACE_NOTIFICATION || word == words.end())
        return;
    const ComPtr<IUnknown> object(entry->object);
    Bstr name;
    if (const auto named = object.as<IVexObj>())
        named->GetName(name.put());
    std::printf("%ls %s\n", name.get() ? name.get() : L"?", word->second);
    std::fflush(stdout);
}

HRESULT registerButtons(HMODULE module, DWORD& cookie)
{
    const auto get = reinterpret_cast<decltype(&::DllGetClassObject)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IUnknown> factory;
    const HRESULT status = get ? get(kButton, IID_IUnknown, factory.putVoid()) : E_FAIL;
    return FAILED(status) ? status
                          : CoRegisterClassObject(kButton, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
}

void addButton(const LoadedRuntime& runtime, IVexRes* resources, IAmbrel* root, HMODULE module, const wchar_t* name, SkinRect rect)
{
    static constexpr BstrLiteral kClass(L"Morvane17");
    ComPtr<IVexControlBase> button;
    resources->AddPluginResObject(root, Bstr(name).get(), kClass.get(), button.put());
    if (!button)
        return;
    long changed = 0;
    button->Resize(&rect, &changed);
    runtime.AmbrelApplySkin()(resources, button.get(), module, kButtonSkin);
}

int run(const LoadedRuntime& runtime, HMODULE module)
{
    ComPtr<IVexRes> resources;
    ComPtr<IDispatch> made;
    runtime.AmbrelCreateRes()(resources.put());
    resources->CreateAmbrel(Bstr(L"Pointer test").get(), 0, made.put());
    const auto root = made.as<IAmbrel>();
    VARIANT_BOOL placed = VARIANT_FALSE;
    hyper handle = 0;
    root->SetResizable(VARIANT_TRUE);
    root->SetDragabled(VARIANT_TRUE);
    root->Create(0, {100, 100, 400, 300}, &placed);
    root->GetWindowHandle(&handle);
    addButton(runtime, resources.get(), root.get(), module, L"first", {20, 20, 120, 50});
    addButton(runtime, resources.get(), root.get(), module, L"second", {150, 20, 250, 50});
    const auto window = reinterpret_cast<HWND>(handle);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    UpdateWindow(window);
    runtime.AmbrelSetTraceSink()(&say, nullptr);
    std::printf("ready\n");
    std::fflush(stdout);
    MSG message;
    while (IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool wasQuestion = message.message == WM_KEYDOWN && message.wParam == VK_F12;
        TranslateMessage(&message);
        DispatchMessageW(&message);
        RECT place{};
        if (wasQuestion && GetWindowRect(window, &place)) {
            std::printf("at %ld %ld size %ld %ld\n", place.left, place.top, place.right - place.left,
                        place.bottom - place.top);
            std::fflush(stdout);
        }
    }
    runtime.AmbrelSetTraceSink()(nullptr, nullptr);
    return 0;
}

} // namespace

int main()
{
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    int result = 2;
    {
        const LoadedRuntime runtime;
        const HMODULE module = LoadLibraryW(L"Morvane.dll");
        DWORD cookie = 0;
        if (runtime.handle() && module && SUCCEEDED(runtime.AmbrelRegisterClasses()()) && SUCCEEDED(registerButtons(module, cookie))) {
            result = run(runtime, module);
            CoRevokeClassObject(cookie);
            runtime.AmbrelUnregisterClasses()();
            std::printf("left %ld\n", runtime.AmbrelLiveObjects()());
        }
    }
    OleUninitialize();
    return result;
}
