// Objects in a window: what a control is told when, focus, finding by point, drawing order, leaving.
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

namespace ambrel::testing_objects {
namespace {

class ObjectWindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        root = openTestWindow();
        ASSERT_TRUE(root);
    }

    void TearDown() override
    {
        hyper window = 0;
        root->GetWindowHandle(&window);
        DestroyWindow(reinterpret_cast<HWND>(window));
    }

    ComPtr<TestControl> make(ISkinObjResBase* parent, Rect rect)
    {
        auto control = TestControl::make();
        control->answers.push_back(VEXSM_GETTABINFO);
        control->onNotice = [](const VexNotify& notice) {
            if (notice.eVexMsgId == VEXSM_GETTABINFO)
                *reinterpret_cast<VARIANT_BOOL*>(notice.lParam1) = VARIANT_TRUE;
        };
        control->enter(parent, rect);
        return control;
    }

    ISkinObjResBase* at(long x, long y)
    {
        found.reset();
        root->GetVexControlByPt(x, y, found.put());
        return found.get();
    }

    ISkinObjResBase* focus()
    {
        found.reset();
        root->GetCurrentFocusObject(found.put());
        return found.get();
    }

    RuntimeClasses classes;
    ComPtr<IAmbrel> root;
    ComPtr<ISkinObjResBase> found;
};

using Ids = std::vector<long>;

TEST_F(ObjectWindowTest, AControlLearnsItsWindowBeforeItIsInitialised)
{
    auto panel = TestControl::make();
    IDispatch* rootAtInit = nullptr;
    panel->onNotice = [&](const VexNotify& notice) {
        if (notice.eVexMsgId == VEXSM_INITOBJECT)
            panel->GetAmbrel(&rootAtInit);
    };
    hyper created = 0;
    panel->CreateObj(0, reinterpret_cast<hyper>(root.get()), VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
    EXPECT_EQ(panel->log, (Ids{VEXSM_ACCESSCONFIGED, VEXSM_GETTABINFO, VEXSM_INITOBJECT}));
    EXPECT_EQ(rootAtInit, static_cast<IDispatch*>(root.get()));
    if (rootAtInit)
        rootAtInit->Release();

    auto child = make(panel->asControl(), {});
    panel->log.clear();
    child->log.clear();
    EXPECT_EQ(panel->FinalCreate(VARIANT_TRUE), S_OK);
    EXPECT_EQ(panel->FinalCreate(VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(panel->log, (Ids{VEXSM_FINALCREATE, VEXSM_INITDIALOG}));
    EXPECT_EQ(child->log, (Ids{VEXSM_FINALCREATE, VEXSM_INITDIALOG}));
}

TEST_F(ObjectWindowTest, ATreeBuiltBeforehandIsInitialisedOnceWhenItEntersTheWindow)
{
    auto panel = TestControl::make();
    hyper created = 0;
    panel->CreateObj(0, 0, VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created);
    auto child = make(panel->asControl(), {0, 0, 10, 10});
    EXPECT_EQ(child->count(VEXSM_INITOBJECT), 0);
    EXPECT_EQ(child->count(VEXSM_SIZE), 0) << "it could not know its window yet";
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(root->AddSubObject(panel->asControl(), VARIANT_FALSE, &done), S_OK);
    panel->Remove(&done);
    root->AddSubObject(panel->asControl(), VARIANT_FALSE, &done);
    EXPECT_EQ(panel->count(VEXSM_INITOBJECT), 1);
    EXPECT_EQ(child->count(VEXSM_INITOBJECT), 1);
}

TEST_F(ObjectWindowTest, ThePointFindsTheTopmostControlInItsParentsBounds)
{
    auto panel = make(root.get(), {10, 10, 100, 100});
    auto below = make(panel->asControl(), {20, 20, 200, 60});
    auto above = make(panel->asControl(), {30, 30, 50, 50});
    EXPECT_EQ(at(40, 40), above->asControl());
    EXPECT_EQ(at(25, 25), below->asControl());
    EXPECT_NE(at(150, 40), below->asControl()) << "cut away by its panel";
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(panel->MoveTop(below->asControl(), &done), S_OK);
    EXPECT_EQ(at(40, 40), below->asControl());
}

TEST_F(ObjectWindowTest, TheFocusLeavesWhatIsHiddenOrRemoved)
{
    auto panel = make(root.get(), {10, 10, 100, 100});
    auto field = make(panel->asControl(), {20, 20, 60, 60});
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(field->SetFocus(&done), S_OK);
    EXPECT_EQ(focus(), field->asControl());
    field->IsFocus(&done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(field->count(VEXSM_ONSETFOCUS), 1);
    panel->SetVisible(VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
    EXPECT_EQ(field->count(VEXSM_ONKILLFOCUS), 1);
    EXPECT_EQ(focus(), nullptr);
    panel->SetVisible(VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE);
    field->SetFocus(&done);
    panel->Remove(&done);
    EXPECT_EQ(focus(), nullptr);
}

TEST_F(ObjectWindowTest, ControlsAreDrawnFromTheLowestUpWhereTheyShow)
{
    std::vector<std::pair<const TestControl*, Rect>> drawn;
    auto panel = make(root.get(), {10, 10, 100, 100});
    auto below = make(panel->asControl(), {20, 20, 200, 60});
    auto above = make(panel->asControl(), {30, 30, 50, 50});
    auto hidden = make(panel->asControl(), {30, 30, 50, 50});
    hidden->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE);
    for (TestControl* control : {panel.get(), below.get(), above.get(), hidden.get()})
        control->onDraw = [&drawn, control](const SkinRect& rect) {
            drawn.emplace_back(control, morvane::toRect(rect));
        };
    const HDC screen = GetDC(nullptr);
    VARIANT_BOOL done = VARIANT_FALSE;
    root->Draw(reinterpret_cast<hyper>(screen), {0, 0, 400, 300}, &done);
    ReleaseDC(nullptr, screen);
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[0].first, panel.get());
    EXPECT_EQ(drawn[1].first, below.get());
    EXPECT_EQ(drawn[1].second, (Rect{20, 20, 100, 60}));
    EXPECT_EQ(drawn[2].first, above.get());
}

TEST_F(ObjectWindowTest, AWindowThatIsDestroyedTellsItsControlsAndLetsThemGo)
{
    const long before = TestControl::alive;
    auto panel = make(root.get(), {10, 10, 100, 100});
    make(panel->asControl(), {20, 20, 60, 60});
    hyper window = 0;
    root->GetWindowHandle(&window);
    DestroyWindow(reinterpret_cast<HWND>(window));
    EXPECT_EQ(panel->count(VEXSM_DESTROYING), 1);
    panel.reset();
    EXPECT_EQ(TestControl::alive, before);
}

} // namespace
} // namespace ambrel::testing_objects
