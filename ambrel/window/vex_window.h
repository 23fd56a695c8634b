// Window operations on handles, for scripts and for controls that know a window only by its number.
#pragma once

#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/host.h"

namespace ambrel {

/// IVexWindow. A number that is no window gives S_FALSE and an empty result.
class VexWindow : public morvane::Dispatch<IVexWindow> {
public:
    HRESULT finalConstruct() { return S_OK; }
    void finalRelease() {}
    void* findInterface(REFIID iid)
    {
        return iid == IID_IDispatch || iid == morvane::iidOf<IVexWindow>() ? static_cast<IVexWindow*>(this) : nullptr;
    }

    STDMETHODIMP ShowWindow(hyper hWnd, ShowWindowFlags nFlag, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetWindowPos(hyper hWnd, hyper hWndInsertAfter, short x, short y, short cx, short cy, LONG lFlags,
                              VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SendMessage(hyper hWnd, LONG nMsgID, hyper wParam, hyper lParam, LONG* plResult) noexcept override;
    STDMETHODIMP PostMessage(hyper hWnd, LONG nMsgID, hyper wParam, hyper lParam,
                             VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetStyle(hyper hWnd, LONG* plResult) noexcept override;
    STDMETHODIMP ModifyStyle(hyper hWnd, LONG dwRemove, LONG dwAdd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetExStyle(hyper hWnd, LONG* plResult) noexcept override;
    STDMETHODIMP ModifyExStyle(hyper hWnd, LONG dwRemove, LONG dwAdd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP Create(LONG dwExStyle, BSTR strClassName, BSTR strWindowName, LONG dwStyle, short x, short y,
                        short nWidth, short nHeight, hyper hWndParent, hyper* phResult) noexcept override;
    STDMETHODIMP Destroy(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP MoveWindow(hyper hWnd, short x, short y, short nWidth, short nHeight, VARIANT_BOOL bRepaint,
                            VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetDlgCtrlID(hyper hWnd, short* pnResult) noexcept override;
    STDMETHODIMP SetDlgCtrlID(hyper hWnd, short nID, LONG* pnResult) noexcept override;
    STDMETHODIMP GetDlgItem(hyper hWnd, short nID, hyper* phResult) noexcept override;
    STDMETHODIMP SetWindowText(hyper hWnd, BSTR strString, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetWindowText(hyper hWnd, BSTR* pstrResult) noexcept override;
    STDMETHODIMP BringWindowToTop(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsWindowVisible(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsWindowEnabled(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP EnableWindow(hyper hWnd, VARIANT_BOOL bEnable, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetTimer(hyper hWnd, short nIDEvent, short nElapse, short* pnResult) noexcept override;
    STDMETHODIMP KillTimer(hyper hWnd, short nIDEvent, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetWindowRect(hyper hWnd, IVexRect** pSknrc) noexcept override;
    STDMETHODIMP GetClientRect(hyper hWnd, IVexRect** pSknrc) noexcept override;
    STDMETHODIMP IsZoomed(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetRedraw(hyper hWnd, VARIANT_BOOL bRedraw, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP InvalidateRect(hyper hWnd, short left, short top, short right, short bottom, VARIANT_BOOL bErase,
                                VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UpdateWindow(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP LockWindowUpdate(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RedrawWindow(hyper hWnd, SkinRect sknrcUpdate, hyper hrgnUpdate, short nFlags,
                              VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP CloseWindow(hyper hWnd, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetCapture(hyper* phResult) noexcept override;
    STDMETHODIMP SetCapture(hyper hWnd, hyper* phResult) noexcept override;
    STDMETHODIMP SetFocus(hyper hWnd, hyper* phResult) noexcept override;
    STDMETHODIMP GetActiveWindow(hyper* phResult) noexcept override;
    STDMETHODIMP SetActiveWindow(hyper hWnd, hyper* phResult) noexcept override;
    STDMETHODIMP GetParent(hyper hWnd, hyper* phResult) noexcept override;
    STDMETHODIMP SetParent(hyper hWnd, hyper hNewParent, hyper* phResult) noexcept override;
    STDMETHODIMP MessageBox(hyper hWnd, BSTR strText, BSTR strCaption, LONG lFlags, short* pnResult) noexcept override;
    STDMETHODIMP VexGetSystemMetrics(LONG flags, LONG* phResult) noexcept override;
    STDMETHODIMP VexSleep(LONG Seconds, LONG* phResult) noexcept override;
    STDMETHODIMP VexGetCursorPosX(LONG* phResult) noexcept override;
    STDMETHODIMP VexGetCursorPosY(LONG* phResult) noexcept override;
    STDMETHODIMP OutPutString(BSTR strOut) noexcept override;
};

/// A new one. Throws std::bad_alloc.
morvane::ComPtr<IVexWindow> makeVexWindow();

} // namespace ambrel
