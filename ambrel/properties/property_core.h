// What every property object has besides its typed value, and how its value is reached without knowing the type.
#pragma once

#include "ambrel/properties/atoms.h"
#include "ambrel/properties/resources.h"
#include "ambrel/properties/small_blocks.h"
#include "frame/com/module_lock.h"
#include "frame/com/result.h"
#include "host/host.h"

#include <memory>
#include <string>
#include <string_view>

namespace ambrel {

class PropertyCore;
class PropertyDescriptor;
class PropertyGroup;
struct DescriptorState;

enum class Notify : bool { No, Yes };

/// What a value is told to be; empty when the text does not fit the type.
enum class TextResult { Taken, NotThisType, NoSuchResource };

/// The operations of one property type on a value of that type.
struct PropertyKind {
    std::wstring_view keySuffix; // what the key of a resource's name ends with
    IVexPropBase& (*interfaceOf)(PropertyCore&);
    HRESULT (*getVariant)(PropertyCore&, VARIANT&);
    HRESULT (*setVariant)(PropertyCore&, const VARIANT&, Notify);
    std::wstring (*text)(PropertyCore&);
    TextResult (*setText)(PropertyCore&, std::wstring_view, const ResourceResolver&, Notify);
    void (*copyFrom)(PropertyCore&, PropertyCore& source); // of the same type
    bool (*releaseResource)(PropertyCore&);                // false when there was none
};

/// The operations of a type's properties; null for a number that is no type.
const PropertyKind* kindOf(enumPropType type) noexcept;

/// What few properties have; made when first needed.
struct PropertyExtras : InSmallBlock {
    Atom help;
    morvane::ComPtr<IPropChangedCallback> callback;
    morvane::ComPtr<IVexRes> resources;
    NodeHandle propertyNode = 0;
    NodeHandle styleNode = 0;
    std::int64_t renderDevice = 0;
    VEX_RENDERENGINE_TYPE renderType = VEX_RENDERENGINE_ERROR; // not told: as the group says
    long imageCount = 1;                                       // of an image section
    std::shared_ptr<DescriptorState> descriptorState;
    PropertyDescriptor* descriptor = nullptr; // borrowed: the living one keeps the property and says when it goes
};

/// Finds the core of a property of this runtime.
inline constexpr IID kIidPropertyCore = {0x1C0F6E5B, 0x7D0B, 0x4C5A, {0x9B, 0x3D, 0x52, 0x0A, 0x64, 0x88, 0x31, 0xC7}};

/// Name, place and change notices of a property: everything but its value.
class PropertyCore {
public:
    PropertyCore(enumPropType type, Atom name, bool isStyle) noexcept
        : m_name(name), m_type(static_cast<std::uint8_t>(type)), m_isStyle(isStyle)
    {
        morvane::ModuleLock::add();
    }
    PropertyCore(const PropertyCore&) = delete;
    PropertyCore& operator=(const PropertyCore&) = delete;

    enumPropType type() const noexcept { return static_cast<enumPropType>(m_type); }
    const PropertyKind& kind() const noexcept { return *kindOf(type()); }
    IVexPropBase& asInterface() noexcept { return kind().interfaceOf(*this); }

    Atom name() const noexcept { return m_name; }
    void setName(std::wstring_view name) { m_name = Atom(name); }
    Atom help() const noexcept { return m_extras ? m_extras->help : Atom(); }
    void setHelp(std::wstring_view help);

    /// Whether the value is a shared object of the skin, known by its name.
    bool isResource() const noexcept { return !kind().keySuffix.empty(); }

    bool isStyle() const noexcept { return m_isStyle; }
    void setStyle(bool isStyle) noexcept { m_isStyle = isStyle; }
    /// Left out of the designer's list of descriptors.
    bool isHidden() const noexcept { return m_isHidden; }
    void setHidden(bool isHidden) noexcept { m_isHidden = isHidden; }

    /// Borrowed; null when the property is in none (any more).
    PropertyGroup* group() const noexcept { return m_group; }
    void setGroup(PropertyGroup* group) noexcept { m_group = group; }
    /// Borrowed; null when the property has none (any more).
    IVexControlBase* owner() const noexcept;

    IPropChangedCallback* callback() const noexcept { return m_extras ? m_extras->callback.get() : nullptr; }
    void setCallback(IPropChangedCallback* callback);

    /// The property's own resource object, else that of its group or owner.
    morvane::ComPtr<IVexRes> resources() const noexcept;
    PropertyExtras& extras();
    const PropertyExtras* knownExtras() const noexcept { return m_extras.get(); }

    /// Tells the callback, if there is one. It may release the owner and this property.
    void runCallback() noexcept;
    /// A value changed: tells the callback and then the owner. Both may do anything, also set the property again, which
    /// is announced again; but who answers every value with another one is not told for ever. Nothing of this object is
    /// touched afterwards.
    void announceChange() noexcept;

    /// Reads or writes the value as the attribute `key` of a node. False when there was nothing to read, and for an
    /// object without a name, which nobody could find again: the attribute goes, and reading leaves the object alone.
    bool readAttribute(const class ConfigNode& node, std::wstring_view key);
    bool writeAttribute(class ConfigNode& node, std::wstring_view key);
    /// The property's part of its key: name and the suffix of its type.
    std::wstring keyName() const;

protected:
    ~PropertyCore();

    std::uint32_t m_references = 0;

private:
    Atom m_name;
    PropertyGroup* m_group = nullptr;
    std::unique_ptr<PropertyExtras> m_extras;
    std::uint8_t m_type;
    std::uint8_t m_announcing : 5 = 0; // how deep in answers to its own announcements
    bool m_isStyle : 1;
    bool m_isHidden : 1 = false;
};

/// Null for null and for a property of another runtime. Valid while the caller keeps the property.
PropertyCore* coreOf(IVexPropBase* property) noexcept;

} // namespace ambrel
