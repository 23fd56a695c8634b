#include "ambrel/skin/xml_writer.h"

#include <algorithm>

namespace ambrel::skin {

namespace {

constexpr std::string_view kSpecial = "&<>\"\t\n\r";

// Control characters are written as numbers: readers turn the plain ones into spaces or drop them.
void escape(std::string& out, char c)
{
    switch (c) {
    case '&':
        out += "&amp;";
        break;
    case '<':
        out += "&lt;";
        break;
    case '>':
        out += "&gt;";
        break;
    case '"':
        out += "&quot;";
        break;
    default:
        out += "&#" + std::to_string(static_cast<int>(c)) + ';';
        break;
    }
}

void appendEscaped(std::string& out, std::string_view text)
{
    for (const char c : text) {
        if (kSpecial.find(c) == std::string_view::npos)
            out += c;
        else
            escape(out, c);
    }
}

} // namespace

XmlWriter::XmlWriter() : m_out("<?xml version=\"1.0\" encoding=\"UTF-8\"?>") {}

// White space would become part of the text.
bool XmlWriter::insideText() const
{
    return std::any_of(m_open.begin(), m_open.end(), [](const Open& open) { return open.hasText; });
}

void XmlWriter::finishTag()
{
    if (m_tagOpen)
        m_out += '>';
    m_tagOpen = false;
}

void XmlWriter::begin(std::string_view name)
{
    finishTag();
    if (!m_open.empty())
        m_open.back().hasChildren = true;
    if (!insideText())
        m_out.append("\n").append(m_open.size() * 2, ' ');
    m_out.append("<").append(name);
    m_open.push_back({std::string(name)});
    m_tagOpen = true;
}

void XmlWriter::attribute(std::string_view name, std::string_view value)
{
    m_out.append(" ").append(name).append("=\"");
    appendEscaped(m_out, value);
    m_out += '"';
}

void XmlWriter::attributes(const std::vector<Attribute>& all)
{
    for (const Attribute& one : all)
        attribute(one.name, one.value);
}

void XmlWriter::text(std::string_view text)
{
    if (text.empty())
        return;
    finishTag();
    m_open.back().hasText = true;
    if (text.front() == ' ') { // a text of spaces alone would be dropped
        m_out += "&#32;";
        text.remove_prefix(1);
    }
    appendEscaped(m_out, text);
}

void XmlWriter::end()
{
    const bool indented = !insideText();
    const Open open = std::move(m_open.back());
    m_open.pop_back();
    if (m_tagOpen) {
        m_out += "/>";
        m_tagOpen = false;
        return;
    }
    if (open.hasChildren && indented)
        m_out.append("\n").append(m_open.size() * 2, ' ');
    m_out.append("</").append(open.name).append(">");
}

void XmlWriter::raw(const RawElement& element)
{
    begin(element.name);
    attributes(element.attributes);
    text(element.text);
    raw(element.children);
    end();
}

void XmlWriter::raw(const std::vector<RawElement>& elements)
{
    for (const RawElement& element : elements)
        raw(element);
}

Bytes XmlWriter::take()
{
    m_out += '\n';
    return Bytes(m_out.begin(), m_out.end());
}

} // namespace ambrel::skin
