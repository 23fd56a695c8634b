#include "ambrel/render/cursor.h"

#include "ambrel/pixels/byte_reader.h"
#include "ambrel/render/bitmaps.h"

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

/// The hot spot that a cursor file gives its first picture.
POINT hotSpotOf(IVexPicture* picture)
{
    unsigned char* bytes = nullptr;
    long size = 0;
    if (FAILED(picture->GetpByte(&bytes)) || FAILED(picture->GetlSize(&size)) || !bytes || size <= 0)
        return {};
    const ByteReader in({bytes, static_cast<std::size_t>(size)});
    constexpr int kCursorFile = 2;
    if (in.u16le(0) != 0 || in.u16le(2) != kCursorFile)
        return {};
    return {in.u16le(10), in.u16le(12)};
}

} // namespace

morvane::UniqueCursor Cursor::makeFromPicture() const
{
    const auto picture = implementationOf<Picture>(m_pictureObject.get());
    const ConstPixelView pixels = picture ? picture->frame({}).pixels : ConstPixelView{};
    if (pixels.isEmpty())
        return {};
    const morvane::UniqueBitmap colour = bitmapOf(pixels);
    const morvane::UniqueBitmap mask(CreateBitmap(pixels.width, pixels.height, 1, 1, nullptr));
    const POINT hotSpot = hotSpotOf(m_pictureObject.get());
    ICONINFO info{FALSE, static_cast<DWORD>(hotSpot.x), static_cast<DWORD>(hotSpot.y), mask.get(), colour.get()};
    return morvane::UniqueCursor(static_cast<HCURSOR>(CreateIconIndirect(&info)));
}

HCURSOR Cursor::handle()
{
    if (m_standard == 0 && m_pictureObject) {
        if (!m_made)
            m_made = makeFromPicture();
        if (m_made)
            return m_made.get();
    }
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
}

void Cursor::writeConfig(ConfigNode& node) const
{
    writeNumber(node, L"IsStand", m_standard != 0);
    writeNumber(node, L"StandCursor", m_standard);
    node.setAttribute(L"PicId", nameOf(m_pictureObject.get()));
}

} // namespace ambrel
