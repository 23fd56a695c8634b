// Which objects asked for which window messages.
#pragma once

#include "ambrel/objects/object_node.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ambrel {

/// Registrations may come and go while a message is being served: one added meanwhile waits for the next message, one
/// removed is not served any more. A node that ends takes its registrations along.
class MessageRegistry {
public:
    /// What an object asked for: its own delivery, or with `withChildren` that of everything beneath it too.
    struct Entry {
        WeakNode node;
        bool withChildren;
    };

    /// False when the object was registered for the message already; `withChildren` is taken over all the same.
    bool add(std::uint32_t message, ObjectNode& node, bool withChildren);
    bool remove(std::uint32_t message, const ObjectNode& node) noexcept;
    void removeAll() noexcept;

    /// For every message.
    bool addWhole(ObjectNode& node, bool withChildren);
    bool removeWhole(const ObjectNode& node) noexcept;
    void removeAllWhole() noexcept;

    bool isEmpty() const noexcept;
    bool isRegistered(std::uint32_t message, const ObjectNode& node) const noexcept;

    /// Calls `deliver(ObjectNode&, withChildren)` for each registration of the message: those for every message first,
    /// then in the order of registration. An object registered in both ways is served once. `deliver` may do anything
    /// but destroy the registry.
    template <class Deliver>
    void serve(std::uint32_t message, Deliver&& deliver)
    {
        const Serving serving(*this);
        serveList(m_whole, deliver, nullptr);
        if (const auto found = m_lists.find(message); found != m_lists.end())
            serveList(found->second, deliver, &m_whole);
    }

private:
    using List = std::vector<Entry>;

    /// While one exists, removed entries are emptied and stay in place.
    class Serving {
    public:
        explicit Serving(MessageRegistry& registry) noexcept : m_registry(registry) { ++m_registry.m_serving; }
        Serving(const Serving&) = delete;
        Serving& operator=(const Serving&) = delete;
        ~Serving()
        {
            if (--m_registry.m_serving == 0)
                m_registry.tidy();
        }

    private:
        MessageRegistry& m_registry;
    };

    template <class Deliver>
    static void serveList(List& list, Deliver& deliver, const List* except)
    {
        const std::size_t count = list.size();
        for (std::size_t i = 0; i < count && i < list.size(); ++i) {
            ObjectNode* node = list[i].node.get();
            if (node && !(except && contains(*except, *node)))
                deliver(*node, list[i].withChildren);
        }
    }

    static bool contains(const List& list, const ObjectNode& node) noexcept;
    static bool addTo(List& list, ObjectNode& node, bool withChildren);
    bool removeFrom(List& list, const ObjectNode& node) noexcept;
    void clear(List& list) noexcept;
    void tidy() noexcept;

    std::unordered_map<std::uint32_t, List> m_lists;
    List m_whole;
    int m_serving = 0;
    bool m_untidy = false;
};

} // namespace ambrel
