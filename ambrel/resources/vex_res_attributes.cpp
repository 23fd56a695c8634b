// Attributes of configuration nodes, and hooks.
#include "ambrel/objects/hooks.h"
#include "ambrel/properties/value_text.h"
#include "ambrel/properties/xml_node.h"
#include "ambrel/resources/vex_res.h"

#include <cwchar>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::toVariantBool;
using morvane::viewOf;

namespace {

/// Reads or writes through the node's own object; `access` is one of its operations.
template <class Value>
HRESULT through(hyper node, BSTR name, Value* value, VARIANT_BOOL read, VARIANT_BOOL* result,
                HRESULT (STDMETHODCALLTYPE IVexXMLNode::*access)(BSTR, Value*, VARIANT_BOOL, VARIANT_BOOL*)) noexcept
{
    if (!value || !result)
        return E_POINTER;
    *result = VARIANT_FALSE;
    const ComPtr<IVexXMLNode> object = xmlNodeOf(node);
    return object ? (object.get()->*access)(name, value, read, result) : E_INVALIDARG;
}

/// "1,2,3,4": `count` whole numbers.
bool parseNumbers(std::wstring_view text, long* const* numbers, std::size_t count)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = text.find(L',', start);
        const bool isLast = i + 1 == count;
        if ((end == std::wstring_view::npos) != isLast)
            return false;
        const auto value = parseLong(text.substr(start, end == std::wstring_view::npos ? end : end - start));
        if (!value)
            return false;
        *numbers[i] = *value;
        start = end + 1;
    }
    return true;
}

/// Several numbers in one attribute; nothing changes unless all of them are there.
template <class Record, std::size_t Count>
HRESULT accessNumbers(hyper node, BSTR name, Record* record, long Record::*const (&members)[Count], VARIANT_BOOL read,
                      VARIANT_BOOL* result) noexcept
{
    if (!record)
        return E_POINTER;
    return filling(result, [&](VARIANT_BOOL& worked) {
        const auto found = ConfigNode::fromHandle(node);
        if (!found)
            return E_INVALIDARG;
        Record value = *record;
        long* places[Count];
        for (std::size_t i = 0; i < Count; ++i)
            places[i] = &(value.*members[i]);
        if (read != VARIANT_FALSE) {
            const std::wstring* text = found->attribute(viewOf(name));
            worked = toVariantBool(text && parseNumbers(*text, places, Count));
            if (worked)
                *record = value;
        } else {
            std::wstring text;
            for (long* each : places)
                text += (text.empty() ? L"" : L",") + std::to_wstring(*each);
            found->setAttribute(viewOf(name), text);
            worked = VARIANT_TRUE;
        }
        return worked ? S_OK : S_FALSE;
    });
}

template <class Body>
HRESULT onNode(IVexControlBase* object, VARIANT_BOOL* result, Body&& body) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        SkinObjectCore* const core = coreOf(object);
        if (!core)
            return E_INVALIDARG;
        done = toVariantBool(body(core->node()));
        return done ? S_OK : S_FALSE;
    });
}

} // namespace

STDMETHODIMP VexRes::AccessAttribRect(hyper node, BSTR name, SkinRect* value, VARIANT_BOOL read,
                                      VARIANT_BOOL* result) noexcept
{
    static constexpr long SkinRect::*kMembers[] = {&SkinRect::left, &SkinRect::top, &SkinRect::right,
                                                   &SkinRect::bottom};
    return accessNumbers(node, name, value, kMembers, read, result);
}
STDMETHODIMP VexRes::AccessAttribSize(hyper node, BSTR name, SkinSize* value, VARIANT_BOOL read,
                                      VARIANT_BOOL* result) noexcept
{
    static constexpr long SkinSize::*kMembers[] = {&SkinSize::cx, &SkinSize::cy};
    return accessNumbers(node, name, value, kMembers, read, result);
}
STDMETHODIMP VexRes::AccessAttribLong(hyper node, BSTR name, LONG* value, VARIANT_BOOL read,
                                      VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribLong);
}
STDMETHODIMP VexRes::AccessAttribFloat(hyper node, BSTR name, float* value, VARIANT_BOOL read,
                                       VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribFloat);
}
STDMETHODIMP VexRes::AccessAttribDouble(hyper node, BSTR name, double* value, VARIANT_BOOL read,
                                        VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribDouble);
}
STDMETHODIMP VexRes::AccessAttribBOOL(hyper node, BSTR name, VARIANT_BOOL* value, VARIANT_BOOL read,
                                      VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribBOOL);
}
STDMETHODIMP VexRes::AccessAttribString(hyper node, BSTR name, BSTR* value, VARIANT_BOOL read,
                                        VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribString);
}
STDMETHODIMP VexRes::AccessAttribColor(hyper node, BSTR name, OLE_COLOR* value, VARIANT_BOOL read,
                                       VARIANT_BOOL* result) noexcept
{
    return through(node, name, value, read, result, &IVexXMLNode::AccessAttribColor);
}

// Hooks

STDMETHODIMP VexRes::IsRegKbHookObj(IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [](ObjectNode& node) { return Hooks::instance().isKeyboardRegistered(node); });
}
STDMETHODIMP VexRes::RegisterKbHookObj(IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [](ObjectNode& node) { return Hooks::instance().addKeyboard(node); });
}
STDMETHODIMP VexRes::UnRegisterKbHookObj(IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [](ObjectNode& node) { return Hooks::instance().removeKeyboard(node); });
}
STDMETHODIMP VexRes::CallNextKBHook(LONG code, hyper wParam, hyper lParam, LONG* result) noexcept
{
    return morvane::returning(result, [&] {
        return Hooks::instance().callNext(static_cast<int>(code), static_cast<WPARAM>(wParam),
                                          static_cast<LPARAM>(lParam));
    });
}
STDMETHODIMP VexRes::IsRegisterHookObject(VEX_HOOKTYPE kind, IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [&](ObjectNode& node) { return Hooks::instance().isRegistered(kind, node); });
}
STDMETHODIMP VexRes::RegisterHookObject(VEX_HOOKTYPE kind, IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [&](ObjectNode& node) { return Hooks::instance().add(kind, node); });
}
STDMETHODIMP VexRes::UnRegisterHookObject(VEX_HOOKTYPE kind, IVexControlBase* object, VARIANT_BOOL* result) noexcept
{
    return onNode(object, result, [&](ObjectNode& node) { return Hooks::instance().remove(kind, node); });
}
STDMETHODIMP VexRes::StartHook(VARIANT_BOOL* result) noexcept
{
    return morvane::returning(result, [] { return Hooks::instance().start(); });
}
STDMETHODIMP VexRes::EndHook(VARIANT_BOOL* result) noexcept
{
    return filling(result, [](VARIANT_BOOL& ended) {
        ended = toVariantBool(Hooks::instance().end());
        return ended ? S_OK : S_FALSE;
    });
}

} // namespace ambrel
