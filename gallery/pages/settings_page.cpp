// What these four controls make together: a settings dialog as an application would ship it, usable by keyboard alone.
// Alt and an underlined letter reach every control, arrows choose among the radio boxes, Enter saves, Escape cancels.
#include "gallery/pages/samples.h"

#include <array>

namespace gallery {

namespace {

constexpr int kMargin = 24;
constexpr int kTop = 80;
constexpr int kFooterTop = 500;
constexpr int kGap = 16;
constexpr int kCardWidth = (kPageSize.width - 2 * kMargin - kGap) / 2;
constexpr int kRowHeight = 34;
constexpr Size kCommand{108, 28};

constexpr long kUpdateGroup = 11;
constexpr long kAppearanceGroup = 12;
constexpr std::size_t kNeverUpdate = 2; // of the update choices

/// The controls whose values are the settings, in tab order.
struct Dialog {
    ComPtr<IVexCheckBox> startWithSystem;
    ComPtr<IVexCheckBox> showInTray;
    ComPtr<IVexCheckBox> minimiseToTray;
    ComPtr<IVexCheckBox> askBeforeClosing;
    std::array<ComPtr<IRadioBox>, 3> updates;
    ComPtr<IVexCheckBox> earlyVersions;
    std::array<ComPtr<IRadioBox>, 3> appearance;
    ComPtr<IVexCheckBox> largerText;
    ComPtr<IVexCheckBox> crashReports;
    ComPtr<IVexCheckBox> recentFiles;
    ComPtr<IVexCheckBox> clearOnQuitting;
    ComPtr<IVexCheckBox> warnOfLinks;
    ComPtr<ICmdButton> status;

    std::array<const ComPtr<IVexCheckBox>*, 10> checks() const
    {
        return {&startWithSystem, &showInTray,   &minimiseToTray, &askBeforeClosing, &earlyVersions,
                &largerText,      &crashReports, &recentFiles,    &clearOnQuitting,  &warnOfLinks};
    }
};

/// What a user decides on; controls show one, and the saved one is kept.
struct Values {
    // As Dialog::checks.
    std::array<bool, 10> checks{false, true, false, true, false, false, false, true, false, true};
    std::size_t update = 0;
    std::size_t appearance = 0;

    friend bool operator==(const Values&, const Values&) = default;
};

bool isChecked(IVexCheckBox& box)
{
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    box.GetValue(&value);
    return value == VEXCHECKBOX_CHECKED;
}

std::size_t chosen(const std::array<ComPtr<IRadioBox>, 3>& boxes)
{
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        VEXRADIOBOX_VALUE value = VEXRADIOBOX_UNCHECKED;
        boxes[i]->GetValue(&value);
        if (value == VEXRADIOBOX_CHECKED)
            return i;
    }
    return 0;
}

void enable(IVexControlBase& control, bool isEnabled)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    control.EnableObject(isEnabled ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, &done);
}

/// What depends on another setting can be changed only where it means something.
void followDependencies(const Dialog& dialog)
{
    enable(*dialog.minimiseToTray, isChecked(*dialog.showInTray));
    enable(*dialog.earlyVersions, chosen(dialog.updates) != kNeverUpdate);
    enable(*dialog.clearOnQuitting, isChecked(*dialog.recentFiles));
}

Values read(const Dialog& dialog)
{
    Values values;
    for (std::size_t i = 0; i < values.checks.size(); ++i)
        values.checks[i] = isChecked(**dialog.checks()[i]);
    values.update = chosen(dialog.updates);
    values.appearance = chosen(dialog.appearance);
    return values;
}

void show(const Dialog& dialog, const Values& values)
{
    for (std::size_t i = 0; i < values.checks.size(); ++i)
        (*dialog.checks()[i])->SetValue(values.checks[i] ? VEXCHECKBOX_CHECKED : VEXCHECKBOX_UNCHECKED);
    dialog.updates[values.update]->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    dialog.appearance[values.appearance]->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    followDependencies(dialog);
}

void say(const Dialog& dialog, const wchar_t* text)
{
    dialog.status->SetText(Bstr(text).get());
}

// Looks ---------------------------------------------------------------------------------------------------------------

bool isDark(const Scene& scene)
{
    return &scene.theme() == &Theme::dark();
}

ComPtr<IVexPicture> drawn(const Scene& scene, const wchar_t* file)
{
    return samplePicture(((isDark(scene) ? L"dark\\" : L"light\\") + std::wstring(file)).c_str());
}

ComPtr<IVexImageBase> framed(IVexPicture& picture, const Rect& part, int border)
{
    const auto section = sectionOf(picture);
    SkinRect rect{part.left, part.top, part.right, part.bottom};
    section->put_rect(&rect);
    section->put_rcBorder({border, border, border, border});
    return section;
}

/// A group of settings with its title; rows are placed by their number.
class Card {
public:
    Card(Scene& scene, IVexControlBase& page, const Rect& place, const wchar_t* title) : m_scene(scene)
    {
        m_ground = showSection(scene, page, place, *framed(*drawn(scene, L"card.png"), {0, 0, 24, 24}, 10));
        scene.label(m_ground.get(), Rect::at({16, 12}, {place.width() - 32, 20}), title,
                    {scene.theme().text, 10, true});
    }

    ComPtr<IVexCheckBox> check(const wchar_t* text, int indent = 0)
    {
        return m_scene.checkBox(m_ground.get(), nextRow(indent), text);
    }
    /// Radio boxes of one group below each other.
    std::array<ComPtr<IRadioBox>, 3> choices(long group, const std::array<const wchar_t*, 3>& texts)
    {
        std::array<ComPtr<IRadioBox>, 3> boxes;
        for (std::size_t i = 0; i < boxes.size(); ++i)
            boxes[i] = m_scene.radioBox(m_ground.get(), nextRow(0), texts[i], group);
        return boxes;
    }

private:
    Rect nextRow(int indent)
    {
        const Rect row = Rect::at({16 + indent, m_next}, {kCardWidth - 32 - indent, 24});
        m_next += kRowHeight;
        return row;
    }

    Scene& m_scene;
    ComPtr<IUIFormObj> m_ground;
    int m_next = 44;
};

Rect cardPlace(int column, int row)
{
    constexpr int kHeight = (kFooterTop - kGap - kTop - kGap) / 2;
    return Rect::at({kMargin + column * (kCardWidth + kGap), kTop + row * (kHeight + kGap)}, {kCardWidth, kHeight});
}

/// The button that Enter presses wears the accent.
void makePrimary(Scene& scene, ICmdButton& button)
{
    const auto picture = drawn(scene, L"primary-button.png");
    const auto style =
        scene.textStyle({isDark(scene) ? RGB(0x0F, 0x17, 0x22) : RGB(0xFF, 0xFF, 0xFF), 8, true, TextAlign::Centre});
    int left = 4;
    for (const VEX_BUTTONSTATE state : {VEX_BTN_NORMAL, VEX_BTN_PRESS, VEX_BTN_HOT, VEX_BTN_FOCUS}) {
        button.SetBackImageSec(state, framed(*picture, Rect::at({left, 0}, {40, 28}), 8).get());
        button.SetBackTextStyle(state, style.get());
        left += 48;
    }
    setProperty(button, L"Hotkey/IsEnter", L"1");
}

// The dialog ----------------------------------------------------------------------------------------------------------

void addGeneral(Scene& scene, IVexControlBase& page, Dialog& dialog)
{
    Card card(scene, page, cardPlace(0, 0), L"General");
    dialog.startWithSystem = card.check(L"&Start with the system");
    dialog.showInTray = card.check(L"Show an icon in the &tray");
    dialog.minimiseToTray = card.check(L"&Minimise to the tray", 22);
    dialog.askBeforeClosing = card.check(L"&Ask before closing several windows");
}

void addUpdates(Scene& scene, IVexControlBase& page, Dialog& dialog)
{
    Card card(scene, page, cardPlace(0, 1), L"Updates");
    dialog.updates = card.choices(
        kUpdateGroup, {L"&Install updates without asking", L"&Look for updates, then ask", L"&Never look for updates"});
    dialog.earlyVersions = card.check(L"Offer &early versions too");
}

void addAppearance(Scene& scene, IVexControlBase& page, Dialog& dialog)
{
    Card card(scene, page, cardPlace(1, 0), L"Appearance");
    dialog.appearance = card.choices(kAppearanceGroup, {L"As the s&ystem says", L"Li&ght", L"&Dark"});
    dialog.largerText = card.check(L"Larger te&xt");
}

void addPrivacy(Scene& scene, IVexControlBase& page, Dialog& dialog)
{
    Card card(scene, page, cardPlace(1, 1), L"Privacy");
    dialog.crashReports = card.check(L"Send anonymous crash &reports");
    dialog.recentFiles = card.check(L"Remember recently used &files");
    dialog.clearOnQuitting = card.check(L"Forget them when &quitting", 22);
    dialog.warnOfLinks = card.check(L"&Warn before opening links");
}

struct Commands {
    ComPtr<ICmdButton> defaults;
    ComPtr<ICmdButton> save;
    ComPtr<ICmdButton> cancel;
};

Commands addFooter(Scene& scene, IVexControlBase& page, Dialog& dialog)
{
    constexpr int kTopOfCommands = 16;
    constexpr int kRight = kPageSize.width - kMargin;
    constexpr Rect kPlace{0, kFooterTop, kPageSize.width, kPageSize.height};
    const auto footer = showSection(scene, page, kPlace, *framed(*drawn(scene, L"footer.png"), {0, 0, 24, 24}, 4));
    scene.placeIn(*footer, kPlace, kPageSize, Hold::Both, Hold::Far);
    const auto atRight = [&](const wchar_t* text, int left) {
        const Rect place = Rect::at({left, kTopOfCommands}, kCommand);
        const auto button = scene.button(footer.get(), place, text);
        scene.placeIn(*button, place, kPlace.size(), Hold::Far, Hold::Near);
        return button;
    };
    Commands commands;
    commands.defaults = scene.button(footer.get(), Rect::at({kMargin, kTopOfCommands}, kCommand), L"&Back to defaults");
    dialog.status = scene.label(footer.get(), Rect::at({kMargin + 124, kTopOfCommands}, {300, 28}), L"No changes",
                                {scene.theme().textSoft, 9});
    commands.save = atRight(L"Sa&ve", kRight - 2 * kCommand.width - 12);
    makePrimary(scene, *commands.save);
    commands.cancel = atRight(L"&Cancel", kRight - kCommand.width);
    setProperty(*commands.cancel, L"Hotkey/Hotkey1", std::to_wstring(VK_ESCAPE));
    return commands;
}

void wire(Scene& scene, const Dialog& built, const Commands& commands)
{
    const auto dialog = std::make_shared<Dialog>(built);
    const auto saved = std::make_shared<Values>();
    show(*dialog, *saved);
    const auto changed = [dialog, saved] {
        followDependencies(*dialog);
        say(*dialog, read(*dialog) == *saved ? L"No changes" : L"Not saved yet");
    };
    for (const auto* box : dialog->checks())
        scene.onClick(**box, changed);
    for (const auto& boxes : {dialog->updates, dialog->appearance})
        for (const auto& box : boxes)
            scene.onClick(*box, changed);
    scene.onClick(*commands.defaults, [dialog, changed] {
        show(*dialog, Values{});
        changed();
    });
    scene.onClick(*commands.save, [dialog, saved] {
        *saved = read(*dialog);
        say(*dialog, L"Saved");
    });
    scene.onClick(*commands.cancel, [dialog, saved] {
        show(*dialog, *saved);
        say(*dialog, L"Cancelled: everything is as it was");
    });
}

} // namespace

void buildSettingsPage(Scene& scene, IVexControlBase& page)
{
    pageHeading(scene, page, L"Settings",
                L"A dialog of four controls. Tab, arrows, Space, and Alt with a letter; Enter saves, Escape cancels.");
    Dialog dialog;
    addGeneral(scene, page, dialog);
    addUpdates(scene, page, dialog);
    addAppearance(scene, page, dialog);
    addPrivacy(scene, page, dialog);
    wire(scene, dialog, addFooter(scene, page, dialog));
}

} // namespace gallery
