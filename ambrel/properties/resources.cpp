#include "ambrel/properties/resources.h"

#include "frame/com/bstr.h"

#include <optional>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;

namespace {

std::optional<VexObjType> resourceTypeOf(enumPropType type) noexcept
{
    switch (type) {
    case _PROPTYPE_IMAGESECTION:
        return VEXOBJTYPE_IMAGEBASE;
    case _PROPTYPE_TEXTSTYLE:
        return VEXOBJTYPE_TEXTSTYLE;
    case _PROPTYPE_FONT:
        return VEXOBJTYPE_FONTEX;
    case _PROPTYPE_CURSOR:
        return VEXOBJTYPE_CURSOR;
    case _PROPTYPE_FILLCOLOR:
        return VEXOBJTYPE_GRADIENTCLR;
    default:
        return std::nullopt;
    }
}

} // namespace

ComPtr<IDispatch> SkinResources::find(enumPropType type, std::wstring_view name) const
{
    const auto resourceType = resourceTypeOf(type);
    if (!m_resources || !resourceType || name.empty())
        return nullptr;
    ComPtr<IVexObj> found;
    const Bstr text(name);
    if (FAILED(m_resources->GetResObject(*resourceType, text.get(), nullptr, VARIANT_TRUE, found.put())) || !found)
        return nullptr;
    return found.as<IDispatch>();
}

std::wstring resourceName(IDispatch* resource)
{
    ComPtr<IVexObj> object;
    if (resource)
        resource->QueryInterface(morvane::iidOf<IVexObj>(), object.putVoid());
    Bstr name;
    if (object)
        object->GetName(name.put());
    return name.str();
}

} // namespace ambrel
