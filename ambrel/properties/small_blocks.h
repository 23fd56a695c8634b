// Storage for many small objects of few sizes without the heap's header on each. A window with hundreds of controls has
// tens of thousands of properties; the headers and rounding would be a third of their memory.
#pragma once

#include <cstddef>

namespace ambrel {

/// Blocks of up to kLargestSmallBlock bytes come from pages that are kept for the life of the process and reused;
/// larger ones come from the heap. For the user-interface thread only. Throws std::bad_alloc.
inline constexpr std::size_t kLargestSmallBlock = 128;
void* allocateBlock(std::size_t size);
void releaseBlock(void* block, std::size_t size) noexcept;

/// Bytes in blocks that are in use, without pages' unused rest; for memory reports and leak checks.
std::size_t blockBytesInUse() noexcept;

/// Objects of a derived class come from small blocks. The class must be deleted as its own type (be final).
struct InSmallBlock {
    // NOLINTNEXTLINE(misc-new-delete-overloads): the sized delete below is its match
    static void* operator new(std::size_t size) { return allocateBlock(size); }
    static void operator delete(void* block, std::size_t size) noexcept { releaseBlock(block, size); }
};

} // namespace ambrel
