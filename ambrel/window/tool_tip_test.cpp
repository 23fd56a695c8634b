// Tool tips on the screen: their size, their place, their end.
#include "ambrel/window/host_fixture.h"

#include <functional>
#include <string>

namespace ambrel::testing {
namespace {

class TipTest : public HostTest {
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        a = add("a", {0, 0, 100, 50});
        moveTo(10, 10);
    }
    void offer(const wchar_t* text)
    {
        send(3464, reinterpret_cast<WPARAM>(text), reinterpret_cast<LPARAM>(a->asControl()));
    }
    static HWND tip() { return FindWindowW(L"AmbrelToolTip", nullptr); }
    static RECT place()
    {
        RECT rect{};
        GetWindowRect(tip(), &rect);
        return rect;
    }
    static void expectOnScreen()
    {
        const RECT rect = place();
        EXPECT_GE(rect.left, 0);
        EXPECT_GE(rect.top, 0);
        EXPECT_LE(rect.right, GetSystemMetrics(SM_CXSCREEN));
        EXPECT_LE(rect.bottom, GetSystemMetrics(SM_CYSCREEN));
    }

    TestControl* a = nullptr;
};

TEST_F(TipTest, AnotherTextWhileItIsShownFitsTheTip)
{
    offer(L"Short");
    AmbrelAdvanceClock(500);
    ASSERT_TRUE(tip());
    const RECT before = place();
    offer(L"A text that is very much longer than before");
    EXPECT_GT(place().right - place().left, before.right - before.left);
    AmbrelAdvanceClock(4999);
    EXPECT_TRUE(tip()) << "a changed text stays its own time";
    AmbrelAdvanceClock(1);
    EXPECT_FALSE(tip());
    offer(L"");
    AmbrelAdvanceClock(5000);
    EXPECT_FALSE(tip());
}

TEST_F(TipTest, AtTheEdgesAndWithAnyTextItStaysOnTheScreen)
{
    std::wstring lines;
    for (int i = 0; i < 300; ++i)
        lines += L"Line\n";
    const std::wstring texts[] = {L"Short", std::wstring(2000, L'W'), lines};
    const int right = GetSystemMetrics(SM_CXSCREEN) - 1;
    const int bottom = GetSystemMetrics(SM_CYSCREEN) - 1;
    for (const std::wstring& text : texts) {
        for (const POINT at : {POINT{0, 0}, POINT{right, 0}, POINT{0, bottom}, POINT{right, bottom}}) {
            SetCursorPos(at.x, at.y);
            offer(text.c_str());
            AmbrelAdvanceClock(500);
            ASSERT_TRUE(tip());
            expectOnScreen();
            offer(L"");
        }
    }
}

TEST_F(TipTest, ItGoesWithItsObject)
{
    const std::function<void()> ways[] = {
        [&] { a->SetVisible(VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE); },
        [&] {
            VARIANT_BOOL done = VARIANT_FALSE;
            a->EnableObject(VARIANT_FALSE, VARIANT_FALSE, &done);
        },
        [&] {
            VARIANT_BOOL done = VARIANT_FALSE;
            a->Remove(&done);
        },
        [&] { DestroyWindow(window); },
    };
    for (const auto& go : ways) {
        VARIANT_BOOL done = VARIANT_FALSE;
        a->SetVisible(VARIANT_TRUE, VARIANT_FALSE, VARIANT_FALSE);
        a->EnableObject(VARIANT_TRUE, VARIANT_FALSE, &done);
        a->SetParent(root.get());
        moveTo(10, 10);
        offer(L"Text");
        AmbrelAdvanceClock(500);
        ASSERT_TRUE(tip());
        go();
        EXPECT_FALSE(tip());
        AmbrelAdvanceClock(1000);
    }
}

} // namespace
} // namespace ambrel::testing
