#pragma once

#include "ambrel/skin/container.h"

#include <pugixml.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace ambrel::skin {

/// An XML text of a package, parsed within the limits, that knows where each of its elements and attributes stands.
/// Document types and entities of their own are refused, names and values are checked to be proper text.
class XmlDocument {
public:
    /// Raises a failure with the place when the text is not acceptable.
    XmlDocument(std::string file, const Bytes& bytes);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    /// The root element, which must be called `name`.
    pugi::xml_node root(std::string_view name) const;

    /// Raises a failure at an element.
    [[noreturn]] void fail(Code code, pugi::xml_node element, std::string message) const;

    /// Raises a failure at an attribute of an element, at the element when it lacks the attribute.
    [[noreturn]] void fail(Code code, pugi::xml_node element, std::string_view attribute, std::string message) const;

private:
    struct Place {
        int line;
        int column;
    };

    void checkSource() const;
    void parse();
    void checkTree() const;
    void checkElement(pugi::xml_node element) const;
    Place placeOf(std::size_t offset) const;
    std::size_t offsetOfAttribute(std::size_t element, std::string_view attribute) const;
    [[noreturn]] void failAt(Code code, std::size_t offset, std::string message, std::string element = {},
                             std::string attribute = {}) const;

    std::string m_file;
    std::string m_source; // without a byte order mark
    pugi::xml_document m_document;
};

/// The children of an element that are elements themselves.
inline std::vector<pugi::xml_node> elementsOf(pugi::xml_node parent)
{
    std::vector<pugi::xml_node> elements;
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() == pugi::node_element)
            elements.push_back(child);
    }
    return elements;
}

} // namespace ambrel::skin
