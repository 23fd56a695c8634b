// Shared resources as the entries of a skin, for saving.
#pragma once

#include "ambrel/resources/resource_store.h"
#include "ambrel/resources/skin_resources.h"
#include "ambrel/skin/changes.h"
#include "ambrel/skin/errors.h"

#include <optional>
#include <vector>

namespace ambrel {

/// Brings a copy of a skin's entries up to date with the objects that were made of them, and makes entries of other
/// objects where something refers to them. Borrows what it is given.
class ResourceExport {
public:
    /// Resources and the skin that they were made of: there the files of their pictures are found.
    struct Source {
        const SkinResourceSet* resources;
        const skin::Skin* skin;
    };

    /// `skin` is changed; its entries are those of `opened`, which was made of it. `others` are packages that controls
    /// may have resources of.
    ResourceExport(skin::Skin& skin, const SkinResourceSet& opened, std::vector<Source> others);

    /// Takes over what was changed in the objects of the entries.
    void updateEntries();
    /// Makes entries of the resources that an application added.
    void addFrom(const ResourceStore& store);

    /// The entry of a resource, made when there is none. Empty for null and for a fill without colours.
    std::string idOf(enumPropType type, IDispatch* resource);

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

    void addPictureFiles(skin::Picture& entry, Picture& object);
    bool copyPictureFiles(skin::Picture& entry, const Picture& object);
    void fail(skin::Code code, const skin::Resource& entry, std::string message);

    skin::Skin& m_skin;
    SkinResourceSet m_resources;
    std::vector<Source> m_others;
    std::optional<skin::SkinError> m_error;
};

} // namespace ambrel
