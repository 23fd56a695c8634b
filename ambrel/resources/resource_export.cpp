#include "ambrel/resources/resource_export.h"

#include "ambrel/render/implementation_of.h"
#include "ambrel/render/picture_decoder.h"

#include <algorithm>
#include <set>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;

namespace {

/// Where entries of a kind of object are, and what their names begin with.
template <class Object>
struct EntriesOf;
template <>
struct EntriesOf<Picture> {
    static constexpr const char* kStem = "Pic";
    static auto& in(skin::SharedResources& all) { return all.pictures; }
};
template <>
struct EntriesOf<ImageBase> {
    static constexpr const char* kStem = "ImageSection";
    static auto& in(skin::SharedResources& all) { return all.imageSections; }
};
template <>
struct EntriesOf<TextStyle> {
    static constexpr const char* kStem = "TextStyle";
    static auto& in(skin::SharedResources& all) { return all.textStyles; }
};
template <>
struct EntriesOf<Font> {
    static constexpr const char* kStem = "FontEx";
    static auto& in(skin::SharedResources& all) { return all.fonts; }
};
template <>
struct EntriesOf<FillColor> {
    static constexpr const char* kStem = "GradientColor";
    static auto& in(skin::SharedResources& all) { return all.gradients; }
};
template <>
struct EntriesOf<Cursor> {
    static constexpr const char* kStem = "SkinCursor";
    static auto& in(skin::SharedResources& all) { return all.cursors; }
};

template <class Interface>
std::string nameOfObject(Interface& object)
{
    Bstr name;
    object.GetName(name.put());
    return narrowed(name.view());
}

/// A name that was changed; entries whose object has the name that the entry gave it stay as they are.
template <class Object>
void takeName(std::string& place, const std::string& spelled, const skin::Resource& entry, Object& object)
{
    std::string name = nameOfObject(object);
    if (name != narrowed(nameOf(spelled, entry)))
        place = std::move(name);
}

/// A value that differs from what the entry gave the object. Entries can say more than objects keep; that stays.
template <class Place, class Value>
void takeValue(Place& place, Value given, Value now)
{
    if (!(given == now))
        place = static_cast<Place>(now);
}
void takeColour(skin::Colour& place, OLE_COLOR now)
{
    if (place.value != now)
        place = {static_cast<std::uint32_t>(now), {}};
}

constexpr const char* endingOf(skin::PictureKind kind) noexcept
{
    switch (kind) {
    case skin::PictureKind::Bmp:
        return ".bmp";
    case skin::PictureKind::Jpeg:
        return ".jpg";
    case skin::PictureKind::Gif:
        return ".gif";
    case skin::PictureKind::Icon:
        return ".ico";
    default:
        return ".png";
    }
}

/// As the file has it, or, of a kind that packages do not hold, the same picture as a PNG.
skin::Bytes bytesForPackage(const Picture& picture, const Picture::Form& form)
{
    if (skin::probePicture(form.bytes, {}))
        return {form.bytes.begin(), form.bytes.end()};
    return encodePng(picture.frame(Scale(form.percent)).pixels);
}

/// What the file of a picture is called that had none: as the picture, where its name ends like a file's.
std::string fileNameFor(const std::string& name, const skin::Picture& entry, skin::PictureKind kind)
{
    const auto usable = skin::outcomeOf([&] {
        skin::checkFileName(name);
        return std::monostate();
    });
    return usable && name.rfind('.') != std::string::npos ? name : entry.id + endingOf(kind);
}

bool isColourless(FillColor& fill)
{
    OLE_COLOR start = 0;
    OLE_COLOR end = 0;
    fill.get_clrStart(&start);
    fill.get_clrEnd(&end);
    return start == 0xFFFFFFFF && end == 0xFFFFFFFF;
}

} // namespace

ResourceExport::ResourceExport(skin::Skin& skin, const SkinResourceSet& opened)
    : m_skin(skin), m_resources(opened.of(skin))
{
}

void ResourceExport::fail(skin::Code code, const skin::Resource& entry, std::string message)
{
    if (m_error)
        return;
    m_error.emplace();
    m_error->code = code;
    m_error->file = "shareres.xml";
    m_error->element = entry.id;
    m_error->message = std::move(message);
}

template <class Object>
void ResourceExport::updateAll()
{
    auto& entries = EntriesOf<Object>::in(m_skin.resources);
    const auto& objects = m_resources.all<Object>();
    // By index: taking an entry over may make another one of a resource that it refers to now.
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto found = objects.find(entries[i].id);
        if (found == objects.end())
            continue;
        auto entry = entries[i];
        take(entry, *found->second.get());
        entries[i] = std::move(entry);
    }
}

void ResourceExport::updateEntries()
{
    updateAll<Picture>();
    updateAll<ImageBase>();
    updateAll<Font>();
    updateAll<TextStyle>();
    updateAll<FillColor>();
    updateAll<Cursor>();
}

void ResourceExport::addFrom(const ResourceStore& store)
{
    constexpr std::pair<VexObjType, enumPropType> kKinds[] = {{VEXOBJTYPE_IMAGEBASE, _PROPTYPE_IMAGESECTION},
                                                              {VEXOBJTYPE_FONTEX, _PROPTYPE_FONT},
                                                              {VEXOBJTYPE_TEXTSTYLE, _PROPTYPE_TEXTSTYLE},
                                                              {VEXOBJTYPE_GRADIENTCLR, _PROPTYPE_FILLCOLOR},
                                                              {VEXOBJTYPE_CURSOR, _PROPTYPE_CURSOR}};
    for (const ComPtr<IVexObj>& each : store.all(VEXOBJTYPE_IMAGE)) {
        const ComPtr<Picture> picture = implementationOf<Picture>(each.get());
        if (picture && picture->frameCount() > 0) // an empty one is a name so far, nothing to show
            idOfObject<Picture>(each.get());
    }
    for (const auto& [stored, kind] : kKinds) {
        for (const ComPtr<IVexObj>& each : store.all(stored))
            idOf(kind, each.get());
    }
}

void ResourceExport::removeGone(const ResourceStore& store)
{
    std::set<IVexObj*> stored;
    for (const VexObjType type : {VEXOBJTYPE_IMAGE, VEXOBJTYPE_IMAGEBASE, VEXOBJTYPE_FONTEX, VEXOBJTYPE_TEXTSTYLE,
                                  VEXOBJTYPE_GRADIENTCLR, VEXOBJTYPE_CURSOR}) {
        for (const ComPtr<IVexObj>& each : store.all(type))
            stored.insert(each.get());
    }
    const auto isGoneOf = [&]<class Object>(const SkinResourceSet::ById<Object>& objects, const std::string& id) {
        const auto found = objects.find(id);
        return found != objects.end() && !stored.contains(found->second.get());
    };
    skin::removeUnused(m_skin, [&](skin::Section section, const std::string& id) {
        switch (section) {
        case skin::Section::Pictures:
            return isGoneOf(m_resources.all<Picture>(), id);
        case skin::Section::Fonts:
            return isGoneOf(m_resources.all<Font>(), id);
        case skin::Section::Gradients:
            return isGoneOf(m_resources.all<FillColor>(), id);
        case skin::Section::ImageSections:
            return isGoneOf(m_resources.all<ImageBase>(), id);
        case skin::Section::TextStyles:
            return isGoneOf(m_resources.all<TextStyle>(), id);
        case skin::Section::Cursors:
            return isGoneOf(m_resources.all<Cursor>(), id);
        default:
            return false;
        }
    });
    m_resources = m_resources.of(m_skin);
}

std::string ResourceExport::knownIdOf(IVexCursor* cursor) const
{
    const auto& known = m_resources.all<Cursor>();
    const auto found = std::ranges::find_if(
        known, [&](const auto& each) { return static_cast<IVexCursor*>(each.second.get()) == cursor; });
    return found == known.end() ? std::string() : found->first;
}

std::string ResourceExport::idOf(enumPropType type, IDispatch* resource)
{
    switch (type) {
    case _PROPTYPE_IMAGESECTION:
        return idOfObject<ImageBase>(resource);
    case _PROPTYPE_TEXTSTYLE:
        return idOfObject<TextStyle>(resource);
    case _PROPTYPE_FONT:
        return idOfObject<Font>(resource);
    case _PROPTYPE_FILLCOLOR: {
        const auto fill = implementationOf<FillColor>(resource);
        return fill && isColourless(*fill.get()) ? std::string() : idOfObject<FillColor>(resource);
    }
    case _PROPTYPE_CURSOR:
        return idOfObject<Cursor>(resource);
    default:
        return {};
    }
}

template <class Object>
std::string ResourceExport::idOfObject(IUnknown* resource)
{
    if (!resource)
        return {};
    const ComPtr<Object> object = implementationOf<Object>(resource);
    if (!object) {
        fail(skin::Code::CannotWrite, {}, "a resource of another program cannot be saved");
        return {};
    }
    const auto& known = m_resources.all<Object>();
    const auto found = std::ranges::find_if(known, [&](const auto& each) { return each.second.get() == object.get(); });
    return found != known.end() ? found->first : addEntry(object);
}

template <class Object>
std::string ResourceExport::addEntry(const ComPtr<Object>& object)
{
    auto& entries = EntriesOf<Object>::in(m_skin.resources);
    const auto isTaken = [&](const std::string& id) {
        return std::ranges::any_of(entries, [&](const auto& each) { return each.id == id; });
    };
    typename std::remove_reference_t<decltype(entries)>::value_type entry;
    entry.id = skin::freshName(EntriesOf<Object>::kStem, isTaken);
    const std::size_t index = entries.size();
    entries.push_back(entry); // entries of other kinds may be made while this one is taken over
    m_resources.add(entry.id, object);
    take(entry, *object.get());
    entries[index] = entry;
    return entry.id;
}

void ResourceExport::take(skin::Picture& entry, Picture& object)
{
    takeFiles(entry, object);
    std::string name = nameOfObject(object);
    if (name != narrowed(nameOf(entry)))
        entry.name = std::move(name);
}

void ResourceExport::takeFiles(skin::Picture& entry, Picture& object)
{
    const std::vector<Picture::Form> now = object.forms();
    const auto isSame = [&](const skin::PictureFile& file, const Picture::Form& form) {
        return file.scale == form.percent && std::ranges::equal(m_skin.bytesOf(file), form.bytes);
    };
    if (std::ranges::equal(entry.files, now, isSame) && !now.empty())
        return;
    if (now.empty()) {
        if (entry.files.empty())
            fail(skin::Code::MissingPicture, entry, "the picture was not made from a file and cannot be saved");
        return;
    }
    if (entry.files.empty()) {
        const auto info = skin::probePicture(now.front().bytes, entry.id);
        entry.caption = fileNameFor(nameOfObject(object), entry, info ? info->kind : skin::PictureKind::Png);
    }
    std::vector<skin::PictureForm> forms;
    for (const Picture::Form& each : now)
        forms.push_back({each.percent, bytesForPackage(object, each)});
    // The entry that stands in the skin, which knows what else uses its files.
    skin::Picture& place = *std::ranges::find(m_skin.resources.pictures, entry.id, &skin::Picture::id);
    place = entry;
    const auto outcome = skin::replacePicture(m_skin, place, std::move(forms));
    if (outcome)
        entry = place;
    else
        fail(outcome.error().code, entry, outcome.error().message);
}

void ResourceExport::take(skin::ImageSection& entry, ImageBase& object)
{
    takeName(entry.name, entry.name, entry, object);
    const ImageSection given = sectionOf(entry);
    const ImageSection& now = object.section();
    takeValue(entry.left, given.rect.left, now.rect.left);
    takeValue(entry.top, given.rect.top, now.rect.top);
    takeValue(entry.right, given.rect.right, now.rect.right);
    takeValue(entry.bottom, given.rect.bottom, now.rect.bottom);
    takeValue(entry.leftWidth, given.borders.left, now.borders.left);
    takeValue(entry.topHeight, given.borders.top, now.borders.top);
    takeValue(entry.rightWidth, given.borders.right, now.borders.right);
    takeValue(entry.bottomHeight, given.borders.bottom, now.borders.bottom);
    takeValue(entry.leftStretch, given.stretch.left, now.stretch.left);
    takeValue(entry.topStretch, given.stretch.top, now.stretch.top);
    takeValue(entry.rightStretch, given.stretch.right, now.stretch.right);
    takeValue(entry.bottomStretch, given.stretch.bottom, now.stretch.bottom);
    takeValue(entry.clientStretch, given.stretch.client, now.stretch.client);
    takeValue(entry.isTransparent, given.isTransparent, now.isTransparent);
    takeValue(entry.opacity, given.opacity, now.opacity);
    takeValue(entry.supportPerPixel, given.usesPixelAlpha, now.usesPixelAlpha);
    takeColour(entry.transparent, now.keyColour);
    takeColour(entry.colourize, now.colourise);
    if (now.imageCount != given.imageCount)
        entry.imageCount = now.imageCount;
    ComPtr<IVexPicture> picture;
    object.get_ImageObj(picture.put());
    entry.picture = idOfObject<Picture>(picture.get());
}

void ResourceExport::take(skin::TextStyle& entry, TextStyle& object)
{
    takeName(entry.name, entry.name, entry, object);
    const TextLook given = lookOf(entry);
    const TextLook& now = object.look();
    takeColour(entry.text, now.colour);
    takeColour(entry.shadow, now.shadowColour);
    takeValue(entry.hotkeyPrefixShow, given.hotkeyPrefix, now.hotkeyPrefix);
    takeValue(entry.singleLine, given.isSingleLine, now.isSingleLine);
    takeValue(entry.vertDraw, given.isVertical, now.isVertical);
    takeValue(entry.rightToLeft, given.isRightToLeft, now.isRightToLeft);
    takeValue(entry.hAlign, given.horizontal, now.horizontal);
    takeValue(entry.vAlign, given.vertical, now.vertical);
    takeValue(entry.stringTrimming, given.trimming, now.trimming);
    takeValue(entry.effect, given.effect, now.effect);
    takeValue(entry.shadowH, given.shadowX, now.shadowX);
    takeValue(entry.shadowV, given.shadowY, now.shadowY);
    takeValue(entry.shadowPixel, given.shadowOnPerPixel, now.shadowOnPerPixel);
    takeValue(entry.leftOffset, given.left, now.left);
    takeValue(entry.rightOffset, given.right, now.right);
    takeValue(entry.topOffset, given.top, now.top);
    takeValue(entry.bottomOffset, given.bottom, now.bottom);
    ComPtr<IVexFontEx> font;
    object.get_fontExPtr(font.put());
    entry.font = idOfObject<Font>(font.get());
}

void ResourceExport::take(skin::Font& entry, Font& object)
{
    takeName(entry.name, entry.name, entry, object);
    const LOGFONTW given = fontOf(entry);
    const LOGFONTW& now = object.logFont();
    takeValue(entry.height, given.lfHeight, now.lfHeight);
    takeValue(entry.width, given.lfWidth, now.lfWidth);
    takeValue(entry.escapement, given.lfEscapement, now.lfEscapement);
    takeValue(entry.orientation, given.lfOrientation, now.lfOrientation);
    takeValue(entry.weight, given.lfWeight, now.lfWeight);
    takeValue(entry.italic, given.lfItalic != 0, now.lfItalic != 0);
    takeValue(entry.underline, given.lfUnderline != 0, now.lfUnderline != 0);
    takeValue(entry.strikeOut, given.lfStrikeOut != 0, now.lfStrikeOut != 0);
    takeValue(entry.charSet, given.lfCharSet, now.lfCharSet);
    takeValue(entry.outPrecision, given.lfOutPrecision, now.lfOutPrecision);
    takeValue(entry.clipPrecision, given.lfClipPrecision, now.lfClipPrecision);
    takeValue(entry.quality, given.lfQuality, now.lfQuality);
    takeValue(entry.pitchAndFamily, given.lfPitchAndFamily, now.lfPitchAndFamily);
    if (std::wstring_view(given.lfFaceName) != std::wstring_view(now.lfFaceName))
        entry.faceName = narrowed(now.lfFaceName);
}

void ResourceExport::take(skin::Gradient& entry, FillColor& object)
{
    takeName(entry.caption, {}, entry, object);
    OLE_COLOR colour = 0;
    long rotation = 0;
    object.get_clrStart(&colour);
    takeColour(entry.start, colour);
    object.get_clrEnd(&colour);
    takeColour(entry.end, colour);
    object.get_nGradientIrotation(&rotation);
    entry.rotation = static_cast<std::int32_t>(rotation % 360);
}

void ResourceExport::take(skin::Cursor& entry, Cursor& object)
{
    takeName(entry.caption, {}, entry, object);
    VARIANT_BOOL isStandard = VARIANT_FALSE;
    object.IsStandardCursor(&isStandard);
    entry.isStandard = isStandard != VARIANT_FALSE;
    if (entry.isStandard) {
        long number = 0;
        object.GetStandardCursorID(&number);
        entry.standardCursor = static_cast<std::int32_t>(number);
        return;
    }
    ComPtr<IVexPicture> picture;
    object.get_ImageObj(picture.put());
    entry.picture = idOfObject<Picture>(picture.get());
}

} // namespace ambrel
