#include "gallery/inspector/tree_panel.h"

#include "gallery/list_row.h"

namespace gallery {

namespace {

constexpr int kHeadingHeight = 22;
constexpr int kRowHeight = 20;
constexpr long kTreeGroup = 5001;

std::size_t rowsIn(const Rect& place)
{
    return static_cast<std::size_t>((place.height() - kHeadingHeight - 2) / kRowHeight);
}

} // namespace

TreePanel::TreePanel(Scene& scene, IVexControlBase& parent, const Rect& place, std::function<void()> selected)
    : m_pager(scene, parent, {place.left, place.top, place.right, place.top + kHeadingHeight}, L"Objects",
              rowsIn(place), [this] { show(); }),
      m_onSelect(std::move(selected))
{
    Point at{place.left, place.top + kHeadingHeight + 2};
    for (std::size_t index = 0; index < rowsIn(place); ++index) {
        const auto row = scene.radioBox(&parent, Rect::at(at, {place.width(), kRowHeight}), L"", kTreeGroup);
        styleListRow(scene, *row, {scene.theme().text, 9, false, TextAlign::Near, 4, true});
        scene.onMessage(*row, VEXSM_LBUTTONUP, [this, index] { select(m_pager.first() + index); });
        m_slots.push_back({row, {}});
        at.y += kRowHeight;
    }
}

void TreePanel::setRows(std::vector<ObjectRow> rows, std::size_t selected)
{
    m_rows = std::move(rows);
    m_selected = selected;
    m_pager.setCount(m_rows.size());
    m_pager.reveal(m_selected);
    show();
}

void TreePanel::select(std::size_t row)
{
    if (row >= m_rows.size())
        return;
    m_selected = row;
    show();
    m_onSelect();
}

void TreePanel::show()
{
    std::size_t index = m_pager.first();
    for (Slot& slot : m_slots) {
        const bool isUsed = index < m_rows.size();
        if (isUsed != slot.isShown)
            slot.row->SetVisible(isUsed ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
        slot.isShown = isUsed;
        const std::wstring text = isUsed ? treeLabel(m_rows[index]) : std::wstring();
        if (slot.shown != text)
            slot.row->SetText(Bstr(text).get(), VARIANT_TRUE);
        slot.shown = text;
        slot.row->SetValue(isUsed && index == m_selected ? VEXRADIOBOX_CHECKED : VEXRADIOBOX_UNCHECKED, VARIANT_TRUE);
        ++index;
    }
}

} // namespace gallery
