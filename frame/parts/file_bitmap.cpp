#include "frame/parts/file_bitmap.h"

#include <objidl.h>

#include <algorithm>

// The library's headers use min and max unqualified.
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace morvane {

namespace {

/// Keeps the 2-D graphics library running; loading files is rare, so nobody holds it for longer than one load.
class GdiplusSession {
public:
    GdiplusSession()
    {
        const Gdiplus::GdiplusStartupInput input;
        m_running = Gdiplus::GdiplusStartup(&m_token, &input, nullptr) == Gdiplus::Ok;
    }
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession()
    {
        if (m_running)
            Gdiplus::GdiplusShutdown(m_token);
    }
    bool isRunning() const { return m_running; }

private:
    ULONG_PTR m_token = 0;
    bool m_running = false;
};

} // namespace

UniqueBitmap loadFileBitmap(const wchar_t* path, COLORREF background)
{
    const GdiplusSession session;
    if (!path || !session.isRunning())
        return {};
    Gdiplus::Bitmap image(path);
    HBITMAP bitmap = nullptr;
    if (image.GetLastStatus() != Gdiplus::Ok || image.GetHBITMAP(Gdiplus::Color(background), &bitmap) != Gdiplus::Ok)
        return {};
    return UniqueBitmap(bitmap);
}

} // namespace morvane
