#include "gallery/inspector/property_list.h"

#include "frame/com/variant.h"
#include "host/typed_properties.h"

#include <algorithm>
#include <climits>

namespace gallery {

using morvane::Variant;

namespace {

PropertyEditor editorOf(enumPropType type)
{
    switch (type) {
    case _PROPTYPE_BOOL:
        return PropertyEditor::Check;
    case _PROPTYPE_INT:
    case _PROPTYPE_LONG:
    case _PROPTYPE_FLOAT:
    case _PROPTYPE_COMBO:
        return PropertyEditor::Step;
    case _PROPTYPE_STRING:
    case _PROPTYPE_COLOR:
        return PropertyEditor::Text;
    default:
        return PropertyEditor::None;
    }
}

void appendGroup(std::vector<PropertyRow>& rows, ICtrlPluginProp& group, const std::wstring& parentPath)
{
    Bstr name;
    group.get_strName(name.put());
    const std::wstring path = parentPath + name.str() + L"/";
    long count = 0;
    group.GetPropBaseCount(&count);
    for (long index = 0; index < count; ++index) {
        PropertyRow row;
        Bstr own;
        group.GetAtPropBase(index, row.property.put());
        if (!row.property || FAILED(row.property->GetName(own.put())) || FAILED(row.property->GetType(&row.type)))
            continue;
        row.path = path + own.str();
        row.editor = editorOf(row.type);
        rows.push_back(std::move(row));
    }
    count = 0;
    group.GetAddinPropCount(&count);
    for (long index = 0; index < count; ++index) {
        ComPtr<ICtrlPluginProp> inner;
        group.GetAddinPropByIndex(index, inner.put());
        if (inner)
            appendGroup(rows, *inner, path);
    }
}

/// Whether a property is about what the control says and does, not about how one of its many states looks.
bool isSetting(const PropertyRow& row)
{
    return row.editor != PropertyEditor::None && row.type != _PROPTYPE_COLOR;
}

/// The name of the shared resource a property holds; empty when it holds none or one without a name.
std::wstring resourceName(const Variant& value)
{
    Bstr name;
    if (value.vt == VT_DISPATCH && value.pdispVal)
        if (const auto object = ComPtr<IDispatch>(value.pdispVal).as<IVexObj>())
            object->GetName(name.put());
    return name.str();
}

bool changed(IVexControlBase& control, HRESULT status)
{
    if (FAILED(status))
        return false;
    control.DirectRedraw(nullptr);
    return true;
}

} // namespace

std::vector<PropertyRow> listProperties(IVexControlBase& control)
{
    std::vector<PropertyRow> rows;
    hyper* list = nullptr;
    if (FAILED(control.GetProps(&list)) || !list)
        return rows;
    for (auto groups = reinterpret_cast<ICtrlPluginProp**>(list); *groups; ++groups)
        appendGroup(rows, **groups, {});
    std::stable_partition(rows.begin(), rows.end(), isSetting);
    return rows;
}

std::wstring valueText(const PropertyRow& row)
{
    Variant value;
    row.property->GetVariant(&value);
    if (const std::wstring name = resourceName(value); !name.empty())
        return name;
    if (row.type == _PROPTYPE_COMBO && value.vt == VT_I4) {
        Bstr item;
        if (SUCCEEDED(static_cast<morvane::ComboProperty&>(*row.property).GetItem(value.lVal, item.put())) &&
            !item.empty())
            return item.str();
    }
    ComPtr<IVexPropType> descriptor;
    Bstr text;
    row.property->GetPropTypePtr(descriptor.put());
    if (descriptor)
        descriptor->get_strValue(text.put());
    return text.str();
}

bool isTrue(const PropertyRow& row)
{
    Variant value;
    return SUCCEEDED(row.property->GetVariant(&value)) && value.vt == VT_BOOL && value.boolVal != VARIANT_FALSE;
}

bool setText(IVexControlBase& control, const PropertyRow& row, const std::wstring& text)
{
    ComPtr<IVexPropType> descriptor;
    row.property->GetPropTypePtr(descriptor.put());
    return descriptor && changed(control, descriptor->put_strValue(Bstr(text).get()));
}

bool setTrue(IVexControlBase& control, const PropertyRow& row, bool isOn)
{
    Variant value;
    value.vt = VT_BOOL;
    value.boolVal = isOn ? VARIANT_TRUE : VARIANT_FALSE;
    return changed(control, row.property->SetVariant(value));
}

bool step(IVexControlBase& control, const PropertyRow& row, int direction)
{
    constexpr float kFloatStep = 0.1f;
    Variant value;
    if (FAILED(row.property->GetVariant(&value)))
        return false;
    if (value.vt == VT_I4)
        value.lVal =
            static_cast<LONG>(std::clamp<std::int64_t>(std::int64_t{value.lVal} + direction, LONG_MIN, LONG_MAX));
    else if (value.vt == VT_R4)
        value.fltVal += kFloatStep * static_cast<float>(direction);
    else
        return false;
    return changed(control, row.property->SetVariant(value));
}

std::wstring ownText(IVexControlBase& control)
{
    for (const PropertyRow& row : listProperties(control))
        if (row.type == _PROPTYPE_STRING && row.path.ends_with(L"/Text"))
            return valueText(row);
    return {};
}

} // namespace gallery
