#include "ambrel/objects/name_index.h"

#include <new>

namespace ambrel {

namespace {

/// A walk over fewer objects than this takes less time than keeping an index.
constexpr std::size_t kFewObjects = 16;
/// Telling which of two nodes comes first costs a look at their siblings.
constexpr std::size_t kMostOfOneKey = 8;

/// Through the tree itself; `passed` counts the objects that were looked at.
ObjectNode* walk(ObjectNode& from, const NameQuery& query, std::size_t& passed) noexcept
{
    for (ObjectNode* child : from.children()) {
        ++passed;
        if (child->owner().answersTo(query.name, query.type))
            return child;
        if (ObjectNode* found = query.deep ? walk(*child, query, passed) : nullptr)
            return found;
    }
    return nullptr;
}

int depthOf(const ObjectNode& node) noexcept
{
    int depth = 0;
    for (const ObjectNode* above = node.parent(); above; above = above->parent())
        ++depth;
    return depth;
}

/// Whether a walk meets `first` before `second`, another node of the same tree.
bool precedes(const ObjectNode& first, const ObjectNode& second) noexcept
{
    const int firstDepth = depthOf(first);
    const int secondDepth = depthOf(second);
    const ObjectNode* a = &first;
    const ObjectNode* b = &second;
    for (int depth = firstDepth; depth > secondDepth; --depth)
        a = a->parent();
    for (int depth = secondDepth; depth > firstDepth; --depth)
        b = b->parent();
    if (a == b)
        return firstDepth < secondDepth; // one lies above the other
    while (a->parent() != b->parent()) {
        a = a->parent();
        b = b->parent();
    }
    return a->parent()->indexOf(*a) < b->parent()->indexOf(*b);
}

bool isBeneath(const ObjectNode& node, const ObjectNode& from, bool deep) noexcept
{
    return deep ? &node != &from && from.holds(node) : node.parent() == &from;
}

} // namespace

ObjectNode* findByName(ObjectNode& from, const NameQuery& query) noexcept
{
    if (NameIndex* index = from.root().owner().nameIndex())
        return index->find(from, query);
    std::size_t passed = 0;
    return walk(from, query, passed);
}

ObjectNode* NameIndex::find(ObjectNode& from, const NameQuery& query) noexcept
{
    const Key key = keyOf(query.name);
    if (!m_isBuilt || key == 0 || m_crowded.contains(key)) {
        std::size_t passed = 0;
        ObjectNode* const found = walk(from, query, passed);
        if (!m_isBuilt && passed > kFewObjects)
            build(from.root());
        return found;
    }
    ObjectNode* first = nullptr;
    const auto [begin, end] = m_nodes.equal_range(key);
    for (auto each = begin; each != end; ++each) {
        ObjectNode& node = *each->second;
        if (isBeneath(node, from, query.deep) && node.owner().answersTo(query.name, query.type) &&
            (!first || precedes(node, *first)))
            first = &node;
    }
    return first;
}

NameIndex::Key NameIndex::keyOf(std::wstring_view name) noexcept
{
    if (name.empty())
        return 0; // what most parts of composite controls are called
    std::uint32_t hash = 2166136261u;
    for (const wchar_t unit : name)
        hash = (hash ^ static_cast<std::uint32_t>(unit)) * 16777619u;
    const auto key = static_cast<Key>(hash ^ (hash >> 16));
    return key ? key : 1;
}

void NameIndex::build(ObjectNode& root) noexcept
{
    m_isBuilt = true;
    added(root);
}

void NameIndex::drop() noexcept
{
    m_isBuilt = false;
    m_nodes.clear();
    m_crowded.clear();
}

void NameIndex::added(ObjectNode& subtree) noexcept
{
    if (!m_isBuilt)
        return;
    try {
        list(subtree);
        listBeneath(subtree);
    } catch (const std::bad_alloc&) {
        drop();
    }
}

void NameIndex::removed(ObjectNode& subtree) noexcept
{
    if (!m_isBuilt)
        return;
    unlist(subtree);
    for (ObjectNode* child : subtree.children())
        removed(*child);
}

void NameIndex::renamed(ObjectNode& node) noexcept
{
    if (!m_isBuilt)
        return;
    unlist(node);
    try {
        list(node);
    } catch (const std::bad_alloc&) {
        drop();
    }
}

void NameIndex::listBeneath(ObjectNode& node)
{
    for (ObjectNode* child : node.children()) {
        list(*child);
        listBeneath(*child);
    }
}

void NameIndex::list(ObjectNode& node)
{
    const Key key = node.m_nameKey = keyOf(node.owner().name());
    if (key == 0 || m_crowded.contains(key))
        return;
    if (m_nodes.count(key) < kMostOfOneKey) {
        m_nodes.emplace(key, &node);
        return;
    }
    m_crowded.insert(key);
    m_nodes.erase(key);
}

void NameIndex::unlist(ObjectNode& node) noexcept
{
    const auto [begin, end] = m_nodes.equal_range(node.m_nameKey);
    for (auto each = begin; each != end; ++each) {
        if (each->second == &node) {
            m_nodes.erase(each);
            break;
        }
    }
    node.m_nameKey = 0;
}

} // namespace ambrel
