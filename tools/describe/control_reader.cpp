#include "tools/describe/control_reader.h"

#include "ambrel/ambrel.h"
#include "frame/com/bstr.h"
#include "frame/com/variant.h"

#include <array>
#include <stdexcept>
#include <vector>

namespace describe {

using morvane::Bstr;
using morvane::Variant;

namespace {

std::wstring ask(IVexControlBase& control, VexMsgID question)
{
    const wchar_t* answer = nullptr;
    VARIANT_BOOL handled = VARIANT_FALSE;
    VexNotify notify{question, 0, reinterpret_cast<hyper>(&answer), 0, 0, 0, 0, VARIANT_FALSE};
    control.EventNotify(&notify, &handled);
    return answer ? answer : L"";
}

// Properties
// ------------------------------------------------------------------------------------------------------------

/// The value a property has before any skin or application sets it; null where it holds no resource.
void writeInitial(JsonWriter& json, IVexPropBase& property)
{
    Variant value;
    property.GetVariant(&value);
    json.key("initial");
    switch (value.vt) {
    case VT_BOOL:
        // Another number than the usual two is shown as it is.
        value.boolVal == VARIANT_TRUE || value.boolVal == VARIANT_FALSE ? json.value(value.boolVal != VARIANT_FALSE)
                                                                        : json.value(std::int64_t{value.boolVal});
        break;
    case VT_I2:
        json.value(std::int64_t{value.iVal});
        break;
    case VT_I4:
        json.value(std::int64_t{value.lVal});
        break;
    case VT_UI4:
        json.value(std::int64_t{value.ulVal});
        break;
    case VT_BSTR:
        json.value(morvane::viewOf(value.bstrVal));
        break;
    default:
        json.null();
    }
}

void writeGroup(JsonWriter& json, ICtrlPluginProp& group, const std::wstring& parent)
{
    Bstr name;
    group.get_strName(name.put());
    const std::wstring path = parent.empty() ? name.str() : parent + L"/" + name.str();
    long count = 0;
    group.GetPropBaseCount(&count);
    for (long i = 0; i < count; ++i) {
        ComPtr<IVexPropBase> property;
        Bstr own;
        enumPropType type{};
        VARIANT_BOOL isStyle = VARIANT_FALSE;
        group.GetAtPropBase(i, property.put());
        if (!property)
            continue;
        property->GetName(own.put());
        property->GetType(&type);
        property->IsStyle(&isStyle);
        json.beginObject();
        json.key("group").value(path);
        json.key("name").value(own.view());
        json.key("type").value(std::int64_t{type});
        json.key("style").value(isStyle != VARIANT_FALSE);
        writeInitial(json, *property);
        json.endObject();
    }
    count = 0;
    group.GetAddinPropCount(&count);
    for (long i = 0; i < count; ++i) {
        ComPtr<ICtrlPluginProp> inner;
        group.GetAddinPropByIndex(i, inner.put());
        if (inner)
            writeGroup(json, *inner, path);
    }
}

void writeProperties(JsonWriter& json, IVexControlBase& control)
{
    json.key("properties").beginArray();
    hyper* list = nullptr;
    control.GetProps(&list);
    for (auto group = reinterpret_cast<ICtrlPluginProp**>(list); group && *group; ++group)
        writeGroup(json, **group, {});
    json.endArray();
}

// Notifications
// -----------------------------------------------------------------------------------------------------------

/// What a control does while it is being notified, as the runtime's trace tells it.
struct Observed {
    bool redraws = false;
    std::vector<long> callbacks;
    std::vector<long> hostMessages;
};

void STDMETHODCALLTYPE observe(void* context, const AmbrelTraceEntry* entry)
{
    constexpr long kFirstOwnMessage = WM_USER;
    auto& seen = *static_cast<Observed*>(context);
    if (entry->kind == AMBREL_TRACE_REDRAW)
        seen.redraws = true;
    else if (entry->kind == AMBREL_TRACE_CALLBACK)
        seen.callbacks.push_back(entry->id);
    else if (entry->kind == AMBREL_TRACE_WINDOW_MESSAGE && entry->id >= kFirstOwnMessage)
        seen.hostMessages.push_back(entry->id);
}

class Watch {
public:
    explicit Watch(Observed& seen) { AmbrelSetTraceSink(&observe, &seen); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { AmbrelSetTraceSink(nullptr, nullptr); }
};

struct Probe {
    VexMsgID id;
    hyper first, second, third;
};

/// Those an application meets; questions about the class and steps of its life are answered alike by all.
constexpr std::array kProbes = {
    Probe{VEXSM_LBUTTONDOWN, 0, 10, 10},
    Probe{VEXSM_LBUTTONUP, 0, 10, 10},
    Probe{VEXSM_LBUTTONDBCLICK, 0, 10, 10},
    Probe{VEXSM_MOUSEENTER, 0, 10, 10},
    Probe{VEXSM_MOUSEMOVE, 0, 10, 10},
    Probe{VEXSM_MOUSELEAVE, 0, 10, 10},
    Probe{VEXSM_ONSETFOCUS, 0, 0, 0},
    Probe{VEXSM_ONKILLFOCUS, 0, 0, 0},
    Probe{VEXSM_ENABLEOBJECT, 1, 1, 0},
    Probe{VEXSM_SIZE, 0, 0, 0},
    Probe{VEXSM_TIMER, 7, 0, 0},
    Probe{VEXSM_DESIGNSTATUSCHANGED, 1, 0, 0},
    Probe{VEXSM_AUTOLOADINIT, 0, 0, 0},
    Probe{VEXSM_DISPOSEMOUSEMOVE, 0, 0, 0},
};

void writeNumbers(JsonWriter& json, const char* key, const std::vector<long>& numbers)
{
    json.key(key).beginArray();
    for (const long number : numbers)
        json.value(std::int64_t{number});
    json.endArray();
}

} // namespace

Workshop::Workshop()
{
    ComPtr<IDispatch> window;
    VARIANT_BOOL done = VARIANT_FALSE;
    if (SUCCEEDED(AmbrelCreateRes(m_resources.put())))
        m_resources->CreateAmbrel(Bstr(L"Workshop").get(), 0, window.put());
    m_root = window.as<IAmbrel>();
    if (!m_root || FAILED(m_root->Create(0, {0, 0, 400, 300}, &done)))
        throw std::runtime_error("the runtime gives no window");
}

Workshop::~Workshop()
{
    hyper window = 0;
    m_root->GetWindowHandle(&window);
    DestroyWindow(reinterpret_cast<HWND>(window));
}

bool Workshop::isControl(REFCLSID classId)
{
    ComPtr<IVexControlBase> control;
    return SUCCEEDED(
        CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(), control.putVoid()));
}

ComPtr<IVexControlBase> Workshop::create(REFCLSID classId)
{
    ComPtr<IVexControlBase> control;
    hyper attached = 0;
    SkinRect place{20, 20, 140, 50};
    long changed = 0;
    if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, morvane::iidOf<IVexControlBase>(),
                                control.putVoid())))
        throw std::runtime_error("a control could not be created");
    // Before it is attached: radio groups take members in by their names.
    control->SetName(Bstr(L"Described" + std::to_wstring(++m_created)).get());
    if (FAILED(control->CreateObj(reinterpret_cast<hyper>(m_resources.get()),
                                  reinterpret_cast<hyper>(static_cast<ISkinObjResBase*>(m_root.get())),
                                  VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &attached)))
        throw std::runtime_error("a control could not be attached");
    control->Resize(&place, &changed);
    control->FinalCreate(VARIANT_TRUE);
    return control;
}

void Workshop::writeNotifications(JsonWriter& json, REFCLSID classId)
{
    json.key("notifications").beginArray();
    for (const Probe& probe : kProbes) {
        const auto control = create(classId); // a new one each: what came before must not matter
        Observed seen;
        VARIANT_BOOL handled = VARIANT_FALSE;
        {
            const Watch watch(seen);
            VexNotify notify{probe.id, 0, probe.first, probe.second, probe.third, 0, 0, VARIANT_FALSE};
            control->EventNotify(&notify, &handled);
        }
        json.beginObject();
        json.key("id").value(std::int64_t{probe.id});
        json.key("handled").value(handled != VARIANT_FALSE);
        json.key("redraws").value(seen.redraws);
        writeNumbers(json, "callbacks", seen.callbacks);
        writeNumbers(json, "hostMessages", seen.hostMessages);
        json.endObject();
        VARIANT_BOOL removed = VARIANT_FALSE;
        control->Remove(&removed);
    }
    json.endArray();
}

void Workshop::writeControl(JsonWriter& json, REFCLSID classId)
{
    const auto control = create(classId);
    VARIANT_BOOL takesTab = VARIANT_FALSE;
    control->IsTabStop(&takesTab);
    json.beginObject();
    json.key("typeName").value(ask(*control, VEXSM_GETCONTROLTYPENAME));
    json.key("category").value(ask(*control, VEXSM_GETCATEGORYNAME));
    json.key("takesTab").value(takesTab != VARIANT_FALSE);
    writeProperties(json, *control);
    VARIANT_BOOL removed = VARIANT_FALSE;
    control->Remove(&removed);
    writeNotifications(json, classId);
    json.endObject();
}

} // namespace describe
