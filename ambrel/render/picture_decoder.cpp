#include "ambrel/render/picture_decoder.h"

#include "ambrel/pixels/bmp.h"
#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/draw.h"
#include "ambrel/pixels/gif_layout.h"
#include "ambrel/pixels/tga.h"
#include "frame/com/com_ptr.h"
#include "frame/platform/handles.h"

#include <wincodec.h>

namespace ambrel {

namespace {

using morvane::ComPtr;

ComPtr<IWICImagingFactory> makeFactory()
{
    ComPtr<IWICImagingFactory> factory;
    CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory, factory.putVoid());
    return factory;
}

const GUID* containerOf(ImageFormat format)
{
    switch (format) {
    case ImageFormat::Png:
        return &GUID_ContainerFormatPng;
    case ImageFormat::Jpeg:
        return &GUID_ContainerFormatJpeg;
    case ImageFormat::Gif:
        return &GUID_ContainerFormatGif;
    case ImageFormat::Ico:
        return &GUID_ContainerFormatIco;
    default:
        return nullptr;
    }
}

/// The platform's decoder over the bytes, which stay borrowed. The bytes must outlive it.
ComPtr<IWICBitmapDecoder> openDecoder(IWICImagingFactory* factory, std::span<const std::uint8_t> bytes,
                                      ImageFormat format)
{
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapDecoder> decoder;
    if (FAILED(factory->CreateStream(stream.put())) ||
        FAILED(stream->InitializeFromMemory(const_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()))) ||
        FAILED(factory->CreateDecoder(*containerOf(format), nullptr, decoder.put())) ||
        FAILED(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand)))
        return nullptr;
    return decoder;
}

/// One frame as premultiplied pixels; empty when it fails.
Surface pixelsOf(IWICImagingFactory* factory, IWICBitmapSource* source)
{
    UINT width = 0;
    UINT height = 0;
    ComPtr<IWICFormatConverter> converter;
    if (FAILED(source->GetSize(&width, &height)) || width > Surface::kMaxSide || height > Surface::kMaxSide)
        return {};
    Surface surface({static_cast<int>(width), static_cast<int>(height)});
    if (surface.isEmpty() || FAILED(factory->CreateFormatConverter(converter.put())) ||
        FAILED(converter->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom)))
        return {};
    const UINT stride = width * sizeof(Pixel);
    auto* bits = reinterpret_cast<BYTE*>(surface.view().data);
    if (FAILED(converter->CopyPixels(nullptr, stride, stride * height, bits)))
        return {};
    return surface;
}

Surface frameOf(IWICImagingFactory* factory, IWICBitmapDecoder* decoder, UINT index)
{
    ComPtr<IWICBitmapFrameDecode> frame;
    return SUCCEEDED(decoder->GetFrame(index, frame.put())) ? pixelsOf(factory, frame.get()) : Surface();
}

/// Puts an animation's frames onto its canvas, as they are seen.
void decodeAnimation(IWICImagingFactory* factory, IWICBitmapDecoder* decoder, const GifLayout& layout, UINT count,
                     DecodedPicture& picture)
{
    const std::int64_t framePixels = static_cast<std::int64_t>(layout.canvas.width) * layout.canvas.height;
    std::int64_t left = Surface::kMaxPixels;
    GifComposer composer(layout.canvas);
    for (UINT i = 0; i < count && i < layout.frames.size(); ++i) {
        const Surface pixels = frameOf(factory, decoder, i);
        left -= framePixels;
        if (pixels.isEmpty() || left < 0)
            break;
        picture.frames.push_back(composer.add(layout.frames[i], pixels.view()));
        picture.delaysMs.push_back(layout.frames[i].delayMs);
    }
}

} // namespace

std::optional<DecodedPicture> decodePicture(std::span<const std::uint8_t> bytes)
{
    const ImageHeader header = readImageHeader(bytes);
    if (header.format == ImageFormat::Unknown || header.size.isEmpty() || !Surface::isAllowed(header.size))
        return std::nullopt;
    const auto icon = header.format == ImageFormat::Ico ? asIconFile(bytes) : std::vector<std::uint8_t>();
    DecodedPicture picture;
    picture.format = header.format;
    if (header.format == ImageFormat::Tga || header.format == ImageFormat::Bmp) {
        picture.frames.push_back(header.format == ImageFormat::Tga ? decodeTga(bytes) : decodeBmp(bytes));
        picture.delaysMs.push_back(0);
    } else {
        const auto factory = makeFactory();
        const auto decoder = factory ? openDecoder(factory.get(), icon.empty() ? bytes : icon, header.format) : nullptr;
        UINT count = 0;
        if (!decoder || FAILED(decoder->GetFrameCount(&count)) || count == 0)
            return std::nullopt;
        const auto layout = header.format == ImageFormat::Gif ? readGifLayout(bytes) : std::nullopt;
        if (layout) {
            decodeAnimation(factory.get(), decoder.get(), *layout, count, picture);
            picture.plays = layout->plays;
        } else {
            // An icon file holds one picture in several sizes and depths.
            const UINT wanted = header.format == ImageFormat::Ico ? static_cast<UINT>(bestIconImage(bytes)) : 0;
            const UINT index = std::min(wanted, count - 1);
            picture.frames.push_back(frameOf(factory.get(), decoder.get(), index));
            picture.delaysMs.push_back(0);
        }
    }
    if (picture.frames.empty() || picture.frames.front().isEmpty())
        return std::nullopt;
    return picture;
}

namespace {

/// Fills an encoder's frame; the encoder wants straight alpha.
bool writeFrame(IWICBitmapEncoder* encoder, ConstPixelView pixels)
{
    ComPtr<IWICBitmapFrameEncode> frame;
    WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
    if (FAILED(encoder->CreateNewFrame(frame.put(), nullptr)) || FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(static_cast<UINT>(pixels.width), static_cast<UINT>(pixels.height))) ||
        FAILED(frame->SetPixelFormat(&format)))
        return false;
    Surface plain = withStraightAlpha(pixels);
    const auto stride = static_cast<UINT>(plain.size().width * sizeof(Pixel));
    const auto rows = static_cast<UINT>(plain.size().height);
    if (FAILED(frame->WritePixels(rows, stride, stride * rows, reinterpret_cast<BYTE*>(plain.view().data))))
        return false;
    return SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

std::vector<std::uint8_t> contentsOf(IStream* stream)
{
    HGLOBAL memory = nullptr;
    STATSTG status{};
    if (FAILED(GetHGlobalFromStream(stream, &memory)) || FAILED(stream->Stat(&status, STATFLAG_NONAME)))
        return {};
    const auto* bytes = static_cast<const std::uint8_t*>(GlobalLock(memory));
    if (!bytes)
        return {};
    std::vector<std::uint8_t> contents(bytes, bytes + status.cbSize.QuadPart);
    GlobalUnlock(memory);
    return contents;
}

} // namespace

std::vector<std::uint8_t> encodePng(ConstPixelView pixels)
{
    const auto factory = makeFactory();
    ComPtr<IStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    if (!factory || pixels.isEmpty() || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
        FAILED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put())) ||
        FAILED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) || !writeFrame(encoder.get(), pixels))
        return {};
    return contentsOf(stream.get());
}

std::optional<std::vector<std::uint8_t>> readFile(const std::wstring& path)
{
    constexpr std::int64_t kLargest = 256 * 1024 * 1024;
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return std::nullopt;
    const morvane::UniqueFile file(handle);
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size) || size.QuadPart > kLargest)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) || read != bytes.size())
        return std::nullopt;
    return bytes;
}

bool writeFile(const std::wstring& path, std::span<const std::uint8_t> bytes)
{
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const morvane::UniqueFile file(handle);
    DWORD written = 0;
    return WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

} // namespace ambrel
