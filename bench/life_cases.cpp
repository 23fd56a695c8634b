// The life of a button: created, shown, painted once, destroyed; and the memory it takes meanwhile.
#include "bench/cases.h"
#include "bench/memory.h"
#include "bench/native_window.h"
#include "bench/own_window.h"
#include "bench/table.h"

#include <optional>

namespace bench {

namespace {

/// One round: `count` buttons through their lives in one window.
class NativeLives {
public:
    explicit NativeLives(int count) : m_count(count) {}

    void run()
    {
        m_window.fill(m_count);
        m_window.clear();
        m_window.paintPending();
    }

    HWND window() const { return m_window.window(); }

private:
    int m_count;
    NativeWindow m_window;
};

class OwnLives {
public:
    OwnLives(int count, Look look) : m_count(count), m_look(look) {}

    void run()
    {
        m_window.fill(m_count, m_look); // the window is their last holder
        m_window.clear();
        m_window.paintPending();
    }

    HWND window() const { return m_window.window(); }

private:
    int m_count;
    Look m_look;
    OwnWindow m_window;
};

void compareLives(Bench& bench, int count, Look look, const char* name, double aim)
{
    std::optional<NativeLives> native(std::in_place, count);
    std::optional<OwnLives> own(std::in_place, count, look);
    const auto operations = static_cast<double>(count);
    const Contender ours{operations, [&] { own->run(); }, [&] { bringToTop(own->window()); }};
    const Contender other{operations, [&] { native->run(); }, [&] { bringToTop(native->window()); }};
    row(name, bench.compare(ours, other), aim);
}

void lives1000(Bench& bench)
{
    compareLives(bench, 1000, Look::Shared, "life of a button among 1,000", 10);
}
void lives5000(Bench& bench)
{
    compareLives(bench, 5000, Look::Shared, "life of a button among 5,000", 10);
}
void livesSkinned(Bench& bench)
{
    compareLives(bench, 1000, Look::Package, "the same, each given its skin by itself", 0);
}

constexpr int kMeasuredButtons = 5000;

/// Bytes that each of many more buttons takes in a window that has some. The window is the caller's to keep: what it
/// gives back would make the next figure too small.
template <class Window, class... Look>
MemoryUse memoryOfButtons(Window& window, Look... look)
{
    const auto first = window.fill(kMeasuredButtons / 10, look...); // pools, caches, the window's surface
    const MemoryUse before = memoryInUse();
    const auto buttons = window.fill(kMeasuredButtons, look...);
    return (memoryInUse() - before) / kMeasuredButtons;
}

void memory(Bench&)
{
    constexpr double kAim = 4096;
    NativeWindow nativeWindow;
    OwnWindow plainWindow;
    OwnWindow skinnedWindow;
    const MemoryUse native = memoryOfButtons(nativeWindow);
    const MemoryUse plain = memoryOfButtons(plainWindow, Look::None);
    const MemoryUse skinned = memoryOfButtons(skinnedWindow, Look::Package);
    bytesRow("a button without a look: heap", plain.heap, native.heap, kAim);
    bytesRow("a button without a look: page file", plain.pageFile, native.pageFile, kAim);
    bytesRow("a skinned button: heap", skinned.heap, native.heap, kAim);
    bytesRow("a skinned button: page file", skinned.pageFile, native.pageFile, kAim);
}

constexpr Case kLifeCases[] = {
    {"life-1000", &lives1000},
    {"life-5000", &lives5000},
    {"life-skinned", &livesSkinned},
};

constexpr Case kMemoryCases[] = {{"memory", &memory}};

} // namespace

std::span<const Case> lifeCases()
{
    return kLifeCases;
}
std::span<const Case> memoryCases()
{
    return kMemoryCases;
}

} // namespace bench
