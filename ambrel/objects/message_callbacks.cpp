#include "ambrel/objects/message_callbacks.h"

#include <algorithm>

namespace ambrel {

/// Postpones the removal of entries while calls are under way.
class MessageCallbacks::Running {
public:
    explicit Running(MessageCallbacks& list) noexcept : m_list(list) { ++m_list.m_running; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running()
    {
        if (--m_list.m_running == 0)
            std::erase_if(m_list.m_entries, [](const Entry& entry) { return entry.function == 0; });
    }

private:
    MessageCallbacks& m_list;
};

bool MessageCallbacks::add(long message, hyper function, hyper self)
{
    const bool known = std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.message == message && entry.function == function && entry.self == self;
    });
    if (!known)
        m_entries.push_back({message, function, self});
    return !known;
}

bool MessageCallbacks::remove(long message, hyper function) noexcept
{
    const Running postponed(*this);
    bool found = false;
    for (Entry& entry : m_entries) {
        if (entry.message == message && entry.function == function) {
            entry.function = 0;
            found = true;
        }
    }
    return found;
}

std::size_t MessageCallbacks::count(long message) const noexcept
{
    return static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.message == message && entry.function != 0;
    }));
}

hyper MessageCallbacks::find(long message, hyper self) const noexcept
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.message == message && entry.self == self && entry.function != 0;
    });
    return found == m_entries.end() ? 0 : found->function;
}

bool MessageCallbacks::call(long message, hyper wParam, hyper lParam)
{
    const Running running(*this);
    bool answered = false;
    const std::size_t present = m_entries.size(); // those added meanwhile wait for the next message
    for (std::size_t i = 0; i < present; ++i) {
        const Entry entry = m_entries[i];
        if (entry.message == message && entry.function != 0) {
            const auto function = reinterpret_cast<MessageCallback>(entry.function);
            answered = function(entry.self, message, wParam, lParam) != VARIANT_FALSE || answered;
        }
    }
    return answered;
}

} // namespace ambrel
