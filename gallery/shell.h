// The gallery's window: the list of pages at the left, the chosen page beside it.
#pragma once

#include "gallery/options.h"
#include "gallery/page.h"

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

    Scene& scene() { return *m_scene; }
    IAmbrel& root() { return *m_root; }
    HWND window() const;
    /// The whole window's inside, in device pixels.
    Size size() const;

private:
    void buildList();

    Options m_options;
    ComPtr<IVexRes> m_res;
    ComPtr<IAmbrel> m_root;
    std::unique_ptr<Scene> m_scene;
    ComPtr<IUIFormObj> m_background;
    ComPtr<IUIFormObj> m_page;
    std::vector<ComPtr<IRadioBox>> m_entries;
};

} // namespace gallery
