#include "ambrel/properties/property_factory.h"

#include "ambrel/properties/color_property.h"
#include "ambrel/properties/property_group.h"
#include "ambrel/properties/resource_properties.h"
#include "ambrel/properties/simple_properties.h"

#include <array>

namespace ambrel {

using morvane::ComPtr;

namespace {

/// One property type: how its objects are made and what can be done with them.
struct TypeEntry {
    PropertyKind kind;
    PropertyCore* (*make)(enumPropType type, Atom name, bool isStyle);
};

template <class Object>
TypeEntry entryOf(std::wstring_view keySuffix = {})
{
    return {Object::makeKind(keySuffix), [](enumPropType type, Atom name, bool isStyle) -> PropertyCore* {
                return new Object(type, name, isStyle);
            }};
}

constexpr std::size_t kTypeCount = _PROPTYPE_FILLCOLOR + 1;

const TypeEntry* typeEntry(enumPropType type) noexcept
{
    // In the order of the types' numbers. The suffixes are those of saved skins.
    static const std::array<TypeEntry, kTypeCount> entries = {
        entryOf<ImageSectionPropertyObject>(L".ImageSecId"),
        entryOf<TextStylePropertyObject>(L".TextStyleId"),
        entryOf<LongPropertyObject>(), // _PROPTYPE_INT
        entryOf<LongPropertyObject>(), // _PROPTYPE_LONG
        entryOf<BoolPropertyObject>(),
        entryOf<ComboPropertyObject>(),
        entryOf<StringPropertyObject>(),
        entryOf<ObjectPropertyObject<IVexFontEx>>(L".FontExId"),
        entryOf<ColorPropertyObject>(),
        entryOf<PluginPropertyObject>(),
        entryOf<ObjectPropertyObject<IVexCursor>>(L".SkinCursorId"),
        entryOf<FloatPropertyObject>(),
        entryOf<HotkeyPropertyObject>(),
        entryOf<FillColorPropertyObject>(L".GradientColorId"),
    };
    return type >= 0 && static_cast<std::size_t>(type) < kTypeCount ? &entries[type] : nullptr;
}

} // namespace

const PropertyKind* kindOf(enumPropType type) noexcept
{
    const TypeEntry* entry = typeEntry(type);
    return entry ? &entry->kind : nullptr;
}

ComPtr<ICtrlPluginProp> createGroup(IVexControlBase* owner, ICtrlPluginProp* parent, std::wstring_view name,
                                    bool expanded)
{
    const auto above = PropertyGroup::from(parent);
    if (parent && !above)
        return nullptr;
    // A group inside another belongs to whom that one belongs, also after it was taken elsewhere.
    auto group = PropertyGroup::create(above ? nullptr : owner, name, expanded);
    if (above && !above->add(group))
        return nullptr;
    return group.as<ICtrlPluginProp>();
}

HRESULT createProperty(ICtrlPluginProp* group, enumPropType type, std::wstring_view name, std::wstring_view help,
                       bool isStyle, IPropChangedCallback* callback, IVexPropBase** result) noexcept
{
    return morvane::filling(result, [&](IVexPropBase*& place) {
        const auto home = PropertyGroup::from(group);
        const TypeEntry* entry = typeEntry(type);
        if (!home || !entry)
            return E_INVALIDARG;
        PropertyCore& core = *entry->make(type, Atom(name), isStyle);
        ComPtr<IVexPropBase> property(&core.asInterface());
        core.setHelp(help);
        core.setCallback(callback);
        home->add(property, core);
        place = property.detach();
        return S_OK;
    });
}

} // namespace ambrel
