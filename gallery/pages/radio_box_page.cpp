// Radio boxes: values and states, two independent groups, a blinking one.
#include "gallery/page.h"

namespace gallery {

namespace {

void addStates(Scene& scene, IVexControlBase& page, int top)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    scene.radioBox(&page, Rect::at({24, top}, {150, 24}), L"Unchecked", 901);
    scene.radioBox(&page, Rect::at({24, top + 30}, {150, 24}), L"Checked", 902)
        ->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    scene.radioBox(&page, Rect::at({200, top}, {170, 24}), L"Disabled", 903)
        ->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    const auto checked = scene.radioBox(&page, Rect::at({200, top + 30}, {170, 24}), L"Checked and disabled", 904);
    checked->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
    checked->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
}

void addGroup(Scene& scene, IVexControlBase& page, Point at, long group, std::initializer_list<const wchar_t*> texts)
{
    bool isFirst = true;
    for (const wchar_t* text : texts) {
        const auto box = scene.radioBox(&page, Rect::at(at, {200, 24}), text, group);
        if (std::exchange(isFirst, false))
            box->SetValue(VEXRADIOBOX_CHECKED, VARIANT_TRUE);
        at.y += 30;
    }
}

} // namespace

void buildRadioBoxPage(Scene& scene, IVexControlBase& page)
{
    const int top = pageHeading(scene, page, L"Radio box",
                                L"One of a group: boxes with the same group number under one parent share one choice.");
    sectionHeading(scene, page, {24, top}, L"States");
    addStates(scene, page, top + 26);
    sectionHeading(scene, page, {24, top + 106}, L"Size");
    addGroup(scene, page, {24, top + 132}, 1, {L"Small", L"Medium", L"Large"});
    sectionHeading(scene, page, {250, top + 106}, L"Delivery");
    addGroup(scene, page, {250, top + 132}, 2, {L"Pick up", L"By post", L"By courier"});
}

} // namespace gallery
