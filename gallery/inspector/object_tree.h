// The objects of a page as rows, in drawing order.
#pragma once

#include "gallery/scene.h"

#include <vector>

namespace gallery {

struct ObjectRow {
    ComPtr<IVexControlBase> object;
    const IUnknown* identity = nullptr; // what the same object always answers to, for comparing only
    int depth = 0;
    std::wstring type;
    std::wstring name;
    std::wstring text; // the object's own text, if it has one
};

/// The identity of any reference to an object; not referenced.
const IUnknown* identityOf(IUnknown* object);

/// `page` and everything in it.
std::vector<ObjectRow> listObjects(IVexControlBase& page);

/// As shown in the tree: the indented type with the object's text, or its name when it has no text.
std::wstring treeLabel(const ObjectRow& row);
/// As shown in the log.
std::wstring shortLabel(const ObjectRow& row);

} // namespace gallery
