// A whole that has a control as part of itself.
#pragma once

#include "frame/com/com_ptr.h"

namespace morvane::testing {

/// Answers what is asked for with its part; lives on the stack.
class Outer : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override
    {
        if (iid == IID_IUnknown) {
            *result = static_cast<IUnknown*>(this);
            AddRef();
            return S_OK;
        }
        return part ? part->QueryInterface(iid, result) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    virtual ~Outer() = default;

    ULONG references = 1;
    ComPtr<IUnknown> part;
};

} // namespace morvane::testing
