// The graphic that a control takes from a picture file with a frame per state.
#pragma once

#include "frame/parts/frame_strip.h"
#include "frame/parts/property_access.h"

#include <memory>

namespace morvane {

/// A layer over Captioned<> or one of its kind, for interfaces with SetGraphicsFilePath, GetGraphicsFilePath and
/// IsUpDownMode. The table of properties has a `graphic`.
template <class Base>
class StripGraphic : public Base {
public:
    /// The strip shows in place of the former one at once; on failure there is none, and the former place is kept.
    STDMETHODIMP SetGraphicsFilePath(BSTR path, short x, short y, short count,
                                     VARIANT_BOOL horizontal) noexcept override
    {
        return guarded([&] {
            if (!m_strip)
                m_strip = std::make_unique<FrameStrip>();
            if (!m_strip->load(path, count, horizontal == VARIANT_TRUE))
                return S_FALSE;
            this->m_properties.graphic.x.set(x);
            this->m_properties.graphic.y.set(y);
            this->fitToText();
            this->redraw();
            return S_OK;
        });
    }

    STDMETHODIMP GetGraphicsFilePath(BSTR* result) noexcept override
    {
        return returning(result, [&] { return m_strip ? Bstr(m_strip->path()) : Bstr(L""); });
    }

    STDMETHODIMP IsUpDownMode(VARIANT_BOOL* result) noexcept override
    {
        return fetch(this->m_properties.graphic.isStacked, result);
    }

protected:
    bool hasStrip() const { return m_strip && *m_strip; }
    /// There once has been one when this is called; it draws nothing when it has no picture any more.
    const FrameStrip& strip() const { return *m_strip; }

private:
    std::unique_ptr<FrameStrip> m_strip; // made when the first file is given
};

} // namespace morvane
