// What this process takes of the machine's memory.
#pragma once

namespace bench {

/// In bytes.
struct MemoryUse {
    double pageFile = 0; // what the system has promised the process
    double heap = 0;     // blocks in use in all heaps, each with its header

    friend MemoryUse operator-(MemoryUse a, MemoryUse b) { return {a.pageFile - b.pageFile, a.heap - b.heap}; }
    friend MemoryUse operator/(MemoryUse a, double by) { return {a.pageFile / by, a.heap / by}; }
};

MemoryUse memoryInUse();

} // namespace bench
