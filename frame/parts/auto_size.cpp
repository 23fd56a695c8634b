#include "frame/parts/auto_size.h"

#include "base/rounding.h"
#include "frame/parts/auto_size_logic.h"
#include "frame/platform/handles.h"
#include "host/geometry.h"
#include "host/host_classes.h"

namespace morvane {

namespace {

constexpr short kAlignNear = 0;
constexpr short kAlignFar = 2;
constexpr long kStyleFormat = -1; // the style's own drawing flags

class StyleMeasure final : public TextMeasure {
public:
    StyleMeasure(IVexTextStyle& style, const Bstr& text) : m_style(style), m_text(text) {}
    std::optional<Size> measure(Size within) override { return measureText(m_style, m_text, within); }

private:
    IVexTextStyle& m_style;
    const Bstr& m_text;
};

class NoMeasure final : public TextMeasure {
public:
    std::optional<Size> measure(Size) override { return std::nullopt; }
};

void setPosition(IVexControlBase& inner, const VexPosition& record)
{
    ComPtr<IDispatch> object;
    CoCreateInstance(kClsidPosition, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid());
    const ComPtr<IVexPos> position = object.as<IVexPos>();
    if (!position)
        return;
    position->SetPosStruct(record);
    inner.SetPosition(position.get());
    inner.ResizeThis();
}

} // namespace

int alignedOffset(IVexTextStyle& style)
{
    short alignment = 0;
    short offset = 0;
    style.get_nHAlign(&alignment);
    if (alignment == kAlignNear)
        style.get_nLeftOffset(&offset);
    else if (alignment == kAlignFar)
        style.get_nRightOffset(&offset);
    return offset;
}

std::optional<Size> measureText(IVexTextStyle& style, const Bstr& text, Size within)
{
    const WindowDc screen(nullptr);
    const SkinRect available = toSkinRect(Rect::at({}, within));
    SkinRect extent{};
    VARIANT_BOOL measured = VARIANT_FALSE;
    const HRESULT status = style.DrawText(reinterpret_cast<std::int64_t>(screen.get()), text.get(), available,
                                          VARIANT_FALSE, kStyleFormat, &extent, &measured);
    if (FAILED(status) || measured == VARIANT_FALSE)
        return std::nullopt;
    return toRect(extent).size();
}

void AutoSize::declare(PropertyTable& table)
{
    const PropertyGroup group = table.group(L"AutoResize");
    group.style(m_enabled, L"IsEnableAutoSize", false);
    group.style(m_minHeight, L"MinTextHeight", 14); // pixels
    group.style(m_maxHeight, L"MaxTextHeight", 0);  // 0 means no limit
    group.style(m_minWidth, L"MinTextWidth", 0);
    group.style(m_maxWidth, L"MaxTextWidth", 100);
}

void AutoSize::apply(IVexControlBase& inner, const Rect& control, const Bstr& text, IVexTextStyle* style,
                     int besideText) const
{
    ComPtr<IVexPos> position;
    inner.GetPosition(position.put());
    if (!position)
        return;
    VexPosition record{};
    position->GetPosStruct(&record);

    AutoSizeRequest request;
    request.current = control.size();
    request.limits = {m_minWidth.value(), m_maxWidth.value(), m_minHeight.value(), m_maxHeight.value()};
    request.widthIsFixed = record.horzPos.nSpaceType == PHST_FASTNESS;
    request.storesWidth = record.horzPos.nSpaceType != PHST_RIGHTWIDTH;
    request.storedHeight = static_cast<int>(record.vertPos.nWidth_Height);
    request.textLength = static_cast<int>(text.view().size());
    request.hasTextStyle = style != nullptr;
    request.besideText = saturatingAdd(besideText, style ? alignedOffset(*style) : 0);

    NoMeasure nothing;
    std::optional<AutoSizeResult> result;
    if (style) {
        StyleMeasure measure(*style, text);
        result = autoSize(request, measure);
    } else {
        result = autoSize(request, nothing);
    }
    if (!result)
        return;
    record.vertPos.nWidth_Height = result->height;
    if (result->width)
        record.horzPos.nWidth_Height = *result->width;
    setPosition(inner, record);
}

} // namespace morvane
