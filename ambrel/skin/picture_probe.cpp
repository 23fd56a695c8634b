#include "ambrel/skin/picture_probe.h"

#include "ambrel/skin/byte_reader.h"
#include "ambrel/skin/limits.h"

#include <algorithm>

namespace ambrel::skin {

namespace {

using namespace std::string_view_literals;

constexpr auto kPngSignature = "\x89PNG\r\n\x1A\n"sv;

/// One probing: the bytes and the name to complain about.
class Probe {
public:
    Probe(std::span<const std::uint8_t> bytes, const std::string& name) : m_bytes(bytes), m_name(name) {}

    PictureInfo run()
    {
        if (starts(kPngSignature))
            return checked(png());
        if (starts("GIF87a"sv) || starts("GIF89a"sv))
            return checked(gif());
        if (starts("\xFF\xD8\xFF"sv))
            return checked(jpeg());
        if (starts("BM"sv))
            return checked(bmp());
        if (starts("\0\0\1\0"sv) || starts("\0\0\2\0"sv))
            return checked(icon());
        if (starts("SPP"sv))
            failFile(Code::UnknownPicture, m_name, "protected pictures are not read: save the picture as PNG");
        failFile(Code::UnknownPicture, m_name, "this is no PNG, BMP, JPEG, GIF or icon");
    }

private:
    bool starts(std::string_view signature) const
    {
        return m_bytes.has(0, signature.size()) && m_bytes.text(0, signature.size()) == signature;
    }

    [[noreturn]] void broken(const char* what) const { failFile(Code::BrokenPicture, m_name, what); }

    PictureInfo checked(PictureInfo info) const
    {
        if (m_bytes.overran())
            broken("the picture is cut off");
        checkSize(info.width, info.height, info.frames);
        return info;
    }

    void checkSize(std::int64_t width, std::int64_t height, std::int64_t frames) const
    {
        if (width < 1 || height < 1 || frames < 1)
            broken("the picture is empty");
        if (width > kPictureSide || height > kPictureSide || frames > kPictureFrames ||
            width * height * frames > kPicturePixels)
            failFile(Code::PictureTooLarge, m_name,
                     "the picture is too large: " + std::to_string(width) + " x " + std::to_string(height) + ", " +
                         std::to_string(frames) + " frame(s)");
    }

    // Sizes are unsigned in most formats; beyond the limit they only need to stay beyond it.
    static std::int32_t size(std::uint32_t value)
    {
        return static_cast<std::int32_t>(std::min<std::uint32_t>(value, kPictureSide + 1));
    }

    PictureInfo png() const
    {
        PictureInfo info{PictureKind::Png, 0, 0, 1};
        bool hasData = false;
        bool first = true;
        for (std::uint64_t at = kPngSignature.size();;) {
            const std::uint32_t length = m_bytes.big32(at);
            const std::string_view type = m_bytes.text(at + 4, 4);
            if (!m_bytes.has(at + 8, std::uint64_t(length) + 4))
                broken("the picture is cut off");
            if (first != (type == "IHDR") || (first && length != 13))
                broken("the picture's header is not where it belongs");
            if (first)
                info = {PictureKind::Png, size(m_bytes.big32(at + 8)), size(m_bytes.big32(at + 12)), 1};
            first = false;
            hasData = hasData || type == "IDAT";
            if (type == "IEND")
                break;
            at += std::uint64_t(length) + 12;
        }
        if (!hasData)
            broken("the picture has no pixels");
        return info;
    }

    PictureInfo gif() const
    {
        const std::int32_t width = size(m_bytes.little16(6));
        const std::int32_t height = size(m_bytes.little16(8));
        std::int32_t frames = 0;
        std::uint64_t at = 13 + colourTableSize(m_bytes.byteAt(10));
        for (;;) {
            const std::uint32_t block = m_bytes.byteAt(at);
            if (block == 0x3B)
                break;
            if (block == 0x21) {
                at = endOfSubBlocks(at + 2);
            } else if (block == 0x2C) {
                checkGifFrame(at, width, height);
                at = endOfSubBlocks(at + 11 + colourTableSize(m_bytes.byteAt(at + 9)));
                if (++frames > kPictureFrames)
                    checkSize(width, height, frames);
            } else {
                broken(m_bytes.overran() ? "the picture is cut off" : "the picture has an unknown block");
            }
        }
        return {PictureKind::Gif, width, height, frames};
    }

    static std::uint64_t colourTableSize(std::uint32_t flags)
    {
        return (flags & 0x80) != 0 ? std::uint64_t(3) << ((flags & 7) + 1) : 0;
    }

    void checkGifFrame(std::uint64_t at, std::int32_t width, std::int32_t height) const
    {
        const std::int64_t right = std::int64_t(m_bytes.little16(at + 1)) + m_bytes.little16(at + 5);
        const std::int64_t bottom = std::int64_t(m_bytes.little16(at + 3)) + m_bytes.little16(at + 7);
        if (right > width || bottom > height)
            broken("a frame reaches beyond the picture");
    }

    std::uint64_t endOfSubBlocks(std::uint64_t at) const
    {
        while (const std::uint32_t length = m_bytes.byteAt(at))
            at += length + 1;
        if (m_bytes.overran())
            broken("the picture is cut off");
        return at + 1;
    }

    PictureInfo jpeg() const
    {
        for (std::uint64_t at = 2;;) {
            while (m_bytes.byteAt(at) == 0xFF && m_bytes.byteAt(at + 1) == 0xFF)
                ++at; // padding
            const std::uint32_t marker = m_bytes.byteAt(at + 1);
            if (m_bytes.byteAt(at) != 0xFF || marker == 0xD9 || marker == 0xDA)
                broken("the picture has no frame header");
            const std::uint32_t length = m_bytes.big16(at + 2);
            if (length < 2 || !m_bytes.has(at + 2, length))
                broken("the picture is cut off");
            const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
            if (isFrame) {
                const std::string_view rest = m_bytes.text(at, m_bytes.size() - at);
                if (rest.find("\xFF\xDA"sv) == std::string_view::npos)
                    broken("the picture has no pixels");
                return {PictureKind::Jpeg, size(m_bytes.big16(at + 7)), size(m_bytes.big16(at + 5)), 1};
            }
            at += 2 + length;
        }
    }

    PictureInfo bmp() const
    {
        const std::uint32_t pixels = m_bytes.little32(10);
        const PictureInfo info = bitmapAt(14);
        const std::uint32_t compression = m_bytes.little32(14) == 12 ? 0 : m_bytes.little32(30);
        const std::uint32_t bits = m_bytes.little32(14) == 12 ? m_bytes.little16(24) : m_bytes.little16(28);
        const std::uint64_t stride = (std::uint64_t(info.width) * bits + 31) / 32 * 4;
        const bool isPlain = compression == 0 || compression == 3;
        const std::uint64_t needed = isPlain ? stride * std::uint64_t(info.height) : 1;
        if (pixels < 26 || !m_bytes.has(pixels, needed))
            broken("the picture is cut off");
        return {PictureKind::Bmp, info.width, info.height, 1};
    }

    // The sizes of the bitmap header at an offset; also icons hold such headers, with twice the height.
    PictureInfo bitmapAt(std::uint64_t at) const
    {
        const std::uint32_t headerSize = m_bytes.little32(at);
        if (headerSize != 12 && (headerSize < 40 || headerSize > 124))
            broken("the bitmap's header is unknown");
        const std::uint32_t bits = headerSize == 12 ? m_bytes.little16(at + 10) : m_bytes.little16(at + 14);
        if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32)
            broken("the bitmap's depth is unknown");
        if (headerSize == 12)
            return {PictureKind::Bmp, size(m_bytes.little16(at + 4)), size(m_bytes.little16(at + 6)), 1};
        const std::uint32_t height = m_bytes.little32(at + 8);
        const bool topDown = (height & 0x80000000u) != 0;
        return {PictureKind::Bmp, size(m_bytes.little32(at + 4)), size(topDown ? 0u - height : height), 1};
    }

    PictureInfo icon() const
    {
        const std::uint32_t count = m_bytes.little16(4);
        PictureInfo info{PictureKind::Icon, 0, 0, static_cast<std::int32_t>(count)};
        if (count == 0 || count > 64)
            broken("an icon has 1 to 64 images");
        for (std::uint32_t i = 0; i < count; ++i) {
            const PictureInfo image = iconImage(6 + std::uint64_t(16) * i);
            if (image.width * image.height > info.width * info.height) {
                info.width = image.width;
                info.height = image.height;
            }
        }
        return info;
    }

    PictureInfo iconImage(std::uint64_t at) const
    {
        const std::uint64_t length = m_bytes.little32(at + 8);
        const std::uint64_t offset = m_bytes.little32(at + 12);
        if (length < 40 || !m_bytes.has(offset, length))
            broken("the icon is cut off");
        if (m_bytes.text(offset, kPngSignature.size()) == kPngSignature)
            return Probe(m_bytes.part(offset, length), m_name).run();
        PictureInfo image = bitmapAt(offset);
        image.height /= 2; // the picture and its mask
        checkSize(image.width, image.height, 1);
        const std::uint64_t bits = m_bytes.little16(offset + 14);
        if ((std::uint64_t(image.width) * bits + 31) / 32 * 4 * std::uint64_t(image.height) > length)
            broken("an image of the icon is cut off");
        return image;
    }

    ByteReader m_bytes;
    const std::string& m_name;
};

} // namespace

Outcome<PictureInfo> probePicture(std::span<const std::uint8_t> bytes, const std::string& name)
{
    return outcomeOf([&] { return Probe(bytes, name).run(); });
}

} // namespace ambrel::skin
