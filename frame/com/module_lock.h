// What keeps the module loaded.
#pragma once

namespace morvane {

/// Counts one live object (or one LockServer) for as long as it exists.
class ModuleLock {
public:
    ModuleLock() noexcept { add(); }
    ModuleLock(const ModuleLock&) noexcept { add(); }
    ModuleLock& operator=(const ModuleLock&) noexcept = default;
    ~ModuleLock() { remove(); }

    static void add() noexcept;
    static void remove() noexcept;

    /// Live objects and locks of this module.
    static long count() noexcept;
};

} // namespace morvane
