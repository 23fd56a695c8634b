#include "ambrel/module/class_factory.h"

#include "ambrel/objects/base_object.h"
#include "ambrel/objects/geometry_objects.h"
#include "ambrel/render/resource_factory.h"
#include "ambrel/resources/vex_res.h"
#include "frame/com/instance.h"
#include "frame/com/result.h"
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

/// For clients that cannot call AmbrelCreateRes, such as scripts.
constexpr CLSID kClsidResources = {0x5C0E7B1A, 0x2D4F, 0x4E0B, {0x9A, 0x31, 0x6B, 0x7D, 0x12, 0xC4, 0x58, 0xE6}};

HRESULT createResources(IUnknown* outer, REFIID iid, void** result) noexcept
{
    return morvane::filling(result, [&](void*& place) -> HRESULT {
        return outer ? CLASS_E_NOAGGREGATION : VexRes::make()->QueryInterface(iid, &place);
    });
}

const HostClass kClasses[] = {
    {morvane::kClsidInnerBaseObject, L"Ambrel base object", nullptr, &createBaseObject},
    {morvane::kClsidObjectDraw, L"Ambrel object draw", nullptr, &createObjectDraw},
    {morvane::kClsidPicture, L"Ambrel picture", nullptr, &createPicture},
    {morvane::kClsidImage, L"Ambrel image", nullptr, &createImage},
    {morvane::kClsidPosition, L"Ambrel position", nullptr, &createPosition},
    {kClsidResources, L"Ambrel resources", L"Ambrel.Resources", &createResources},
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
