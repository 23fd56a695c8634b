// The root of a window's object tree, as the outside sees it.
#pragma once

#include "ambrel/objects/name_index.h"
#include "ambrel/objects/skin_object.h"
#include "ambrel/window/window_core.h"

#include <array>
#include <map>

namespace ambrel {

/// IAmbrel. Statuses: S_FALSE where there is no window yet or nothing to do; E_NOTIMPL for rotating windows, foreign
/// window entries and the rendering engines that this runtime does not have.
class RootWindow : public SkinObject<IAmbrel> {
public:
    RootWindow() : SkinObject(VEXOBJTYPE_AMBREL), m_core(*this, *this) {}

    // Two bases have them; the creatable class has the last word.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override = 0;
    STDMETHODIMP_(ULONG) AddRef() noexcept override = 0;
    STDMETHODIMP_(ULONG) Release() noexcept override = 0;

    HRESULT finalConstruct() { return S_OK; }
    void finalRelease();
    void* findInterface(REFIID iid) { return findSkinInterface(iid); }

    /// A root without a window. Throws std::bad_alloc.
    static ComPtr<RootWindow> make(IVexRes* resources, std::wstring_view name);
    /// The window of a root of this runtime; null for any other.
    static RootWindow* from(IUnknown* root) noexcept;

    WindowCore& window() noexcept { return m_core; }

    // SkinObjectCore
    ISkinObjResBase* face() noexcept override { return this; }
    bool notify(VexNotify&) override { return false; }
    RootServices* rootServices() noexcept override { return &m_core; }
    NameIndex* nameIndex() noexcept override { return &m_names; }

    // ISkinObjResBase, where the root differs
    STDMETHODIMP SetVisible(VARIANT_BOOL visible, VARIANT_BOOL refresh, VARIANT_BOOL animate) noexcept override;
    STDMETHODIMP SetName(BSTR name) noexcept override;

    // IAmbrel
    STDMETHODIMP Create(hyper hWndParent, SkinRect sknrc, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP GetWindowHandle(hyper* phResult) noexcept override;
    STDMETHODIMP IsSupportPerPixel(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetSupportPerPixel(VARIANT_BOOL bSupportPerPixel) noexcept override;
    STDMETHODIMP GetResizeBorder(SkinRect* prcResult) noexcept override;
    STDMETHODIMP SetResizeBorder(SkinRect rcBorder) noexcept override;
    STDMETHODIMP GetMinSize(SkinSize* pszMin) noexcept override;
    STDMETHODIMP SetMinSize(SkinSize* psizeMin) noexcept override;
    STDMETHODIMP GetMaxSize(SkinSize* pszMax) noexcept override;
    STDMETHODIMP SetMaxSize(SkinSize* psizeMax) noexcept override;
    STDMETHODIMP IsPopWindow(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetPopWindow(VARIANT_BOOL bPopWindow) noexcept override;
    STDMETHODIMP IsResizable(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetResizable(VARIANT_BOOL bResizable) noexcept override;
    STDMETHODIMP IsDragabled(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetDragabled(VARIANT_BOOL bDragabled) noexcept override;
    STDMETHODIMP IsCanCopyRun(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetCanCopyRun(VARIANT_BOOL bCanCopyRun) noexcept override;
    STDMETHODIMP IsParentBlend(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetParentBlend(VARIANT_BOOL bParentBlend) noexcept override;
    STDMETHODIMP IsSetRgn(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetRgn(VARIANT_BOOL bSetRgn) noexcept override;
    STDMETHODIMP Draw(hyper hDC, SkinRect rect, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP IsCaptured(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetCapture(VARIANT_BOOL bCaptured) noexcept override;
    STDMETHODIMP RegisterMessage(ULONG uMsg, ISkinObjResBase* pObject, VARIANT_BOOL bChildrenNotify,
                                 VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterMessage(ULONG uMsg, ISkinObjResBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllRegister() noexcept override;
    STDMETHODIMP RegisterWholeMessage(ISkinObjResBase* pObject, VARIANT_BOOL bChildrenNotify,
                                      VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP UnRegisterWholeMessage(ISkinObjResBase* pObject, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllWholeMessage() noexcept override;
    STDMETHODIMP DoWindowProc(hyper hWnd, LONG msg, hyper wParam, hyper lParam, LONG* pResult) noexcept override;
    STDMETHODIMP Default(LONG* pResult) noexcept override;
    STDMETHODIMP SetDragFullWindow(VARIANT_BOOL bDragFullWindow) noexcept override;
    STDMETHODIMP SetWindowRgn() noexcept override;
    STDMETHODIMP SetMessageEntry(LONG* pWnd, LONG* pEntry) noexcept override;
    STDMETHODIMP SetUseRgnInfo(VARIANT_BOOL bUseRgnInfo) noexcept override;
    STDMETHODIMP IsUseRgnInfo(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP AddNCRgn(VEX_NCRGNTYPE eNcRgnType, IVexSkinSubRgn* pSubRgn, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveNCRgn(VEX_NCRGNTYPE eNcRgnType, BSTR strName, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP RemoveAllNCRgns(VEX_NCRGNTYPE eNcRgnType, VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetEventRecieve(hyper pEventBase) noexcept override;
    STDMETHODIMP GetEventRecieve(hyper* ppResult) noexcept override;
    STDMETHODIMP VexMessage(hyper hWnd, LONG nMsgID, hyper wParam, hyper lParam) noexcept override;
    STDMETHODIMP GetHotObject(ISkinObjResBase** pHotObj) noexcept override;
    STDMETHODIMP SetDispatchMsg(LONG pMsgId) noexcept override;
    STDMETHODIMP RemoveDispatchMsg(LONG pMsgId) noexcept override;
    STDMETHODIMP GetIsAutoLoad(VARIANT_BOOL* bResult) noexcept override;
    STDMETHODIMP SetIsAutoLoad(VARIANT_BOOL bResult) noexcept override;
    STDMETHODIMP GetRenderEngine(VEX_RENDERENGINE_TYPE* pType) noexcept override;
    STDMETHODIMP SetRenderEngine(VEX_RENDERENGINE_TYPE type) noexcept override;
    STDMETHODIMP GetRenderDevice(hyper* ppDevice) noexcept override;
    STDMETHODIMP SetRefreshType(VEX_REFRESH_TYPE type) noexcept override;
    STDMETHODIMP GetRefreshType(hyper* ppType) noexcept override;
    STDMETHODIMP ResizeSence(short nWidth, short nHeight) noexcept override;
    STDMETHODIMP FreezeUpdate(VARIANT_BOOL bFreeze) noexcept override;
    STDMETHODIMP IsFreezeUpdate(VARIANT_BOOL* bResult) noexcept override;
    STDMETHODIMP GetFreezeHBitmap(hyper* bResult) noexcept override;
    STDMETHODIMP SetFreezeDrawRect(SkinRect rc) noexcept override;
    STDMETHODIMP RegSyncMoveWindow(hyper hWnd, IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP AppendFinalCtrl(ISkinObjResBase* pContrlBase) noexcept override;
    STDMETHODIMP RemoveFinalCtrl(ISkinObjResBase* pContrlBase) noexcept override;
    STDMETHODIMP UnRegSyncMoveWindow(hyper hWnd) noexcept override;
    STDMETHODIMP SetArabicMode(VARIANT_BOOL bIsMirror) noexcept override;
    STDMETHODIMP RegisterHotkey(VARIANT_BOOL bRegister) noexcept override;
    STDMETHODIMP IsRegisterHotkey(VARIANT_BOOL* bResult) noexcept override;
    STDMETHODIMP ShiftFocus(VARIANT_BOOL bForward) noexcept override;
    STDMETHODIMP SynMoveWindow() noexcept override;
    STDMETHODIMP GetVexControlByPt(LONG nXPt, LONG nYPt, ISkinObjResBase** pCtrl) noexcept override;
    STDMETHODIMP SetCaptureCtrl(IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP ReleaseCaptureCtrl() noexcept override;
    STDMETHODIMP DirectDrawImmediate() noexcept override;
    STDMETHODIMP FadeShow(VARIANT_BOOL bShow, VEX_FADE_TYPE FadeType) noexcept override;
    STDMETHODIMP ReCalcRgn() noexcept override;
    STDMETHODIMP IsDraging(VARIANT_BOOL* bIsDraging) noexcept override;
    STDMETHODIMP RegisterDropTarget() noexcept override;
    STDMETHODIMP RevokeDropTarget() noexcept override;
    STDMETHODIMP RotateWindow(VEX_ROTATE_TYPE eType, float fAngle) noexcept override;
    STDMETHODIMP InitRotateWindow() noexcept override;
    STDMETHODIMP EndRotateWindow() noexcept override;
    STDMETHODIMP AddDirtyRect(SkinRect rc) noexcept override;
    STDMETHODIMP Present(SkinRect* pRect) noexcept override;
    STDMETHODIMP IsBatchMode(VARIANT_BOOL* pbResult) noexcept override;
    STDMETHODIMP SetBatchMode(VARIANT_BOOL bValue) noexcept override;
    STDMETHODIMP GetCurrentFocusObject(ISkinObjResBase** pCtrl) noexcept override;
    STDMETHODIMP RegisterAcceptFile(IVexControlBase* pCtrl, LONG nMode = 1) noexcept override;
    STDMETHODIMP RevokeAcceptFile(IVexControlBase* pCtrl) noexcept override;
    STDMETHODIMP SetDragPosition(VexPosition* pPos) noexcept override;
    STDMETHODIMP GetDragPosition(VexPosition* pPos) noexcept override;
    STDMETHODIMP RegisterAccecptHwnd(hyper hWnd) noexcept override;
    STDMETHODIMP RevokeAcceptHwnd(hyper hWnd) noexcept override;

protected:
    void sizeChanged() override;

private:
    template <class Body>
    HRESULT onWindow(VARIANT_BOOL* result, Body&& body) noexcept;
    HRESULT setTrait(bool& trait, VARIANT_BOOL on) noexcept;

    NameIndex m_names;
    WindowCore m_core;
    ComPtr<IDropTarget> m_dropTarget;
    VexPosition m_dragPosition{};
    VEX_REFRESH_TYPE m_refreshType = VEX_REFRESH_PART;
    bool m_canCopyRun = false;
    bool m_blendsWithParent = false;
    bool m_dragsFull = true;
    bool m_usesRegionInfo = false;
    bool m_loadsByItself = false;
    bool m_capturesPointer = false;
    std::map<VEX_NCRGNTYPE, std::vector<ComPtr<IVexSkinSubRgn>>> m_regions;
    std::vector<hyper> m_acceptingWindows;
};

} // namespace ambrel
