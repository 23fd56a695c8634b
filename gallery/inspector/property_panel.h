// The properties of the selected object, edited in place.
#pragma once

#include "gallery/inspector/inline_edit.h"
#include "gallery/inspector/object_tree.h"
#include "gallery/inspector/property_list.h"
#include "gallery/inspector/row_pager.h"

namespace gallery {

class PropertyPanel {
public:
    PropertyPanel(Scene& scene, IVexControlBase& parent, const Rect& place);

    /// Null for none; the same object keeps its place in the list.
    void showObject(const ObjectRow* object);
    /// Reads the values of the visible rows again.
    void refresh();
    void finishEditing() { m_edit.commit(); }
    void stopEditing() { m_edit.close(); } // the typed text is dropped
    RowPager& pager() { return m_pager; }

private:
    struct Slot {
        Rect place;
        ComPtr<ICmdButton> name;
        ComPtr<ICmdButton> value;
        ComPtr<IVexCheckBox> check;
        ComPtr<ICmdButton> less;
        ComPtr<ICmdButton> more;
        ComPtr<ICmdButton> edit;
        std::wstring shownName;
        std::wstring shownValue;
        std::wstring shownCheck;
        PropertyEditor shownEditor = PropertyEditor::None;
    };
    Slot makeSlot(Scene& scene, IVexControlBase& parent, const Rect& place, std::size_t index);
    void connect(Scene& scene, const Slot& slot, std::size_t index);
    void showEditor(Slot& slot, PropertyEditor editor);
    void showRow(Slot& slot, const PropertyRow* row);
    void showAll();
    void startEditing(std::size_t index);
    /// The row a slot shows; null for an unused one.
    const PropertyRow* rowOf(std::size_t index) const;

    Scene& m_scene;
    RowPager m_pager;
    std::vector<Slot> m_slots;
    ComPtr<IVexControlBase> m_object;
    std::vector<PropertyRow> m_rows;
    InlineEdit m_edit;
};

} // namespace gallery
