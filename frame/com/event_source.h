// What every component class of the library has besides its own interface: error support and one connection point.
#pragma once

#include "frame/com/connection_point.h"
#include "frame/com/result.h"

#include <memory>

namespace morvane {

template <class Interface>
class EventSource : public ISupportErrorInfo, public IConnectionPointContainer {
public:
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) noexcept override
    {
        return iid == iidOf<Interface>() ? S_OK : S_FALSE;
    }

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** result) noexcept override
    {
        return filling(result, [&](IEnumConnectionPoints*& place) { return connectionPoint().enumerate(&place); });
    }

    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** result) noexcept override
    {
        return filling(result, [&](IConnectionPoint*& place) -> HRESULT {
            if (iid != eventInterface())
                return CONNECT_E_NOCONNECTION;
            ComPtr<IConnectionPoint>(&connectionPoint()).copyTo(&place);
            return S_OK;
        });
    }

protected:
    /// The identifier of the class's event interface; lives as long as the module.
    virtual const IID& eventInterface() const noexcept = 0;

    /// One of the interfaces above, not counted, or null.
    void* findEventInterface(REFIID iid) noexcept
    {
        if (iid == IID_ISupportErrorInfo)
            return static_cast<ISupportErrorInfo*>(this);
        if (iid == IID_IConnectionPointContainer)
            return static_cast<IConnectionPointContainer*>(this);
        return nullptr;
    }

private:
    ConnectionPoint& connectionPoint()
    {
        if (!m_connectionPoint)
            m_connectionPoint = std::make_unique<ConnectionPoint>(*this, eventInterface());
        return *m_connectionPoint;
    }

    std::unique_ptr<ConnectionPoint> m_connectionPoint; // made when somebody asks for it
};

} // namespace morvane
