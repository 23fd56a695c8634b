#include "ambrel/render/image_list.h"

#include "ambrel/pixels/colour_change.h"

namespace ambrel {

void ImageList::setStrip(Surface strip, int imageWidth, OLE_COLOR key)
{
    if (key != kNoColourise)
        applyColourKey(strip.view(), key);
    m_imageWidth = imageWidth > 0 ? imageWidth : strip.size().width;
    m_strip = std::move(strip);
    changed();
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

} // namespace ambrel
