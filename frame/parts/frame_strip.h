// A picture file with one frame per state, drawn frame by frame.
#pragma once

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "frame/parts/frame_strip_logic.h"
#include "host/host.h"

#include <string>

namespace morvane {

/// A picture loaded from a file and named with its path; null when it cannot be read or decoded.
ComPtr<IVexPicture> loadPicture(BSTR path);

/// In pixels; empty for null.
Size pictureSize(IVexPicture* picture);

/// An image section that shows a part of a picture, made for one drawing; its maker detaches the picture again. Null when
/// the framework cannot make one.
ComPtr<IVexImageBase> temporarySection(IVexPicture& picture, const Rect& source);

class FrameStrip {
public:
    /// Loads the file in place of the former one. On failure the strip is empty, though it keeps the path.
    bool load(BSTR path, int frameCount, bool isHorizontal);

    explicit operator bool() const noexcept { return static_cast<bool>(m_picture); }
    const std::wstring& path() const noexcept { return m_path; }

    Size frameSize() const { return morvane::frameSize(geometry()); }
    /// The whole strip's width, all frames.
    int fullWidth() const { return pictureSize(m_picture.get()).width; }

    void draw(IVexRenderDC& dc, const Rect& rect, int state) const;

private:
    FrameStripGeometry geometry() const { return {pictureSize(m_picture.get()), m_frameCount, m_isHorizontal}; }

    ComPtr<IVexPicture> m_picture;
    std::wstring m_path;
    short m_frameCount = 0;
    bool m_isHorizontal = true;
};

} // namespace morvane
