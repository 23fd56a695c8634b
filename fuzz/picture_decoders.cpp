// Any bytes as a picture for the parts of decoding that are our own: what kind it is and how large, an animation's
// layout and composition, the pixels of Truevision and bitmap files, cursors as icons.
#include "ambrel/pixels/bmp.h"
#include "ambrel/pixels/gif_layout.h"
#include "ambrel/pixels/image_header.h"
#include "ambrel/pixels/tga.h"
#include "fuzz/fuzz.h"

#include <algorithm>

namespace {

using namespace ambrel;

/// Frames as a decoder would give them: of the size that the layout says, cut to what this test can afford.
void compose(const GifLayout& layout)
{
    constexpr int kSide = 64;
    constexpr std::size_t kFrames = 16;
    GifComposer composer({std::min(layout.canvas.width, kSide), std::min(layout.canvas.height, kSide)});
    for (std::size_t i = 0; i < std::min(layout.frames.size(), kFrames); ++i) {
        const GifFrame& frame = layout.frames[i];
        const Surface pixels({std::min(frame.area.width(), kSide), std::min(frame.area.height(), kSide)});
        composer.add(frame, pixels.view());
    }
}

/// A few bytes must not take much memory: a run of 128 pixels takes two bytes, as does one of 255 in
/// bitmap files.
void expectHeld(const Surface& surface, std::span<const std::uint8_t> bytes, Size told, std::size_t pixelsPerByte)
{
    if (surface.isEmpty())
        return;
    fuzz::require(surface.size() == told, "a decoded picture has the size that its header tells");
    const auto pixels =
        static_cast<std::size_t>(surface.size().width) * static_cast<std::size_t>(surface.size().height);
    fuzz::require(pixels <= bytes.size() * pixelsPerByte, "the bytes can hold the pixels");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::uint8_t> bytes(data, size);
    const ImageHeader header = readImageHeader(bytes);
    fuzz::require(header.size.width >= 0 && header.size.height >= 0, "a size is not negative");
    if (const auto layout = readGifLayout(bytes)) {
        fuzz::require(layout->frames.size() <= kMaxGifFrames, "the frames keep their limit");
        fuzz::require(layout->plays >= 0 && layout->plays <= 0x10000, "an animation is shown a number of times");
        for (const GifFrame& frame : layout->frames)
            fuzz::require(frame.delayMs > 0 && frame.area.left >= 0 && frame.area.top >= 0,
                          "a frame has a place and time");
        compose(*layout);
    }
    if (header.format == ImageFormat::Ico) {
        fuzz::require(readImageHeader(asIconFile(bytes)).size == header.size, "a cursor has the pictures of its icon");
        fuzz::require(bestIconImage(asIconFile(bytes)) >= 0 && cursorHotSpot(bytes).x >= 0, "there is a best picture");
    }
    fuzz::require((header.format == ImageFormat::Tga) <= tgaSize(bytes).has_value(), "the header is read alike");
    const Surface pixels = header.format == ImageFormat::Bmp ? decodeBmp(bytes) : decodeTga(bytes);
    const bool isOurs = header.format == ImageFormat::Tga || header.format == ImageFormat::Bmp;
    expectHeld(pixels, bytes, isOurs ? header.size : pixels.size(), header.format == ImageFormat::Bmp ? 128 : 64);
    return 0;
}
