#include "ambrel/render/colour_filters.h"

#include <algorithm>
#include <utility>

namespace ambrel {

namespace {

/// The skins that have filters: hardly ever more than one.
struct FilteredSkin {
    const IVexRes* resources;
    ColourFilters filters;
};

std::vector<FilteredSkin>& filteredSkins() noexcept
{
    static std::vector<FilteredSkin> skins;
    return skins;
}

auto findSkin(const IVexRes* resources) noexcept
{
    return std::ranges::find(filteredSkins(), resources, &FilteredSkin::resources);
}

ColourFilters& filtersFor(const IVexRes& resources)
{
    auto found = findSkin(&resources);
    if (found == filteredSkins().end())
        found = filteredSkins().insert(found, {&resources, {}});
    return found->filters;
}

unsigned nextGeneration() noexcept
{
    static unsigned last = 0;
    return ++last;
}

} // namespace

void ColourFilters::add(Filter filter)
{
    m_filters.push_back(filter);
    m_generation = nextGeneration();
}

void ColourFilters::removeAll() noexcept
{
    m_filters.clear();
    m_generation = nextGeneration();
}

void ColourFilters::setTint(std::optional<Colourise> tint) noexcept
{
    m_tint = tint;
    m_generation = nextGeneration();
}

void ColourFilters::apply(PixelView pixels) const
{
    if (m_tint)
        applyColourise(pixels, *m_tint);
    for (const Filter& each : m_filters) {
        if (const auto* colourise = std::get_if<Colourise>(&each))
            applyColourise(pixels, *colourise);
        else
            applyShift(pixels, std::get<ChannelShift>(each));
    }
}

Pixel ColourFilters::apply(Pixel pixel) const
{
    apply(PixelView{&pixel, 1, 1, 1});
    return pixel;
}

const ColourFilters* colourFiltersOf(const IVexRes* resources) noexcept
{
    const auto found = findSkin(resources);
    return found != filteredSkins().end() ? &found->filters : nullptr;
}

void addColourFilter(const IVexRes& resources, ColourFilters::Filter filter)
{
    filtersFor(resources).add(filter);
}

bool removeColourFilters(const IVexRes& resources) noexcept
{
    const auto found = findSkin(&resources);
    if (found == filteredSkins().end() || !found->filters.hasFilters())
        return false;
    if (found->filters.isTinted())
        found->filters.removeAll();
    else
        filteredSkins().erase(found);
    return true;
}

void tintSkin(const IVexRes& resources, std::optional<Colourise> tint)
{
    if (tint)
        return filtersFor(resources).setTint(tint);
    const auto found = findSkin(&resources);
    if (found == filteredSkins().end())
        return;
    if (found->filters.hasFilters())
        found->filters.setTint(tint);
    else
        filteredSkins().erase(found);
}

void forgetColours(const IVexRes& resources) noexcept
{
    std::erase_if(filteredSkins(), [&](const FilteredSkin& s) { return s.resources == &resources; });
}

} // namespace ambrel
