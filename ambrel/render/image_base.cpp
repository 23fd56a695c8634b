#include "ambrel/render/image_base.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/render_dc.h"

#include <algorithm>

namespace ambrel {

using morvane::guarded;
using morvane::returning;
using morvane::toRect;

void* ImageBase::findInterface(REFIID iid) noexcept
{
    return findResourceInterface(iid, kImplementationIid);
}

void ImageBase::forgetForms() noexcept
{
    m_forms.clear();
    m_renderImages.clear();
}

void ImageBase::setSection(const ImageSection& section)
{
    if (section == m_section)
        return;
    // The opacity is applied while drawing; the forms stay good.
    ImageSection former = m_section;
    former.opacity = section.opacity;
    if (former != section)
        forgetForms();
    m_section = section;
    changed();
}

void ImageBase::setImageCount(int count)
{
    ImageSection section = m_section;
    section.imageCount = std::clamp(count, 1, 32767);
    setSection(section);
}

void ImageBase::setPicture(IVexPicture* picture)
{
    if (m_pictureObject.get() == picture)
        return;
    forgetForms();
    m_pictureObject = morvane::ComPtr(picture);
    m_picture = implementationOf<Picture>(picture);
    changed();
}

Size ImageBase::naturalSize(Scale scale) const noexcept
{
    return m_picture ? scale(imageRect(m_section, m_picture->size(), 0).size()) : Size{};
}

const FormCache::Form& ImageBase::formFor(Size size, int index, Scale scale)
{
    if (m_pictureGeneration != m_picture->generation()) {
        forgetForms();
        m_pictureGeneration = m_picture->generation();
    }
    return m_forms.get({size, {}, index, scale.percent(), 0}, [&] {
        const bool isAnimated = m_section.imageCount == 1 && m_picture->frameCount() > 1;
        const Picture::Frame frame = m_picture->frame(scale, isAnimated ? index : 0);
        return makeForm(m_section, frame.pixels, frame.percent, scale, size, isAnimated ? 0 : index);
    });
}

bool ImageBase::draw(const Canvas& canvas, const Rect& target, int index, Scale scale)
{
    if (!m_picture)
        return false;
    if (canvas.visible(target).isEmpty())
        return true;
    const FormCache::Form& form = formFor(target.size(), index, scale);
    drawImage(canvas, target.topLeft(), form.pixels.view(), form.coverage, m_section.opacity);
    return true;
}

HRESULT ImageBase::setFlag(bool& flag, VARIANT_BOOL value) noexcept
{
    const bool wanted = value != VARIANT_FALSE;
    if (flag != wanted) {
        flag = wanted;
        forgetForms();
        changed();
    }
    return S_OK;
}

STDMETHODIMP ImageBase::get_ImageObj(IVexPicture** result) noexcept
{
    return returning(result, [&] { return m_pictureObject; });
}

STDMETHODIMP ImageBase::put_ImageObj(IVexPicture* picture) noexcept
{
    return guarded([&] { setPicture(picture); });
}

STDMETHODIMP ImageBase::get_rect(SkinRect* result) noexcept
{
    return returning(result, [&] { return morvane::toSkinRect(m_section.rect); });
}

STDMETHODIMP ImageBase::put_rect(SkinRect* rect) noexcept
{
    if (!rect)
        return E_POINTER;
    return guarded([&] {
        ImageSection section = m_section;
        section.rect = toRect(*rect);
        setSection(section);
    });
}

STDMETHODIMP ImageBase::get_rcBorder(SkinRect* result) noexcept
{
    const Borders& b = m_section.borders;
    return returning(result, [&] { return SkinRect{b.left, b.top, b.right, b.bottom}; });
}

STDMETHODIMP ImageBase::put_rcBorder(SkinRect border) noexcept
{
    return guarded([&] {
        const Rect r = toRect(border);
        ImageSection section = m_section;
        section.borders = {r.left, r.top, r.right, r.bottom};
        setSection(section);
    });
}

STDMETHODIMP ImageBase::get_bLeftEdgeStretch(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.stretch.left; });
}

STDMETHODIMP ImageBase::put_bLeftEdgeStretch(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.stretch.left, value);
}

STDMETHODIMP ImageBase::get_bRightEdgeStretch(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.stretch.right; });
}

STDMETHODIMP ImageBase::put_bRightEdgeStretch(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.stretch.right, value);
}

STDMETHODIMP ImageBase::get_bTopEdgeStretch(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.stretch.top; });
}

STDMETHODIMP ImageBase::put_bTopEdgeStretch(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.stretch.top, value);
}

STDMETHODIMP ImageBase::get_bBottomEdgeStretch(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.stretch.bottom; });
}

STDMETHODIMP ImageBase::put_bBottomEdgeStretch(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.stretch.bottom, value);
}

STDMETHODIMP ImageBase::get_bClientAreaStretch(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.stretch.client; });
}

STDMETHODIMP ImageBase::put_bClientAreaStretch(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.stretch.client, value);
}

STDMETHODIMP ImageBase::get_bTransparent(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.isTransparent; });
}

STDMETHODIMP ImageBase::put_bTransparent(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.isTransparent, value);
}

STDMETHODIMP ImageBase::get_bSupportPerPixel(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_section.usesPixelAlpha; });
}

STDMETHODIMP ImageBase::put_bSupportPerPixel(VARIANT_BOOL value) noexcept
{
    return setFlag(m_section.usesPixelAlpha, value);
}

STDMETHODIMP ImageBase::get_clrTrans(OLE_COLOR* result) noexcept
{
    return returning(result, [&] { return m_section.keyColour; });
}

STDMETHODIMP ImageBase::put_clrTrans(OLE_COLOR value) noexcept
{
    return guarded([&] {
        ImageSection section = m_section;
        section.keyColour = value;
        setSection(section);
    });
}

STDMETHODIMP ImageBase::get_clrColorize(OLE_COLOR* result) noexcept
{
    return returning(result, [&] { return m_section.colourise; });
}

STDMETHODIMP ImageBase::put_clrColorize(OLE_COLOR value) noexcept
{
    return guarded([&] {
        ImageSection section = m_section;
        section.colourise = value;
        setSection(section);
    });
}

STDMETHODIMP ImageBase::get_nOpacity(short* result) noexcept
{
    return returning(result, [&] { return m_section.opacity; });
}

STDMETHODIMP ImageBase::put_nOpacity(short value) noexcept
{
    return guarded([&] {
        ImageSection section = m_section;
        section.opacity = std::clamp<int>(value, 0, 255);
        setSection(section);
    });
}

STDMETHODIMP ImageBase::StretchAll(VARIANT_BOOL stretch) noexcept
{
    return guarded([&] {
        const bool all = stretch != VARIANT_FALSE;
        ImageSection section = m_section;
        section.stretch = {all, all, all, all, all};
        setSection(section);
    });
}

bool ImageBase::preview(HDC dc, const Rect& rect)
{
    const BorrowedPixels target(dc, rect);
    return !target.isEmpty() && draw(target.canvas(), rect, 0, currentScale());
}

STDMETHODIMP ImageBase::Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return preview(reinterpret_cast<HDC>(dc), toRect(rect)); });
}

STDMETHODIMP ImageBase::BuildPerPixImage() noexcept
{
    // Forms are made when they are drawn; what was made before is out of date.
    forgetForms();
    return S_OK;
}

STDMETHODIMP ImageBase::GetWidth(long* result) noexcept
{
    return returning(result, [&] {
        return !m_section.rect.isEmpty() || !m_picture ? m_section.rect.width() : m_picture->size().width;
    });
}

STDMETHODIMP ImageBase::GetHeight(long* result) noexcept
{
    return returning(result, [&] {
        return !m_section.rect.isEmpty() || !m_picture ? m_section.rect.height() : m_picture->size().height;
    });
}

STDMETHODIMP ImageBase::CreateImageSection(BSTR name, hyper resources, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        identity().name = morvane::viewOf(name);
        if (resources != 0)
            identity().resources = reinterpret_cast<IVexRes*>(resources);
        return true;
    });
}

STDMETHODIMP ImageBase::GetImageSection(SkinImageSection* result) noexcept
{
    if (!result)
        return E_POINTER;
    return guarded([&] {
        const ImageSection& s = m_section;
        SkinImageSection record{};
        record.szImageName = morvane::Bstr(nameOf(m_pictureObject.get())).detach();
        record.rect = morvane::toSkinRect(s.rect);
        record.nTopHeight = s.borders.top;
        record.nBottomHeight = s.borders.bottom;
        record.nLeftWidth = s.borders.left;
        record.nRightWidth = s.borders.right;
        record.bLeftEdgeStretch = morvane::toVariantBool(s.stretch.left);
        record.bRightEdgeStretch = morvane::toVariantBool(s.stretch.right);
        record.bTopEdgeStretch = morvane::toVariantBool(s.stretch.top);
        record.bBottomEdgeStretch = morvane::toVariantBool(s.stretch.bottom);
        record.bClientAreaStretch = morvane::toVariantBool(s.stretch.client);
        record.clrTrans = s.keyColour;
        record.bTrans = morvane::toVariantBool(s.isTransparent);
        record.nOpacity = static_cast<short>(s.opacity);
        record.clrColorize = s.colourise;
        record.bSupportPerPixel = morvane::toVariantBool(s.usesPixelAlpha);
        *result = record;
    });
}

STDMETHODIMP ImageBase::SetImageSection(SkinImageSection* record) noexcept
{
    if (!record)
        return E_POINTER;
    return guarded([&] {
        ImageSection section = sectionOf(*record);
        section.imageCount = m_section.imageCount;
        setSection(section);
        const auto named = identity().find(VEXOBJTYPE_IMAGE, morvane::viewOf(record->szImageName)).as<IVexPicture>();
        if (named)
            setPicture(named.get());
    });
}

STDMETHODIMP ImageBase::GetHBitmap(SkinRect rect, OLE_COLOR transparent, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& bitmap) {
        const Size size = toRect(rect).size();
        if (!m_picture || size.isEmpty())
            return S_FALSE;
        ImageSection section = m_section;
        if (transparent != kNoColourise) {
            section.isTransparent = true;
            section.keyColour = transparent;
        }
        const Picture::Frame frame = m_picture->frame(currentScale());
        const Surface form = makeForm(section, frame.pixels, frame.percent, currentScale(), size);
        bitmap = reinterpret_cast<hyper>(bitmapOf(form.view()).detach());
        return bitmap != 0 ? S_OK : S_FALSE;
    });
}

STDMETHODIMP ImageBase::GetVexPicture(IVexPicture** result) noexcept
{
    return get_ImageObj(result);
}

STDMETHODIMP ImageBase::RenderDraw(IVexRenderDC* dc, SkinRect rect, short index, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& drawn) {
        if (!dc)
            return E_POINTER;
        const auto ours = fromInterface(dc);
        if (!ours || !ours->hasTarget())
            return S_FALSE;
        drawn = morvane::toVariantBool(draw(ours->canvas(), toRect(rect), index, ours->scale()));
        return S_OK;
    });
}

morvane::ComPtr<RenderImage> ImageBase::renderImage(int index)
{
    const int count = m_picture ? std::max(m_section.imageCount, m_picture->frameCount()) : 0;
    if (index < 0 || index >= count)
        return nullptr;
    m_renderImages.resize(static_cast<std::size_t>(count));
    auto& place = m_renderImages[static_cast<std::size_t>(index)];
    if (!place) {
        const FormCache::Form& form = formFor(naturalSize({}), index, {});
        Surface copy(form.pixels.size());
        copyImage({copy.view(), {}, copy.view().bounds()}, {}, form.pixels.view());
        VEX_PICTURE_TYPE type = VEX_PT_UNKNOWN;
        m_picture->GetImageType(&type);
        place = RenderImage::make(std::move(copy), type);
    }
    return place;
}

STDMETHODIMP ImageBase::GetRenderImage(hyper, short index, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& pointer) {
        const auto image = renderImage(index);
        pointer = reinterpret_cast<hyper>(static_cast<IVexRenderImage*>(image.get()));
        return image ? S_OK : S_FALSE;
    });
}

STDMETHODIMP ImageBase::ReleaseRenderImage(VEX_RENDERENGINE_TYPE, short index, long* result) noexcept
{
    return returning(result, [&] {
        if (index >= 0 && static_cast<std::size_t>(index) < m_renderImages.size())
            m_renderImages[static_cast<std::size_t>(index)].reset();
        return std::ranges::count_if(m_renderImages, [](const auto& image) { return image != nullptr; });
    });
}

STDMETHODIMP ImageBase::GetAllRenderImages(hyper) noexcept
{
    return guarded([&] {
        for (int i = 0; renderImage(i) != nullptr;)
            ++i;
    });
}

STDMETHODIMP ImageBase::ReleaseAllRenderImages(hyper) noexcept
{
    m_renderImages.clear();
    return S_OK;
}

STDMETHODIMP ImageBase::GetVexRenderImage(hyper, short index, IVexRenderImage** result) noexcept
{
    return morvane::filling(result, [&](IVexRenderImage*& place) {
        auto image = renderImage(index);
        place = image.detach();
        return place ? S_OK : S_FALSE;
    });
}

void ImageBase::readConfig(const ConfigNode& node)
{
    ImageSection s = m_section;
    readShort(node, L"left", s.rect.left);
    readShort(node, L"top", s.rect.top);
    readShort(node, L"right", s.rect.right);
    readShort(node, L"bottom", s.rect.bottom);
    readShort(node, L"TopHeight", s.borders.top);
    readShort(node, L"BottHeight", s.borders.bottom);
    readShort(node, L"LeftWidth", s.borders.left);
    readShort(node, L"RightWidth", s.borders.right);
    readFlag(node, L"LeftStretch", s.stretch.left);
    readFlag(node, L"RightStretch", s.stretch.right);
    readFlag(node, L"TopStretch", s.stretch.top);
    readFlag(node, L"BottStretch", s.stretch.bottom);
    readFlag(node, L"ClientStretch", s.stretch.client);
    readColour(node, L"clrTrans", s.keyColour);
    readFlag(node, L"IsTrans", s.isTransparent);
    readShort(node, L"Opacity", s.opacity);
    s.opacity = std::clamp(s.opacity, 0, 255);
    readColour(node, L"clrColorize", s.colourise);
    readFlag(node, L"SupportPerPixel", s.usesPixelAlpha);
    setSection(s);
    const auto named = identity().find(VEXOBJTYPE_IMAGE, readText(node, L"PicId")).as<IVexPicture>();
    if (named)
        setPicture(named.get());
}

void ImageBase::writeConfig(ConfigNode& node) const
{
    const ImageSection& s = m_section;
    const std::pair<const wchar_t*, int> numbers[] = {{L"left", s.rect.left},
                                                      {L"right", s.rect.right},
                                                      {L"top", s.rect.top},
                                                      {L"bottom", s.rect.bottom},
                                                      {L"TopHeight", s.borders.top},
                                                      {L"BottHeight", s.borders.bottom},
                                                      {L"LeftWidth", s.borders.left},
                                                      {L"RightWidth", s.borders.right},
                                                      {L"LeftStretch", s.stretch.left},
                                                      {L"RightStretch", s.stretch.right},
                                                      {L"TopStretch", s.stretch.top},
                                                      {L"BottStretch", s.stretch.bottom},
                                                      {L"ClientStretch", s.stretch.client}};
    for (const auto& [name, value] : numbers)
        writeNumber(node, name, value);
    writeColour(node, L"clrTrans", s.keyColour);
    writeNumber(node, L"IsTrans", s.isTransparent);
    writeNumber(node, L"Opacity", s.opacity);
    writeColour(node, L"clrColorize", s.colourise);
    writeNumber(node, L"SupportPerPixel", s.usesPixelAlpha);
    node.setAttribute(L"PicId", nameOf(m_pictureObject.get()));
}

} // namespace ambrel
