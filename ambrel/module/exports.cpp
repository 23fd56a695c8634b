// What an application asks of the runtime besides the contract's interfaces.
#include "ambrel/ambrel.h"

#include "ambrel/module/class_factory.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/trace/clock.h"
#include "ambrel/trace/trace.h"
#include "ambrel/window/root_window.h"
#include "frame/com/module_lock.h"
#include "frame/com/result.h"

#include <algorithm>
#include <vector>

namespace ambrel {

namespace {

/// The class objects registered for this process; gone with the last pair of calls.
class Registrations {
public:
    HRESULT add()
    {
        if (m_count++ != 0)
            return S_FALSE;
        for (const HostClass& each : hostClasses()) {
            const ComPtr<IClassFactory> factory = makeClassFactory(each.id);
            DWORD cookie = 0;
            const HRESULT status =
                CoRegisterClassObject(each.id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
            if (FAILED(status)) {
                remove();
                return status;
            }
            m_cookies.push_back(cookie);
        }
        return S_OK;
    }

    HRESULT remove()
    {
        if (m_count == 0 || --m_count != 0)
            return S_FALSE;
        for (const DWORD each : m_cookies)
            CoRevokeClassObject(each);
        m_cookies.clear();
        return S_OK;
    }

private:
    int m_count = 0;
    std::vector<DWORD> m_cookies;
};

Registrations& registrations()
{
    static Registrations instance;
    return instance;
}

} // namespace

} // namespace ambrel

using namespace ambrel;

HRESULT STDMETHODCALLTYPE AmbrelRegisterClasses()
{
    return morvane::guarded([] { return registrations().add(); });
}

HRESULT STDMETHODCALLTYPE AmbrelUnregisterClasses()
{
    return morvane::guarded([] { return registrations().remove(); });
}

HRESULT STDMETHODCALLTYPE AmbrelCreateRes(IVexRes** result)
{
    return morvane::returning(result, [] { return ComPtr<IVexRes>(VexRes::make().get()); });
}

HRESULT STDMETHODCALLTYPE AmbrelRenderWindow(IAmbrel* root, long width, long height, std::uint32_t* pixels)
{
    if (!pixels)
        return E_POINTER;
    return morvane::guarded([&] {
        RootWindow* const window = RootWindow::from(root);
        if (!window || width <= 0 || height <= 0)
            return E_INVALIDARG;
        const ComPtr<IAmbrel> hold(root);
        window->window().renderAll({static_cast<int>(width), static_cast<int>(height)});
        const DibSurface* surface = window->window().surface().pixels();
        if (!surface || surface->size() != Size{static_cast<int>(width), static_cast<int>(height)})
            return E_OUTOFMEMORY;
        const PixelView view = surface->pixels();
        for (int y = 0; y < view.height; ++y)
            std::copy_n(view.row(y), view.width,
                        pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(width));
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE AmbrelApplySkin(IVexRes* resources, IVexControlBase* control, HINSTANCE module,
                                          long resourceId)
{
    if (!control)
        return E_POINTER;
    return morvane::guarded([&] {
        VexRes* const own = VexRes::from(resources);
        return own && coreOf(control) ? own->applyPackage(*control, module, resourceId) : E_INVALIDARG;
    });
}

HRESULT STDMETHODCALLTYPE AmbrelApplySkinFile(IVexRes* resources, IVexControlBase* control, const wchar_t* path)
{
    if (!control || !path)
        return E_POINTER;
    return morvane::guarded([&] {
        VexRes* const own = VexRes::from(resources);
        return own && coreOf(control) ? own->applyPackageFile(*control, path) : E_INVALIDARG;
    });
}

HRESULT STDMETHODCALLTYPE AmbrelWatchSkinFiles(IVexRes* resources, const wchar_t* folder, AmbrelSkinFileChanged told,
                                               void* context)
{
    return morvane::guarded([&] {
        VexRes* const own = VexRes::from(resources);
        return own ? own->watchPackages(folder ? folder : L"", told, context) : E_INVALIDARG;
    });
}

HRESULT STDMETHODCALLTYPE AmbrelSetScale(IAmbrel* root, long percent)
{
    return morvane::guarded([&] {
        RootWindow* const window = RootWindow::from(root);
        if (!window || percent < 100 || percent > 300)
            return E_INVALIDARG;
        window->window().surface().setScale(static_cast<int>(percent));
        window->window().invalidate(window->node().rect());
        return S_OK;
    });
}

long STDMETHODCALLTYPE AmbrelLiveObjects()
{
    return morvane::ModuleLock::count();
}

std::int64_t STDMETHODCALLTYPE AmbrelClockNow()
{
    return Clock::instance().nowMs();
}
void STDMETHODCALLTYPE AmbrelFreezeClock()
{
    Clock::instance().freeze();
}
void STDMETHODCALLTYPE AmbrelAdvanceClock(std::int64_t milliseconds)
{
    Clock::instance().advance(milliseconds);
}
void STDMETHODCALLTYPE AmbrelRunClock()
{
    Clock::instance().run();
}

void STDMETHODCALLTYPE AmbrelSetTraceSink(AmbrelTraceSink sink, void* context)
{
    Trace::instance().setSink(sink, context);
}
