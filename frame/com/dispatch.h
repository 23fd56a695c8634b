// IDispatch of a dual interface, answered by its type information.
#pragma once

#include "frame/com/type_library.h"

namespace morvane {

/// Scripts have no 64-bit numbers: a result that fits is made one of the kinds they have. Others stay as they are.
void makeReadableByScripts(VARIANT& result) noexcept;

/// Implements the four methods of IDispatch for `Dual`; calls arrive at the interface's own methods. `Interface` is
/// what the class implements: the dual interface, or one that continues it with operations that automation does not
/// see.
template <class Dual, class Interface = Dual>
class Dispatch : public Interface {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override
    {
        if (!count)
            return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** result) noexcept override
    {
        if (!result)
            return E_POINTER;
        *result = nullptr;
        if (index != 0)
            return DISP_E_BADINDEX;
        ComPtr<ITypeInfo> info;
        const HRESULT status = typeInfoOf(iidOf<Dual>(), info);
        info.copyTo(result);
        return status;
    }

    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) noexcept override
    {
        if (reserved != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        if (!names || !ids)
            return E_POINTER;
        ComPtr<ITypeInfo> info;
        const HRESULT status = typeInfoOf(iidOf<Dual>(), info);
        return FAILED(status) ? status : info->GetIDsOfNames(names, count, ids);
    }

    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) noexcept override
    {
        if (reserved != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        if (!parameters)
            return E_POINTER;
        ComPtr<ITypeInfo> info;
        const HRESULT status = typeInfoOf(iidOf<Dual>(), info);
        if (FAILED(status))
            return status;
        const HRESULT called =
            info->Invoke(static_cast<Dual*>(this), id, flags, parameters, result, exception, badArgument);
        if (SUCCEEDED(called) && result)
            makeReadableByScripts(*result);
        return called;
    }
};

} // namespace morvane
