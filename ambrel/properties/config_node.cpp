#include "ambrel/properties/config_node.h"

#include <algorithm>
#include <unordered_map>

namespace ambrel {

namespace {

/// Every node that has a handle.
struct NodeRegistry {
    // Far from small numbers and from plausible addresses, so that either is refused.
    NodeHandle last = 0x4E4F4445'00000000;
    std::unordered_map<NodeHandle, ConfigNode*> nodes;
};

NodeRegistry& registry()
{
    // Never destroyed: nodes may outlive the module's statics.
    static NodeRegistry& instance = *new NodeRegistry;
    return instance;
}

} // namespace

std::shared_ptr<ConfigNode> ConfigNode::create(std::wstring_view name)
{
    return std::make_shared<ConfigNode>(Private(), name);
}

std::shared_ptr<ConfigNode> ConfigNode::fromHandle(NodeHandle handle) noexcept
{
    if (handle == 0)
        return nullptr;
    const auto& nodes = registry().nodes;
    const auto found = nodes.find(handle);
    return found == nodes.end() ? nullptr : found->second->weak_from_this().lock();
}

ConfigNode::~ConfigNode()
{
    if (m_handle != 0)
        registry().nodes.erase(m_handle);
    for (const auto& child : m_children)
        child->m_parent = nullptr;
    // Released one level at a time, so that a deep tree does not need a deep stack.
    std::vector<std::shared_ptr<ConfigNode>> dying = std::move(m_children);
    while (!dying.empty()) {
        const std::shared_ptr<ConfigNode> node = std::move(dying.back());
        dying.pop_back();
        if (node.use_count() != 1)
            continue;
        for (auto& child : node->m_children) {
            child->m_parent = nullptr;
            dying.push_back(std::move(child));
        }
        node->m_children.clear();
    }
}

NodeHandle ConfigNode::handle()
{
    if (m_handle == 0) {
        NodeRegistry& known = registry();
        known.nodes.emplace(known.last + 1, this);
        m_handle = ++known.last;
    }
    return m_handle;
}

const std::wstring* ConfigNode::attribute(std::wstring_view name) const noexcept
{
    const auto found = std::ranges::find(m_attributes, name, &Attribute::name);
    return found == m_attributes.end() ? nullptr : &found->value;
}

void ConfigNode::setAttribute(std::wstring_view name, std::wstring_view value)
{
    const auto found = std::ranges::find(m_attributes, name, &Attribute::name);
    if (found != m_attributes.end())
        found->value.assign(value);
    else
        m_attributes.push_back({std::wstring(name), std::wstring(value)});
}

bool ConfigNode::removeAttribute(std::wstring_view name) noexcept
{
    const auto found = std::ranges::find(m_attributes, name, &Attribute::name);
    if (found == m_attributes.end())
        return false;
    m_attributes.erase(found);
    return true;
}

std::shared_ptr<ConfigNode> ConfigNode::firstChild(std::wstring_view name) const noexcept
{
    const auto found = std::ranges::find_if(m_children, [&](const auto& child) { return child->m_name == name; });
    return found == m_children.end() ? nullptr : *found;
}

std::shared_ptr<ConfigNode> ConfigNode::nextSibling() const noexcept
{
    if (!m_parent)
        return nullptr;
    const auto index = m_parent->indexOf(*this);
    return index && *index + 1 < m_parent->m_children.size() ? m_parent->m_children[*index + 1] : nullptr;
}

std::optional<std::size_t> ConfigNode::indexOf(const ConfigNode& child) const noexcept
{
    const auto found = std::ranges::find_if(m_children, [&](const auto& each) { return each.get() == &child; });
    if (found == m_children.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - m_children.begin());
}

bool ConfigNode::isWithin(const ConfigNode& ancestor) const noexcept
{
    for (const ConfigNode* node = this; node; node = node->m_parent)
        if (node == &ancestor)
            return true;
    return false;
}

bool ConfigNode::insertChild(std::size_t index, std::shared_ptr<ConfigNode> child)
{
    // A node without children contains at most itself; most are put in before they get any.
    const bool wouldLoop = child && (child.get() == this || (!child->m_children.empty() && isWithin(*child)));
    if (!child || wouldLoop || index > m_children.size())
        return false;
    if (m_children.size() == m_children.capacity())
        m_children.reserve(m_children.size() * 2 + 1); // before anything changes
    if (child->m_parent == this && *indexOf(*child) < index)
        --index; // its leaving moves the place one up
    child->detach();
    child->m_parent = this;
    m_children.insert(m_children.begin() + static_cast<std::ptrdiff_t>(index), std::move(child));
    return true;
}

bool ConfigNode::appendChild(std::shared_ptr<ConfigNode> child)
{
    return insertChild(m_children.size(), std::move(child));
}

std::shared_ptr<ConfigNode> ConfigNode::addChild(std::wstring_view name)
{
    auto child = create(name);
    appendChild(child);
    return child;
}

void ConfigNode::detach() noexcept
{
    if (!m_parent)
        return;
    auto& siblings = m_parent->m_children;
    const auto index = m_parent->indexOf(*this);
    m_parent = nullptr;
    if (index) {
        const auto place = siblings.begin() + static_cast<std::ptrdiff_t>(*index);
        const std::shared_ptr<ConfigNode> hold = std::move(*place); // this node may go when it is left
        siblings.erase(place);
    }
}

} // namespace ambrel
