#include "gallery/inspector/property_panel.h"

namespace gallery {

namespace {

constexpr int kHeadingHeight = 22;
constexpr int kRowHeight = 24;
constexpr int kNameWidth = 172;
constexpr int kStepWidth = 24;
constexpr int kEditWidth = 40;

std::size_t rowsIn(const Rect& place)
{
    return static_cast<std::size_t>((place.height() - kHeadingHeight - 2) / kRowHeight);
}

/// How far a row's value may reach before its editor begins.
int valueRight(const Rect& place, PropertyEditor editor)
{
    constexpr int kGap = 6;
    if (editor == PropertyEditor::Step)
        return place.right - 2 * kStepWidth - 4 - kGap;
    return editor == PropertyEditor::Text ? place.right - kEditWidth - kGap : place.right;
}

void setVisible(ISkinObjResBase& object, bool isVisible)
{
    object.SetVisible(isVisible ? VARIANT_TRUE : VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE);
}

} // namespace

PropertyPanel::PropertyPanel(Scene& scene, IVexControlBase& parent, const Rect& place)
    : m_scene(scene), m_pager(scene, parent, {place.left, place.top, place.right, place.top + kHeadingHeight},
                              L"Properties", rowsIn(place), [this] { showAll(); })
{
    Point at{place.left, place.top + kHeadingHeight + 2};
    for (std::size_t index = 0; index < rowsIn(place); ++index) {
        m_slots.push_back(makeSlot(scene, parent, Rect::at(at, {place.width(), kRowHeight}), index));
        at.y += kRowHeight;
    }
}

PropertyPanel::Slot PropertyPanel::makeSlot(Scene& scene, IVexControlBase& parent, const Rect& place, std::size_t index)
{
    const Theme& theme = scene.theme();
    const int valueLeft = place.left + kNameWidth;
    const Rect button{0, place.top + 1, 0, place.bottom - 1};
    const auto buttonAt = [&](int left, int width) { return Rect{left, button.top, left + width, button.bottom}; };
    Slot slot;
    slot.place = place;
    slot.name = scene.label(&parent, {place.left, place.top, valueLeft - 8, place.bottom}, L"",
                            {theme.textSoft, 9, false, TextAlign::Near, 6, true});
    slot.value = scene.label(&parent, {valueLeft, place.top, place.right, place.bottom}, L"",
                             {theme.text, 9, false, TextAlign::Near, 0, true});
    slot.check = scene.checkBox(&parent, {valueLeft, place.top, place.right, place.bottom}, L"");
    slot.less = scene.button(&parent, buttonAt(place.right - 2 * kStepWidth - 4, kStepWidth), L"\u2212");
    slot.more = scene.button(&parent, buttonAt(place.right - kStepWidth, kStepWidth), L"+");
    slot.edit = scene.button(&parent, buttonAt(place.right - kEditWidth, kEditWidth), L"Edit");
    for (ISkinObjResBase* const each :
         {static_cast<ISkinObjResBase*>(slot.check.get()), static_cast<ISkinObjResBase*>(slot.less.get()),
          static_cast<ISkinObjResBase*>(slot.more.get()), static_cast<ISkinObjResBase*>(slot.edit.get())})
        setVisible(*each, false);
    connect(scene, slot, index);
    return slot;
}

void PropertyPanel::connect(Scene& scene, const Slot& slot, std::size_t index)
{
    const auto stepBy = [this, index](int direction) {
        if (const PropertyRow* const row = rowOf(index))
            step(*m_object, *row, direction);
        refresh();
    };
    scene.onClick(*slot.less, [stepBy] { stepBy(-1); });
    scene.onClick(*slot.more, [stepBy] { stepBy(1); });
    scene.onClick(*slot.check, [this, index] {
        if (const PropertyRow* const row = rowOf(index))
            setTrue(*m_object, *row, !isTrue(*row));
        refresh();
    });
    scene.onClick(*slot.edit, [this, index] { startEditing(index); });
    scene.onClick(*slot.value, [this, index] { startEditing(index); });
}

const PropertyRow* PropertyPanel::rowOf(std::size_t index) const
{
    const std::size_t row = m_pager.first() + index;
    return m_object && row < m_rows.size() ? &m_rows[row] : nullptr;
}

void PropertyPanel::showObject(const ObjectRow* object)
{
    if (object && object->object.get() == m_object.get())
        return refresh();
    m_edit.close();
    m_object = object ? object->object : nullptr;
    m_rows = m_object ? listProperties(*m_object) : std::vector<PropertyRow>();
    m_pager.setTitle(object ? L"Properties of " + object->name : std::wstring(L"Properties"));
    m_pager.setCount(m_rows.size());
    m_pager.goTo(0);
    showAll();
}

void PropertyPanel::showAll()
{
    m_edit.commit();
    refresh();
}

void PropertyPanel::refresh()
{
    for (std::size_t index = 0; index < m_slots.size(); ++index)
        showRow(m_slots[index], rowOf(index));
}

void PropertyPanel::showEditor(Slot& slot, PropertyEditor editor)
{
    if (slot.shownEditor == editor)
        return;
    slot.shownEditor = editor;
    const Rect& place = slot.place;
    m_scene.place(*slot.value, {place.left + kNameWidth, place.top, valueRight(place, editor), place.bottom});
    setVisible(*slot.value, editor != PropertyEditor::Check);
    setVisible(*slot.check, editor == PropertyEditor::Check);
    setVisible(*slot.less, editor == PropertyEditor::Step);
    setVisible(*slot.more, editor == PropertyEditor::Step);
    setVisible(*slot.edit, editor == PropertyEditor::Text);
}

void PropertyPanel::showRow(Slot& slot, const PropertyRow* row)
{
    showText(*slot.name, slot.shownName, row ? row->path : std::wstring());
    const bool isBool = row && row->editor == PropertyEditor::Check;
    const bool isOn = isBool && isTrue(*row);
    const std::wstring value = row && !isBool ? valueText(*row) : std::wstring();
    showText(*slot.value, slot.shownValue, row && value.empty() ? std::wstring(L"\u2013") : value);
    if (isBool && slot.shownCheck != (isOn ? L"true" : L"false")) {
        slot.shownCheck = isOn ? L"true" : L"false";
        slot.check->SetText(Bstr(slot.shownCheck).get());
    }
    if (isBool)
        slot.check->SetValue(isOn ? VEXCHECKBOX_CHECKED : VEXCHECKBOX_UNCHECKED);
    showEditor(slot, row ? row->editor : PropertyEditor::None);
}

void PropertyPanel::startEditing(std::size_t index)
{
    const PropertyRow* const row = rowOf(index);
    if (!row || (row->editor != PropertyEditor::Text && row->editor != PropertyEditor::Step))
        return;
    SkinRect value{};
    ComPtr<IVexRect> rect;
    std::int64_t window = 0;
    m_slots[index].value->GetRect(rect.put());
    m_slots[index].value->GetWindow(&window);
    if (!rect || FAILED(rect->GetRectStruct(&value)) || !window)
        return;
    const int gap = m_scene.scaled(2);
    const Rect place{static_cast<int>(value.left) - gap, static_cast<int>(value.top) + gap / 2,
                     static_cast<int>(value.right), static_cast<int>(value.bottom) - gap / 2};
    m_edit.open(reinterpret_cast<HWND>(window), place, m_scene.scale(), m_scene.theme(), valueText(*row),
                [this, object = m_object, edited = *row](const std::wstring& text) {
                    setText(*object, edited, text);
                    refresh();
                });
}

} // namespace gallery
