// What controls with a text of their own have in common: their table of properties, the methods about text and tool
// tip that their interfaces have alike, and a size that can follow the text.
#pragma once

#include "frame/control.h"
#include "frame/parts/auto_size.h"
#include "frame/parts/caption.h"
#include "frame/parts/property_access.h"

#include <array>

namespace morvane {

/// A layer between Control<> and a control's class. `Properties` is the control's table; it has a `caption` and an
/// `autoSize`.
template <class Interface, class Properties>
class Captioned : public Control<Interface> {
public:
    STDMETHODIMP GetText(BSTR* result) noexcept override { return fetch(m_properties.caption.text, result); }
    STDMETHODIMP SetTooltip(BSTR text) noexcept override { return store(m_properties.caption.toolTip, text); }
    STDMETHODIMP GetTooltip(BSTR* result) noexcept override { return fetch(m_properties.caption.toolTip, result); }
    STDMETHODIMP IsShowText(VARIANT_BOOL* result) noexcept override
    {
        return fetch(m_properties.caption.isShown, result);
    }

protected:
    /// The numbers by whose change a control knows that it no longer fits, each control's own.
    using FittedTo = std::array<int, 3>;

    /// `never` are numbers that the control cannot have: the first change of its size then fits it in any case.
    explicit Captioned(const FittedTo& never = {}) : m_fitted(never) {}

    virtual FittedTo fittedTo(Size control, int textLength) = 0;
    /// What measures the text.
    virtual const TextStyleProp& measuringStyle() = 0;
    /// The room that graphic, box and shifts take beside the text, in pixels.
    virtual int widthBesideText() = 0;

    /// Fits the control's size to its text where the skin asks for it.
    void fitToText(Fit when = Fit::Always)
    {
        IVexControlBase* const inner = this->innerBase();
        if (!inner || !m_properties.autoSize.isEnabled())
            return;
        const Rect control = this->ownRect();
        const Bstr text = m_properties.caption.text.value();
        const FittedTo now = fittedTo(control.size(), static_cast<int>(text.view().size()));
        if (when == Fit::WhereChanged && now == m_fitted)
            return;
        m_fitted = now;
        const ComPtr<IVexTextStyle> style = measuringStyle().style();
        m_properties.autoSize.apply(*inner, control, text, style.get(), widthBesideText());
    }

    /// Sets the text and lets the control fit itself before it is painted.
    template <class Redraw>
    HRESULT changeText(BSTR text, Redraw redraw) noexcept
    {
        return guarded([&] {
            m_properties.caption.text.set(text);
            fitToText();
            redraw();
        });
    }

    void declareProperties(PropertyTable& table) override { m_properties.declare(table); }
    Bstr toolTipText() const override { return m_properties.caption.toolTip.value(); }

    Handled onSize() override
    {
        fitToText(Fit::WhereChanged);
        return Handled::No;
    }

    Properties m_properties;

private:
    FittedTo m_fitted;
};

} // namespace morvane
