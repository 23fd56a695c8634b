#include "ambrel/properties/group_config.h"

#include "ambrel/properties/value_text.h"

namespace ambrel {

using morvane::ComPtr;

namespace {

class GroupAccess {
public:
    GroupAccess(ConfigNode& node, bool read, StyleNodes styleNodes) noexcept
        : m_node(node), m_read(read), m_styleNodes(styleNodes)
    {
    }

    /// True when something was read or written.
    bool run(PropertyGroup& group, const std::wstring& key)
    {
        bool done = expandedState(group, key + L"IsExpand");
        group.eachProperty([&](PropertyCore& property) { done |= access(property, key); });
        group.eachGroup([&](PropertyGroup& child) { done |= run(child, std::wstring(key).append(child.name())); });
        return done;
    }

private:
    bool expandedState(PropertyGroup& group, const std::wstring& key)
    {
        if (!m_read) {
            m_node.setAttribute(key, formatBool(group.isExpanded()));
            return true;
        }
        const std::wstring* text = m_node.attribute(key);
        const auto expanded = text ? parseBool(*text) : std::nullopt;
        if (expanded)
            group.setExpanded(*expanded);
        return expanded.has_value();
    }

    bool access(PropertyCore& property, const std::wstring& groupKey)
    {
        const std::wstring key = groupKey + property.keyName();
        const auto styleNode = styleNodeOf(property);
        ConfigNode& node = styleNode ? *styleNode : m_node;
        return m_read ? property.readAttribute(node, key) : property.writeAttribute(node, key);
    }

    std::shared_ptr<ConfigNode> styleNodeOf(const PropertyCore& property) const
    {
        if (m_styleNodes == StyleNodes::Ignored || !property.isStyle() || !property.knownExtras())
            return nullptr;
        return ConfigNode::fromHandle(property.knownExtras()->styleNode);
    }

    ConfigNode& m_node;
    bool m_read;
    StyleNodes m_styleNodes;
};

} // namespace

HRESULT accessGroup(PropertyGroup& group, BSTR parentName, hyper node, bool read, StyleNodes styleNodes,
                    VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& done) {
        const auto element = ConfigNode::fromHandle(node);
        if (!element)
            return E_INVALIDARG;
        const ComPtr<PropertyGroup> hold(&group);
        const std::wstring key = std::wstring(morvane::viewOf(parentName)) + group.path();
        done = morvane::toVariantBool(GroupAccess(*element, read, styleNodes).run(group, key));
        return S_OK;
    });
}

void setStyleNodes(PropertyGroup& group, NodeHandle node)
{
    for (const auto& property : group.properties()) {
        PropertyCore* core = coreOf(property.get());
        if (core->isStyle() && (node != 0 || core->knownExtras()))
            core->extras().styleNode = node;
    }
    for (const auto& child : group.groups())
        setStyleNodes(*child.get(), node);
}

} // namespace ambrel
