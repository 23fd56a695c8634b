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

    /// Makes the resources known by their names, and by their ids where these differ.
    void publish(const skin::Skin& skin, ResourceStore& store) const;

    /// By id; the empty id is none.
    morvane::ComPtr<IDispatch> find(enumPropType type, std::wstring_view id) const override;

private:
    template <class Object>
    using ById = std::map<std::string, morvane::ComPtr<Object>, std::less<>>;

    Pictures m_pictures;
    ById<ImageBase> m_sections;
    ById<TextStyle> m_texts;
    ById<Font> m_fonts;
    ById<FillColor> m_fills;
    ById<Cursor> m_cursors;
};

/// Between the skin's UTF-8 and the platform's text.
std::wstring widened(std::string_view text);
std::string narrowed(std::wstring_view text);

} // namespace ambrel
