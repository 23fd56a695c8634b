// What the pages share.
#include "gallery/page.h"

#include <array>

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
    scene.label(&page, {24, 20, 736, 48}, title, {theme.text, 15, true});
    scene.label(&page, {24, 50, 736, 70}, sentence, {theme.textSoft, 9});
    return 92;
}

void sectionHeading(Scene& scene, IVexControlBase& page, Point at, const wchar_t* text)
{
    scene.label(&page, Rect::at(at, {360, 18}), text, {scene.theme().textSoft, 9, true});
}

} // namespace gallery
