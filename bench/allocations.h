// How often code asks the heap for memory.
#pragma once

#include <windows.h>

#include <span>
#include <vector>

namespace bench {

struct Allocations {
    long blocks = 0;  // of the C library
    long strings = 0; // of OLE Automation, which keeps released ones for the next time
};

/// Counts the heap blocks and strings that some modules of this process ask for while it lives. It puts functions of
/// its own in place of what the modules import from the C library and from OLE Automation, and takes them out again.
/// One at a time, for one thread.
class AllocationCount {
public:
    /// Null stands for the program itself.
    explicit AllocationCount(std::span<const HMODULE> modules);
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;
    ~AllocationCount();

    Allocations soFar() const noexcept;

private:
    struct Replaced {
        void** place;
        void* original;
    };

    std::vector<Replaced> m_replaced;
};

} // namespace bench
