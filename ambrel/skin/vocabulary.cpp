#include "ambrel/skin/vocabulary.h"

#include <algorithm>

namespace ambrel::skin {

namespace {

constexpr std::int32_t kPixels = 32767;
constexpr std::int32_t kAnyNumber = 0x7FFFFFFF;

template <class Entry>
constexpr Field<Entry> caption()
{
    return {"Caption", static_cast<std::string Entry::*>(&Entry::caption)};
}

} // namespace

template <>
std::span<const Field<PredefinedColour>> fieldsOf()
{
    static const Field<PredefinedColour> kFields[] = {
        caption<PredefinedColour>(),
        {"clrValue", &PredefinedColour::colour},
    };
    return kFields;
}

template <>
std::span<const Field<Picture>> fieldsOf()
{
    static const Field<Picture> kFields[] = {
        caption<Picture>(),
        {"IsThemeRes", &Picture::isThemeRes},
        {"Name", &Picture::name},
    };
    return kFields;
}

template <>
std::span<const Field<Font>> fieldsOf()
{
    static const Field<Font> kFields[] = {
        caption<Font>(),
        {"IsThemeRes", &Font::isThemeRes},
        {"height", &Font::height, -4096, 4096},
        {"width", &Font::width, 0, 4096},
        {"escape", &Font::escapement, -3600, 3600},
        {"orien", &Font::orientation, -3600, 3600},
        {"weight", &Font::weight, 0, 1000},
        {"italic", &Font::italic},
        {"underline", &Font::underline},
        {"strikeout", &Font::strikeOut},
        {"charset", &Font::charSet, 0, 255},
        {"outprec", &Font::outPrecision, 0, 255},
        {"clippre", &Font::clipPrecision, 0, 255},
        {"quality", &Font::quality, 0, 255},
        {"pitch", &Font::pitchAndFamily, 0, 255},
        {"fontname", &Font::faceName},
        {"shadowOffsetx", &Font::shadowX, -kPixels, kPixels},
        {"shadowOffsety", &Font::shadowY, -kPixels, kPixels},
        {"clrShadow", &Font::shadowColour},
        {"FontAngle", &Font::angle, -360, 360},
        {"DrawingStyle", &Font::drawingStyle, 0, 255},
        {"AntiAlias", &Font::antiAlias, 0, 255},
        {"language", &Font::language, 0, 65535},
        {"Name", &Font::name},
    };
    return kFields;
}

template <>
std::span<const Field<Gradient>> fieldsOf()
{
    static const Field<Gradient> kFields[] = {
        caption<Gradient>(),
        {"clrStart", &Gradient::start},
        {"clrEnd", &Gradient::end},
        {"GradientIrotation", &Gradient::rotation, -360, 360},
    };
    return kFields;
}

template <>
std::span<const Field<ImageSection>> fieldsOf()
{
    static const Field<ImageSection> kFields[] = {
        caption<ImageSection>(),
        {"IsThemeRes", &ImageSection::isThemeRes},
        {"left", &ImageSection::left, 0, kPixels},
        {"right", &ImageSection::right, 0, kPixels},
        {"top", &ImageSection::top, 0, kPixels},
        {"bottom", &ImageSection::bottom, 0, kPixels},
        {"TopHeight", &ImageSection::topHeight, 0, kPixels},
        {"BottHeight", &ImageSection::bottomHeight, 0, kPixels},
        {"LeftWidth", &ImageSection::leftWidth, 0, kPixels},
        {"RightWidth", &ImageSection::rightWidth, 0, kPixels},
        {"LeftStretch", &ImageSection::leftStretch},
        {"RightStretch", &ImageSection::rightStretch},
        {"TopStretch", &ImageSection::topStretch},
        {"BottStretch", &ImageSection::bottomStretch},
        {"ClientStretch", &ImageSection::clientStretch},
        {"clrTrans", &ImageSection::transparent},
        {"IsTrans", &ImageSection::isTransparent},
        {"Opacity", &ImageSection::opacity, 0, 255},
        {"clrColorize", &ImageSection::colourize},
        {"SupportPerPixel", &ImageSection::supportPerPixel},
        {"PicId", &ImageSection::picture, 0, 0, Section::Pictures},
        {"ImageCount", &ImageSection::imageCount, 1, kPixels},
        {"Name", &ImageSection::name},
    };
    return kFields;
}

template <>
std::span<const Field<TextStyle>> fieldsOf()
{
    static const Field<TextStyle> kFields[] = {
        caption<TextStyle>(),
        {"IsThemeRes", &TextStyle::isThemeRes},
        {"HAlign", &TextStyle::hAlign, 0, 2},
        {"VAlign", &TextStyle::vAlign, 0, 2},
        {"clrText", &TextStyle::text},
        {"Effect", &TextStyle::effect, 0, 255},
        {"clrShadow", &TextStyle::shadow},
        {"ShadowH", &TextStyle::shadowH, -kPixels, kPixels},
        {"ShadowV", &TextStyle::shadowV, -kPixels, kPixels},
        {"ShadowPixel", &TextStyle::shadowPixel, 0, kPixels},
        {"LeftOffset", &TextStyle::leftOffset, -kPixels, kPixels},
        {"RightOffset", &TextStyle::rightOffset, -kPixels, kPixels},
        {"TopOffset", &TextStyle::topOffset, -kPixels, kPixels},
        {"BottOffset", &TextStyle::bottomOffset, -kPixels, kPixels},
        {"HotkeyPrefixShow", &TextStyle::hotkeyPrefixShow, 0, 2},
        {"StringTrimming", &TextStyle::stringTrimming, 0, 5},
        {"SingleLine", &TextStyle::singleLine},
        {"VertDraw", &TextStyle::vertDraw},
        {"RightToLeft", &TextStyle::rightToLeft},
        {"OutlineSize", &TextStyle::outlineSize, 0, 255},
        {"PreFontGUID", &TextStyle::font, 0, 0, Section::Fonts, "PreFontGUID0"},
        {"Name", &TextStyle::name},
    };
    return kFields;
}

template <>
std::span<const Field<Cursor>> fieldsOf()
{
    static const Field<Cursor> kFields[] = {
        caption<Cursor>(),
        {"IsStand", &Cursor::isStandard},
        {"StandCursor", &Cursor::standardCursor, 0, 65535},
        {"PicId", &Cursor::picture, 0, 0, Section::Pictures},
    };
    return kFields;
}

template <>
std::span<const Field<ObjectSettings>> fieldsOf()
{
    static const Field<ObjectSettings> kFields[] = {
        {"Width", &ObjectSettings::width, 0, kPixels},
        {"Height", &ObjectSettings::height, 0, kPixels},
        {"ResId", &ObjectSettings::resId},
        {"SaveBits", &ObjectSettings::saveBits},
        {"HaveCanvas", &ObjectSettings::haveCanvas, 0, 1},
        {"CanvasFlages", &ObjectSettings::canvasFlags, 0, 17},
        {"Visible", &ObjectSettings::visible},
        {"DisposeMouseMsg", &ObjectSettings::disposeMouse},
        {"Opacity", &ObjectSettings::opacity, 0, 255},
        {"BlendWithParent", &ObjectSettings::blendWithParent},
        {"CustomCursor", &ObjectSettings::customCursor, 0, 0, Section::Cursors},
        {"Cursor", &ObjectSettings::cursor, 0, 65535},
        {"Script", &ObjectSettings::script},
        {"CanDragData", &ObjectSettings::canDragData},
        {"PsdThemeGuid", &ObjectSettings::psdThemeGuid},
        {kRegionSetting, &ObjectSettings::region},
        {"TabStop", &ObjectSettings::tabStop},
        {"TabOrder", &ObjectSettings::tabOrder, -1, kAnyNumber},
        {"DrawFocus", &ObjectSettings::drawFocus},
    };
    return kFields;
}

std::span<const PositionField> positionFields()
{
    static const PositionField kFields[] = {
        {"HAlign", &Position::horizontal, &PositionAxis::align, 0, kLargestAlign},
        {"HSpaceType", &Position::horizontal, &PositionAxis::space, 0, kLargestSpace},
        {"left", &Position::horizontal, &PositionAxis::nearDistance, -kLargestDistance, kLargestDistance},
        {"right", &Position::horizontal, &PositionAxis::farDistance, -kLargestDistance, kLargestDistance},
        {"width", &Position::horizontal, &PositionAxis::size, -kLargestDistance, kLargestDistance},
        {"VAlign", &Position::vertical, &PositionAxis::align, 0, kLargestAlign},
        {"VSpaceType", &Position::vertical, &PositionAxis::space, 0, kLargestSpace},
        {"top", &Position::vertical, &PositionAxis::nearDistance, -kLargestDistance, kLargestDistance},
        {"bottom", &Position::vertical, &PositionAxis::farDistance, -kLargestDistance, kLargestDistance},
        {"height", &Position::vertical, &PositionAxis::size, -kLargestDistance, kLargestDistance},
    };
    return kFields;
}

namespace {

constexpr std::string_view kWithObject[] = {"Width",        "Height",  "ResId",    "SaveBits", "HaveCanvas",
                                            "CanvasFlages", "TabStop", "TabOrder", "DrawFocus"};

constexpr std::string_view kSectionNames[kSections] = {
    "", "PreDefColors", "Images", "FontExs", "GradientColor", "ImageSecs", "TextStyles", "SkinCursors"};
constexpr std::string_view kSectionWords[kSections] = {"",           "a predefined colour", "a picture",    "a font",
                                                       "a gradient", "an image section",    "a text style", "a cursor"};
constexpr std::string_view kKeptSections[] = {"FontFiles",  "Sounds",       "Customs", "PluginFiles",
                                              "ImageFonts", kRegionSection, "Apps"};

struct Kind {
    ValueKind kind;
    std::string_view attribute;
    Section section;
};

constexpr Kind kKinds[] = {
    {ValueKind::Plain, "", Section::None},
    {ValueKind::ImageSection, "ImageSecId", Section::ImageSections},
    {ValueKind::TextStyle, "TextStyleId", Section::TextStyles},
    {ValueKind::Cursor, "SkinCursorId", Section::Cursors},
    {ValueKind::Gradient, "GradientColorId", Section::Gradients},
    {ValueKind::Font, "FontExId", Section::Fonts},
};

template <class Entry>
void addWords(std::vector<Word>& words, std::string_view element)
{
    words.push_back({std::string(element), ""});
    for (const Field<Entry>& field : fieldsOf<Entry>()) {
        words.push_back({std::string(element), std::string(field.name)});
        if (!field.alias.empty())
            words.push_back({std::string(element), std::string(field.alias)});
    }
}

} // namespace

std::string_view sectionName(Section section)
{
    return kSectionNames[static_cast<std::size_t>(section)];
}

std::string_view describe(Section section)
{
    return kSectionWords[static_cast<std::size_t>(section)];
}

bool standsWithObject(std::string_view setting)
{
    return std::find(std::begin(kWithObject), std::end(kWithObject), setting) != std::end(kWithObject);
}

bool isSettingName(std::string_view attribute)
{
    const auto fields = fieldsOf<ObjectSettings>();
    return attribute == names::kPosition ||
           std::any_of(fields.begin(), fields.end(), [&](const auto& field) { return field.name == attribute; });
}

std::span<const std::string_view> keptSections()
{
    return kKeptSections;
}

std::string_view kindAttribute(ValueKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].attribute;
}

ValueKind kindOfAttribute(std::string_view word)
{
    const auto it =
        std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& k) { return k.attribute == word; });
    return it == std::end(kKinds) ? ValueKind::Plain : it->kind;
}

Section sectionOf(ValueKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].section;
}

bool isBookkeeping(std::string_view attribute)
{
    return attribute == "VexObj" || attribute == "SkinResourcePtr";
}

std::vector<Word> vocabulary()
{
    std::vector<Word> words;
    addWords<PredefinedColour>(words, sectionName(Section::Colours));
    addWords<Picture>(words, sectionName(Section::Pictures));
    addWords<Font>(words, sectionName(Section::Fonts));
    addWords<Gradient>(words, sectionName(Section::Gradients));
    addWords<ImageSection>(words, sectionName(Section::ImageSections));
    addWords<TextStyle>(words, sectionName(Section::TextStyles));
    addWords<Cursor>(words, sectionName(Section::Cursors));
    for (const std::string_view section : keptSections())
        words.push_back({std::string(section), ""});

    const std::string object = "object";
    addWords<ObjectSettings>(words, object);
    for (const std::string_view name : {names::kClass, names::kName, names::kType, names::kPosition})
        words.push_back({object, std::string(name)});
    for (const PositionField& field : positionFields())
        words.push_back({object, std::string(field.name)});
    for (const std::string_view name : {"VexObj", "SkinResourcePtr"})
        words.push_back({object, std::string(name)});

    const std::string key = "property";
    words.push_back({key, ""});
    words.push_back({key, std::string(names::kDefault)});
    for (const Kind& kind : kKinds) {
        if (kind.kind != ValueKind::Plain)
            words.push_back({key, std::string(kind.attribute)});
    }
    words.push_back({std::string(names::kRoot), ""});
    words.push_back({std::string(names::kRoot), std::string(names::kVersion)});
    const std::string language(names::kLanguage);
    const std::string text(names::kText);
    words.insert(words.end(), {{language, ""},
                               {language, std::string(names::kNumber)},
                               {text, ""},
                               {text, std::string(names::kKey)},
                               {text, std::string(names::kValue)}});
    for (const std::string_view name : {names::kShare, names::kObjects, names::kProperty, names::kFullInfo,
                                        names::kCompactInfo, names::kPropertyInfo})
        words.push_back({std::string(name), ""});
    return words;
}

} // namespace ambrel::skin
