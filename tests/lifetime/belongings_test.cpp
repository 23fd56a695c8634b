// What outlives what: properties, places, resources, items and wholes that are let go in any order.
#include "tests/lifetime/lifetime_fixture.h"

#include "tests/lifetime/outer.h"

#include <vector>

namespace morvane::testing {
namespace {

std::vector<ComPtr<ICtrlPluginProp>> groupsOf(IVexControlBase& control)
{
    std::vector<ComPtr<ICtrlPluginProp>> groups;
    hyper* list = nullptr;
    if (FAILED(control.GetProps(&list)))
        return groups;
    for (auto** group = reinterpret_cast<ICtrlPluginProp**>(list); group && *group; ++group)
        groups.emplace_back(*group);
    return groups;
}

std::vector<ComPtr<IVexPropBase>> propertiesOf(const std::vector<ComPtr<ICtrlPluginProp>>& groups)
{
    std::vector<ComPtr<IVexPropBase>> properties;
    for (const auto& group : groups) {
        long count = 0;
        group->GetPropBaseCount(&count);
        for (long i = 0; i < count; ++i)
            group->GetAtPropBase(i, properties.emplace_back().put());
    }
    return properties;
}

/// What a client may hold of a control besides the control.
struct Belongings {
    explicit Belongings(IVexControlBase& control) : groups(groupsOf(control)), properties(propertiesOf(groups))
    {
        control.GetRect(rect.put());
        control.GetPosition(position.put());
        control.GetVexRes(resources.put());
        control.GetParent(parent.put());
    }

    /// Everything answers, whatever has ended.
    void use()
    {
        SkinRect place{};
        EXPECT_EQ(rect->GetRectStruct(&place), S_OK);
        VexPosition record{};
        EXPECT_EQ(position->GetPosStruct(&record), S_OK);
        for (const auto& property : properties) {
            Bstr name;
            ComPtr<IVexRes> any;
            EXPECT_EQ(property->GetName(name.put()), S_OK);
            property->GetVexRes(any.put());
            property->DoCallbackFunc();
        }
        for (const auto& group : groups) {
            ComPtr<IVexControlBase> owner;
            group->GetControlBasePtr(owner.put());
            group->Clone(groups.front().get());
        }
    }

    std::vector<ComPtr<ICtrlPluginProp>> groups;
    std::vector<ComPtr<IVexPropBase>> properties;
    ComPtr<IVexRect> rect;
    ComPtr<IVexPos> position;
    ComPtr<IVexRes> resources;
    ComPtr<ISkinObjResBase> parent;
};

TEST_F(LifetimeTest, WhatBelongsToAControlOutlivesItAndItsWindow)
{
    forEachControl([&](const ControlClass& type) {
        addSubject(type);
        subject->FinalCreate(VARIANT_TRUE);
        Belongings belongings(*subject);
        EXPECT_FALSE(belongings.properties.empty());
        belongings.use();
        end(End::LastReference);
        belongings.use();
        DestroyWindow(window);
        belongings.use();
        belongings.groups.erase(belongings.groups.begin() + 1, belongings.groups.end()); // properties without a group
        belongings.use();
        belongings = Belongings(*form);
        closeWindowWhileHeld();
        belongings.use();
        belongings.resources.reset();
        belongings.parent.reset();
        belongings.use();
        belongings.properties.clear();
        belongings.groups.clear();
        belongings.rect.reset();
        belongings.position.reset();
        closeWindow();
        openWindow();
    });
}

TEST_F(LifetimeTest, ResourcesAndRootMayBeLetGoBeforeTheirWindow)
{
    forEachControl([&](const ControlClass& type) {
        addSubject(type);
        resources.reset();
        root.reset();
        useSubject(); // ends the window
        closeWindow();
        openWindow();
    });
}

TEST_F(LifetimeTest, ADragThatNeverEndsKeepsNobodyAlive)
{
    forEachControl([&](const ControlClass& type) {
        addSubject(type);
        VEX_DRAGINFO info{};
        info.pFromObj = subject.get();
        info.pToObj = form.get();
        resources->SetDragInfo(info);
        resources->SetDrag(VARIANT_TRUE);
        info = {};
        EXPECT_EQ(resources->GetDragInfo(&info), S_OK);
        const auto from = ComPtr<ISkinObjResBase>::adopt(info.pFromObj);
        auto to = ComPtr<ISkinObjResBase>::adopt(info.pToObj);
        EXPECT_TRUE(from && isSameObject(from.get(), subject.get()));
        EXPECT_TRUE(to && isSameObject(to.get(), form.get()));
    });
    closeWindow(); // checks that nothing is left
    openWindow();
}

VARIANT_BOOL STDMETHODCALLTYPE runFunction(hyper function, long, hyper, hyper)
{
    (*reinterpret_cast<std::function<void()>*>(function))();
    return VARIANT_FALSE;
}

TEST_F(LifetimeTest, AnotherControlMayEndInsideACallback)
{
    int allCalls = 0;
    forEachControl([&](const ControlClass& type) {
        for (const End what : {End::Control, End::LastReference, End::Parent}) {
            SCOPED_TRACE("end " + std::to_string(static_cast<int>(what)));
            addSubject(type);
            ComPtr<IVexControlBase> other = create(type);
            attach(*other, form.get());
            SkinRect aside{130, 20, 200, 60};
            long changed = 0;
            VARIANT_BOOL done = VARIANT_FALSE;
            other->Resize(&aside, &changed);
            other->FinalCreate(VARIANT_TRUE);
            subject->FinalCreate(VARIANT_TRUE);
            int calls = 0;
            std::function<void()> endSubject = [&] {
                if (++calls == 1)
                    end(what);
            };
            other->AddMsgCallback(VEXSM_MOUSEENTER, reinterpret_cast<hyper>(&runFunction),
                                  reinterpret_cast<hyper>(&endSubject), &done);
            other->AddMsgCallback(VEXSM_LBUTTONDOWN, reinterpret_cast<hyper>(&runFunction),
                                  reinterpret_cast<hyper>(&endSubject), &done);
            send(WM_MOUSEMOVE, 0, MAKELPARAM(50, 40)); // the subject is hot, and loses the pointer to the other
            send(WM_MOUSEMOVE, 0, MAKELPARAM(150, 40));
            send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 40));
            send(WM_LBUTTONUP, 0, MAKELPARAM(150, 40));
            for (const long message : {VEXSM_MOUSEENTER, VEXSM_LBUTTONDOWN})
                other->RemoveMsgCallback(message, reinterpret_cast<hyper>(&runFunction), &done);
            allCalls += calls;
            other.reset();
            closeWindow();
            openWindow();
        }
    });
    EXPECT_GE(allCalls, 3 * 2) << "buttons and boxes call back for the pointer";
}

TEST_F(LifetimeTest, AWholeMayLetItsPartGoAtAnyTime)
{
    forEachControl([&](const ControlClass& type) {
        for (const bool windowFirst : {false, true}) {
            SCOPED_TRACE(windowFirst ? "after the window" : "before the window");
            Outer outer;
            ASSERT_EQ(CoCreateInstance(type.id, &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, outer.part.putVoid()),
                      S_OK);
            ComPtr<IVexControlBase> control;
            outer.QueryInterface(iidOf<IVexControlBase>(), control.putVoid());
            attach(*control, form.get());
            control->FinalCreate(VARIANT_TRUE);
            VARIANT_BOOL done = VARIANT_FALSE;
            if (windowFirst)
                DestroyWindow(window);
            else
                control->Remove(&done);
            control.reset();
            closeWindowWhileHeld();
            EXPECT_EQ(outer.references, 1u) << "somebody still holds the whole";
            outer.part.reset();
            closeWindow();
            openWindow();
        }
    });
}

TEST_F(LifetimeTest, TheModuleStaysWhileAnythingOfItLives)
{
    const auto getClassObject = reinterpret_cast<LPFNGETCLASSOBJECT>(
        reinterpret_cast<void*>(GetProcAddress(library->module(), "DllGetClassObject")));
    closeWindow(); // with its form
    library->withdrawClasses();
    EXPECT_TRUE(library->canUnload());
    for (const ControlClass& each : library->classes()) {
        SCOPED_TRACE(each.name);
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(getClassObject(each.id, IID_IClassFactory, factory.putVoid()), S_OK);
        ComPtr<IUnknown> object;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()), S_OK);
        factory.reset();
        EXPECT_FALSE(library->canUnload());
        object.reset();
        EXPECT_TRUE(library->canUnload());
    }
    library = std::make_unique<soak::ControlLibrary>();
    openWindow();
}

} // namespace
} // namespace morvane::testing
