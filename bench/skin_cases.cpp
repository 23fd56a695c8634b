// Changing the skin of a running window.
#include "bench/cases.h"
#include "bench/own_window.h"
#include "bench/table.h"

namespace bench {

namespace {

constexpr int kButtons = 5000;
constexpr double kAimSeconds = 0.050;
constexpr morvane::Rect kAll{0, 0, kWindowSize.width, kWindowSize.height};

/// A window whose buttons follow the open skin.
class SwappedWindow {
public:
    SwappedWindow() : m_buttons(m_window.fill(kButtons, Look::None))
    {
        VARIANT_BOOL done = VARIANT_FALSE;
        m_window.resources().OpenSkin(m_paths[0].get(), nullptr, VARIANT_TRUE, &done);
        check(done != VARIANT_FALSE, "the skin could not be opened");
        paint();
    }

    void swap()
    {
        m_current = 1 - m_current;
        VARIANT_BOOL done = VARIANT_FALSE;
        m_window.resources().ChangeSkn(m_paths[m_current].get(), &done);
        check(done != VARIANT_FALSE, "the skin could not be changed");
    }

    void paint() { m_window.paintPending(); }
    std::uint64_t shown() const { return checksum(m_window.window(), kAll); }

private:
    OwnWindow m_window;
    std::vector<ComPtr<ICmdButton>> m_buttons;
    Bstr m_paths[2] = {Bstr(L"" MORVANE_SKINS_DIR "/2080.zip"), Bstr(L"" MORVANE_SKINS_DIR "/2080.dark.zip")};
    int m_current = 0;
};

void swaps(Bench& bench)
{
    SwappedWindow window;
    const std::uint64_t light = window.shown();
    const auto swapAndPaint = [&] {
        window.swap();
        window.paint();
    };
    swapAndPaint();
    const std::uint64_t dark = window.shown();
    swapAndPaint();
    check(dark != light && window.shown() == light, "the buttons do not show the skin that is open");
    row("change the skin of 5,000 buttons", bench.measure({1, [&] { window.swap(); }, {}, [&] { window.paint(); }}));
    row("the same and paint them all", bench.measure({1, swapAndPaint}), kAimSeconds);
}

constexpr Case kCases[] = {{"skin-swap", &swaps}};

} // namespace

std::span<const Case> skinCases()
{
    return kCases;
}

} // namespace bench
