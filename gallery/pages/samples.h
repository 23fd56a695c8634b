// What the pages share that show pictures, fills and texts by themselves.
#pragma once

#include "gallery/page.h"

namespace gallery {

/// A picture from the folder beside the program, with its forms for larger scales. Throws when it is missing.
ComPtr<IVexPicture> samplePicture(const wchar_t* file);

/// A section of the whole picture that stretches in every direction.
ComPtr<IVexImageBase> sectionOf(IVexPicture& picture);

/// A surface on whose squares one sees what is transparent.
ComPtr<IUIFormObj> board(Scene& scene, IVexControlBase& page, const Rect& place);

/// An object that shows nothing but a section.
ComPtr<IUIFormObj> showSection(Scene& scene, IVexControlBase& parent, const Rect& place, IVexImageBase& section);

/// The small text below a sample.
void caption(Scene& scene, IVexControlBase& page, const Rect& sample, std::wstring_view text);

/// Places of equal size side by side, `gap` apart.
class Row {
public:
    Row(Point at, Size size, int gap) : m_next(Rect::at(at, size)), m_step(size.width + gap) {}
    Rect next()
    {
        const Rect place = m_next;
        m_next = m_next.shifted(m_step, 0);
        return place;
    }

private:
    Rect m_next;
    int m_step;
};

/// How a sample text is set, apart from what its style says.
struct SampleFont {
    const wchar_t* face = L"Tahoma";
    int points = 9;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruckOut = false;
};

/// A text style of its own, in the theme's text colour.
ComPtr<IVexTextStyle> sampleStyle(Scene& scene, const SampleFont& font = {});

/// An object that shows a text in a style and nothing else.
ComPtr<ICmdButton> showText(Scene& scene, IVexControlBase& parent, const Rect& place, std::wstring_view text,
                            IVexTextStyle& style);

/// The same on a surface of its own with a thin edge, which shows where the text may go.
ComPtr<ICmdButton> showTextBox(Scene& scene, IVexControlBase& page, const Rect& place, std::wstring_view text,
                               IVexTextStyle& style);

} // namespace gallery
