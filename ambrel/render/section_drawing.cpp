#include "ambrel/render/section_drawing.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/draw.h"
#include "ambrel/render/colours.h"
#include "host/geometry.h"

#include <algorithm>

namespace ambrel {

ImageSection sectionOf(const SkinImageSection& record) noexcept
{
    ImageSection section;
    section.rect = morvane::toRect(record.rect);
    section.borders = {record.nLeftWidth, record.nTopHeight, record.nRightWidth, record.nBottomHeight};
    section.stretch = {record.bLeftEdgeStretch != 0, record.bTopEdgeStretch != 0, record.bRightEdgeStretch != 0,
                       record.bBottomEdgeStretch != 0, record.bClientAreaStretch != 0};
    section.isTransparent = record.bTrans != 0;
    section.keyColour = record.clrTrans;
    section.colourise = record.clrColorize;
    section.opacity = std::clamp<int>(record.nOpacity, 0, 255);
    section.usesPixelAlpha = record.bSupportPerPixel != 0;
    return section;
}

Rect imageRect(const ImageSection& section, Size picture, int index) noexcept
{
    const Rect whole = section.rect.isEmpty() ? Rect::at({}, picture) : section.rect;
    const int count = std::max(section.imageCount, 1);
    const int i = std::clamp(index, 0, count - 1);
    if (whole.width() >= whole.height()) {
        const int width = whole.width() / count;
        return Rect::at({whole.left + i * width, whole.top}, {width, whole.height()});
    }
    const int height = whole.height() / count;
    return Rect::at({whole.left, whole.top + i * height}, {whole.width(), height});
}

namespace {

Rect atPercent(const Rect& r, int percent)
{
    const auto scaled = [percent](int length) { return morvane::scaled(length, percent, 100); };
    return {scaled(r.left), scaled(r.top), scaled(r.right), scaled(r.bottom)};
}

/// The part with key colour and colourising applied; a copy, made only where something changes.
ConstPixelView recoloured(const ImageSection& section, ConstPixelView part, Surface& copy)
{
    const bool isColourised = isColourising(section.colourise);
    if (part.isEmpty() || (!section.isTransparent && !isColourised))
        return part;
    copy = Surface({part.width, part.height});
    copyImage({copy.view(), {}, copy.view().bounds()}, {}, part);
    if (section.isTransparent)
        applyColourKey(copy.view(), toPlainColour(section.keyColour));
    if (isColourised)
        applyColourise(copy.view(), Colourise::of(toPlainColour(section.colourise)));
    return copy.view();
}

} // namespace

Surface makeForm(const ImageSection& section, ConstPixelView picture, int picturePercent, Scale scale, Size target,
                 int index, const Rect& window)
{
    Surface form(window.isEmpty() ? target : window.size());
    const Size logical{morvane::scaled(picture.width, 100, picturePercent),
                       morvane::scaled(picture.height, 100, picturePercent)};
    Surface copy;
    const ConstPixelView part =
        recoloured(section, picture.part(atPercent(imageRect(section, logical, index), picturePercent)), copy);
    if (form.isEmpty() || part.isEmpty())
        return {};
    const auto inPicture = [&](int length) { return morvane::scaled(length, picturePercent, 100); };
    const Borders& b = section.borders;
    const NineParts parts{{inPicture(b.left), inPicture(b.top), inPicture(b.right), inPicture(b.bottom)},
                          scale(b),
                          section.stretch,
                          scale.percent(),
                          picturePercent};
    drawNinePartsPart(form.view(), part, parts, target, window.topLeft());
    return form;
}

} // namespace ambrel
