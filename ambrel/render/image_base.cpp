#include "ambrel/render/image_base.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/colour_filters.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/render_dc.h"

#include <algorithm>

namespace ambrel {

using morvane::guarded;
using morvane::returning;
using morvane::toRect;

void* ImageBase::findInterface(REFIID iid) noexcept
{
    if (iid == kIidSectionImages)
        return static_cast<SectionImages*>(this);
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

Size ImageBase::imageSize() const noexcept
{
    return imageRect(m_section, m_picture ? m_picture->size() : Size{}, 0).size();
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

Rect ImageBase::area() const noexcept
{
    return m_section.rect.isEmpty() && m_picture ? Rect::at({}, m_picture->size()) : m_section.rect;
}

Size ImageBase::naturalSize(Scale scale) const noexcept
{
    return m_picture ? scale(imageRect(m_section, m_picture->size(), 0).size()) : Size{};
}

const ColourFilters* ImageBase::forgetOldForms() noexcept
{
    const ColourFilters* const filters = colourFiltersOf(identity().resources);
    const unsigned generation = filters ? filters->generation() : 0;
    if (m_pictureGeneration != m_picture->generation() || m_filterGeneration != generation) {
        forgetForms();
        m_pictureGeneration = m_picture->generation();
        m_filterGeneration = generation;
    }
    return filters;
}

Surface ImageBase::makeWindow(Size size, const Rect& window, int index, Scale scale, const ColourFilters* filters) const
{
    const bool isAnimated = m_section.imageCount == 1 && m_picture->frameCount() > 1;
    const Picture::Frame frame = m_picture->frame(scale, isAnimated ? index : 0);
    Surface form = makeForm(m_section, frame.pixels, frame.percent, scale, size, isAnimated ? 0 : index, window);
    if (filters)
        filters->apply(form.view());
    return form;
}

const FormCache::Form& ImageBase::formFor(Size size, int index, Scale scale)
{
    const ColourFilters* const filters = forgetOldForms();
    return m_forms.get({size, {}, index, scale.percent(), 0},
                       [&] { return makeWindow(size, {}, index, scale, filters); });
}

bool ImageBase::draw(const Canvas& canvas, const Rect& target, int index, Scale scale)
{
    if (!m_picture)
        return false;
    const Rect shown = canvas.visible(target);
    if (shown.isEmpty())
        return true;
    if (FormCache::isTooLarge(target.size())) {
        const Rect window = shown.shifted(-target.left, -target.top);
        const Surface form = makeWindow(target.size(), window, index, scale, forgetOldForms());
        blendImage(canvas, shown.topLeft(), form.view(), m_section.opacity);
        return true;
    }
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

STDMETHODIMP ImageBase::put_ImageObj(IVexPicture* picture) noexcept
{
    return guarded([&] { setPicture(picture); });
}

STDMETHODIMP ImageBase::get_rect(SkinRect* result) noexcept
{
    return returning(result, [&] { return morvane::toSkinRect(area()); });
}

STDMETHODIMP ImageBase::put_rect(SkinRect* rect) noexcept
{
    return rect ? setField(&ImageSection::rect, toRect(*rect)) : E_POINTER;
}

STDMETHODIMP ImageBase::get_rcBorder(SkinRect* result) noexcept
{
    const Borders& b = m_section.borders;
    return returning(result, [&] { return SkinRect{b.left, b.top, b.right, b.bottom}; });
}

STDMETHODIMP ImageBase::put_rcBorder(SkinRect border) noexcept
{
    const Rect r = toRect(border);
    return setField(&ImageSection::borders, Borders{r.left, r.top, r.right, r.bottom});
}

STDMETHODIMP ImageBase::put_nOpacity(short value) noexcept
{
    return setField(&ImageSection::opacity, std::clamp<int>(value, 0, 255));
}

STDMETHODIMP ImageBase::StretchAll(VARIANT_BOOL stretch) noexcept
{
    const bool all = stretch != VARIANT_FALSE;
    return setField(&ImageSection::stretch, PartStretch{all, all, all, all, all});
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
    return returning(result, [&] { return std::max(0, area().width()); });
}

STDMETHODIMP ImageBase::GetHeight(long* result) noexcept
{
    return returning(result, [&] { return std::max(0, area().height()); });
}

STDMETHODIMP ImageBase::CreateImageSection(BSTR name, hyper resources, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& made) {
        if (resources != 0)
            identity().setResources(reinterpret_cast<IVexRes*>(resources));
        const HRESULT status = identity().rename(*this, morvane::viewOf(name));
        made = morvane::toVariantBool(SUCCEEDED(status));
        return status;
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
        Surface form = makeForm(section, frame.pixels, frame.percent, currentScale(), size);
        if (const ColourFilters* filters = colourFiltersOf(identity().resources))
            filters->apply(form.view());
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
    forgetOldForms(); // first: it empties the list
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

namespace {

const ConfigField<Rect> kRectFields[] = {
    {L"left", &Rect::left}, {L"top", &Rect::top}, {L"right", &Rect::right}, {L"bottom", &Rect::bottom}};
const ConfigField<Borders> kBorderFields[] = {{L"TopHeight", &Borders::top},
                                              {L"BottHeight", &Borders::bottom},
                                              {L"LeftWidth", &Borders::left},
                                              {L"RightWidth", &Borders::right}};
const ConfigField<PartStretch> kStretchFields[] = {{L"LeftStretch", &PartStretch::left},
                                                   {L"RightStretch", &PartStretch::right},
                                                   {L"TopStretch", &PartStretch::top},
                                                   {L"BottStretch", &PartStretch::bottom},
                                                   {L"ClientStretch", &PartStretch::client}};
const ConfigField<ImageSection> kSectionFields[] = {{L"clrTrans", &ImageSection::keyColour},
                                                    {L"IsTrans", &ImageSection::isTransparent},
                                                    {L"Opacity", &ImageSection::opacity},
                                                    {L"clrColorize", &ImageSection::colourise},
                                                    {L"SupportPerPixel", &ImageSection::usesPixelAlpha}};

} // namespace

void ImageBase::readConfig(const ConfigNode& node)
{
    ImageSection s = m_section;
    readFields<Rect>(node, kRectFields, s.rect);
    readFields<Borders>(node, kBorderFields, s.borders);
    readFields<PartStretch>(node, kStretchFields, s.stretch);
    readFields<ImageSection>(node, kSectionFields, s);
    s.opacity = std::clamp(s.opacity, 0, 255);
    setSection(s);
    const auto named = identity().find(VEXOBJTYPE_IMAGE, readText(node, L"PicId")).as<IVexPicture>();
    if (named)
        setPicture(named.get());
}

void ImageBase::writeConfig(ConfigNode& node) const
{
    writeFields<Rect>(node, kRectFields, m_section.rect);
    writeFields<Borders>(node, kBorderFields, m_section.borders);
    writeFields<PartStretch>(node, kStretchFields, m_section.stretch);
    writeFields<ImageSection>(node, kSectionFields, m_section);
    node.setAttribute(L"PicId", nameOf(m_pictureObject.get()));
}

} // namespace ambrel
