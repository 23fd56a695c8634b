#include "bench/native_window.h"

#include "bench/harness.h"

namespace bench {

namespace {

constexpr wchar_t kClassName[] = L"MorvaneBenchNative";

const wchar_t* windowClass()
{
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    description.lpszClassName = kClassName;
    RegisterClassW(&description); // fails harmlessly the second time
    return kClassName;
}

} // namespace

NativeWindow::NativeWindow()
    : m_window(CreateWindowExW(0, windowClass(), L"native", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                               kWindowSize.width, kWindowSize.height, nullptr, nullptr, GetModuleHandleW(nullptr),
                               nullptr))
{
    check(window() != nullptr, "the platform gives no window");
    clear();
    pumpMessages();
}

void NativeWindow::clear()
{
    m_panel.reset();
    m_panel.reset(CreateWindowExW(0, windowClass(), L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                  kWindowSize.width, kWindowSize.height, window(), nullptr, GetModuleHandleW(nullptr),
                                  nullptr));
    check(m_panel && buttonCount() == 0, "the platform gives no panel");
}

HWND NativeWindow::addButton(const morvane::Rect& place, const wchar_t* text) const
{
    // The program has no manifest, so this is the unthemed button of the platform's oldest library.
    return CreateWindowExW(0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, place.left, place.top,
                           place.width(), place.height(), m_panel.get(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

std::vector<HWND> NativeWindow::fill(int count) const
{
    const ButtonGrid grid(count);
    const int before = buttonCount();
    std::vector<HWND> buttons;
    for (int i = 0; i < count; ++i)
        buttons.push_back(addButton(grid.place(i), (L"Button " + std::to_wstring(i)).c_str()));
    check(buttonCount() == before + count, "native buttons are missing");
    paintPending();
    pumpMessages();
    return buttons;
}

void NativeWindow::repaintAll() const
{
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void NativeWindow::paintPending() const
{
    RedrawWindow(window(), nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
}

int NativeWindow::buttonCount() const
{
    int count = 0;
    for (HWND child = GetWindow(m_panel.get(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ++count;
    return count;
}

} // namespace bench
