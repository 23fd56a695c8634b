#pragma once

#include "ambrel/skin/field_reader.h"

#include <array>
#include <unordered_map>

namespace ambrel::skin {

/// Which names the resources of a package have, for checking references.
class ResourceIndex {
public:
    void add(Section section, const std::string& id)
    {
        m_sections[static_cast<std::size_t>(section)].emplace(id, m_next++);
    }
    bool has(Section section, const std::string& id) const
    {
        return m_sections[static_cast<std::size_t>(section)].contains(id);
    }

    /// Complains unless the name is empty or that of a resource of the section.
    void check(const AttributeAt& at, Section section, const std::string& id) const;

private:
    std::array<std::unordered_map<std::string, int>, kSections> m_sections;
    int m_next = 0;
};

struct ReadResources {
    SharedResources resources;
    ResourceIndex index;
};

/// Reads shareres.xml and looks at the pictures it names.
ReadResources readResources(const XmlDocument& document, const PackageFiles& files);

} // namespace ambrel::skin
