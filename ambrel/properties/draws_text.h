// How a text style of this runtime draws for the text-style properties: without a copy of the text.
#pragma once

#include "host/host.h"

#include <string_view>

namespace ambrel {

/// Implemented by text styles beside IVexTextStyle, asked for with kIidDrawsText.
struct DrawsText : IUnknown {
    /// As IVexTextStyle::RenderDrawText with the style's own format and nothing to measure.
    virtual HRESULT renderText(IVexRenderDC& dc, const SkinRect& rect, std::wstring_view text,
                               VARIANT_BOOL& drawn) noexcept = 0;
    /// As IVexTextStyle::DrawText in the same way.
    virtual HRESULT drawTextOn(hyper dc, const SkinRect& rect, std::wstring_view text,
                               VARIANT_BOOL& drawn) noexcept = 0;
};

inline constexpr IID kIidDrawsText = {0x2C94E07B, 0x51D8, 0x4F3A, {0xA6, 0x0E, 0x83, 0xB7, 0x19, 0xD4, 0x6C, 0x25}};

} // namespace ambrel
