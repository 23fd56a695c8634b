// Pictures, fonts, regions and drawing helpers of the resource object.
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/glyph_font.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/image_list.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/render_image.h"
#include "ambrel/render/resource_factory.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/window/alpha_region.h"

#include <algorithm>
#include <commctrl.h>
#include <string>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::toVariantBool;
using morvane::viewOf;

namespace {

template <class Interface>
ComPtr<Interface> newResource(VexObjType type, std::wstring_view name, IVexRes* resources)
{
    ComPtr<IVexObj> made;
    createResource(type, name, resources, made.put());
    return made.as<Interface>();
}

/// An image section over all of a picture file; null when the file is none.
ComPtr<IVexImageBase> sectionOfFile(BSTR path, IVexRes* resources)
{
    const auto picture = newResource<IVexPicture>(VEXOBJTYPE_IMAGE, viewOf(path), resources);
    const auto section = newResource<IVexImageBase>(VEXOBJTYPE_IMAGEBASE, viewOf(path), resources);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!picture || !section || FAILED(picture->ImportFile(path, &loaded)) || !loaded)
        return nullptr;
    short width = 0;
    short height = 0;
    picture->GetWidth(&width);
    picture->GetHeight(&height);
    SkinRect whole{0, 0, width, height};
    section->put_ImageObj(picture.get());
    section->put_rect(&whole);
    section->StretchAll(VARIANT_TRUE);
    return section;
}

Size sizeOf(const SkinRect& rect) noexcept
{
    return morvane::toRect(rect).size();
}

/// Draws into a new bitmap of the rectangle's size, which the caller owns; 0 when nothing was drawn.
template <class Draw>
hyper bitmapOf(const SkinRect& rect, Draw&& draw)
{
    DibSurface surface(sizeOf(rect));
    if (surface.isEmpty() || !draw(surface.dc(), SkinRect{0, 0, rect.right - rect.left, rect.bottom - rect.top}))
        return 0;
    GdiFlush();
    return reinterpret_cast<hyper>(surface.detachBitmap());
}

constexpr OLE_COLOR kNoKey = 0xFFFFFFFF;

/// A list of the images in a strip; refuses a width of which not even one image fits.
HRESULT giveListOfStrip(IVexImageList*& place, Surface strip, int width, OLE_COLOR key, IVexRes* resources)
{
    auto list = newResource<IVexImageList>(VEXOBJTYPE_IMAGELIST, {}, resources);
    const auto own = implementationOf<ImageList>(list.get());
    if (!own)
        return E_OUTOFMEMORY;
    if (!own->setStrip(std::move(strip), width, key))
        return E_INVALIDARG;
    place = list.detach();
    return S_OK;
}

HRESULT gaveBitmap(hyper& place, hyper bitmap) noexcept
{
    place = bitmap;
    return bitmap ? S_OK : S_FALSE;
}

} // namespace

STDMETHODIMP VexRes::GetImageBaseFromFile(BSTR path, IVexImageBase** result) noexcept
{
    return filling(result, [&](IVexImageBase*& made) {
        made = sectionOfFile(path, this).detach();
        return made ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::DrawImageSection(SkinRect rect, IVexImageBase* section, hyper* result) noexcept
{
    if (!section)
        return E_POINTER;
    return filling(result, [&](hyper& bitmap) {
        return gaveBitmap(bitmap, bitmapOf(rect, [&](HDC dc, const SkinRect& whole) {
                              VARIANT_BOOL drawn = VARIANT_FALSE;
                              section->Draw(reinterpret_cast<hyper>(dc), whole, &drawn);
                              return drawn != VARIANT_FALSE;
                          }));
    });
}

STDMETHODIMP VexRes::DrawTextStyle(SkinRect rect, BSTR text, IVexTextStyle* style, hyper* result) noexcept
{
    if (!style)
        return E_POINTER;
    return filling(result, [&](hyper& bitmap) {
        return gaveBitmap(bitmap, bitmapOf(rect, [&](HDC dc, const SkinRect& whole) {
                              VARIANT_BOOL drawn = VARIANT_FALSE;
                              SkinRect extent{};
                              style->DrawText(reinterpret_cast<hyper>(dc), text, whole, VARIANT_TRUE, -1, &extent,
                                              &drawn);
                              return drawn != VARIANT_FALSE;
                          }));
    });
}

STDMETHODIMP VexRes::DrawSkinImage(hyper dc, SkinRect rect, IVexImageBase* image, VARIANT_BOOL* result) noexcept
{
    if (!image || !result)
        return E_POINTER;
    *result = VARIANT_FALSE;
    return image->Draw(dc, rect, result);
}

STDMETHODIMP VexRes::GradientFill(hyper dc, SkinRect rect, OLE_COLOR from, OLE_COLOR to, LONG rotation,
                                  VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& drawn) {
        const auto fill = newResource<IFillColor>(VEXOBJTYPE_GRADIENTCLR, {}, this);
        if (!fill)
            return E_OUTOFMEMORY;
        fill->put_clrStart(from);
        fill->put_clrEnd(to);
        fill->put_nGradientIrotation(rotation);
        return fill->Draw(dc, rect, &drawn);
    });
}

STDMETHODIMP VexRes::DrawIcon(hyper dc, short left, short top, short width, short height, hyper icon,
                              VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& drawn) {
        drawn = toVariantBool(DrawIconEx(reinterpret_cast<HDC>(dc), left, top, reinterpret_cast<HICON>(icon), width,
                                         height, 0, nullptr, DI_NORMAL) != FALSE);
        return drawn ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::GetHwndPrintBmp(hyper, hyper window, hyper* result) noexcept
{
    return filling(result, [&](hyper& bitmap) {
        RECT rect{};
        if (!GetWindowRect(reinterpret_cast<HWND>(window), &rect))
            return S_FALSE;
        const SkinRect size{0, 0, rect.right - rect.left, rect.bottom - rect.top};
        return gaveBitmap(bitmap, bitmapOf(size, [&](HDC dc, const SkinRect&) {
                              return PrintWindow(reinterpret_cast<HWND>(window), dc, 0) != FALSE;
                          }));
    });
}

STDMETHODIMP VexRes::GetRgnFromHBitmap(hyper bitmap, OLE_COLOR transparent, hyper* result) noexcept
{
    return filling(result, [&](hyper& region) {
        const Surface pixels = surfaceOfBitmap(reinterpret_cast<HBITMAP>(bitmap));
        if (pixels.isEmpty())
            return E_INVALIDARG;
        COLORREF key = 0;
        OleTranslateColor(transparent, nullptr, &key);
        const ConstPixelView view = pixels.view();
        const Pixel plain = (GetRValue(key) << 16) | (GetGValue(key) << 8) | GetBValue(key);
        region = reinterpret_cast<hyper>(regionWhere(view.width, view.height, [&](int x, int y) {
                                             return (view.at(x, y) & 0x00FFFFFF) != plain;
                                         }).detach());
        return region ? S_OK : E_OUTOFMEMORY;
    });
}

// Render images

STDMETHODIMP VexRes::CreateImageByHandle(hyper device, BSTR name, hyper handle, VEX_PICTURE_TYPE type,
                                         IVexRenderImage** result) noexcept
{
    return result ? createRenderImageFromHandle(device, viewOf(name), handle, type, result) : E_POINTER;
}
STDMETHODIMP VexRes::CreateImageByPath(hyper device, BSTR path, IVexRenderImage** result) noexcept
{
    return result ? createRenderImageFromPath(device, viewOf(path), result) : E_POINTER;
}
STDMETHODIMP VexRes::GetImageByName(hyper device, BSTR name, IVexRenderImage** result) noexcept
{
    return filling(result, [&](IVexRenderImage*& image) {
        RenderDevice* const found = RenderDevice::fromHandle(device);
        if (!found)
            return E_INVALIDARG;
        image = found->fetchImage(viewOf(name)).detach();
        return image ? S_OK : S_FALSE;
    });
}
STDMETHODIMP VexRes::ReleaseImageByName(hyper device, BSTR name, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& released) {
        RenderDevice* const found = RenderDevice::fromHandle(device);
        if (!found)
            return E_INVALIDARG;
        released = toVariantBool(found->releaseImage(viewOf(name)));
        return released ? S_OK : S_FALSE;
    });
}
STDMETHODIMP VexRes::DestroyImage(IVexRenderImage* image, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& dropped) {
        // The caller goes on holding its reference; the devices forget the image's name.
        bool found = false;
        for (const ComPtr<RootWindow>& each : windows()) {
            RenderDevice* const device = RenderDevice::fromHandle(each->window().renderDevice());
            found = (device && device->dropImage(image)) || found;
        }
        dropped = toVariantBool(found);
        return found ? S_OK : S_FALSE;
    });
}

// Fonts: the handle that drawing contexts take is that of a font of this runtime.

namespace {

unsigned serialOf(hyper device) noexcept
{
    const RenderDevice* const known = RenderDevice::fromHandle(device);
    return known ? known->serial() : 0;
}

} // namespace

/// Null when there is none. One that was made for a former device of the same handle is forgotten.
VexRes::RenderFont* VexRes::fontOf(hyper device, BSTR name)
{
    const auto found = m_fonts.find({device, std::wstring(viewOf(name))});
    if (found == m_fonts.end())
        return nullptr;
    if (found->second.device == serialOf(device))
        return &found->second;
    m_fonts.erase(found);
    return nullptr;
}

STDMETHODIMP VexRes::GetFontByLogFont(hyper device, BSTR name, VEXLOGFONT* description, hyper* result) noexcept
{
    if (!description)
        return E_POINTER;
    return filling(result, [&](hyper& font) {
        if (RenderFont* const known = fontOf(device, name)) {
            ++known->uses;
            font = known->handle;
            return S_OK;
        }
        const auto shared = newResource<IVexFontEx>(VEXOBJTYPE_FONTEX, viewOf(name), this);
        const auto style = newResource<IVexTextStyle>(VEXOBJTYPE_TEXTSTYLE, viewOf(name), this);
        if (!shared || !style)
            return E_OUTOFMEMORY;
        shared->SetLogFont(*description);
        style->put_fontExPtr(shared.get());
        const HRESULT status = style->GetRenderFont(device, &font);
        if (FAILED(status) || !font)
            return FAILED(status) ? status : S_FALSE;
        // Kept by name; the text style keeps what the handle stands for.
        m_fonts.insert_or_assign({device, std::wstring(viewOf(name))}, RenderFont{style, font, serialOf(device)});
        return S_OK;
    });
}
STDMETHODIMP VexRes::GetFontByName(hyper device, BSTR name, hyper* result) noexcept
{
    return filling(result, [&](hyper& font) {
        RenderFont* const known = fontOf(device, name);
        if (!known)
            return S_FALSE;
        ++known->uses;
        font = known->handle;
        return S_OK;
    });
}
STDMETHODIMP VexRes::ReleaseFontByName(hyper device, BSTR name, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& released) {
        RenderFont* const known = fontOf(device, name);
        released = toVariantBool(known != nullptr);
        if (known && --known->uses == 0)
            m_fonts.erase({device, std::wstring(viewOf(name))});
        return released ? S_OK : S_FALSE;
    });
}
STDMETHODIMP VexRes::ReleaseFontByHandle(hyper device, hyper font, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& released) {
        const auto found = std::find_if(m_fonts.begin(), m_fonts.end(), [&](const auto& each) {
            return each.first.first == device && each.second.handle == font && each.second.device == serialOf(device);
        });
        released = toVariantBool(found != m_fonts.end());
        if (released && --found->second.uses == 0)
            m_fonts.erase(found);
        return released ? S_OK : S_FALSE;
    });
}

// Image lists

STDMETHODIMP VexRes::GetImageListFromHIMAGELIST(hyper imageList, IVexImageList** result) noexcept
{
    return filling(result, [&](IVexImageList*& made) {
        const auto source = reinterpret_cast<HIMAGELIST>(imageList);
        int width = 0;
        int height = 0;
        const int count = source ? ImageList_GetImageCount(source) : 0;
        if (count <= 0 || !ImageList_GetIconSize(source, &width, &height))
            return E_INVALIDARG;
        if (width > Surface::kMaxSide / count)
            return E_INVALIDARG; // larger than surfaces may be
        Surface strip(Size{width * count, height});
        if (strip.isEmpty())
            return E_INVALIDARG;
        for (int i = 0; i < count; ++i) {
            const morvane::UniqueIcon icon(ImageList_GetIcon(source, i, ILD_TRANSPARENT));
            const Surface image = surfaceOfIcon(icon.get());
            for (int y = 0; y < std::min(height, image.size().height); ++y)
                std::copy_n(image.view().row(y), std::min(width, image.size().width), strip.view().row(y) + i * width);
        }
        return giveListOfStrip(made, std::move(strip), width, kNoKey, this);
    });
}

STDMETHODIMP VexRes::GetImageListFromImageBase(IVexImageBase* section, short width, OLE_COLOR key,
                                               IVexImageList** result) noexcept
{
    if (!section)
        return E_POINTER;
    return filling(result, [&](IVexImageList*& made) {
        long sectionWidth = 0;
        long sectionHeight = 0;
        section->GetWidth(&sectionWidth);
        section->GetHeight(&sectionHeight);
        hyper bitmap = 0;
        const HRESULT drawn = DrawImageSection({0, 0, sectionWidth, sectionHeight}, section, &bitmap);
        const morvane::UniqueBitmap owned(reinterpret_cast<HBITMAP>(bitmap));
        if (drawn != S_OK)
            return drawn;
        return giveListOfStrip(made, surfaceOfBitmap(owned.get()), width, key, this);
    });
}

STDMETHODIMP VexRes::GetImageListFromFile(BSTR path, short width, OLE_COLOR key, IVexImageList** result) noexcept
{
    return filling(result, [&](IVexImageList*& made) {
        const ComPtr<IVexImageBase> section = sectionOfFile(path, this);
        return section ? GetImageListFromImageBase(section.get(), width, key, &made) : S_FALSE;
    });
}

} // namespace ambrel
