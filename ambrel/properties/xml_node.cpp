#include "ambrel/properties/xml_node.h"

#include "ambrel/properties/value_text.h"

#include <cmath>
#include <type_traits>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::guarded;
using morvane::viewOf;

namespace {
/// Finds the object behind a node interface of this runtime.
constexpr IID kIidXmlNode = {0x3F5D0C91, 0x8A27, 0x4E6B, {0xB4, 0x18, 0x5C, 0x90, 0x2E, 0xD1, 0x6F, 0x73}};
} // namespace

ComPtr<IVexXMLNode> XmlNode::of(std::shared_ptr<ConfigNode> node)
{
    if (!node)
        return nullptr;
    const auto object = morvane::Instance<XmlNode>::make();
    object->m_node = std::move(node);
    return ComPtr<IVexXMLNode>(object.get());
}

ComPtr<IVexXMLNode> xmlNodeOf(NodeHandle handle)
{
    return XmlNode::of(ConfigNode::fromHandle(handle));
}

void* XmlNode::findInterface(REFIID iid) noexcept
{
    if (iid == IID_IDispatch || iid == morvane::iidOf<IVexXMLNode>() || iid == kIidXmlNode)
        return static_cast<IVexXMLNode*>(this);
    return nullptr;
}

XmlNode* XmlNode::from(IVexXMLNode* node) noexcept
{
    ComPtr<IVexXMLNode> own;
    if (node)
        node->QueryInterface(kIidXmlNode, own.putVoid());
    return static_cast<XmlNode*>(own.get()); // the caller keeps it
}

STDMETHODIMP XmlNode::GetXMLNode(hyper* result) noexcept
{
    return morvane::returning(result, [&] { return m_node ? m_node->handle() : 0; });
}

STDMETHODIMP XmlNode::SetXMLNode(hyper node) noexcept
{
    auto wanted = ConfigNode::fromHandle(node);
    if (node != 0 && !wanted)
        return E_INVALIDARG;
    m_node = std::move(wanted);
    return S_OK;
}

/// Reads by `parse`, which gives the value or nothing, or writes what `format` makes of it.
template <class Value, class Parse, class Format>
HRESULT XmlNode::access(BSTR name, Value* value, VARIANT_BOOL read, VARIANT_BOOL* result, Parse parse,
                        Format format) noexcept
{
    if (!value)
        return E_POINTER;
    return filling(result, [&](VARIANT_BOOL& done) {
        if (!m_node)
            return S_FALSE;
        if (read == VARIANT_FALSE) {
            if constexpr (std::is_floating_point_v<Value>)
                if (!std::isfinite(*value))
                    return E_INVALIDARG; // nobody could read it
            m_node->setAttribute(viewOf(name), format(*value));
            done = VARIANT_TRUE;
        } else if (const std::wstring* text = m_node->attribute(viewOf(name))) {
            if (const auto parsed = parse(*text)) {
                *value = static_cast<Value>(*parsed);
                done = VARIANT_TRUE;
            }
        }
        return S_OK;
    });
}

STDMETHODIMP XmlNode::AccessAttribLong(BSTR name, long* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return access(name, value, read, result, parseLong,
                  [](long number) { return formatLong(static_cast<std::int32_t>(number)); });
}

STDMETHODIMP XmlNode::AccessAttribFloat(BSTR name, float* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return access(name, value, read, result, parseFloat, formatFloat);
}

STDMETHODIMP XmlNode::AccessAttribDouble(BSTR name, double* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return access(name, value, read, result, parseDouble, formatDouble);
}

STDMETHODIMP XmlNode::AccessAttribBOOL(BSTR name, VARIANT_BOOL* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return access(
        name, value, read, result,
        [](std::wstring_view text) {
            const auto parsed = parseBool(text);
            return parsed ? std::optional(morvane::toVariantBool(*parsed)) : std::nullopt;
        },
        [](VARIANT_BOOL truth) { return formatBool(truth != VARIANT_FALSE); });
}

STDMETHODIMP XmlNode::AccessAttribString(BSTR name, BSTR* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    if (!value)
        return E_POINTER;
    return filling(result, [&](VARIANT_BOOL& done) {
        if (!m_node)
            return S_FALSE;
        const std::wstring* text = nullptr;
        if (read == VARIANT_FALSE) {
            m_node->setAttribute(viewOf(name), viewOf(*value));
        } else if (text = m_node->attribute(viewOf(name)); text) {
            BSTR replaced = std::exchange(*value, Bstr(*text).detach());
            SysFreeString(replaced);
        }
        done = morvane::toVariantBool(read == VARIANT_FALSE || text);
        return S_OK;
    });
}

STDMETHODIMP XmlNode::AccessAttribColor(BSTR name, OLE_COLOR* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    return access(name, value, read, result, parseColor,
                  [](OLE_COLOR color) { return formatColor(static_cast<std::uint32_t>(color)); });
}

STDMETHODIMP XmlNode::RemoveChild(IVexXMLNode* node, VARIANT_BOOL isDeleted) noexcept
{
    XmlNode* child = from(node);
    if (!child)
        return node ? E_INVALIDARG : E_POINTER;
    if (!m_node || !child->m_node || child->m_node->parent() != m_node.get())
        return S_FALSE;
    child->m_node->detach();
    if (isDeleted != VARIANT_FALSE)
        child->m_node.reset();
    return S_OK;
}

HRESULT XmlNode::insertBeside(IVexXMLNode* sibling, IVexXMLNode* added, std::size_t offset) noexcept
{
    const XmlNode* beside = from(sibling);
    const XmlNode* child = from(added);
    if (!beside || !child)
        return sibling && added ? E_INVALIDARG : E_POINTER;
    if (!m_node || !beside->m_node || !child->m_node)
        return S_FALSE;
    const auto index = m_node->indexOf(*beside->m_node);
    if (!index)
        return S_FALSE;
    return guarded([&] { return m_node->insertChild(*index + offset, child->m_node) ? S_OK : E_INVALIDARG; });
}

STDMETHODIMP XmlNode::InsertAfterChild(IVexXMLNode* afterThis, IVexXMLNode* addThis) noexcept
{
    return insertBeside(afterThis, addThis, 1);
}

STDMETHODIMP XmlNode::InsertBeforeChild(IVexXMLNode* beforeThis, IVexXMLNode* addThis) noexcept
{
    return insertBeside(beforeThis, addThis, 0);
}

STDMETHODIMP XmlNode::InsertEndChild(IVexXMLNode* node) noexcept
{
    const XmlNode* child = from(node);
    if (!child)
        return node ? E_INVALIDARG : E_POINTER;
    if (!m_node || !child->m_node)
        return S_FALSE;
    return guarded([&] { return m_node->appendChild(child->m_node) ? S_OK : E_INVALIDARG; });
}

STDMETHODIMP XmlNode::CreateNewVexXMLNode(BSTR name, IVexXMLNode** result) noexcept
{
    return morvane::returning(result, [&] { return of(ConfigNode::create(viewOf(name))); });
}

STDMETHODIMP XmlNode::FirstChild(IVexXMLNode** result) noexcept
{
    return filling(result, [&](IVexXMLNode*& place) {
        if (m_node && !m_node->children().empty())
            place = of(m_node->children().front()).detach();
        return place ? S_OK : S_FALSE;
    });
}

STDMETHODIMP XmlNode::NextChild(IVexXMLNode** result) noexcept
{
    return filling(result, [&](IVexXMLNode*& place) {
        place = m_node ? of(m_node->nextSibling()).detach() : nullptr;
        return place ? S_OK : S_FALSE;
    });
}

STDMETHODIMP XmlNode::QueryIntAttribute(BSTR name, long* result) noexcept
{
    return filling(result, [&](long& place) {
        const std::wstring* text = m_node ? m_node->attribute(viewOf(name)) : nullptr;
        const auto number = text ? parseLong(*text) : std::nullopt;
        place = number.value_or(0);
        return number ? S_OK : S_FALSE;
    });
}

STDMETHODIMP XmlNode::Attribute(BSTR name, BSTR* result) noexcept
{
    return filling(result, [&](BSTR& place) {
        const std::wstring* text = m_node ? m_node->attribute(viewOf(name)) : nullptr;
        place = Bstr(text ? std::wstring_view(*text) : std::wstring_view()).detach();
        return text ? S_OK : S_FALSE;
    });
}

STDMETHODIMP XmlNode::SetAttribute(BSTR name, BSTR value) noexcept
{
    if (!m_node)
        return S_FALSE;
    return guarded([&] { m_node->setAttribute(viewOf(name), viewOf(value)); });
}

} // namespace ambrel
