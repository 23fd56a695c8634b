// Any bytes as mapattrib.xml: every short key leads to one property.
#include "ambrel/skin/key_map_reader.h"
#include "fuzz/fuzz.h"

#include <set>

namespace {

std::size_t countProperties(const std::vector<ambrel::skin::KeyNode>& nodes)
{
    std::size_t count = 0;
    for (const auto& node : nodes)
        count += (node.role == ambrel::skin::KeyNode::Role::Property ? 1 : 0) + countProperties(node.children);
    return count;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ambrel::skin;
    const auto map = outcomeOf([&] {
        const XmlDocument document("mapattrib.xml", Bytes(data, data + size));
        ResourceIndex index;
        index.add(Section::ImageSections, "ImageSection1");
        return readKeyMap(document, index);
    });
    if (!map) {
        fuzz::require(map.error().line >= 0 && !map.error().message.empty(), "an error has a place and a reason");
        return 0;
    }
    for (const TypeKeys& type : map->types) {
        const auto properties = propertiesByKey(type);
        fuzz::require(properties.size() == countProperties(type.nodes), "no two properties share a key");
        std::set<std::string> paths;
        for (const auto& [key, property] : properties)
            fuzz::require(paths.insert(property.group + '/' + property.name).second, "no property is there twice");
    }
    return 0;
}
