#include "ambrel/render/shared_resource.h"

#include <cwchar>

namespace ambrel {

const std::wstring& ResourceIdentity::ensureObjectId()
{
    if (objectId.empty()) {
        GUID guid{};
        wchar_t text[64];
        if (SUCCEEDED(CoCreateGuid(&guid)) && StringFromGUID2(guid, text, 64) > 0) {
            objectId = L"Guid";
            for (const wchar_t* c = text; *c; ++c)
                if (std::iswxdigit(static_cast<wint_t>(*c)))
                    objectId += *c;
        }
    }
    return objectId;
}

void ResourceIdentity::setResources(IVexRes* given)
{
    morvane::ComPtr<ResourceOwner> found; // a weak link to it is all that is kept
    if (given)
        given->QueryInterface(kIidResourceOwner, found.putVoid());
    resources = given;
    hasOwner = found != nullptr;
    owner = found ? found->link() : std::weak_ptr<ResourceOwner>();
}

HRESULT ResourceIdentity::rename(IVexObj& resource, std::wstring_view newName)
{
    std::wstring taken(newName);
    const auto known = owner.lock();
    const HRESULT status = known ? known->rename(resource, newName) : S_OK;
    if (SUCCEEDED(status))
        name = std::move(taken);
    return status;
}

morvane::ComPtr<IVexObj> ResourceIdentity::find(VexObjType wanted, std::wstring_view resourceName) const
{
    morvane::ComPtr<IVexObj> found;
    IVexRes* const living = livingResources();
    if (living && !resourceName.empty())
        living->GetResObject(wanted, morvane::Bstr(resourceName).get(), nullptr, VARIANT_TRUE, found.put());
    return found;
}

std::shared_ptr<ConfigNode> nodeForKey(hyper node, BSTR key, bool isReading)
{
    const auto parent = ConfigNode::fromHandle(node);
    const std::wstring_view name = morvane::viewOf(key);
    if (!parent || name.empty())
        return parent;
    const auto child = parent->firstChild(name);
    return child || isReading ? child : parent->addChild(name);
}

namespace {

/// A whole number, decimal or, with "0x", hexadecimal. False when the text is anything else.
bool parseNumber(const std::wstring* text, std::int64_t& number)
{
    if (!text || text->empty())
        return false;
    const bool isHex = text->starts_with(L"0x") || text->starts_with(L"0X");
    wchar_t* end = nullptr;
    const long long parsed = std::wcstoll(text->c_str(), &end, isHex ? 16 : 10);
    if (*end != L'\0')
        return false;
    number = parsed;
    return true;
}

} // namespace

void readNumber(const ConfigNode& node, std::wstring_view name, long& value)
{
    std::int64_t number = 0;
    if (parseNumber(node.attribute(name), number))
        value = static_cast<long>(number);
}

void readFlag(const ConfigNode& node, std::wstring_view name, bool& value)
{
    std::int64_t number = 0;
    if (parseNumber(node.attribute(name), number))
        value = number != 0;
}

void readColour(const ConfigNode& node, std::wstring_view name, OLE_COLOR& value)
{
    std::int64_t number = 0;
    if (parseNumber(node.attribute(name), number))
        value = static_cast<OLE_COLOR>(number);
}

void writeNumber(ConfigNode& node, std::wstring_view name, long value)
{
    node.setAttribute(name, std::to_wstring(value));
}

void writeColour(ConfigNode& node, std::wstring_view name, OLE_COLOR value)
{
    wchar_t text[16];
    std::swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(value));
    node.setAttribute(name, text);
}

std::wstring readText(const ConfigNode& node, std::wstring_view name)
{
    const std::wstring* text = node.attribute(name);
    return text ? *text : std::wstring();
}

std::wstring nameOf(IVexObj* resource)
{
    morvane::Bstr name;
    if (resource)
        resource->GetName(name.put());
    return name.str();
}

} // namespace ambrel
