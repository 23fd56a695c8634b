#include "ambrel/render/picture.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/stretch.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/colours.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/section_drawing.h"

#include <algorithm>

namespace ambrel {

using morvane::returning;

void* Picture::findInterface(REFIID iid) noexcept
{
    if (iid == kIidPictureFrames)
        return static_cast<PictureFrames*>(this);
    if (iid == morvane::iidOf<ISkinWithRealResBase>())
        return static_cast<IVexPicture*>(this);
    return findResourceInterface(iid, kImplementationIid);
}

bool Picture::loadFromMemory(std::span<const std::uint8_t> bytes)
{
    auto decoded = decodePicture(bytes);
    if (!decoded)
        return false;
    std::vector<Variant> variants;
    variants.push_back({100, std::move(*decoded), {bytes.begin(), bytes.end()}});
    m_variants = std::move(variants);
    m_renderImages.clear();
    const auto& delays = m_variants.front().picture.delaysMs;
    m_frameTable = {static_cast<std::int32_t>(delays.size()), {m_variants.front().picture.plays}, delays.data()};
    ++m_generation;
    changed();
    return true;
}

bool Picture::loadVariantFromMemory(int percent, std::span<const std::uint8_t> bytes)
{
    auto decoded = decodePicture(bytes);
    if (!decoded || m_variants.empty() || percent <= 100)
        return false;
    Variant variant{percent, std::move(*decoded), {bytes.begin(), bytes.end()}};
    auto place = std::ranges::lower_bound(m_variants, percent, {}, &Variant::percent);
    if (place != m_variants.end() && place->percent == percent)
        *place = std::move(variant);
    else
        m_variants.insert(place, std::move(variant));
    const auto& delays = m_variants.front().picture.delaysMs;
    m_frameTable.delaysMs = delays.data();
    ++m_generation;
    return true;
}

const Picture::Variant* Picture::variantFor(Scale scale) const noexcept
{
    if (m_variants.empty())
        return nullptr;
    const auto large = std::ranges::lower_bound(m_variants, scale.percent(), {}, &Variant::percent);
    return large != m_variants.end() ? &*large : &m_variants.back();
}

Picture::Frame Picture::frame(Scale scale, int index) const noexcept
{
    const Variant* variant = variantFor(scale);
    if (!variant)
        return {};
    const auto& frames = variant->picture.frames;
    const int last = static_cast<int>(frames.size()) - 1;
    return {frames[static_cast<std::size_t>(std::clamp(index, 0, last))].view(), variant->percent};
}

std::vector<Picture::Form> Picture::forms() const
{
    std::vector<Form> forms;
    for (const Variant& each : m_variants)
        forms.push_back({each.percent, each.bytes});
    return forms;
}

Size Picture::size() const noexcept
{
    return m_variants.empty() ? Size{} : m_variants.front().picture.frames.front().size();
}

int Picture::frameCount() const noexcept
{
    return m_variants.empty() ? 0 : static_cast<int>(m_variants.front().picture.frames.size());
}

bool Picture::preview(HDC dc, const Rect& rect)
{
    const ConstPixelView pixels = frame({}).pixels;
    const BorrowedPixels target(dc, rect);
    if (pixels.isEmpty() || target.isEmpty())
        return false;
    Surface scaled(rect.size());
    stretchImage(scaled.view(), pixels);
    blendImage(target.canvas(), rect.topLeft(), scaled.view());
    return true;
}

namespace {

/// "folder/name@150.png" for "folder/name.png".
std::wstring pathForScale(const std::wstring& path, int percent)
{
    const std::size_t dot = path.rfind(L'.');
    const bool hasExtension = dot != path.npos && path.find_first_of(L"\\/", dot) == path.npos;
    const std::size_t end = hasExtension ? dot : path.size();
    return path.substr(0, end) + L'@' + std::to_wstring(percent) + path.substr(end);
}

} // namespace

STDMETHODIMP Picture::ImportFile(BSTR path, VARIANT_BOOL* result) noexcept
{
    constexpr int kScales[] = {125, 150, 175, 200, 250, 300, 400};
    return returning(result, [&] {
        const std::wstring file(morvane::viewOf(path));
        const auto bytes = readFile(file);
        if (!bytes || !loadFromMemory(*bytes))
            return false;
        for (const int percent : kScales) // as in packages: the same picture for larger scales, where there is one
            if (const auto larger = readFile(pathForScale(file, percent)))
                loadVariantFromMemory(percent, *larger);
        return true;
    });
}

STDMETHODIMP Picture::ExportFile(BSTR path, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        return !m_variants.empty() && writeFile(std::wstring(morvane::viewOf(path)), m_variants.front().bytes);
    });
}

STDMETHODIMP Picture::GetpByte(unsigned char** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = m_variants.empty() ? nullptr : m_variants.front().bytes.data();
    return m_variants.empty() ? S_FALSE : S_OK;
}

STDMETHODIMP Picture::GetlSize(long* result) noexcept
{
    return returning(result, [&] { return m_variants.empty() ? 0 : m_variants.front().bytes.size(); });
}

STDMETHODIMP Picture::Save(BSTR path, VARIANT_BOOL* result) noexcept
{
    return ExportFile(path, result);
}

STDMETHODIMP Picture::GetWidth(short* result) noexcept
{
    return returning(result, [&] { return size().width; });
}

STDMETHODIMP Picture::GetHeight(short* result) noexcept
{
    return returning(result, [&] { return size().height; });
}

STDMETHODIMP Picture::GetBitmap(OLE_COLOR colourise, OLE_COLOR transparent, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& bitmap) {
        const ConstPixelView pixels = frame({}).pixels;
        if (pixels.isEmpty())
            return S_FALSE;
        Surface copy({pixels.width, pixels.height});
        stretchImage(copy.view(), pixels);
        if (transparent != kNoColourise)
            applyColourKey(copy.view(), toPlainColour(transparent));
        if (isColourising(colourise))
            applyColourise(copy.view(), Colourise::of(toPlainColour(colourise)));
        bitmap = reinterpret_cast<hyper>(bitmapOf(copy.view()).detach());
        return bitmap != 0 ? S_OK : E_OUTOFMEMORY;
    });
}

STDMETHODIMP Picture::GetImageType(VEX_PICTURE_TYPE* result) noexcept
{
    return returning(result, [&] {
        return m_variants.empty() ? VEX_PT_UNKNOWN : static_cast<VEX_PICTURE_TYPE>(m_variants.front().picture.format);
    });
}

STDMETHODIMP Picture::GetRenderImage(hyper, long index, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& image) {
        if (index < 0 || index >= frameCount())
            return S_FALSE;
        m_renderImages.resize(static_cast<std::size_t>(frameCount()));
        auto& place = m_renderImages[static_cast<std::size_t>(index)];
        if (!place) {
            const ConstPixelView pixels = frame({}, static_cast<int>(index)).pixels;
            Surface copy({pixels.width, pixels.height});
            stretchImage(copy.view(), pixels);
            place =
                RenderImage::make(std::move(copy), static_cast<VEX_PICTURE_TYPE>(m_variants.front().picture.format));
        }
        image = reinterpret_cast<hyper>(static_cast<IVexRenderImage*>(place.get()));
        return S_OK;
    });
}

} // namespace ambrel
