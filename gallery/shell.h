// The gallery's window: the list of pages at the left, the chosen page beside it.
#pragma once

#include "gallery/inspector/inspector.h"
#include "gallery/options.h"
#include "gallery/page.h"
#include "gallery/skin_folder.h"

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
    /// The whole window's inside, in device pixels.
    Size size() const;

private:
    void buildWindow();
    void buildList();
    void openPage(std::size_t index);
    void openInspector();
    void skinChanged(SkinFolder::Change change);
    /// What is wrong with the user's skins, over the lower edge of the page; nothing when nothing is.
    void showProblems();

    Options m_options;
    ComPtr<IVexRes> m_res;
    ComPtr<IAmbrel> m_root;
    std::unique_ptr<Scene> m_scene;
    ComPtr<IUIFormObj> m_background;
    ComPtr<IUIFormObj> m_page;
    ComPtr<IUIFormObj> m_problems;
    std::size_t m_pageIndex = 0;
    std::vector<ComPtr<IRadioBox>> m_entries;
    std::unique_ptr<Inspector> m_inspector; // made when it is first shown
    bool m_isInspectorShown = false;
};

} // namespace gallery
