// Controls called from another apartment: the calls run on the thread that made the control.
#include "frame/platform/handles.h"
#include "module/classes_root_stand_in.h"
#include "tests/controls/controls_fixture.h"

#include <thread>

namespace morvane {
namespace {

enum class Marshalling {
    Automation, // by the type library, as registration leaves it
    Own         // by the module's own part, for hosts that name it themselves
};

// The automation library's, for interfaces that a registered type library describes.
constexpr CLSID kAutomationMarshalling = {0x00020424, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// Makes marshalling known to the present thread's apartment, as registration does for the whole system.
class MarshallingServed {
public:
    MarshallingServed(const testing::LoadedModule& module, Marshalling how)
    {
        EXPECT_EQ(CoRegisterPSClsid(iidOf<IVexControlBase>(), kAutomationMarshalling), S_OK);
        for (const IID& iid :
             {iidOf<ICmdButton>(), iidOf<IVexCheckBox>(), iidOf<IRadioBox>(), iidOf<IVexRadioGroup>()}) {
            const bool isOwn = how == Marshalling::Own;
            EXPECT_EQ(CoRegisterPSClsid(iid, isOwn ? iid : kAutomationMarshalling), S_OK);
            if (isOwn)
                serve(module, iid);
        }
    }
    MarshallingServed(const MarshallingServed&) = delete;
    MarshallingServed& operator=(const MarshallingServed&) = delete;
    ~MarshallingServed()
    {
        for (const DWORD cookie : m_cookies)
            CoRevokeClassObject(cookie);
    }

private:
    void serve(const testing::LoadedModule& module, const IID& iid)
    {
        ComPtr<IUnknown> factory;
        DWORD cookie = 0;
        EXPECT_EQ(module.getClassObject(iid, IID_IPSFactoryBuffer, factory.putVoid()), S_OK);
        EXPECT_EQ(CoRegisterClassObject(iid, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie), S_OK);
        m_cookies.push_back(cookie);
    }

    std::vector<DWORD> m_cookies;
};

class ApartmentTest : public testing::ControlsFixture, public ::testing::WithParamInterface<Marshalling> {
protected:
    static void SetUpTestSuite()
    {
        classes = std::make_unique<testing::ClassesRootStandIn>();
        ASSERT_EQ(testing::LoadedModule().registerServer(), S_OK);
    }
    static void TearDownTestSuite() { classes.reset(); }

    /// Runs `client` on a thread of its own apartment with a marshalled pointer to the control, while this thread
    /// serves the calls.
    template <class Interface, class Client>
    void callFromElsewhere(Interface& control, Client client)
    {
        const MarshallingServed here(host.module, GetParam());
        IStream* stream = nullptr; // given away below
        ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(iidOf<Interface>(), &control, &stream), S_OK);
        const UniqueFile ended(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        std::thread thread([&] {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            {
                const MarshallingServed there(host.module, GetParam());
                ComPtr<Interface> proxy;
                EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream, iidOf<Interface>(), proxy.putVoid()), S_OK);
                EXPECT_NE(proxy.get(), &control);
                if (proxy)
                    client(*proxy);
            }
            CoUninitialize();
            SetEvent(ended.get());
        });
        serveUntil(ended.get());
        thread.join();
    }

private:
    static inline std::unique_ptr<testing::ClassesRootStandIn> classes;

    static void serveUntil(HANDLE ended)
    {
        while (MsgWaitForMultipleObjects(1, &ended, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
            MSG message{};
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
    }
};

TEST_P(ApartmentTest, CallsRunOnTheControlsOwnThread)
{
    auto button = bringUp<ICmdButton>(iidOf<::CmdButton>());
    DWORD redrawnOn = 0;
    button.base->onRedraw = [&] { redrawnOn = GetCurrentThreadId(); };
    callFromElsewhere(*button.control, [](ICmdButton& proxy) {
        EXPECT_EQ(proxy.SetText(Bstr(L"From afar").get()), S_OK);
        Bstr text;
        EXPECT_EQ(proxy.GetText(text.put()), S_OK);
        EXPECT_EQ(text.view(), L"From afar");
        EXPECT_EQ(proxy.SetButtonState(VEX_BTN_PRESS), S_OK);
        VEX_BUTTONSTATE state{};
        EXPECT_EQ(proxy.GetButtonState(&state), S_OK);
        EXPECT_EQ(state, VEX_BTN_PRESS);
        EXPECT_EQ(proxy.SetActive(VARIANT_FALSE), S_OK);
        EXPECT_EQ(proxy.SetActive(VARIANT_FALSE), S_FALSE) << "statuses travel, too";
        VARIANT_BOOL enabled = VARIANT_FALSE;
        EXPECT_EQ(proxy.IsEnable(&enabled), S_OK) << "an operation of the inner base object";
        EXPECT_EQ(enabled, VARIANT_TRUE);
        Bstr name;
        EXPECT_EQ(proxy.GetName(name.put()), S_OK);
        EXPECT_EQ(name.view(), L"one");
    });
    EXPECT_EQ(redrawnOn, GetCurrentThreadId());
    button.control.reset();
}

TEST_P(ApartmentTest, WideNumbersTravelWhole)
{
    auto box = bringUp<IVexCheckBox>(iidOf<::VexCheckBox>());
    callFromElsewhere(*box.control, [](IVexCheckBox& proxy) {
        constexpr std::int64_t kWide = 0x123456789ABCDEF0;
        std::int64_t data = 0;
        EXPECT_EQ(proxy.SetData(kWide), S_OK);
        EXPECT_EQ(proxy.GetData(&data), S_OK);
        EXPECT_EQ(data, kWide);
    });
    box.control.reset();
}

TEST_P(ApartmentTest, ObjectsThatMethodsReturnAreMarshalledInTheirTurn)
{
    auto box = bringUp<IRadioBox>(iidOf<::RadioBox>());
    callFromElsewhere(*box.control, [](IRadioBox& proxy) {
        ComPtr<IVexRadioGroup> group;
        EXPECT_EQ(proxy.GetGroup(group.put()), S_OK);
        ASSERT_TRUE(group);
        EXPECT_EQ(group->SetRadio(&proxy), S_OK) << "the proxy arrives as the box itself";
        VEXRADIOBOX_VALUE value{};
        EXPECT_EQ(proxy.GetValue(&value), S_OK);
        EXPECT_EQ(value, VEXRADIOBOX_CHECKED);
    });
    box.control.reset();
}

INSTANTIATE_TEST_SUITE_P(Both, ApartmentTest, ::testing::Values(Marshalling::Automation, Marshalling::Own),
                         [](const auto& parameter) {
                             return std::string(parameter.param == Marshalling::Own ? "Own" : "Automation");
                         });

} // namespace
} // namespace morvane
