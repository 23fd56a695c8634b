// Making property groups and properties: what a base object answers CreateGroupProp and CreateProp with.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <string_view>

namespace ambrel {

/// A property group. `owner` is borrowed: before it goes, it detaches itself with SetControlBasePtr(null) on its
/// top-level groups. The group becomes the last sub-group of `parent`, which keeps it; a null
/// parent makes a top-level group, which the caller keeps. Null when `parent` is not a group of this runtime or lies
/// too deep. Throws std::bad_alloc.
morvane::ComPtr<ICtrlPluginProp> createGroup(IVexControlBase* owner, ICtrlPluginProp* parent, std::wstring_view name,
                                             bool expanded);

/// A property as the last one of `group`, which keeps it and through which it finds its owner, if there is one: a group
/// that is in no control's table would not hear when a control ends. `callback` may be null and is kept. The typed
/// layout of `*result` is that of host/typed_properties.h. E_INVALIDARG for a missing or foreign group or an unknown
/// type.
HRESULT createProperty(ICtrlPluginProp* group, enumPropType type, std::wstring_view name, std::wstring_view help,
                       bool isStyle, IPropChangedCallback* callback, IVexPropBase** result) noexcept;

/// Makes the fill that a fill property hands out before one is set. Part of the renderer, which is told here once, when
/// the runtime starts; null (the start value) means that an unset property has no fill.
/// The scale, in percent, at which an owner's window draws natural sizes. Set once when the runtime starts; without it
/// natural sizes are those at 100 percent.
using OwnerScale = int (*)(IVexControlBase& owner);
void setOwnerScale(OwnerScale scale) noexcept;

using FillFactory = HRESULT (*)(IFillColor** result);
void setFillFactory(FillFactory factory) noexcept;

} // namespace ambrel
