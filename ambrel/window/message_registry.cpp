#include "ambrel/window/message_registry.h"

#include <algorithm>

namespace ambrel {

bool MessageRegistry::contains(const List& list, const ObjectNode& node) noexcept
{
    return std::any_of(list.begin(), list.end(), [&](const Entry& each) { return each.node.get() == &node; });
}

bool MessageRegistry::addTo(List& list, ObjectNode& node, bool withChildren)
{
    for (Entry& each : list) {
        if (each.node.get() == &node) {
            each.withChildren = withChildren;
            return false;
        }
    }
    list.push_back({WeakNode(&node), withChildren});
    return true;
}

bool MessageRegistry::removeFrom(List& list, const ObjectNode& node) noexcept
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const Entry& each) { return each.node.get() == &node; });
    if (found == list.end())
        return false;
    if (m_serving) {
        found->node.reset();
        m_untidy = true;
    } else {
        list.erase(found);
    }
    return true;
}

void MessageRegistry::clear(List& list) noexcept
{
    for (Entry& each : list)
        each.node.reset();
    m_untidy = true;
    if (!m_serving)
        tidy();
}

void MessageRegistry::tidy() noexcept
{
    if (!m_untidy)
        return;
    m_untidy = false;
    const auto isGone = [](const Entry& each) { return !each.node; };
    std::erase_if(m_whole, isGone);
    for (auto each = m_lists.begin(); each != m_lists.end();) {
        std::erase_if(each->second, isGone);
        each = each->second.empty() ? m_lists.erase(each) : std::next(each);
    }
}

bool MessageRegistry::add(std::uint32_t message, ObjectNode& node, bool withChildren)
{
    return addTo(m_lists[message], node, withChildren);
}

bool MessageRegistry::remove(std::uint32_t message, const ObjectNode& node) noexcept
{
    const auto found = m_lists.find(message);
    if (found == m_lists.end() || !removeFrom(found->second, node))
        return false;
    if (!m_serving && found->second.empty())
        m_lists.erase(found);
    return true;
}

void MessageRegistry::removeAll() noexcept
{
    for (auto& [message, list] : m_lists) {
        for (Entry& each : list)
            each.node.reset();
    }
    m_untidy = true;
    if (!m_serving)
        tidy();
}

bool MessageRegistry::addWhole(ObjectNode& node, bool withChildren)
{
    return addTo(m_whole, node, withChildren);
}
bool MessageRegistry::removeWhole(const ObjectNode& node) noexcept
{
    return removeFrom(m_whole, node);
}
void MessageRegistry::removeAllWhole() noexcept
{
    clear(m_whole);
}

bool MessageRegistry::isEmpty() const noexcept
{
    const auto isLive = [](const Entry& each) { return static_cast<bool>(each.node); };
    return std::none_of(m_whole.begin(), m_whole.end(), isLive) &&
           std::none_of(m_lists.begin(), m_lists.end(),
                        [&](const auto& pair) { return std::any_of(pair.second.begin(), pair.second.end(), isLive); });
}

bool MessageRegistry::isRegistered(std::uint32_t message, const ObjectNode& node) const noexcept
{
    const auto found = m_lists.find(message);
    return contains(m_whole, node) || (found != m_lists.end() && contains(found->second, node));
}

} // namespace ambrel
