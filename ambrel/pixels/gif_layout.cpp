#include "ambrel/pixels/gif_layout.h"

#include "ambrel/pixels/byte_reader.h"
#include "ambrel/pixels/draw.h"

namespace ambrel {

namespace {

constexpr int kExtension = 0x21;
constexpr int kGraphicControl = 0xF9;
constexpr int kImage = 0x2C;

std::size_t colourTableLength(int flags)
{
    return (flags & 0x80) != 0 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

/// The position after a chain of sub-blocks.
std::size_t skipBlocks(const ByteReader& in, std::size_t at)
{
    while (in.isInside(at, 1) && in.u8(at) != 0)
        at += 1 + static_cast<std::size_t>(in.u8(at));
    return at + 1;
}

/// Players show frames with no or next to no delay for a tenth of a second; so do we.
int delayOf(int hundredths)
{
    return hundredths <= 1 ? 100 : hundredths * 10;
}

GifDisposal disposalOf(int flags)
{
    switch ((flags >> 2) & 7) {
    case 2:
        return GifDisposal::ClearToBackground;
    case 3:
        return GifDisposal::RestorePrevious;
    default:
        return GifDisposal::Keep;
    }
}

} // namespace

std::optional<GifLayout> readGifLayout(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    if (!in.isInside(0, 13) || (!in.startsWith("GIF87a") && !in.startsWith("GIF89a")))
        return std::nullopt;
    GifLayout layout{{in.u16le(6), in.u16le(8)}, {}};
    std::size_t at = 13 + colourTableLength(in.u8(10));
    GifFrame next;
    next.delayMs = delayOf(0);
    while (in.isInside(at, 2) && layout.frames.size() < kMaxGifFrames) {
        if (in.u8(at) == kExtension) {
            if (in.u8(at + 1) == kGraphicControl) {
                next.disposal = disposalOf(in.u8(at + 3));
                next.delayMs = delayOf(in.u16le(at + 4));
            }
            at = skipBlocks(in, at + 2);
        } else if (in.u8(at) == kImage && in.isInside(at, 10)) {
            next.area = Rect::at({in.u16le(at + 1), in.u16le(at + 3)}, {in.u16le(at + 5), in.u16le(at + 7)});
            layout.frames.push_back(next);
            next = {};
            next.delayMs = delayOf(0);
            at = skipBlocks(in, at + 10 + colourTableLength(in.u8(at + 9)) + 1); // one byte more: the code size
        } else {
            break;
        }
    }
    return layout;
}

const Surface& GifComposer::add(const GifFrame& frame, ConstPixelView pixels)
{
    disposeOfFormer();
    if (frame.disposal == GifDisposal::RestorePrevious)
        m_before = m_canvas;
    const Rect whole = m_canvas.view().bounds();
    blendImage({m_canvas.view(), {}, whole}, frame.area.topLeft(), pixels);
    m_former = frame;
    m_hasFormer = true;
    return m_canvas;
}

void GifComposer::disposeOfFormer()
{
    if (!m_hasFormer)
        return;
    if (m_former.disposal == GifDisposal::ClearToBackground)
        fillRect({m_canvas.view(), {}, m_canvas.view().bounds()}, m_former.area, 0);
    else if (m_former.disposal == GifDisposal::RestorePrevious)
        m_canvas = m_before;
}

} // namespace ambrel
