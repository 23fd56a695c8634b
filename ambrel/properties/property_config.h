// The operations of IVexPropBase that do not depend on the type, over PropertyCore.
#pragma once

#include "ambrel/properties/property_core.h"

namespace ambrel::config {

HRESULT descriptor(PropertyCore& property, IVexPropType** result) noexcept;
HRESULT getVariant(PropertyCore& property, VARIANT* result) noexcept;
HRESULT setVariant(PropertyCore& property, const VARIANT& value, Notify notify) noexcept;
/// S_FALSE and null for a type without an object.
HRESULT getDispatch(PropertyCore& property, IDispatch** result) noexcept;
HRESULT setDispatch(PropertyCore& property, IDispatch* value) noexcept;

/// Reads or writes the value under `key`, completed by the property's own name unless it is the whole key. The result
/// is false when nothing fitting was there to read, and when an object without a name was to be written. E_INVALIDARG
/// for a handle that is no node.
HRESULT access(PropertyCore& property, hyper node, BSTR key, bool read, bool isWholeKey, VARIANT_BOOL* result) noexcept;

HRESULT clone(PropertyCore& property, IVexPropBase* source) noexcept;
HRESULT setResources(PropertyCore& property, IVexRes* resources) noexcept;

/// 0 removes the node; any other number must be the handle of a living one.
HRESULT setPropertyNode(PropertyCore& property, hyper node) noexcept;
HRESULT setStyleNode(PropertyCore& property, hyper node) noexcept;

hyper renderDevice(const PropertyCore& property) noexcept;
HRESULT setRenderType(PropertyCore& property, VEX_RENDERENGINE_TYPE type) noexcept;
VEX_RENDERENGINE_TYPE renderType(const PropertyCore& property) noexcept;

} // namespace ambrel::config
