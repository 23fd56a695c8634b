// The order in which the Tab key walks over a window.
#pragma once

#include "ambrel/objects/object_node.h"

namespace ambrel {

/// The tab stop after (or before) `from` in tree order, a parent before its children and lower children first; wraps
/// around. Only shown, usable tab stops with an area count. With `from` null (or not beneath `root`) the first (last)
/// one. Null when there is none but `from`.
ObjectNode* nextTabStop(ObjectNode& root, ObjectNode* from, bool forward) noexcept;

} // namespace ambrel
