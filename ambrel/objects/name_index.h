// Finding objects of a tree by their names without passing all of them.
#pragma once

#include "ambrel/objects/object_node.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace ambrel {

/// What is looked for. Type 90000 means any type.
struct NameQuery {
    std::wstring_view name;
    long type;
    bool deep; // everything beneath, otherwise direct children only
};

/// The first object beneath `from` that answers the query, in tree order (a parent before its children, siblings in
/// z-order); null for none. Uses the window's index where there is one.
ObjectNode* findByName(ObjectNode& from, const NameQuery& query) noexcept;

/// Which objects of a window bear which name. It is empty until a search had to pass many objects, follows the tree
/// from then on, and only narrows the choice: a name that many share is looked for in the tree itself, and so is
/// everything when memory runs out. Owned by the window's root, found through NodeOwner::nameIndex().
class NameIndex {
public:
    NameIndex() = default;
    NameIndex(const NameIndex&) = delete;
    NameIndex& operator=(const NameIndex&) = delete;

    ObjectNode* find(ObjectNode& from, const NameQuery& query) noexcept;

    // Told by the tree.
    void added(ObjectNode& subtree) noexcept;
    void removed(ObjectNode& subtree) noexcept;
    void renamed(ObjectNode& node) noexcept;

    bool isBuilt() const noexcept { return m_isBuilt; }

private:
    using Key = std::uint16_t; // of a name; 0: has none and is not listed

    static Key keyOf(std::wstring_view name) noexcept;
    void build(ObjectNode& root) noexcept;
    void drop() noexcept;
    void listBeneath(ObjectNode& node);
    void list(ObjectNode& node);
    void unlist(ObjectNode& node) noexcept;

    std::unordered_multimap<Key, ObjectNode*> m_nodes;
    std::unordered_set<Key> m_crowded; // keys that too many share; their nodes are not listed
    bool m_isBuilt = false;
};

} // namespace ambrel
