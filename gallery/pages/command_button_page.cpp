// Command buttons: every state, graphics beside and above the text, strips, sizes that follow the text, keys.
#include "gallery/page.h"

#include <algorithm>
#include <array>

namespace gallery {

namespace {

constexpr int kButtonIcon = 2082;
constexpr int kColumn = 120; // the raster of the page
constexpr Size kButton{104, 28};
constexpr short kStripFrames = 5; // one for each state, in the order of VEX_BUTTONSTATE

struct Pinned {
    const wchar_t* text;
    VEX_BUTTONSTATE state;
};
constexpr std::array<Pinned, 4> kPinned = {
    {{L"Normal", VEX_BTN_NORMAL}, {L"Hot", VEX_BTN_HOT}, {L"Pressed", VEX_BTN_PRESS}, {L"Focused", VEX_BTN_FOCUS}}};

void disable(IVexControlBase& control)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    control.EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
}

/// Moves the text of a button to where its graphic leaves room, in every state.
void placeText(Scene& scene, ICmdButton& button, const TextPlacement& placement)
{
    for (int index = VEX_BTN_NORMAL; index < VEX_BTN_LAST; ++index) {
        const auto state = static_cast<VEX_BUTTONSTATE>(index);
        ComPtr<IVexTextStyle> style;
        button.GetBackTextStyle(state, style.put());
        if (style)
            button.SetBackTextStyle(state, scene.textStyleLike(*style, placement).get());
    }
}

/// An icon of the control library at the scene's scale; the system shares it.
std::int64_t sharedIcon(const Scene& scene, int id)
{
    return reinterpret_cast<std::int64_t>(LoadImageW(GetModuleHandleW(L"Morvane.dll"), MAKEINTRESOURCEW(id), IMAGE_ICON,
                                                     scene.scaled(16), scene.scaled(16), LR_SHARED));
}

void setStrip(const Scene& scene, ICmdButton& button, bool isAcross, int x)
{
    button.SetGraphicsFilePath(scene.drawing(isAcross ? L"strip-across" : L"strip-down").get(),
                               static_cast<short>(scene.scaled(x)), 0, kStripFrames,
                               isAcross ? VARIANT_TRUE : VARIANT_FALSE);
}

/// Holds a sample in a state; the focused one wears the mark that the keyboard gives it.
void pin(Scene& scene, IVexControlBase& page, ICmdButton& button, const Rect& place, VEX_BUTTONSTATE state)
{
    button.SetButtonState(state);
    if (state == VEX_BTN_FOCUS)
        focusSample(scene, page, place);
}

void addStates(Scene& scene, IVexControlBase& page, int top)
{
    Rect place = Rect::at({24, top}, kButton);
    const auto add = [&](const wchar_t* text) {
        const auto button = scene.button(&page, place, text);
        makeStill(*button);
        place = place.shifted(kColumn, 0);
        return button;
    };
    for (const Pinned& pinned : kPinned) {
        const auto button = add(pinned.text);
        pin(scene, page, *button, place.shifted(-kColumn, 0), pinned.state);
    }
    disable(*add(L"Disabled"));
    add(L"Inactive")->SetActive(VARIANT_FALSE);
}

void addGraphics(Scene& scene, IVexControlBase& page, int top)
{
    constexpr TextPlacement kBeside{TextAlign::Near, 34, 0, 8, 0};
    constexpr TextPlacement kBefore{TextAlign::Far, 8, 0, 34, 0};
    constexpr TextPlacement kBelow{TextAlign::Centre, 0, 26, 0, 4}; // a graphic of 16 at 11 and a line of text
    const std::int64_t icon = sharedIcon(scene, kButtonIcon);
    const auto withIcon = [&](const Rect& place, const wchar_t* text) {
        const auto button = scene.button(&page, place, text);
        button->SetGraphicshIcon(icon, 0, 0);
        return button;
    };
    const auto above = withIcon({24, top, 128, top + 56}, L"Above");
    above->SetUpDownMode(VARIANT_TRUE);
    above->SetGraphicOffset(0, scene.scaled(11));
    placeText(scene, *above, kBelow);

    const auto beside = withIcon(Rect::at({144, top + 14}, {104, 28}), L"Beside");
    beside->SetGraphicOffset(scene.scaled(12), 0);
    placeText(scene, *beside, kBeside);

    const auto after = withIcon(Rect::at({264, top + 14}, {104, 28}), L"At the end");
    setProperty(*after, L"Graphics/RightAlign", L"1");
    after->SetGraphicOffset(scene.scaled(12), 0);
    placeText(scene, *after, kBefore);

    const auto only = withIcon(Rect::at({384, top + 14}, {28, 28}), L"");
    only->SetGraphicOffset(scene.scaled(6), 0);
    only->SetTooltip(Bstr(L"A button that is only a picture").get());

    // Near and far change sides in a mirrored form.
    const auto mirrored = scene.form(&page, {504, top + 14, 728, top + 42}, scene.theme().window);
    mirrored->MirrorObject(VARIANT_TRUE);
    for (const auto& [left, text] : {std::pair{0, L"OK"}, {120, L"Cancel"}})
        scene.button(mirrored.get(), Rect::at({left, 0}, {104, 28}), text);
}

void addStrip(Scene& scene, IVexControlBase& page, int top)
{
    constexpr TextPlacement kBeside{TextAlign::Near, 36, 0, 8, 0};
    Rect place = Rect::at({24, top}, kButton);
    const auto add = [&](const wchar_t* text) {
        const auto button = scene.button(&page, place, text);
        setStrip(scene, *button, true, 12);
        placeText(scene, *button, kBeside);
        place = place.shifted(kColumn, 0);
        return button;
    };
    for (const Pinned& pinned : kPinned) {
        const auto button = add(pinned.text);
        makeStill(*button);
        pin(scene, page, *button, place.shifted(-kColumn, 0), pinned.state);
    }
    disable(*add(L"Disabled"));
    add(L"Live")->SetTooltip(Bstr(L"Its graphic follows its state").get());
}

/// A button that is as wide as its text wants. `extra` is what the control adds to the text's width: the graphic's
/// offset also where there is no graphic.
ComPtr<ICmdButton> fittingButton(Scene& scene, IVexControlBase& page, Point at, const wchar_t* text)
{
    const auto button = scene.button(&page, Rect::at(at, {120, 28}), text);
    scene.placeFitting(*button, Rect::at(at, {120, 28}));
    button->SetMinHeight(scene.scaled(28));
    button->SetMaxHeight(scene.scaled(28));
    button->SetMinWidth(scene.scaled(24));
    button->SetMaxWidth(scene.scaled(320));
    return button;
}

void addAutoSize(Scene& scene, IVexControlBase& page, int top)
{
    const auto plain = fittingButton(scene, page, {24, top}, L"Save");
    plain->SetGraphicOffset(scene.scaled(26), 0);
    const auto withGraphic = fittingButton(scene, page, {264, top}, L"Save");
    setStrip(scene, *withGraphic, false, 12);
    // The control adds the style's offset as it stands, but draws it in the window's scale: beyond 6 pixels of
    // difference, which it leaves free, the text would be cut.
    const int right = scene.scale() > 100 ? std::min(10, 600 / (scene.scale() - 100)) : 10;
    placeText(scene, *withGraphic, {TextAlign::Far, 0, 0, right, 0});
    for (const auto& button : {plain, withGraphic}) {
        setProperty(*button, L"AutoResize/IsEnableAutoSize", L"1");
        button->SetText(Bstr(L"Save").get());
    }

    const auto change = scene.button(&page, Rect::at({624, top}, {104, 28}), L"Change texts");
    change->SetTooltip(Bstr(L"Gives both buttons another text; they follow").get());
    scene.onClick(*change, [plain, withGraphic, step = std::size_t{0}]() mutable {
        static constexpr std::array kTexts = {L"Save", L"Save all", L"Save all open documents"};
        step = (step + 1) % kTexts.size();
        for (const auto& button : {plain, withGraphic})
            button->SetText(Bstr(kTexts[step]).get());
    });
}

/// A button and beside it what happened to it.
void addCounter(Scene& scene, IVexControlBase& page, Point at, const ComPtr<ICmdButton>& button)
{
    const auto answer =
        scene.label(&page, Rect::at({at.x + 152, at.y}, {184, 28}), L"Not pressed yet", {scene.theme().textSoft, 9});
    scene.onClick(*button, [answer, count = 0]() mutable {
        const std::wstring text = ++count == 1 ? L"Pressed once" : L"Pressed " + std::to_wstring(count) + L" times";
        answer->SetText(Bstr(text).get());
    });
}

void addLive(Scene& scene, IVexControlBase& page, int top)
{
    const auto press = scene.button(&page, Rect::at({24, top}, {136, 28}), L"Press me");
    press->SetTooltip(Bstr(L"Counts how often it was pressed").get());
    addCounter(scene, page, {24, top}, press);

    const auto save = scene.button(&page, Rect::at({384, top}, {136, 28}), L"Save  (Ctrl+S)");
    save->SetTooltip(Bstr(L"Ctrl+S presses it from anywhere in the window").get());
    constexpr long kControl = 2;
    setProperty(*save, L"Hotkey/Hotkey1", std::to_wstring(kControl << 8 | 'S'));
    scene.root().RegisterHotkey(VARIANT_TRUE);
    addCounter(scene, page, {384, top}, save);
}

} // namespace

void buildCommandButtonPage(Scene& scene, IVexControlBase& page)
{
    const int top = pageHeading(scene, page, L"Command button",
                                L"A push button with a picture and a text style per state, and an optional graphic.");
    sectionHeading(scene, page, {24, top}, L"States");
    addStates(scene, page, top + 24);
    sectionHeading(scene, page, {24, top + 72}, L"Graphic and text");
    sectionHeading(scene, page, {504, top + 72}, L"Mirrored");
    addGraphics(scene, page, top + 96);
    sectionHeading(scene, page, {24, top + 176}, L"One picture with a part for each state");
    addStrip(scene, page, top + 200);
    sectionHeading(scene, page, {24, top + 256}, L"As wide as the text");
    addAutoSize(scene, page, top + 280);
    sectionHeading(scene, page, {24, top + 336}, L"Live");
    addLive(scene, page, top + 360);
}

} // namespace gallery
