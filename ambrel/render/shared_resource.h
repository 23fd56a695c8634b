// What every shared resource of a skin is: named, typed, counted, and readable from a configuration node.
#pragma once

#include "ambrel/properties/config_node.h"
#include "ambrel/render/implementation_of.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/geometry.h"
#include "host/host.h"

#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <variant>

namespace ambrel {

/// What a resource object of this runtime does for its resources, which may outlive it and then have none. Implemented
/// beside IVexRes, asked for with kIidResourceOwner.
struct ResourceOwner : IUnknown {
    virtual std::weak_ptr<ResourceOwner> link() const noexcept = 0;
    /// A resource is to be found by another name instead of the one it has. Fails, and nothing changes, when another
    /// one of its kind has that name.
    virtual HRESULT rename(IVexObj& resource, std::wstring_view name) = 0;
};

inline constexpr IID kIidResourceOwner = {0x3F8E16A4, 0x6B0D, 0x4D57, {0x95, 0xC2, 0x71, 0xE8, 0x2A, 0x0F, 0xD6, 0x43}};

/// The state of the base operations.
struct ResourceIdentity {
    VexObjType type = VEXOBJTYPE_LAST;
    std::wstring typeName;
    std::wstring name;
    std::wstring objectId;        // made when first asked for
    IVexRes* resources = nullptr; // borrowed; compared, but followed only by livingResources()
    std::weak_ptr<ResourceOwner> owner;
    bool hasOwner = false; // resource objects of other makers live as long as their resources
    hyper objectPointer = 0;
    NodeHandle node = 0;
    long internalReferences = 0;
    bool isModified = false;

    const std::wstring& ensureObjectId();

    void setResources(IVexRes* given);
    /// Null when there are none, or none any more.
    IVexRes* livingResources() const noexcept { return hasOwner && owner.expired() ? nullptr : resources; }

    /// Gives `resource`, whose identity this is, another name, also where an application looks for it.
    HRESULT rename(IVexObj& resource, std::wstring_view newName);

    /// A shared resource of the skin by name; null when there is none.
    morvane::ComPtr<IVexObj> find(VexObjType wanted, std::wstring_view resourceName) const;
};

/// The node itself for an empty key, else its child of that name; when writing, the child is made. Null when there is
/// none.
std::shared_ptr<ConfigNode> nodeForKey(hyper node, BSTR key, bool isReading);

/// Numbers and colours in a node's attributes; absent or odd ones leave the value alone.
void readNumber(const ConfigNode& node, std::wstring_view name, long& value);
void readFlag(const ConfigNode& node, std::wstring_view name, bool& value);
void readColour(const ConfigNode& node, std::wstring_view name, OLE_COLOR& value);
void writeNumber(ConfigNode& node, std::wstring_view name, long value);
void writeColour(ConfigNode& node, std::wstring_view name, OLE_COLOR value);
std::wstring readText(const ConfigNode& node, std::wstring_view name);

template <class Short>
void readShort(const ConfigNode& node, std::wstring_view name, Short& value)
{
    long number = value;
    readNumber(node, name, number);
    value = static_cast<Short>(number);
}

/// An attribute of a node and the member of a record that it holds.
template <class Record>
struct ConfigField {
    const wchar_t* name;
    std::variant<short Record::*, bool Record::*, int Record::*, OLE_COLOR Record::*> member;
};

template <class Record>
void readFields(const ConfigNode& node, std::span<const ConfigField<Record>> fields, Record& record)
{
    const auto read = [&](const wchar_t* name, auto member) {
        auto& value = record.*member;
        using Value = std::remove_reference_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, bool>)
            readFlag(node, name, value);
        else if constexpr (std::is_same_v<Value, OLE_COLOR>)
            readColour(node, name, value);
        else
            readShort(node, name, value);
    };
    for (const ConfigField<Record>& field : fields)
        std::visit([&](auto member) { read(field.name, member); }, field.member);
}

template <class Record>
void writeFields(ConfigNode& node, std::span<const ConfigField<Record>> fields, const Record& record)
{
    const auto write = [&](const wchar_t* name, auto member) {
        const auto& value = record.*member;
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, OLE_COLOR>)
            writeColour(node, name, value);
        else
            writeNumber(node, name, value);
    };
    for (const ConfigField<Record>& field : fields)
        std::visit([&](auto member) { write(field.name, member); }, field.member);
}

/// The name of a resource; empty for null. Names stand in nodes where resources refer to each other.
std::wstring nameOf(IVexObj* resource);

/// Completes a resource's interface with the operations that all resources share. A class derives from it and overrides
/// what differs for it.
template <class Interface>
class SharedResource : public morvane::Dispatch<Interface> {
public:
    using ImplementedInterface = Interface;

    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}

    ResourceIdentity& identity() noexcept { return m_identity; }
    const ResourceIdentity& identity() const noexcept { return m_identity; }

    STDMETHODIMP GetName(BSTR* result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::Bstr(m_identity.name); });
    }
    STDMETHODIMP SetName(BSTR name) noexcept override
    {
        return morvane::guarded([&] { return m_identity.rename(*this, morvane::viewOf(name)); });
    }
    STDMETHODIMP SetObjPtr(hyper pointer) noexcept override
    {
        m_identity.objectPointer = pointer;
        return S_OK;
    }
    STDMETHODIMP GetObjPtr(hyper* result) noexcept override
    {
        return morvane::returning(result,
                                  [&] { return m_identity.objectPointer != 0 ? m_identity.objectPointer : self(); });
    }
    STDMETHODIMP GetObjectID(BSTR* result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::Bstr(m_identity.ensureObjectId()); });
    }
    STDMETHODIMP AccessConfig(VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override
    {
        return access(m_identity.node, nullptr, read != VARIANT_FALSE, result);
    }
    STDMETHODIMP GetVexRes(IVexRes** result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::ComPtr(m_identity.livingResources()); });
    }
    STDMETHODIMP SetVexRes(IVexRes* resources) noexcept override
    {
        m_identity.setResources(resources);
        return S_OK;
    }
    STDMETHODIMP GetXMLNode(hyper* result) noexcept override
    {
        return morvane::returning(result, [&] { return m_identity.node; });
    }
    STDMETHODIMP GetType(VexObjType* result) noexcept override
    {
        return morvane::returning(result, [&] { return m_identity.type; });
    }
    STDMETHODIMP SetType(VexObjType type) noexcept override
    {
        m_identity.type = type;
        return S_OK;
    }
    STDMETHODIMP GetTypeName(BSTR* result) noexcept override
    {
        return morvane::returning(result, [&] { return morvane::Bstr(m_identity.typeName); });
    }
    STDMETHODIMP SetTypeName(BSTR name) noexcept override
    {
        return morvane::guarded([&] { m_identity.typeName = morvane::viewOf(name); });
    }
    STDMETHODIMP SetModified(VARIANT_BOOL modified) noexcept override
    {
        m_identity.isModified = modified != VARIANT_FALSE;
        return S_OK;
    }
    STDMETHODIMP IsModified(VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] { return m_identity.isModified; });
    }
    STDMETHODIMP GetVexXMLNodePtr(IVexXMLNode** result) noexcept override
    {
        // Node objects belong to the resource object, which makes them from GetXMLNode's handle.
        return morvane::filling(result, [](IVexXMLNode*&) { return S_FALSE; });
    }
    STDMETHODIMP AddInterRef(long* result) noexcept override
    {
        return morvane::returning(result, [&] { return ++m_identity.internalReferences; });
    }
    STDMETHODIMP ReleaseInterRef(long* result) noexcept override
    {
        return morvane::returning(result, [&] {
            if (m_identity.internalReferences > 0)
                --m_identity.internalReferences;
            return m_identity.internalReferences;
        });
    }

    STDMETHODIMP GetContainerCount(short* result) noexcept override
    {
        return morvane::returning(result, [&] { return static_cast<short>(m_identity.internalReferences); });
    }
    STDMETHODIMP AccessConfig2(hyper node, BSTR key, VARIANT_BOOL read, VARIANT_BOOL,
                               VARIANT_BOOL* result) noexcept override
    {
        return access(node, key, read != VARIANT_FALSE, result);
    }
    STDMETHODIMP ExportConfig(hyper node, VARIANT_BOOL* result) noexcept override
    {
        return access(node, nullptr, false, result);
    }
    STDMETHODIMP GetSharePtr(hyper* result) noexcept override
    {
        return morvane::returning(result, [&] { return self(); });
    }
    STDMETHODIMP DrawPreview(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] { return preview(reinterpret_cast<HDC>(dc), morvane::toRect(rect)); });
    }
    STDMETHODIMP IsValidateData(VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] { return isComplete(); });
    }
    STDMETHODIMP ReleaseRefrence(VARIANT_BOOL* result) noexcept override
    {
        return morvane::returning(result, [&] {
            dropReferences();
            return true;
        });
    }

protected:
    SharedResource(VexObjType type, const wchar_t* typeName)
    {
        m_identity.type = type;
        m_identity.typeName = typeName;
    }

    /// The interfaces of all resources. A class with more asks this last.
    void* findResourceInterface(REFIID iid, const IID& implementation) noexcept
    {
        const bool isOurs = iid == IID_IDispatch || iid == morvane::iidOf<IVexObj>() ||
                            iid == morvane::iidOf<ISkinShareBase>() || iid == morvane::iidOf<Interface>() ||
                            iid == implementation;
        return isOurs ? static_cast<Interface*>(this) : nullptr;
    }

    virtual void readConfig(const ConfigNode&) {}
    virtual void writeConfig(ConfigNode&) const {}
    virtual bool preview(HDC, const morvane::Rect&) { return false; }
    virtual bool isComplete() const { return true; }
    /// Lets go of other resources.
    virtual void dropReferences() {}

    void changed() noexcept { m_identity.isModified = true; }

    /// For the getter of a field.
    template <class Field, class Out>
    static HRESULT give(const Field& field, Out* result) noexcept
    {
        return morvane::returning(result, [&] { return field; });
    }

    /// For the setter of a field: stores the value, and the resource is modified.
    template <class Field, class Value>
    HRESULT take(Field& field, Value value) noexcept
    {
        if constexpr (std::is_same_v<Field, bool>)
            field = value != VARIANT_FALSE;
        else
            field = static_cast<Field>(value);
        changed();
        return S_OK;
    }

private:
    hyper self() noexcept { return reinterpret_cast<hyper>(static_cast<Interface*>(this)); }

    HRESULT access(hyper node, BSTR key, bool isReading, VARIANT_BOOL* result) noexcept
    {
        return morvane::filling(result, [&](VARIANT_BOOL& done) {
            const auto found = nodeForKey(node, key, isReading);
            if (!found)
                return ConfigNode::fromHandle(node) ? S_FALSE : E_INVALIDARG;
            if (isReading)
                readConfig(*found);
            else
                writeConfig(*found);
            m_identity.node = found->handle();
            done = VARIANT_TRUE;
            return S_OK;
        });
    }

    ResourceIdentity m_identity;
};

} // namespace ambrel
