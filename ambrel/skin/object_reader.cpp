#include "ambrel/skin/object_reader.h"

#include "ambrel/skin/key_map_reader.h"
#include "ambrel/skin/text.h"

#include <algorithm>

namespace ambrel::skin {

namespace {

using PropertiesByKey = std::unordered_map<std::string, KeyedProperty>;

bool isHexOrDash(std::string_view text, std::size_t at)
{
    const bool dash = at == 8 || at == 13 || at == 18 || at == 23;
    return dash ? text[at] == '-' : std::string_view("0123456789abcdefABCDEF").find(text[at]) != std::string_view::npos;
}

bool isClassIdentifier(std::string_view text)
{
    if (text.size() != 38 || text.front() != '{' || text.back() != '}')
        return false;
    const std::string_view digits = text.substr(1, 36);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (!isHexOrDash(digits, i))
            return false;
    }
    return true;
}

// A module word and a class number: "Morvane17".
bool isNumberedClass(std::string_view text)
{
    const std::size_t digits = text.find_first_of("0123456789");
    const auto isLetter = [](char c) { return loweredChar(c) >= 'a' && loweredChar(c) <= 'z'; };
    return digits != std::string_view::npos && digits > 0 && text.size() - digits <= 6 &&
           std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(digits), isLetter) &&
           text.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

// "ActiveImage.ImageSecId" is the image section of "ActiveImage"; keys without such an ending hold plain values.
Property propertyOfKey(std::string_view key, std::string_view value)
{
    const std::size_t dot = key.rfind('.');
    const bool hasEnding = dot != std::string_view::npos && dot > 0;
    const ValueKind kind = hasEnding ? kindOfAttribute(key.substr(dot + 1)) : ValueKind::Plain;
    const std::string_view name = kind == ValueKind::Plain ? key : key.substr(0, dot);
    return {"", std::string(name), kind, std::string(value)};
}

class ObjectReader {
public:
    ObjectReader(const ResourceIndex& index, Skin& skin) : m_index(index), m_skin(skin)
    {
        for (const RawElement& section : skin.resources.others) {
            if (section.name == kRegionSection)
                m_regions = &section;
        }
    }

    void readObjectsFile(const XmlDocument& document)
    {
        const pugi::xml_node root = document.root(names::kRoot);
        bool hasObjects = false;
        for (const pugi::xml_node element : elementsOf(root)) {
            const std::string_view name = element.name();
            if (name == names::kObjects && !hasObjects) {
                hasObjects = true;
                for (const pugi::xml_node object : elementsOf(element))
                    m_skin.objects.push_back(readObject(document, object));
            } else if (name == names::kObjects) {
                document.fail(Code::DuplicateName, element, "the element stands there twice");
            } else if ((name == names::kFullInfo || name == names::kCompactInfo) && !m_skin.info) {
                m_skin.info = readRaw(element);
            } else {
                m_skin.otherElements.push_back(readRaw(element));
            }
        }
        if (!hasObjects)
            document.fail(Code::MissingElement, root, "the element <Objects> is missing");
    }

    void readPropertiesFile(const XmlDocument& document)
    {
        collectObjects(m_skin.objects);
        const pugi::xml_node root = document.root(names::kRoot);
        bool hasProperty = false;
        for (const pugi::xml_node element : elementsOf(root)) {
            const std::string_view name = element.name();
            if (name == names::kProperty && !hasProperty) {
                hasProperty = true;
                readPropertyElements(document, element);
            } else if (name == names::kProperty) {
                document.fail(Code::DuplicateName, element, "the element stands there twice");
            } else if (name == names::kPropertyInfo && !m_skin.propInfo) {
                m_skin.propInfo = readRaw(element);
            } else {
                m_skin.otherPropElements.push_back(readRaw(element));
            }
        }
        if (!hasProperty)
            document.fail(Code::MissingElement, root, "the element <Property> is missing");
    }

private:
    SkinObject readObject(const XmlDocument& document, pugi::xml_node element)
    {
        SkinObject object;
        object.id = element.name();
        if (!m_ids.emplace(object.id, nullptr).second)
            document.fail(Code::DuplicateName, element, "another object has this name");
        for (const std::string_view needed : {names::kClass, names::kType}) {
            if (!element.attribute(needed.data()))
                document.fail(Code::MissingAttribute, element, needed, "the attribute is missing");
        }
        for (const pugi::xml_attribute attribute : element.attributes()) {
            const AttributeAt at{document, element, attribute};
            if (!readIdentity(at, object) && !readSetting(at, object) && !readObjectProperty(at, object))
                object.others.push_back({attribute.name(), attribute.value()});
        }
        for (const pugi::xml_node child : elementsOf(element)) {
            if (child.attribute(names::kClass.data()))
                object.children.push_back(readObject(document, child));
            else
                object.otherElements.push_back(readRaw(child));
        }
        return object;
    }

    // True when the attribute says what the object is, or nothing at all.
    bool readIdentity(const AttributeAt& at, SkinObject& object) const
    {
        if (at.name() == names::kClass) {
            if (!isClassIdentifier(at.value()) && !isNumberedClass(at.value()))
                at.fail(Code::BadClass, "a class is an identifier in braces, or a module's word and a class number");
            object.className = at.value();
        } else if (at.name() == names::kType) {
            if (at.value() != kPluginType)
                at.fail(Code::BadType, "the type of a control's object is \"" + std::string(kPluginType) + '"');
        } else if (at.name() == names::kName) {
            object.name = at.value();
        } else {
            return isBookkeeping(at.name());
        }
        return true;
    }

    bool readSetting(const AttributeAt& at, SkinObject& object) const
    {
        if (const auto* field = findField<ObjectSettings>(at.name())) {
            readField(at, object.settings);
            if (field->refersTo != Section::None)
                m_index.check(at, field->refersTo, std::string(at.value()));
            if (at.name() == kRegionSetting)
                checkRegion(at);
            return true;
        }
        return readPosition(at, object);
    }

    static bool readPosition(const AttributeAt& at, SkinObject& object)
    {
        if (at.name() == names::kPosition) {
            object.position = parsePosition(at.value());
            if (!object.position)
                at.fail(Code::BadPosition, "a position reads like \"HA0,HST3,l114,r0,w206:VA0,VST3,t131,b0,h109\"");
            return true;
        }
        for (const PositionField& field : positionFields()) {
            if (field.name != at.name())
                continue;
            if (!object.position)
                object.position.emplace();
            (*object.position).*field.axis.*field.member = readInteger(at, field.least, field.most);
            return true;
        }
        return false;
    }

    void checkRegion(const AttributeAt& at) const
    {
        const auto isIt = [&](const RawElement& region) { return region.name == at.value(); };
        if (!at.value().empty() &&
            (m_regions == nullptr || std::none_of(m_regions->children.begin(), m_regions->children.end(), isIt)))
            at.fail(Code::UnknownReference,
                    "there is no entry \"" + printable(at.value()) + "\" in <" + std::string(kRegionSection) + '>');
    }

    bool readObjectProperty(const AttributeAt& at, SkinObject& object) const
    {
        if (m_skin.layout == Layout::Full) {
            object.properties.push_back(propertyOfKey(at.name(), at.value()));
            checkValue(at, object.properties.back());
            return true;
        }
        const std::string_view key = contentKey(at.name(), object);
        if (key.empty())
            return false;
        object.content.push_back(propertyOfKey(key, at.value()));
        checkValue(at, object.content.back());
        return true;
    }

    // "Ambrel1_UIForm1_ScrollBar1ScrollInfoMax" gives "ScrollInfoMax" for the object "ScrollBar1"; empty for other
    // names.
    static std::string_view contentKey(std::string_view attribute, SkinObject& object)
    {
        const std::size_t at = attribute.find('_' + object.id);
        if (!attribute.starts_with(names::kRoot) || at == std::string_view::npos)
            return {};
        const std::size_t end = at + 1 + object.id.size();
        const std::string_view prefix = attribute.substr(0, end);
        if (object.content.empty())
            object.contentPrefix = prefix == "Ambrel1_" + object.id ? "" : std::string(prefix);
        return prefix == contentPrefixOf(object) ? attribute.substr(end) : std::string_view();
    }

    void checkValue(const AttributeAt& at, const Property& property) const
    {
        if (sectionOf(property.kind) != Section::None)
            m_index.check(at, sectionOf(property.kind), property.value);
    }

    void collectObjects(std::vector<SkinObject>& objects)
    {
        for (SkinObject& object : objects) {
            m_ids[object.id] = &object;
            collectObjects(object.children);
        }
    }

    void readPropertyElements(const XmlDocument& document, pugi::xml_node parent)
    {
        for (const pugi::xml_node element : elementsOf(parent)) {
            const auto object = m_ids.find(element.name());
            if (object == m_ids.end())
                document.fail(Code::UnknownReference, element, "objects.xml has no object of this name");
            if (object->second == nullptr)
                document.fail(Code::DuplicateName, element, "the object stands there twice");
            readKeyedProperties(document, element, *object->second);
            object->second = nullptr;
        }
    }

    void readKeyedProperties(const XmlDocument& document, pugi::xml_node element, SkinObject& object)
    {
        const PropertiesByKey* keys = keysOf(object);
        for (const pugi::xml_attribute attribute : element.attributes()) {
            const AttributeAt at{document, element, attribute};
            if (isBookkeeping(at.name()) || readSetting(at, object))
                continue;
            const auto key = keys ? keys->find(attribute.name()) : PropertiesByKey::const_iterator();
            if (keys && key != keys->end()) {
                object.properties.push_back({key->second.group, key->second.name, key->second.kind, attribute.value()});
                checkValue(at, object.properties.back());
            } else if (!keys && isShortKey(at.name())) {
                at.fail(Code::MissingKeyMap,
                        "mapattrib.xml has no element <" + printable(typeOf(object)) + "> to tell what this key means");
            } else {
                object.otherProps.push_back({attribute.name(), attribute.value()});
            }
        }
    }

    static bool isShortKey(std::string_view name)
    {
        return name.size() > 1 && name[0] == 'V' && name.find_first_not_of("0123456789", 1) == std::string_view::npos;
    }

    // The keys of the object's control type, null when the key map has none.
    const PropertiesByKey* keysOf(const SkinObject& object)
    {
        const std::string type = typeOf(object);
        const auto known = m_keys.find(type);
        if (known != m_keys.end())
            return &known->second;
        const TypeKeys* keys = m_skin.keys.find(type);
        return keys ? &m_keys.emplace(type, propertiesByKey(*keys)).first->second : nullptr;
    }

    const ResourceIndex& m_index;
    Skin& m_skin;
    const RawElement* m_regions = nullptr;
    std::unordered_map<std::string, SkinObject*> m_ids; // null once the object's element of prop.xml was read
    std::unordered_map<std::string, PropertiesByKey> m_keys;
};

} // namespace

void readObjects(const XmlDocument& objects, const XmlDocument* properties, const ResourceIndex& index, Skin& skin)
{
    ObjectReader reader(index, skin);
    reader.readObjectsFile(objects);
    if (properties != nullptr)
        reader.readPropertiesFile(*properties);
}

} // namespace ambrel::skin
