// Where the runtime's parts that must not include each other are put together, before anything runs.
#include "ambrel/properties/property_factory.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/resource_factory.h"

namespace ambrel {

namespace {

HRESULT makeFill(IFillColor** result)
{
    morvane::ComPtr<IVexObj> object;
    const HRESULT status = createResource(VEXOBJTYPE_GRADIENTCLR, {}, nullptr, object.put());
    *result = object.as<IFillColor>().detach();
    return status;
}

int scaleOf(IVexControlBase& owner)
{
    std::int64_t handle = 0;
    owner.GetRenderDevice(&handle);
    const RenderDevice* const device = RenderDevice::fromHandle(handle);
    return (device ? device->scale() : Scale()).percent();
}

struct Wiring {
    Wiring() noexcept
    {
        setFillFactory(&makeFill);
        setOwnerScale(&scaleOf);
    }
};
const Wiring g_wiring;

} // namespace

} // namespace ambrel
