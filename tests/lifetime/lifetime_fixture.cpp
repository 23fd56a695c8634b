#include "tests/lifetime/lifetime_fixture.h"

#include <algorithm>

namespace morvane::testing {

namespace {

constexpr SkinRect kFormPlace{10, 10, 290, 190};
constexpr SkinRect kSubjectPlace{20, 20, 120, 60};
constexpr LPARAM kInside = MAKELPARAM(50, 40);
constexpr LPARAM kOutside = MAKELPARAM(280, 180);

} // namespace

void LifetimeTest::SetUp()
{
    m_objectsAtStart = runtime.AmbrelLiveObjects()();
    ASSERT_TRUE(SUCCEEDED(runtime.AmbrelRegisterClasses()()));
    m_objectsBefore = runtime.AmbrelLiveObjects()(); // with the class objects
    library = std::make_unique<soak::ControlLibrary>();
    runtime.AmbrelFreezeClock()();
    openWindow();
}

void LifetimeTest::TearDown()
{
    closeWindow();
    library->withdrawClasses();
    EXPECT_TRUE(library->canUnload());
    library.reset();
    runtime.AmbrelRunClock()();
    runtime.AmbrelUnregisterClasses()();
    EXPECT_EQ(runtime.AmbrelLiveObjects()(), m_objectsAtStart);
}

void LifetimeTest::openWindow()
{
    ASSERT_EQ(runtime.AmbrelCreateRes()(resources.put()), S_OK);
    ComPtr<IDispatch> made;
    resources->CreateAmbrel(Bstr(L"Lifetime").get(), 0, made.put());
    root = made.as<IAmbrel>();
    ASSERT_TRUE(root);
    VARIANT_BOOL placed = VARIANT_FALSE;
    hyper handle = 0;
    root->Create(0, {0, 0, 300, 200}, &placed);
    root->GetWindowHandle(&handle);
    window = reinterpret_cast<HWND>(handle);
    ASSERT_TRUE(IsWindow(window));
    const auto& classes = library->classes();
    const auto formClass =
        std::ranges::find_if(classes, [](const ControlClass& each) { return each.name == "UIFormObj"; });
    ASSERT_NE(formClass, classes.end());
    form = create(*formClass);
    attach(*form, nullptr);
    SkinRect place = kFormPlace;
    long changed = 0;
    form->Resize(&place, &changed);
    form->FinalCreate(VARIANT_TRUE);
    runtime.AmbrelSetTraceSink()(&LifetimeTest::traced, this);
}

void LifetimeTest::closeWindow()
{
    closeWindowWhileHeld();
    EXPECT_EQ(runtime.AmbrelLiveObjects()(), m_objectsBefore) << "something outlives its window";
}

void LifetimeTest::closeWindowWhileHeld()
{
    runtime.AmbrelSetTraceSink()(nullptr, nullptr);
    m_isArmed = false;
    subject.reset();
    form.reset();
    if (IsWindow(window))
        DestroyWindow(window);
    root.reset();
    resources.reset();
}

void LifetimeTest::forEachControl(const std::function<void(const ControlClass&)>& test)
{
    for (const ControlClass& each : library->classes()) {
        if (!each.isControl)
            continue;
        SCOPED_TRACE(each.name);
        test(each);
    }
}

ComPtr<IVexControlBase> LifetimeTest::create(const ControlClass& type)
{
    ComPtr<IVexControlBase> control;
    EXPECT_EQ(CoCreateInstance(type.id, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexControlBase>(), control.putVoid()),
              S_OK);
    return control;
}

void LifetimeTest::attach(IVexControlBase& control, IVexControlBase* parent)
{
    ISkinObjResBase* const above = parent ? static_cast<ISkinObjResBase*>(parent) : root.get();
    hyper created = 0;
    EXPECT_EQ(control.CreateObj(reinterpret_cast<hyper>(resources.get()), reinterpret_cast<hyper>(above),
                                VEXOBJTYPE_PLUGIN, VARIANT_FALSE, &created),
              S_OK);
    SkinRect place = kSubjectPlace;
    long changed = 0;
    control.Resize(&place, &changed);
}

void LifetimeTest::addSubject(const ControlClass& type)
{
    subject = create(type);
    m_subjectIdentity = subject.as<IUnknown>().get();
    attach(*subject, form.get());
}

void LifetimeTest::end(End what)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    const ComPtr<IVexControlBase> target = what == End::Parent ? form : subject;
    switch (what) {
    case End::LastReference: // taken out of the tree by others, and let go of
    case End::Control:
    case End::Parent:
        if (target)
            target->Remove(&done);
        if (what == End::LastReference)
            subject.reset();
        break;
    case End::Window:
        DestroyWindow(window);
    }
}

void LifetimeTest::endAt(long id, End what)
{
    m_endId = id;
    m_end = what;
    m_isArmed = true;
}

void STDMETHODCALLTYPE LifetimeTest::traced(void* context, const AmbrelTraceEntry* entry)
{
    auto& test = *static_cast<LifetimeTest*>(context);
    if (!test.m_isArmed || entry->kind != AMBREL_TRACE_NOTIFICATION || entry->id != test.m_endId || !entry->object)
        return;
    if (ComPtr<IUnknown>(entry->object).as<IUnknown>().get() != test.m_subjectIdentity)
        return;
    test.m_isArmed = false;
    test.end(test.m_end);
}

void LifetimeTest::useSubject()
{
    const ComPtr<IVexControlBase> control = subject; // the calls below are the application's own
    VARIANT_BOOL done = VARIANT_FALSE;
    control->FinalCreate(VARIANT_TRUE);
    control->SetFocus(&done);
    for (const UINT message :
         {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP, WM_RBUTTONDOWN, WM_RBUTTONUP})
        send(message, message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK ? MK_LBUTTON : 0, kInside);
    for (const WPARAM key : {VK_SPACE, VK_RETURN, VK_TAB}) {
        send(WM_KEYDOWN, key, 1);
        send(WM_KEYUP, key, 1);
    }
    SkinRect larger{20, 20, 150, 80};
    long changed = 0;
    control->Resize(&larger, &changed);
    control->EnableObject(VARIANT_FALSE, VARIANT_TRUE, &done);
    control->EnableObject(VARIANT_TRUE, VARIANT_TRUE, &done);
    control->OnTimer(1);
    control->PropChangedNotify(nullptr);
    control->DesignStatusChanged(VARIANT_FALSE);
    control->DrawPreview(0, nullptr);
    control->SetFocus(&done);
    control->KillFocus();
    send(WM_MOUSEMOVE, 0, kOutside);
    DestroyWindow(window);
}

} // namespace morvane::testing
