#include "gallery/picture_file.h"

#include "frame/com/com_ptr.h"

#include <wincodec.h>

namespace gallery {

using morvane::ComPtr;

namespace {

bool encode(IWICImagingFactory& factory, const Picture& picture, IWICStream& stream)
{
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    if (FAILED(factory.CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put())) ||
        FAILED(encoder->Initialize(&stream, WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(frame.put(), nullptr)) || FAILED(frame->Initialize(nullptr)))
        return false;
    const UINT width = static_cast<UINT>(picture.size.width);
    const UINT height = static_cast<UINT>(picture.size.height);
    // Three bytes a pixel: a window has nothing behind it.
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width) * height * 3);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        for (std::size_t channel = 0; channel < 3; ++channel)
            bytes[i * 3 + channel] = static_cast<std::uint8_t>(picture.pixels[i] >> (8 * channel));
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    return SUCCEEDED(frame->SetSize(width, height)) && SUCCEEDED(frame->SetPixelFormat(&format)) &&
           SUCCEEDED(frame->WritePixels(height, width * 3, static_cast<UINT>(bytes.size()), bytes.data())) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

} // namespace

bool writePng(const Picture& picture, const std::wstring& path)
{
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICStream> stream;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                morvane::iidOf<IWICImagingFactory>(), factory.putVoid())) ||
        FAILED(factory->CreateStream(stream.put())) ||
        FAILED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)))
        return false;
    return encode(*factory, picture, *stream);
}

} // namespace gallery
