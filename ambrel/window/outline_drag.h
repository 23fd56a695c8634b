// Moving and sizing a window by an outline: the window itself follows when the button is released.
#pragma once

#include "ambrel/window/drag_geometry.h"
#include "frame/platform/handles.h"

namespace ambrel {

/// The frame that follows the pointer, and where it would take the window. It lies on top of everything and lets the
/// pointer through.
class OutlineDrag {
public:
    OutlineDrag() noexcept = default;
    OutlineDrag(const OutlineDrag&) = delete;
    OutlineDrag& operator=(const OutlineDrag&) = delete;
    ~OutlineDrag() { end(); }

    bool isRunning() const noexcept { return m_isRunning; }
    /// Places and points are on the screen. Without an outline, when the system refuses one, the drag works all the
    /// same.
    void begin(const Rect& window, DragEdges edges, Point pointer, const SizeLimits& limits, int dpi) noexcept;
    /// Where the window would lie now.
    Rect placeFor(Point pointer) const noexcept { return draggedPlace(m_start, m_edges, pointer - m_from, m_limits); }
    void show(const Rect& place) noexcept;
    const Rect& place() const noexcept { return m_place; }
    DragEdges edges() const noexcept { return m_edges; }
    /// Takes the outline away.
    void end() noexcept;

private:
    static class WindowClass& windowClass() noexcept;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    bool createWindow() noexcept;

    morvane::UniqueWindow m_window;
    Rect m_start;
    Rect m_place;
    Point m_from;
    DragEdges m_edges;
    SizeLimits m_limits;
    int m_width = 3;
    bool m_isRunning = false;
};

} // namespace ambrel
