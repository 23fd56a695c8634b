// What a host window shows: its render device, and how the object tree is drawn on it.
#pragma once

#include "ambrel/objects/object_node.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"

namespace ambrel {

class WindowSurface {
public:
    hyper device() const noexcept { return m_device.handle(); }
    /// The drawing context while `draw` runs, otherwise null.
    IVexRenderDC* context() noexcept { return m_drawing ? &m_device.renderDC() : nullptr; }

    /// In percent.
    void setScale(int percent) { m_device.setScale(Scale(percent)); }
    /// False: where nothing is drawn, what lies behind the window shows.
    void setOpaque(bool opaque) noexcept { m_device.setOpaque(opaque); }

    /// Answers whether the surface is new, so that everything has to be drawn.
    bool resize(Size size);

    /// Draws everything beneath `root` that touches `part`. With a child window, the ground is what its parent shows
    /// there. Runs foreign code.
    void draw(ObjectNode& root, const Rect& part, HWND childWindow = nullptr);

    void copyTo(HDC target, const Rect& part) { m_device.present(target, {&part, 1}); }
    void copyTo(HWND window, std::span<const Rect> parts) { m_device.present(window, parts); }
    Size size() const noexcept { return m_device.size(); }
    bool presentLayered(HWND window, Point onScreen, int opacity)
    {
        return m_device.presentLayered(window, onScreen, opacity);
    }
    const DibSurface* pixels() const noexcept { return m_device.surface(); }
    HBITMAP bitmap() const noexcept { return pixels() ? pixels()->bitmap() : nullptr; }
    /// The pixels that are not wholly transparent, as a region that the caller owns; null without a surface.
    HRGN opaqueRegion() const;

private:
    void clear(const Rect& part);
    void drawParent(HWND child, const Rect& part);

    RenderDevice m_device;
    bool m_drawing = false;
};

} // namespace ambrel
