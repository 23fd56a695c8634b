#include "ambrel/properties/small_blocks.h"

#include <array>
#include <new>

namespace ambrel {

namespace {

constexpr std::size_t kStep = 8;
constexpr std::size_t kPageBytes = 4096;

struct FreeBlock {
    FreeBlock* next;
};

/// The blocks of one size. Pages are linked through their first word, so that they stay reachable.
struct SizeClass {
    FreeBlock* free = nullptr;
    std::byte* fresh = nullptr; // the part of the newest page that was never handed out
    std::byte* end = nullptr;
    FreeBlock* pages = nullptr;
};

constinit std::array<SizeClass, kLargestSmallBlock / kStep> g_classes{};
constinit std::size_t g_bytesInUse = 0;

constexpr std::size_t roundUp(std::size_t size) noexcept
{
    return size == 0 ? kStep : (size + kStep - 1) / kStep * kStep;
}

void addPage(SizeClass& blocks)
{
    auto* page = static_cast<std::byte*>(::operator new(kPageBytes));
    blocks.pages = new (page) FreeBlock{blocks.pages};
    blocks.fresh = page + 2 * sizeof(void*);
    blocks.end = page + kPageBytes;
}

} // namespace

void* allocateBlock(std::size_t size)
{
    if (size > kLargestSmallBlock)
        return ::operator new(size);
    const std::size_t rounded = roundUp(size);
    SizeClass& blocks = g_classes[rounded / kStep - 1];
    if (!blocks.free && static_cast<std::size_t>(blocks.end - blocks.fresh) < rounded)
        addPage(blocks);
    g_bytesInUse += rounded;
    if (FreeBlock* reused = blocks.free) {
        blocks.free = reused->next;
        return reused;
    }
    void* block = blocks.fresh;
    blocks.fresh += rounded;
    return block;
}

void releaseBlock(void* block, std::size_t size) noexcept
{
    if (!block)
        return;
    if (size > kLargestSmallBlock) {
        ::operator delete(block);
        return;
    }
    const std::size_t rounded = roundUp(size);
    SizeClass& blocks = g_classes[rounded / kStep - 1];
    blocks.free = new (block) FreeBlock{blocks.free};
    g_bytesInUse -= rounded;
}

std::size_t blockBytesInUse() noexcept
{
    return g_bytesInUse;
}

} // namespace ambrel
