#include "ambrel/skin/writer.h"

#include "ambrel/skin/language_reader.h"
#include "ambrel/skin/reader.h"
#include "ambrel/skin/text.h"
#include "ambrel/skin/vocabulary.h"
#include "ambrel/skin/xml_writer.h"

#include <map>
#include <set>

namespace ambrel::skin {

namespace {

// The attribute text of each kind of member; nullopt for a setting that is not there.
std::optional<std::string> textOf(const std::string& value)
{
    return value;
}
std::optional<std::string> textOf(bool value)
{
    return value ? "1" : "0";
}
std::optional<std::string> textOf(std::int32_t value)
{
    return std::to_string(value);
}
std::optional<std::string> textOf(const Colour& colour)
{
    return colour.predefined.empty() ? formatColour(colour.value) : colour.predefined;
}
template <class Value>
std::optional<std::string> textOf(const std::optional<Value>& value)
{
    return value ? textOf(*value) : std::nullopt;
}

using KeysByPath = std::map<std::string, const KeyNode*>;

void collectKeys(const std::vector<KeyNode>& nodes, const std::string& path, KeysByPath& keys)
{
    for (const KeyNode& node : nodes) {
        if (node.role == KeyNode::Role::Property)
            keys.emplace(path + node.name, &node);
        else
            collectKeys(node.children, path + node.name + '/', keys);
    }
}

KeysByPath keysByPath(const KeyMap& map, const std::string& type)
{
    KeysByPath keys;
    if (const TypeKeys* found = map.find(type))
        collectKeys(found->nodes, "", keys);
    return keys;
}

std::string pathOf(const Property& property)
{
    return property.group.empty() ? property.name : property.group + '/' + property.name;
}

class SkinWriter {
public:
    explicit SkinWriter(const Skin& skin) : m_skin(skin), m_compact(skin.layout == Layout::Compact) {}

    PackageFiles write()
    {
        PackageFiles files = m_skin.files;
        files.add(std::string(names::kResourcesFile), resources());
        files.add(std::string(names::kObjectsFile), objects());
        if (m_compact) {
            files.add(std::string(names::kKeyMapFile), keyMap());
            files.add(std::string(names::kPropertiesFile), properties());
        }
        if (!m_skin.languages.empty())
            files.add(std::string(names::kLanguagesFile), writeLanguages(m_skin.languages));
        return files;
    }

private:
    template <class Entry>
    void fields(XmlWriter& out, const Entry& entry) const
    {
        for (const Field<Entry>& field : fieldsOf<Entry>())
            writeField(out, field, entry);
    }

    template <class Entry>
    void writeField(XmlWriter& out, const Field<Entry>& field, const Entry& entry) const
    {
        const auto text = std::visit([&](auto member) { return textOf(entry.*member); }, field.member);
        if (text)
            out.attribute(m_compact && !field.alias.empty() ? field.alias : field.name, *text);
    }

    template <class Entry>
    void section(XmlWriter& out, const std::vector<Entry>& entries) const
    {
        out.begin(sectionName(kSectionOf<Entry>));
        for (const Entry& entry : entries) {
            out.begin(entry.id);
            fields(out, entry);
            out.attributes(entry.others);
            out.end();
        }
        out.end();
    }

    Bytes resources() const
    {
        const SharedResources& all = m_skin.resources;
        XmlWriter out;
        out.begin(names::kRoot);
        out.begin(names::kShare);
        section(out, all.colours);
        section(out, all.pictures);
        section(out, all.fonts);
        section(out, all.gradients);
        section(out, all.imageSections);
        section(out, all.textStyles);
        section(out, all.cursors);
        out.raw(all.others);
        out.end();
        out.end();
        return out.take();
    }

    Bytes objects() const
    {
        XmlWriter out;
        out.begin(names::kRoot);
        if (m_skin.info)
            out.raw(*m_skin.info);
        out.begin(names::kObjects);
        for (const SkinObject& one : m_skin.objects)
            object(out, one);
        out.end();
        out.raw(m_skin.otherElements);
        out.end();
        return out.take();
    }

    void object(XmlWriter& out, const SkinObject& object) const
    {
        out.begin(object.id);
        out.attribute(names::kClass, object.className);
        out.attribute(names::kName, object.name);
        out.attribute(names::kType, kPluginType);
        settings(out, object, true);
        if (m_compact) {
            for (const Property& property : object.content)
                out.attribute(contentPrefixOf(object) + fullKey(property), property.value);
        } else {
            position(out, object);
            for (const Property& property : object.properties)
                out.attribute(fullKey(property), property.value);
        }
        out.attributes(object.others);
        for (const SkinObject& child : object.children)
            this->object(out, child);
        out.raw(object.otherElements);
        out.end();
    }

    // The full layout has one place for all settings, the compact layout two.
    void settings(XmlWriter& out, const SkinObject& object, bool withObject) const
    {
        for (const Field<ObjectSettings>& field : fieldsOf<ObjectSettings>()) {
            if (!m_compact || standsWithObject(field.name) == withObject)
                writeField(out, field, object.settings);
        }
    }

    static void position(XmlWriter& out, const SkinObject& object)
    {
        if (!object.position)
            return;
        for (const PositionField& field : positionFields())
            out.attribute(field.name, std::to_string((*object.position).*field.axis.*field.member));
    }

    static std::string fullKey(const Property& property)
    {
        const std::string key = joinedKey(property.group, property.name);
        const std::string_view kind = kindAttribute(property.kind);
        return kind.empty() ? key : key + '.' + std::string(kind);
    }

    Bytes keyMap() const
    {
        XmlWriter out;
        out.begin(names::kRoot);
        out.attribute(names::kVersion, m_skin.keys.version);
        for (const TypeKeys& type : m_skin.keys.types) {
            out.begin(type.type);
            out.attributes(type.others);
            keyNodes(out, type.nodes);
            out.end();
        }
        out.end();
        return out.take();
    }

    static void keyNodes(XmlWriter& out, const std::vector<KeyNode>& nodes)
    {
        for (const KeyNode& node : nodes) {
            if (node.role == KeyNode::Role::ExpandedState) {
                out.raw(RawElement{node.name, node.others, node.text, {}});
                continue;
            }
            out.begin(node.name);
            if (node.role == KeyNode::Role::Property) {
                const std::string_view kind = kindAttribute(node.kind);
                out.attribute(kind.empty() ? std::string_view(node.key) : kind, node.key);
                if (node.fallback)
                    out.attribute(names::kDefault, *node.fallback);
            }
            out.attributes(node.others);
            keyNodes(out, node.children);
            out.end();
        }
    }

    Bytes properties()
    {
        XmlWriter out;
        out.begin(names::kRoot);
        if (m_skin.propInfo)
            out.raw(*m_skin.propInfo);
        out.begin(names::kProperty);
        for (const SkinObject& object : m_skin.objects)
            objectProperties(out, object);
        out.end();
        out.raw(m_skin.otherPropElements);
        out.end();
        return out.take();
    }

    void objectProperties(XmlWriter& out, const SkinObject& object)
    {
        out.begin(object.id);
        settings(out, object, false);
        if (object.position)
            out.attribute(names::kPosition, formatPosition(*object.position));
        const KeysByPath& keys = keysOf(typeOf(object));
        for (const Property& property : object.properties) {
            if (const auto key = keys.find(pathOf(property)); key != keys.end())
                out.attribute(key->second->key, property.value);
        }
        out.attributes(object.otherProps);
        out.end();
        for (const SkinObject& child : object.children)
            objectProperties(out, child);
    }

    const KeysByPath& keysOf(const std::string& type)
    {
        const auto known = m_keys.find(type);
        return known != m_keys.end() ? known->second
                                     : m_keys.emplace(type, keysByPath(m_skin.keys, type)).first->second;
    }

    const Skin& m_skin;
    const bool m_compact;
    std::map<std::string, KeysByPath> m_keys;
};

TypeKeys& typeKeysFor(KeyMap& map, const std::string& type)
{
    for (TypeKeys& keys : map.types) {
        if (keys.type == type)
            return keys;
    }
    return map.types.emplace_back(TypeKeys{type, {}, {}});
}

std::vector<KeyNode>& groupFor(std::vector<KeyNode>& nodes, std::string_view path)
{
    if (path.empty())
        return nodes;
    const std::string_view step = path.substr(0, path.find('/'));
    const std::string_view rest = step.size() == path.size() ? std::string_view() : path.substr(step.size() + 1);
    for (KeyNode& node : nodes) {
        if (node.role == KeyNode::Role::Group && node.name == step)
            return groupFor(node.children, rest);
    }
    KeyNode& group = nodes.emplace_back();
    group.name = step;
    return groupFor(group.children, rest);
}

/// Keys of prop.xml that no key map explains: a new key must not give them a meaning.
void collectUnexplained(const std::vector<SkinObject>& objects, std::set<std::string>& keys)
{
    for (const SkinObject& object : objects) {
        for (const Attribute& each : object.otherProps)
            keys.insert(each.name);
        collectUnexplained(object.children, keys);
    }
}

void addKeysOf(const SkinObject& object, KeyMap& map, const std::set<std::string>& unexplained)
{
    const std::string type = typeOf(object);
    KeysByPath known = keysByPath(map, type);
    std::set<std::string> used = unexplained;
    for (const auto& [path, node] : known)
        used.insert(node->key);
    std::size_t number = known.size();
    for (const Property& property : object.properties) {
        if (known.contains(pathOf(property)))
            continue;
        known.emplace(pathOf(property), nullptr);
        std::string key;
        do {
            key = 'V' + std::to_string(++number);
        } while (!used.insert(key).second);
        KeyNode& node = groupFor(typeKeysFor(map, type).nodes, property.group).emplace_back();
        node.role = KeyNode::Role::Property;
        node.name = property.name;
        node.kind = property.kind;
        node.key = key;
    }
    for (const SkinObject& child : object.children)
        addKeysOf(child, map, unexplained);
}

} // namespace

Outcome<PackageFiles> writeSkin(const Skin& skin)
{
    return outcomeOf([&] { return SkinWriter(skin).write(); });
}

void addMissingKeys(Skin& skin)
{
    std::set<std::string> unexplained;
    collectUnexplained(skin.objects, unexplained);
    for (const SkinObject& object : skin.objects)
        addKeysOf(object, skin.keys, unexplained);
}

namespace {

template <class Package>
void checkReadsBack(const Package& package, const Skin& skin)
{
    const auto again = readSkin(package);
    if (!again)
        throw SkinFailure(again.error());
    if (again.value() != skin)
        failFile(Code::NotTheSame, "the saved package", "it would not read back as the same skin");
}

/// Files that a folder may have and that the skin in it must not, for they would say something else of it: those that
/// it had and has no more, larger forms of other pictures of a name, and the XML files that it does without.
std::vector<std::string> goneFiles(const Skin& skin, const PackageFiles& files, const PackageFiles* former)
{
    std::set<std::string> gone;
    for (const std::string_view name : {names::kPropertiesFile, names::kKeyMapFile})
        gone.emplace(name);
    if (!former) // in the skin's own folder it may be a translator's, written meanwhile
        gone.emplace(names::kLanguagesFile);
    for (const Picture& picture : skin.resources.pictures) {
        for (const std::int32_t scale : kLargerScales)
            gone.insert(scaledFileName(picture.files.front().file, scale));
    }
    if (former) {
        for (const auto& [name, bytes] : former->all())
            gone.insert(name);
    }
    std::erase_if(gone, [&](const std::string& name) { return files.find(name) != nullptr; });
    return {gone.begin(), gone.end()};
}

bool isFolderPath(const std::filesystem::path& path)
{
    std::error_code fault;
    return !path.has_filename() || std::filesystem::is_directory(path, fault);
}

} // namespace

Outcome<std::monostate> saveSkin(const Skin& skin, const std::filesystem::path& path, const PackageFiles* former)
{
    Bytes archive;
    const bool inFolder = isFolderPath(path);
    Outcome<PackageFiles> files = outcomeOf([&] {
        PackageFiles made = SkinWriter(skin).write();
        if (inFolder) {
            checkReadsBack(made, skin);
        } else {
            archive = writeZip(made);
            checkReadsBack(std::span<const std::uint8_t>(archive), skin);
        }
        return made;
    });
    if (!files)
        return files.error();
    return inFolder ? writeFolder(files.value(), path, goneFiles(skin, files.value(), former))
                    : replaceFile(path, archive);
}

} // namespace ambrel::skin
