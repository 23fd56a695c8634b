#include "frame/com/connection_point.h"

#include "frame/com/enumerator.h"
#include "frame/com/result.h"

#include <algorithm>

namespace morvane {

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = iid == IID_IUnknown || iid == IID_IConnectionPoint ? static_cast<IConnectionPoint*>(this) : nullptr;
    if (!*result)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) noexcept
{
    if (!iid)
        return E_POINTER;
    *iid = m_eventInterface;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) noexcept
{
    if (!container)
        return E_POINTER;
    m_container.AddRef();
    *container = &m_container;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept
{
    if (!sink || !cookie)
        return E_POINTER;
    *cookie = 0;
    return guarded([&]() -> HRESULT {
        // Script sinks know only IDispatch; compiled ones may offer the event interface itself.
        ComPtr<IUnknown> connected;
        if (FAILED(sink->QueryInterface(m_eventInterface, connected.putVoid())) &&
            FAILED(sink->QueryInterface(IID_IDispatch, connected.putVoid())))
            return CONNECT_E_CANNOTCONNECT;
        m_sinks.push_back({++m_lastCookie, std::move(connected)});
        *cookie = m_lastCookie;
        return S_OK;
    });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) noexcept
{
    const auto found = std::find_if(m_sinks.begin(), m_sinks.end(), [&](const Sink& s) { return s.cookie == cookie; });
    if (found == m_sinks.end())
        return CONNECT_E_NOCONNECTION;
    const Sink leaving = std::move(*found); // released after the list is whole again
    m_sinks.erase(found);
    return S_OK;
}

void ConnectionPoint::copySink(const Sink& from, CONNECTDATA& to)
{
    to.dwCookie = from.cookie;
    from.object.copyTo(&to.pUnk);
}

void ConnectionPoint::copyPoint(const ComPtr<IConnectionPoint>& from, IConnectionPoint*& to)
{
    from.copyTo(&to);
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    return guarded(
        [&] { return Enumerator<IEnumConnections, CONNECTDATA, Sink, &copySink>::create(m_sinks, 0, result); });
}

HRESULT ConnectionPoint::enumerate(IEnumConnectionPoints** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    return guarded([&] {
        std::vector<ComPtr<IConnectionPoint>> points{ComPtr<IConnectionPoint>(this)};
        return Enumerator<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>, &copyPoint>::create(
            std::move(points), 0, result);
    });
}

} // namespace morvane
