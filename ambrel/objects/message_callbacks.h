// The registered callbacks of one object.
#pragma once

#include "ambrel/objects/callbacks.h"

#include <cstddef>
#include <vector>

namespace ambrel {

/// Survives being changed while it calls; whoever calls `call` keeps the list alive.
class MessageCallbacks {
public:
    /// False when the same registration exists already.
    bool add(long message, hyper function, hyper self);
    /// Removes every registration of the function for the message; false when there is none.
    bool remove(long message, hyper function) noexcept;
    std::size_t count(long message) const noexcept;
    /// The first function registered for the message with this `self`; 0 for none.
    hyper find(long message, hyper self) const noexcept;

    /// Runs those registered when the call began, in the order of registration; true when any answered true.
    bool call(long message, hyper wParam, hyper lParam);

private:
    struct Entry {
        long message;
        hyper function; // 0 once removed, until no call is under way
        hyper self;
    };
    class Running;

    std::vector<Entry> m_entries;
    int m_running = 0;
};

} // namespace ambrel
