#include "frame/com/module_lock.h"
#include "frame/com/result.h"

#include <atomic>

namespace morvane {

namespace {
// Guarded for several threads: DllCanUnloadNow may be asked from any.
std::atomic<long> g_moduleLocks{0};
} // namespace

void ModuleLock::add() noexcept
{
    ++g_moduleLocks;
}
void ModuleLock::remove() noexcept
{
    --g_moduleLocks;
}
long ModuleLock::count() noexcept
{
    return g_moduleLocks;
}

HRESULT statusOfCurrentException() noexcept
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

} // namespace morvane
