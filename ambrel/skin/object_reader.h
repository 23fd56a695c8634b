#pragma once

#include "ambrel/skin/resource_reader.h"

namespace ambrel::skin {

/// Reads objects.xml into the skin, whose layout, key map and resources are known already; in the compact layout then
/// prop.xml (`properties`, else null).
void readObjects(const XmlDocument& objects, const XmlDocument* properties, const ResourceIndex& index, Skin& skin);

} // namespace ambrel::skin
