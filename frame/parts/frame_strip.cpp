#include "frame/parts/frame_strip.h"

#include "host/geometry.h"
#include "host/host_classes.h"

namespace morvane {

namespace {
constexpr std::size_t kLongestPath = 259;
}

ComPtr<IVexPicture> loadPicture(BSTR path)
{
    ComPtr<IVexPicture> picture;
    CoCreateInstance(kClsidPicture, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexPicture>(), picture.putVoid());
    if (!picture)
        return nullptr;
    picture->SetName(path);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (FAILED(picture->ImportFile(path, &loaded)) || loaded == VARIANT_FALSE)
        return nullptr;
    return picture;
}

Size pictureSize(IVexPicture* picture)
{
    short width = 0;
    short height = 0;
    if (picture) {
        picture->GetWidth(&width);
        picture->GetHeight(&height);
    }
    return {width, height};
}

bool FrameStrip::load(BSTR path, int frameCount, bool isHorizontal)
{
    m_path = viewOf(path).substr(0, kLongestPath);
    m_picture.reset();
    m_picture = loadPicture(path);
    if (!m_picture)
        return false;
    m_frameCount = static_cast<short>(frameCount);
    m_isHorizontal = isHorizontal;
    return true;
}

void FrameStrip::draw(IVexRenderDC& dc, const Rect& rect, int state) const
{
    ComPtr<IVexImageBase> image;
    CoCreateInstance(kClsidImage, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexImageBase>(), image.putVoid());
    if (!image || !m_picture)
        return;
    SkinRect source = toSkinRect(frameRect(geometry(), state));
    image->put_ImageObj(m_picture.get());
    image->put_rect(&source);
    image->BuildPerPixImage();
    VARIANT_BOOL drawn = VARIANT_FALSE;
    image->RenderDraw(&dc, toSkinRect(rect), 0, &drawn);
    image->put_ImageObj(nullptr); // the picture outlives the temporary section
}

} // namespace morvane
