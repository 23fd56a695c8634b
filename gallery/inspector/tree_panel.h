// The list of a page's objects; a row selects its object.
#pragma once

#include "gallery/inspector/object_tree.h"
#include "gallery/inspector/row_pager.h"

namespace gallery {

class TreePanel {
public:
    TreePanel(Scene& scene, IVexControlBase& parent, const Rect& place, std::function<void()> selected);

    void setRows(std::vector<ObjectRow> rows, std::size_t selected);
    void clear() { setRows({}, 0); }
    const std::vector<ObjectRow>& rows() const { return m_rows; }
    /// Null when there is none.
    const ObjectRow* selected() const { return m_selected < m_rows.size() ? &m_rows[m_selected] : nullptr; }
    RowPager& pager() { return m_pager; }

private:
    struct Slot {
        ComPtr<IRadioBox> row;
        std::wstring shown;
        bool isShown = true;
    };
    void show();
    void select(std::size_t row);

    RowPager m_pager;
    std::vector<Slot> m_slots;
    std::vector<ObjectRow> m_rows;
    std::size_t m_selected = 0;
    std::function<void()> m_onSelect;
};

} // namespace gallery
