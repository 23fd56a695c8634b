// A group with its properties and sub-groups in a configuration node.
#pragma once

#include "ambrel/properties/config_node.h"
#include "ambrel/properties/property_group.h"

namespace ambrel {

/// Whether a style property that was given a style node is kept there instead of in the node at hand.
enum class StyleNodes : bool { Ignored, Used };

/// Reads or writes every property under the key: `parentName`, the names of the groups from the top, the property's
/// name and the suffix of its type, without separators. A group's expanded state has the key of the group and
/// "IsExpand". Reading leaves absent keys alone and announces nothing; the result is true when something was read or
/// written. E_INVALIDARG for a handle that is no node.
HRESULT accessGroup(PropertyGroup& group, BSTR parentName, hyper node, bool read, StyleNodes styleNodes,
                    VARIANT_BOOL* result) noexcept;

/// Gives the style properties here and below a style node; 0 takes it away.
void setStyleNodes(PropertyGroup& group, NodeHandle node);

} // namespace ambrel
