// The shared resources of one skin as objects.
#pragma once

#include "ambrel/properties/resources.h"
#include "ambrel/render/cursor.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/font.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/text_style.h"
#include "ambrel/skin/model.h"

#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace ambrel {

class ResourceStore;

/// Made in two steps, so that a running skin is not touched by one that fails: pictures are decoded first, then the
/// other resources are given their new content, in the objects that controls hold already where there are such.
class SkinResourceSet final : public ResourceResolver {
public:
    using Pictures = std::map<std::string, morvane::ComPtr<Picture>, std::less<>>;

    /// Decodes a skin's pictures; the first one that fails is the error. Throws std::bad_alloc.
    static std::optional<skin::SkinError> decode(const skin::Skin& skin, Pictures& result);

    /// Takes over a skin and its decoded pictures. Throws std::bad_alloc.
    void adopt(const skin::Skin& skin, Pictures pictures, IVexRes* resources);

    /// Makes the resources of the skin known by their names, and by their ids where these differ. Those of former
    /// skins, which controls may still hold, are not.
    void publish(const skin::Skin& skin, ResourceStore& store) const;

    /// By id; the empty id is none.
    morvane::ComPtr<IDispatch> find(enumPropType type, std::wstring_view id) const override;

    template <class Object>
    using ById = std::map<std::string, morvane::ComPtr<Object>, std::less<>>;

    /// The objects of one kind.
    template <class Object>
    const ById<Object>& all() const noexcept
    {
        return std::get<ById<Object>>(m_objects);
    }

    /// The set without what former skins left in it.
    SkinResourceSet of(const skin::Skin& skin) const;

    /// Makes an object one of the set.
    template <class Object>
    void add(const std::string& id, morvane::ComPtr<Object> object)
    {
        std::get<ById<Object>>(m_objects).insert_or_assign(id, std::move(object));
    }

private:
    template <class Object>
    ById<Object>& own() noexcept
    {
        return std::get<ById<Object>>(m_objects);
    }

    std::tuple<Pictures, ById<ImageBase>, ById<TextStyle>, ById<Font>, ById<FillColor>, ById<Cursor>> m_objects;
};

// What the entries of a skin say, as the objects have it.
ImageSection sectionOf(const skin::ImageSection& entry);
TextLook lookOf(const skin::TextStyle& entry);
LOGFONTW fontOf(const skin::Font& entry);
/// The name that people see: the first of these that is not empty.
std::wstring nameOf(const std::string& name, const skin::Resource& entry);
std::wstring nameOf(const skin::Picture& entry);

/// Between the skin's UTF-8 and the platform's text.
std::wstring widened(std::string_view text);
std::string narrowed(std::wstring_view text);

} // namespace ambrel
