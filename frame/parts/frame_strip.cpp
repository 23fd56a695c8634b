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

Size pictureSize(ComPtr<IVexPicture> picture)
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

TemporarySection::TemporarySection(ComPtr<IVexPicture> picture, const Rect& source) : m_picture(std::move(picture))
{
    if (m_picture)
        CoCreateInstance(kClsidImage, nullptr, CLSCTX_INPROC_SERVER, iidOf<IVexImageBase>(), m_section.putVoid());
    if (!m_section)
        return;
    SkinRect rect = toSkinRect(source);
    m_section->put_ImageObj(m_picture.get());
    m_section->put_rect(&rect);
    m_section->BuildPerPixImage();
}

TemporarySection::~TemporarySection()
{
    if (m_section)
        m_section->put_ImageObj(nullptr);
}

void TemporarySection::draw(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_section)
        m_section->RenderDraw(&dc, toSkinRect(rect), 0, &drawn);
}

void TemporarySection::draw(const DcPainter& painter, const Rect& rect) const
{
    if (m_section)
        painter.drawSection(*m_section, rect);
}

} // namespace morvane
