#include "gallery/inspector/object_tree.h"

#include "gallery/inspector/property_list.h"

namespace gallery {

namespace {

std::wstring withoutAccessMarks(std::wstring text)
{
    std::erase(text, L'&');
    return text;
}

void append(std::vector<ObjectRow>& rows, IVexControlBase& object, int depth)
{
    Bstr type;
    Bstr name;
    object.GetControlTypeName(type.put());
    object.GetName(name.put());
    rows.push_back({ComPtr<IVexControlBase>(&object), identityOf(&object), depth, type.str(), name.str(),
                    withoutAccessMarks(ownText(object))});
    short count = 0;
    object.GetChildCount(&count);
    for (short index = 0; index < count; ++index) {
        ComPtr<ISkinObjResBase> child;
        object.GetSubObject(index, child.put());
        if (const auto control = child.as<IVexControlBase>())
            append(rows, *control, depth + 1);
    }
}

std::wstring quoted(const std::wstring& text)
{
    return L"\u201C" + text + L"\u201D";
}

} // namespace

const IUnknown* identityOf(IUnknown* object)
{
    IUnknown* identity = nullptr;
    if (!object || FAILED(object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity))))
        return nullptr;
    identity->Release(); // compared, never used
    return identity;
}

std::vector<ObjectRow> listObjects(IVexControlBase& page)
{
    std::vector<ObjectRow> rows;
    append(rows, page, 0);
    return rows;
}

std::wstring treeLabel(const ObjectRow& row)
{
    constexpr std::size_t kIndent = 4; // blanks a level
    std::wstring label(static_cast<std::size_t>(row.depth) * kIndent, L' ');
    label += row.type + L"  " + row.name;
    return row.text.empty() ? label : label + L"  " + quoted(row.text);
}

std::wstring shortLabel(const ObjectRow& row)
{
    return row.type + L" " + (row.text.empty() ? row.name : quoted(row.text));
}

} // namespace gallery
