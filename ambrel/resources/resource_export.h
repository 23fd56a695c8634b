// Shared resources as the entries of a skin, for saving.
#pragma once

#include "ambrel/resources/resource_store.h"
#include "ambrel/resources/skin_resources.h"
#include "ambrel/skin/changes.h"
#include "ambrel/skin/errors.h"

#include <optional>

namespace ambrel {

/// Brings a copy of a skin's entries up to date with the objects that were made of them, and makes entries of other
/// objects where something refers to them. Borrows what it is given.
class ResourceExport {
public:
    /// `skin` is changed; its entries are those of `opened`, which was made of it.
    ResourceExport(skin::Skin& skin, const SkinResourceSet& opened);

    /// Takes over what was changed in the objects of the entries.
    void updateEntries();
    /// Makes entries of the resources that an application added.
    void addFrom(const ResourceStore& store);
    /// Takes those entries away whose resource is not in the store any more and to which nothing refers.
    void removeGone(const ResourceStore& store);

    /// The entry of a resource, made when there is none. Empty for null and for a fill without colours.
    std::string idOf(enumPropType type, IDispatch* resource);
    /// The entry of a cursor; empty when it has none.
    std::string knownIdOf(IVexCursor* cursor) const;

    /// The first thing that cannot be saved.
    const std::optional<skin::SkinError>& error() const noexcept { return m_error; }

    /// The objects of all entries, those that were made included.
    const SkinResourceSet& resources() const noexcept { return m_resources; }

private:
    template <class Object>
    void updateAll();
    template <class Object>
    std::string idOfObject(IUnknown* resource);
    template <class Object>
    std::string addEntry(const morvane::ComPtr<Object>& object);

    void take(skin::Picture& entry, Picture& object);
    void take(skin::ImageSection& entry, ImageBase& object);
    void take(skin::TextStyle& entry, TextStyle& object);
    void take(skin::Font& entry, Font& object);
    void take(skin::Gradient& entry, FillColor& object);
    void take(skin::Cursor& entry, Cursor& object);

    void takeFiles(skin::Picture& entry, Picture& object);
    void fail(skin::Code code, const skin::Resource& entry, std::string message);

    skin::Skin& m_skin;
    SkinResourceSet m_resources;
    std::optional<skin::SkinError> m_error;
};

} // namespace ambrel
