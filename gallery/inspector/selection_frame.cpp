#include "gallery/inspector/selection_frame.h"

namespace gallery {

namespace {

constexpr int kThickness = 2;

Rect rectOf(ISkinObjResBase& object)
{
    ComPtr<IVexRect> rect;
    SkinRect record{};
    object.GetRect(rect.put());
    if (rect)
        rect->GetRectStruct(&record);
    return {static_cast<int>(record.left), static_cast<int>(record.top), static_cast<int>(record.right),
            static_cast<int>(record.bottom)};
}

bool isShown(ISkinObjResBase& object)
{
    VARIANT_BOOL visible = VARIANT_FALSE;
    object.IsVisible(&visible);
    return visible != VARIANT_FALSE;
}

} // namespace

SelectionFrame::SelectionFrame(Scene& scene) : m_scene(scene)
{
    for (auto& edge : m_edges)
        edge = scene.form(nullptr, {0, 0, 0, 0}, scene.theme().accent);
    setVisible(false);
}

void SelectionFrame::setVisible(bool isVisible)
{
    if (m_isVisible == isVisible)
        return;
    m_isVisible = isVisible;
    for (const auto& edge : m_edges)
        edge->SetVisible(isVisible ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
}

void SelectionFrame::surround(IVexControlBase* object)
{
    const Rect inside = object && isShown(*object) ? rectOf(*object) : Rect{};
    setVisible(!inside.isEmpty());
    if (inside.isEmpty() || inside == m_shown)
        return;
    m_shown = inside;
    const int thickness = m_scene.scaled(kThickness);
    const Rect outside{inside.left - thickness, inside.top - thickness, inside.right + thickness,
                       inside.bottom + thickness};
    const std::array<Rect, 4> places = {{{outside.left, outside.top, outside.right, inside.top},
                                         {outside.left, inside.bottom, outside.right, outside.bottom},
                                         {outside.left, inside.top, inside.left, inside.bottom},
                                         {inside.right, inside.top, outside.right, inside.bottom}}};
    for (std::size_t i = 0; i < m_edges.size(); ++i) {
        m_edges[i]->DirectRedraw(nullptr); // where it was
        m_scene.placePixels(*m_edges[i], places[i]);
        m_edges[i]->DirectRedraw(nullptr);
    }
}

} // namespace gallery
