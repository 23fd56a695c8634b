#pragma once

#include "ambrel/skin/container.h"
#include "ambrel/skin/picture_probe.h"
#include "ambrel/skin/position.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A skin as plain values: what a package says, without the framework. Texts are UTF-8.
namespace ambrel::skin {

/// How a package spells its contents.
enum class Layout {
    Full,    ///< property values stand in objects.xml under their group path and name
    Compact, ///< style values stand in prop.xml under short keys that mapattrib.xml lists
};

struct Attribute {
    std::string name;
    std::string value;

    bool operator==(const Attribute&) const = default;
};

/// An element the reader does not interpret; it is kept so that saving loses nothing.
struct RawElement {
    std::string name;
    std::vector<Attribute> attributes;
    std::string text;
    std::vector<RawElement> children;

    bool operator==(const RawElement&) const = default;
};

/// 0x00BBGGRR, given as a number or as the name of a predefined colour.
struct Colour {
    std::uint32_t value = 0;
    std::string predefined; ///< empty when the colour is given as a number

    bool operator==(const Colour&) const = default;
};

/// What every shared resource has.
struct Resource {
    std::string id;      ///< the entry's element name, by which others refer to it
    std::string caption; ///< for people; for a picture the name of its file
    std::vector<Attribute> others;

    bool operator==(const Resource&) const = default;
};

/// One file of a picture: "name.png", or "name@150.png" with the same picture for 150 percent.
struct PictureFile {
    std::int32_t scale = 100; ///< percent
    std::string file;         ///< spelled as in Skin::files
    PictureInfo info;

    bool operator==(const PictureFile&) const = default;
};

struct Picture : Resource {
    std::optional<std::string> name; ///< where it is not called like its file
    bool isThemeRes = false;
    std::vector<PictureFile> files; ///< by ascending scale; the first is the 100 percent one

    bool operator==(const Picture&) const = default;
};

struct Font : Resource {
    std::string name;
    bool isThemeRes = false;
    std::int32_t height = -11; ///< as in a LOGFONT: negative is the character height in pixels
    std::int32_t width = 0;
    std::int32_t escapement = 0; ///< tenths of a degree
    std::int32_t orientation = 0;
    std::int32_t weight = 400;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    std::int32_t charSet = 1;
    std::int32_t outPrecision = 0;
    std::int32_t clipPrecision = 0;
    std::int32_t quality = 0;
    std::int32_t pitchAndFamily = 0;
    std::string faceName = "Tahoma";
    std::int32_t shadowX = 0;
    std::int32_t shadowY = 0;
    Colour shadowColour;
    std::int32_t angle = 0; ///< degrees
    std::int32_t drawingStyle = 0;
    std::int32_t antiAlias = 0;
    std::int32_t language = 0;

    bool operator==(const Font&) const = default;
};

struct Gradient : Resource {
    Colour start;
    Colour end;
    std::int32_t rotation = 0; ///< degrees

    bool operator==(const Gradient&) const = default;
};

struct ImageSection : Resource {
    std::string name;
    bool isThemeRes = false;
    std::int32_t left = 0; ///< the source rectangle in the 100 percent picture, right and bottom exclusive
    std::int32_t right = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;
    std::int32_t topHeight = 0; ///< the fixed borders, pixels
    std::int32_t bottomHeight = 0;
    std::int32_t leftWidth = 0;
    std::int32_t rightWidth = 0;
    bool leftStretch = false;
    bool rightStretch = false;
    bool topStretch = false;
    bool bottomStretch = false;
    bool clientStretch = true;
    Colour transparent{0x00FF00FF, {}};
    bool isTransparent = false;
    std::int32_t opacity = 255;
    Colour colourize;
    bool supportPerPixel = false;
    std::string picture;                    ///< id of the picture, empty for none
    std::optional<std::int32_t> imageCount; ///< images of equal size that lie in it along its longer side; 1 without

    bool operator==(const ImageSection&) const = default;
};

struct TextStyle : Resource {
    std::string name;
    bool isThemeRes = false;
    std::int32_t hAlign = 0; ///< 0 left, 1 centre, 2 right
    std::int32_t vAlign = 0; ///< 0 top, 1 centre, 2 bottom
    Colour text;
    std::int32_t effect = 0;
    Colour shadow;
    std::int32_t shadowH = 0;
    std::int32_t shadowV = 0;
    std::int32_t shadowPixel = 0;
    std::int32_t leftOffset = 0;
    std::int32_t rightOffset = 0;
    std::int32_t topOffset = 0;
    std::int32_t bottomOffset = 0;
    std::int32_t hotkeyPrefixShow = 0;
    std::int32_t stringTrimming = 0;
    bool singleLine = true;
    bool vertDraw = false;
    bool rightToLeft = false;
    std::int32_t outlineSize = 0;
    std::string font; ///< id of the font, empty for the default one

    bool operator==(const TextStyle&) const = default;
};

struct Cursor : Resource {
    bool isStandard = true;
    std::int32_t standardCursor = 32512;
    std::string picture; ///< id of the picture of a cursor that is not a standard one

    bool operator==(const Cursor&) const = default;
};

struct PredefinedColour : Resource {
    Colour colour;

    bool operator==(const PredefinedColour&) const = default;
};

/// The contents of shareres.xml.
struct SharedResources {
    std::vector<PredefinedColour> colours;
    std::vector<Picture> pictures;
    std::vector<Font> fonts;
    std::vector<Gradient> gradients;
    std::vector<ImageSection> imageSections;
    std::vector<TextStyle> textStyles;
    std::vector<Cursor> cursors;
    std::vector<RawElement> others; ///< the sections that are kept as they are

    bool operator==(const SharedResources&) const = default;
};

/// What a property's value is: a plain text (number, truth value, colour, text), or the id of a shared resource.
enum class ValueKind { Plain, ImageSection, TextStyle, Cursor, Gradient, Font };

struct Property {
    std::string group; ///< groups joined with '/'; empty when the package gives only the joined key
    std::string name;
    ValueKind kind = ValueKind::Plain;
    std::string value;

    bool operator==(const Property&) const = default;
};

/// Settings that every control has; a missing one leaves the control as it is.
struct ObjectSettings {
    std::optional<std::int32_t> width; ///< design size, pixels
    std::optional<std::int32_t> height;
    std::optional<std::string> resId;
    std::optional<bool> saveBits;
    std::optional<std::int32_t> haveCanvas;
    std::optional<std::int32_t> canvasFlags;
    std::optional<bool> visible;
    std::optional<bool> disposeMouse;
    std::optional<std::int32_t> opacity;
    std::optional<bool> blendWithParent;
    std::optional<std::string> customCursor; ///< id of a cursor, or empty
    std::optional<std::int32_t> cursor;      ///< number of a standard cursor
    std::optional<std::string> script;
    std::optional<bool> canDragData;
    std::optional<std::string> psdThemeGuid;
    std::optional<std::string> region; ///< id of an entry of SkinRgns, or empty
    std::optional<bool> tabStop;
    std::optional<std::int32_t> tabOrder;
    std::optional<bool> drawFocus;

    bool operator==(const ObjectSettings&) const = default;
};

struct SkinObject {
    std::string id;        ///< the element's name
    std::string className; ///< class identifier in braces, or the module word and a class number: "Morvane17"
    std::string name;
    ObjectSettings settings;
    std::optional<Position> position;
    std::vector<Property> properties; ///< full layout: all of them; compact layout: those of prop.xml
    std::vector<Property> content;    ///< compact layout: those of objects.xml, group empty
    std::string contentPrefix;        ///< what stands before the keys of `content`; empty for "Ambrel1_" and the id
    std::vector<Attribute> others;
    std::vector<Attribute> otherProps; ///< of the object's element in prop.xml
    std::vector<SkinObject> children;
    std::vector<RawElement> otherElements;

    bool operator==(const SkinObject&) const = default;
};

/// A node of mapattrib.xml: a group, a property with its short key, or a group's expanded state.
struct KeyNode {
    enum class Role { Group, Property, ExpandedState };

    Role role = Role::Group;
    std::string name;
    ValueKind kind = ValueKind::Plain;
    std::string key;                     ///< short key of a property
    std::optional<std::string> fallback; ///< value of a property whose short key the object lacks
    std::string text;                    ///< of an expanded state
    std::vector<Attribute> others;
    std::vector<KeyNode> children;

    bool operator==(const KeyNode&) const = default;
};

/// The keys of one control type ("Button").
struct TypeKeys {
    std::string type;
    std::vector<KeyNode> nodes;
    std::vector<Attribute> others;

    bool operator==(const TypeKeys&) const = default;
};

struct KeyMap {
    std::string version = "2.0";
    std::vector<TypeKeys> types;

    const TypeKeys* find(std::string_view type) const;
    bool operator==(const KeyMap&) const = default;
};

/// A text in one language, found by its key.
struct KeyedText {
    std::string key;
    std::string text;

    bool operator==(const KeyedText&) const = default;
};

/// The texts of one language.
struct LanguageTexts {
    std::int32_t language = 0; ///< as the framework numbers languages
    std::vector<KeyedText> texts;

    /// Null when there is none.
    const std::string* find(std::string_view key) const;
    bool operator==(const LanguageTexts&) const = default;
};

/// A resolved property value; the texts live as long as the skin.
struct PropertyValue {
    ValueKind kind;
    std::string_view value;
};

struct Skin {
    Layout layout = Layout::Full;
    std::optional<RawElement> info;     ///< SkinInfo or VexInfo of objects.xml
    std::optional<RawElement> propInfo; ///< SknInfo of prop.xml
    SharedResources resources;
    std::vector<SkinObject> objects;
    KeyMap keys;
    std::vector<LanguageTexts> languages;
    std::vector<RawElement> otherElements;     ///< of objects.xml's root, SkinCtrls among them
    std::vector<RawElement> otherPropElements; ///< of prop.xml's root
    PackageFiles files; ///< all files but the XML ones: pictures and whatever else the package brings

    /// The value that the skin gives a control's property, nullopt when it leaves the control's default: the object's
    /// own value, else what the key map gives for it. `groupPath` joins groups with '/' ("Unchecked/Normal").
    std::optional<PropertyValue> valueOf(const SkinObject& object, std::string_view groupPath,
                                         std::string_view name) const;

    /// The short key that the key map gives a property; null in the full layout and where the map has none.
    const KeyNode* keyOf(const SkinObject& object, std::string_view groupPath, std::string_view name) const;

    const Picture* picture(std::string_view id) const;
    const Font* font(std::string_view id) const;
    const Gradient* gradient(std::string_view id) const;
    const ImageSection* imageSection(std::string_view id) const;
    const TextStyle* textStyle(std::string_view id) const;
    const Cursor* cursor(std::string_view id) const;

    /// The picture's bytes.
    std::span<const std::uint8_t> bytesOf(const PictureFile& file) const;

    bool operator==(const Skin&) const = default;
};

/// Scales, in percent, for which a package may bring larger forms of a picture.
inline constexpr std::array<std::int32_t, 7> kLargerScales = {125, 150, 175, 200, 250, 300, 400};

/// What the file of a larger form is called: "folder/name@150.png" for "folder/name.png".
std::string scaledFileName(std::string_view file, std::int32_t scale);

/// The file of a picture to use at a scale: the smallest that is at least as large, else the largest.
const PictureFile& fileForScale(const Picture& picture, std::int32_t percent);

/// What stands before the keys of an object's content: root and object path, "Ambrel1_UIForm1_Button1".
std::string contentPrefixOf(const SkinObject& object);

/// The control type whose keys an object uses: by class number where it is known, else the object's element name
/// without its trailing digits.
std::string typeOf(const SkinObject& object);

/// Group path and property name in one, as keys of the full layout are: "Unchecked/Normal" and "Image" give
/// "UncheckedNormalImage".
std::string joinedKey(std::string_view groupPath, std::string_view name);

} // namespace ambrel::skin
