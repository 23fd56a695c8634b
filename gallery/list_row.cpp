#include "gallery/list_row.h"

namespace gallery {

void styleListRow(Scene& scene, IRadioBox& row, const TextLook& look)
{
    TextLook chosenLook = look;
    chosenLook.isBold = true;
    const auto normal = scene.textStyle(look);
    const auto chosen = scene.textStyle(chosenLook);
    VARIANT_BOOL done = VARIANT_FALSE;
    const auto hotGround = scene.drawingSection(L"row-hot", 6);
    const auto chosenGround = scene.drawingSection(L"row-chosen", 6);
    for (int index = VEX_RADIOBOX_NORMAL; index < VEX_RADIOBOX_LAST; ++index) {
        const auto state = static_cast<VEX_RADIOBOXSTATE>(index);
        const bool isRest = state == VEX_RADIOBOX_NORMAL || state == VEX_RADIOBOX_DISABLE;
        row.SetBackImage(state, VARIANT_FALSE, isRest ? nullptr : hotGround.get(), &done);
        row.SetBackImage(state, VARIANT_TRUE, chosenGround.get(), &done);
        row.SetTextStyle(state, VARIANT_FALSE, normal.get(), &done);
        row.SetTextStyle(state, VARIANT_TRUE, chosen.get(), &done);
        row.SetBoxImage(state, VARIANT_FALSE, nullptr, &done);
        row.SetBoxImage(state, VARIANT_TRUE, nullptr, &done);
    }
}

} // namespace gallery
