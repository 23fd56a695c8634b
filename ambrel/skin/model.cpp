#include "ambrel/skin/model.h"

#include <algorithm>
#include <array>

namespace ambrel::skin {

namespace {

struct NumberedClass {
    std::string_view className;
    std::string_view type;
};

// The class numbers that compact packages use.
constexpr std::array<NumberedClass, 4> kNumberedClasses = {{
    {"Morvane17", "Button"},
    {"Morvane9", "CheckBox"},
    {"Morvane64", "RadioBox"},
    {"Morvane68", "ScrollBar"},
}};

template <class Entries>
auto findById(const Entries& entries, std::string_view id) -> const typename Entries::value_type*
{
    const auto it = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.id == id; });
    return it == entries.end() ? nullptr : &*it;
}

const Property* findProperty(const std::vector<Property>& properties, std::string_view group, std::string_view name,
                             std::string_view joined)
{
    const auto exact = std::find_if(properties.begin(), properties.end(),
                                    [&](const Property& p) { return p.group == group && p.name == name; });
    if (exact != properties.end())
        return &*exact;
    const auto byKey = std::find_if(properties.begin(), properties.end(),
                                    [&](const Property& p) { return p.group.empty() && p.name == joined; });
    return byKey == properties.end() ? nullptr : &*byKey;
}

const KeyNode* findNode(const std::vector<KeyNode>& nodes, std::string_view group, std::string_view name)
{
    const std::string_view step = group.empty() ? name : group.substr(0, group.find('/'));
    const auto role = group.empty() ? KeyNode::Role::Property : KeyNode::Role::Group;
    for (const KeyNode& node : nodes) {
        if (node.role != role || node.name != step)
            continue;
        if (group.empty())
            return &node;
        const std::string_view rest = group.substr(std::min(step.size() + 1, group.size()));
        if (const KeyNode* found = findNode(node.children, rest, name))
            return found;
    }
    return nullptr;
}

} // namespace

const std::string* LanguageTexts::find(std::string_view key) const
{
    const auto it = std::find_if(texts.begin(), texts.end(), [&](const KeyedText& each) { return each.key == key; });
    return it == texts.end() ? nullptr : &it->text;
}

const TypeKeys* KeyMap::find(std::string_view type) const
{
    const auto it = std::find_if(types.begin(), types.end(), [&](const TypeKeys& keys) { return keys.type == type; });
    return it == types.end() ? nullptr : &*it;
}

std::optional<PropertyValue> Skin::valueOf(const SkinObject& object, std::string_view groupPath,
                                           std::string_view name) const
{
    const std::string joined = joinedKey(groupPath, name);
    for (const auto* properties : {&object.properties, &object.content}) {
        if (const Property* property = findProperty(*properties, groupPath, name, joined))
            return PropertyValue{property->kind, property->value};
    }
    const KeyNode* node = keyOf(object, groupPath, name);
    if (node == nullptr || !node->fallback)
        return std::nullopt;
    return PropertyValue{node->kind, *node->fallback};
}

const KeyNode* Skin::keyOf(const SkinObject& object, std::string_view groupPath, std::string_view name) const
{
    const TypeKeys* keysOfType = layout == Layout::Compact ? keys.find(typeOf(object)) : nullptr;
    return keysOfType ? findNode(keysOfType->nodes, groupPath, name) : nullptr;
}

const Picture* Skin::picture(std::string_view id) const
{
    return findById(resources.pictures, id);
}

const Font* Skin::font(std::string_view id) const
{
    return findById(resources.fonts, id);
}

const Gradient* Skin::gradient(std::string_view id) const
{
    return findById(resources.gradients, id);
}

const ImageSection* Skin::imageSection(std::string_view id) const
{
    return findById(resources.imageSections, id);
}

const TextStyle* Skin::textStyle(std::string_view id) const
{
    return findById(resources.textStyles, id);
}

const Cursor* Skin::cursor(std::string_view id) const
{
    return findById(resources.cursors, id);
}

std::span<const std::uint8_t> Skin::bytesOf(const PictureFile& file) const
{
    const Bytes* bytes = files.find(file.file);
    return bytes ? std::span<const std::uint8_t>(*bytes) : std::span<const std::uint8_t>();
}

std::string scaledFileName(std::string_view file, std::int32_t scale)
{
    const std::size_t dot = file.rfind('.');
    const std::size_t slash = file.rfind('/');
    const bool hasEnding = dot != std::string_view::npos && (slash == std::string_view::npos || dot > slash);
    const std::size_t end = hasEnding ? dot : file.size();
    return std::string(file.substr(0, end)) + '@' + std::to_string(scale) + std::string(file.substr(end));
}

const PictureFile& fileForScale(const Picture& picture, std::int32_t percent)
{
    const auto it = std::find_if(picture.files.begin(), picture.files.end(),
                                 [&](const PictureFile& file) { return file.scale >= percent; });
    return it == picture.files.end() ? picture.files.back() : *it;
}

std::string contentPrefixOf(const SkinObject& object)
{
    return object.contentPrefix.empty() ? "Ambrel1_" + object.id : object.contentPrefix;
}

std::string typeOf(const SkinObject& object)
{
    for (const NumberedClass& known : kNumberedClasses) {
        if (object.className == known.className)
            return std::string(known.type);
    }
    const std::size_t end = object.id.find_last_not_of("0123456789");
    return object.id.substr(0, end + 1);
}

std::string joinedKey(std::string_view groupPath, std::string_view name)
{
    std::string key(groupPath);
    std::erase(key, '/');
    return key.append(name);
}

} // namespace ambrel::skin
