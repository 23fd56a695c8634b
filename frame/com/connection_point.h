// The connection point of a component's event interface. The event interfaces have no methods: sinks may connect, and
// nothing is ever fired.
#pragma once

#include "frame/com/com_ptr.h"

#include <vector>

namespace morvane {

/// One connection point, part of the object that owns it: it lives and is counted with that object.
class ConnectionPoint final : public IConnectionPoint {
public:
    /// `container` is the owner's interface, borrowed; `eventInterface` must outlive this object.
    ConnectionPoint(IConnectionPointContainer& container, const IID& eventInterface) noexcept
        : m_container(container), m_eventInterface(eventInterface)
    {
    }
    virtual ~ConnectionPoint() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return m_container.AddRef(); }
    STDMETHODIMP_(ULONG) Release() noexcept override { return m_container.Release(); }

    STDMETHODIMP GetConnectionInterface(IID* iid) noexcept override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
    STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
    STDMETHODIMP EnumConnections(IEnumConnections** result) noexcept override;

    /// An enumerator over this one point.
    HRESULT enumerate(IEnumConnectionPoints** result) noexcept;

private:
    struct Sink {
        DWORD cookie;
        ComPtr<IUnknown> object;
    };
    static void copySink(const Sink& from, CONNECTDATA& to);
    static void copyPoint(const ComPtr<IConnectionPoint>& from, IConnectionPoint*& to);

    IConnectionPointContainer& m_container;
    const IID& m_eventInterface;
    std::vector<Sink> m_sinks;
    DWORD m_lastCookie = 0;
};

} // namespace morvane
