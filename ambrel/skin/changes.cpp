#include "ambrel/skin/changes.h"

#include <algorithm>
#include <set>

namespace ambrel::skin {

namespace {

Property* findProperty(std::vector<Property>& properties, std::string_view group, std::string_view name)
{
    const std::string joined = joinedKey(group, name);
    const auto exact = std::ranges::find_if(
        properties, [&](const Property& each) { return each.group == group && each.name == name; });
    if (exact != properties.end())
        return &*exact;
    const auto byKey = std::ranges::find_if(
        properties, [&](const Property& each) { return each.group.empty() && each.name == joined; });
    return byKey == properties.end() ? nullptr : &*byKey;
}

void collectIds(const std::vector<SkinObject>& objects, std::set<std::string>& ids)
{
    for (const SkinObject& each : objects) {
        ids.insert(each.id);
        collectIds(each.children, ids);
    }
}

bool isUsedElsewhere(const Skin& skin, const Picture& picture, const std::string& file)
{
    return std::ranges::any_of(skin.resources.pictures, [&](const Picture& other) {
        return &other != &picture &&
               std::ranges::any_of(other.files, [&](const PictureFile& each) { return each.file == file; });
    });
}

} // namespace

void setValue(const Skin& skin, SkinObject& object, std::string_view groupPath, std::string_view name, ValueKind kind,
              std::string value)
{
    for (auto* const properties : {&object.properties, &object.content}) {
        if (Property* const known = findProperty(*properties, groupPath, name)) {
            known->value = std::move(value);
            return;
        }
    }
    if (skin.layout == Layout::Full) {
        object.properties.push_back({"", joinedKey(groupPath, name), kind, std::move(value)});
        return;
    }
    const KeyNode* const key = skin.keyOf(object, groupPath, name);
    object.properties.push_back({std::string(groupPath), std::string(name), key ? key->kind : kind, std::move(value)});
}

std::string freshName(std::string_view stem, const std::function<bool(const std::string&)>& isTaken)
{
    for (std::size_t number = 1;; ++number) {
        std::string name(stem);
        name += std::to_string(number);
        if (!isTaken(name))
            return name;
    }
}

std::string freshObjectId(const Skin& skin, std::string_view type)
{
    std::set<std::string> ids;
    collectIds(skin.objects, ids);
    return freshName(type, [&](const std::string& name) { return ids.contains(name); });
}

SkinObject copyAs(const SkinObject& object, std::string id, std::string name)
{
    SkinObject copy = object;
    copy.children.clear();
    if (copy.contentPrefix.ends_with('_' + object.id))
        copy.contentPrefix.replace(copy.contentPrefix.size() - object.id.size(), object.id.size(), id);
    copy.id = std::move(id);
    copy.name = std::move(name);
    return copy;
}

Outcome<std::string> addFile(Skin& skin, std::string_view wish, Bytes bytes)
{
    std::string name(wish);
    if (skin.files.find(name)) {
        const std::size_t dot = std::min(wish.rfind('.'), wish.size());
        const std::string_view ending = wish.substr(dot);
        const std::string stem = freshName(wish.substr(0, dot), [&](const std::string& each) {
            return skin.files.find(each + std::string(ending)) != nullptr;
        });
        name = stem + std::string(ending);
    }
    return outcomeOf([&] {
        skin.files.add(name, std::move(bytes));
        return name;
    });
}

Outcome<std::monostate> replacePicture(Skin& skin, Picture& picture, Bytes bytes)
{
    const std::string wish = picture.files.empty() ? picture.caption : picture.files.front().file;
    const auto info = probePicture(bytes, wish);
    if (!info)
        return info.error();
    PackageFiles former = skin.files;
    for (const PictureFile& each : picture.files) {
        if (!isUsedElsewhere(skin, picture, each.file))
            skin.files.remove(each.file);
    }
    const auto name = addFile(skin, wish, std::move(bytes));
    if (!name) {
        skin.files = std::move(former);
        return name.error();
    }
    if (name.value() != wish)
        picture.caption = name.value();
    picture.files = {{100, name.value(), info.value()}};
    return std::monostate();
}

} // namespace ambrel::skin
