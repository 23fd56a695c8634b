#pragma once

#include "ambrel/skin/model.h"

#include <array>
#include <span>
#include <variant>

/// The attributes of a package's elements, as data: the reader, the writer and the test of the documentation walk these
/// tables.
namespace ambrel::skin {

/// Where an attribute that names a resource must find it.
enum class Section { None, Colours, Pictures, Fonts, Gradients, ImageSections, TextStyles, Cursors };
inline constexpr std::size_t kSections = 8;

/// The element of shareres.xml that holds the section.
std::string_view sectionName(Section section);

/// "a picture", "an image section"...
std::string_view describe(Section section);

template <class Entry>
using FieldMember = std::variant<std::string Entry::*, bool Entry::*, std::int32_t Entry::*, Colour Entry::*,
                                 std::optional<std::string> Entry::*, std::optional<bool> Entry::*,
                                 std::optional<std::int32_t> Entry::*>;

/// One attribute of an element that becomes an Entry.
template <class Entry>
struct Field {
    std::string_view name;
    FieldMember<Entry> member;
    std::int32_t least = 0; ///< of a number
    std::int32_t most = 0;
    Section refersTo = Section::None;
    std::string_view alias = {}; ///< the attribute's name in the compact layout where it differs
};

template <class Entry>
std::span<const Field<Entry>> fieldsOf();

template <>
std::span<const Field<PredefinedColour>> fieldsOf();
template <>
std::span<const Field<Picture>> fieldsOf();
template <>
std::span<const Field<Font>> fieldsOf();
template <>
std::span<const Field<Gradient>> fieldsOf();
template <>
std::span<const Field<ImageSection>> fieldsOf();
template <>
std::span<const Field<TextStyle>> fieldsOf();
template <>
std::span<const Field<Cursor>> fieldsOf();
template <>
std::span<const Field<ObjectSettings>> fieldsOf();

/// One number of a position record, an attribute of its own in the full layout.
struct PositionField {
    std::string_view name;
    PositionAxis Position::*axis;
    std::int32_t PositionAxis::*member;
    std::int32_t least;
    std::int32_t most;
};
std::span<const PositionField> positionFields();

template <class Entry>
inline constexpr Section kSectionOf = Section::None;
template <>
inline constexpr Section kSectionOf<PredefinedColour> = Section::Colours;
template <>
inline constexpr Section kSectionOf<Picture> = Section::Pictures;
template <>
inline constexpr Section kSectionOf<Font> = Section::Fonts;
template <>
inline constexpr Section kSectionOf<Gradient> = Section::Gradients;
template <>
inline constexpr Section kSectionOf<ImageSection> = Section::ImageSections;
template <>
inline constexpr Section kSectionOf<TextStyle> = Section::TextStyles;
template <>
inline constexpr Section kSectionOf<Cursor> = Section::Cursors;

/// Whether the compact layout keeps the setting in objects.xml; the others stand in prop.xml.
bool standsWithObject(std::string_view setting);

/// Whether the name is that of a setting or of the position.
bool isSettingName(std::string_view attribute);

/// Sections of shareres.xml that are kept as they are.
std::span<const std::string_view> keptSections();

/// The setting that refers to an entry of the kept section SkinRgns.
inline constexpr std::string_view kRegionSection = "SkinRgns";
inline constexpr std::string_view kRegionSetting = "RgnInfo.SkinRgnId";

/// Suffix of a property key of the full layout, and attribute of a property in the key map, that tells its kind;
/// empty for plain values.
std::string_view kindAttribute(ValueKind kind);

/// The kind that such a word names, Plain for any other.
ValueKind kindOfAttribute(std::string_view word);
Section sectionOf(ValueKind kind);

/// Attributes that designers leave in packages and that mean nothing outside them.
bool isBookkeeping(std::string_view attribute);

namespace names {
inline constexpr std::string_view kRoot = "Ambrel";
inline constexpr std::string_view kObjectsFile = "objects.xml";
inline constexpr std::string_view kResourcesFile = "shareres.xml";
inline constexpr std::string_view kPropertiesFile = "prop.xml";
inline constexpr std::string_view kKeyMapFile = "mapattrib.xml";
inline constexpr std::string_view kLanguagesFile = "languages.xml";
inline constexpr std::string_view kLanguage = "Language";
inline constexpr std::string_view kNumber = "Number";
inline constexpr std::string_view kText = "Text";
inline constexpr std::string_view kKey = "Key";
inline constexpr std::string_view kValue = "Value";
inline constexpr std::string_view kClass = "AddinGuid";
inline constexpr std::string_view kName = "Name";
inline constexpr std::string_view kType = "Type";
inline constexpr std::string_view kPosition = "DragPosition";
inline constexpr std::string_view kExpanded = "IsExpand";
inline constexpr std::string_view kDefault = "Default";
inline constexpr std::string_view kVersion = "Version";
inline constexpr std::string_view kShare = "share";
inline constexpr std::string_view kObjects = "Objects";
inline constexpr std::string_view kProperty = "Property";
inline constexpr std::string_view kFullInfo = "SkinInfo";
inline constexpr std::string_view kCompactInfo = "VexInfo";
inline constexpr std::string_view kPropertyInfo = "SknInfo";
} // namespace names

/// Languages are numbered from 0.
inline constexpr std::int32_t kLanguages = 5;

inline constexpr std::string_view kPluginType = "90000";

/// An element and an attribute of it that the reader knows; for the documentation.
struct Word {
    std::string element;
    std::string attribute; ///< empty for the element itself

    auto operator<=>(const Word&) const = default;
};
std::vector<Word> vocabulary();

} // namespace ambrel::skin
