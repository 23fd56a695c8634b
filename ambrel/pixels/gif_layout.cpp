#include "ambrel/pixels/gif_layout.h"

#include "ambrel/pixels/byte_reader.h"
#include "ambrel/pixels/draw.h"

namespace ambrel {

namespace {

constexpr int kExtension = 0x21;
constexpr int kGraphicControl = 0xF9;
constexpr int kPlainText = 0x01;
constexpr int kApplication = 0xFF;
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
    case 4: // some writers set the third bit instead of the third value
        return GifDisposal::RestorePrevious;
    default:
        return GifDisposal::Keep;
    }
}

GifFrame frameWithoutControl()
{
    return {{}, delayOf(0), GifDisposal::Keep};
}

/// How often the frames are shown, from an extension of an application at `at`; the former answer when it is another's.
/// The number stored is that of repetitions after the first time, as players have it.
int playsOf(const ByteReader& in, std::size_t at, int former)
{
    constexpr std::size_t kNameLength = 11;
    constexpr int kRepetitions = 1;
    const bool isOurs = in.startsWith("NETSCAPE2.0", at + 3) || in.startsWith("ANIMEXTS1.0", at + 3);
    const std::size_t block = at + 3 + kNameLength;
    if (!isOurs || in.u8(at + 2) != static_cast<int>(kNameLength) || in.u8(block) < 3 ||
        in.u8(block + 1) != kRepetitions || !in.isInside(block, 4))
        return former;
    const int repetitions = in.u16le(block + 2);
    return repetitions == 0 ? 0 : repetitions + 1;
}

/// What an extension at `at` says about the next frame or the whole animation.
void readExtension(const ByteReader& in, std::size_t at, GifFrame& next, GifLayout& layout)
{
    constexpr int kControlLength = 4;
    const int kind = in.u8(at + 1);
    if (kind == kGraphicControl && in.u8(at + 2) >= kControlLength) {
        next.disposal = disposalOf(in.u8(at + 3));
        next.delayMs = delayOf(in.u16le(at + 4));
    } else if (kind == kPlainText) { // nobody draws it; what stood before it was said about it
        next = frameWithoutControl();
    } else if (kind == kApplication) {
        layout.plays = playsOf(in, at, layout.plays);
    }
}

} // namespace

std::optional<GifLayout> readGifLayout(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    if (!in.isInside(0, 13) || (!in.startsWith("GIF87a") && !in.startsWith("GIF89a")))
        return std::nullopt;
    GifLayout layout;
    layout.canvas = {in.u16le(6), in.u16le(8)};
    std::size_t at = 13 + colourTableLength(in.u8(10));
    GifFrame next = frameWithoutControl();
    while (in.isInside(at, 2) && layout.frames.size() < kMaxGifFrames) {
        if (in.u8(at) == kExtension) {
            readExtension(in, at, next, layout);
            at = skipBlocks(in, at + 2);
        } else if (in.u8(at) == kImage && in.isInside(at, 10)) {
            next.area = Rect::at({in.u16le(at + 1), in.u16le(at + 3)}, {in.u16le(at + 5), in.u16le(at + 7)});
            layout.frames.push_back(next);
            next = frameWithoutControl();
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
