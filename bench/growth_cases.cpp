// What one operation costs when the window holds ever more other buttons.
#include "bench/cases.h"
#include "bench/own_window.h"
#include "bench/table.h"

#include <functional>
#include <memory>

namespace bench {

namespace {

constexpr int kCounts[] = {100, 1000, 10000};

// From the smallest window to the largest there are a hundred times more objects. What does not look at them must stay
// where it is; what has to look at each may grow with them, and by a half more since they no longer fit the caches.
constexpr double kConstant = 2;
constexpr double kLinear = 150;
// What looks at the bounds of 64 objects at a time.
constexpr double kByBlocks = 20;

struct Window {
    explicit Window(int count)
        : middle(static_cast<std::size_t>(count / 2)), grid(count), place(grid.place(count / 2)),
          buttons(own.fill(count))
    {
    }

    ICmdButton& button() const { return *buttons[middle].get(); }

    std::size_t middle;
    ButtonGrid grid;
    morvane::Rect place;
    OwnWindow own;
    std::vector<ComPtr<ICmdButton>> buttons;
};

struct Operation {
    const char* name;
    int times;
    double aim;
    Contender (*make)(Window& window, int times);
};

bool isButton(ISkinObjResBase* found, ICmdButton& button)
{
    return morvane::isSameObject(found, &button);
}

Contender repaint(Window& window, int times)
{
    return repeated(times, [&window](int) {
        window.button().DirectRedraw(nullptr);
        window.own.paintPending();
    });
}

/// Requests alone, of as many buttons in each window; what they ask for is painted off the clock.
Contender request(Window& window, int times)
{
    Contender result = repeated(times, [&window](int i) {
        const auto spread = static_cast<std::size_t>(i % kCounts[0]) * window.buttons.size() / kCounts[0];
        window.buttons[spread]->DirectRedraw(nullptr);
    });
    result.after = [&window] { window.own.paintPending(); };
    return result;
}

Contender hitTest(Window& window, int times)
{
    return repeated(times, [&window](int) {
        ComPtr<ISkinObjResBase> hit;
        window.own.root().GetVexControlByPt(window.place.left + 2, window.place.top + 2, hit.put());
        check(isButton(hit.get(), window.button()), "the point hits another object");
    });
}

Contender byName(Window& window, int times)
{
    Bstr name;
    window.button().GetName(name.put());
    return repeated(times, [&window, name](int) {
        ComPtr<IVexObj> found;
        window.own.resources().GetResObject(VEXOBJTYPE_PLUGIN, name.get(), &window.own.root(), VARIANT_TRUE,
                                            found.put());
        check(found && morvane::isSameObject(found.get(), &window.button()), "the name finds another object");
    });
}

Contender byCaption(Window& window, int times)
{
    Bstr name;
    window.button().GetName(name.put());
    return repeated(times, [&window, name](int) {
        ComPtr<ISkinObjResBase> found;
        window.own.root().GetObjectByCaption(VEXOBJTYPE_PLUGIN, name.get(), VARIANT_TRUE, found.put());
        check(isButton(found.get(), window.button()), "the caption finds another object");
    });
}

Contender restack(Window& window, int times)
{
    return repeated(times, [&window](int i) {
        VARIANT_BOOL moved = VARIANT_FALSE;
        if (i % 2)
            window.own.root().MoveBottom(&window.button(), &moved);
        else
            window.own.root().MoveTop(&window.button(), &moved);
        check(moved != VARIANT_FALSE, "the button was not moved");
    });
}

Contender addAndRemove(Window& window, int times)
{
    return repeated(times, [&window](int) {
        const auto button = window.own.addButton(window.place, L"New", Look::Shared);
        OwnWindow::remove(*button.get());
    });
}

/// A key that no object of the window has.
Contender unownedKey(Window& window, int times)
{
    return repeated(times, [&window](int) {
        check(SendMessageW(window.own.window(), WM_KEYDOWN, VK_F9, 0) == 0, "somebody took the key");
    });
}

constexpr Operation kOperations[] = {
    {"repaint one", 100, kConstant, &repaint},
    {"request a redraw", 500, kConstant, &request},
    {"hit test", 500, kByBlocks, &hitTest},
    {"a key that is nobody's", 100, kLinear, &unownedKey},
    {"find by name", 100, kLinear, &byName},
    {"find by caption", 100, kLinear, &byCaption},
    {"move to the top or bottom", 500, kLinear, &restack},
    {"add and remove", 100, kConstant, &addAndRemove},
};

void growth(Bench& bench)
{
    growthSection(kCounts);
    std::vector<std::unique_ptr<Window>> windows;
    for (const int count : kCounts)
        windows.push_back(std::make_unique<Window>(count));
    for (const Operation& each : kOperations) {
        std::vector<Figure> figures;
        for (const auto& window : windows) {
            bringToTop(window->own.window());
            figures.push_back(bench.measure(each.make(*window, each.times)));
        }
        growthRow(each.name, figures, each.aim);
    }
}

constexpr Case kCases[] = {{"growth", &growth}};

} // namespace

std::span<const Case> growthCases()
{
    return kCases;
}

} // namespace bench
