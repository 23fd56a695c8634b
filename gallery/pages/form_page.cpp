// Forms: fills, forms inside forms with clipping, children that move with their form.
#include "gallery/page.h"

namespace gallery {

namespace {

void addFills(Scene& scene, IVexControlBase& page, int top)
{
    int left = 24;
    for (const int degrees : {0, 45, 90, 180}) {
        const auto form = scene.form(&page, Rect::at({left, top}, {150, 70}), scene.theme().surface);
        form->SetBackColor(scene.fill(scene.theme().accent, scene.theme().surface, degrees).get());
        form->DirectRedraw(nullptr);
        const std::wstring text = L"gradient, " + std::to_wstring(degrees) + L"\u00B0";
        scene.label(&page, Rect::at({left, top + 74}, {150, 18}), text, {scene.theme().textSoft, 9});
        left += 166;
    }
}

void addNested(Scene& scene, IVexControlBase& page, int top)
{
    const auto outer = scene.form(&page, Rect::at({24, top}, {320, 180}), scene.theme().surface);
    const auto inner = scene.form(outer.get(), Rect::at({20, 20}, {200, 120}), scene.theme().selectSoft);
    scene.label(inner.get(), Rect::at({12, 10}, {180, 20}), L"A form inside a form", {scene.theme().text, 9});
    scene.checkBox(inner.get(), Rect::at({12, 38}, {170, 24}), L"Moves with its form");
    scene.button(inner.get(), Rect::at({130, 80}, {104, 28}), L"Clipped");

    const auto move = scene.button(&page, Rect::at({370, top}, {140, 28}), L"Move the form");
    Scene* const shared = &scene;
    scene.onClick(*move.get(), [shared, inner, step = 0]() mutable {
        step = (step + 1) % 5;
        shared->place(*inner.get(), Rect::at({20 + step * 24, 20 + step * 10}, {200, 120}));
    });
    const auto hide = scene.button(&page, Rect::at({370, top + 36}, {140, 28}), L"Hide or show");
    scene.onClick(*hide.get(), [inner] {
        VARIANT_BOOL visible = VARIANT_FALSE;
        inner->IsVisible(&visible);
        inner->SetVisible(visible ? VARIANT_FALSE : VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE);
    });
}

} // namespace

void buildFormPage(Scene& scene, IVexControlBase& page)
{
    const int top =
        pageHeading(scene, page, L"Form", L"A surface with a picture, a fill or a bitmap that holds other controls.");
    sectionHeading(scene, page, {24, top}, L"Fills");
    addFills(scene, page, top + 26);
    sectionHeading(scene, page, {24, top + 140}, L"Children");
    addNested(scene, page, top + 166);
}

} // namespace gallery
