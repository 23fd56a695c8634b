// The base object through its class object, with a control that logs what it is told.
#include "ambrel/objects/test_control.h"
#include "ambrel/objects/test_window.h"

#include <gtest/gtest.h>

namespace ambrel::testing_objects {
namespace {

class BaseObjectTest : public testing::Test {
protected:
    ComPtr<TestControl> make(const wchar_t* name, IVexControlBase* parent = nullptr)
    {
        auto control = TestControl::make();
        control->SetName(Bstr(name).get());
        hyper created = 0;
        EXPECT_EQ(control->CreateObj(0, reinterpret_cast<hyper>(parent), VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created),
                  S_OK);
        EXPECT_EQ(created, reinterpret_cast<hyper>(control->asControl()));
        return control;
    }

    static Rect rectOf(TestControl& control)
    {
        ComPtr<IVexRect> rect;
        SkinRect record{};
        control.GetRect(rect.put());
        rect->GetRectStruct(&record);
        return morvane::toRect(record);
    }

    static void place(TestControl& control, VexPosition record)
    {
        ComPtr<IVexPos> position;
        ASSERT_EQ(
            CoCreateInstance(morvane::kClsidPosition, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, position.putVoid()),
            S_OK);
        position->SetPosStruct(record);
        EXPECT_EQ(control.SetPosition(position.get()), S_OK);
    }

    static VexPosition at(long left, long top, long width, long height)
    {
        return {{PHAT_LEFT, PHST_LEFTWIDTH, left, 0, width}, {PHAT_LEFT, PHST_LEFTWIDTH, top, 0, height}};
    }

    RuntimeClasses classes;
};

TEST_F(BaseObjectTest, CreationMakesPropertiesOnceAndShowsTheControlToTheOutside)
{
    auto panel = make(L"panel");
    EXPECT_EQ(panel->propertyTables, 1);
    auto button = make(L"button", panel->asControl());
    ComPtr<ISkinObjResBase> parent;
    EXPECT_EQ(button->GetParent(parent.put()), S_OK);
    EXPECT_EQ(parent.get(), panel->asControl()) << "the control itself, not its base object";
    ComPtr<ISkinObjResBase> found;
    EXPECT_EQ(panel->GetObjectByCaption(VEXOBJTYPE_PLUGIN, Bstr(L"button").get(), VARIANT_TRUE, found.put()), S_OK);
    EXPECT_EQ(found.get(), button->asControl());
    hyper again = 0;
    EXPECT_EQ(button->CreateObj(0, 0, 0, VARIANT_FALSE, &again), E_UNEXPECTED);
    EXPECT_EQ(button->CreateObj(0, 0, 0, VARIANT_FALSE, nullptr), E_POINTER);
    Bstr typeName;
    EXPECT_EQ(button->GetTypeName(typeName.put()), S_OK);
    EXPECT_EQ(typeName.view(), L"Test");
}

TEST_F(BaseObjectTest, AParentKeepsItsChildrenAndLetsThemGo)
{
    const long before = TestControl::alive;
    {
        auto panel = make(L"panel");
        make(L"kept only by its parent", panel->asControl());
        EXPECT_EQ(TestControl::alive, before + 2);
        short count = 0;
        panel->GetChildCount(&count);
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(TestControl::alive, before);
}

TEST_F(BaseObjectTest, DestructionIsToldExactlyOnceParentsFirst)
{
    auto panel = make(L"panel");
    auto inner = make(L"inner", panel->asControl());
    auto leaf = make(L"leaf", inner->asControl());
    EXPECT_EQ(panel->DelAllSubObjects(), S_OK);
    EXPECT_EQ(inner->count(VEXSM_DESTROYING), 1);
    EXPECT_EQ(leaf->count(VEXSM_DESTROYING), 1);
    EXPECT_LT(inner->destroyedAt, leaf->destroyedAt);
    VARIANT_BOOL added = VARIANT_TRUE;
    EXPECT_EQ(panel->AddSubObject(inner->asControl(), VARIANT_FALSE, &added), S_FALSE)
        << "what was destroyed stays out";
    EXPECT_EQ(added, VARIANT_FALSE);
    panel.reset();
    EXPECT_EQ(leaf->count(VEXSM_DESTROYING), 1);
}

TEST_F(BaseObjectTest, RemovingKeepsAnObjectThatSomebodyHoldsUntold)
{
    auto panel = make(L"panel");
    auto button = make(L"button", panel->asControl());
    VARIANT_BOOL removed = VARIANT_FALSE;
    EXPECT_EQ(button->Remove(&removed), S_OK);
    EXPECT_EQ(button->Remove(&removed), S_FALSE);
    EXPECT_EQ(button->count(VEXSM_DESTROYING), 0);
    EXPECT_EQ(button->SetParent(panel->asControl()), S_OK);
    TestControl* const unheld = button.get();
    bool told = false;
    unheld->onNotice = [&](const VexNotify& notice) { told = told || notice.eVexMsgId == VEXSM_DESTROYING; };
    button.reset();
    panel->RemoveAllSubObjects();
    EXPECT_TRUE(told) << "the tree held the last reference";
}

TEST_F(BaseObjectTest, CyclesAndForeignObjectsAreRefused)
{
    auto panel = make(L"panel");
    auto button = make(L"button", panel->asControl());
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(button->AddSubObject(panel->asControl(), VARIANT_FALSE, &done), S_FALSE);
    EXPECT_EQ(panel->AddSubObject(panel->asControl(), VARIANT_FALSE, &done), S_FALSE);
    EXPECT_EQ(panel->AddSubObject(nullptr, VARIANT_FALSE, &done), E_INVALIDARG);
    EXPECT_EQ(panel->AddSubObject(button->asControl(), VARIANT_FALSE, nullptr), E_POINTER);
    VARIANT_BOOL exists = VARIANT_FALSE;
    EXPECT_EQ(panel->IsExisted(button->asControl(), &exists), S_OK);
    EXPECT_EQ(exists, VARIANT_TRUE);
}

TEST_F(BaseObjectTest, ChildrenFollowTheirPositionsWhenTheParentChanges)
{
    auto panel = make(L"panel");
    place(*panel, at(10, 20, 200, 100));
    auto child = make(L"child", panel->asControl());
    place(*child, {{PHAT_LEFT, PHST_RIGHTWIDTH, 5, 15, 0}, {PHAT_RIGHT, PHST_LEFTWIDTH, 0, 10, 30}});
    EXPECT_EQ(rectOf(*child), (Rect{15, 80, 195, 110}));
    place(*panel, at(0, 0, 300, 200));
    EXPECT_EQ(rectOf(*child), (Rect{5, 160, 285, 190}));

    ComPtr<IVexPos> read;
    VexPosition record{};
    child->GetPosition(read.put());
    read->GetPosStruct(&record);
    EXPECT_EQ(record.horzPos.nSpaceType, PHST_RIGHTWIDTH);
    EXPECT_EQ(record.horzPos.nRight_Bottom, 15);

    SkinRect moved{100, 100, 150, 140};
    long changed = 0;
    EXPECT_EQ(child->Resize(&moved, &changed), S_OK);
    EXPECT_EQ(changed, 1);
    place(*panel, at(0, 0, 400, 200));
    EXPECT_EQ(rectOf(*child), (Rect{100, 100, 250, 140})) << "still keeps both distances";

    EXPECT_EQ(child->Dock(VexDock_Client, VARIANT_TRUE), S_OK);
    EXPECT_EQ(rectOf(*child), (Rect{0, 0, 400, 200}));
    EXPECT_EQ(child->Dock(static_cast<VexDockObjType>(14), VARIANT_TRUE), E_INVALIDARG);
    EXPECT_EQ(child->MirrorObject(VARIANT_TRUE), S_OK);
}

TEST_F(BaseObjectTest, VisibilityIsAnObjectsOwnWhileEnablingGoesThroughItsAncestors)
{
    auto panel = make(L"panel");
    auto child = make(L"child", panel->asControl());
    panel->SetVisible(VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
    VARIANT_BOOL answer = VARIANT_FALSE;
    child->IsVisible(&answer);
    EXPECT_EQ(answer, VARIANT_TRUE);
    VARIANT_BOOL changed = VARIANT_FALSE;
    EXPECT_EQ(panel->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &changed), S_OK);
    EXPECT_EQ(panel->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &changed), S_FALSE);
    EXPECT_EQ(panel->count(VEXSM_ENABLEOBJECT), 1);
    child->IsEnable(&answer);
    EXPECT_EQ(answer, VARIANT_FALSE);
    VEX_CTRLSTATE state = VEX_CTRL_NORMAL;
    child->GetCtrlState(&state);
    EXPECT_EQ(state, VEX_CTRL_DISABLE);
    child->SetOpacity(999);
    short opacity = 0;
    child->GetOpacity(&opacity);
    EXPECT_EQ(opacity, 255);
}

TEST_F(BaseObjectTest, PointerOperationsSetTheFlagsBeforeTheControlIsTold)
{
    auto control = make(L"control");
    VARIANT_BOOL down = VARIANT_FALSE;
    Point at;
    control->onNotice = [&](const VexNotify& notice) {
        if (notice.eVexMsgId == VEXSM_LBUTTONDOWN) {
            control->IsLButtonDowned(&down);
            at = {static_cast<int>(notice.lParam2), static_cast<int>(notice.lParam3)};
        }
    };
    control->answers.push_back(VEXSM_LBUTTONDOWN);
    long handled = 0;
    EXPECT_EQ(control->OnLButtonDown(1, 7, -9, &handled), S_OK);
    EXPECT_EQ(down, VARIANT_TRUE);
    EXPECT_EQ(at, (Point{7, -9}));
    EXPECT_EQ(handled, 1);
    control->OnLButtonUp(0, 7, -9, &handled);
    EXPECT_EQ(handled, 0);
    VARIANT_BOOL over = VARIANT_FALSE;
    control->OnMouseMove(0, 1, 1, &handled);
    control->IsMouseMove(&over);
    EXPECT_EQ(over, VARIANT_TRUE);
    control->OnMouseLeave(&handled);
    control->IsMouseMove(&over);
    EXPECT_EQ(over, VARIANT_FALSE);
    EXPECT_EQ(control->OnMouseMove(0, 1, 1, nullptr), E_POINTER);
}

struct CallbackLog {
    IVexControlBase* control;
    std::vector<hyper> calls;
    int removeAfter = 0;
};

VARIANT_BOOL STDMETHODCALLTYPE second(hyper self, long, hyper, hyper lParam)
{
    reinterpret_cast<CallbackLog*>(self)->calls.push_back(100 + lParam);
    return VARIANT_TRUE;
}

VARIANT_BOOL STDMETHODCALLTYPE first(hyper self, long message, hyper, hyper lParam)
{
    auto& log = *reinterpret_cast<CallbackLog*>(self);
    log.calls.push_back(lParam);
    VARIANT_BOOL done = VARIANT_FALSE;
    if (--log.removeAfter == 0) {
        log.control->RemoveMsgCallback(message, reinterpret_cast<hyper>(&first), &done);
        log.control->AddMsgCallback(message, reinterpret_cast<hyper>(&second), self, &done);
    }
    return VARIANT_FALSE;
}

TEST_F(BaseObjectTest, CallbacksMayBeAddedAndRemovedWhileTheyRun)
{
    auto control = make(L"control");
    CallbackLog log{control->asControl(), {}, 2};
    const auto self = reinterpret_cast<hyper>(&log);
    const auto function = reinterpret_cast<hyper>(&first);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(control->AddMsgCallback(1027, function, self, &done), S_OK);
    EXPECT_EQ(control->AddMsgCallback(1027, function, self, &done), S_FALSE) << "registered already";
    EXPECT_EQ(control->AddMsgCallback(1027, 0, self, &done), E_INVALIDARG);
    hyper address = 0;
    EXPECT_EQ(control->GetCallbackAddress(1027, self, &address), S_OK);
    EXPECT_EQ(address, function);

    control->CallMsg(1028, 0, 1, &done);
    control->CallMsg(1027, 0, 2, &done);
    EXPECT_EQ(done, VARIANT_FALSE);
    control->CallMsg(1027, 0, 3, &done); // replaces itself
    EXPECT_EQ(done, VARIANT_FALSE);
    control->CallMsg(1027, 0, 4, &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(log.calls, (std::vector<hyper>{2, 3, 104}));
    short count = 0;
    control->GetMsgCallbackCount(1027, &count);
    EXPECT_EQ(count, 1);
}

VARIANT_BOOL STDMETHODCALLTYPE release(hyper self, long, hyper, hyper)
{
    reinterpret_cast<ComPtr<TestControl>*>(self)->reset();
    return VARIANT_TRUE;
}

TEST_F(BaseObjectTest, ACallbackMayReleaseTheControl)
{
    const long before = TestControl::alive;
    auto control = make(L"control");
    IVexControlBase* const borrowed = control->asControl();
    VARIANT_BOOL done = VARIANT_FALSE;
    control->AddMsgCallback(5, reinterpret_cast<hyper>(&release), reinterpret_cast<hyper>(&control), &done);
    EXPECT_EQ(borrowed->CallMsg(5, 0, 0, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(TestControl::alive, before);
}

TEST_F(BaseObjectTest, AChildMayLeaveWhileItsSiblingsAreBeingToldOfASize)
{
    auto panel = make(L"panel");
    auto a = make(L"a", panel->asControl());
    auto b = make(L"b", panel->asControl());
    for (auto* child : {&a, &b})
        place(**child, {{PHAT_LEFT, PHST_RIGHTWIDTH, 0, 0, 0}, {PHAT_LEFT, PHST_RIGHTWIDTH, 0, 0, 0}});
    a->onNotice = [&](const VexNotify&) { b.reset(); };
    place(*panel, at(0, 0, 50, 50));
    EXPECT_EQ(rectOf(*a), (Rect{0, 0, 50, 50}));
    a->onNotice = nullptr; // it outlives b
}

TEST_F(BaseObjectTest, ItAnswersItsOwnInterfacesWithoutKeepingTheControlAlive)
{
    const long before = TestControl::alive;
    auto control = make(L"control");
    ComPtr<IDispatch> own;
    EXPECT_EQ(control->GetInerface(reinterpret_cast<hyper>(&morvane::iidOf<ISkinObjResBase>()), own.put()), S_OK);
    EXPECT_EQ(control->GetInerface(0, own.put()), E_INVALIDARG);
    EXPECT_EQ(control->GetInerface(reinterpret_cast<hyper>(&morvane::iidOf<IVexObj>()), own.put()), S_OK);
    control.reset();
    EXPECT_EQ(TestControl::alive, before);
    ComPtr<IVexControlBase> orphan = own.as<IVexControlBase>();
    ComPtr<IVexControlBase> real;
    EXPECT_EQ(orphan->GetRealCtrlPtr(real.put()), S_FALSE);
    long handled = 1;
    EXPECT_EQ(orphan->OnLButtonDown(0, 0, 0, &handled), S_OK) << "nobody is there to be told";
    EXPECT_EQ(handled, 0);
}

TEST_F(BaseObjectTest, PropertyGroupsAreListedInOrderAndChangesReachTheControl)
{
    auto control = make(L"control");
    hyper list = 0;
    EXPECT_EQ(control->GetPropList(&list), S_OK);
    auto* const groups = reinterpret_cast<ICtrlPluginProp**>(list);
    ASSERT_NE(groups, nullptr);
    Bstr name;
    groups[0]->get_strName(name.put());
    EXPECT_EQ(name.view(), L"Text");
    EXPECT_EQ(groups[1], nullptr);
    control->log.clear();
    EXPECT_EQ(control->PropChangedNotify(nullptr), S_OK);
    EXPECT_EQ(control->count(VEXSM_PROPCHANGEDNOTIFY), 1);
}

TEST_F(BaseObjectTest, WhatIsRefusedChangesNothingAndLeavesNothingInTheResult)
{
    auto control = make(L"control");
    auto parent = TestControl::make();
    VARIANT_BOOL added = VARIANT_TRUE;
    EXPECT_EQ(control->AddMsgCallback(5, 0, 0, &added), E_INVALIDARG);
    EXPECT_EQ(added, VARIANT_FALSE);
    EXPECT_EQ(control->AddMsgCallback(5, 0, 0, nullptr), E_POINTER);

    // An object cannot be created beneath itself; it stays what it was.
    hyper created = 1;
    VexObjType type{};
    EXPECT_EQ(
        parent->CreateObj(0, reinterpret_cast<hyper>(parent->asControl()), VEXOBJTYPE_IMAGE, VARIANT_FALSE, &created),
        E_INVALIDARG);
    EXPECT_EQ(created, 0);
    parent->GetType(&type);
    EXPECT_EQ(type, VEXOBJTYPE_PLUGIN);

    // Nothing is written anywhere: nobody is asked to add to it.
    control->log.clear();
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(control->ExportConfig(0, &done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(control->count(VEXSM_EXPORTCONFIGED), 0);
    done = VARIANT_TRUE;
    EXPECT_EQ(control->DestroyRgnInfo(&done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(BaseObjectTest, ARectanglesLengthStaysInItsRange)
{
    auto control = make(L"control");
    ComPtr<IVexRect> rect;
    control->GetRect(rect.put());
    rect->SetRectStruct({-2147483647, 0, 2147483647, 10});
    long width = 0;
    rect->GetWidth(&width);
    EXPECT_EQ(width, 2147483647);
}

TEST_F(BaseObjectTest, WhatThisRuntimeDoesNotHaveIsNotCalledSuccess)
{
    auto control = make(L"control");
    VARIANT_BOOL answer = VARIANT_TRUE;
    VEX_HAVECANVASFLAGES flags = VEX_HCF_ALWAYS;
    EXPECT_EQ(control->IsHaveCanvas(&flags, &answer), S_OK);
    EXPECT_EQ(answer, VARIANT_FALSE);
    EXPECT_EQ(flags, VEX_HCF_NONE);
    EXPECT_EQ(control->SetHaveCanvas(VARIANT_TRUE, static_cast<VEX_HAVECANVASFLAGES>(18), &answer), E_INVALIDARG);
    EXPECT_EQ(control->SetHaveCanvas(VARIANT_TRUE, VEX_HCF_RESIZING, &answer), S_OK);
    EXPECT_EQ(control->SetHaveCanvas(VARIANT_TRUE, VEX_HCF_RESIZING, &answer), S_FALSE);
    EXPECT_EQ(control->IsHaveCanvas(&flags, &answer), S_OK);
    EXPECT_EQ(answer, VARIANT_TRUE);
    EXPECT_EQ(flags, VEX_HCF_RESIZING);
    IDispatch* root = nullptr;
    EXPECT_EQ(control->GetAmbrel(&root), S_FALSE);
    hyper window = 1;
    EXPECT_EQ(control->GetWindow(&window), S_OK);
    EXPECT_EQ(window, 0);
}

} // namespace
} // namespace ambrel::testing_objects
