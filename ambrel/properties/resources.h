// Finding the shared resources that properties name.
#pragma once

#include "ambrel/properties/config_node.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <string>
#include <string_view>

namespace ambrel {

/// Turns a resource's name into the resource; null when there is none. The skin loader has one for the skin being read.
class ResourceResolver {
public:
    virtual morvane::ComPtr<IDispatch> find(enumPropType type, std::wstring_view name) const = 0;

protected:
    ~ResourceResolver() = default;
};

/// Asks a resource object, whole names in its whole tree. Null finds nothing.
class SkinResources final : public ResourceResolver {
public:
    explicit SkinResources(morvane::ComPtr<IVexRes> resources) noexcept : m_resources(std::move(resources)) {}
    morvane::ComPtr<IDispatch> find(enumPropType type, std::wstring_view name) const override;

private:
    morvane::ComPtr<IVexRes> m_resources;
};

/// The name of a shared resource; empty for null and for objects without one.
std::wstring resourceName(IDispatch* resource);

} // namespace ambrel
