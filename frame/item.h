// The base of the light objects that controls own: menu items, tab items, radio groups. They have a dual interface of
// their own and no inner base object.
#pragma once

#include "frame/com/dispatch.h"
#include "frame/com/event_source.h"
#include "frame/com/instance.h"

namespace morvane {

template <class Interface, class Events>
class Item : public Dispatch<Interface>, public EventSource<Interface> {
public:
    HRESULT finalConstruct() { return S_OK; }
    void finalRelease() {}

    void* findInterface(REFIID iid) noexcept
    {
        if (iid == iidOf<Interface>() || iid == IID_IDispatch)
            return static_cast<Interface*>(this);
        return this->findEventInterface(iid);
    }

protected:
    const IID& eventInterface() const noexcept override { return iidOf<Events>(); }
};

} // namespace morvane
