#include "ambrel/render/resource_factory.h"

#include "ambrel/render/bitmaps.h"
#include "ambrel/render/cursor.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/image_list.h"
#include "ambrel/render/layer_graphics.h"
#include "ambrel/render/object_draw.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

namespace ambrel {

using morvane::ComPtr;
using morvane::filling;
using morvane::Instance;

namespace {

template <class Resource>
ComPtr<IVexObj> make(std::wstring_view name, IVexRes* resources)
{
    auto resource = Instance<Resource>::make();
    resource->identity().name = name;
    resource->identity().setResources(resources);
    return ComPtr<IVexObj>(resource.get());
}

struct Kind {
    VexObjType type;
    ComPtr<IVexObj> (*make)(std::wstring_view, IVexRes*);
};

constexpr Kind kKinds[] = {
    {VEXOBJTYPE_IMAGE, make<Picture>},       {VEXOBJTYPE_IMAGEBASE, make<ImageBase>},
    {VEXOBJTYPE_TEXTSTYLE, make<TextStyle>}, {VEXOBJTYPE_FONTEX, make<Font>},
    {VEXOBJTYPE_CURSOR, make<Cursor>},       {VEXOBJTYPE_GRADIENTCLR, make<FillColor>},
    {VEXOBJTYPE_IMAGELIST, make<ImageList>},
};

} // namespace

HRESULT createResource(VexObjType type, std::wstring_view name, IVexRes* resources, IVexObj** result) noexcept
{
    return filling(result, [&](IVexObj*& place) {
        for (const Kind& kind : kKinds) {
            if (kind.type == type) {
                place = kind.make(name, resources).detach();
                return S_OK;
            }
        }
        return E_INVALIDARG;
    });
}

HRESULT createRenderImageFromHandle(hyper device, std::wstring_view name, hyper handle, VEX_PICTURE_TYPE type,
                                    IVexRenderImage** result) noexcept
{
    return filling(result, [&](IVexRenderImage*& place) {
        RenderDevice* owner = RenderDevice::fromHandle(device);
        if (!owner)
            return E_INVALIDARG;
        Surface pixels = type == VEX_PT_ICO ? surfaceOfIcon(reinterpret_cast<HICON>(handle))
                                            : surfaceOfBitmap(reinterpret_cast<HBITMAP>(handle));
        if (pixels.isEmpty())
            return E_INVALIDARG;
        auto image = RenderImage::make(std::move(pixels), type);
        owner->keepImage(name, image.get());
        place = image.detach();
        return S_OK;
    });
}

HRESULT createRenderImageFromPath(hyper device, std::wstring_view path, IVexRenderImage** result) noexcept
{
    return filling(result, [&](IVexRenderImage*& place) {
        RenderDevice* owner = RenderDevice::fromHandle(device);
        if (!owner)
            return E_INVALIDARG;
        const auto bytes = readFile(std::wstring(path));
        auto decoded = bytes ? decodePicture(*bytes) : std::nullopt;
        if (!decoded)
            return S_FALSE;
        auto image =
            RenderImage::make(std::move(decoded->frames.front()), static_cast<VEX_PICTURE_TYPE>(decoded->format));
        owner->keepImage(path, image.get());
        place = image.detach();
        return S_OK;
    });
}

HRESULT createPicture(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return Instance<Picture>::create(outer, iid, result);
}

HRESULT createImage(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return Instance<ImageBase>::create(outer, iid, result);
}

HRESULT createObjectDraw(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return Instance<ObjectDraw>::create(outer, iid, result);
}

HRESULT createLayerGraphics(ILayerGraphics** result) noexcept
{
    return filling(result, [](ILayerGraphics*& place) {
        place = Instance<LayerGraphics>::make().detach();
        return S_OK;
    });
}

} // namespace ambrel
