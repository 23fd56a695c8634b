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

void countGdi(Balance& result)
{
    if (const DWORD known = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) {
        constexpr long kMostOfFonts = 2 * kMostFonts;
        result.gdiHandles = std::max(static_cast<long>(known), kMostOfFonts);
        return;
    }
    // Wine does not count them; its table is where the system's is.
    constexpr std::size_t kTableInPeb = 0xF8;
    constexpr std::size_t kEntries = 0x4000;
    constexpr std::uint8_t kFont = 0x0A;
    const auto currentPeb = reinterpret_cast<const char*(NTAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    if (!currentPeb)
        return;
    const auto* const table = *reinterpret_cast<const GdiEntry* const*>(currentPeb() + kTableInPeb);
    long all = 0;
    for (std::size_t i = 0; table && i < kEntries; ++i) {
        all += table[i].type != 0;
        result.gdiFonts += table[i].type == kFont;
    }
    result.gdiHandles = all - 2 * result.gdiFonts;
    result.gdiFonts = std::max(result.gdiFonts, kMostFonts);
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
    countGdi(result);
    result.windows = countWindows();
    EnumPropsExW(owner, &countProperty, reinterpret_cast<LPARAM>(&result.windowProperties));
    return result;
}

std::string Balance::excessOver(const Balance& before) const
{
    std::string text;
    say(text, "objects of the runtime", before.runtimeObjects, runtimeObjects);
    // Some are made once, at first use, and kept; over 30 rounds they came to 16 and stayed there. A leak soon passes
    // this.
    constexpr long kMadeOnce = 32;
    say(text, "GDI handles", before.gdiHandles + kMadeOnce, gdiHandles);
    say(text, "fonts", before.gdiFonts, gdiFonts);
    say(text, "windows", before.windows, windows);
    say(text, "timers", before.timers, timers);
    say(text, "window properties", before.windowProperties, windowProperties);
    return text;
}

} // namespace morvane::soak
