#include "module/classes_root_stand_in.h"
#include "module/loaded_module.h"
#include "module/registration/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace morvane {
namespace {

using testing::ClassesRootStandIn;
using testing::LoadedModule;

std::optional<std::wstring> valueAt(const std::wstring& path, const wchar_t* name = nullptr)
{
    wchar_t buffer[512] = L"";
    DWORD size = sizeof buffer;
    if (RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), name, RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return std::nullopt;
    return buffer;
}

bool hasKey(const std::wstring& path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

std::vector<std::wstring> keysBelow(const wchar_t* path)
{
    std::vector<std::wstring> names;
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return names;
    wchar_t name[256];
    while (RegEnumKeyW(key, static_cast<DWORD>(names.size()), name, 256) == ERROR_SUCCESS)
        names.emplace_back(name);
    RegCloseKey(key);
    return names;
}

std::optional<std::wstring> classValue(const std::wstring& clsid, const std::wstring& key,
                                       const wchar_t* name = nullptr)
{
    return valueAt(L"CLSID\\" + clsid + key, name);
}

struct Registered {
    LoadedModule module;
    ClassesRootStandIn classes;
};

/// Looks at what one registration wrote; no test changes it.
class RegistrationTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        registered = std::make_unique<Registered>();
        ASSERT_EQ(registered->classes.status, ERROR_SUCCESS);
        ASSERT_EQ(registered->module.registerServer(), S_OK);
    }
    static void TearDownTestSuite() { registered.reset(); }

    static inline std::unique_ptr<Registered> registered;
};

TEST_F(RegistrationTest, WritesEverythingThatAClassNeeds)
{
    const std::wstring button = L"{9D16F301-CDF1-46B8-B95E-982AF85E06AE}";
    EXPECT_EQ(valueAt(L"Morvane.CmdButton"), L"CmdButton Class");
    EXPECT_EQ(valueAt(L"Morvane.CmdButton\\CLSID"), button);
    EXPECT_EQ(valueAt(L"Morvane.CmdButton\\CurVer"), L"Morvane.CmdButton.1");
    EXPECT_EQ(valueAt(L"Morvane.CmdButton.1"), L"CmdButton Class");
    EXPECT_EQ(valueAt(L"Morvane.CmdButton.1\\CLSID"), button);
    EXPECT_EQ(classValue(button, L""), L"CmdButton Class");
    EXPECT_EQ(classValue(button, L"", L"AppID"), L"");
    EXPECT_EQ(classValue(button, L"\\ProgID"), L"Morvane.CmdButton.1");
    EXPECT_EQ(classValue(button, L"\\VersionIndependentProgID"), L"Morvane.CmdButton");
    EXPECT_EQ(classValue(button, L"\\InprocServer32"), registered->module.path());
    EXPECT_EQ(classValue(button, L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(classValue(button, L"\\TypeLib"), L"{FD195CBF-B619-4D23-88C7-556670174455BC}");
    EXPECT_TRUE(hasKey(L"CLSID\\" + button + L"\\Programmable"));
}

TEST_F(RegistrationTest, KeepsTheValuesInWhichScriptsDiffer)
{
    EXPECT_EQ(classValue(L"{8110881D-CA4F-43E0-99B1-0D0B9F15F364}", L"\\TypeLib"),
              L"{862A4A30-BC21-4878-87A6-52BADFBA4208}");
    EXPECT_EQ(classValue(L"{BD596601-105D-4471-BDF4-6C0DCB9169E7}", L"\\TypeLib"),
              L"{CB0AEE82-AE74-4FB9-AFAD-09D2CA6411E6}");
    EXPECT_EQ(classValue(L"{461A39B7-B543-450E-A7BD-400333139322}", L"\\TypeLib"),
              L"{1F9C6358-218E-4E55-9FD2-47DCB2F6998C}");
    EXPECT_EQ(classValue(L"{1EACE0BE-11AD-4868-8B6E-85B0A8E264C5}", L"\\TypeLib"),
              L"{4D06A261-B986-4A58-8E11-4988A575D314}");
    EXPECT_EQ(classValue(L"{15BE03C8-3E96-4355-8B1C-2EC1AA1F1D50}", L"\\TypeLib"),
              L"{FD195CBF-B619-4D23-88C7-556670174455}");

    EXPECT_EQ(classValue(L"{1EACE0BE-11AD-4868-8B6E-85B0A8E264C5}", L"\\InprocServer32", L"ThreadingModel"), L"Both");
    EXPECT_EQ(classValue(L"{4F3BDA34-5DB9-4E85-B415-40E5288E52A9}", L"\\InprocServer32", L"ThreadingModel"),
              L"Apartment");

    EXPECT_EQ(classValue(L"{AA5F6FA9-4983-4FC8-A8AB-2A98AB6CBB6E}", L""), L"VexScrollBar class");
    EXPECT_EQ(classValue(L"{4F3BDA34-5DB9-4E85-B415-40E5288E52A9}", L""), L"VexCalendar class");
    EXPECT_EQ(valueAt(L"Morvane.CVexUnitItem.1"), L"CVexUnitItem Class");
    EXPECT_EQ(valueAt(L"Morvane.VexLogObj.1"), L"VexLogObj Class");
    EXPECT_FALSE(hasKey(L"Morvane.VexLogoObj"));

    EXPECT_EQ(valueAt(L"Morvane.VexTagCtrl\\CLSID"), L"{50BF8331-CC93-4ecb-8668-5D33FAB05405}");
}

TEST_F(RegistrationTest, TheListControlIsRegisteredUnderAnIdentifierOfItsScriptOnly)
{
    EXPECT_EQ(valueAt(L"Morvane.VexListCtrl\\CLSID"), L"{9B0BE51D-E606-441D-BDC5-3A6B19E75CFA}");
    EXPECT_EQ(classValue(L"{9B0BE51D-E606-441D-BDC5-3A6B19E75CFA}", L"\\ProgID"), L"Morvane.VexListCtrl.1");
    EXPECT_FALSE(hasKey(L"CLSID\\{FFFFBCA3-0CFF-4EB5-8BE3-769D6078CABE}"));
}

TEST_F(RegistrationTest, OnlyStandAloneControlsCarryTheToolboxCategory)
{
    const std::wstring category = L"\\Implemented Categories\\{026E3824-5CDB-49F1-A6C2-7186E66BA376}";
    EXPECT_TRUE(hasKey(L"CLSID\\{9D16F301-CDF1-46B8-B95E-982AF85E06AE}" + category));  // command button
    EXPECT_FALSE(hasKey(L"CLSID\\{EE8B787F-79EF-4F6A-A4EE-3815754E51BD}" + category)); // radio group
}

TEST_F(RegistrationTest, EveryClassOfTheTableIsThere)
{
    // 70 classes and the marshalling's own.
    EXPECT_EQ(keysBelow(L"CLSID").size(), 71u);
    EXPECT_FALSE(hasKey(L"CLSID\\{35F75BB6-0D82-45DD-B067-0B32DBA67E27}")) << "VexOtherMonthDate cannot be created";
    EXPECT_TRUE(hasKey(L"CLSID\\{7D7D0BF2-9127-47BA-9D3D-ED75D4B61121}")) << "VexEditCtrl";
    EXPECT_FALSE(hasKey(L"AppID"));
}

TEST_F(RegistrationTest, TheTypeLibraryIsFoundWhateverLanguageAClientAsksIn)
{
    constexpr GUID kLibrary = {0xFD195CBF, 0xB619, 0x4D23, {0x88, 0xC7, 0x55, 0x66, 0x70, 0x17, 0x44, 0x55}};
    constexpr LCID kEnglish = 0x409;
    constexpr LCID kChinese = 0x804;
    for (const LCID locale : {LCID{LOCALE_NEUTRAL}, LCID{LOCALE_USER_DEFAULT}, kEnglish, kChinese}) {
        ComPtr<ITypeLib> library;
        EXPECT_EQ(LoadRegTypeLib(kLibrary, 3, 0, locale, library.put()), S_OK) << locale;
    }
}

TEST_F(RegistrationTest, TheTypeLibraryIsRegisteredWithTheModulesFolderForHelp)
{
    const std::wstring path = registered->module.path();
    const std::wstring library = L"TypeLib\\{FD195CBF-B619-4D23-88C7-556670174455}\\3.0";
    EXPECT_EQ(valueAt(library + L"\\0\\win64"), path);
    EXPECT_EQ(valueAt(library + L"\\HELPDIR"), path.substr(0, path.rfind(L'\\')));
}

TEST(RegistrationScriptsTest, SparesThatNoClassRunsAreThereAndCanBeRead)
{
    const LoadedModule module;
    const registration::Replacements replacements{{u"MODULE", u"C:\\Morvane.dll"}, {u"APPID", u"{0}"}};
    for (const int id : {1501, 2125, 1000, 1002, 1003, 1004, 1005, 1006, 1007, 1013, 1014,
                         1015, 1016, 1017, 1018, 2133, 2136, 3198, 1506, 1548, 1549, 1550}) {
        const HRSRC place = FindResourceW(module.handle(), MAKEINTRESOURCEW(id), L"REGISTRY");
        ASSERT_NE(place, nullptr) << id;
        const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module.handle(), place)));
        const std::u16string text(bytes, bytes + SizeofResource(module.handle(), place));
        EXPECT_EQ(registration::parseScript(text, replacements).size(), 1u) << id;
    }
}

TEST(RegistrationCycleTest, UnregistrationTakesBackWhatTwoRegistrationsWrote)
{
    const LoadedModule module;
    const ClassesRootStandIn classes;
    ASSERT_EQ(classes.status, ERROR_SUCCESS);
    ASSERT_EQ(module.registerServer(), S_OK);
    ASSERT_EQ(module.registerServer(), S_OK);
    ASSERT_EQ(module.unregisterServer(), S_OK);
    EXPECT_EQ(keysBelow(L"").size(), 3u) << "only the shared keys stay";
    EXPECT_THAT(keysBelow(L"CLSID"), ::testing::IsEmpty());
    EXPECT_THAT(keysBelow(L"Interface"), ::testing::IsEmpty());
    EXPECT_THAT(keysBelow(L"TypeLib"), ::testing::IsEmpty());
}

} // namespace
} // namespace morvane
