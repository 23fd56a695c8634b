// Positions in a real window: whatever size the user gives it, every object lies where the layout says.
#include "ambrel/objects/position_layout.h"
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

namespace ambrel::testing_objects {
namespace {

constexpr Anchor kAnchors[] = {Anchor::Near, Anchor::Centre, Anchor::Far};
constexpr Space kSpaces[] = {Space::NearAndSize, Space::BothEdges, Space::Percent, Space::FixedSize};
constexpr Size kWindowSizes[] = {{400, 300}, {523, 211}, {160, 90}, {1001, 699}, {77, 500}, {400, 300}};

/// All ways to keep a place in one direction, with numbers that differ.
std::vector<PositionHalf> everyHalf()
{
    std::vector<PositionHalf> halves;
    for (const Anchor anchor : kAnchors)
        for (const Space space : kSpaces)
            halves.push_back({anchor, space, 7, 13, 41});
    return halves;
}

PosBase recordOf(const PositionHalf& half)
{
    return {static_cast<PosHorzAlignType>(half.anchor), static_cast<PosHorzSpaceType>(half.space), half.nearGap,
            half.farGap, half.size};
}

class PositionWindowTest : public testing::Test {
protected:
    struct Placed {
        ComPtr<TestControl> control;
        Position position;
    };

    void SetUp() override
    {
        root = openTestWindow();
        ASSERT_TRUE(root);
        hyper handle = 0;
        root->GetWindowHandle(&handle);
        window = reinterpret_cast<HWND>(handle);
    }

    void TearDown() override { DestroyWindow(window); }

    Placed add(ISkinObjResBase* parent, const Position& position)
    {
        Placed placed{TestControl::make(), position};
        hyper created = 0;
        placed.control->CreateObj(0, reinterpret_cast<hyper>(parent), VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
        move(placed, position);
        return placed;
    }

    static void move(Placed& placed, const Position& position)
    {
        ComPtr<IVexPos> object;
        placed.control->GetPosition(object.put());
        ASSERT_TRUE(object);
        object->SetPosStruct({recordOf(position.horizontal), recordOf(position.vertical)});
        placed.control->SetPosition(object.get());
        placed.control->ResizeThis();
        placed.position = position;
    }

    /// Every combination of horizontal and vertical rule.
    std::vector<Placed> addEveryPosition(ISkinObjResBase* parent)
    {
        std::vector<Placed> all;
        for (const PositionHalf& horizontal : everyHalf())
            for (const PositionHalf& vertical : everyHalf())
                all.push_back(add(parent, {horizontal, vertical}));
        return all;
    }

    /// As a user does who drags the window's edge. Gives the room inside.
    Rect resizeWindow(Size inside)
    {
        RECT frame{0, 0, inside.width, inside.height};
        AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                           static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
        SetWindowPos(window, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        RECT client{};
        GetClientRect(window, &client);
        const Rect result{0, 0, client.right, client.bottom};
        EXPECT_EQ(result.size(), inside) << "the window took another size";
        return result;
    }

    static Rect rectOf(TestControl& control)
    {
        ComPtr<IVexRect> object;
        SkinRect rect{};
        control.GetRect(object.put());
        if (object)
            object->GetRectStruct(&rect);
        return morvane::toRect(rect);
    }

    static void expectLaidOut(const std::vector<Placed>& all, const Rect& parent, bool isMirrored = false)
    {
        for (const Placed& each : all) {
            const PositionHalf& h = each.position.horizontal;
            const PositionHalf& v = each.position.vertical;
            EXPECT_EQ(rectOf(*each.control.get()), layOut(each.position, parent, isMirrored))
                << "horizontal " << static_cast<int>(h.anchor) << '/' << static_cast<int>(h.space) << ", vertical "
                << static_cast<int>(v.anchor) << '/' << static_cast<int>(v.space) << " in " << parent.width() << " x "
                << parent.height();
        }
    }

    RuntimeClasses classes;
    ComPtr<IAmbrel> root;
    HWND window = nullptr;
};

TEST_F(PositionWindowTest, EveryAlignmentAndSpaceTypeFollowsTheWindow)
{
    const auto all = addEveryPosition(root.get());
    for (const Size size : kWindowSizes)
        expectLaidOut(all, resizeWindow(size));
}

TEST_F(PositionWindowTest, ObjectsInAPanelFollowThePanelAndItsMirroring)
{
    const Position panelPosition{{Anchor::Near, Space::BothEdges, 10, 20, 0}, {Anchor::Far, Space::Percent, 0, 5, 80}};
    const Placed panel = add(root.get(), panelPosition);
    const auto all = addEveryPosition(panel.control->asControl());
    for (const Size size : kWindowSizes) {
        const Rect inside = resizeWindow(size);
        expectLaidOut(all, layOut(panelPosition, inside));
    }
    panel.control->MirrorObject(VARIANT_TRUE);
    for (const Size size : kWindowSizes) {
        const Rect inside = resizeWindow(size);
        expectLaidOut(all, layOut(panelPosition, inside), true);
    }
}

TEST_F(PositionWindowTest, ObjectsMovedWhileTheWindowHasAnotherSizeFollowFromThere)
{
    auto all = addEveryPosition(root.get());
    resizeWindow({640, 480});
    for (Placed& each : all) {
        Position moved = each.position;
        std::swap(moved.horizontal, moved.vertical);
        moved.horizontal.nearGap += 3;
        move(each, moved);
    }
    expectLaidOut(all, {0, 0, 640, 480});
    expectLaidOut(all, resizeWindow({311, 207}));
}

TEST_F(PositionWindowTest, AnObjectPlacedByItsRectangleKeepsItsRules)
{
    auto all = addEveryPosition(root.get());
    const Rect before = resizeWindow({640, 480});
    for (Placed& each : all) {
        SkinRect wanted{100, 90, 260, 190};
        long changed = 0;
        each.control->Resize(&wanted, &changed);
        each.position = positionFor(morvane::toRect(wanted), before, each.position);
        if (each.position.horizontal.space != Space::Percent && each.position.vertical.space != Space::Percent) {
            EXPECT_EQ(rectOf(*each.control.get()), (Rect{100, 90, 260, 190}));
        }
    }
    expectLaidOut(all, resizeWindow({900, 700}));
}

TEST_F(PositionWindowTest, DockedObjectsGoWithTheirEdges)
{
    for (int dock = 0; dock < kDockCount; ++dock) {
        for (const bool isFull : {false, true}) {
            SCOPED_TRACE(dock);
            resizeWindow({400, 300});
            const Placed object = add(root.get(), {{Anchor::Near, Space::NearAndSize, 50, 0, 60},
                                                   {Anchor::Near, Space::NearAndSize, 40, 0, 30}});
            object.control->Dock(static_cast<VexDockObjType>(dock), isFull ? VARIANT_TRUE : VARIANT_FALSE);
            const Rect inside = resizeWindow({555, 333});
            EXPECT_EQ(rectOf(*object.control.get()),
                      layOut(dockedPosition(static_cast<Dock>(dock), {60, 30}, isFull), inside));
        }
    }
}

} // namespace
} // namespace ambrel::testing_objects
