// What a control is to component clients: identity, counts, being part of another object, automation, error info.
#include "tests/frame/control_fixture.h"

#include <array>

namespace morvane {
namespace {

using testing::BaseObject;
using testing::ControlFixture;

const std::array<const IID*, 9> kInterfaces = {&IID_IUnknown,
                                               &IID_IDispatch,
                                               &iidOf<IVexObj>(),
                                               &iidOf<ISkinObjResBase>(),
                                               &iidOf<IVexControlBase>(),
                                               &iidOf<ICmdButton>(),
                                               &IID_ISupportErrorInfo,
                                               &IID_IConnectionPointContainer,
                                               &IID_IUnknown};

class IdentityTest : public ControlFixture {
protected:
    void SetUp() override { createButton(); }
};

ComPtr<IUnknown> query(IUnknown& object, REFIID iid)
{
    ComPtr<IUnknown> result;
    EXPECT_EQ(object.QueryInterface(iid, result.putVoid()), S_OK);
    return result;
}

TEST_F(IdentityTest, EveryInterfaceLeadsToEveryOtherAndToOneIdentity)
{
    const auto identity = query(*button, IID_IUnknown);
    for (const IID* from : kInterfaces) {
        const auto first = query(*button, *from);
        ASSERT_TRUE(first);
        for (const IID* to : kInterfaces) {
            const auto second = query(*first, *to);
            ASSERT_TRUE(second);
            EXPECT_EQ(query(*second, IID_IUnknown), identity);
            EXPECT_EQ(query(*second, *from), first) << "the way back";
        }
    }
}

TEST_F(IdentityTest, InterfacesItDoesNotHaveAreRefusedWithANullPlace)
{
    for (const IID* iid :
         {&IID_IStream, &IID_IPersistStream, &iidOf<IVexRes>(), &iidOf<IAmbrel>(), &IID_IConnectionPoint, &IID_NULL}) {
        void* place = this;
        EXPECT_EQ(button->QueryInterface(*iid, &place), E_NOINTERFACE);
        EXPECT_EQ(place, nullptr);
    }
    EXPECT_EQ(button->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(IdentityTest, TheInnerBaseObjectHearsOfItsControlFirstAndOfItsEndLast)
{
    EXPECT_EQ(host.base().realControl, button.get()) << "the control's own interface";
    EXPECT_EQ(log(), testing::Log({"real control"}));
    EXPECT_EQ(host.base().references(), 1u);
    EXPECT_EQ(host.objectDraw().references(), 1u);
    ComPtr<IVexControlBase> real;
    EXPECT_EQ(button->GetRealCtrlPtr(real.put()), S_OK);
    EXPECT_EQ(real.get(), button.get());
    real.reset();

    ComPtr<IUnknown> kept(&host.base()); // the framework may keep it longer than the control lives
    button.reset();
    EXPECT_EQ(log(), testing::Log({"no real control"}));
    EXPECT_EQ(host.base().references(), 1u);
    EXPECT_EQ(host.objectDraw().references(), 0u);
}

TEST_F(IdentityTest, TheModuleStaysWhileAnyInterfaceOfTheControlIsHeld)
{
    for (const IID* iid : kInterfaces) {
        auto last = query(*button, *iid);
        button.reset();
        EXPECT_EQ(host.module.canUnloadNow(), S_FALSE);
        last.reset();
        EXPECT_EQ(host.module.canUnloadNow(), S_OK);
        createButton();
    }
}

TEST_F(IdentityTest, ErrorInfoIsSupportedForTheOwnInterfaceOnly)
{
    const auto support = button.as<ISupportErrorInfo>();
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(iidOf<ICmdButton>()), S_OK);
    for (const IID* iid : {&iidOf<IVexControlBase>(), &IID_IDispatch, &IID_IUnknown, &iidOf<IVexCheckBox>()})
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(*iid), S_FALSE);
}

// As part of another object
// --------------------------------------------------------------------------------------------

/// An outer object that offers the interfaces of its part.
class Outer final : public IUnknown {
public:
    virtual ~Outer() = default;
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override
    {
        if (iid != IID_IUnknown)
            return part ? part->QueryInterface(iid, result) : E_NOINTERFACE;
        *result = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }

    ComPtr<IUnknown> part;
    ULONG references = 1;
};

class AggregationTest : public ControlFixture {
protected:
    void SetUp() override
    {
        outer.part = host.create<IUnknown>(iidOf<::CmdButton>(), &outer);
        ASSERT_TRUE(outer.part);
    }
    void TearDown() override
    {
        EXPECT_EQ(outer.references, 1u) << "parts do not count their outer object while nobody uses them";
        outer.part.reset();
        ControlFixture::TearDown();
    }

    Outer outer;
};

TEST_F(AggregationTest, EveryInterfaceButTheInnerUnknownBelongsToTheOuterObject)
{
    for (const IID* iid : {&iidOf<ICmdButton>(), &iidOf<IVexControlBase>(), &IID_IDispatch, &IID_ISupportErrorInfo,
                           &IID_IConnectionPointContainer}) {
        const auto interfaceOfPart = query(*outer.part, *iid);
        EXPECT_EQ(outer.references, 2u);
        EXPECT_EQ(query(*interfaceOfPart, IID_IUnknown).get(), &outer);
        EXPECT_EQ(query(*interfaceOfPart, *iid), interfaceOfPart) << "through the outer object and back";
    }
    EXPECT_EQ(query(*outer.part, IID_IUnknown), outer.part) << "the inner unknown is itself";
    EXPECT_EQ(outer.references, 1u);
}

TEST_F(AggregationTest, TheFrameworkIsGivenTheControlsOwnInterfaceNotTheOuterObject)
{
    const auto own = outer.part.as<ICmdButton>();
    EXPECT_EQ(host.base().realControl, own.get());
    EXPECT_NE(static_cast<void*>(host.base().realControl), static_cast<void*>(&outer));
}

TEST_F(AggregationTest, NotificationsDoNotDisturbTheOuterCount)
{
    button = outer.part.as<ICmdButton>();
    button->CreateProps();
    host.attach();
    notify(VEXSM_FINALCREATE);
    point(VEXSM_MOUSEENTER, 1, 1);
    notify(VEXSM_DESTROYING);
    button.reset();
    EXPECT_EQ(outer.references, 1u);
    outer.part.reset();
    EXPECT_EQ(host.base().references(), 0u);
    outer.part = host.create<IUnknown>(iidOf<::CmdButton>(), &outer);
}

TEST_F(AggregationTest, ThePartGivesItsHostObjectsBackWhenTheOuterObjectReleasesIt)
{
    EXPECT_EQ(host.base().references(), 1u);
    outer.part.reset();
    EXPECT_EQ(host.base().realControl, nullptr);
    EXPECT_EQ(host.base().references(), 0u);
    EXPECT_EQ(host.objectDraw().references(), 0u);
}

// Automation
// -----------------------------------------------------------------------------------------------------------

class AutomationTest : public ControlFixture {
protected:
    void SetUp() override { bringUp(); }

    DISPID idOf(const wchar_t* name)
    {
        DISPID id = DISPID_UNKNOWN;
        auto* text = const_cast<wchar_t*>(name);
        EXPECT_EQ(button->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        return id;
    }
    HRESULT invoke(const wchar_t* name, std::vector<VARIANT> arguments, VARIANT* result)
    {
        DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        return button->Invoke(idOf(name), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result, nullptr,
                              nullptr);
    }
};

VARIANT variantOf(const Bstr& text)
{
    VARIANT result{};
    result.vt = VT_BSTR;
    result.bstrVal = text.get();
    return result;
}

TEST_F(AutomationTest, MethodsCalledByNameReachThePropertyObjects)
{
    const Bstr text(L"Send");
    EXPECT_EQ(invoke(L"SetText", {variantOf(text)}, nullptr), S_OK);
    auto* const stored = host.base().find<testing::StringObject>(L"Text", L"Text");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->value, L"Send");
    EXPECT_EQ(log(), testing::Log({"redraw"}));

    stored->value = L"From the skin";
    VARIANT result{};
    EXPECT_EQ(invoke(L"GetText", {}, &result), S_OK);
    ASSERT_EQ(result.vt, VT_BSTR);
    EXPECT_EQ(viewOf(result.bstrVal), L"From the skin");
    VariantClear(&result);
}

TEST_F(AutomationTest, WideNumbersComeAsTheKindOfNumberThatScriptsCanHold)
{
    constexpr std::int64_t kLargestInDouble = std::int64_t{1} << 53;
    const std::pair<std::int64_t, VARTYPE> kKinds[] = {{-5, VT_I4},
                                                       {INT32_MIN, VT_I4},
                                                       {std::int64_t{INT32_MAX} + 1, VT_R8},
                                                       {-kLargestInDouble, VT_R8},
                                                       {kLargestInDouble + 1, VT_I8}};
    for (const auto& [number, kind] : kKinds) {
        button->SetGraphicshIcon(number, 0, 0);
        VARIANT result{};
        EXPECT_EQ(invoke(L"GetGraphicshIcon", {}, &result), S_OK);
        EXPECT_EQ(result.vt, kind) << number;
        EXPECT_EQ(VariantChangeType(&result, &result, 0, VT_I8), S_OK);
        EXPECT_EQ(result.llVal, number);
    }
}

TEST_F(AutomationTest, BaseOperationsAreCallableByNameToo)
{
    VARIANT result{};
    host.base().enabled = VARIANT_FALSE;
    EXPECT_EQ(invoke(L"IsEnable", {}, &result), S_OK);
    EXPECT_EQ(result.vt, VT_BOOL);
    EXPECT_EQ(result.boolVal, VARIANT_FALSE);
}

TEST_F(AutomationTest, IdentifiersAreThoseThatCompiledScriptsCarry)
{
    EXPECT_EQ(idOf(L"SetText"), 500);
    EXPECT_EQ(idOf(L"gettext"), 501) << "names do not depend on case";
    EXPECT_EQ(idOf(L"GetMaxHeight"), 538);
    EXPECT_EQ(idOf(L"EventNotify"), 360);
    EXPECT_EQ(idOf(L"IsEnable"), 100);
    EXPECT_EQ(idOf(L"GetName"), 1);
}

TEST_F(AutomationTest, BadCallsAreRefused)
{
    auto* unknown = const_cast<wchar_t*>(L"Dance");
    DISPID id = 1;
    EXPECT_EQ(button->GetIDsOfNames(IID_NULL, &unknown, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(button->GetIDsOfNames(IID_IUnknown, &unknown, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(button->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &id), E_POINTER);
    EXPECT_EQ(button->Invoke(501, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    DISPPARAMS none{};
    EXPECT_EQ(button->Invoke(9999, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(button->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.put()), DISP_E_BADINDEX);
    EXPECT_EQ(button->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
    EXPECT_EQ(button->GetTypeInfoCount(nullptr), E_POINTER);
}

} // namespace
} // namespace morvane
