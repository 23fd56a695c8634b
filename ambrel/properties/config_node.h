// A configuration node: an element with attributes and children, in memory. Skins are read into such trees and written
// from them; over the interfaces a node travels as a 64-bit handle.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ambrel {

/// Names a node towards the outside; 0 names none. Handles are never reused, so a handle of a node that is gone stays
/// invalid.
using NodeHandle = std::int64_t;

/// Shared by its parent and by whoever works with it; children know their parent without keeping it. For one thread.
class ConfigNode : public std::enable_shared_from_this<ConfigNode> {
    struct Private {};

public:
    struct Attribute {
        std::wstring name;
        std::wstring value;
    };

    static std::shared_ptr<ConfigNode> create(std::wstring_view name);

    /// The node of a handle; null for 0, for handles of nodes that are gone and for any other number.
    static std::shared_ptr<ConfigNode> fromHandle(NodeHandle handle) noexcept;

    ConfigNode(Private, std::wstring_view name) : m_name(name) {}
    ~ConfigNode();

    const std::wstring& name() const noexcept { return m_name; }

    /// The handle is made when first asked for and lasts as long as the node.
    NodeHandle handle();

    /// In the order in which they were first set.
    const std::vector<Attribute>& attributes() const noexcept { return m_attributes; }
    const std::wstring* attribute(std::wstring_view name) const noexcept; // null when absent; valid until a change
    void setAttribute(std::wstring_view name, std::wstring_view value);
    bool removeAttribute(std::wstring_view name) noexcept;

    const std::vector<std::shared_ptr<ConfigNode>>& children() const noexcept { return m_children; }
    ConfigNode* parent() const noexcept { return m_parent; }
    std::shared_ptr<ConfigNode>
    firstChild(std::wstring_view name) const noexcept; // null when there is none of the name
    std::shared_ptr<ConfigNode> nextSibling() const noexcept;
    std::optional<std::size_t> indexOf(const ConfigNode& child) const noexcept;

    /// Puts a node among the children, taking it out of its former place. False when it is this node or contains it, or
    /// when the index is beyond the end.
    bool insertChild(std::size_t index, std::shared_ptr<ConfigNode> child);
    bool appendChild(std::shared_ptr<ConfigNode> child);
    std::shared_ptr<ConfigNode> addChild(std::wstring_view name);

    /// Out of its parent; it goes unless somebody shares it.
    void detach() noexcept;

private:
    bool isWithin(const ConfigNode& ancestor) const noexcept;

    std::wstring m_name;
    std::vector<Attribute> m_attributes;
    std::vector<std::shared_ptr<ConfigNode>> m_children;
    ConfigNode* m_parent = nullptr;
    NodeHandle m_handle = 0;
};

} // namespace ambrel
