// Pictures, fills and texts that an application lays over a control.
#pragma once

#include "ambrel/objects/base_object.h"

#include <deque>
#include <variant>

namespace ambrel {

/// Drawn in the order of adding. Keeps what it draws alive.
class BaseObject::DisplayList {
public:
    struct Fill {
        ComPtr<IFillColor> fill;
        SkinRect rect;
        void draw(IVexRenderDC& dc) const;
    };
    struct Section {
        ComPtr<IVexImageBase> image;
        SkinRect rect;
        short index;
        void draw(IVexRenderDC& dc) const;
    };
    struct Text {
        ComPtr<IVexTextStyle> style;
        SkinRect rect;
        Bstr text;
        void draw(IVexRenderDC& dc) const;
    };
    struct Image {
        ComPtr<IVexRenderImage> image;
        SkinRect rect;
        SkinRect source;
        VARIANT_BOOL stretch;
        OLE_COLOR transparent;
        void draw(IVexRenderDC& dc) const;
    };
    struct Solid {
        ComPtr<IColorProp> color;
        SkinRect rect;
        void draw(IVexRenderDC& dc) const;
    };
    using Item = std::variant<Fill, Section, Text, Image, Solid>;

    void add(Item item) { m_items.push_back(std::move(item)); }
    void draw(IVexRenderDC& dc) const;

private:
    std::deque<Item> m_items; // stay where they are while more are added
};

} // namespace ambrel
