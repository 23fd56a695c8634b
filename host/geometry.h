// Between the contract's records and our own geometry.
#pragma once

#include "base/geometry.h"
#include "host/host.h"

namespace morvane {

constexpr Rect toRect(const SkinRect& r) noexcept
{
    return {static_cast<int>(r.left), static_cast<int>(r.top), static_cast<int>(r.right), static_cast<int>(r.bottom)};
}

constexpr SkinRect toSkinRect(const Rect& r) noexcept
{
    return {r.left, r.top, r.right, r.bottom};
}
constexpr RECT toWin32(const Rect& r) noexcept
{
    return {r.left, r.top, r.right, r.bottom};
}
constexpr Rect fromWin32(const RECT& r) noexcept
{
    return {static_cast<int>(r.left), static_cast<int>(r.top), static_cast<int>(r.right), static_cast<int>(r.bottom)};
}

} // namespace morvane
