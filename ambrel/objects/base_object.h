// The base object that every control stands on (class kClsidInnerBaseObject): keeps what is common to all controls and
// turns the framework's calls into notifications to the control.
#pragma once

#include "ambrel/objects/message_callbacks.h"
#include "ambrel/objects/skin_object.h"
#include "frame/com/instance.h"

#include <span>
#include <vector>

namespace ambrel {

/// Knows its control weakly: the control owns the base object and takes its pointer back with SetRealCtrlPtr(null)
/// before it ends. Until a control is set, the base object shows itself.
///
/// Notifications sent to the control, beyond the contract's common ones:
///     pointer notices           lParam1 the hit test value or key flags, lParam2 x, lParam3 y, in window coordinates
///     VEXSM_TIMER               lParam1 the timer's identifier
///     VEXSM_CALLPROP            lParam1 the property's identifier, lParam2 BSTR* for the answer
///     VEXSM_DESIGNSTATUSCHANGED lParam1 whether the skin is being edited
///     VEXSM_ENABLEOBJECT        lParam1 whether it is enabled now, lParam2 whether it is to be redrawn
///     VEXSM_ACCESSCONFIGED      lParam1 whether values were read (not written)
///     VEXSM_FINALCREATE         lParam1 whether the object is new (not read from a skin)
///     VEXSM_CLONED              lParam1 the IVexControlBase* it was made from
///     VEXSM_DRAWPREVIEW         lParam1 the device context, lParam2 SkinRect*
///     VEXSM_EXPORTCONFIGED      lParam1 the configuration node's handle
class BaseObject : public SkinObject<IVexControlBase> {
public:
    BaseObject() noexcept;
    ~BaseObject();

    HRESULT finalConstruct() noexcept;
    void finalRelease() noexcept;
    void* findInterface(REFIID iid) noexcept { return findSkinInterface(iid); }

    // SkinObjectCore
    ISkinObjResBase* face() noexcept override { return control(); }
    IVexControlBase* control() noexcept override { return m_realControl ? m_realControl : this; }
    bool notify(VexNotify& notice) override;
    void focusGained(Point at) override;
    void focusLost() override;
    bool accessConfiguration(bool read) override;
    bool takesMouse() override { return true; }
    void drawRetained(IVexRenderDC& dc) override;
    std::span<const ComPtr<ICtrlPluginProp>> groups() const noexcept override;

    // Identity and belongings (base_object.cpp)
    STDMETHODIMP SetRealCtrlPtr(IVexControlBase* control) noexcept override;
    STDMETHODIMP GetRealCtrlPtr(IVexControlBase** result) noexcept override;
    STDMETHODIMP GetInerface(hyper iid, IDispatch** result) noexcept override;
    STDMETHODIMP GetControlTypeName(BSTR* result) noexcept override;
    STDMETHODIMP GetAuthorInfo(BSTR* author, BSTR* company, BSTR* url, BSTR* version) noexcept override;
    STDMETHODIMP GetControlIcon(int width, int height, hyper* result) noexcept override;
    STDMETHODIMP GetDragCursor(hyper* result) noexcept override;
    STDMETHODIMP GetCategoryName(BSTR* result) noexcept override;
    STDMETHODIMP GetFilePath(BSTR* result) noexcept override;
    STDMETHODIMP SetClassId(BSTR id) noexcept override;
    STDMETHODIMP GetClassId(BSTR* result) noexcept override;
    STDMETHODIMP SetCursorPtr(IVexCursor* cursor) noexcept override;
    STDMETHODIMP GetCursorPtr(IVexCursor** result) noexcept override;
    STDMETHODIMP SetHotkeyPtr(IVexHotkey* first, IVexHotkey* second) noexcept override;
    STDMETHODIMP GetHotkeyPtr(IVexHotkey** first, IVexHotkey** second) noexcept override;
    STDMETHODIMP SetBackEnterHotkey(VARIANT_BOOL backspace, VARIANT_BOOL enter) noexcept override;
    STDMETHODIMP GetBackEnterHotkey(VARIANT_BOOL* backspace, VARIANT_BOOL* enter) noexcept override;
    STDMETHODIMP VexSetToolTip(BSTR text) noexcept override;
    STDMETHODIMP VexGetToolTip(BSTR* result) noexcept override;
    STDMETHODIMP IsDragabled(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetDragabledProp(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::Dragable, on); }
    STDMETHODIMP IsDragabledProp(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Dragable, result); }
    STDMETHODIMP SetRootObject(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::MarkedRoot, on); }
    STDMETHODIMP IsRootObject(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::MarkedRoot, result); }
    STDMETHODIMP SetIsComposeCtrl(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::Composed, on); }
    STDMETHODIMP IsComposeCtrl(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Composed, result); }

    // Life (base_object_life.cpp)
    STDMETHODIMP CreateObj(hyper resources, hyper parent, long type, VARIANT_BOOL first,
                           hyper* result) noexcept override;
    STDMETHODIMP FinalCreate(VARIANT_BOOL newObject) noexcept override;
    STDMETHODIMP CreateProps() noexcept override { return S_OK; } // the control's business
    STDMETHODIMP Load() noexcept override;
    STDMETHODIMP Clone(IVexObj* parent, IVexObj** result) noexcept override;
    STDMETHODIMP AddPlugInObj(IVexControlBase* object) noexcept override;
    STDMETHODIMP RemovePlugInObj(IVexControlBase* object) noexcept override;
    STDMETHODIMP ImportConfig(IVexRes* resources, hyper parent, IVexControlBase** result) noexcept override;
    STDMETHODIMP ExportConfig(hyper node, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DesignStatusChanged(VARIANT_BOOL design) noexcept override;

    // Properties (base_object_properties.cpp)
    STDMETHODIMP CreateGroupProp(ICtrlPluginProp* parent, BSTR name, VARIANT_BOOL expand,
                                 ICtrlPluginProp** result) noexcept override;
    STDMETHODIMP CreateProp(ICtrlPluginProp* group, enumPropType type, BSTR name, BSTR help, VARIANT_BOOL style,
                            IPropChangedCallback* callback, IVexPropBase** result) noexcept override;
    STDMETHODIMP AddProp(ICtrlPluginProp* group) noexcept override;
    /// The address of a null-terminated array of ICtrlPluginProp*, the top-level groups in order; borrowed, valid until
    /// a group is added.
    STDMETHODIMP GetPropList(hyper* result) noexcept override;
    STDMETHODIMP GetProps(hyper** result) noexcept override;
    STDMETHODIMP CallProp(long id, BSTR* result) noexcept override;
    STDMETHODIMP PropChangedNotify(IVexPropBase* property) noexcept override;
    STDMETHODIMP CloneProp(IVexControlBase* source) noexcept override;
    STDMETHODIMP RebuildPropBaseXMLNode() noexcept override;
    STDMETHODIMP ClearPropBaseXMLNode() noexcept override;
    STDMETHODIMP SetRenderDevice(hyper device) noexcept override;
    STDMETHODIMP GetRenderDevice(hyper* result) noexcept override;

    // Input, focus, callbacks (base_object_input.cpp)
    STDMETHODIMP EventNotify(VexNotify* notice, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP OnMouseEnter(short hitTest, short x, short y, long* result) noexcept override;
    STDMETHODIMP OnMouseMove(short hitTest, short x, short y, long* result) noexcept override;
    STDMETHODIMP OnLButtonDown(short hitTest, short x, short y, long* result) noexcept override;
    STDMETHODIMP OnLButtonDbClick(short hitTest, short x, short y, long* result) noexcept override;
    STDMETHODIMP OnLButtonUp(short hitTest, short x, short y, long* result) noexcept override;
    STDMETHODIMP OnMouseLeave(long* result) noexcept override;
    STDMETHODIMP OnSetFocus(short x, short y, long* result) noexcept override;
    STDMETHODIMP OnKillFocus() noexcept override;
    STDMETHODIMP OnSize() noexcept override;
    STDMETHODIMP OnTimer(unsigned int id) noexcept override;
    STDMETHODIMP SetFocus(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP KillFocus() noexcept override;
    STDMETHODIMP ShiftFocus() noexcept override;
    STDMETHODIMP IsFocus(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Focused, result); }
    STDMETHODIMP SetTabStop(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::TabStop, on); }
    STDMETHODIMP IsTabStop(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::TabStop, result); }
    STDMETHODIMP SetDrawFocus(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::DrawsFocus, on); }
    STDMETHODIMP IsDrawFocus(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::DrawsFocus, result); }
    STDMETHODIMP SetDisposeMouse(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::TakesMouse, on); }
    STDMETHODIMP GetDisposeMouse(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::TakesMouse, result); }
    STDMETHODIMP AddMsgCallback(long message, hyper function, hyper self, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP RemoveMsgCallback(long message, hyper function, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetMsgCallbackCount(long message, short* result) noexcept override;
    STDMETHODIMP GetCallbackAddress(long message, hyper self, hyper* result) noexcept override;
    STDMETHODIMP CallMsg(long message, hyper wParam, hyper lParam, VARIANT_BOOL* result) noexcept override;

    // Drawing (base_object_drawing.cpp)
    STDMETHODIMP DirectRedraw(SkinRect* rect) noexcept override;
    STDMETHODIMP SetRedraw(VARIANT_BOOL on) noexcept override { return setFlag(NodeFlag::Redraws, on); }
    STDMETHODIMP IsRedraw(VARIANT_BOOL* result) noexcept override { return flag(NodeFlag::Redraws, result); }
    STDMETHODIMP DrawObject(IVexObjectDraw* draw, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP RenderDrawObject(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawChildren(hyper dc, SkinRect rect) noexcept override;
    STDMETHODIMP RenderDrawChildren(IVexRenderDC* dc, SkinRect rect) noexcept override;
    STDMETHODIMP RenderDrawFocus(IVexRenderDC* dc) noexcept override;
    STDMETHODIMP DrawPreview(hyper dc, SkinRect* rect) noexcept override;
    STDMETHODIMP DestroyBmpPerPixel() noexcept override;
    STDMETHODIMP GetVexRenderDC(IVexRenderDC** result) noexcept override;
    // Kept for the skin: objects are drawn into their window's surface, a canvas of their own would show the same.
    STDMETHODIMP SetHaveCanvas(VARIANT_BOOL has, VEX_HAVECANVASFLAGES flags, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP IsHaveCanvas(VEX_HAVECANVASFLAGES* flags, VARIANT_BOOL* result) noexcept override;
    // A list of pictures that an application lays over the control; drawn after it, before its children.
    STDMETHODIMP AddFillColor(IFillColor* fill, SkinRect rect) noexcept override;
    STDMETHODIMP AddImageBase(IVexImageBase* image, SkinRect rect, short index) noexcept override;
    STDMETHODIMP AddTextStyle(IVexTextStyle* style, SkinRect rect, BSTR text) noexcept override;
    STDMETHODIMP AddRenderImage(IVexRenderImage* image, SkinRect rect, SkinRect source, VARIANT_BOOL stretch,
                                OLE_COLOR transparent) noexcept override;
    STDMETHODIMP AddSolidColor(IColorProp* color, SkinRect rect) noexcept override;
    STDMETHODIMP Update() noexcept override;
    STDMETHODIMP Reset() noexcept override;

protected:
    // SkinObjectCore
    void sizeChanged() override;
    void enabledChanged(bool enabled, bool redraws) override;
    void windowEntered(bool fromAnother) override;
    Bstr defaultTypeName() override;

private:
    void showFocusMark(); // or takes it away

    /// What few controls have.
    struct Belongings {
        std::wstring classId;
        std::wstring toolTip;
        ComPtr<IVexCursor> cursor;
        ComPtr<IVexHotkey> hotkeys[2];
        bool pressedByBackspace = false;
        bool pressedByEnter = false;
        bool hasCanvas = false;
        VEX_HAVECANVASFLAGES canvasFlags = VEX_HCF_NONE;
        hyper renderDevice = 0;
    };
    class DisplayList;

    bool tell(VexMsgID id, hyper lParam1 = 0, hyper lParam2 = 0, hyper lParam3 = 0);
    HRESULT pointer(VexMsgID id, short hitTest, short x, short y, long* result) noexcept;
    const wchar_t* askText(VexMsgID id);
    void initialise();
    Belongings& belongings();
    void addGroup(ComPtr<ICtrlPluginProp> group);
    void setGroupsOwner(IVexControlBase* owner) noexcept;
    DisplayList& displayList();

    IVexControlBase* m_realControl = nullptr;      // borrowed
    std::vector<ComPtr<ICtrlPluginProp>> m_groups; // top-level; when there are any, a null one stands at the end
    std::unique_ptr<MessageCallbacks> m_callbacks;
    std::unique_ptr<Belongings> m_belongings;
    std::shared_ptr<DisplayList> m_displayList; // shared while it is drawn
};

/// For the class object of kClsidInnerBaseObject.
HRESULT createBaseObject(IUnknown* outer, REFIID iid, void** result) noexcept;

} // namespace ambrel
