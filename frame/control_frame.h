// What every control is built from: its inner base object, what it remembers of its host, the common answers to the
// framework's notifications, and the routes by which it tells its surroundings what happened.
#pragma once

#include "frame/com/bstr.h"
#include "frame/host_cache.h"
#include "frame/host_objects.h"
#include "frame/message_list.h"
#include "frame/notices.h"
#include "frame/properties.h"

namespace morvane {

/// Answer of a forwarded operation while a control has no inner base object.
inline constexpr HRESULT kNoInnerBase = E_UNEXPECTED;

/// What tells one class of control from another, apart from its behaviour. Resource numbers are those of this module; 0
/// means the class has none.
struct ControlInfo {
    const wchar_t* typeName;
    WORD icon;
    WORD cursor;
    WORD defaultSkin;
    IID eventInterface;
};

/// Common part of all controls, free of their interfaces. Handlers are virtual functions with the common handling as
/// the default, so that a control's source shows only where it differs.
///
/// Any call out of a control may re-enter it, detach it or release it: EventNotify and the drawing operations hold the
/// control until they return, and the handlers change state before they call out.
class ControlFrame {
public:
    ControlFrame(const ControlFrame&) = delete;
    ControlFrame& operator=(const ControlFrame&) = delete;

    /// The framework's object that does the common work; null when it could not be created.
    IVexControlBase* innerBase() const noexcept { return m_inner.get(); }

protected:
    ControlFrame() = default;
    virtual ~ControlFrame() = default;

    // What a control supplies ---------------------------------------------------------------------------------------

    virtual const ControlInfo& info() const noexcept = 0;
    virtual IVexControlBase& self() noexcept = 0;

    // Handlers of notifications --------------------------------------------------------------------------------------

    virtual Handled onInitObject();
    virtual Handled onInitDialog() { return Handled::No; }
    virtual Handled onDestroying();
    virtual Handled onEnableObject(const EnableNotice&) { return Handled::No; }
    virtual Handled onAccessConfigured(bool isRead);
    virtual Handled onFinalCreate();
    virtual Handled onAutoLoadInit() { return Handled::No; }
    virtual Handled onImportConfig(const ImportRequest&);

    virtual Handled onMouseEnter(const PointerNotice&);
    virtual Handled onMouseMove(const PointerNotice&);
    virtual Handled onMouseLeave(const PointerNotice&);
    virtual Handled onLeftButtonDown(const PointerNotice&);
    virtual Handled onLeftButtonUp(const PointerNotice&);
    virtual Handled onLeftDoubleClick(const PointerNotice&);
    virtual Handled onDisposeMouseMove() { return Handled::No; }

    virtual Handled onSetFocus();
    virtual Handled onKillFocus();
    virtual Handled onSize() { return Handled::No; }
    virtual Handled onTimer(UINT_PTR) { return Handled::No; }
    /// Any property of the table has a new value: an application, a designer or a skin gave it, or the control itself.
    /// Comes after the property's own callback; `PropertyHandle::is` tells which one it is. Loading says nothing.
    virtual Handled onPropertyChanged(IVexPropBase*) { return Handled::No; }
    virtual Handled onDesignStatusChanged(bool) { return Handled::No; }
    virtual Handled onDrawPreview();
    virtual Handled onDestroyBitmaps() { return Handled::Yes; }

    virtual Handled onIsDragEnabled(VARIANT_BOOL& enabled);
    virtual Handled onGetTabInfo(VARIANT_BOOL& takesTab, VARIANT_BOOL& drawsFocus);

    /// A window message the control registered for. A right-button release inside the control is reported to the host.
    virtual Handled onWindowMessage(const WindowMessageNotice&);
    /// A notification without a handler of its own: drag and drop, hooks, language and skin changes.
    virtual Handled onOther(const VexNotify&) { return Handled::No; }

    /// The last reference has gone: gives back what the control made with its former host. The control has no inner
    /// base object any more and knows no host.
    virtual void letGo(const HostCache&) {}

    // The control's tool-tip text; empty for controls without one, which hides the tip.
    virtual Bstr toolTipText() const { return Bstr(); }

    // What handlers use
    // ------------------------------------------------------------------------------------------------

    HostCache& host() noexcept { return m_host; }
    const HostCache& host() const noexcept { return m_host; }
    IVexObjectDraw* objectDraw() const noexcept { return m_objectDraw.get(); }

    /// The control's rectangle in window coordinates; empty when the framework gives none.
    Rect ownRect() const;
    bool isEnabled() const;
    bool isDesignTime() const;
    bool isLeftButtonDown() const;
    bool isMouseOver() const;
    void setMouseOver(bool over);
    bool isMirrored() const;
    /// Whether the root's current focus object is this control.
    bool isFocusObject();

    /// Whether the framework gave the control the focus and has not taken it since; the control may forget it.
    bool hasFocus() const noexcept { return m_hasFocus; }
    void forgetFocus() noexcept { m_hasFocus = false; }

    /// Asks the framework to paint the whole control, or just its present rectangle.
    void redraw();
    void redrawOwnRect();
    /// Paints the whole control where an interface method's argument asks for it: any value but false does.
    void redrawIf(VARIANT_BOOL asked);

    /// Draws the focus mark; every control does so last.
    void drawFocusMark(IVexRenderDC& dc);

    /// Runs the callbacks that the application registered for the notification; true when one of them says so. May
    /// release the control.
    bool raise(const PointerNotice& notice);
    bool raise(long message, std::int64_t lParam);

    /// Sends a message to the host window. With no window known nothing happens and 0 is returned.
    LRESULT sendToHost(UINT message, WPARAM wParam, LPARAM lParam);
    /// The same with the real-control pointer in wParam, as most messages have it.
    LRESULT sendControlToHost(UINT message, LPARAM lParam);

    /// Gives the host window the control's tool-tip text; a window that was not there before is asked for.
    void sendToolTip();

    /// Asks for window messages to arrive at onWindowMessage; undone when the control is destroyed.
    void registerWindowMessage(UINT message);

    /// Reports a right-button release inside the control to the host, as registered controls do.
    void reportRightButtonUp(const WindowMessageNotice&);

    /// The real-control pointer, counted. It identifies the control in everything it tells.
    ComPtr<IVexControlBase> realControl() const;

    // Used by Control<>
    // ------------------------------------------------------------------------------------------------

    void constructInnerObjects();
    Handled dispatch(const VexNotify& notify);
    void releaseHostObjects();

private:
    friend struct NotificationTable;

    void fillHostCache();
    void unregisterWindowMessages(IAmbrel* root);
    void moveRegistrations(IAmbrel* before);
    Handled answerTypeName(const VexNotify&);
    Handled answerCategory(const VexNotify&);
    Handled answerAuthor(const VexNotify&);
    Handled answerIcon(const VexNotify&);
    Handled answerDragCursor(const VexNotify&);

    std::shared_ptr<HostClasses> m_hostClasses; // kept while the control lives
    ComPtr<IVexControlBase> m_inner;
    ComPtr<IVexObjectDraw> m_objectDraw;
    HostCache m_host;
    MessageList m_registered; // window messages, in the order of their registration
    unsigned m_fills = 0;
    bool m_hasFocus = false;
};

} // namespace morvane
