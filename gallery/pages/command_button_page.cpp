// Command buttons: every state, graphics, sizes that follow the text, and one to press.
#include "gallery/page.h"

#include <array>

namespace gallery {

namespace {

constexpr int kButtonIcon = 2082;

/// An icon of the control library at the scene's scale; the system shares it.
std::int64_t sharedIcon(const Scene& scene, int id)
{
    return reinterpret_cast<std::int64_t>(LoadImageW(GetModuleHandleW(L"Morvane.dll"), MAKEINTRESOURCEW(id), IMAGE_ICON,
                                                     scene.scaled(16), scene.scaled(16), LR_SHARED));
}

void addStates(Scene& scene, IVexControlBase& page, int top)
{
    struct Pinned {
        const wchar_t* text;
        VEX_BUTTONSTATE state;
    };
    static constexpr std::array<Pinned, 4> kPinned = {
        {{L"Normal", VEX_BTN_NORMAL}, {L"Hot", VEX_BTN_HOT}, {L"Pressed", VEX_BTN_PRESS}, {L"Focused", VEX_BTN_FOCUS}}};
    int left = 24;
    for (const Pinned& pinned : kPinned) {
        scene.button(&page, Rect::at({left, top}, {104, 28}), pinned.text)->SetButtonState(pinned.state);
        left += 116;
    }
    const auto disabled = scene.button(&page, Rect::at({left, top}, {104, 28}), L"Disabled");
    VARIANT_BOOL done = VARIANT_FALSE;
    disabled->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    scene.button(&page, Rect::at({left + 116, top}, {104, 28}), L"Inactive")->SetActive(VARIANT_FALSE);
}

void addGraphics(Scene& scene, IVexControlBase& page, int top)
{
    const std::int64_t icon = sharedIcon(scene, kButtonIcon);
    const auto withIcon = [&](const Rect& place, const wchar_t* text) {
        const auto button = scene.button(&page, place, text);
        button->SetGraphicshIcon(icon, 0, 0);
        return button;
    };
    withIcon({24, top, 164, top + 32}, L"Beside")->SetGraphicOffset(scene.scaled(10), 0);
    const auto above = withIcon({180, top, 284, top + 52}, L"Above");
    above->SetUpDownMode(VARIANT_TRUE);
    above->SetGraphicOffset(0, scene.scaled(3));
    const auto only = withIcon({300, top, 332, top + 32}, L"");
    only->SetGraphicOffset(scene.scaled(8), 0);
    only->SetTooltip(Bstr(L"A button that is only a picture").get());
}

void addAutoSize(Scene& scene, IVexControlBase& page, int top)
{
    int left = 24;
    for (const wchar_t* text : {L"Fits", L"Fits its text", L"Fits even a somewhat longer text"}) {
        const auto button = scene.button(&page, Rect::at({left, top}, {60, 28}), text);
        short width = 0;
        button->GetTextLength(&width);
        scene.place(*button.get(), Rect::at({left, top}, {width * 100 / scene.scale() + 32, 28}));
        left += width * 100 / scene.scale() + 44;
    }
}

void addCounter(Scene& scene, IVexControlBase& page, int top)
{
    const auto button = scene.button(&page, Rect::at({24, top}, {160, 32}), L"Press me");
    const auto answer =
        scene.label(&page, Rect::at({200, top}, {400, 32}), L"Not pressed yet", {scene.theme().text, 9});
    button->SetTooltip(Bstr(L"Counts how often it was pressed").get());
    scene.onClick(*button.get(), [answer, count = 0]() mutable {
        const std::wstring text = ++count == 1 ? L"Pressed once" : L"Pressed " + std::to_wstring(count) + L" times";
        answer->SetText(Bstr(text).get());
    });
}

} // namespace

void buildCommandButtonPage(Scene& scene, IVexControlBase& page)
{
    int top = pageHeading(scene, page, L"Command button",
                          L"A push button with a picture and a text style per state, and an optional graphic.");
    sectionHeading(scene, page, {24, top}, L"States");
    addStates(scene, page, top + 26);
    sectionHeading(scene, page, {24, top + 80}, L"Graphics");
    addGraphics(scene, page, top + 106);
    sectionHeading(scene, page, {24, top + 188}, L"Measured text");
    addAutoSize(scene, page, top + 214);
    sectionHeading(scene, page, {24, top + 268}, L"Live");
    addCounter(scene, page, top + 294);
}

} // namespace gallery
