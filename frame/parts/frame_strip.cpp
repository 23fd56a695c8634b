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

ComPtr<IVexImageBase> temporarySection(IVexPicture& picture, const Rect& source)
{
    ComPtr<IVexImageBase> section;
    CoCreateInstance(kClsidImage, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexImageBase>(), section.putVoid());
    if (section) {
        SkinRect rect = toSkinRect(source);
        section->put_ImageObj(&picture);
        section->put_rect(&rect);
        section->BuildPerPixImage();
    }
    return section;
}

void FrameStrip::draw(IVexRenderDC& dc, const Rect& rect, int state) const
{
    if (!m_picture)
        return;
    const ComPtr<IVexImageBase> section = temporarySection(*m_picture, frameRect(geometry(), state));
    if (!section)
        return;
    VARIANT_BOOL drawn = VARIANT_FALSE;
    section->RenderDraw(&dc, toSkinRect(rect), 0, &drawn);
    section->put_ImageObj(nullptr); // the picture outlives the section
}

} // namespace morvane
