// The properties of a control as rows, read and changed as text.
#pragma once

#include "gallery/scene.h"

#include <vector>

namespace gallery {

/// How a row is edited.
enum class PropertyEditor { None, Check, Step, Text };

struct PropertyRow {
    ComPtr<IVexPropBase> property;
    std::wstring path; // groups and name: "Normal/Image"
    enumPropType type = _PROPTYPE_STRING;
    PropertyEditor editor = PropertyEditor::None;
};

/// Texts, numbers and switches first, then the looks of the states; each in the control's order.
std::vector<PropertyRow> listProperties(IVexControlBase& control);

/// The value as skins write it; a chosen text of a list as itself; the name of a shared resource.
std::wstring valueText(const PropertyRow& row);
bool isTrue(const PropertyRow& row);

// Each change runs the property's change callback and redraws the control. False when the value was not taken.
bool setText(IVexControlBase& control, const PropertyRow& row, const std::wstring& text);
bool setTrue(IVexControlBase& control, const PropertyRow& row, bool value);
/// Adds a step to a number or goes to the next or previous choice of a list.
bool step(IVexControlBase& control, const PropertyRow& row, int direction);

/// The text a control shows, from its property "Text"; empty when it has none.
std::wstring ownText(IVexControlBase& control);

} // namespace gallery
