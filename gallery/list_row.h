// A row of a list: a radio box without a box, whose background shows what is chosen.
#pragma once

#include "gallery/scene.h"

namespace gallery {

/// Turns a radio box that has its default look into a row. The chosen row's text is bold.
void styleListRow(Scene& scene, IRadioBox& row, const TextLook& look);

} // namespace gallery
