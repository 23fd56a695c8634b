// Rectangles and positions as objects of their own.
#pragma once

#include "ambrel/objects/position_layout.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"

namespace ambrel {

/// A new rectangle object, not attached to anything.
morvane::ComPtr<IVexRect> makeRect(const Rect& rect);
/// A new position object.
morvane::ComPtr<IVexPos> makePosition(const VexPosition& position);

/// For the class object of kClsidPosition.
HRESULT createPosition(IUnknown* outer, REFIID iid, void** result) noexcept;

/// Between the contract's record and our own value. Unknown enumeration values count as the first one.
Position toPosition(const VexPosition& record) noexcept;
VexPosition toRecord(const Position& position) noexcept;

} // namespace ambrel
