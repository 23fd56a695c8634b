#include "ambrel/resources/skin_resources.h"

#include "ambrel/resources/resource_store.h"
#include "frame/com/instance.h"

#include <algorithm>
#include <cwchar>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::toVariantBool;

namespace {

/// The object of an id: the one that is there already, else a new one.
template <class Object>
Object& objectFor(std::map<std::string, ComPtr<Object>, std::less<>>& objects, const std::string& id,
                  IVexRes* resources)
{
    ComPtr<Object>& place = objects[id];
    if (!place) {
        place = morvane::Instance<Object>::make();
        place->SetVexRes(resources);
    }
    return *place.get();
}

/// A resource is known by its entry's id, where that is one.
void takeId(ResourceIdentity& identity, const skin::Resource& entry)
{
    if (entry.id.starts_with("Guid"))
        identity.objectId = widened(entry.id);
}

template <class Object>
Object* objectIn(const std::map<std::string, ComPtr<Object>, std::less<>>& objects, const std::string& id)
{
    const auto found = objects.find(id);
    return found == objects.end() ? nullptr : found->second.get();
}

template <class Entries, class Object>
void publishAll(const Entries& entries, const std::map<std::string, ComPtr<Object>, std::less<>>& objects,
                VexObjType type, ResourceStore& store)
{
    for (const skin::Resource& each : entries) {
        if (Object* const object = objectIn(objects, each.id))
            store.add(type, object->identity().name, ComPtr<IVexObj>(object), true);
    }
    // Last, so that an entry is found by its own id even if another one is called like it.
    for (const skin::Resource& each : entries) {
        if (Object* const object = objectIn(objects, each.id))
            store.add(type, widened(each.id), ComPtr<IVexObj>(object), true);
    }
}

template <class Object, class Entries>
void copyOf(const Entries& entries, const SkinResourceSet& from, SkinResourceSet& to)
{
    for (const skin::Resource& each : entries) {
        if (Object* const object = objectIn(from.all<Object>(), each.id))
            to.add(each.id, ComPtr<Object>(object));
    }
}

} // namespace

std::wstring nameOf(const std::string& name, const skin::Resource& resource)
{
    return widened(!name.empty() ? name : !resource.caption.empty() ? resource.caption : resource.id);
}

std::wstring nameOf(const skin::Picture& entry)
{
    return nameOf(entry.name.value_or(std::string()), entry);
}

ImageSection sectionOf(const skin::ImageSection& s)
{
    ImageSection section;
    section.rect = {s.left, s.top, s.right, s.bottom};
    section.borders = {s.leftWidth, s.topHeight, s.rightWidth, s.bottomHeight};
    section.stretch = {s.leftStretch, s.topStretch, s.rightStretch, s.bottomStretch, s.clientStretch};
    section.isTransparent = s.isTransparent;
    section.keyColour = s.transparent.value;
    section.colourise = s.colourize.value;
    section.opacity = s.opacity;
    section.usesPixelAlpha = s.supportPerPixel;
    section.imageCount = s.imageCount.value_or(1);
    return section;
}

TextLook lookOf(const skin::TextStyle& t)
{
    TextLook look;
    look.colour = t.text.value;
    look.shadowColour = t.shadow.value;
    look.hotkeyPrefix = static_cast<short>(t.hotkeyPrefixShow);
    look.isSingleLine = t.singleLine;
    look.isVertical = t.vertDraw;
    look.isRightToLeft = t.rightToLeft;
    look.horizontal = static_cast<short>(t.hAlign);
    look.vertical = static_cast<short>(t.vAlign);
    look.trimming = static_cast<short>(t.stringTrimming);
    look.effect = static_cast<short>(t.effect);
    look.shadowX = static_cast<short>(t.shadowH);
    look.shadowY = static_cast<short>(t.shadowV);
    look.shadowOnPerPixel = static_cast<short>(t.shadowPixel);
    look.outlineSize = static_cast<short>(t.outlineSize);
    look.left = static_cast<short>(t.leftOffset);
    look.right = static_cast<short>(t.rightOffset);
    look.top = static_cast<short>(t.topOffset);
    look.bottom = static_cast<short>(t.bottomOffset);
    return look;
}

LOGFONTW fontOf(const skin::Font& f)
{
    LOGFONTW font{};
    font.lfHeight = f.height;
    font.lfWidth = f.width;
    font.lfEscapement = f.escapement;
    font.lfOrientation = f.orientation;
    font.lfWeight = f.weight;
    font.lfItalic = f.italic;
    font.lfUnderline = f.underline;
    font.lfStrikeOut = f.strikeOut;
    font.lfCharSet = static_cast<BYTE>(f.charSet);
    font.lfOutPrecision = static_cast<BYTE>(f.outPrecision);
    font.lfClipPrecision = static_cast<BYTE>(f.clipPrecision);
    font.lfQuality = static_cast<BYTE>(f.quality);
    font.lfPitchAndFamily = static_cast<BYTE>(f.pitchAndFamily);
    const std::wstring face = widened(f.faceName);
    std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), font.lfFaceName);
    return font;
}

std::wstring widened(std::string_view text)
{
    std::wstring result(text.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                           static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::string narrowed(std::wstring_view text)
{
    std::string result(text.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                           static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::optional<skin::SkinError> SkinResourceSet::decode(const skin::Skin& skin, Pictures& result)
{
    for (const skin::Picture& each : skin.resources.pictures) {
        const ComPtr<Picture> picture = morvane::Instance<Picture>::make();
        for (const skin::PictureFile& file : each.files) {
            const auto bytes = skin.bytesOf(file);
            const bool isFirst = &file == &each.files.front();
            if (!(isFirst ? picture->loadFromMemory(bytes) : picture->loadVariantFromMemory(file.scale, bytes))) {
                skin::SkinError error;
                error.code = skin::Code::BrokenPicture;
                error.file = file.file;
                error.message = "the picture cannot be decoded";
                return error;
            }
        }
        picture->identity().name = nameOf(each);
        takeId(picture->identity(), each);
        result.insert_or_assign(each.id, picture);
    }
    return std::nullopt;
}

void SkinResourceSet::adopt(const skin::Skin& skin, Pictures pictures, IVexRes* resources)
{
    // Names are set as the entries have them: where they are looked for, those of the former skin go and these come.
    for (const auto& [id, picture] : pictures)
        picture->SetVexRes(resources);
    own<Picture>() = std::move(pictures);
    for (const skin::ImageSection& each : skin.resources.imageSections) {
        ImageBase& section = objectFor(own<ImageBase>(), each.id, resources);
        section.identity().name = nameOf(each.name, each);
        takeId(section.identity(), each);
        section.setPicture(objectIn(all<Picture>(), each.picture));
        section.setSection(sectionOf(each));
    }
    for (const skin::Font& each : skin.resources.fonts) {
        Font& font = objectFor(own<Font>(), each.id, resources);
        font.identity().name = nameOf(each.name, each);
        takeId(font.identity(), each);
        font.setLogFont(fontOf(each));
    }
    for (const skin::TextStyle& each : skin.resources.textStyles) {
        TextStyle& style = objectFor(own<TextStyle>(), each.id, resources);
        style.identity().name = nameOf(each.name, each);
        takeId(style.identity(), each);
        style.setLook(lookOf(each));
        style.setFont(objectIn(all<Font>(), each.font));
    }
    for (const skin::Gradient& each : skin.resources.gradients) {
        FillColor& fill = objectFor(own<FillColor>(), each.id, resources);
        fill.identity().name = nameOf({}, each);
        takeId(fill.identity(), each);
        fill.setColours(each.start.value, each.end.value, each.rotation);
    }
    for (const skin::Cursor& each : skin.resources.cursors) {
        Cursor& cursor = objectFor(own<Cursor>(), each.id, resources);
        cursor.identity().name = nameOf({}, each);
        takeId(cursor.identity(), each);
        cursor.setStandard(each.isStandard ? each.standardCursor : 0);
        if (!each.isStandard)
            cursor.put_ImageObj(objectIn(all<Picture>(), each.picture));
    }
}

void SkinResourceSet::publish(const skin::Skin& skin, ResourceStore& store) const
{
    const skin::SharedResources& entries = skin.resources;
    publishAll(entries.pictures, all<Picture>(), VEXOBJTYPE_IMAGE, store);
    publishAll(entries.imageSections, all<ImageBase>(), VEXOBJTYPE_IMAGEBASE, store);
    publishAll(entries.fonts, all<Font>(), VEXOBJTYPE_FONTEX, store);
    publishAll(entries.textStyles, all<TextStyle>(), VEXOBJTYPE_TEXTSTYLE, store);
    publishAll(entries.gradients, all<FillColor>(), VEXOBJTYPE_GRADIENTCLR, store);
    publishAll(entries.cursors, all<Cursor>(), VEXOBJTYPE_CURSOR, store);
}

SkinResourceSet SkinResourceSet::of(const skin::Skin& skin) const
{
    const skin::SharedResources& entries = skin.resources;
    SkinResourceSet result;
    copyOf<Picture>(entries.pictures, *this, result);
    copyOf<ImageBase>(entries.imageSections, *this, result);
    copyOf<Font>(entries.fonts, *this, result);
    copyOf<TextStyle>(entries.textStyles, *this, result);
    copyOf<FillColor>(entries.gradients, *this, result);
    copyOf<Cursor>(entries.cursors, *this, result);
    return result;
}

ComPtr<IDispatch> SkinResourceSet::find(enumPropType type, std::wstring_view id) const
{
    const std::string key = narrowed(id);
    switch (type) {
    case _PROPTYPE_IMAGESECTION:
        return ComPtr<IDispatch>(objectIn(all<ImageBase>(), key));
    case _PROPTYPE_TEXTSTYLE:
        return ComPtr<IDispatch>(objectIn(all<TextStyle>(), key));
    case _PROPTYPE_FONT:
        return ComPtr<IDispatch>(objectIn(all<Font>(), key));
    case _PROPTYPE_FILLCOLOR:
        return ComPtr<IDispatch>(objectIn(all<FillColor>(), key));
    case _PROPTYPE_CURSOR:
        return ComPtr<IDispatch>(objectIn(all<Cursor>(), key));
    default:
        return nullptr;
    }
}

} // namespace ambrel
