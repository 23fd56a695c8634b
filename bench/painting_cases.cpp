// Painting: a whole window, and one button that changed.
#include "bench/cases.h"
#include "bench/native_window.h"
#include "bench/own_window.h"
#include "bench/table.h"

namespace bench {

namespace {

constexpr int kButtons = 500;
constexpr int kChanges = 200;
constexpr morvane::Rect kAll{0, 0, kWindowSize.width, kWindowSize.height};

template <class Window>
auto onTop(const Window& window)
{
    return [&window] { bringToTop(window.window()); };
}

/// Paints over the whole window, lets `paint` run and finds the same picture as before.
template <class Paint>
void checkRepaint(HWND window, const char* what, Paint paint)
{
    paint();
    const std::uint64_t shown = checksum(window, kAll);
    scribble(window, kAll);
    check(scribbledPixels(window, kAll) > 1000000, "the window could not be painted over");
    paint();
    check(scribbledPixels(window, kAll) == 0 && checksum(window, kAll) == shown, what);
}

void paintNow(ICmdButton& button)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    button.RedrawWindow(VARIANT_TRUE, &done);
}

/// Lets `change` run in a window that is painted over: only the button is painted, and all of it.
template <class Change>
void checkOneChange(HWND window, const morvane::Rect& place, const char* what, Change change)
{
    scribble(window, kAll);
    const std::size_t painted = scribbledPixels(window, kAll);
    change(1);
    const std::size_t inside = scribbledPixels(window, place);
    const std::uint64_t first = checksum(window, place);
    change(2);
    check(inside == 0 && checksum(window, place) != first && coloursIn(window, place) > 2, what);
    const auto area = static_cast<std::size_t>(place.width()) * static_cast<std::size_t>(place.height());
    check(painted - scribbledPixels(window, kAll) == area, "more than the changed button was painted");
}

void fullRepaint(Bench& bench)
{
    const NativeWindow native;
    native.fill(kButtons);
    const auto paintNative = [&] { native.repaintAll(); };
    checkRepaint(native.window(), "the native buttons were not repainted", paintNative);

    OwnWindow own;
    const auto buttons = own.fill(kButtons);
    const auto paintOwn = [&] { own.repaintAll(); };
    checkRepaint(own.window(), "the buttons were not repainted", paintOwn);
    row("full repaint of 500 buttons, 1600 x 1200",
        bench.compare({1, paintOwn, onTop(own)}, {1, paintNative, onTop(native)}), 10);
}

void textChange(Bench& bench)
{
    constexpr int kChanged = 210;
    const morvane::Rect place = ButtonGrid(kButtons).place(kChanged);

    const NativeWindow native;
    const auto nativeButtons = native.fill(kButtons);
    const auto changeNative = [&](int round) {
        SetWindowTextW(nativeButtons[kChanged], round % 2 ? L"Changed" : L"Button");
        UpdateWindow(nativeButtons[kChanged]);
    };
    checkOneChange(native.window(), place, "the changed native button was not painted", changeNative);

    OwnWindow own;
    const auto buttons = own.fill(kButtons);
    const Bstr texts[] = {Bstr(L"Button"), Bstr(L"Changed")};
    const auto changeOwn = [&](int round) {
        buttons[kChanged]->SetText(texts[round % 2].get());
        paintNow(*buttons[kChanged].get());
    };
    checkOneChange(own.window(), place, "the changed button was not painted", changeOwn);
    row("repaint of one changed text among 500",
        bench.compare(repeated(kChanges, changeOwn, onTop(own)), repeated(kChanges, changeNative, onTop(native))), 1);
}

void stateChange(Bench& bench)
{
    constexpr int kChanged = 210;
    const morvane::Rect place = ButtonGrid(kButtons).place(kChanged);

    const NativeWindow native;
    const auto nativeButtons = native.fill(kButtons);
    const auto changeNative = [&](int round) {
        SendMessageW(nativeButtons[kChanged], BM_SETSTATE, static_cast<WPARAM>(round % 2), 0); // paints at once
        UpdateWindow(nativeButtons[kChanged]);
    };
    checkOneChange(native.window(), place, "the pressed native button was not painted", changeNative);

    OwnWindow own;
    const auto buttons = own.fill(kButtons);
    const auto changeOwn = [&](int round) {
        buttons[kChanged]->SetButtonState(round % 2 ? VEX_BTN_PRESS : VEX_BTN_DISABLE);
        paintNow(*buttons[kChanged].get());
    };
    checkOneChange(own.window(), place, "the pressed button was not painted", changeOwn);
    row("state change, painted",
        bench.compare(repeated(kChanges, changeOwn, onTop(own)), repeated(kChanges, changeNative, onTop(native))), 1);
}

constexpr Case kCases[] = {
    {"repaint-all", &fullRepaint},
    {"repaint-one", &textChange},
    {"state-change", &stateChange},
};

} // namespace

std::span<const Case> paintingCases()
{
    return kCases;
}

} // namespace bench
