#include "ambrel/properties/property_lookup.h"

#include <array>

namespace ambrel {

using morvane::ComPtr;

PropertyGroup* findGroup(const PropertyTree& tree, std::wstring_view path) noexcept
{
    PropertyGroup* group = nullptr;
    for (bool isFirst = true; isFirst || !path.empty(); isFirst = false) {
        const auto end = path.find(L'/');
        const std::wstring_view name = path.substr(0, end);
        path = end == std::wstring_view::npos ? std::wstring_view() : path.substr(end + 1);
        group = isFirst ? tree.findGroup(name) : group->findGroup(name);
        if (!group)
            return nullptr;
    }
    return group;
}

ComPtr<IVexPropBase> findProperty(const PropertyTree& tree, std::wstring_view groupPath,
                                  std::wstring_view name) noexcept
{
    const PropertyGroup* group = findGroup(tree, groupPath);
    PropertyCore* core = group ? group->findProperty(name) : nullptr;
    return core ? ComPtr<IVexPropBase>(&core->asInterface()) : nullptr;
}

TextResult setPropertyText(IVexPropBase* property, std::wstring_view text, const ResourceResolver& resolver,
                           Notify notify)
{
    PropertyCore* core = coreOf(property);
    const ComPtr<IVexPropBase> hold(property);
    return core ? core->kind().setText(*core, text, resolver, notify) : TextResult::NotThisType;
}

std::wstring propertyText(IVexPropBase* property)
{
    PropertyCore* core = coreOf(property);
    return core ? core->kind().text(*core) : std::wstring();
}

namespace {

void listGroup(const PropertyGroup& group, std::vector<PropertyEntry>& entries)
{
    const std::wstring path = group.path(L"/");
    for (const auto& property : group.properties()) {
        PropertyCore* core = coreOf(property.get());
        entries.push_back({property, path, core->name().text(), core->help().text(), core->type(), core->isStyle(),
                           core->kind().text(*core)});
    }
    for (const auto& child : group.groups())
        listGroup(*child.get(), entries);
}

} // namespace

std::vector<PropertyEntry> listProperties(const PropertyTree& tree)
{
    std::vector<PropertyEntry> entries;
    for (const auto& group : tree.groups())
        listGroup(*group.get(), entries);
    return entries;
}

std::wstring_view typeName(enumPropType type) noexcept
{
    static constexpr std::array<std::wstring_view, 14> kNames = {
        L"Image", L"TextStyle", L"Int",    L"Long",   L"Boolean", L"Choice", L"String",
        L"Font",  L"Color",     L"Plugin", L"Cursor", L"Float",   L"Hotkey", L"Fill"};
    return type >= 0 && static_cast<std::size_t>(type) < kNames.size() ? kNames[type] : std::wstring_view();
}

} // namespace ambrel
