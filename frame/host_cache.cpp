#include "frame/host_cache.h"

namespace morvane {

namespace {

template <class Interface>
ComPtr<Interface> interfaceOf(IVexControlBase& inner)
{
    ComPtr<IDispatch> found;
    inner.GetInerface(reinterpret_cast<std::int64_t>(&iidOf<Interface>()), found.put());
    return found.as<Interface>();
}

} // namespace

bool HostCache::ensureRoot(IVexControlBase& inner)
{
    if (!root) {
        ComPtr<IDispatch> found;
        inner.GetAmbrel(found.put());
        root = found.as<IAmbrel>();
    }
    return static_cast<bool>(root);
}

void HostCache::refreshWindow()
{
    if (!root)
        return;
    std::int64_t handle = 0;
    root->GetWindowHandle(&handle);
    window = reinterpret_cast<HWND>(handle);
}

void HostCache::fill(IVexControlBase& inner)
{
    clear(); // the control may have moved to another window or skin
    object = interfaceOf<IVexObj>(inner);
    skinObject = interfaceOf<ISkinObjResBase>(inner);
    inner.GetVexRes(res.put());
    inner.GetXMLNode(&configNode);
    if (ensureRoot(inner)) {
        refreshWindow();
        root->GetRenderDevice(&renderDevice);
    }
}

} // namespace morvane
