#include "bench/memory.h"

#include <windows.h>

#include <psapi.h>

#include <vector>

namespace bench {

namespace {

double bytesInUse(HANDLE heap)
{
    double sum = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
            sum += static_cast<double>(entry.cbData) + entry.cbOverhead;
    }
    HeapUnlock(heap);
    return sum;
}

} // namespace

MemoryUse memoryInUse()
{
    MemoryUse use;
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    use.pageFile = static_cast<double>(counters.PagefileUsage);
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 8);
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    heaps.resize(count);
    for (const HANDLE heap : heaps)
        use.heap += bytesInUse(heap);
    return use;
}

} // namespace bench
