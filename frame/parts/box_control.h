// What check boxes and radio boxes have in common: a box beside a text, a number that the application keeps with it.
#pragma once

#include "frame/parts/captioned.h"

#include <cstdint>

namespace morvane {

/// A layer between Captioned<> and the class of a box. Its size follows its own rectangle and the text's length.
template <class Interface, class Properties>
class BoxControl : public Captioned<Interface, Properties> {
public:
    STDMETHODIMP SetData(std::int64_t data) noexcept override
    {
        m_data = data;
        return S_OK;
    }

    STDMETHODIMP GetData(std::int64_t* result) noexcept override
    {
        return returning(result, [&] { return m_data; });
    }

protected:
    using typename Captioned<Interface, Properties>::FittedTo;

    BoxControl() : Captioned<Interface, Properties>({-1, -1, 0}) {}

    FittedTo fittedTo(Size control, int textLength) override { return {control.width, control.height, textLength}; }

    // A box shows no focus of its own; the mark around it is the framework's.
    Handled onSetFocus() override { return Handled::No; }
    Handled onKillFocus() override { return Handled::No; }

private:
    std::int64_t m_data = 0; // the application's
};

} // namespace morvane
