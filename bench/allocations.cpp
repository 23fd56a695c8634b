#include "bench/allocations.h"

#include "bench/harness.h"

#include <oleauto.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace bench {

namespace {

Allocations g_count; // of the one counter at a time: what takes an import's place has no other way to it

/// Stands in for the imported function with these arguments; no two of those that are counted have the same.
template <class Result, class... Arguments>
struct Counted {
    static inline Result (*original)(Arguments...) = nullptr;

    static Result call(Arguments... arguments)
    {
        ++(std::is_same_v<Result, BSTR> ? g_count.strings : g_count.blocks);
        return original(arguments...);
    }
    static void remember(void* function) { original = reinterpret_cast<Result (*)(Arguments...)>(function); }
};

struct Import {
    const char* name;
    void* replacement;
    void (*remember)(void* original);
};

template <class Function>
Import import(const char* name)
{
    return {name, reinterpret_cast<void*>(&Function::call), &Function::remember};
}

const Import kImports[] = {
    import <Counted<void*, std::size_t>>("malloc"),
    import <Counted<void*, std::size_t, std::size_t>>("calloc"),
    import <Counted<void*, void*, std::size_t>>("realloc"),
    import <Counted<BSTR, const OLECHAR*>>("SysAllocString"),
    import <Counted<BSTR, const OLECHAR*, UINT>>("SysAllocStringLen"),
};

template <class T>
T* at(HMODULE module, std::size_t offset)
{
    return reinterpret_cast<T*>(reinterpret_cast<std::uint8_t*>(module) + offset);
}

/// Writes where the loader wrote, which may be protected since.
void writeImport(void** place, void* value)
{
    DWORD protection = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
    *place = value;
    VirtualProtect(place, sizeof *place, protection, &protection);
}

/// Calls `visit` with the name and the place of every function that a module imports by name.
template <class Visit>
void forEachImport(HMODULE module, Visit visit)
{
    const auto* const headers =
        at<IMAGE_NT_HEADERS>(module, static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* each = at<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress); each->Name != 0; ++each) {
        const auto* name = at<IMAGE_THUNK_DATA>(module, each->OriginalFirstThunk);
        auto* place = at<void*>(module, each->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++place)
            if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                visit(at<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData)->Name, place);
    }
}

} // namespace

AllocationCount::AllocationCount(std::span<const HMODULE> modules)
{
    for (const HMODULE module : modules) {
        forEachImport(module ? module : GetModuleHandleW(nullptr), [this](const char* name, void** place) {
            const auto* const known = std::ranges::find_if(
                kImports, [name](const Import& counted) { return std::strcmp(counted.name, name) == 0; });
            if (known == std::end(kImports))
                return;
            m_replaced.push_back({place, *place});
            known->remember(*place);
            writeImport(place, known->replacement);
        });
    }
    check(!m_replaced.empty(), "the modules import nothing that could be counted");
    g_count = {};
}

AllocationCount::~AllocationCount()
{
    for (const Replaced& each : m_replaced)
        writeImport(each.place, each.original);
}

Allocations AllocationCount::soFar() const noexcept
{
    return g_count;
}

} // namespace bench
