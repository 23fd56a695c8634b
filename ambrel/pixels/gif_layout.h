// The frames of an animated GIF: where each lies, how long it shows, what happens to it afterwards. The pixels
// themselves are the platform decoder's business.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ambrel {

enum class GifDisposal { Keep, ClearToBackground, RestorePrevious };

struct GifFrame {
    Rect area; // on the animation's canvas
    int delayMs = 0;
    GifDisposal disposal = GifDisposal::Keep;
};

struct GifLayout {
    Size canvas;
    std::vector<GifFrame> frames;
    int plays = 1; // how often the frames are shown; 0 means for ever
};

/// More frames than this are not read.
inline constexpr std::size_t kMaxGifFrames = 1024;

/// Nothing when the bytes are no GIF. A file that breaks off gives the frames before the break.
std::optional<GifLayout> readGifLayout(std::span<const std::uint8_t> bytes);

/// Puts decoded frames onto the canvas one after the other. Each call draws the next frame and gives the whole picture.
class GifComposer {
public:
    explicit GifComposer(Size canvas) : m_canvas(canvas) {}

    /// `pixels` are the frame's own, premultiplied, with transparent ones where the canvas shows through.
    const Surface& add(const GifFrame& frame, ConstPixelView pixels);

private:
    void disposeOfFormer();

    Surface m_canvas;
    Surface m_before; // what to go back to
    GifFrame m_former;
    bool m_hasFormer = false;
};

} // namespace ambrel
