// An image section: a rectangle of a picture with the rules how it fills a target.
#pragma once

#include "ambrel/pixels/nine_part.h"
#include "ambrel/render/scale.h"
#include "host/host.h"

namespace ambrel {

/// Rectangle and borders are in pixels of the 100 percent picture.
struct ImageSection {
    Rect rect; // empty: the whole picture
    Borders borders;
    PartStretch stretch;
    bool isTransparent = false; // whether the key colour is transparent
    OLE_COLOR keyColour = 0x00FF00FF;
    OLE_COLOR colourise = 0xFFFFFFFF;
    int opacity = 255;
    bool usesPixelAlpha = true;
    int imageCount =
        1; // images of equal size side by side, or one below the other when the section is higher than wide

    friend constexpr bool operator==(const ImageSection&, const ImageSection&) = default;
};

/// The section of the contract's record; its picture is named there and not part of it.
ImageSection sectionOf(const SkinImageSection& record) noexcept;

/// The rectangle of one image of the section in its picture; an index beyond the last gives the last.
Rect imageRect(const ImageSection& section, Size picture, int index) noexcept;

/// The section as it looks in a target of the given size on a device of the given scale. `picturePercent` is the scale
/// that the picture was made for; the section's numbers are multiplied by it. `index` is the image within the section.
/// Only the part `window` of the target is made, all of it when that is empty. Empty for an empty target or picture.
/// Throws std::bad_alloc.
Surface makeForm(const ImageSection& section, ConstPixelView picture, int picturePercent, Scale scale, Size target,
                 int index = 0, const Rect& window = {});

/// Whether the colour asks for colourising. Besides the value for "none", black does not: it has no hue, and packages
/// that leave the attribute out are read as black.
constexpr bool isColourising(OLE_COLOR colour)
{
    return colour != 0xFFFFFFFF && colour != 0;
}

} // namespace ambrel
