// What these four controls make together: a settings dialog as an application would ship it, usable by keyboard alone.
#include "gallery/page.h"

namespace gallery {

namespace {

struct Settings {
    ComPtr<IVexCheckBox> startWithSystem;
    ComPtr<IVexCheckBox> checkForUpdates;
    ComPtr<IVexCheckBox> includeBeta;
    ComPtr<IVexCheckBox> sendReports;
    std::vector<ComPtr<IRadioBox>> appearance;
    ComPtr<ICmdButton> status;
};

bool isChecked(IVexCheckBox& box)
{
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    box.GetValue(&value);
    return value == VEXCHECKBOX_CHECKED;
}

ComPtr<IUIFormObj> card(Scene& scene, IVexControlBase& page, const Rect& place, const wchar_t* title)
{
    const auto line = scene.form(&page, place, scene.theme().line);
    const auto inside =
        scene.form(line.get(), Rect::at({1, 1}, {place.width() - 2, place.height() - 2}), scene.theme().surface);
    scene.label(inside.get(), Rect::at({16, 10}, {place.width() - 32, 20}), title, {scene.theme().text, 10, true});
    return inside;
}

void addGeneral(Scene& scene, IVexControlBase& page, Settings& settings)
{
    const auto general = card(scene, page, {24, 92, 372, 264}, L"General");
    IVexControlBase* const form = general.get();
    settings.startWithSystem = scene.checkBox(form, Rect::at({16, 40}, {300, 24}), L"&Start with the system");
    settings.checkForUpdates = scene.checkBox(form, Rect::at({16, 70}, {300, 24}), L"&Look for updates every day");
    settings.includeBeta = scene.checkBox(form, Rect::at({36, 100}, {280, 24}), L"Offer &early versions too");
    settings.sendReports = scene.checkBox(form, Rect::at({16, 130}, {300, 24}), L"Send anonymous crash &reports");
    settings.checkForUpdates->SetValue(VEXCHECKBOX_CHECKED);
    scene.onClick(*settings.checkForUpdates.get(), [updates = settings.checkForUpdates, beta = settings.includeBeta] {
        VARIANT_BOOL done = VARIANT_FALSE;
        beta->EnableObject(isChecked(*updates) ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, &done);
    });
}

void addAppearance(Scene& scene, IVexControlBase& page, Settings& settings)
{
    const auto appearance = card(scene, page, {388, 92, 736, 264}, L"Appearance");
    int top = 40;
    for (const wchar_t* text : {L"As the s&ystem says", L"Li&ght", L"&Dark"}) {
        settings.appearance.push_back(scene.radioBox(appearance.get(), Rect::at({16, top}, {290, 24}), text, 11));
        top += 30;
    }
    settings.appearance.front()->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
}

void reset(const Settings& settings)
{
    for (const auto& box : {settings.startWithSystem, settings.includeBeta, settings.sendReports})
        box->SetValue(VEXCHECKBOX_UNCHECKED);
    settings.checkForUpdates->SetValue(VEXCHECKBOX_CHECKED);
    VARIANT_BOOL done = VARIANT_FALSE;
    settings.includeBeta->EnableObject(VARIANT_TRUE, VARIANT_TRUE, &done);
    settings.appearance.front()->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
}

void say(const Settings& settings, const wchar_t* text)
{
    settings.status->SetText(Bstr(text).get());
}

void addCommands(Scene& scene, IVexControlBase& page, Settings& settings)
{
    settings.status =
        scene.label(&page, Rect::at({24, 290}, {330, 28}), L"Nothing changed yet", {scene.theme().textSoft, 9});
    const auto defaults = scene.button(&page, Rect::at({388, 288}, {108, 28}), L"De&faults");
    const auto cancel = scene.button(&page, Rect::at({508, 288}, {108, 28}), L"Cancel");
    const auto save = scene.button(&page, Rect::at({628, 288}, {108, 28}), L"Save");
    const auto shared = std::make_shared<Settings>(settings);
    scene.onClick(*defaults.get(), [shared] {
        reset(*shared);
        say(*shared, L"Back to the defaults");
    });
    scene.onClick(*cancel.get(), [shared] { say(*shared, L"Cancelled"); });
    scene.onClick(*save.get(), [shared] {
        say(*shared, isChecked(*shared->sendReports) ? L"Saved. Thank you for the reports." : L"Saved");
    });
}

} // namespace

void buildSettingsPage(Scene& scene, IVexControlBase& page)
{
    pageHeading(scene, page, L"Settings dialog", L"Four controls, one dialog. Try it with Tab and Space.");
    Settings settings;
    addGeneral(scene, page, settings);
    addAppearance(scene, page, settings);
    addCommands(scene, page, settings);
}

} // namespace gallery
