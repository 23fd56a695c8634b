#include "ambrel/skin/key_map_reader.h"

#include "ambrel/skin/text.h"

#include <set>

namespace ambrel::skin {

namespace {

class TypeReader {
public:
    TypeReader(const XmlDocument& document, const ResourceIndex& index) : m_document(document), m_index(index) {}

    TypeKeys read(pugi::xml_node element)
    {
        TypeKeys keys;
        keys.type = element.name();
        for (const pugi::xml_attribute attribute : element.attributes())
            keys.others.push_back({attribute.name(), attribute.value()});
        keys.nodes = readNodes(element, "");
        return keys;
    }

private:
    std::vector<KeyNode> readNodes(pugi::xml_node parent, const std::string& path)
    {
        const auto elements = elementsOf(parent);
        std::set<std::string> siblings;
        for (const pugi::xml_node element : elements)
            siblings.insert(element.name());
        std::vector<KeyNode> nodes;
        for (const pugi::xml_node element : elements)
            nodes.push_back(isExpandedState(element.name(), path, siblings) ? readExpandedState(element)
                                                                            : readNode(element, path));
        return nodes;
    }

    // The state of group "Normal" inside "Unchecked" is its sibling "UncheckedNormalIsExpand".
    static bool isExpandedState(std::string_view name, std::string_view path, const std::set<std::string>& siblings)
    {
        const std::string prefix = joinedKey(path, "");
        if (!name.ends_with(names::kExpanded) || !name.starts_with(prefix) ||
            name.size() < prefix.size() + names::kExpanded.size())
            return false;
        name.remove_suffix(names::kExpanded.size());
        return siblings.contains(std::string(name.substr(prefix.size())));
    }

    KeyNode readExpandedState(pugi::xml_node element)
    {
        if (!elementsOf(element).empty())
            m_document.fail(Code::BadKeyMap, element, "a group's expanded state has no elements inside");
        KeyNode node;
        node.role = KeyNode::Role::ExpandedState;
        RawElement raw = readRaw(element);
        node.name = std::move(raw.name);
        node.text = std::move(raw.text);
        node.others = std::move(raw.attributes);
        return node;
    }

    // The attribute that holds the short key: one that names a resource kind, else one that is called like its value.
    static pugi::xml_attribute keyAttribute(pugi::xml_node element)
    {
        for (const pugi::xml_attribute attribute : element.attributes()) {
            if (kindOfAttribute(attribute.name()) != ValueKind::Plain)
                return attribute;
        }
        for (const pugi::xml_attribute attribute : element.attributes()) {
            if (attribute.name() == std::string_view(attribute.value()) && attribute.name() != names::kDefault)
                return attribute;
        }
        return {};
    }

    KeyNode readNode(pugi::xml_node element, const std::string& path)
    {
        const pugi::xml_attribute key = keyAttribute(element);
        const bool hasChildren = !elementsOf(element).empty();
        if (key && hasChildren)
            m_document.fail(Code::BadKeyMap, element, key.name(), "a group has no short key");
        if (key)
            return readProperty({m_document, element, key}, path);
        if (!hasChildren && element.first_attribute())
            m_document.fail(Code::BadKeyMap, element,
                            "a property needs an attribute that is called like its short key");
        KeyNode node;
        node.name = element.name();
        for (const pugi::xml_attribute attribute : element.attributes())
            node.others.push_back({attribute.name(), attribute.value()});
        node.children = readNodes(element, path.empty() ? node.name : path + '/' + node.name);
        return node;
    }

    KeyNode readProperty(const AttributeAt& key, const std::string& path)
    {
        KeyNode node;
        node.role = KeyNode::Role::Property;
        node.name = key.element.name();
        node.kind = kindOfAttribute(key.name());
        node.key = key.value();
        if (!isXmlName(node.key) || isSettingName(node.key) || isBookkeeping(node.key))
            key.fail(Code::BadKeyMap, '"' + printable(node.key) + "\" cannot be a short key");
        if (!m_keys.insert(node.key).second)
            key.fail(Code::DuplicateName, "another property has this short key");
        if (!m_paths.insert(path + '/' + node.name).second)
            m_document.fail(Code::DuplicateName, key.element, "the group has this property twice");
        for (const pugi::xml_attribute attribute : key.element.attributes()) {
            const AttributeAt at{m_document, key.element, attribute};
            if (at.name() == names::kDefault) {
                node.fallback = at.value();
                if (sectionOf(node.kind) != Section::None)
                    m_index.check(at, sectionOf(node.kind), *node.fallback);
            } else if (attribute != key.attribute) {
                node.others.push_back({attribute.name(), attribute.value()});
            }
        }
        return node;
    }

    const XmlDocument& m_document;
    const ResourceIndex& m_index;
    std::set<std::string> m_keys;
    std::set<std::string> m_paths;
};

void collect(const std::vector<KeyNode>& nodes, const std::string& path,
             std::unordered_map<std::string, KeyedProperty>& properties)
{
    for (const KeyNode& node : nodes) {
        if (node.role == KeyNode::Role::Property)
            properties.emplace(node.key, KeyedProperty{path, node.name, node.kind});
        else if (node.role == KeyNode::Role::Group)
            collect(node.children, path.empty() ? node.name : path + '/' + node.name, properties);
    }
}

} // namespace

KeyMap readKeyMap(const XmlDocument& document, const ResourceIndex& index)
{
    const pugi::xml_node root = document.root(names::kRoot);
    KeyMap map;
    map.version = root.attribute(names::kVersion.data()).value();
    if (map.version != "2.0")
        document.fail(Code::BadKeyMap, root, names::kVersion, "the key map's version must be \"2.0\"");
    std::set<std::string> types;
    for (const pugi::xml_node element : elementsOf(root)) {
        if (!types.insert(element.name()).second)
            document.fail(Code::DuplicateName, element, "the control type stands there twice");
        map.types.push_back(TypeReader(document, index).read(element));
    }
    return map;
}

std::unordered_map<std::string, KeyedProperty> propertiesByKey(const TypeKeys& keys)
{
    std::unordered_map<std::string, KeyedProperty> properties;
    collect(keys.nodes, "", properties);
    return properties;
}

} // namespace ambrel::skin
