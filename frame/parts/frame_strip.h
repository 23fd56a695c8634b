// A picture file with one frame per state, drawn frame by frame.
#pragma once

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "frame/parts/dc_drawing.h"
#include "frame/parts/frame_strip_logic.h"
#include "host/host.h"

#include <string>

namespace morvane {

/// A picture loaded from a file and named with its path; null when it cannot be read or decoded.
ComPtr<IVexPicture> loadPicture(BSTR path);

/// In pixels; empty for null. The picture is held while it is asked: its owner may replace it meanwhile.
Size pictureSize(ComPtr<IVexPicture> picture);

/// An image section that shows a part of a picture for the length of one drawing.
class TemporarySection {
public:
    TemporarySection(ComPtr<IVexPicture> picture, const Rect& source);
    /// Shows the whole picture.
    explicit TemporarySection(const ComPtr<IVexPicture>& picture)
        : TemporarySection(picture, Rect::at({}, pictureSize(picture)))
    {
    }
    TemporarySection(const TemporarySection&) = delete;
    TemporarySection& operator=(const TemporarySection&) = delete;
    ~TemporarySection();

    // Nothing is drawn when the framework could not make a section.
    void draw(IVexRenderDC& dc, const Rect& rect) const;
    void draw(const DcPainter& painter, const Rect& rect) const;

private:
    ComPtr<IVexPicture> m_picture; // the control may have another one by the end of the drawing
    ComPtr<IVexImageBase> m_section;
};

class FrameStrip {
public:
    /// Loads the file in place of the former one. On failure the strip is empty, though it keeps the path.
    bool load(BSTR path, int frameCount, bool isHorizontal);

    explicit operator bool() const noexcept { return static_cast<bool>(m_picture); }
    const std::wstring& path() const noexcept { return m_path; }

    Size frameSize() const { return morvane::frameSize(geometry()); }
    /// The whole strip's width, all frames.
    int fullWidth() const { return pictureSize(m_picture).width; }

    /// Draws the frame of a state on a render device or, through a DcPainter, on a device context.
    template <class Target>
    void draw(Target& target, const Rect& rect, int state) const
    {
        if (const ComPtr<IVexPicture> picture = m_picture)
            TemporarySection(picture, frameRect(geometry(), state)).draw(target, rect);
    }

private:
    FrameStripGeometry geometry() const { return {pictureSize(m_picture), m_frameCount, m_isHorizontal}; }

    ComPtr<IVexPicture> m_picture;
    std::wstring m_path;
    short m_frameCount = 0;
    bool m_isHorizontal = true;
};

} // namespace morvane
