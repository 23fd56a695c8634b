// What holds of every control's beginning and end, whatever happens in between.
#include "tests/lifetime/lifetime_fixture.h"

#include "tests/lifetime/outer.h"

#include <gmock/gmock.h>

#include <set>

namespace morvane::testing {
namespace {

/// What a callback's context points at while a test listens.
std::function<void()>* theAction = nullptr;

VARIANT_BOOL STDMETHODCALLTYPE runAction(hyper, long, hyper, hyper)
{
    if (theAction)
        (*theAction)();
    return VARIANT_FALSE;
}

constexpr End kEnds[] = {End::Control, End::Parent, End::Window, End::LastReference};

TEST_F(LifetimeTest, ControlsThatAreNeverAttachedLeaveNothing)
{
    const long before = runtime.AmbrelLiveObjects()();
    forEachControl([&](const ControlClass& type) {
        create(type);
        const auto control = create(type);
        control->CreateProps();
    });
    EXPECT_EQ(runtime.AmbrelLiveObjects()(), before);
}

TEST_F(LifetimeTest, ControlsLiveOnWithoutTheirWindowUntilTheyAreLetGo)
{
    forEachControl([&](const ControlClass& type) {
        addSubject(type);
        subject->FinalCreate(VARIANT_TRUE);
        DestroyWindow(window);
        VARIANT_BOOL enabled = VARIANT_FALSE;
        hyper handle = 1;
        EXPECT_EQ(subject->IsEnable(&enabled), S_OK);
        subject->GetWindow(&handle);
        EXPECT_EQ(handle, 0);
        subject->DirectRedraw(nullptr);
        closeWindow();
        openWindow();
    });
}

TEST_F(LifetimeTest, AWindowThatTakesDropsGoesWithItsTarget)
{
    EXPECT_EQ(root->RegisterDropTarget(), S_OK);
    closeWindow(); // checks that nothing is left
    openWindow();
}

/// The notifications that an ordinary day brings a class.
std::set<long> s_seen;
void STDMETHODCALLTYPE remember(void* identity, const AmbrelTraceEntry* entry)
{
    if (entry->kind == AMBREL_TRACE_NOTIFICATION && entry->object &&
        ComPtr<IUnknown>(entry->object).as<IUnknown>().get() == identity)
        s_seen.insert(entry->id);
}

TEST_F(LifetimeTest, EverythingMayEndInsideAnyNotification)
{
    forEachControl([&](const ControlClass& type) {
        addSubject(type);
        s_seen.clear();
        runtime.AmbrelSetTraceSink()(&remember, subject.as<IUnknown>().get());
        useSubject();
        closeWindow();
        EXPECT_GE(s_seen.size(), 12u) << "the day is too quiet";
        EXPECT_THAT(s_seen, ::testing::IsSupersetOf<long>(
                                {VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP, VEXSM_FINALCREATE, VEXSM_DESTROYING}));
        const std::set<long> notifications = s_seen;
        for (const long id : notifications) {
            for (const End what : kEnds) {
                SCOPED_TRACE("notification " + std::to_string(id) + ", end " + std::to_string(static_cast<int>(what)));
                openWindow();
                addSubject(type);
                endAt(id, what);
                useSubject();
                EXPECT_TRUE(hasEnded());
                closeWindow();
            }
        }
        openWindow();
    });
}

TEST_F(LifetimeTest, EverythingMayEndInsideACallback)
{
    int calls = 0;
    forEachControl([&](const ControlClass& type) {
        for (const long message :
             {VEXSM_MOUSEENTER, VEXSM_LBUTTONDOWN, VEXSM_LBUTTONUP, VEXSM_LBUTTONDBCLICK, VEXSM_MOUSELEAVE}) {
            for (const End what : kEnds) {
                SCOPED_TRACE("message " + std::to_string(message) + ", end " + std::to_string(static_cast<int>(what)));
                addSubject(type);
                VARIANT_BOOL done = VARIANT_FALSE;
                std::function<void()> action = [&] {
                    theAction = nullptr;
                    end(what);
                };
                theAction = &action;
                subject->AddMsgCallback(message, reinterpret_cast<hyper>(&runAction), 0, &done);
                useSubject();
                calls += theAction == nullptr;
                theAction = nullptr;
                closeWindow();
                openWindow();
            }
        }
    });
    EXPECT_GE(calls, 5 * 4) << "a command button alone calls back for every message";
}

TEST_F(LifetimeTest, NotificationsInAnyOrderAreSafeBeforeAndAfterAttaching)
{
    constexpr VexMsgID kPlain[] = {
        VEXSM_DESTROYING,  VEXSM_LBUTTONUP,          VEXSM_FINALCREATE,    VEXSM_TIMER,
        VEXSM_MOUSELEAVE,  VEXSM_ONKILLFOCUS,        VEXSM_ACCESSCONFIGED, VEXSM_INITOBJECT,
        VEXSM_MOUSEENTER,  VEXSM_LBUTTONDOWN,        VEXSM_SIZE,           VEXSM_CHANGESKIN,
        VEXSM_DRAWPREVIEW, VEXSM_DESTROYBMPPERPIXEL, VEXSM_ENABLEOBJECT,   VEXSM_GETAUTHORINFO,
        VEXSM_GETTABINFO,  VEXSM_IMPORTCONFIG,       VEXSM_GETCONTROLICON, VEXSM_PROPCHANGEDNOTIFY};
    const auto tellAll = [&](IVexControlBase& control) {
        for (const VexMsgID id : kPlain) {
            VexNotify notify{};
            notify.eVexMsgId = id;
            VARIANT_BOOL handled = VARIANT_FALSE;
            EXPECT_EQ(control.EventNotify(&notify, &handled), S_OK) << "notification " << id;
        }
    };
    forEachControl([&](const ControlClass& type) {
        subject = create(type);
        tellAll(*subject);
        attach(*subject, form.get());
        tellAll(*subject);
        DestroyWindow(window);
        tellAll(*subject);
        closeWindow();
        openWindow();
    });
}

TEST_F(LifetimeTest, PartsOfAnotherObjectGoWithIt)
{
    const long before = runtime.AmbrelLiveObjects()();
    forEachControl([&](const ControlClass& type) {
        Outer outer;
        ASSERT_EQ(CoCreateInstance(type.id, &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, outer.part.putVoid()), S_OK);
        ComPtr<IVexControlBase> control;
        outer.QueryInterface(iidOf<IVexControlBase>(), control.putVoid());
        ASSERT_TRUE(control);
        attach(*control, form.get());
        control->FinalCreate(VARIANT_TRUE);
        VARIANT_BOOL done = VARIANT_FALSE;
        control->Remove(&done);
        control.reset();
        EXPECT_EQ(outer.references, 1u) << "somebody still holds the whole";
        outer.part.reset();
    });
    EXPECT_EQ(runtime.AmbrelLiveObjects()(), before);
}

} // namespace
} // namespace morvane::testing
