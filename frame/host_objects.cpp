#include "frame/host_objects.h"

#include "host/host_classes.h"

namespace morvane {

namespace {

ComPtr<IClassFactory> classObject(REFCLSID classId)
{
    ComPtr<IClassFactory> factory;
    CoGetClassObject(classId, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.putVoid());
    return factory;
}

} // namespace

HostClasses::HostClasses()
    : m_thread(GetCurrentThreadId()), m_innerBase(classObject(kClsidInnerBaseObject)),
      m_objectDraw(classObject(kClsidObjectDraw))
{
}

std::shared_ptr<HostClasses> HostClasses::shared()
{
    static std::weak_ptr<HostClasses> living;
    std::shared_ptr<HostClasses> classes = living.lock();
    // Class objects belong to their thread's apartment; one that could not be found may be there by now.
    if (!classes || classes->m_thread != GetCurrentThreadId() || !classes->m_innerBase || !classes->m_objectDraw) {
        classes = std::make_shared<HostClasses>();
        living = classes;
    }
    return classes;
}

} // namespace morvane
