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

/// `wish`, or with a number before its ending: neither it nor a larger form of it is there.
std::string freeName(const PackageFiles& files, std::string_view wish)
{
    const auto isTaken = [&](const std::string& name) {
        return files.find(name) || std::ranges::any_of(kLargerScales, [&](std::int32_t scale) {
                   return files.find(scaledFileName(name, scale)) != nullptr;
               });
    };
    const std::size_t dot = std::min(wish.rfind('.'), wish.size());
    const std::string ending(wish.substr(dot));
    const bool isFree = !isTaken(std::string(wish));
    return isFree ? std::string(wish) : freshName(wish.substr(0, dot), [&](const std::string& stem) {
                                            return isTaken(stem + ending);
                                        }) + ending;
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

Outcome<std::monostate> replacePicture(Skin& skin, Picture& picture, std::vector<PictureForm> forms)
{
    const std::string wish = picture.files.empty() ? picture.caption : picture.files.front().file;
    PackageFiles files = skin.files;
    for (const PictureFile& each : picture.files) {
        if (!isUsedElsewhere(skin, picture, each.file))
            files.remove(each.file);
    }
    const std::string name = freeName(files, wish);
    const auto added = outcomeOf([&] {
        std::vector<PictureFile> made;
        for (PictureForm& form : forms) {
            const auto info = probePicture(form.bytes, name);
            if (!info)
                throw SkinFailure(info.error());
            const std::string file = form.scale == 100 ? name : scaledFileName(name, form.scale);
            files.add(file, std::move(form.bytes));
            made.push_back({form.scale, file, info.value()});
        }
        return made;
    });
    if (!added)
        return added.error();
    if (name != wish)
        picture.caption = name;
    picture.files = added.value();
    skin.files = std::move(files);
    return std::monostate();
}

namespace {

/// The names by which a skin refers to entries of shareres.xml.
class References {
public:
    explicit References(const Skin& skin)
    {
        const SharedResources& all = skin.resources;
        addEntries(all.colours);
        addEntries(all.pictures);
        addEntries(all.fonts);
        addEntries(all.gradients);
        addEntries(all.imageSections);
        addEntries(all.textStyles);
        addEntries(all.cursors);
        add(all.others);
        add(skin.otherElements);
        add(skin.otherPropElements);
        add(skin.objects);
        for (const TypeKeys& each : skin.keys.types)
            add(each.nodes);
    }

    bool has(Section section, const std::string& id) const
    {
        return m_names.contains({section, id}) || m_kept.contains(id);
    }

private:
    template <class Entry>
    void addEntries(const std::vector<Entry>& entries)
    {
        for (const Entry& entry : entries) {
            add(entry.others);
            for (const Field<Entry>& field : fieldsOf<Entry>()) {
                const auto* const text = std::get_if<std::string Entry::*>(&field.member);
                if (text && field.refersTo != Section::None)
                    m_names.emplace(field.refersTo, entry.*(*text));
            }
        }
    }

    void add(const std::vector<SkinObject>& objects)
    {
        for (const SkinObject& object : objects) {
            for (const auto* properties : {&object.properties, &object.content}) {
                for (const Property& each : *properties)
                    m_names.emplace(sectionOf(each.kind), each.value);
            }
            m_names.emplace(Section::Cursors, object.settings.customCursor.value_or(std::string()));
            add(object.others);
            add(object.otherProps);
            add(object.otherElements);
            add(object.children);
        }
    }

    void add(const std::vector<KeyNode>& nodes)
    {
        for (const KeyNode& node : nodes) {
            if (node.fallback)
                m_names.emplace(sectionOf(node.kind), *node.fallback);
            add(node.others);
            add(node.children);
        }
    }

    // Nobody knows what these mean: a value that is an entry's name may mean it.
    void add(const std::vector<Attribute>& attributes)
    {
        for (const Attribute& each : attributes)
            m_kept.insert(each.value);
    }
    void add(const std::vector<RawElement>& elements)
    {
        for (const RawElement& each : elements) {
            add(each.attributes);
            add(each.children);
        }
    }

    std::set<std::pair<Section, std::string>> m_names;
    std::set<std::string> m_kept;
};

} // namespace

void removeUnused(Skin& skin, const std::function<bool(Section, const std::string&)>& isGone)
{
    SharedResources& all = skin.resources;
    const auto removeFrom = [&]<class Entry>(std::vector<Entry>& entries, const References& used) {
        const auto first = std::stable_partition(entries.begin(), entries.end(), [&](const Entry& each) {
            return used.has(kSectionOf<Entry>, each.id) || !isGone(kSectionOf<Entry>, each.id);
        });
        std::vector<Entry> removed(std::make_move_iterator(first), std::make_move_iterator(entries.end()));
        entries.erase(first, entries.end());
        return removed;
    };
    const References byObjects(skin);
    removeFrom(all.gradients, byObjects);
    removeFrom(all.imageSections, byObjects);
    removeFrom(all.textStyles, byObjects);
    removeFrom(all.cursors, byObjects);
    const References byEntries(skin); // those that are left
    removeFrom(all.fonts, byEntries);
    for (const Picture& picture : removeFrom(all.pictures, byEntries)) {
        for (const PictureFile& each : picture.files) {
            if (!isUsedElsewhere(skin, picture, each.file))
                skin.files.remove(each.file);
        }
    }
}

} // namespace ambrel::skin
