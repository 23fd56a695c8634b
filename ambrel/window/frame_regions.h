// The parts of a window that act as its frame.
#pragma once

#include "base/geometry.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <string_view>
#include <vector>

namespace ambrel {

/// Regions that an application gave for the eight parts of a resize frame. The object pointer of each
/// (IVexSkinSubRgn::SetObjPtr) is a region handle (HRGN) in window coordinates; it stays the application's.
class FrameRegions {
public:
    /// False for kinds that do not exist and for an object that is there already. Throws std::bad_alloc.
    bool add(VEX_NCRGNTYPE kind, IVexSkinSubRgn* region);
    /// Those that have this name (as IVexObj); answers whether there was one.
    bool remove(VEX_NCRGNTYPE kind, std::wstring_view name);
    bool removeAll(VEX_NCRGNTYPE kind) noexcept;
    bool clear() noexcept;

    /// What the platform calls the part of the frame at a point (HTLEFT...); HTNOWHERE where no region lies.
    LRESULT hitAt(morvane::Point point) const;

private:
    struct Entry {
        VEX_NCRGNTYPE kind;
        morvane::ComPtr<IVexSkinSubRgn> region;
    };
    std::vector<Entry> m_entries;
};

} // namespace ambrel
