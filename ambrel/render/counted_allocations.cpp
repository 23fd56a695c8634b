#include "ambrel/render/counted_allocations.h"

#include <cstdlib>
#include <new>

namespace {

long g_allocations = 0;

} // namespace

long ambrel::test::allocationCount() noexcept
{
    return g_allocations;
}

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
