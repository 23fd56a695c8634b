#include "ambrel/window/keyboard_properties.h"

#include "ambrel/properties/property_group.h"
#include "ambrel/properties/resource_properties.h"
#include "ambrel/window/access_key.h"
#include "host/typed_properties.h"

namespace ambrel {

namespace {

ComPtr<PropertyGroup> groupNamed(SkinObjectCore& core, std::wstring_view name)
{
    for (const auto& each : core.groups()) {
        ComPtr<PropertyGroup> group = PropertyGroup::from(each.get());
        if (group && group->name() == name)
            return group;
    }
    return nullptr;
}

PropertyCore* propertyNamed(const PropertyGroup* group, std::wstring_view name, enumPropType type)
{
    PropertyCore* const property = group ? group->findProperty(name) : nullptr;
    return property && property->type() == type ? property : nullptr;
}

bool isSet(PropertyCore& flag)
{
    VARIANT_BOOL value = VARIANT_FALSE;
    static_cast<morvane::BoolProperty&>(flag.asInterface()).GetValue(&value);
    return value != VARIANT_FALSE;
}

bool isHotKey(PropertyCore& property, const KeyFact& key)
{
    // One without a value would make an object for it when it is asked for one.
    if (property.kind().text(property).empty())
        return false;
    ComPtr<IVexHotkey> hotkey;
    static_cast<morvane::HotkeyProperty&>(property.asInterface()).GetObject(hotkey.put());
    return isHotKey(hotkey.get(), key);
}

std::wstring_view nameOf(PlainKey key) noexcept
{
    return key == PlainKey::Enter ? L"IsEnter" : L"IsBackspace";
}

/// The first style of the table that is set: the one of the object at rest.
ComPtr<IVexTextStyle> firstTextStyle(const PropertyGroup& group)
{
    ComPtr<IVexTextStyle> style;
    for (const auto& property : group.properties()) {
        PropertyCore* const core = coreOf(property.get());
        if (core && core->type() == _PROPTYPE_TEXTSTYLE)
            static_cast<morvane::TextStyleProperty&>(core->asInterface()).GetTextStyle(style.put());
        if (style)
            return style;
    }
    for (const auto& child : group.groups()) {
        style = firstTextStyle(*child);
        if (style)
            return style;
    }
    return nullptr;
}

bool underlinesAccessKeys(SkinObjectCore& core)
{
    for (const auto& each : core.groups()) {
        const ComPtr<PropertyGroup> group = PropertyGroup::from(each.get());
        const ComPtr<IVexTextStyle> style = group ? firstTextStyle(*group) : nullptr;
        if (!style)
            continue;
        VARIANT_BOOL underlines = VARIANT_FALSE;
        style->get_bHotkeyPrefixShow(&underlines);
        return underlines != VARIANT_FALSE;
    }
    return false;
}

} // namespace

bool isHotKey(IVexHotkey* hotkey, const KeyFact& key) noexcept
{
    if (!hotkey)
        return false;
    long code = 0;
    long modifiers = 0;
    hotkey->get_wVirtualKeyCode(&code);
    hotkey->get_wModifiers(&modifiers);
    return code != 0 && code == key.key && ((modifiers & kHotkeyControl) != 0) == key.control &&
           ((modifiers & kHotkeyAlt) != 0) == key.alt && ((modifiers & kHotkeyShift) != 0) == key.shift;
}

bool hasHotKeyProperty(SkinObjectCore& core, const KeyFact& key)
{
    const ComPtr<PropertyGroup> group = groupNamed(core, L"Hotkey");
    if (!group)
        return false;
    for (const std::wstring_view name : {L"Hotkey1", L"Hotkey2"}) {
        PropertyCore* const property = propertyNamed(group.get(), name, _PROPTYPE_HOTKEY);
        if (property && isHotKey(*property, key))
            return true;
    }
    return false;
}

bool hasAnyHotKeyProperty(SkinObjectCore& core)
{
    // Whatever their names are: a property that is renamed tells nobody.
    for (const auto& each : core.groups()) {
        const ComPtr<PropertyGroup> group = PropertyGroup::from(each.get());
        if (!group || group->name() != L"Hotkey")
            continue;
        for (const auto& property : group->properties()) {
            PropertyCore* const known = coreOf(property.get());
            if (known && mayHaveHotkey(*known))
                return true;
        }
    }
    return false;
}

bool isPressedByProperty(SkinObjectCore& core, PlainKey key)
{
    const ComPtr<PropertyGroup> group = groupNamed(core, L"Hotkey");
    PropertyCore* const property = propertyNamed(group.get(), nameOf(key), _PROPTYPE_BOOL);
    return property && isSet(*property);
}

bool offersEnter(SkinObjectCore& core)
{
    const ComPtr<PropertyGroup> group = groupNamed(core, L"Hotkey");
    return propertyNamed(group.get(), nameOf(PlainKey::Enter), _PROPTYPE_BOOL) != nullptr;
}

wchar_t shownAccessKey(SkinObjectCore& core)
{
    const ComPtr<PropertyGroup> group = groupNamed(core, L"Text");
    PropertyCore* const text = propertyNamed(group.get(), L"Text", _PROPTYPE_STRING);
    const wchar_t key = text ? accessKeyOf(text->kind().text(*text)) : L'\0';
    if (!key)
        return 0;
    PropertyCore* const shown = propertyNamed(group.get(), L"ShowText", _PROPTYPE_BOOL);
    if ((shown && !isSet(*shown)) || !underlinesAccessKeys(core))
        return 0;
    return upperCase(key);
}

wchar_t upperCase(wchar_t character) noexcept
{
    // A single character in place of a pointer is how CharUpper is asked for one.
    return static_cast<wchar_t>(
        reinterpret_cast<std::uintptr_t>(CharUpperW(reinterpret_cast<LPWSTR>(static_cast<std::uintptr_t>(character)))));
}

std::optional<FocusGroup> focusGroupOf(SkinObjectCore& core)
{
    const ComPtr<PropertyGroup> group = groupNamed(core, L"Group");
    PropertyCore* const property = propertyNamed(group.get(), L"GroupID", _PROPTYPE_LONG);
    if (!property)
        return std::nullopt;
    long number = 0;
    static_cast<morvane::LongProperty&>(property->asInterface()).GetValue(&number);
    return FocusGroup{number == 0 ? core.node().parent() : nullptr, number};
}

} // namespace ambrel
