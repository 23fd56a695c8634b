// The command button's own methods: states, graphics from strips, icons, bitmaps and files, backgrounds and sizes.
#include "frame/platform/handles.h"
#include "tests/controls/controls_fixture.h"

namespace morvane {
namespace {

using testing::BoolObject;
using testing::Log;
using testing::LongObject;

class ButtonTest : public testing::ControlsFixture {
protected:
    void SetUp() override { button = bringUp<ICmdButton>(iidOf<::CmdButton>()); } // in 10,20,110,60
    void TearDown() override
    {
        notifyIfThere();
        button.control.reset();
        ControlsFixture::TearDown();
    }
    void notifyIfThere()
    {
        if (button.control)
            notify(button, VEXSM_DESTROYING);
    }
    /// The state whose background was drawn.
    std::string look()
    {
        const std::string first = render(button)[0];
        return first.substr(5, first.find('.') - 5);
    }
    void set(const wchar_t* group, const wchar_t* name, VARIANT_BOOL value)
    {
        button.property<BoolObject>(group, name).value = value;
    }

    testing::Made<ICmdButton> button;
};

// States
// ------------------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, APinnedStateStaysUntilTheNormalOneReleasesIt)
{
    EXPECT_EQ(look(), "Normal");
    EXPECT_EQ(button->SetButtonState(VEX_BTN_PRESS), S_OK);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(look(), "Press");
    button.base->enabled = VARIANT_FALSE;
    EXPECT_EQ(look(), "Disabled") << "even a pinned one";
    button.base->enabled = VARIANT_TRUE;
    button->SetButtonState(VEX_BTN_NORMAL);
    EXPECT_EQ(look(), "Normal");
}

TEST_F(ButtonTest, InTheDesignerTheStateIsTheOneThatWasSetUnlessItIsDisabled)
{
    button->SetButtonState(VEX_BTN_HOT);
    button->SetButtonState(VEX_BTN_NORMAL);
    res->designStatus = VARIANT_TRUE;
    button.base->leftButtonDown = VARIANT_TRUE;
    EXPECT_EQ(look(), "Normal") << "nothing is worked out";
    button.base->enabled = VARIANT_FALSE;
    EXPECT_EQ(look(), "Disabled");
    button.base->enabled = VARIANT_TRUE;
    EXPECT_EQ(look(), "Disabled") << "as it was drawn last";
}

TEST_F(ButtonTest, FocusFollowsTheNotificationsAndTheRoot)
{
    notify(button, VEXSM_ONSETFOCUS);
    EXPECT_EQ(look(), "Focus");
    button->SetActive(VARIANT_TRUE);
    EXPECT_EQ(look(), "Normal") << "activation takes the flag away";
    host.root->focused = ComPtr<ISkinObjResBase>(button.control.get());
    EXPECT_EQ(look(), "Focus");
    button.base->leftButtonDown = VARIANT_TRUE;
    EXPECT_EQ(look(), "Press");
    host.root->focused.reset();
}

TEST_F(ButtonTest, InactiveShowsInTheNormalStateOnly)
{
    button->SetActive(VARIANT_FALSE);
    EXPECT_EQ(render(button), Log({"draw Inactive.Image 10,20,110,60 #0",
                                   "draw Inactive.TextStyle 10,20,110,60 \"PushButton\"", "draw focus"}));
    button.base->leftButtonDown = VARIANT_TRUE;
    EXPECT_EQ(look(), "Press");
}

TEST_F(ButtonTest, APointerThatLeftUnnoticedIsUnmarkedByTheDrawing)
{
    button.base->rect = {-30000, -30000, -29990, -29990}; // where no cursor is
    button.base->mouseOver = VARIANT_TRUE;
    EXPECT_EQ(render(button)[0], "mouse gone");
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(look(), "Normal");
}

// Graphics
// ----------------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, AStripShowsTheFrameOfTheStateAndItsLastOneBeyond)
{
    EXPECT_EQ(button->SetGraphicsFilePath(Bstr(L"mail.png").get(), 2, 3, 4, VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log({"picture mail.png", "import mail.png", "redraw"}));
    EXPECT_EQ(render(button)[1], "draw strip 12,35,28,51 from 0,0,16,16 #0");
    button->SetButtonState(VEX_BTN_HOT);
    EXPECT_EQ(render(button)[1], "draw strip 12,35,28,51 from 48,0,64,16 #0");
    button->SetButtonState(VEX_BTN_FOCUS);
    EXPECT_EQ(render(button)[1], "draw strip 12,35,28,51 from 48,0,64,16 #0");
    button->SetGraphicsFilePath(Bstr(L"mail.png").get(), 2, 3, 4, 1);
    EXPECT_EQ(render(button)[1], "draw strip 12,41,76,45 from 0,12,64,16 #0") << "only the exact true is horizontal";
    Bstr path;
    EXPECT_EQ(button->GetGraphicsFilePath(path.put()), S_OK);
    EXPECT_EQ(path.view(), L"mail.png");
}

TEST_F(ButtonTest, AFileThatCannotBeReadLeavesNoGraphicAndNoRedraw)
{
    button->SetGraphicsFilePath(Bstr(L"mail.png").get(), 2, 3, 4, VARIANT_TRUE);
    log();
    EXPECT_EQ(button->SetGraphicsFilePath(Bstr(L"missing.png").get(), 9, 9, 4, VARIANT_TRUE), S_FALSE);
    EXPECT_EQ(log(), Log({"picture missing.png", "import missing.png"}));
    EXPECT_EQ(render(button).size(), 3u);
    EXPECT_EQ(button.property<LongObject>(L"Graphics", L"x").value, 2);
}

TEST_F(ButtonTest, IconsAndBitmapsBecomeImagesOfTheRenderDevice)
{
    std::int64_t handle = 0;
    EXPECT_EQ(button->SetGraphicshIcon(0x1C0, 1, 1), S_OK);
    EXPECT_EQ(log(), Log({"make 0x000001C0 of 1c0 type 5 device de71ce"})) << "no redraw";
    EXPECT_EQ(button->GetGraphicshIcon(&handle), S_OK);
    EXPECT_EQ(handle, 0x1C0);
    EXPECT_EQ(render(button)[1], "draw 0x000001C0 10,32,34,48 from 0,0,24,16");
    EXPECT_EQ(button->SetGraphicshBitmap(0xB17, VARIANT_TRUE), S_OK);
    EXPECT_EQ(log(), Log({"destroy 0x000001C0", "make 0x00000B17 of b17 type 2 device de71ce", "redraw 10,20,110,60"}));
    EXPECT_EQ(button->GetGraphicshIcon(&handle), S_OK);
    EXPECT_EQ(handle, 0x1C0) << "a bitmap's handle is not kept";
    EXPECT_EQ(button->GetGraphicshBitmap(&handle), S_OK);
    EXPECT_EQ(handle, 0);
    notify(button, VEXSM_DESTROYING);
    log();
    button.control.reset();
    EXPECT_EQ(log(), Log({"destroy 0x00000B17", "no real control"}));
}

TEST_F(ButtonTest, ASectionIsTheGraphicOfItsState)
{
    const auto section = host.ledger.make<testing::ImageSection>();
    VARIANT_BOOL done = VARIANT_FALSE;
    section->picture = picture();
    button.property<testing::ImageSectionObject>(L"Normal", L"Graphics").sectionRect = {0, 0, 20, 10};
    EXPECT_EQ(button->SetGraphicsImage(VEX_BTN_NORMAL, section.get(), VARIANT_TRUE, &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(render(button)[1], "draw Normal.Graphics 10,35,30,45 #0");
    set(L"Graphics", L"RightAlign", VARIANT_TRUE);
    button->SetGraphicOffset(5, 7);
    EXPECT_EQ(render(button)[1], "draw Normal.Graphics 85,35,105,45 #0");
    button->SetUpDownMode(VARIANT_TRUE);
    EXPECT_EQ(render(button)[1], "draw Normal.Graphics 55,27,75,37 #0");
    EXPECT_EQ(button->SetGraphicsImage(VEX_BTN_LAST, section.get(), VARIANT_TRUE, &done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
    auto* back = reinterpret_cast<IVexImageBase*>(this);
    EXPECT_EQ(button->GetGraphicsImage(VEX_BTN_LAST, &back), S_FALSE);
    EXPECT_EQ(back, nullptr);
}

TEST_F(ButtonTest, OnlyAFittingButtonKeepsItsTextClearOfTheGraphic)
{
    button->SetGraphicshIcon(0x1C0, 0, 0);
    button->SetGraphicOffset(5, 0);
    EXPECT_EQ(render(button)[2], "draw Normal.TextStyle 10,20,110,60 \"PushButton\"");
    set(L"AutoResize", L"IsEnableAutoSize", VARIANT_TRUE);
    EXPECT_EQ(render(button)[2], "draw Normal.TextStyle 39,20,110,60 \"PushButton\"");
    set(L"Graphics", L"RightAlign", VARIANT_TRUE);
    EXPECT_EQ(render(button)[2], "draw Normal.TextStyle 10,20,81,60 \"PushButton\"");
    set(L"Graphics", L"UpDownMode", VARIANT_TRUE);
    EXPECT_EQ(render(button)[2], "draw Normal.TextStyle 10,20,110,60 \"PushButton\"");
}

// Backgrounds
// -------------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, ABackgroundBitmapBelongsToTheButtonAndStandsForItsState)
{
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 32, nullptr);
    const HBITMAP second = CreateBitmap(2, 2, 1, 32, nullptr);
    VARIANT_BOOL untouched = 0x55;
    std::int64_t back = 5;
    EXPECT_EQ(button->GetBackhBitmap(VEX_BTN_NORMAL, &back), S_FALSE);
    EXPECT_EQ(back, 5) << "no output";
    EXPECT_EQ(button->SetBackhBitmap(VEX_BTN_NORMAL, reinterpret_cast<std::int64_t>(bitmap), &untouched), S_OK);
    EXPECT_EQ(untouched, 0x55);
    EXPECT_EQ(log().back(), "redraw 10,20,110,60");
    EXPECT_EQ(render(button)[0].substr(0, 7), "draw 0x");
    EXPECT_EQ(button->GetBackhBitmap(VEX_BTN_NORMAL, &back), S_OK);
    EXPECT_EQ(back, reinterpret_cast<std::int64_t>(bitmap));
    button->SetBackhBitmap(VEX_BTN_NORMAL, back, &untouched);
    EXPECT_EQ(GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP)) << "setting the same one again keeps it";
    button->SetBackhBitmap(VEX_BTN_NORMAL, reinterpret_cast<std::int64_t>(second), &untouched);
    EXPECT_EQ(GetObjectType(bitmap), 0u) << "deleted when replaced";
    notifyIfThere();
    button.control.reset();
    EXPECT_EQ(GetObjectType(second), 0u);
}

TEST_F(ButtonTest, ABackgroundFileBecomesASharedSectionUsedAsItIsFromThenOn)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(button->SetBackImageFile(VEX_BTN_HOT, Bstr(L"C:\\skins\\glow.png").get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(log(), Log({"add CmdButtonglow.png", "add glow.png", "import C:\\skins\\glow.png",
                          "CmdButtonglow.png stretches", "redraw"}));
    const auto& hot = button.property<testing::ImageSectionObject>(L"Hot", L"Image");
    ASSERT_NE(hot.section, nullptr);
    EXPECT_EQ(static_cast<testing::ImageSection&>(*hot.section).source.right, 64);
    EXPECT_EQ(button->SetBackImageFile(VEX_BTN_PRESS, Bstr(L"D:\\glow.png").get(), &done), S_OK);
    EXPECT_EQ(log(), Log({"redraw"}));
    EXPECT_EQ(button.property<testing::ImageSectionObject>(L"Press", L"Image").section, hot.section);
}

TEST_F(ButtonTest, ABackgroundFileThatCannotBeReadAnswersFalse)
{
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(button->SetBackImageFile(VEX_BTN_HOT, Bstr(L"missing.png").get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(log(), Log({"add CmdButtonmissing.png", "add missing.png", "import missing.png"}));
    EXPECT_EQ(button.property<testing::ImageSectionObject>(L"Hot", L"Image").section, nullptr);
    EXPECT_EQ(button->SetBackImageFile(VEX_BTN_HOT, nullptr, nullptr), E_POINTER);
}

TEST_F(ButtonTest, AnIconFileThatIsNoneIsRefused)
{
    EXPECT_EQ(button->SetFileIcon(Bstr(L"C:\\no such file.ico").get()), S_FALSE);
    EXPECT_EQ(button->SetFileIcon(nullptr), S_FALSE);
    EXPECT_EQ(log(), Log());
}

/// Writes a picture of 2 by 1 pixels, blue and red, where the test may delete it.
std::wstring writePicture()
{
    wchar_t folder[MAX_PATH] = L"";
    wchar_t path[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"pic", 0, path);
    constexpr unsigned char kPixels[] = {0xFF, 0, 0, 0, 0, 0xFF, 0, 0};
    const BITMAPINFOHEADER info{sizeof(BITMAPINFOHEADER), 2, 1, 1, 24, BI_RGB, sizeof kPixels, 0, 0, 0, 0};
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42;
    header.bfOffBits = sizeof header + sizeof info;
    header.bfSize = header.bfOffBits + sizeof kPixels;
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    bytes.append(reinterpret_cast<const char*>(kPixels), sizeof kPixels);
    UniqueFile file(CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    return path;
}

TEST_F(ButtonTest, AnIconFileBecomesABitmapThatIsTheButtonsOwn)
{
    const std::wstring path = writePicture();
    std::int64_t handle = 0;
    EXPECT_EQ(button->SetFileIcon(Bstr(path).get()), S_OK);
    EXPECT_EQ(button->GetGraphicshIcon(&handle), S_OK);
    const auto bitmap = reinterpret_cast<HBITMAP>(handle);
    BITMAP header{};
    ASSERT_NE(GetObjectW(bitmap, sizeof header, &header), 0);
    EXPECT_EQ(header.bmWidth, 2);
    EXPECT_EQ(header.bmHeight, 1);
    const Log made = log();
    ASSERT_EQ(made.size(), 2u);
    EXPECT_NE(made[0].find(" type 2 device"), std::string::npos) << made[0];
    EXPECT_EQ(made[1], "redraw 10,20,110,60");
    EXPECT_EQ(button->SetFileIcon(Bstr(path).get()), S_OK);
    EXPECT_EQ(log()[0].substr(0, 9), "destroy 0");
    button->SetGraphicshIcon(0x1C0, 0, 0);
    EXPECT_EQ(GetObjectType(bitmap), 0u) << "the bitmaps of files are deleted when replaced";
    DeleteFileW(path.c_str());
}

TEST_F(ButtonTest, StatesThatDoNotExistAreRefused)
{
    VARIANT_BOOL done = VARIANT_TRUE;
    std::int64_t bitmap = 5;
    for (long odd : {-1, 5, 0x7FFFFFFF}) {
        const auto state = static_cast<VEX_BUTTONSTATE>(odd);
        auto* image = reinterpret_cast<IVexImageBase*>(this);
        auto* textStyle = reinterpret_cast<IVexTextStyle*>(this);
        EXPECT_EQ(button->SetButtonState(state), E_INVALIDARG);
        EXPECT_EQ(button->SetBackImageSec(state, nullptr), E_INVALIDARG);
        EXPECT_EQ(button->GetBackImageSec(state, &image), E_INVALIDARG);
        EXPECT_EQ(button->SetBackTextStyle(state, nullptr), E_INVALIDARG);
        EXPECT_EQ(button->GetBackTextStyle(state, &textStyle), E_INVALIDARG);
        EXPECT_EQ(button->SetBackhBitmap(state, 1, &done), E_INVALIDARG);
        EXPECT_EQ(button->GetBackhBitmap(state, &bitmap), E_INVALIDARG);
        EXPECT_EQ(button->SetBackImageFile(state, nullptr, &done), E_INVALIDARG);
    }
    EXPECT_EQ(log(), Log());
}

// Sizes
// -------------------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, LimitsRedrawOnlyWhenTheyChange)
{
    long value = 0;
    EXPECT_EQ(button->GetMaxWidth(&value), S_OK);
    EXPECT_EQ(value, 100);
    EXPECT_EQ(button->SetMaxWidth(100), S_FALSE);
    EXPECT_EQ(button->SetMinHeight(14), S_FALSE);
    EXPECT_EQ(log(), Log());
    EXPECT_EQ(button->SetMaxWidth(150), S_OK);
    EXPECT_EQ(button->SetMinWidth(20), S_OK);
    EXPECT_EQ(button->SetMaxHeight(40), S_OK);
    EXPECT_EQ(button->SetMinHeight(15), S_OK);
    EXPECT_EQ(log(), Log(4, "redraw"));
    EXPECT_EQ(button->GetMinHeight(&value), S_OK);
    EXPECT_EQ(value, 15);
    EXPECT_EQ(button->GetMinWidth(nullptr), E_POINTER);
}

TEST_F(ButtonTest, AFittingButtonCountsTheWholeStripTheShiftAndTheMargin)
{
    set(L"AutoResize", L"IsEnableAutoSize", VARIANT_TRUE);
    giveStyle(button, L"Normal");
    button.base->position.horzPos.nSpaceType = PHST_FASTNESS;
    button->SetGraphicsFilePath(Bstr(L"mail.png").get(), 5, 0, 4, VARIANT_TRUE);
    button->SetText(Bstr(L"four").get());
    EXPECT_EQ(button.base->position.horzPos.nWidth_Height, 28 + 4 + 64 + 2 + 5 + 3);
    button->SetText(nullptr);
    EXPECT_EQ(button.base->position.vertPos.nWidth_Height, 14) << "the least height";
}

TEST_F(ButtonTest, TheTextsLengthIsMeasuredInTheStateThatIsShown)
{
    short length = 5;
    EXPECT_EQ(button->GetTextLength(&length), S_FALSE) << "no style to measure with";
    EXPECT_EQ(length, 0);
    giveStyle(button, L"Normal");
    EXPECT_EQ(button->GetTextLength(&length), S_OK);
    EXPECT_EQ(length, 70);
    EXPECT_EQ(button->GetTextLength(nullptr), E_POINTER);
}

} // namespace
} // namespace morvane
