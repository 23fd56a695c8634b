// Image sections as shared resources.
#pragma once

#include "ambrel/properties/section_images.h"
#include "ambrel/render/form_cache.h"
#include "ambrel/render/picture.h"
#include "ambrel/render/section_drawing.h"

namespace ambrel {

class ColourFilters;
class RenderDC;

/// IVexImageBase: a section of a picture. Drawing finds the finished form of the last sizes in a cache, so that it
/// costs one blend and no allocation.
class ImageBase : public SharedResource<IVexImageBase>, public SectionImages {
public:
    static constexpr IID kImplementationIid = {
        0xA87F0D36, 0x91B2, 0x4E74, {0x8C, 0x5A, 0x37, 0xD1, 0x6B, 0xEE, 0x20, 0x94}};

    ImageBase() : SharedResource(VEXOBJTYPE_IMAGEBASE, L"ImageBase") {}
    void* findInterface(REFIID iid) noexcept;

    // Two bases have them; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    const ImageSection& section() const noexcept { return m_section; }
    void setSection(const ImageSection& section);

    /// How many images of equal size lie in the section; RenderDraw's index chooses one.
    void setImageCount(int count) override;
    int imageCount() const noexcept override { return m_section.imageCount; }
    Size imageSize() const noexcept override;

    /// The section's own size for one image, in the pixels of a device of that scale; empty without a picture.
    Size naturalSize(Scale scale) const noexcept;

    Picture* picture() const noexcept { return m_picture.get(); }
    void setPicture(IVexPicture* picture);

    /// Frames of an animated picture; null when it is none.
    const morvane::PictureFrameTable* frameTable() const noexcept
    {
        return m_picture ? m_picture->frameTable() : nullptr;
    }

    /// The index is that of an image in the section, or, in an animated picture of one image, of a frame. False without
    /// a picture. Throws std::bad_alloc.
    bool draw(const Canvas& canvas, const Rect& target, int index, Scale scale);

    STDMETHODIMP get_ImageObj(IVexPicture** result) noexcept override { return give(m_pictureObject, result); }
    STDMETHODIMP put_ImageObj(IVexPicture* picture) noexcept override;
    STDMETHODIMP get_rect(SkinRect* result) noexcept override;
    STDMETHODIMP put_rect(SkinRect* rect) noexcept override;
    STDMETHODIMP get_rcBorder(SkinRect* result) noexcept override;
    STDMETHODIMP put_rcBorder(SkinRect border) noexcept override;
    STDMETHODIMP get_bLeftEdgeStretch(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.stretch.left, result);
    }
    STDMETHODIMP put_bLeftEdgeStretch(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.stretch.left, value);
    }
    STDMETHODIMP get_bRightEdgeStretch(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.stretch.right, result);
    }
    STDMETHODIMP put_bRightEdgeStretch(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.stretch.right, value);
    }
    STDMETHODIMP get_bTopEdgeStretch(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.stretch.top, result);
    }
    STDMETHODIMP put_bTopEdgeStretch(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.stretch.top, value);
    }
    STDMETHODIMP get_bBottomEdgeStretch(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.stretch.bottom, result);
    }
    STDMETHODIMP put_bBottomEdgeStretch(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.stretch.bottom, value);
    }
    STDMETHODIMP get_bClientAreaStretch(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.stretch.client, result);
    }
    STDMETHODIMP put_bClientAreaStretch(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.stretch.client, value);
    }
    STDMETHODIMP get_bTransparent(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.isTransparent, result);
    }
    STDMETHODIMP put_bTransparent(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.isTransparent, value);
    }
    STDMETHODIMP get_bSupportPerPixel(VARIANT_BOOL* result) noexcept override
    {
        return give(m_section.usesPixelAlpha, result);
    }
    STDMETHODIMP put_bSupportPerPixel(VARIANT_BOOL value) noexcept override
    {
        return setFlag(m_section.usesPixelAlpha, value);
    }
    STDMETHODIMP get_clrTrans(OLE_COLOR* result) noexcept override { return give(m_section.keyColour, result); }
    STDMETHODIMP put_clrTrans(OLE_COLOR value) noexcept override { return setField(&ImageSection::keyColour, value); }
    STDMETHODIMP get_clrColorize(OLE_COLOR* result) noexcept override { return give(m_section.colourise, result); }
    STDMETHODIMP put_clrColorize(OLE_COLOR value) noexcept override
    {
        return setField(&ImageSection::colourise, value);
    }
    STDMETHODIMP get_nOpacity(short* result) noexcept override { return give(m_section.opacity, result); }
    STDMETHODIMP put_nOpacity(short value) noexcept override;
    STDMETHODIMP StretchAll(VARIANT_BOOL stretch) noexcept override;
    STDMETHODIMP Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP BuildPerPixImage() noexcept override;
    STDMETHODIMP GetWidth(long* result) noexcept override;
    STDMETHODIMP GetHeight(long* result) noexcept override;
    STDMETHODIMP CreateImageSection(BSTR name, hyper resources, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetImageSection(SkinImageSection* result) noexcept override;
    STDMETHODIMP SetImageSection(SkinImageSection* section) noexcept override;
    STDMETHODIMP GetHBitmap(SkinRect rect, OLE_COLOR transparent, hyper* result) noexcept override;
    STDMETHODIMP GetVexPicture(IVexPicture** result) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, SkinRect rect, short index, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetRenderImage(hyper device, short index, hyper* result) noexcept override;
    STDMETHODIMP ReleaseRenderImage(VEX_RENDERENGINE_TYPE type, short index, long* result) noexcept override;
    STDMETHODIMP GetAllRenderImages(hyper device) noexcept override;
    STDMETHODIMP ReleaseAllRenderImages(hyper device) noexcept override;
    STDMETHODIMP GetVexRenderImage(hyper device, short index, IVexRenderImage** result) noexcept override;

protected:
    void readConfig(const ConfigNode& node) override;
    void writeConfig(ConfigNode& node) const override;
    bool preview(HDC dc, const Rect& rect) override;
    bool isComplete() const override { return m_picture != nullptr; }
    void dropReferences() override { setPicture(nullptr); }

private:
    /// The section's rectangle; all of the picture where none was set.
    Rect area() const noexcept;
    HRESULT setFlag(bool& flag, VARIANT_BOOL value) noexcept;
    template <class Field>
    HRESULT setField(Field ImageSection::*field, Field value) noexcept
    {
        return morvane::guarded([&] {
            ImageSection section = m_section;
            section.*field = std::move(value);
            setSection(section);
        });
    }
    /// Forgets what was made of another picture or through other filters; there is a picture. Answers the filters.
    const ColourFilters* forgetOldForms() noexcept;
    const FormCache::Form& formFor(Size size, int index, Scale scale);
    /// The section in a target of this size, of which only the window is made.
    Surface makeWindow(Size size, const Rect& window, int index, Scale scale, const ColourFilters* filters) const;
    morvane::ComPtr<RenderImage> renderImage(int index);
    void forgetForms() noexcept;

    ImageSection m_section;
    morvane::ComPtr<IVexPicture> m_pictureObject; // as it was given; may be somebody else's implementation
    morvane::ComPtr<Picture> m_picture;           // the same when it is ours
    unsigned m_pictureGeneration = 0;             // of which the forms were made
    unsigned m_filterGeneration = 0;              // and through which filters
    FormCache m_forms;
    std::vector<morvane::ComPtr<RenderImage>> m_renderImages; // by index, made when asked for
};

} // namespace ambrel
