// The inspector: the objects of the shown page, the properties of one of them, and what happens to them.
#pragma once

#include "gallery/inspector/event_log.h"
#include "gallery/inspector/log_panel.h"
#include "gallery/inspector/property_panel.h"
#include "gallery/inspector/selection_frame.h"
#include "gallery/inspector/tree_panel.h"

#include <optional>

namespace gallery {

class Inspector {
public:
    static constexpr int kWidth = 361; // with the line at its left edge

    /// A column of the scene's window, at its right edge; both sizes at 100 percent. Listens from now on.
    Inspector(Scene& scene, const Rect& place, Size window);
    Inspector(const Inspector&) = delete;
    Inspector& operator=(const Inspector&) = delete;
    ~Inspector();

    // The page is replaced: nothing of the old one is kept after pageClosing.
    void pageClosing();
    void pageOpened(IVexControlBase& page);

    /// Hidden, it does not listen.
    void setShown(bool isShown);
    /// Brings everything up to date now; while shown it happens by itself ten times a second.
    void refresh();
    /// A message of the window before it is dispatched. True when it was the inspector's.
    bool preview(const MSG& message);

private:
    void build(const Rect& place, Size window);
    void readTree();
    void selectionChanged();
    bool wheel(const MSG& message);
    void startTimer();
    void stopTimer();
    HWND window() const;

    Scene& m_scene;
    EventLog m_log;
    ComPtr<IUIFormObj> m_form;
    std::optional<TreePanel> m_tree;
    std::optional<PropertyPanel> m_properties;
    std::optional<LogPanel> m_events;
    std::optional<SelectionFrame> m_frame;
    ComPtr<IVexControlBase> m_page;
};

} // namespace gallery
