// Check boxes: every value in every state, three values by clicking, the push-button look, graphics, mirrored.
#include "gallery/page.h"

#include <algorithm>
#include <array>

namespace gallery {

namespace {

constexpr std::array kValues = {L"Unchecked", L"Checked", L"Half-checked"};
constexpr std::array kValueGroups = {L"Unchecked", L"Checked", L"HalfChecked"};
constexpr std::array kStateGroups = {L"Normal", L"Hot", L"Press", L"Disabled"}; // in the order of VEX_CHECKBOXSTATE
constexpr Size kBox{112, 24};
constexpr int kColumn = 120;
constexpr int kRow = 32;

void disable(IVexControlBase& control)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    control.EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
}

/// One sample of a value for each state, still.
void addValue(Scene& scene, IVexControlBase& page, int top, std::size_t value)
{
    int left = 24;
    const auto add = [&] {
        const auto box = scene.checkBox(&page, Rect::at({left, top}, kBox), kValues[value]);
        box->SetValue(static_cast<VEXCHECKBOX_VALUE>(value));
        makeStill(*box);
        left += kColumn;
        return box;
    };
    add();
    add()->SetMouseMove(VARIANT_TRUE);
    add()->SetLButtonDowned(VARIANT_TRUE);
    add();
    focusSample(scene, page, Rect::at({left - kColumn, top}, {112, 24}));
    disable(*add());
    add()->SetActive(VARIANT_FALSE);
}

void addValues(Scene& scene, IVexControlBase& page, int top)
{
    int left = 24;
    for (const wchar_t* name : {L"Normal", L"Hot", L"Pressed", L"Focused", L"Disabled", L"Inactive"}) {
        scene.label(&page, Rect::at({left, top}, {kBox.width, 16}), name, {scene.theme().textSoft, 8});
        left += kColumn;
    }
    for (std::size_t value = 0; value < kValues.size(); ++value)
        addValue(scene, page, top + 20 + static_cast<int>(value) * kRow, value);
}

VEXCHECKBOX_VALUE valueOf(IVexCheckBox& box)
{
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    box.GetValue(&value);
    return value;
}

/// A box to click, and beside it its value.
ComPtr<IVexCheckBox> addLive(Scene& scene, IVexControlBase& page, int top, const wchar_t* text,
                             VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED)
{
    static constexpr std::array kAnswers = {L"unchecked", L"checked", L"half-checked"};
    const auto box = scene.checkBox(&page, Rect::at({24, top}, {232, 24}), text);
    box->SetValue(value);
    const auto answer = scene.label(&page, Rect::at({264, top}, {104, 24}), kAnswers[static_cast<std::size_t>(value)],
                                    {scene.theme().textSoft, 9});
    scene.onClick(*box, [answer, raw = box.get()] {
        answer->SetText(Bstr(kAnswers[static_cast<std::size_t>(valueOf(*raw))]).get());
    });
    return box;
}

void addLiveBoxes(Scene& scene, IVexControlBase& page, int top)
{
    addLive(scene, page, top, L"Two values");
    addLive(scene, page, top + kRow, L"Three values")->SetThreeState(VARIANT_TRUE);
    const auto never =
        addLive(scene, page, top + 2 * kRow, L"Half-checked only by the program", VEXCHECKBOX_HALFCHECKED);
    never->SetThreeState(VARIANT_TRUE);
    setProperty(*never, L"Misc/AutoChangeThreeState", L"0");
    setProperty(*addLive(scene, page, top + 3 * kRow, L"Leaves its value to the program"), L"Misc/DisbaleAutoCheck",
                L"1");
}

/// Calls `change` with the path of each of the twelve looks: "Checked/Hot/".
void forEachLook(const std::function<void(const std::wstring& path, bool isChecked, int state)>& change)
{
    for (const wchar_t* value : kValueGroups) {
        for (std::size_t state = 0; state < kStateGroups.size(); ++state)
            change(value + std::wstring(L"/") + kStateGroups[state] + L"/", value != kValueGroups[0],
                   static_cast<int>(state));
    }
}

/// The looks of a button: checked, it stays down.
void dressAsButton(const Scene& scene, IVexCheckBox& box, ICmdButton& model)
{
    static constexpr std::array kStates = {VEX_BTN_NORMAL, VEX_BTN_HOT, VEX_BTN_PRESS, VEX_BTN_DISABLE};
    const auto down = chosenButtonSection(scene);
    box.SetPushButtonLike(VARIANT_TRUE);
    forEachLook([&](const std::wstring& path, bool isChecked, int state) {
        const VEX_BUTTONSTATE look = kStates[static_cast<std::size_t>(state)];
        ComPtr<IVexImageBase> section;
        ComPtr<IVexTextStyle> style;
        if (isChecked && (look == VEX_BTN_NORMAL || look == VEX_BTN_HOT))
            section = down;
        else
            model.GetBackImageSec(look, section.put());
        model.GetBackTextStyle(look, style.put());
        setProperty(box, path + L"Image", section.get());
        setProperty(box, path + L"TextStyle", style.get());
    });
}

void addPushButtons(Scene& scene, IVexControlBase& page, Point at)
{
    const auto model = scene.button(&page, Rect::at(at, {104, 28}), L"");
    model->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    for (const wchar_t* text : {L"Bold", L"Italic", L"Underlined"}) {
        const auto box = scene.checkBox(&page, Rect::at(at, {104, 28}), text);
        dressAsButton(scene, *box, *model);
        at.x += kColumn;
    }
}

void addGraphics(Scene& scene, IVexControlBase& page, Point at)
{
    const auto box = scene.checkBox(&page, Rect::at(at, {160, 24}), L"With a graphic");
    const auto flag = scene.drawingSection(L"flag");
    VARIANT_BOOL done = VARIANT_FALSE;
    setProperty(*box, L"Graphics/x", std::to_wstring(scene.scaled(24)));
    // The control does not move its text for a graphic: the style does.
    TextLook look{scene.theme().text};
    look.nearOffset = 26;
    const auto style = scene.textStyle(look);
    forEachLook([&](const std::wstring& path, bool, int) { setProperty(*box, path + L"TextStyle", style.get()); });
    for (int index = 0; index < 12; ++index)
        box->SetGraphicsImage(static_cast<VEX_CHECKBOXSTATE>(index % 4), static_cast<VEXCHECKBOX_VALUE>(index / 4),
                              flag.get(), VARIANT_FALSE, &done);
    box->SetTooltip(Bstr(L"A graphic of its own for each value and state is possible").get());
}

void addMirrored(Scene& scene, IVexControlBase& page, Point at)
{
    const auto box = scene.checkBox(&page, Rect::at(at, {160, 24}), L"Mirrored");
    box->MirrorObject(VARIANT_TRUE);
    box->DirectRedraw(nullptr);
}

/// What half-checked is for: one box that stands for several.
void addOneForAll(Scene& scene, IVexControlBase& page, int top)
{
    const auto all = scene.checkBox(&page, Rect::at({24, top}, kBox), L"Everything");
    all->SetThreeState(VARIANT_TRUE);
    setProperty(*all, L"Misc/AutoChangeThreeState", L"0");
    std::vector<ComPtr<IVexCheckBox>> parts;
    for (const wchar_t* text : {L"Pictures", L"Texts", L"Sounds"})
        parts.push_back(
            scene.checkBox(&page, Rect::at({24 + kColumn * (static_cast<int>(parts.size()) + 1), top}, kBox), text));
    parts.front()->SetValue(VEXCHECKBOX_CHECKED);
    all->SetValue(VEXCHECKBOX_HALFCHECKED);
    scene.onClick(*all, [parts, raw = all.get()] {
        for (const auto& part : parts)
            part->SetValue(valueOf(*raw));
    });
    for (const auto& part : parts) {
        scene.onClick(*part, [parts, all] {
            const auto checked =
                std::ranges::count_if(parts, [](const auto& each) { return valueOf(*each) == VEXCHECKBOX_CHECKED; });
            const bool isMixed = checked != 0 && checked != std::ssize(parts);
            all->SetValue(isMixed ? VEXCHECKBOX_HALFCHECKED : checked ? VEXCHECKBOX_CHECKED : VEXCHECKBOX_UNCHECKED);
        });
    }
}

} // namespace

void buildCheckBoxPage(Scene& scene, IVexControlBase& page)
{
    const int top = pageHeading(scene, page, L"Check box", L"A box with two or three values and a text beside it.");
    sectionHeading(scene, page, {24, top}, L"Values and states");
    addValues(scene, page, top + 24);
    sectionHeading(scene, page, {24, top + 168}, L"Live");
    addLiveBoxes(scene, page, top + 192);
    sectionHeading(scene, page, {384, top + 168}, L"Like push buttons");
    addPushButtons(scene, page, {384, top + 192});
    sectionHeading(scene, page, {384, top + 248}, L"Graphic");
    addGraphics(scene, page, {384, top + 272});
    sectionHeading(scene, page, {568, top + 248}, L"Mirrored");
    addMirrored(scene, page, {568, top + 272});
    sectionHeading(scene, page, {24, top + 344}, L"One for all");
    addOneForAll(scene, page, top + 368);
}

} // namespace gallery
