#include "ambrel/render/image_list.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/render/colours.h"
#include "ambrel/render/dib_surface.h"

#include <algorithm>

namespace ambrel {

bool ImageList::setStrip(Surface strip, int imageWidth, OLE_COLOR key)
{
    const int width = imageWidth > 0 ? imageWidth : strip.size().width;
    if (strip.isEmpty() || width > strip.size().width)
        return false;
    const Pixel first = strip.view().at(0, 0);
    if (key == kKeyOfFirstPixel)
        key = static_cast<OLE_COLOR>(RGB(redOf(first), greenOf(first), blueOf(first)));
    if (key != kNoColourise)
        applyColourKey(strip.view(), toPlainColour(key));
    m_imageWidth = width;
    m_strip = std::move(strip);
    changed();
    return true;
}

int ImageList::count() const noexcept
{
    return m_imageWidth > 0 ? m_strip.size().width / m_imageWidth : 0;
}

ConstPixelView ImageList::image(int index) const noexcept
{
    if (index < 0 || index >= count())
        return {};
    return m_strip.view().part(Rect::at({index * m_imageWidth, 0}, imageSize()));
}

bool ImageList::preview(HDC dc, const Rect& rect)
{
    const BorrowedPixels target(dc, rect);
    const Size size = imageSize();
    if (count() == 0 || target.isEmpty())
        return false;
    const int perRow = std::max(1, rect.width() / size.width);
    for (int i = 0; i < count() && i / perRow * size.height < rect.height(); ++i)
        blendImage(target.canvas(), rect.topLeft() + Point{i % perRow * size.width, i / perRow * size.height},
                   image(i));
    return true;
}

} // namespace ambrel
