// The one place where logical lengths (at 100 percent) become device pixels.
//
// Rectangles that reach drawing functions are device pixels already. What scales are the things a skin gives in pixels
// of its own: fixed borders and natural sizes of pictures, offsets of texts, fonts, focus rings.
#pragma once

#include "ambrel/pixels/nine_part.h"
#include "base/rounding.h"

#include <algorithm>

namespace ambrel {

/// In percent, 100 to 300.
class Scale {
public:
    constexpr Scale() = default;
    constexpr explicit Scale(int percent) : m_percent(std::clamp(percent, 100, 300)) {}

    constexpr int percent() const { return m_percent; }
    constexpr int operator()(int logical) const { return morvane::scaled(logical, m_percent, 100); }
    constexpr Size operator()(Size logical) const { return {(*this)(logical.width), (*this)(logical.height)}; }
    constexpr Borders operator()(const Borders& b) const
    {
        return {(*this)(b.left), (*this)(b.top), (*this)(b.right), (*this)(b.bottom)};
    }

    friend constexpr bool operator==(Scale, Scale) = default;

private:
    int m_percent = 100;
};

/// For what is measured before any device is known, such as text on a screen device context: the scale of the device
/// that was made or rescaled last.
Scale currentScale() noexcept;
void setCurrentScale(Scale scale) noexcept;

} // namespace ambrel
