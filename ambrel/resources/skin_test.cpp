// Skins on real controls of Morvane.dll.
#include "ambrel/resources/skin_fixture.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/writer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

namespace ambrel::testing {
namespace {

constexpr long kButtonSkin = 2080;
constexpr std::uint32_t kGround = 0xFFF3F4F7;

// What the promise of 50 ms means for code that is neither optimised nor without checks.
#ifdef _GLIBCXX_ASSERTIONS
constexpr long long kMostMs = 300;
#else
constexpr long long kMostMs = 50;
#endif

class SkinTest : public ButtonWindowTest {
protected:
    ComPtr<IVexControlBase> addButton(const wchar_t* name, SkinRect rect)
    {
        ComPtr<IVexControlBase> button;
        resources->AddPluginResObject(root.get(), Bstr(name).get(), Bstr(L"Morvane17").get(), button.put());
        if (!button)
            return button;
        long changed = 0;
        button->Resize(&rect, &changed);
        button->FinalCreate(VARIANT_TRUE);
        return button;
    }

    /// The window as it would be painted, 300 by 200.
    std::vector<std::uint32_t> picture()
    {
        std::vector<std::uint32_t> pixels(300 * 200);
        EXPECT_EQ(runtime.AmbrelRenderWindow()(root.get(), 300, 200, pixels.data()), S_OK);
        return pixels;
    }

    static std::size_t paintedPixels(const std::vector<std::uint32_t>& pixels)
    {
        return pixels.size() - static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), kGround));
    }

    /// A skin in the full layout: one fill that paints button backgrounds has no place in the button's properties, so
    /// the text's colour tells the skins apart.
    void writeSkin(const char* colour, const char* extra = "", const char* text = "From the skin")
    {
        std::ofstream(folder / "shareres.xml", std::ios::binary)
            << "<?xml version=\"1.0\" "
               "encoding=\"utf-8\"?>\n<Ambrel><share><PreDefColors/><Images/><FontExs/><GradientColor/>"
               "<ImageSecs/><TextStyles><Guid00000000000000000000000000000001 Caption=\"Plain\" HAlign=\"1\" "
               "VAlign=\"1\" "
               "clrText=\""
            << colour << "\" Name=\"Plain\"" << extra << "/></TextStyles></share></Ambrel>";
        std::ofstream(folder / "objects.xml", std::ios::binary)
            << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Ambrel><SkinInfo Version=\"2.5\"/><Objects>"
               "<Guid0000000000000000000000000000000A AddinGuid=\"{9D16F301-CDF1-46B8-B95E-982AF85E06AE}\" "
               "Name=\"Button1\" Type=\"90000\" NormalTextStyle.TextStyleId=\"Guid00000000000000000000000000000001\" "
               "TextText=\""
            << text << "\"/></Objects><SkinCtrls/></Ambrel>";
    }

    HRESULT openFolder()
    {
        VARIANT_BOOL opened = VARIANT_FALSE;
        return resources->OpenSkin(Bstr(folder.wstring()).get(), nullptr, VARIANT_TRUE, &opened);
    }

    OLE_COLOR textColour()
    {
        ComPtr<IVexObj> style;
        resources->GetResObject(VEXOBJTYPE_TEXTSTYLE, Bstr(L"Plain").get(), nullptr, VARIANT_FALSE, style.put());
        OLE_COLOR colour = 0xFFFFFFFF;
        if (const auto text = style.as<IVexTextStyle>())
            text->get_clrText(&colour);
        return colour;
    }

    static std::wstring errorText()
    {
        ComPtr<IErrorInfo> info;
        Bstr text;
        if (GetErrorInfo(0, info.put()) == S_OK)
            info->GetDescription(text.put());
        return text.str();
    }

    /// Runs the message loop until something is so, at most five seconds.
    static void runUntil(const std::function<bool()>& isSo)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!isSo() && std::chrono::steady_clock::now() < end) {
            MSG message;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
    }

    /// What a watch of packages tells.
    struct Told {
        std::vector<HRESULT> statuses; // of the package
        std::wstring error;            // with the last one
        int rounds = 0;

        static void STDMETHODCALLTYPE hear(void* context, const wchar_t* path, HRESULT status)
        {
            Told& told = *static_cast<Told*>(context);
            if (!path) {
                ++told.rounds;
                return;
            }
            told.statuses.push_back(status);
            told.error = FAILED(status) ? errorText() : std::wstring();
        }
    };

    /// A method of the control's own interface, which the runtime does not know.
    static std::wstring call(IVexControlBase& control, std::wstring method, const wchar_t* text = nullptr)
    {
        LPOLESTR name = method.data();
        DISPID id = 0;
        const Bstr given(text ? text : L"");
        VARIANT argument;
        argument.vt = VT_BSTR;
        argument.bstrVal = given.get();
        DISPPARAMS parameters{&argument, nullptr, text ? 1u : 0u, 0};
        VARIANT result;
        VariantInit(&result);
        EXPECT_EQ(control.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        EXPECT_EQ(
            control.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr),
            S_OK);
        const std::wstring answer(result.vt == VT_BSTR ? morvane::viewOf(result.bstrVal) : L"");
        VariantClear(&result);
        return answer;
    }

    /// Of this thread, so that other programs on the machine do not count.
    static std::int64_t processorMs()
    {
        FILETIME created{};
        FILETIME ended{};
        FILETIME kernel{};
        FILETIME user{};
        GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
        const auto ticks = [](const FILETIME& time) {
            return static_cast<std::int64_t>((static_cast<std::uint64_t>(time.dwHighDateTime) << 32) |
                                             time.dwLowDateTime);
        };
        return (ticks(kernel) + ticks(user)) / 10'000;
    }
};

TEST_F(SkinTest, AButtonTakesItsPackagedSkinAndShowsItsStates)
{
    const auto button = addButton(L"Button1", {10, 10, 110, 40});
    ASSERT_TRUE(button);
    EXPECT_EQ(paintedPixels(picture()), 0u);
    ASSERT_EQ(runtime.AmbrelApplySkin()(resources.get(), button.get(), module, kButtonSkin), S_OK);
    const auto normal = picture();
    EXPECT_GT(paintedPixels(normal), 1000u);
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x) {
            if (x < 10 || x >= 110 || y < 10 || y >= 40) {
                ASSERT_EQ(normal[static_cast<std::size_t>(y * 300 + x)], kGround) << x << "," << y;
            }
        }
    }
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
    EXPECT_NE(picture(), normal);
    send(WM_LBUTTONUP, 0, MAKELPARAM(20, 20));
}

TEST_F(SkinTest, ImportingCreatesTheDescribedObjectUnderItsParent)
{
    ComPtr<IVexControlBase> made;
    const hyper parent = reinterpret_cast<hyper>(static_cast<ISkinObjResBase*>(root.get()));
    ASSERT_EQ(
        resources->ImportSkin(reinterpret_cast<hyper>(module), kButtonSkin, Bstr(L"UIFILES").get(), parent, made.put()),
        S_OK);
    ComPtr<ISkinObjResBase> above;
    EXPECT_EQ(made->GetParent(above.put()), S_OK);
    EXPECT_EQ(above.get(), root.get());
    made.reset();
    EXPECT_TRUE(FAILED(
        resources->ImportSkin(reinterpret_cast<hyper>(module), 9999, Bstr(L"UIFILES").get(), parent, made.put())));
    EXPECT_FALSE(made);
    EXPECT_NE(errorText().find(L"resource 9999"), std::wstring::npos);
}

TEST_F(SkinTest, ASkinOpensChangesInPlaceAndStaysWhenTheNextOneIsBroken)
{
    writeSkin("0x000000FF");
    ASSERT_EQ(openFolder(), S_OK) << std::string(errorText().begin(), errorText().end());
    EXPECT_EQ(textColour(), 0x000000FFu);
    const auto button = addButton(L"Button1", {10, 10, 210, 40});
    ASSERT_TRUE(button);
    const auto red = picture();
    EXPECT_GT(paintedPixels(red), 50u);
    LONG main = 0;
    LONG sub = 0;
    EXPECT_EQ(resources->GetSkinVersion(&main, &sub), S_OK);
    EXPECT_EQ(main, 2);
    EXPECT_EQ(sub, 5);

    writeSkin("0x0000FF00");
    ASSERT_EQ(openFolder(), S_OK);
    const auto green = picture();
    EXPECT_NE(green, red);

    writeSkin("0x000000FF", " HAlign=\"x\"");
    EXPECT_TRUE(FAILED(openFolder()));
    EXPECT_NE(errorText().find(L"shareres.xml:2:"), std::wstring::npos);
    EXPECT_EQ(picture(), green);
    EXPECT_EQ(textColour(), 0x0000FF00u);
}

TEST_F(SkinTest, AChangedFileOfAnOpenFolderIsTakenUp)
{
    writeSkin("0x000000FF");
    ASSERT_EQ(openFolder(), S_OK);
    writeSkin("0x00FF0000");
    runUntil([&] { return textColour() == 0x00FF0000u; });
    EXPECT_EQ(textColour(), 0x00FF0000u);
    VARIANT_BOOL closed = VARIANT_FALSE;
    EXPECT_EQ(resources->CloseSkin(&closed), S_OK);
    EXPECT_EQ(textColour(), 0xFFFFFFFFu);
}

TEST_F(SkinTest, AChangedPackageOfAWatchedFolderChangesThoseWhoWearItAndABadOneNothing)
{
    const std::wstring package = folder.wstring();
    const auto worn = addButton(L"Worn", {10, 10, 210, 40});
    const auto bare = addButton(L"Bare", {10, 60, 210, 90}); // of the same class, but it was not given the package
    ASSERT_TRUE(worn && bare);
    Told told;
    ASSERT_EQ(runtime.AmbrelWatchSkinFiles()(resources.get(), folder.parent_path().c_str(), &Told::hear, &told), S_OK);
    writeSkin("0x000000FF", "", "From the package");
    ASSERT_EQ(runtime.AmbrelApplySkinFile()(resources.get(), worn.get(), package.c_str()), S_OK);
    call(*worn.get(), L"SetText", L"Mine");
    const auto red = picture();
    const auto settled = [&](int rounds) { return [&told, rounds] { return told.rounds > rounds; }; };
    runUntil(settled(0)); // the package's own arrival

    told = {};
    writeSkin("0x0000FF00", "", "From the package");
    runUntil(settled(0));
    EXPECT_EQ(told.statuses, std::vector<HRESULT>{S_OK});
    const auto green = picture();
    EXPECT_NE(green, red);
    EXPECT_EQ(call(*worn.get(), L"GetText"), L"Mine"); // the package says of it what it said before
    EXPECT_EQ(std::count(green.begin() + 60 * 300, green.end(), kGround), 140 * 300);

    told = {};
    writeSkin("0x000000FF", " HAlign=\"x\"");
    runUntil(settled(0));
    ASSERT_EQ(told.statuses.size(), 1u);
    EXPECT_TRUE(FAILED(told.statuses[0]));
    EXPECT_NE(told.error.find(L"shareres.xml:2:"), std::wstring::npos);
    EXPECT_EQ(picture(), green);

    told = {};
    writeSkin("0x000000FF", "", "Another text");
    runUntil(settled(0));
    EXPECT_EQ(told.statuses, std::vector<HRESULT>{S_OK});
    EXPECT_EQ(call(*worn.get(), L"GetText"), L"Another text");
    EXPECT_EQ(runtime.AmbrelWatchSkinFiles()(resources.get(), nullptr, nullptr, nullptr), S_OK);
}

TEST_F(SkinTest, ChangingTheSkinOfAWindowWithManyControlsIsQuick)
{
    runtime.AmbrelSetTraceSink()(nullptr, nullptr);
    writeSkin("0x000000FF");
    ASSERT_EQ(openFolder(), S_OK);
    std::vector<ComPtr<IVexControlBase>> buttons;
    for (int i = 0; i < 5000; ++i)
        buttons.push_back(addButton(L"Button1", {i % 100, i / 100, i % 100 + 50, i / 100 + 20}));
    ASSERT_TRUE(buttons.back());
    writeSkin("0x0000FF00");
    const auto before = processorMs();
    ASSERT_EQ(openFolder(), S_OK);
    const auto took = processorMs() - before;
    std::printf("[ figure   ] 5000 controls change their skin in %lld ms of processor time\n",
                static_cast<long long>(took));
    EXPECT_LT(took, kMostMs);

    writeSkin("0x0000FF00", "", "Another");
    const auto beforeTexts = processorMs();
    ASSERT_EQ(openFolder(), S_OK);
    const auto tookTexts = processorMs() - beforeTexts;
    std::printf("[ figure   ] with a value of each control in %lld ms\n", static_cast<long long>(tookTexts));
    EXPECT_LT(tookTexts, kMostMs);

    // Every picture and text style of every control is another one.
    const auto packaged = skin::loadSkin(std::filesystem::path(L"" MORVANE_SKINS_DIR) / "2080.zip");
    ASSERT_TRUE(packaged);
    skin::Skin turned = packaged.value();
    std::size_t different = 0;
    for (skin::Property& each : turned.objects[0].properties) {
        const auto& sections = turned.resources.imageSections;
        const bool isImage = each.kind == skin::ValueKind::ImageSection && !each.value.empty();
        if (isImage) {
            each.value = sections[each.value == sections[0].id ? 1 : 0].id;
            ++different;
        } else if (each.kind == skin::ValueKind::TextStyle) {
            each.value.clear();
            ++different;
        }
    }
    ASSERT_GT(different, 5u);
    std::filesystem::create_directories(folder / "first");
    std::filesystem::create_directories(folder / "second");
    ASSERT_TRUE(skin::saveSkin(packaged.value(), folder / "first"));
    ASSERT_TRUE(skin::saveSkin(turned, folder / "second"));
    const auto change = [&](const wchar_t* name) {
        VARIANT_BOOL changed = VARIANT_FALSE;
        EXPECT_EQ(resources->ChangeSkn(Bstr((folder / name).wstring()).get(), &changed), S_OK);
    };
    change(L"first");
    const auto beforeAll = processorMs();
    change(L"second");
    change(L"first");
    const auto tookAll = (processorMs() - beforeAll) / 2;
    std::printf("[ figure   ] with %zu values of each control in %lld ms\n", different,
                static_cast<long long>(tookAll));
    EXPECT_LT(tookAll, kMostMs);
}

} // namespace
} // namespace ambrel::testing
