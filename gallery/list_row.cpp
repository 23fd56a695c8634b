#include "gallery/list_row.h"

namespace gallery {

void styleListRow(Scene& scene, IRadioBox& row, const TextLook& look)
{
    const Theme& theme = scene.theme();
    TextLook chosenLook = look;
    chosenLook.isBold = true;
    const auto normal = scene.textStyle(look);
    const auto chosen = scene.textStyle(chosenLook);
    VARIANT_BOOL done = VARIANT_FALSE;
    row.SetBackDrawColor(VARIANT_TRUE);
    for (int index = VEX_RADIOBOX_NORMAL; index < VEX_RADIOBOX_LAST; ++index) {
        const auto state = static_cast<VEX_RADIOBOXSTATE>(index);
        const bool isRest = state == VEX_RADIOBOX_NORMAL || state == VEX_RADIOBOX_DISABLE;
        row.SetBackColor(state, VARIANT_FALSE, isRest ? theme.surface : theme.hotSoft, &done);
        row.SetBackColor(state, VARIANT_TRUE, theme.selectSoft, &done);
        row.SetTextStyle(state, VARIANT_FALSE, normal.get(), &done);
        row.SetTextStyle(state, VARIANT_TRUE, chosen.get(), &done);
        row.SetBoxImage(state, VARIANT_FALSE, nullptr, &done);
        row.SetBoxImage(state, VARIANT_TRUE, nullptr, &done);
    }
}

} // namespace gallery
