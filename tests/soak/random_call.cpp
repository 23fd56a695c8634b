#include "tests/soak/random_call.h"

#include "tests/soak/step_log.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>

namespace morvane::soak {

namespace {

using Kind = Parameter::Kind;

struct Skipped {
    const char* method;
    const char* why;
};

// Whoever calls these must pass what only the framework or the control itself has.
constexpr Skipped kSkipped[] = {
    {"IVexControlBase::EventNotify", "takes addresses in numbers; a step of its own sends what a host may send"},
    {"IVexControlBase::SetRealCtrlPtr", "borrows the pointer; only the control itself may give it, once"},
    {"IVexControlBase::SetRenderDevice", "takes an address of the framework's"},
    {"IVexObj::SetObjPtr", "borrows an address of the framework's"},
    {"IVexObj::ReleaseInterRef", "takes back a reference that somebody else counts on"},
    {"IAmbrel::DoWindowProc", "takes window messages, whose parameters may be addresses"},
    {"IAmbrel::VexMessage", "takes messages of the controls, whose parameters may be addresses"},
    {"IAmbrel::SetMessageEntry", "takes addresses of the application's own table"},
    {"IAmbrel::SetDragabled", "lets the next press run the system's own loop, which waits for a real pointer"},
    {"IVexPropBase::SetType", "makes the object be called as what it is not"},
    {"ISkinObjResBase::DrawSprite", "takes the address of a function of the framework's"},
    {"IVexRes::Save", "writes files where the text says; a step of its own does"},
    {"IVexRes::ExportSknVexFile", "writes files where the text says"},
    {"IVexRes::GenerateLanguageXML", "writes files where the text says"},
    {"IVexRes::EnumObjectsToHwnd", "sends messages of any number, whose parameters may be addresses"},
    {"IVexRes::CallScripEvent", "sends messages of any number, whose parameters may be addresses"},
    {"IVexRes::SetVexResObjPtr", "borrows an address of the framework's"},
    {"IVexRes::ShowAmbrelWnd", "opens a window that belongs to nobody"},
    {"IVexRes::SetDragInfo", "takes a record of objects; a step of its own fills it"},
    {"IVexRes::GetDragInfo", "gives a record of objects; a step of its own releases them"},
    {"IVexRes::AddColorCase", "takes a record of strings; a step of its own fills it"},
    {"IVexRes::GetCurColorCase", "gives a record of strings; a step of its own frees them"},
    {"IVexRes::GetColorCase", "gives a record of strings; a step of its own frees them"},
    {"IVexRes::GetFirstColorCase", "gives a record of strings; a step of its own frees them"},
    {"IVexRes::GetNextColorCase", "gives a record of strings; a step of its own frees them"},
    {"IVexRes::GetFontByLogFont", "keeps any number of fonts by name"},
    {"ICtrlPluginProp::SetControlBasePtr", "borrows the pointer; only the control itself may give it"},
    {"ICtrlPluginProp::SetGetExpandCallback", "takes the address of a function of the framework's"},
};

/// What a 64-bit number means, by its parameter's name.
enum class Meaning { Any, Window, Owner, DeviceContext, Callback, Interface, Object, Resources, Module, Node, Address };

struct Named {
    const char* parameter;
    Meaning meaning;
};

constexpr Named kMeanings[] = {
    {"wParam", Meaning::Object}, // the control that a message tells of
    {"lParam", Meaning::Any},
    {"hData", Meaning::Any},
    {"pThis", Meaning::Any}, // our callback ignores it
    {"hFuncCallback", Meaning::Callback},
    {"hWnd", Meaning::Window},
    {"hWndParent", Meaning::Owner}, // what is created must end with the round
    {"hInstance", Meaning::Module},
    {"pXmlEle", Meaning::Node},
    {"pVexObj", Meaning::Any}, // trusted only when it is the number of a living object
    {"nObject", Meaning::Any},
    {"lhWnd", Meaning::Window},
    {"hDC", Meaning::DeviceContext},
    {"hDCDest", Meaning::DeviceContext},
    {"pIID", Meaning::Interface},
    {"pObjParent", Meaning::Object},
    {"hObjParent", Meaning::Object},
    {"pSkinResource", Meaning::Resources},
};

/// An address that the contract has no valid value for here is given as 0.
Meaning meaningOf(const std::string& parameter)
{
    for (const Named& each : kMeanings)
        if (parameter == each.parameter)
            return each.meaning;
    return Meaning::Address;
}

/// The arguments of one call and what keeps them alive.
class Arguments {
public:
    Arguments(World& world, const Method& method) : m_world(world), m_random(world.random()), m_method(method)
    {
        m_values.resize(method.parameters.size());
        m_types.resize(m_values.size());
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            VariantInit(&m_values[i]);
            fill(method.parameters[i], m_values[i]);
            m_types[i] = m_values[i].vt;
        }
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments()
    {
        for (std::size_t i = 0; i < m_places.size(); ++i)
            clear(*m_places[i]);
    }

    HRESULT call(IUnknown& object)
    {
        std::vector<VARIANT*> addresses;
        for (VARIANT& value : m_values)
            addresses.push_back(&value);
        VARIANT result;
        VariantInit(&result);
        const HRESULT status =
            DispCallFunc(&object, m_method.offset, CC_STDCALL, VT_I4, static_cast<UINT>(m_values.size()),
                         m_types.data(), addresses.data(), &result);
        return FAILED(status) ? status : result.lVal;
    }
    std::string text() const { return m_text; }

private:
    /// What an out-parameter that is just a number hands over.
    enum class Gift { Nothing, Icon, Drawing };

    /// Memory behind a pointer argument.
    struct Place {
        Kind kind;
        Gift gift;
        alignas(16) std::array<std::byte, 1024> bytes{};
    };

    Place& newPlace(Kind kind)
    {
        m_places.push_back(std::make_unique<Place>(Place{kind, giftOf(m_method.name), {}}));
        return *m_places.back();
    }

    static Gift giftOf(const std::string& method)
    {
        static constexpr const char* kDrawings[] = {"IVexRes::DrawImageSection", "IVexRes::DrawTextStyle",
                                                    "IVexRes::GetHwndPrintBmp", "IVexRes::GetRgnFromHBitmap"};
        if (method == "IVexControlBase::GetControlIcon")
            return Gift::Icon;
        return std::find(std::begin(kDrawings), std::end(kDrawings), method) == std::end(kDrawings) ? Gift::Nothing
                                                                                                    : Gift::Drawing;
    }

    template <class Value>
    static Value& in(Place& place)
    {
        return *reinterpret_cast<Value*>(place.bytes.data());
    }

    void clear(Place& place)
    {
        if (place.kind == Kind::OutText || place.kind == Kind::Text)
            SysFreeString(in<BSTR>(place));
        else if (place.kind == Kind::OutVariant || place.kind == Kind::Variant)
            VariantClear(&in<VARIANT>(place));
        else if (place.kind == Kind::OutObject)
            ComPtr<IUnknown> last = take(in<IUnknown*>(place));
        else if (place.kind == Kind::OutOther && place.gift == Gift::Icon && in<HICON>(place))
            DestroyIcon(in<HICON>(place));
        else if (place.kind == Kind::OutOther && place.gift == Gift::Drawing && in<HGDIOBJ>(place))
            DeleteObject(in<HGDIOBJ>(place));
    }

    static ComPtr<IUnknown> take(IUnknown* object)
    {
        ComPtr<IUnknown> owner;
        *owner.put() = object;
        return owner;
    }

    void put(VARIANT& value, std::int64_t number)
    {
        value.vt = VT_I8;
        value.llVal = number;
        m_text += (m_text.empty() ? "" : ", ") + std::to_string(number);
    }
    void put(VARIANT& value, const void* address, const char* what)
    {
        value.vt = VT_I8;
        value.llVal = reinterpret_cast<std::int64_t>(address);
        m_text += (m_text.empty() ? "" : ", ") + std::string(address ? what : "null");
    }

    void fillNumbers(Place& place, std::size_t size)
    {
        for (std::size_t at = 0; at + 4 <= size; at += 4) {
            const auto number =
                static_cast<std::int32_t>(m_random.oneIn(4) ? m_random.oddNumber() : m_random.between(-50, 700));
            std::memcpy(place.bytes.data() + at, &number, 4);
        }
    }
    /// Records of these sizes are rectangles, sizes and positions; longer ones hold strings and objects and stay empty.
    static bool isNumbersOnly(std::size_t size)
    {
        return size == 8 || size == sizeof(SkinRect) || size == sizeof(VexPosition);
    }

    void fill(const Parameter& parameter, VARIANT& value)
    {
        switch (parameter.kind) {
        case Kind::Number:
            return put(value, static_cast<std::int32_t>(m_random.oddNumber()));
        case Kind::Wide:
            return fillWide(parameter, value);
        case Kind::Real32:
            return fillReal(value, VT_R4);
        case Kind::Real64:
            return fillReal(value, VT_R8);
        case Kind::Text:
            return fillText(value);
        case Kind::Variant:
            return fillVariant(value);
        case Kind::Object:
            return fillObject(parameter, value);
        case Kind::Record:
            return fillRecord(parameter, value);
        default:
            return fillPlace(parameter, value);
        }
    }

    void fillWide(const Parameter& parameter, VARIANT& value)
    {
        static constexpr IID kNoInterface{0x11111111, 1, 1, {1, 2, 3, 4, 5, 6, 7, 8}};
        static const IID* const kInterfaces[] = {nullptr, &IID_IDispatch, &iidOf<IVexControlBase>(), &kNoInterface};
        switch (meaningOf(parameter.name)) {
        case Meaning::Any:
            return put(value, m_random.oddNumber());
        case Meaning::Window:
            return put(value, m_world.someWindow());
        case Meaning::Owner:
            return put(value, reinterpret_cast<std::int64_t>(m_world.owner()));
        case Meaning::Module:
            return put(value, m_random.oneIn(4) ? nullptr : m_world.library().module(), "module");
        case Meaning::Node:
            return put(value, m_world.someNode());
        case Meaning::DeviceContext:
            return put(value, m_world.someDeviceContext());
        case Meaning::Callback:
            return put(value, m_random.oneIn(3) ? 0 : World::callbackAddress());
        case Meaning::Interface:
            return put(value, m_random.pick(kInterfaces), "interface");
        case Meaning::Resources:
            return put(value, m_random.oneIn(3) ? nullptr : m_world.res(), "resources");
        case Meaning::Address:
            return put(value, 0);
        case Meaning::Object:
            break;
        }
        auto object = m_random.oneIn(3) ? nullptr : m_world.anyControl();
        put(value, static_cast<ISkinObjResBase*>(object.get()), "object");
        m_objects.push_back(ComPtr<IUnknown>(object.get()));
    }

    void fillReal(VARIANT& value, VARTYPE type)
    {
        static constexpr double kOdd[] = {0,
                                          -1,
                                          0.5,
                                          1e30,
                                          -1e30,
                                          360,
                                          std::numeric_limits<double>::quiet_NaN(),
                                          std::numeric_limits<double>::infinity()};
        const double real = m_random.pick(kOdd);
        value.vt = type;
        if (type == VT_R4)
            value.fltVal = static_cast<float>(real);
        else
            value.dblVal = real;
        m_text += (m_text.empty() ? "" : ", ") + std::to_string(real);
    }

    Bstr someText()
    {
        static const std::wstring kTexts[] = {L"",
                                              L"Name",
                                              L"&Text",
                                              L"a\nb\tc",
                                              L"\xD83D\xDE00 \xD800",
                                              L"Object1",
                                              std::wstring(3, L'\0'),
                                              L"C:\\no\\such\\file",
                                              L"%s%n",
                                              L"-1"};
        return m_random.oneIn(40) ? Bstr(std::wstring(longestText(), L'W')) : Bstr(m_random.pick(kTexts));
    }

    /// Wine's edit control takes a minute to wrap one word of 16,000 letters, a third of a second for one of 1,000.
    std::size_t longestText() const { return m_method.name == "IVexRes::CreateEdit" ? 1'000 : 70'000; }

    void fillText(VARIANT& value)
    {
        if (m_random.oneIn(5))
            return put(value, nullptr, "");
        Place& place = newPlace(Kind::Text);
        in<BSTR>(place) = someText().detach();
        put(value, in<BSTR>(place), "text");
    }

    void fillVariant(VARIANT& value)
    {
        Place& place = newPlace(Kind::Variant);
        VARIANT& inner = in<VARIANT>(place);
        VariantInit(&inner);
        switch (m_random.below(4)) {
        case 0:
            break;
        case 1:
            inner.vt = VT_BOOL, inner.boolVal = VARIANT_TRUE;
            break;
        case 2:
            inner.vt = VT_BSTR, inner.bstrVal = someText().detach();
            break;
        default:
            inner.vt = VT_I4, inner.lVal = static_cast<LONG>(m_random.oddNumber());
        }
        put(value, &inner, "variant"); // more than eight bytes: by address
    }

    void fillObject(const Parameter& parameter, VARIANT& value)
    {
        auto object = m_random.oneIn(4) ? nullptr : m_world.anyObject(parameter.iid);
        put(value, object.get(), "object");
        m_objects.push_back(std::move(object));
    }

    void fillRecord(const Parameter& parameter, VARIANT& value)
    {
        Place& place = newPlace(Kind::Record);
        if (isNumbersOnly(parameter.size))
            fillNumbers(place, parameter.size);
        if (parameter.size <= 8)
            put(value, in<std::int64_t>(place));
        else
            put(value, place.bytes.data(), "record");
    }

    void fillPlace(const Parameter& parameter, VARIANT& value)
    {
        if (m_random.oneIn(12))
            return put(value, nullptr, "");
        Place& place = newPlace(parameter.kind);
        if (isNumbersOnly(parameter.size))
            fillNumbers(place, parameter.size);
        put(value, place.bytes.data(), "place");
    }

    World& m_world;
    Random& m_random;
    const Method& m_method;
    std::vector<VARIANT> m_values;
    std::vector<VARTYPE> m_types;
    std::vector<std::unique_ptr<Place>> m_places;
    std::vector<ComPtr<IUnknown>> m_objects;
    std::string m_text;
};

} // namespace

const char* reasonToSkip(const Method& method)
{
    const auto found = std::find_if(std::begin(kSkipped), std::end(kSkipped),
                                    [&](const Skipped& each) { return method.name == each.method; });
    return found == std::end(kSkipped) ? nullptr : found->why;
}

void callAnything(World& world, const Member& member)
{
    if (!member.object || member.type->methods.empty())
        return;
    // Half of the calls are for the class's own methods, which come last.
    const auto& methods = member.type->methods;
    const std::size_t own = std::min<std::size_t>(methods.size(), 30);
    const std::size_t index =
        world.random().oneIn(2) ? world.random().below(methods.size()) : methods.size() - 1 - world.random().below(own);
    const Method& method = methods[index];
    if (reasonToSkip(method))
        return;
    ComPtr<IUnknown> object;
    member.object->QueryInterface(method.iid, object.putVoid());
    if (!object)
        return;
    Arguments arguments(world, method);
    logDetail(member.type->name + " " + method.name + "(" + arguments.text() + ")");
    arguments.call(*object);
}

} // namespace morvane::soak
