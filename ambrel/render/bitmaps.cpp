#include "ambrel/render/bitmaps.h"

#include "ambrel/render/dib_surface.h"

#include <algorithm>

namespace ambrel {

namespace {

bool hasAlpha(ConstPixelView pixels)
{
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            if (alphaOf(pixels.at(x, y)) != 0)
                return true;
    return false;
}

/// Colours of pixels that claim to be premultiplied, held at their alpha.
void limitToAlpha(PixelView pixels)
{
    for (int y = 0; y < pixels.height; ++y) {
        for (Pixel* p = pixels.row(y); p != pixels.row(y) + pixels.width; ++p) {
            const int a = alphaOf(*p);
            *p = packPixel(a, std::min(redOf(*p), a), std::min(greenOf(*p), a), std::min(blueOf(*p), a));
        }
    }
}

void premultiply(PixelView pixels)
{
    for (int y = 0; y < pixels.height; ++y)
        for (Pixel* p = pixels.row(y); p != pixels.row(y) + pixels.width; ++p)
            *p = premultiplied(alphaOf(*p), redOf(*p), greenOf(*p), blueOf(*p));
}

void makeOpaque(PixelView pixels)
{
    makeOpaque(Canvas{pixels, {}, pixels.bounds()}, pixels.bounds());
}

/// The bits as the system gives them, alpha undefined unless the bitmap has 32 bits.
Surface rawPixels(HBITMAP bitmap)
{
    BITMAP header{};
    if (!bitmap || GetObjectW(bitmap, sizeof header, &header) == 0)
        return {};
    Surface surface({static_cast<int>(header.bmWidth), static_cast<int>(std::abs(header.bmHeight))});
    if (surface.isEmpty())
        return {};
    BITMAPINFO info = bitmapInfoOf(surface.size());
    const morvane::UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    const auto rows = static_cast<UINT>(surface.size().height);
    if (GetDIBits(dc.get(), bitmap, 0, rows, surface.view().data, &info, DIB_RGB_COLORS) == 0)
        return {};
    return surface;
}

int depthOf(HBITMAP bitmap)
{
    BITMAP header{};
    return GetObjectW(bitmap, sizeof header, &header) != 0 ? header.bmBitsPixel : 0;
}

/// Transparent where the mask is white.
void applyMask(PixelView pixels, ConstPixelView mask)
{
    const int height = std::min(pixels.height, mask.height);
    const int width = std::min(pixels.width, mask.width);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if ((mask.at(x, y) & 0xFFFFFF) != 0)
                pixels.row(y)[x] = 0;
}

} // namespace

Surface surfaceOfBitmap(HBITMAP bitmap)
{
    Surface surface = rawPixels(bitmap);
    if (surface.isEmpty())
        return surface;
    if (depthOf(bitmap) == 32 && hasAlpha(surface.view()))
        limitToAlpha(surface.view());
    else
        makeOpaque(surface.view());
    return surface;
}

Surface surfaceOfIcon(HICON icon)
{
    ICONINFO info{};
    if (!icon || !GetIconInfo(icon, &info))
        return {};
    const morvane::UniqueBitmap colour(info.hbmColor);
    const morvane::UniqueBitmap mask(info.hbmMask);
    Surface maskPixels = rawPixels(mask.get());
    if (!colour) { // black and white: the mask above the picture
        const int half = maskPixels.size().height / 2;
        Surface surface({maskPixels.size().width, half});
        const ConstPixelView lower = maskPixels.view().part({0, half, maskPixels.size().width, 2 * half});
        copyImage({surface.view(), {}, surface.view().bounds()}, {}, lower);
        makeOpaque(surface.view());
        applyMask(surface.view(), maskPixels.view());
        return surface;
    }
    Surface surface = rawPixels(colour.get());
    if (surface.isEmpty())
        return surface;
    if (depthOf(colour.get()) == 32 && hasAlpha(surface.view())) {
        premultiply(surface.view());
    } else {
        makeOpaque(surface.view());
        applyMask(surface.view(), maskPixels.view());
    }
    return surface;
}

morvane::UniqueBitmap bitmapOf(ConstPixelView pixels) noexcept
{
    DibSurface copy({pixels.width, pixels.height});
    if (copy.isEmpty())
        return {};
    copyImage(copy.canvas(), {}, pixels);
    return morvane::UniqueBitmap(copy.detachBitmap());
}

} // namespace ambrel
