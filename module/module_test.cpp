#include "module/loaded_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace morvane {
namespace {

using testing::LoadedModule;

constexpr CLSID kOtherMonthDate{0x35F75BB6, 0x0D82, 0x45DD, {0xB0, 0x67, 0x0B, 0x32, 0xDB, 0xA6, 0x7E, 0x27}};
constexpr CLSID kListControlItem{0xC5F79C22, 0x52AB, 0x484C, {0x9D, 0xB8, 0xAF, 0x58, 0x38, 0x21, 0xDF, 0x09}};
constexpr CLSID kStranger{0x12345678, 0x0D82, 0x45DD, {0, 1, 2, 3, 4, 5, 6, 7}};

const CLSID& commandButton()
{
    return iidOf<::CmdButton>();
}

/// An outer object that knows only itself and counts what it is asked for.
class Outer final : public IUnknown {
public:
    virtual ~Outer() = default;
    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override
    {
        asked.push_back(iid);
        *result = iid == IID_IUnknown ? this : nullptr;
        if (!*result)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }

    ULONG references = 1;
    std::vector<IID> asked;
};

class ModuleTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(module.handle(), nullptr) << "Morvane.dll does not load"; }

    LoadedModule module;
};

std::vector<std::string> exportedNames(HMODULE module)
{
    const auto* base = reinterpret_cast<const std::uint8_t*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const auto& place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + place.VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + directory->AddressOfNames);
    std::vector<std::string> result;
    for (DWORD i = 0; i < directory->NumberOfNames; ++i)
        result.emplace_back(reinterpret_cast<const char*>(base + names[i]));
    EXPECT_EQ(directory->NumberOfFunctions, directory->NumberOfNames) << "exported by ordinal only";
    return result;
}

TEST_F(ModuleTest, ExportsTheFourEntryPointsAndNothingElse)
{
    EXPECT_THAT(exportedNames(module.handle()),
                ::testing::UnorderedElementsAre("DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                                "DllUnregisterServer"));
}

TEST_F(ModuleTest, ClassesOutsideTheTableAreNotAvailable)
{
    for (const CLSID& clsid : {kOtherMonthDate, kListControlItem, kStranger}) {
        void* place = this;
        EXPECT_EQ(module.getClassObject(clsid, IID_IClassFactory, &place), CLASS_E_CLASSNOTAVAILABLE);
        EXPECT_EQ(place, nullptr);
    }
}

TEST_F(ModuleTest, ANullPlaceIsRefusedWhateverTheClass)
{
    EXPECT_EQ(module.getClassObject(commandButton(), IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(module.getClassObject(kStranger, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(ModuleTest, OneClassObjectAnswersEveryRequest)
{
    const ComPtr<IClassFactory> first = module.factory(commandButton());
    ASSERT_TRUE(first);
    EXPECT_EQ(first, module.factory(commandButton()));
    void* place = this;
    EXPECT_EQ(module.getClassObject(commandButton(), IID_IDispatch, &place), E_NOINTERFACE);
    EXPECT_EQ(place, nullptr);
}

TEST_F(ModuleTest, AClassObjectChecksItsArgumentsBeforeItCreates)
{
    const ComPtr<IClassFactory> factory = module.factory(commandButton());
    Outer outer;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(factory->CreateInstance(&outer, iidOf<ICmdButton>(), nullptr), E_POINTER);
    void* place = this;
    EXPECT_EQ(factory->CreateInstance(&outer, iidOf<ICmdButton>(), &place), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(place, nullptr);
    place = this;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &place), E_NOINTERFACE);
    EXPECT_EQ(place, nullptr);
    EXPECT_EQ(outer.references, 1u);
}

TEST_F(ModuleTest, APartAsksItsOuterObjectForInterfacesAndCounts)
{
    Outer outer;
    ComPtr<IUnknown> inner;
    ASSERT_EQ(module.factory(commandButton())->CreateInstance(&outer, IID_IUnknown, inner.putVoid()), S_OK);
    outer.asked.clear();
    {
        const ComPtr<ICmdButton> button = inner.as<ICmdButton>();
        ASSERT_TRUE(button);
        EXPECT_TRUE(outer.asked.empty()) << "the inner unknown answers for itself";
        EXPECT_EQ(outer.references, 2u);
        ComPtr<IUnknown> identity;
        EXPECT_EQ(button->QueryInterface(IID_IUnknown, identity.putVoid()), S_OK);
        EXPECT_EQ(identity.get(), &outer);
    }
    EXPECT_EQ(outer.references, 1u);
}

TEST_F(ModuleTest, StaysLoadedWhileAnythingOfItIsHeld)
{
    EXPECT_EQ(module.canUnloadNow(), S_OK);
    ComPtr<IClassFactory> factory = module.factory(commandButton());
    EXPECT_EQ(module.canUnloadNow(), S_FALSE) << "a class object is held";

    ComPtr<ICmdButton> button;
    ASSERT_EQ(factory->CreateInstance(nullptr, iidOf<ICmdButton>(), button.putVoid()), S_OK);
    factory.reset();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE) << "a control is alive";
    button.reset();
    EXPECT_EQ(module.canUnloadNow(), S_OK);

    factory = module.factory(commandButton());
    factory->LockServer(TRUE);
    IClassFactory* const borrowed = factory.get();
    factory.reset();
    EXPECT_EQ(module.canUnloadNow(), S_FALSE) << "the server is locked";
    borrowed->LockServer(FALSE);
    EXPECT_EQ(module.canUnloadNow(), S_OK);
}

TEST_F(ModuleTest, TheTypeLibraryInTheModuleIsTheOneThatClientsKnow)
{
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(module.path().c_str(), REGKIND_NONE, library.put()), S_OK);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->lcid, LCID{LOCALE_NEUTRAL}) << "clients of every language find it";
    EXPECT_EQ(attributes->wMajorVerNum, 3);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    library->ReleaseTLibAttr(attributes);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(library->GetTypeInfoOfGuid(commandButton(), info.put()), S_OK);
}

TEST_F(ModuleTest, TheLibrarysHelpTextReadsRightWhereItsLanguageIsSpoken)
{
    const HRSRC place = FindResourceW(module.handle(), MAKEINTRESOURCEW(1), L"TYPELIB");
    ASSERT_NE(place, nullptr);
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module.handle(), place)));
    const std::string_view resource(bytes, SizeofResource(module.handle(), place));
    constexpr UINT kGbk = 936;
    char help[64] = "";
    const int length =
        WideCharToMultiByte(kGbk, 0, L"Morvane 3.0 \u7C7B\u578B\u5E93", -1, help, sizeof help, nullptr, nullptr);
    ASSERT_EQ(length, 19); // 12 letters, three characters of two bytes, the end
    EXPECT_NE(resource.find(help), std::string_view::npos);
}

/// The identifiers of all default interfaces in the library.
std::vector<IID> defaultInterfaces(ITypeLib& library)
{
    std::vector<IID> result;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> coclass;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> interfaceInfo;
        TYPEKIND kind{};
        TYPEATTR* attributes = nullptr;
        if (FAILED(library.GetTypeInfoType(i, &kind)) || kind != TKIND_COCLASS ||
            FAILED(library.GetTypeInfo(i, coclass.put())) || FAILED(coclass->GetRefTypeOfImplType(0, &reference)) ||
            FAILED(coclass->GetRefTypeInfo(reference, interfaceInfo.put())) ||
            FAILED(interfaceInfo->GetTypeAttr(&attributes)))
            continue;
        result.push_back(attributes->guid);
        interfaceInfo->ReleaseTypeAttr(attributes);
    }
    return result;
}

TEST_F(ModuleTest, MarshallingAnswersForTheControlsInterfacesAndNoOther)
{
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(module.path().c_str(), REGKIND_NONE, library.put()), S_OK);
    const std::vector<IID> interfaces = defaultInterfaces(*library.get());
    EXPECT_EQ(interfaces.size(), 72u);
    ComPtr<IPSFactoryBuffer> factory;
    for (const IID& iid : interfaces)
        EXPECT_EQ(module.getClassObject(iid, IID_IPSFactoryBuffer, factory.putVoid()), S_OK);
    EXPECT_EQ(module.getClassObject(iidOf<IVexControlBase>(), IID_IPSFactoryBuffer, factory.putVoid()),
              CLASS_E_CLASSNOTAVAILABLE);
}

} // namespace
} // namespace morvane
