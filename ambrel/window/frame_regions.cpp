#include "ambrel/window/frame_regions.h"

#include "frame/com/bstr.h"

#include <algorithm>
#include <iterator>

namespace ambrel {

namespace {

// By VEX_NCRGNTYPE.
constexpr LRESULT kHits[] = {HTLEFT, HTRIGHT, HTTOP, HTBOTTOM, HTTOPLEFT, HTTOPRIGHT, HTBOTTOMLEFT, HTBOTTOMRIGHT};

bool exists(VEX_NCRGNTYPE kind) noexcept
{
    return kind >= 0 && kind < static_cast<int>(std::size(kHits));
}

bool isNamed(IVexSkinSubRgn* region, std::wstring_view name)
{
    morvane::ComPtr<IVexObj> object;
    morvane::Bstr own;
    return SUCCEEDED(region->QueryInterface(morvane::iidOf<IVexObj>(), object.putVoid())) && object &&
           SUCCEEDED(object->GetName(own.put())) && own.view() == name;
}

} // namespace

bool FrameRegions::add(VEX_NCRGNTYPE kind, IVexSkinSubRgn* region)
{
    const auto isSame = [&](const Entry& each) { return each.kind == kind && each.region.get() == region; };
    if (!region || !exists(kind) || std::any_of(m_entries.begin(), m_entries.end(), isSame))
        return false;
    m_entries.push_back({kind, morvane::ComPtr<IVexSkinSubRgn>(region)});
    return true;
}

bool FrameRegions::remove(VEX_NCRGNTYPE kind, std::wstring_view name)
{
    return std::erase_if(m_entries,
                         [&](const Entry& each) { return each.kind == kind && isNamed(each.region.get(), name); }) != 0;
}

bool FrameRegions::removeAll(VEX_NCRGNTYPE kind) noexcept
{
    return std::erase_if(m_entries, [&](const Entry& each) { return each.kind == kind; }) != 0;
}

bool FrameRegions::clear() noexcept
{
    const bool had = !m_entries.empty();
    m_entries.clear();
    return had;
}

LRESULT FrameRegions::hitAt(morvane::Point point) const
{
    for (const Entry& each : m_entries) {
        hyper region = 0;
        each.region->GetObjPtr(&region);
        if (region && PtInRegion(reinterpret_cast<HRGN>(region), point.x, point.y))
            return kHits[each.kind];
    }
    return HTNOWHERE;
}

} // namespace ambrel
