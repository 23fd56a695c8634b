// The base of every component class of a control.
//
// A control derives from Control<its interface>, names itself in a ControlInfo, declares its properties, draws itself
// and overrides the handlers in which it differs from the common handling. Instance<> completes it into a creatable
// object.
#pragma once

#include "frame/com/event_source.h"
#include "frame/com/instance.h"
#include "frame/forwarding.h" // generated

namespace morvane {

template <class Interface>
class Control : public Forwarding<Interface>, public EventSource<Interface> {
public:
    // The five base operations that a control implements itself ------------------------------------------------------

    STDMETHODIMP CreateProps() noexcept override
    {
        return guarded([this] {
            if (IVexControlBase* const inner = this->innerBase()) {
                PropertyTable table(*inner);
                declareProperties(table);
            }
        });
    }

    STDMETHODIMP EventNotify(VexNotify* notify, VARIANT_BOOL* result) noexcept override
    {
        if (!notify || !result)
            return E_POINTER;
        *result = VARIANT_FALSE;
        const ComPtr<IUnknown> hold(static_cast<IUnknown*>(static_cast<Interface*>(this)));
        return guarded([&] { *result = toVariantBool(this->dispatch(*notify) == Handled::Yes); });
    }

    STDMETHODIMP RenderDrawObject(IVexRenderDC* dc, SkinRect, VARIANT_BOOL* result) noexcept override
    {
        if (!dc || !result)
            return E_POINTER;
        *result = VARIANT_FALSE;
        const ComPtr<IUnknown> hold(static_cast<IUnknown*>(static_cast<Interface*>(this)));
        return guarded([&] {
            render(*dc);
            *result = VARIANT_TRUE;
        });
    }

    STDMETHODIMP DrawObject(IVexObjectDraw* objectDraw, SkinRect, VARIANT_BOOL* result) noexcept override
    {
        const ComPtr<IUnknown> hold(static_cast<IUnknown*>(static_cast<Interface*>(this)));
        return guarded([&] { return drawOnDc(objectDraw, result); });
    }

    STDMETHODIMP GetFilePath(BSTR* path) noexcept override
    {
        return returning(path, [] {
            wchar_t buffer[260] = L"";
            GetModuleFileNameW(nullptr, buffer, 259);
            return Bstr(buffer);
        });
    }

    // For Instance<>
    // ---------------------------------------------------------------------------------------------------

    HRESULT finalConstruct()
    {
        this->constructInnerObjects();
        return S_OK;
    }

    void finalRelease() { this->releaseHostObjects(); }

    void* findInterface(REFIID iid) noexcept
    {
        if (iid == iidOf<Interface>() || iid == iidOf<IVexControlBase>() || iid == iidOf<ISkinObjResBase>() ||
            iid == iidOf<IVexObj>() || iid == IID_IDispatch)
            return static_cast<Interface*>(this);
        return this->findEventInterface(iid);
    }

protected:
    /// Declares groups and properties in the order and with the names that saved skins carry.
    virtual void declareProperties(PropertyTable& table) = 0;

    /// Draws the control into its own rectangle.
    virtual void render(IVexRenderDC& dc) = 0;

    /// Draws on the device context of `objectDraw`; controls that draw only through render devices do nothing.
    virtual HRESULT drawOnDc(IVexObjectDraw*, VARIANT_BOOL*) { return S_OK; }

    IVexControlBase& self() noexcept override { return *this; }
    const IID& eventInterface() const noexcept override { return this->info().eventInterface; }
};

} // namespace morvane
