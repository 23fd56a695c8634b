// Recolouring of everything that the sections and fills of a skin draw.
#pragma once

#include "ambrel/pixels/colour_change.h"
#include "host/host.h"

#include <optional>
#include <variant>
#include <vector>

namespace ambrel {

/// The tint first, then the filters one after the other in the order of adding. Texts keep their colours.
class ColourFilters {
public:
    using Filter = std::variant<Colourise, ChannelShift>;

    void add(Filter filter);                              // throws std::bad_alloc
    void removeAll() noexcept;                            // the tint stays
    void setTint(std::optional<Colourise> tint) noexcept; // of the chosen colour case
    bool hasFilters() const noexcept { return !m_filters.empty(); }
    bool isTinted() const noexcept { return m_tint.has_value(); }
    void apply(PixelView pixels) const;
    Pixel apply(Pixel pixel) const;

    /// Differs whenever the filters of any skin were different; never 0.
    unsigned generation() const noexcept { return m_generation; }

private:
    std::optional<Colourise> m_tint;
    std::vector<Filter> m_filters;
    unsigned m_generation = 0;
};

/// The filters of the skin of a resource object; null when it has none. Costs nothing while no skin has any.
const ColourFilters* colourFiltersOf(const IVexRes* resources) noexcept;
void addColourFilter(const IVexRes& resources, ColourFilters::Filter filter); // throws std::bad_alloc
/// False when there were none.
bool removeColourFilters(const IVexRes& resources) noexcept;
/// What the chosen colour case does to a skin; nothing takes it away. Throws std::bad_alloc.
void tintSkin(const IVexRes& resources, std::optional<Colourise> tint);
/// A resource object ends.
void forgetColours(const IVexRes& resources) noexcept;

} // namespace ambrel
