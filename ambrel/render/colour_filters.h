// Recolouring of everything that the sections and fills of a skin draw.
#pragma once

#include "ambrel/pixels/colour_change.h"
#include "host/host.h"

#include <variant>
#include <vector>

namespace ambrel {

/// Applied one after the other, in the order of adding. Texts keep their colours.
class ColourFilters {
public:
    using Filter = std::variant<Colourise, ChannelShift>;

    void add(Filter filter); // throws std::bad_alloc
    void apply(PixelView pixels) const;
    Pixel apply(Pixel pixel) const;

    /// Differs whenever the filters of any skin were different; never 0.
    unsigned generation() const noexcept { return m_generation; }

private:
    std::vector<Filter> m_filters;
    unsigned m_generation = 0;
};

/// The filters of the skin of a resource object; null when it has none. Costs nothing while no skin has any.
const ColourFilters* colourFiltersOf(const IVexRes* resources) noexcept;
void addColourFilter(const IVexRes& resources, ColourFilters::Filter filter); // throws std::bad_alloc
/// False when there were none. Called by a resource object that ends, too.
bool removeColourFilters(const IVexRes& resources) noexcept;

} // namespace ambrel
