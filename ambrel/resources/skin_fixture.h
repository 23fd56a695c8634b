// A window for tests of skins on real controls: Morvane.dll's buttons and a folder for packages.
#pragma once

#include "ambrel/window/window_fixture.h"

#include <filesystem>

namespace ambrel::testing {

class ButtonWindowTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        module = LoadLibraryW(L"Morvane.dll");
        ASSERT_NE(module, nullptr);
        const auto get = reinterpret_cast<decltype(&::DllGetClassObject)>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        ComPtr<IUnknown> factory;
        ASSERT_EQ(get(kButton, IID_IUnknown, factory.putVoid()), S_OK);
        ASSERT_EQ(CoRegisterClassObject(kButton, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie),
                  S_OK);
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }

    void TearDown() override
    {
        WindowTest::TearDown();
        CoRevokeClassObject(cookie);
        FreeLibrary(module);
        std::filesystem::remove_all(folder);
    }

    static constexpr CLSID kButton{0x9D16F301, 0xCDF1, 0x46B8, {0xB9, 0x5E, 0x98, 0x2A, 0xF8, 0x5E, 0x06, 0xAE}};

    HMODULE module = nullptr;
    DWORD cookie = 0;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "ambrel_skin_test";
};

} // namespace ambrel::testing
