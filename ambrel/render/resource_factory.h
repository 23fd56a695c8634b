// Making resources: for the resource object and for the runtime's class objects.
#pragma once

#include "host/host.h"

#include <string_view>

namespace ambrel {

/// A new shared resource: VEXOBJTYPE_IMAGE, _IMAGEBASE, _TEXTSTYLE, _FONTEX, _CURSOR, _GRADIENTCLR or _IMAGELIST.
/// `resources` is borrowed by the result (see ResourceIdentity) and may be null. E_INVALIDARG for other types.
HRESULT createResource(VexObjType type, std::wstring_view name, IVexRes* resources, IVexObj** result) noexcept;

/// A render image from a bitmap (VEX_PT_BMP and the other file types) or an icon (VEX_PT_ICO), known to the device by
/// its name. The handle stays the caller's. E_INVALIDARG for a dead device or a handle without pixels.
HRESULT createRenderImageFromHandle(hyper device, std::wstring_view name, hyper handle, VEX_PICTURE_TYPE type,
                                    IVexRenderImage** result) noexcept;

/// A render image from a file, known to the device by its path. S_FALSE and null when the file is no picture.
HRESULT createRenderImageFromPath(hyper device, std::wstring_view path, IVexRenderImage** result) noexcept;

/// What class objects call; plain or aggregated.
HRESULT createPicture(IUnknown* outer, REFIID iid, void** result) noexcept;
HRESULT createImage(IUnknown* outer, REFIID iid, void** result) noexcept;
HRESULT createObjectDraw(IUnknown* outer, REFIID iid, void** result) noexcept;

/// A layer of no size yet.
HRESULT createLayerGraphics(ILayerGraphics** result) noexcept;

} // namespace ambrel
