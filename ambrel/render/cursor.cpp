#include "ambrel/render/cursor.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/image_header.h"
#include "ambrel/pixels/stretch.h"
#include "ambrel/render/bitmaps.h"

#include <vector>

namespace ambrel {

using morvane::returning;

void* Cursor::findInterface(REFIID iid) noexcept
{
    return findResourceInterface(iid, kImplementationIid);
}

void Cursor::setStandard(long id) noexcept
{
    m_standard = id;
    changed();
}

namespace {

/// The hot spot that a cursor file gives its picture, in the picture's pixels.
Point hotSpotOf(IVexPicture* picture)
{
    unsigned char* bytes = nullptr;
    long size = 0;
    if (FAILED(picture->GetpByte(&bytes)) || FAILED(picture->GetlSize(&size)) || !bytes || size <= 0)
        return {};
    return cursorHotSpot({bytes, static_cast<std::size_t>(size)});
}

/// The mask of one bit a pixel, set where nothing shows: what counts when no pixel has any alpha.
morvane::UniqueBitmap maskOf(ConstPixelView pixels)
{
    const int stride = (pixels.width + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(static_cast<std::size_t>(stride) * static_cast<std::size_t>(pixels.height));
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            if (alphaOf(pixels.at(x, y)) == 0)
                bits[static_cast<std::size_t>(y * stride + x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    return morvane::UniqueBitmap(CreateBitmap(pixels.width, pixels.height, 1, 1, bits.data()));
}

morvane::UniqueCursor cursorOf(ConstPixelView pixels, Point hotSpot)
{
    const Surface plain = withStraightAlpha(pixels);
    const morvane::UniqueBitmap colour = bitmapOf(plain.view());
    const morvane::UniqueBitmap mask = maskOf(pixels);
    ICONINFO info{FALSE, static_cast<DWORD>(hotSpot.x), static_cast<DWORD>(hotSpot.y), mask.get(), colour.get()};
    return morvane::UniqueCursor(static_cast<HCURSOR>(CreateIconIndirect(&info)));
}

} // namespace

HCURSOR Cursor::pictureCursor()
{
    const auto picture = implementationOf<Picture>(m_pictureObject.get());
    const Scale scale = currentScale();
    if (!picture || picture->size().isEmpty())
        return nullptr;
    if (!m_made || m_madeGeneration != picture->generation() || m_madeScale != scale) {
        Surface scaled(scale(picture->size()));
        stretchImage(scaled.view(), picture->frame(scale).pixels);
        const Point hotSpot = hotSpotOf(m_pictureObject.get());
        m_made = cursorOf(scaled.view(), {scale(hotSpot.x), scale(hotSpot.y)});
        m_madeGeneration = picture->generation();
        m_madeScale = scale;
    }
    return m_made.get();
}

HCURSOR Cursor::handle()
{
    if (HCURSOR own = m_standard == 0 ? pictureCursor() : nullptr)
        return own;
    const long id = m_standard > 0 && m_standard <= 0xFFFF ? m_standard : kArrow;
    HCURSOR standard = LoadCursorW(nullptr, MAKEINTRESOURCEW(id));
    return standard ? standard : LoadCursorW(nullptr, MAKEINTRESOURCEW(kArrow));
}

STDMETHODIMP Cursor::put_ImageObj(IVexPicture* picture) noexcept
{
    m_pictureObject = morvane::ComPtr(picture);
    m_made.reset();
    m_standard = picture ? 0 : kArrow;
    changed();
    return S_OK;
}

STDMETHODIMP Cursor::GetCursorHandle(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(handle()); });
}

STDMETHODIMP Cursor::SetCursor() noexcept
{
    return morvane::guarded([&] { ::SetCursor(handle()); });
}

void Cursor::dropReferences()
{
    m_pictureObject.reset();
    m_made.reset();
}

void Cursor::readConfig(const ConfigNode& node)
{
    bool isStandard = true;
    readFlag(node, L"IsStand", isStandard);
    readNumber(node, L"StandCursor", m_standard);
    const auto named = identity().find(VEXOBJTYPE_IMAGE, readText(node, L"PicId")).as<IVexPicture>();
    if (!isStandard && named)
        put_ImageObj(named.get());
    else if (isStandard && m_standard == 0)
        m_standard = kArrow;
}

void Cursor::writeConfig(ConfigNode& node) const
{
    writeNumber(node, L"IsStand", m_standard != 0);
    writeNumber(node, L"StandCursor", m_standard);
    node.setAttribute(L"PicId", nameOf(m_pictureObject.get()));
}

} // namespace ambrel
