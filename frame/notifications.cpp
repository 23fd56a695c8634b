// From the framework's notification record to the handler of its kind: one table for all controls.
#include "frame/control_frame.h"

#include "frame/module_resources.h"

#include <algorithm>
#include <array>

namespace morvane {

namespace {

template <class T>
T* pointerIn(std::int64_t parameter) noexcept
{
    return reinterpret_cast<T*>(parameter);
}

} // namespace

struct NotificationTable {
    using Route = Handled (*)(ControlFrame&, const VexNotify&);

    struct Entry {
        VexMsgID id;
        Route route;
    };

    /// A handler that needs none of the parameters.
    template <Handled (ControlFrame::*Handler)()>
    static Handled plain(ControlFrame& frame, const VexNotify&)
    {
        return (frame.*Handler)();
    }

    template <Handled (ControlFrame::*Handler)(const PointerNotice&)>
    static Handled pointer(ControlFrame& frame, const VexNotify& notify)
    {
        return (frame.*Handler)(PointerNotice::from(notify));
    }

    template <Handled (ControlFrame::*Handler)(const VexNotify&)>
    static Handled raw(ControlFrame& frame, const VexNotify& notify)
    {
        return (frame.*Handler)(notify);
    }

    static Handled enable(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onEnableObject({static_cast<short>(notify.lParam1) != 0, static_cast<short>(notify.lParam2) != 0});
    }

    static Handled accessConfigured(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onAccessConfigured(notify.lParam1 != 0);
    }

    static Handled import(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onImportConfig(
            {pointerIn<IVexRes>(notify.lParam1), notify.lParam2, pointerIn<IVexControlBase*>(notify.lParam3)});
    }

    static Handled timer(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onTimer(static_cast<UINT_PTR>(notify.lParam1));
    }

    static Handled propertyChanged(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onPropertyChanged(pointerIn<IVexPropBase>(notify.lParam1));
    }

    static Handled designStatus(ControlFrame& frame, const VexNotify& notify)
    {
        return frame.onDesignStatusChanged(notify.lParam1 != 0);
    }

    static Handled isDragEnabled(ControlFrame& frame, const VexNotify& notify)
    {
        VARIANT_BOOL unwanted = VARIANT_FALSE;
        auto* const enabled = pointerIn<VARIANT_BOOL>(notify.lParam1);
        return frame.onIsDragEnabled(enabled ? *enabled : unwanted);
    }

    static Handled tabInfo(ControlFrame& frame, const VexNotify& notify)
    {
        VARIANT_BOOL unwanted = VARIANT_FALSE;
        auto* const takesTab = pointerIn<VARIANT_BOOL>(notify.lParam1);
        auto* const drawsFocus = pointerIn<VARIANT_BOOL>(notify.lParam2);
        return frame.onGetTabInfo(takesTab ? *takesTab : unwanted, drawsFocus ? *drawsFocus : unwanted);
    }

    static const std::array<Entry, 30> entries;

    static constexpr bool before(const Entry& entry, VexMsgID id) { return entry.id < id; }

    static Route find(VexMsgID id)
    {
        const auto found = std::lower_bound(entries.begin(), entries.end(), id, before);
        return found != entries.end() && found->id == id ? found->route : nullptr;
    }
};

using F = ControlFrame;

// In the order of the identifiers, for the search.
constinit const std::array<NotificationTable::Entry, 30> NotificationTable::entries = {{
    {VEXSM_LBUTTONDOWN, &pointer<&F::onLeftButtonDown>},
    {VEXSM_LBUTTONUP, &pointer<&F::onLeftButtonUp>},
    {VEXSM_INITOBJECT, &plain<&F::onInitObject>},
    {VEXSM_INITDIALOG, &plain<&F::onInitDialog>},
    {VEXSM_DESTROYING, &plain<&F::onDestroying>},
    {VEXSM_ENABLEOBJECT, &enable},
    {VEXSM_ACCESSCONFIGED, &accessConfigured},
    {VEXSM_GETDRAGCURSOR, &raw<&F::answerDragCursor>},
    {VEXSM_GETCONTROLICON, &raw<&F::answerIcon>},
    {VEXSM_GETAUTHORINFO, &raw<&F::answerAuthor>},
    {VEXSM_GETCONTROLTYPENAME, &raw<&F::answerTypeName>},
    {VEXSM_GETCATEGORYNAME, &raw<&F::answerCategory>},
    {VEXSM_DESTROYBMPPERPIXEL, &plain<&F::onDestroyBitmaps>},
    {VEXSM_MOUSEMOVE, &pointer<&F::onMouseMove>},
    {VEXSM_LBUTTONDBCLICK, &pointer<&F::onLeftDoubleClick>},
    {VEXSM_MOUSELEAVE, &pointer<&F::onMouseLeave>},
    {VEXSM_SIZE, &plain<&F::onSize>},
    {VEXSM_TIMER, &timer},
    {VEXSM_DESIGNSTATUSCHANGED, &designStatus},
    {VEXSM_DRAWPREVIEW, &plain<&F::onDrawPreview>},
    {VEXSM_FINALCREATE, &plain<&F::onFinalCreate>},
    {VEXSM_IMPORTCONFIG, &import},
    {VEXSM_ISDRAGABLED, &isDragEnabled},
    {VEXSM_PROPCHANGEDNOTIFY, &propertyChanged},
    {VEXSM_GETTABINFO, &tabInfo},
    {VEXSM_MOUSEENTER, &pointer<&F::onMouseEnter>},
    {VEXSM_DISPOSEMOUSEMOVE, &plain<&F::onDisposeMouseMove>},
    {VEXSM_AUTOLOADINIT, &plain<&F::onAutoLoadInit>},
    {VEXSM_ONSETFOCUS, &plain<&F::onSetFocus>},
    {VEXSM_ONKILLFOCUS, &plain<&F::onKillFocus>},
}};

Handled ControlFrame::dispatch(const VexNotify& notify)
{
    if (notify.eWinMsgId != 0)
        return onWindowMessage(
            {static_cast<UINT>(notify.eWinMsgId), static_cast<WPARAM>(notify.lParam1), notify.lParam2});
    const auto route = NotificationTable::find(notify.eVexMsgId);
    return route ? route(*this, notify) : onOther(notify);
}

// Questions about the class, answered from its ControlInfo
// --------------------------------------------------------------

Handled ControlFrame::answerTypeName(const VexNotify& notify)
{
    if (auto* const place = pointerIn<const wchar_t*>(notify.lParam1))
        *place = info().typeName;
    return Handled::Yes;
}

Handled ControlFrame::answerCategory(const VexNotify& notify)
{
    if (auto* const place = pointerIn<const wchar_t*>(notify.lParam1))
        *place = L"MorvaneControls";
    return Handled::Yes;
}

Handled ControlFrame::answerAuthor(const VexNotify& notify)
{
    static constexpr std::array<const wchar_t*, 4> kAuthor = {L"Brellin", L"Halvard Software Co,Ltd.",
                                                              L"https://www.halvard-software.example/", L"1.0.0"};
    if (auto* const places = pointerIn<const wchar_t*>(notify.lParam1))
        std::copy(kAuthor.begin(), kAuthor.end(), places);
    return Handled::Yes;
}

Handled ControlFrame::answerIcon(const VexNotify& notify)
{
    if (auto* const place = pointerIn<HICON>(notify.lParam3))
        *place = loadModuleIcon(info().icon, {static_cast<int>(notify.lParam1), static_cast<int>(notify.lParam2)});
    return Handled::Yes;
}

Handled ControlFrame::answerDragCursor(const VexNotify& notify)
{
    if (auto* const place = pointerIn<HCURSOR>(notify.lParam1))
        *place = loadModuleCursor(info().cursor);
    return Handled::Yes;
}

} // namespace morvane
