// The gallery's window: the list of pages at the left, the chosen page beside it.
#pragma once

#include "gallery/inspector/inspector.h"
#include "gallery/options.h"
#include "gallery/page.h"
#include "gallery/skin_folder.h"
#include "gallery/title_bar.h"

#include <optional>

namespace gallery {

class Shell {
public:
    Shell(const Options& options, HINSTANCE controls);
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell();

    void show();
    void selectPage(std::size_t index);
    /// The window grows and shrinks by it.
    void toggleInspector();
    /// A message of the window's thread before it is dispatched. True when nothing else shall see it.
    bool preview(const MSG& message);

    Scene& scene() { return *m_scene; }
    IAmbrel& root() { return *m_root; }
    HWND window() const;
    /// What the window's inside needs, in device pixels.
    Size size() const;

private:
    void buildWindow();
    void clearWindow();
    void followSkinFolder();
    void buildList();
    /// The switches of palette and size below the list.
    void buildLooks(IVexControlBase& list, Size size);
    /// Another palette or size: everything is made anew, once the control that asked for it is done.
    void changeLook(bool isDark, int scale);
    void rebuild();
    /// The same at 100 percent.
    Size inside() const;
    void limitSize();
    void widenBy(int width);
    /// Where the page stands now: beside the list, and left of the inspector.
    void placePage();
    /// A key for the list of pages while one of its entries has the focus; true when it was one.
    bool listKey(const MSG& message);
    void goToPage(std::size_t index);
    void openPage(std::size_t index);
    void openInspector();
    void skinChanged(SkinFolder::Change change);
    /// What is wrong with the user's skins, over the lower edge of the page; nothing when nothing is.
    void showProblems();

    Options m_options;
    HINSTANCE m_controls;
    ComPtr<IVexRes> m_res;
    ComPtr<IAmbrel> m_root;
    std::unique_ptr<Scene> m_scene;
    ComPtr<IUIFormObj> m_background;
    std::optional<TitleBar> m_title; // not in pictures of pages
    ComPtr<IUIFormObj> m_page;
    ComPtr<IUIFormObj> m_problems;
    std::size_t m_pageIndex = 0;
    std::vector<ComPtr<IRadioBox>> m_entries;
    ComPtr<IVexCheckBox> m_dark;
    std::vector<ComPtr<IRadioBox>> m_scales;
    std::unique_ptr<Inspector> m_inspector; // made when it is first shown
    bool m_isInspectorShown = false;
    const int m_top; // below the title
};

} // namespace gallery
