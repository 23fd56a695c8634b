#include "tests/soak/balance.h"

#include "ambrel/ambrel.h"

#include <algorithm>

namespace morvane::soak {

namespace {

/// An entry of the process's table of GDI handles.
struct GdiEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type; // 0 for a free entry
    std::uint8_t flags;
    std::uint64_t userPointer;
};
static_assert(sizeof(GdiEntry) == 24);

/// Fonts that were needed once stay in a cache of the runtime, each with a device context to measure on.
constexpr long kMostFonts = 120;

constexpr std::array<const char*, kGdiKinds> kGdiNames = {"device contexts", "regions",          "bitmaps",
                                                          "fonts",           "pens and brushes", "other GDI handles"};

/// Eight more cursors may be loaded for the first time later: whichever a module or the system shares stays.
constexpr std::array<long, kGdiKinds> kMadeLater = {0, 0, 0, 0, 0, 8 * 3};

GdiKind kindOf(std::uint8_t type)
{
    switch (type & 0x1F) {
    case 0x01:
        return GdiKind::DeviceContext;
    case 0x04:
        return GdiKind::Region;
    case 0x05:
        return GdiKind::Bitmap;
    case 0x0A:
        return GdiKind::Font;
    case 0x10:
        return GdiKind::PenOrBrush;
    default:
        return GdiKind::Other;
    }
}

/// The process's table of GDI handles lies where its environment block says, on Windows as under Wine, which has no
/// other way to count them.
void countGdi(std::array<long, kGdiKinds>& counts)
{
    constexpr std::size_t kTableInPeb = 0xF8;
    constexpr std::size_t kEntries = 0x4000;
    const auto currentPeb = reinterpret_cast<const char*(NTAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    if (!currentPeb)
        return;
    const auto* const table = *reinterpret_cast<const GdiEntry* const*>(currentPeb() + kTableInPeb);
    for (std::size_t i = 0; table && i < kEntries; ++i) {
        if (table[i].type != 0)
            ++counts[static_cast<std::size_t>(kindOf(table[i].type))];
    }
    auto& fonts = counts[static_cast<std::size_t>(GdiKind::Font)];
    counts[static_cast<std::size_t>(GdiKind::DeviceContext)] -= fonts;
    fonts = std::max(fonts, kMostFonts);
}

BOOL CALLBACK countOwn(HWND window, LPARAM result)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    *reinterpret_cast<long*>(result) += process == GetCurrentProcessId();
    return TRUE;
}

long countWindows()
{
    long count = 0;
    EnumWindows(&countOwn, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        countOwn(window, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// Ticks that arrive although nobody should want any.
long countTimers()
{
    constexpr DWORD kLongestPeriodMs = 60;
    Sleep(kLongestPeriodMs);
    long count = 0;
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && count < 1000;) {
        count += message.message == WM_TIMER;
        DispatchMessageW(&message);
    }
    return count;
}

BOOL CALLBACK countProperty(HWND, LPWSTR, HANDLE, ULONG_PTR result)
{
    ++*reinterpret_cast<long*>(result);
    return TRUE;
}

void say(std::string& text, const char* what, long before, long now)
{
    if (now > before)
        text +=
            std::string(text.empty() ? "" : ", ") + what + " " + std::to_string(before) + " -> " + std::to_string(now);
}

} // namespace

Balance Balance::now(HWND owner)
{
    Balance result;
    result.timers = countTimers(); // may still let something go
    result.runtimeObjects = AmbrelLiveObjects();
    countGdi(result.gdi);
    result.windows = countWindows();
    EnumPropsExW(owner, &countProperty, reinterpret_cast<LPARAM>(&result.windowProperties));
    return result;
}

std::string Balance::excessOver(const Balance& before) const
{
    std::string text;
    say(text, "objects of the runtime", before.runtimeObjects, runtimeObjects);
    for (std::size_t kind = 0; kind < kGdiKinds; ++kind)
        say(text, kGdiNames[kind], before.gdi[kind] + kMadeLater[kind], gdi[kind]);
    say(text, "windows", before.windows, windows);
    say(text, "timers", before.timers, timers);
    say(text, "window properties", before.windowProperties, windowProperties);
    return text;
}

void fillSystemCaches()
{
    // A context stays with the window that used it last; those of one that is gone serve any other.
    const HWND window = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    std::array<HDC, 64> contexts{};
    for (HDC& each : contexts)
        each = GetDC(window);
    for (const HDC each : contexts)
        ReleaseDC(window, each);
    DestroyWindow(window);
    for (const auto* cursor : {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZENWSE, IDC_SIZENESW,
                               IDC_SIZEWE, IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP})
        LoadCursorW(nullptr, cursor);
    for (int colour = 0; colour <= COLOR_MENUBAR; ++colour)
        GetSysColorBrush(colour);
}

} // namespace morvane::soak
