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

ComPtr<IAmbrel> rootOf(IVexControlBase& inner)
{
    ComPtr<IDispatch> found;
    inner.GetAmbrel(found.put());
    return found.as<IAmbrel>();
}

HWND windowOf(IAmbrel& root)
{
    std::int64_t handle = 0;
    root.GetWindowHandle(&handle);
    return reinterpret_cast<HWND>(handle);
}

} // namespace

bool HostCache::ensureRoot(IVexControlBase& inner)
{
    if (!root)
        root = rootOf(inner);
    return static_cast<bool>(root);
}

void HostCache::refreshWindow()
{
    if (const ComPtr<IAmbrel> asked = root)
        window = windowOf(*asked);
}

HostCache HostCache::of(IVexControlBase& inner)
{
    HostCache now;
    now.object = interfaceOf<IVexObj>(inner);
    now.skinObject = interfaceOf<ISkinObjResBase>(inner);
    inner.GetVexRes(now.res.put());
    inner.GetXMLNode(&now.configNode);
    now.root = rootOf(inner);
    if (now.root) {
        now.window = windowOf(*now.root);
        now.root->GetRenderDevice(&now.renderDevice);
    }
    return now;
}

} // namespace morvane
