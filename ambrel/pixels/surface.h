// Where pixels live: owned surfaces and borrowed views.
#pragma once

#include "ambrel/pixels/pixel.h"
#include "base/geometry.h"

#include <cstddef>
#include <vector>

namespace ambrel {

using morvane::Point;
using morvane::Rect;
using morvane::Size;

/// Pixels of somebody else, top row first. `stride` is in pixels and at least the width.
struct ConstPixelView {
    const Pixel* data = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    Rect bounds() const { return {0, 0, width, height}; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    const Pixel* row(int y) const { return data + y * stride; }
    Pixel at(int x, int y) const { return row(y)[x]; }

    /// The part inside `rect`, which is cut to the view.
    ConstPixelView part(const Rect& rect) const
    {
        const Rect cut = rect.intersection(bounds());
        if (cut.isEmpty())
            return {};
        return {row(cut.top) + cut.left, cut.width(), cut.height(), stride};
    }
};

/// Writable pixels of somebody else.
struct PixelView {
    Pixel* data = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    Rect bounds() const { return {0, 0, width, height}; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    Pixel* row(int y) const { return data + y * stride; }
    Pixel at(int x, int y) const { return row(y)[x]; }
    operator ConstPixelView() const { return {data, width, height, stride}; }

    PixelView part(const Rect& rect) const
    {
        const Rect cut = rect.intersection(bounds());
        if (cut.isEmpty())
            return {};
        return {row(cut.top) + cut.left, cut.width(), cut.height(), stride};
    }
};

/// Owns pixels; new ones are transparent.
class Surface {
public:
    /// Larger sides are refused: nothing on a screen or in a skin needs them.
    static constexpr int kMaxSide = 16384;
    static constexpr std::int64_t kMaxPixels = 64 * 1024 * 1024;

    static constexpr bool isAllowed(Size size)
    {
        return size.width >= 0 && size.height >= 0 && size.width <= kMaxSide && size.height <= kMaxSide &&
               static_cast<std::int64_t>(size.width) * size.height <= kMaxPixels;
    }

    Surface() = default;

    /// An empty surface when the size is not allowed. Throws std::bad_alloc.
    explicit Surface(Size size)
        : m_size(isAllowed(size) ? size : Size{}), m_pixels(static_cast<std::size_t>(m_size.width) * m_size.height)
    {
    }

    Size size() const { return m_size; }
    bool isEmpty() const { return m_size.isEmpty(); }
    PixelView view() { return {m_pixels.data(), m_size.width, m_size.height, m_size.width}; }
    ConstPixelView view() const { return {m_pixels.data(), m_size.width, m_size.height, m_size.width}; }

private:
    Size m_size;
    std::vector<Pixel> m_pixels;
};

/// What a picture's alpha allows: drawing opaque pixels is a copy, blank ones need no drawing at all.
enum class Coverage { Blank, Opaque, Mixed };
Coverage coverageOf(ConstPixelView pixels);

} // namespace ambrel
