// The inspector's parts on real controls and the real runtime, in a window that is never shown.
#include "gallery/component_library.h"
#include "gallery/inspector/event_log.h"
#include "gallery/inspector/property_list.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gallery {

namespace {

class InspectorTest : public ::testing::Test {
protected:
    InspectorTest() : library({__uuidof(CmdButton), __uuidof(VexCheckBox), __uuidof(UIFormObj)})
    {
        AmbrelRegisterClasses();
        ComPtr<IVexRes> res;
        ComPtr<IDispatch> root;
        AmbrelCreateRes(res.put());
        res->CreateAmbrel(Bstr(L"Test").get(), 0, root.put());
        VARIANT_BOOL created = VARIANT_FALSE;
        const auto window = root.as<IAmbrel>();
        window->Create(0, {0, 0, 400, 300}, &created);
        scene = std::make_unique<Scene>(res, window, SkinSource{library.module(), {}, false, nullptr}, 100);
        page = scene->form(nullptr, {0, 0, 400, 300}, RGB(255, 255, 255));
        box = scene->checkBox(page.get(), {10, 10, 110, 34}, L"&Mark");
        button = scene->button(page.get(), {10, 50, 110, 78}, L"Press");
    }
    ~InspectorTest() override
    {
        std::int64_t handle = 0;
        scene->root().GetWindowHandle(&handle);
        for (auto* each : {static_cast<IVexControlBase*>(box.get()), static_cast<IVexControlBase*>(button.get())})
            scene->remove(*each);
        box.reset();
        button.reset();
        page.reset();
        DestroyWindow(reinterpret_cast<HWND>(handle));
        scene.reset();
        AmbrelUnregisterClasses();
    }

    static PropertyRow rowNamed(IVexControlBase& control, const std::wstring& path)
    {
        const auto rows = listProperties(control);
        const auto found =
            std::find_if(rows.begin(), rows.end(), [&](const PropertyRow& row) { return row.path == path; });
        return found == rows.end() ? PropertyRow{} : *found;
    }

    ComponentLibrary library;
    std::unique_ptr<Scene> scene;
    ComPtr<IUIFormObj> page;
    ComPtr<IVexCheckBox> box;
    ComPtr<ICmdButton> button;
};

TEST_F(InspectorTest, RowsShowThePageInDrawingOrderWithTextsWithoutAccessMarks)
{
    const auto rows = listObjects(*page);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].depth, 0);
    EXPECT_EQ(rows[1].type, L"CheckBox");
    EXPECT_EQ(rows[1].text, L"Mark");
    EXPECT_EQ(treeLabel(rows[2]), L"    Button  " + rows[2].name + L"  \u201CPress\u201D");
    EXPECT_EQ(rows[2].identity, identityOf(button.get()));
}

TEST_F(InspectorTest, ChangedPropertiesReachTheControl)
{
    Bstr text;
    VARIANT_BOOL isShown = VARIANT_TRUE;
    long width = 0;
    ASSERT_TRUE(setText(*button, rowNamed(*button, L"Text/Text"), L"Release"));
    button->GetText(text.put());
    EXPECT_EQ(text.str(), L"Release");

    const PropertyRow showText = rowNamed(*button, L"Text/ShowText");
    ASSERT_EQ(showText.editor, PropertyEditor::Check);
    ASSERT_TRUE(setTrue(*button, showText, false));
    button->IsShowText(&isShown);
    EXPECT_EQ(isShown, VARIANT_FALSE);
    EXPECT_FALSE(isTrue(showText));

    const PropertyRow most = rowNamed(*button, L"AutoResize/MaxTextWidth");
    ASSERT_EQ(most.editor, PropertyEditor::Step);
    ASSERT_TRUE(step(*button, most, -1));
    button->GetMaxWidth(&width);
    EXPECT_EQ(width, 99);
    EXPECT_FALSE(setText(*button, most, L"wide")) << "no number";
    EXPECT_EQ(valueText(most), L"99");
}

TEST_F(InspectorTest, TheLogJoinsRepetitionsKeepsTheNewestAndSkipsWhatItIsToldTo)
{
    const auto rows = listObjects(*page); // asking the objects is logged too
    EventLog log;
    log.ignore({identityOf(box.get())});
    log.open();
    box->SetText(Bstr(L"not logged").get());
    EXPECT_FALSE(log.takeActivity());
    for (int i = 0; i < 3; ++i)
        button->DirectRedraw(nullptr);
    EXPECT_TRUE(log.takeActivity());
    {
        const EventLog::Quiet quiet(log);
        button->SetText(Bstr(L"nor this").get());
    }
    log.setPaused(true);
    button->SetText(Bstr(L"nor that").get());
    EXPECT_TRUE(log.takeTreeChange()) << "the rows show another text, also while nothing is logged";
    log.setPaused(false);
    log.collect(rows);
    ASSERT_FALSE(log.lines().empty());
    EXPECT_EQ(log.lines().front().what, L"redraw 10,50 100\u00D728");
    EXPECT_EQ(log.lines().front().count, 3);

    // More than it holds between two looks, then lines that differ.
    for (int i = 0; i < 1000; ++i) {
        SkinRect part{10, 50, 20 + i % 80, 60};
        button->DirectRedraw(&part);
    }
    log.collect(rows);
    EXPECT_EQ(log.lines().size(), EventLog::kCapacity);
    EXPECT_EQ(log.lines().front().what, L"redraw 10,50 " + std::to_wstring(10 + 999 % 80) + L"\u00D710");
}

TEST_F(InspectorTest, TimersOfAllObjectsAreOneLineAndPushNothingOut)
{
    const auto rows = listObjects(*page);
    std::int64_t handle = 0;
    scene->root().GetWindowHandle(&handle);
    EventLog log;
    log.open();
    button->DirectRedraw(nullptr);
    for (std::size_t i = 0; i < EventLog::kCapacity; ++i)
        SendMessageW(reinterpret_cast<HWND>(handle), WM_TIMER, 4711, 0);
    log.collect(rows);
    ASSERT_EQ(log.lines().size(), 2u);
    EXPECT_EQ(log.lines().front().what, L"TIMER");
    EXPECT_EQ(log.lines().front().count, static_cast<int>(EventLog::kCapacity * rows.size()));
    EXPECT_EQ(log.lines().back().what, L"redraw 10,50 100\u00D728");
}

TEST_F(InspectorTest, EntriesOfObjectsThatAreGoneAreDropped)
{
    EventLog log;
    log.open();
    box->DirectRedraw(nullptr);
    button->DirectRedraw(nullptr);
    VARIANT_BOOL done = VARIANT_FALSE;
    button->Remove(&done);
    log.collect(listObjects(*page));
    EXPECT_FALSE(log.lines().empty());
    for (const LogLine& line : log.lines())
        EXPECT_NE(line.identity, identityOf(button.get()));
}

} // namespace

} // namespace gallery
