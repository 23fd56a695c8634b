#include "tests/soak/notification_steps.h"

#include "tests/soak/step_log.h"

namespace morvane::soak {

namespace {

/// What a notification's parameters mean.
enum class Form {
    Nothing,
    Point,
    Number,
    Flags,
    TwoFlagPlaces,
    TextPlaces,
    CursorPlace,
    IconPlace,
    Import,
    Property,
    CallText,
    Preview
};

struct Notification {
    VexMsgID id;
    Form form;
};

constexpr Notification kNotifications[] = {
    {VEX_IGNORE_DEFALT_MSG, Form::Nothing},
    {VEXSM_RESKIN, Form::Nothing},
    {VEXSM_REFRESH, Form::Nothing},
    {VEXSM_LBUTTONDOWN, Form::Point},
    {VEXSM_LBUTTONUP, Form::Point},
    {VEXSM_COMMAND, Form::Number},
    {VEXSM_RBUTTONDOWN, Form::Point},
    {VEXSM_RBUTTONUP, Form::Point},
    {VEXSM_ONSETFOCUS, Form::Nothing},
    {VEXSM_ONKILLFOCUS, Form::Nothing},
    {VEXSM_INITOBJECT, Form::Nothing},
    {VEXSM_INITDIALOG, Form::Nothing},
    {VEXSM_DESTROYING, Form::Nothing},
    {VEXSM_ENABLEOBJECT, Form::Flags},
    {VEXSM_ACCESSCONFIGED, Form::Flags},
    {VEXSM_GETDRAGCURSOR, Form::CursorPlace},
    {VEXSM_GETCONTROLICON, Form::IconPlace},
    {VEXSM_GETAUTHORINFO, Form::TextPlaces},
    {VEXSM_GETCONTROLTYPENAME, Form::TextPlaces},
    {VEXSM_GETCATEGORYNAME, Form::TextPlaces},
    {VEXSM_DESTROYBMPPERPIXEL, Form::Nothing},
    {VEXSM_MOUSEMOVE, Form::Point},
    {VEXSM_LBUTTONDBCLICK, Form::Point},
    {VEXSM_MOUSELEAVE, Form::Nothing},
    {VEXSM_SIZE, Form::Nothing},
    {VEXSM_TIMER, Form::Number},
    {VEXSM_CALLPROP, Form::CallText},
    {VEXSM_DESIGNSTATUSCHANGED, Form::Flags},
    {VEXSM_DRAWPREVIEW, Form::Preview},
    {VEXSM_FINALCREATE, Form::Flags},
    {VEXSM_IMPORTCONFIG, Form::Import},
    {VEXSM_ISDRAGABLED, Form::TwoFlagPlaces},
    {VEXSM_PROPCHANGEDNOTIFY, Form::Property},
    {VEXSM_GETTABINFO, Form::TwoFlagPlaces},
    {VEXSM_SETFOCUS, Form::Nothing},
    {VEXSM_MOUSEENTER, Form::Point},
    {VEXSM_AUTORESIZE, Form::Nothing},
    {VEXSM_DISPOSEMOUSEMOVE, Form::Nothing},
    {VEXSM_CHANGESKIN, Form::Nothing},
    {VEXSM_STARTDRAG, Form::Nothing},
    {VEXSM_ENDDRAG, Form::Nothing},
    {VEXSM_CHANGESKINSTART, Form::Nothing},
    {VEXSM_CHANGELANGUAGE, Form::Number},
    {VEXSM_AUTOLOADINIT, Form::Nothing},
    {VEXSM_SETRENDERDEVICED, Form::Nothing},
    {VEXSM_SHOWWINDOW, Form::Flags},
    {VEXSM_ENDRESIZE, Form::Nothing},
    {static_cast<VexMsgID>(1), Form::Number},
    {static_cast<VexMsgID>(4000), Form::Number},
};

/// Places that out-parameters of notifications point at, and what must be given back.
struct Places {
    VARIANT_BOOL flags[2]{};
    const wchar_t* texts[4]{};
    HCURSOR cursor = nullptr;
    HICON icon = nullptr;
    BSTR text = nullptr;
    SkinRect rect{0, 0, 50, 50};
    ComPtr<IVexControlBase> imported;
    ComPtr<IVexPropBase> property;
    ComPtr<IVexControlBase> parent;

    Places() = default;
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;
    ~Places()
    {
        SysFreeString(text);
        if (icon)
            DestroyIcon(icon);
    }
};

template <class T>
std::int64_t number(T* address)
{
    return reinterpret_cast<std::int64_t>(address);
}

void fill(World& world, IVexControlBase& control, Form form, VexNotify& notify, Places& places)
{
    Random& random = world.random();
    const bool hasPlace = !random.oneIn(6); // a host may leave any of them out
    switch (form) {
    case Form::Nothing:
        break;
    case Form::Point:
        notify.lParam2 = random.between(-50, 700);
        notify.lParam3 = random.between(-50, 500);
        break;
    case Form::Number:
        notify.lParam1 = random.oddNumber();
        break;
    case Form::Flags:
        notify.lParam1 = random.oneIn(2) ? VARIANT_TRUE : 0;
        notify.lParam2 = random.oneIn(2) ? VARIANT_TRUE : 0;
        break;
    case Form::TwoFlagPlaces:
        notify.lParam1 = hasPlace ? number(&places.flags[0]) : 0;
        notify.lParam2 = random.oneIn(6) ? 0 : number(&places.flags[1]);
        break;
    case Form::TextPlaces:
        notify.lParam1 = hasPlace ? number(places.texts) : 0;
        break;
    case Form::CursorPlace:
        notify.lParam1 = hasPlace ? number(&places.cursor) : 0;
        break;
    case Form::IconPlace:
        notify.lParam1 = random.between(-1, 64);
        notify.lParam2 = random.between(-1, 64);
        notify.lParam3 = hasPlace ? number(&places.icon) : 0;
        break;
    case Form::Import:
        places.parent = random.oneIn(3) ? nullptr : world.anyControl();
        notify.lParam1 = random.oneIn(4) ? 0 : number(world.res());
        notify.lParam2 = number(static_cast<ISkinObjResBase*>(places.parent.get()));
        notify.lParam3 = hasPlace ? number(places.imported.put()) : 0;
        break;
    case Form::Property:
        places.property = hasPlace ? world.anyProperty(control) : nullptr;
        notify.lParam1 = number(places.property.get());
        break;
    case Form::CallText:
        notify.lParam1 = random.oddNumber();
        notify.lParam2 = hasPlace ? number(&places.text) : 0;
        break;
    case Form::Preview:
        notify.lParam1 = world.someDeviceContext();
        notify.lParam2 = hasPlace ? number(&places.rect) : 0;
        break;
    }
}

void windowMessage(Random& random, VexNotify& notify)
{
    static constexpr long kMessages[] = {WM_RBUTTONUP,  WM_RBUTTONDOWN, WM_LBUTTONUP,     WM_LBUTTONDOWN, WM_MOUSEMOVE,
                                         WM_MOUSEWHEEL, WM_KEYDOWN,     WM_KEYUP,         WM_CHAR,        WM_TIMER,
                                         WM_KILLFOCUS,  WM_SETFOCUS,    WM_CAPTURECHANGED};
    notify.eWinMsgId = random.pick(kMessages);
    notify.lParam1 = random.between(0, 255);
    notify.lParam2 = MAKELPARAM(random.between(-20, 700), random.between(-20, 500));
}

} // namespace

void notifyAnything(World& world, IVexControlBase& control)
{
    Random& random = world.random();
    const Notification& chosen = random.pick(kNotifications);
    Places places;
    VexNotify notify{};
    if (random.oneIn(8)) {
        windowMessage(random, notify);
    } else {
        notify.eVexMsgId = chosen.id;
        fill(world, control, chosen.form, notify, places);
    }
    notify.bChildren = random.oneIn(4) ? VARIANT_TRUE : VARIANT_FALSE;
    logDetail("notify " + std::to_string(notify.eVexMsgId) + "/" + std::to_string(notify.eWinMsgId) + " " +
              std::to_string(notify.lParam1) + " " + std::to_string(notify.lParam2) + " " +
              std::to_string(notify.lParam3));
    VARIANT_BOOL handled = VARIANT_FALSE;
    control.EventNotify(random.oneIn(50) ? nullptr : &notify, random.oneIn(50) ? nullptr : &handled);
}

} // namespace morvane::soak
