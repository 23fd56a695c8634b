#include "ambrel/module/class_factory.h"

#include "ambrel/objects/base_object.h"
#include "ambrel/objects/geometry_objects.h"
#include "ambrel/render/resource_factory.h"
#include "frame/com/instance.h"
#include "host/host_classes.h"

#include <algorithm>

namespace ambrel {

using morvane::ComPtr;

namespace {

class ClassFactory : public IClassFactory {
public:
    HRESULT finalConstruct() { return S_OK; }
    void finalRelease() {}
    void* findInterface(REFIID iid) { return iid == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr; }
    void serve(const HostClass& served) noexcept { m_class = &served; }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) noexcept override
    {
        return m_class->create(outer, iid, result);
    }

    STDMETHODIMP LockServer(BOOL lock) noexcept override
    {
        if (lock)
            morvane::ModuleLock::add();
        else
            morvane::ModuleLock::remove();
        return S_OK;
    }

private:
    const HostClass* m_class = nullptr;
};

const HostClass kClasses[] = {
    {morvane::kClsidInnerBaseObject, L"Ambrel base object", &createBaseObject},
    {morvane::kClsidObjectDraw, L"Ambrel object draw", &createObjectDraw},
    {morvane::kClsidPicture, L"Ambrel picture", &createPicture},
    {morvane::kClsidImage, L"Ambrel image", &createImage},
    {morvane::kClsidPosition, L"Ambrel position", &createPosition},
};

} // namespace

std::span<const HostClass> hostClasses() noexcept
{
    return kClasses;
}

ComPtr<IClassFactory> makeClassFactory(REFCLSID id)
{
    const auto found =
        std::find_if(std::begin(kClasses), std::end(kClasses), [&](const HostClass& each) { return each.id == id; });
    if (found == std::end(kClasses))
        return nullptr;
    const auto factory = morvane::Instance<ClassFactory>::make();
    factory->serve(*found);
    return ComPtr<IClassFactory>(factory.get());
}

} // namespace ambrel
