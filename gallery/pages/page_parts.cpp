// What the pages share.
#include "gallery/page.h"

#include "gallery/inspector/property_list.h"

#include <array>
#include <stdexcept>

namespace gallery {

std::span<const PageInfo> allPages()
{
    static const std::array<PageInfo, 8> pages = {{
        {L"button", L"Command button", &buildCommandButtonPage},
        {L"checkbox", L"Check box", &buildCheckBoxPage},
        {L"radiobox", L"Radio box", &buildRadioBoxPage},
        {L"form", L"Form", &buildFormPage},
        {L"settings", L"Settings dialog", &buildSettingsPage},
        {L"images", L"Images", &buildResourcesPage},
        {L"text", L"Fills and text", &buildTextPage},
        {L"layout", L"Layout", &buildLayoutPage},
    }};
    return pages;
}

int pageHeading(Scene& scene, IVexControlBase& page, const wchar_t* title, const wchar_t* sentence)
{
    const Theme& theme = scene.theme();
    scene.label(&page, {24, 16, 736, 46}, title, {theme.text, 15, true});
    scene.label(&page, {24, 48, 736, 68}, sentence, {theme.textSoft, 9});
    return 88;
}

namespace {

PropertyRow propertyAt(IVexControlBase& control, std::wstring_view path)
{
    for (PropertyRow& row : listProperties(control)) {
        if (row.path == path)
            return row;
    }
    throw std::runtime_error("a control lacks a property");
}

} // namespace

void setProperty(IVexControlBase& control, std::wstring_view path, const std::wstring& value)
{
    if (!setText(control, propertyAt(control, path), value))
        throw std::runtime_error("a property was not taken");
}

void setProperty(IVexControlBase& control, std::wstring_view path, IDispatch* resource)
{
    VARIANT value;
    value.vt = VT_DISPATCH;
    value.pdispVal = resource; // borrowed
    if (FAILED(propertyAt(control, path).property->SetVariant(value)))
        throw std::runtime_error("a property was not taken");
    control.DirectRedraw(nullptr);
}

void makeStill(IVexControlBase& control)
{
    control.SetDisposeMouse(VARIANT_FALSE);
    control.SetTabStop(VARIANT_FALSE);
}

void focusSample(Scene& scene, IVexControlBase& page, const Rect& sample)
{
    const auto ring = scene.form(&page, sample.inflated(3), scene.theme().window);
    ring->SetDrawColor(VARIANT_FALSE);
    ring->SetBackImageSec(scene.drawingSection(L"ring", 8).get());
    makeStill(*ring);
}

ComPtr<IVexImageBase> chosenButtonSection(const Scene& scene)
{
    return scene.drawingSection(L"chosen-button", 8);
}

void sectionHeading(Scene& scene, IVexControlBase& page, Point at, const wchar_t* text)
{
    scene.label(&page, Rect::at(at, {360, 18}), text, {scene.theme().textSoft, 9, true});
}

} // namespace gallery
