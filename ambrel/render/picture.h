// Pictures: decoded from files or memory, for one or more scales, with one or more frames.
#pragma once

#include "ambrel/properties/picture_frames.h"
#include "ambrel/render/form_cache.h"
#include "ambrel/render/picture_decoder.h"
#include "ambrel/render/render_image.h"
#include "ambrel/render/scale.h"
#include "ambrel/render/shared_resource.h"
#include "host/typed_properties.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ambrel {

/// IVexPicture. Sizes are those of the picture for 100 percent; further files of it for larger scales give detail only.
class Picture : public SharedResource<IVexPicture>, public PictureFrames {
public:
    static constexpr IID kImplementationIid = {
        0x51E8C7B4, 0x2A93, 0x4C1D, {0xB7, 0x6E, 0x08, 0xF4, 0x9D, 0x62, 0x3A, 0x1F}};

    Picture() : SharedResource(VEXOBJTYPE_IMAGE, L"Image") {}
    void* findInterface(REFIID iid) noexcept;

    // Two bases have them; the instance completes them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    /// Replaces the picture and its larger forms by what the bytes hold. False, and nothing changes, when they cannot
    /// be decoded. Throws std::bad_alloc.
    bool loadFromMemory(std::span<const std::uint8_t> bytes);

    /// Adds the same picture drawn for a larger scale, in percent. A former one of that scale is replaced. False when
    /// the bytes cannot be decoded. Throws std::bad_alloc.
    bool loadVariantFromMemory(int percent, std::span<const std::uint8_t> bytes);

    /// One frame of a picture as pixels that stay while the picture is not changed. Throws std::bad_alloc.
    struct Frame {
        ConstPixelView pixels;
        int percent = 100; // the scale the pixels were made for
    };

    /// The frame from the smallest form that is made for this scale or a larger one, else from the largest form.
    Frame frame(Scale scale, int index = 0) const noexcept;

    Size size() const noexcept;
    int frameCount() const noexcept;

    /// Null for a picture that is not animated. Valid while the picture is not changed. The first of the record's
    /// reserved fields tells how often the frames are shown, 0 for ever.
    const morvane::PictureFrameTable* frameTable() noexcept override
    {
        return frameCount() > 1 ? &m_frameTable : nullptr;
    }

    /// The files that the picture was made of, by ascending scale, the first for 100 percent; none without a picture.
    /// Borrowed, valid while the picture is not changed. Throws std::bad_alloc.
    struct Form {
        int percent;
        std::span<const std::uint8_t> bytes;
    };
    std::vector<Form> forms() const;

    /// Changes whenever the pixels do.
    unsigned generation() const noexcept { return m_generation; }

    STDMETHODIMP ImportFile(BSTR path, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP ExportFile(BSTR path, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetpByte(unsigned char** result) noexcept override;
    STDMETHODIMP GetlSize(long* result) noexcept override;
    STDMETHODIMP Save(BSTR path, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetWidth(short* result) noexcept override;
    STDMETHODIMP GetHeight(short* result) noexcept override;
    STDMETHODIMP GetBitmap(OLE_COLOR colourise, OLE_COLOR transparent, hyper* result) noexcept override;
    STDMETHODIMP GetImageType(VEX_PICTURE_TYPE* result) noexcept override;
    STDMETHODIMP GetRenderImage(hyper device, long index, hyper* result) noexcept override;

protected:
    bool preview(HDC dc, const Rect& rect) override;
    bool isComplete() const override { return frameCount() > 0; }

private:
    struct Variant {
        int percent;
        DecodedPicture picture;
        std::vector<std::uint8_t> bytes; // as they were read, for saving
    };

    const Variant* variantFor(Scale scale) const noexcept;

    std::vector<Variant> m_variants; // by ascending scale; the first is the one for 100 percent
    morvane::PictureFrameTable m_frameTable{};
    std::vector<morvane::ComPtr<RenderImage>> m_renderImages; // by frame, made when asked for
    unsigned m_generation = 0;
};

} // namespace ambrel
