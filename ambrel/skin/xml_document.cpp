#include "ambrel/skin/xml_document.h"

#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <algorithm>

namespace ambrel::skin {

XmlDocument::XmlDocument(std::string file, const Bytes& bytes) : m_file(std::move(file))
{
    if (bytes.size() > kXmlFileBytes)
        failFile(Code::FileTooLarge, m_file, "the text has more than " + std::to_string(kXmlFileBytes) + " bytes");
    m_source.assign(bytes.begin(), bytes.end());
    if (m_source.starts_with("\xEF\xBB\xBF"))
        m_source.erase(0, 3);
    checkSource();
    parse();
    checkTree();
}

namespace {

// "&#0;" in any of its spellings: the parser would end the text there.
bool isReferenceToNothing(std::string_view text)
{
    if (!text.starts_with("&#"))
        return false;
    const std::size_t digits = text.starts_with("&#x") ? 3 : 2;
    const std::size_t end = text.find_first_not_of('0', digits);
    return end != std::string_view::npos && end > digits && text[end] == ';';
}

} // namespace

// Bounds what the parser will allocate before it runs: it makes at most one node for each '<' and one for the text
// before it, and one attribute for each '='.
void XmlDocument::checkSource() const
{
    std::size_t nodes = 0;
    for (std::size_t at = 0; at < m_source.size();) {
        const std::size_t length = characterLength(std::string_view(m_source).substr(at, 4));
        if (length == 0)
            failAt(Code::BadEncoding, at, "this is not UTF-8, or a character that XML does not allow");
        if (isReferenceToNothing(std::string_view(m_source).substr(at)))
            failAt(Code::BadEncoding, at, "there is no character 0");
        nodes += m_source[at] == '<' ? 2 : m_source[at] == '=' ? 1 : 0;
        if (nodes > kXmlNodes)
            failAt(Code::TooManyNodes, at,
                   "the text has more than " + std::to_string(kXmlNodes) + " elements and attributes");
        at += length;
    }
}

void XmlDocument::parse()
{
    const unsigned flags = pugi::parse_default | pugi::parse_doctype;
    const auto result = m_document.load_buffer(m_source.data(), m_source.size(), flags, pugi::encoding_utf8);
    if (!result)
        failAt(Code::BadXml, static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0)),
               result.description());
}

// Walks without recursion, so that the depth is checked before anything recurses over the tree.
void XmlDocument::checkTree() const
{
    int depth = 1;
    for (pugi::xml_node node = m_document.first_child(); node;) {
        if (node.type() == pugi::node_doctype)
            failAt(Code::DoctypeRefused, m_source.find("<!DOCTYPE"), "a document type is not accepted");
        if (node.type() == pugi::node_element)
            checkElement(node);
        else if (std::string_view(node.value()).size() > kXmlValueBytes)
            failAt(Code::TextTooLong, static_cast<std::size_t>(node.offset_debug()), "the text is too long");
        else if (!isUtf8(node.value()))
            failAt(Code::BadEncoding, static_cast<std::size_t>(node.offset_debug()),
                   "the text has an impossible character");
        if (depth > kXmlDepth)
            fail(Code::TooDeep, node, "elements lie more than " + std::to_string(kXmlDepth) + " deep");
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (node != m_document && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = node == m_document ? pugi::xml_node() : node.next_sibling();
    }
}

void XmlDocument::checkElement(pugi::xml_node element) const
{
    if (!isXmlName(element.name()))
        fail(Code::BadName, element, "the element's name is too long or has an odd character");
    std::vector<std::string_view> names;
    for (const auto attribute : element.attributes()) {
        const std::string_view name = attribute.name();
        const std::string_view value = attribute.value();
        if (!isXmlName(name))
            fail(Code::BadName, element, name, "the attribute's name is too long or has an odd character");
        if (value.size() > kXmlValueBytes)
            fail(Code::TextTooLong, element, name,
                 "the value has more than " + std::to_string(kXmlValueBytes) + " bytes");
        if (!isUtf8(value))
            fail(Code::BadEncoding, element, name, "the value has an impossible character");
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    if (const auto twice = std::adjacent_find(names.begin(), names.end()); twice != names.end())
        fail(Code::DuplicateAttribute, element, *twice, "the attribute stands there twice");
}

pugi::xml_node XmlDocument::root(std::string_view name) const
{
    const pugi::xml_node element = m_document.document_element();
    if (!element)
        failAt(Code::MissingElement, 0, "the text has no root element");
    if (element.name() != name)
        fail(Code::UnexpectedElement, element, "the root element must be <" + std::string(name) + '>');
    return element;
}

void XmlDocument::fail(Code code, pugi::xml_node element, std::string message) const
{
    failAt(code, static_cast<std::size_t>(std::max<std::ptrdiff_t>(element.offset_debug(), 0)), std::move(message),
           printable(element.name()));
}

void XmlDocument::fail(Code code, pugi::xml_node element, std::string_view attribute, std::string message) const
{
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(element.offset_debug(), 0));
    failAt(code, offsetOfAttribute(offset, attribute), std::move(message), printable(element.name()),
           printable(attribute));
}

void XmlDocument::failAt(Code code, std::size_t offset, std::string message, std::string element,
                         std::string attribute) const
{
    const Place place = placeOf(offset);
    throw SkinFailure(
        {code, m_file, place.line, place.column, std::move(element), std::move(attribute), std::move(message)});
}

XmlDocument::Place XmlDocument::placeOf(std::size_t offset) const
{
    const std::string_view before = std::string_view(m_source).substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::string_view line = before.substr(before.rfind('\n') + 1); // npos + 1 is 0
    const auto continuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    const auto characters = std::count_if(line.begin(), line.end(), [&](char c) { return !continuation(c); });
    return {static_cast<int>(lines) + 1, static_cast<int>(characters) + 1};
}

// The parser keeps no places of attributes: look the attribute up in the element's own text, value by quoted value.
std::size_t XmlDocument::offsetOfAttribute(std::size_t element, std::string_view attribute) const
{
    const std::string_view source = m_source;
    constexpr std::string_view kSpace = " \t\r\n";
    std::size_t at = source.find_first_of(" \t\r\n/>", element);
    while (at < source.size()) {
        at = source.find_first_not_of(kSpace, at);
        const std::size_t nameEnd = source.find_first_of(" \t\r\n=/>", at);
        if (nameEnd == std::string_view::npos || nameEnd == at)
            break;
        if (source.substr(at, nameEnd - at) == attribute)
            return at;
        const std::size_t open = source.find_first_of("\"'", nameEnd);
        const std::size_t close = open == std::string_view::npos ? open : source.find(source[open], open + 1);
        at = close == std::string_view::npos ? close : close + 1;
    }
    return element;
}

} // namespace ambrel::skin
