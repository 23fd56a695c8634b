// What a window draws on.
#pragma once

#include "ambrel/render/dib_surface.h"
#include "ambrel/render/scale.h"
#include "frame/com/com_ptr.h"
#include "frame/com/module_lock.h"
#include "host/host.h"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ambrel {

class RenderDC;

/// One per window, owned by it: the surface, the drawing context on it, the scale, and the render images that controls
/// named. Travels over the interfaces as a 64-bit handle. For the user-interface thread.
class RenderDevice {
public:
    explicit RenderDevice(Scale scale = {});
    RenderDevice(const RenderDevice&) = delete;
    RenderDevice& operator=(const RenderDevice&) = delete;
    ~RenderDevice();

    std::int64_t handle() const noexcept { return reinterpret_cast<std::int64_t>(this); }
    /// Of this device and no later one, whose handle may be the same; never 0.
    unsigned serial() const noexcept { return m_serial; }
    /// Null for 0 and for every number that is not the handle of a living device.
    static RenderDevice* fromHandle(std::int64_t handle) noexcept;

    Scale scale() const noexcept { return m_scale; }
    void setScale(Scale scale) noexcept;

    /// Makes the surface this large; what was drawn is lost when the size changes. False when the system refuses; the
    /// old surface then stays. Throws std::bad_alloc.
    bool resize(Size size);
    Size size() const noexcept;

    /// Whether every pixel covers what is behind the window (the usual case), or the surface's alpha counts, as in
    /// layered windows. Decides what becomes of alpha where GDI drew.
    bool isOpaque() const noexcept { return m_isOpaque; }
    void setOpaque(bool isOpaque) noexcept { m_isOpaque = isOpaque; }

    /// What shows where no object draws.
    Pixel ground() const noexcept { return m_isOpaque ? kGround : 0; }

    /// The drawing context on the surface; the same one for the device's life. Throws std::bad_alloc.
    RenderDC& renderDC();

    /// Null before the first resize.
    const DibSurface* surface() const noexcept { return m_surface.get(); }

    /// Copies parts of the surface (window coordinates) to the window's device context. One rectangle copies its own
    /// pixels, nothing more.
    void present(HDC target, std::span<const Rect> parts);
    void present(HWND window, std::span<const Rect> parts);
    /// Shows the whole surface of a layered window with its alpha, at the given place on the screen.
    bool presentLayered(HWND window, Point screenPosition, int opacity = 255);

    /// Render images by name; a new one of a name replaces the old one. Making and fetching one are uses of its name,
    /// which is forgotten when all of them were released or its image is dropped.
    void keepImage(std::wstring_view name, IVexRenderImage* image);
    morvane::ComPtr<IVexRenderImage> findImage(std::wstring_view name) const;
    /// The same as a use of the name.
    morvane::ComPtr<IVexRenderImage> fetchImage(std::wstring_view name);
    /// Ends one use; false when the name is not known.
    bool releaseImage(std::wstring_view name);
    bool dropImage(IVexRenderImage* image);

    /// Contexts that draw for this device and are told when it ends. Throws std::bad_alloc.
    void addContext(RenderDC& dc) { m_contexts.push_back(&dc); }
    void removeContext(RenderDC& dc) noexcept;

private:
    static constexpr Pixel kGround = 0xFFF3F4F7;

    struct NamedImage {
        morvane::ComPtr<IVexRenderImage> image;
        long uses = 0;
    };

    Scale m_scale;
    unsigned m_serial;
    bool m_isOpaque = true;
    std::unique_ptr<DibSurface> m_surface;
    morvane::ComPtr<RenderDC> m_renderDC;
    std::map<std::wstring, NamedImage, std::less<>> m_images;
    std::vector<RenderDC*> m_contexts; // living ones
    morvane::ModuleLock m_moduleLock;
};

} // namespace ambrel
