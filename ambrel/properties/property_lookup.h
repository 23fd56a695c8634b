// Properties by group path and name, and their values as text: for the skin loader, the inspector and the reference
// pages.
#pragma once

#include "ambrel/properties/property_tree.h"

#include <string>
#include <string_view>
#include <vector>

namespace ambrel {

/// The group at a path of names with '/' between them ("Unchecked/Normal"); null when there is none. Borrowed.
PropertyGroup* findGroup(const PropertyTree& tree, std::wstring_view path) noexcept;

/// The property of a name in the group at the path. Null when there is none.
morvane::ComPtr<IVexPropBase> findProperty(const PropertyTree& tree, std::wstring_view groupPath,
                                           std::wstring_view name) noexcept;

/// Gives a property the value that a text of a skin means for its type: numbers, "1" and "0", colours as "0x00BBGGRR",
/// texts, names of resources (the empty name is none), hot keys. Texts that do not fit leave the value alone. Loading
/// passes Notify::No. NotThisType for a property of another runtime.
TextResult setPropertyText(IVexPropBase* property, std::wstring_view text, const ResourceResolver& resolver,
                           Notify notify);

/// The value as setPropertyText takes it. Empty for a property of another runtime.
std::wstring propertyText(IVexPropBase* property);

/// One property as a reader sees it.
struct PropertyEntry {
    morvane::ComPtr<IVexPropBase> property;
    std::wstring groupPath; // with '/' between the names
    std::wstring_view name; // this and help: valid for the life of the process
    std::wstring_view help;
    enumPropType type;
    bool isStyle;
    std::wstring value; // as text
};

/// Every property, group by group in the order of creation, a group's own before those of its sub-groups.
std::vector<PropertyEntry> listProperties(const PropertyTree& tree);

/// "Image", "TextStyle", "Int"...; empty for a number that is no type.
std::wstring_view typeName(enumPropType type) noexcept;

} // namespace ambrel
