// A window with every kind of control, for run.sh to use with the real pointer and keyboard. Everything that reaches a
// control, the application or the host window becomes a line of the log, in order.
//
//     end_to_end_app LOG [DESTROY_AT]
//
// With a number for DESTROY_AT the window is destroyed in the middle of that message: in the application's callback of
// the button "closer", or while the host window is sent it by a control. The last line of the log counts what is left
// alive.
#include "ambrel/ambrel.h"
#include "gallery/component_library.h"
#include "gallery/inspector/property_list.h"
#include "gallery/options.h"
#include "gallery/scene.h"

#include <shellapi.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <map>
#include <stdexcept>

namespace {

using namespace gallery;

constexpr UINT kTipMessage = 3464;
constexpr UINT kGroupMessage = 3025;
constexpr SkinRect kWindowPlace{100, 100, 500, 400};
constexpr Size kGround{400, 260}; // below it the window's own ground shows

std::FILE* g_log = nullptr;
long g_destroyAt = 0;
HWND g_window = nullptr;
WNDPROC g_windowProcedure = nullptr;
bool g_isPainting = false;
ULONGLONG g_enteredAt = 0;

const wchar_t* wordOf(long message)
{
    static const std::map<long, const wchar_t*> words = {
        {VEXSM_MOUSEENTER, L"enter"}, {VEXSM_MOUSEMOVE, L"move"},   {VEXSM_MOUSELEAVE, L"leave"},
        {VEXSM_LBUTTONDOWN, L"down"}, {VEXSM_LBUTTONUP, L"up"},     {VEXSM_LBUTTONDBCLICK, L"double"},
        {VEXSM_ONSETFOCUS, L"focus"}, {VEXSM_ONKILLFOCUS, L"blur"}, {VEXSM_RBUTTONUP, L"right"},
        {kTipMessage, L"tip"},        {kGroupMessage, L"chosen"},   {VEXSM_DESTROYING, L"destroying"}};
    const auto word = words.find(message);
    return word == words.end() ? nullptr : word->second;
}

template <class... Parts>
void say(const wchar_t* format, Parts... parts)
{
    std::fwprintf(g_log, format, parts...);
    std::fputwc(L'\n', g_log);
    std::fflush(g_log);
}

std::wstring nameOf(IUnknown* object)
{
    const ComPtr<IUnknown> shared(object);
    const auto named = shared ? shared.as<IVexObj>() : ComPtr<IVexObj>();
    Bstr name;
    if (named)
        named->GetName(name.put());
    return std::wstring(name.view());
}

std::wstring nameOf(std::int64_t object)
{
    return nameOf(reinterpret_cast<IUnknown*>(object));
}

void STDMETHODCALLTYPE traced(void*, const AmbrelTraceEntry* entry)
{
    if (entry->kind == AMBREL_TRACE_PAINT)
        say(L"painted %ld %ld %ld %ld", entry->rect.left, entry->rect.top, entry->rect.right, entry->rect.bottom);
    // A control may ask for another picture while it is drawn; that is no answer to input.
    else if (entry->kind == AMBREL_TRACE_REDRAW && !g_isPainting)
        say(L"redraw %ls", nameOf(entry->object).c_str());
    else if (entry->kind == AMBREL_TRACE_NOTIFICATION && wordOf(entry->id))
        say(L"notify %ls %ls", nameOf(entry->object).c_str(), wordOf(entry->id));
    if (entry->kind == AMBREL_TRACE_NOTIFICATION && entry->id == VEXSM_MOUSEENTER)
        g_enteredAt = GetTickCount64();
}

/// What a control sends to the host window.
bool sayWindowMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case kTipMessage:
        say(L"window tip %ls \"%ls\"", nameOf(lParam).c_str(), reinterpret_cast<const wchar_t*>(wParam));
        return true;
    case kGroupMessage:
        say(L"window chosen %ls in group %ld", nameOf(lParam).c_str(), static_cast<long>(wParam));
        return true;
    case VEXSM_MOUSEENTER:
    case VEXSM_RBUTTONUP:
        say(L"window %ls %ls", wordOf(static_cast<long>(message)), nameOf(static_cast<std::int64_t>(wParam)).c_str());
        return true;
    default:
        return false;
    }
}

LRESULT CALLBACK hostWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (sayWindowMessage(message, wParam, lParam) && static_cast<long>(message) == g_destroyAt) {
        DestroyWindow(window);
        return 0;
    }
    if (message == WM_INITMENU)
        say(L"menu");
    if (message == WM_KEYDOWN && wParam == VK_F12) {
        RECT place{};
        GetWindowRect(window, &place);
        say(L"barrier at %ld %ld", place.left, place.top); // all input before this key was dealt with
    }
    g_isPainting = message == WM_PAINT;
    const LRESULT result = CallWindowProcW(g_windowProcedure, window, message, wParam, lParam);
    g_isPainting = false;
    return result;
}

/// Sees other windows of this thread, such as a tip's, when they are shown.
LRESULT CALLBACK watchWindows(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == WM_WINDOWPOSCHANGED && sent.hwnd != g_window) {
        const auto& place = *reinterpret_cast<const WINDOWPOS*>(sent.lParam);
        wchar_t name[64] = L"";
        GetClassNameW(sent.hwnd, name, 64);
        if (place.flags & SWP_SHOWWINDOW)
            say(L"shown %ls after %llu ms", name, GetTickCount64() - g_enteredAt);
        if (place.flags & SWP_HIDEWINDOW)
            say(L"hidden %ls", name);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

/// The application's ear for one control.
void listen(Scene& scene, IVexControlBase& control, const wchar_t* name, const std::function<void()>& after = {})
{
    control.SetName(Bstr(name).get());
    for (const long message : {VEXSM_MOUSEENTER, VEXSM_MOUSEMOVE, VEXSM_MOUSELEAVE, VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP,
                               VEXSM_LBUTTONDBCLICK})
        scene.onMessage(control, message, [name, message, after] {
            say(L"called %ls %ls", name, wordOf(message));
            if (after && message == VEXSM_LBUTTONUP)
                after();
            if (std::wcscmp(name, L"closer") == 0 && message == g_destroyAt)
                DestroyWindow(g_window);
        });
}

/// Sets a property by its names, as a skin does.
void setProperty(IVexControlBase& control, std::wstring_view path, const wchar_t* value)
{
    for (const PropertyRow& row : listProperties(control))
        if (row.path == path && setText(control, row, value))
            return;
    throw std::runtime_error("a property was not taken");
}

/// What a dialog has for the keyboard: a default button, one for Escape, and a key that two boxes share.
void addKeyboardTargets(Scene& scene, IVexControlBase& ground)
{
    const auto save = scene.button(&ground, Rect::at({200, 196}, {70, 28}), L"&Save");
    setProperty(*save, L"Hotkey/IsEnter", L"1");
    setProperty(*save, L"Hotkey/Hotkey1", L"595");  // Ctrl+S: 0x253
    setProperty(*save, L"Hotkey/Hotkey2", L"1137"); // Alt+F2: 0x471
    listen(scene, *save, L"save");
    const auto cancel = scene.button(&ground, Rect::at({280, 196}, {70, 28}), L"Cancel");
    setProperty(*cancel, L"Hotkey/Hotkey1", L"27"); // Escape
    listen(scene, *cancel, L"cancel");
    listen(scene, *scene.checkBox(&ground, Rect::at({200, 230}, {70, 28}), L"&Twin"), L"twin1");
    listen(scene, *scene.checkBox(&ground, Rect::at({280, 230}, {70, 28}), L"&Twin"), L"twin2");
}

void build(Scene& scene)
{
    const auto ground = scene.form(nullptr, Rect::at({}, kGround), scene.theme().window);
    ground->SetName(Bstr(L"ground").get());

    const auto button = scene.button(ground.get(), Rect::at({20, 20}, {120, 28}), L"Button");
    button->SetTooltip(Bstr(L"Tip of the button").get());
    listen(scene, *button, L"button");

    const auto check = scene.checkBox(ground.get(), Rect::at({20, 60}, {120, 28}), L"Chec&k box");
    check->SetThreeState(VARIANT_TRUE);
    listen(scene, *check, L"check", [raw = check.get()] {
        VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
        raw->GetValue(&value);
        say(L"value %d", static_cast<int>(value));
    });

    static constexpr std::array kRadioNames = {L"radio1", L"radio2", L"radio3"};
    std::array<ComPtr<IRadioBox>, 3> radios;
    for (std::size_t i = 0; i < radios.size(); ++i)
        radios[i] =
            scene.radioBox(ground.get(), Rect::at({20, 100 + 30 * static_cast<int>(i)}, {120, 28}), kRadioNames[i], 7);
    for (std::size_t i = 0; i < radios.size(); ++i)
        listen(scene, *radios[i], kRadioNames[i], [radios] {
            std::array<VEXRADIOBOX_VALUE, 3> values{};
            for (std::size_t j = 0; j < radios.size(); ++j)
                radios[j]->GetValue(&values[j]);
            say(L"values %d %d %d", values[0], values[1], values[2]);
        });

    const auto panel = scene.form(ground.get(), Rect::at({200, 20}, {160, 80}), scene.theme().surface);
    listen(scene, *panel, L"panel");
    listen(scene, *scene.button(panel.get(), Rect::at({20, 20}, {120, 28}), L"Child"), L"child");

    const auto disabled = scene.button(ground.get(), Rect::at({200, 120}, {120, 28}), L"Disabled");
    listen(scene, *disabled, L"disabled");
    VARIANT_BOOL done = VARIANT_FALSE;
    disabled->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    listen(scene, *scene.button(ground.get(), Rect::at({200, 160}, {120, 28}), L"Closer"), L"closer");
    addKeyboardTargets(scene, *ground);
}

void run(HINSTANCE controls)
{
    ComPtr<IVexRes> resources;
    ComPtr<IDispatch> made;
    if (FAILED(AmbrelCreateRes(resources.put())))
        throw std::runtime_error("the runtime gives no resource object");
    resources->CreateAmbrel(Bstr(L"End to end").get(), 0, made.put());
    const auto root = made.as<IAmbrel>();
    VARIANT_BOOL done = VARIANT_FALSE;
    root->SetDragabled(VARIANT_TRUE);
    root->Create(0, kWindowPlace, &done);
    AmbrelSetScale(root.get(), 100);
    std::int64_t handle = 0;
    root->GetWindowHandle(&handle);
    g_window = reinterpret_cast<HWND>(handle);

    SkinSource skins;
    skins.module = controls;
    Scene scene(resources, root, skins, 100);
    build(scene);
    g_windowProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(g_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&hostWindow)));
    const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, &watchWindows, nullptr, GetCurrentThreadId());
    AmbrelSetTraceSink(&traced, nullptr);
    ShowWindow(g_window, SW_SHOW);
    SetForegroundWindow(g_window);
    UpdateWindow(g_window);
    say(L"ready");
    MSG message;
    while (IsWindow(g_window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    say(L"closed");
    AmbrelSetTraceSink(nullptr, nullptr);
    UnhookWindowsHookEx(hook);
}

/// The process's exit code.
int runApp(int count, wchar_t** arguments)
{
    if (count < 2 || !(g_log = _wfopen(arguments[1], L"w")))
        return 2;
    g_destroyAt = count > 2 ? std::wcstol(arguments[2], nullptr, 10) : 0;
    if (FAILED(OleInitialize(nullptr)) || FAILED(AmbrelRegisterClasses()))
        return 2;
    int result = 0;
    try {
        const ComponentLibrary library({__uuidof(CmdButton), __uuidof(VexCheckBox), __uuidof(RadioBox),
                                        __uuidof(VexRadioGroup), __uuidof(UIFormObj)});
        run(library.module());
    } catch (const std::exception& problem) {
        say(L"failed: %hs", problem.what());
        result = 1;
    }
    AmbrelUnregisterClasses();
    OleUninitialize();
    say(L"alive %ld", AmbrelLiveObjects());
    std::fclose(g_log);
    return result;
}

} // namespace

int main()
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const int result = runApp(count, arguments);
    LocalFree(arguments);
    return result;
}
