// Check boxes: every value in every state, three values by clicking, the push-button look, mirrored.
#include "gallery/page.h"

#include <array>

namespace gallery {

namespace {

struct Named {
    const wchar_t* text;
    int value;
};
constexpr std::array<Named, 3> kValues = {{{L"Unchecked", 0}, {L"Checked", 1}, {L"Half-checked", 2}}};

ComPtr<IVexCheckBox> boxWithValue(Scene& scene, IVexControlBase& page, const Rect& place, const Named& named)
{
    const auto box = scene.checkBox(&page, place, named.text);
    box->SetValue(static_cast<VEXCHECKBOX_VALUE>(named.value));
    return box;
}

void addValues(Scene& scene, IVexControlBase& page, int top)
{
    int left = 24;
    for (const Named& named : kValues) {
        boxWithValue(scene, page, Rect::at({left, top}, {150, 24}), named);
        VARIANT_BOOL done = VARIANT_FALSE;
        boxWithValue(scene, page, Rect::at({left, top + 30}, {150, 24}), named)
            ->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
        boxWithValue(scene, page, Rect::at({left, top + 60}, {150, 24}), named)->SetActive(VARIANT_FALSE);
        left += 170;
    }
    const Theme& theme = scene.theme();
    scene.label(&page, Rect::at({left, top}, {140, 24}), L"enabled", {theme.textSoft, 9});
    scene.label(&page, Rect::at({left, top + 30}, {140, 24}), L"disabled", {theme.textSoft, 9});
    scene.label(&page, Rect::at({left, top + 60}, {140, 24}), L"inactive", {theme.textSoft, 9});
}

void addLive(Scene& scene, IVexControlBase& page, int top)
{
    scene.checkBox(&page, Rect::at({24, top}, {200, 24}), L"Two values");
    scene.checkBox(&page, Rect::at({24, top + 30}, {200, 24}), L"Three values")->SetThreeState(VARIANT_TRUE);
    const auto mirrored = scene.checkBox(&page, Rect::at({250, top}, {160, 24}), L"Mirrored");
    mirrored->MirrorObject(VARIANT_TRUE);
    mirrored->DirectRedraw(nullptr);
}

} // namespace

void buildCheckBoxPage(Scene& scene, IVexControlBase& page)
{
    const int top = pageHeading(scene, page, L"Check box", L"A box with two or three values and a text beside it.");
    sectionHeading(scene, page, {24, top}, L"Values");
    addValues(scene, page, top + 26);
    sectionHeading(scene, page, {24, top + 136}, L"Live");
    addLive(scene, page, top + 162);
}

} // namespace gallery
