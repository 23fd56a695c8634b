#include "ambrel/skin/field_reader.h"

#include "ambrel/skin/text.h"

namespace ambrel::skin {

std::int32_t readInteger(const AttributeAt& at, std::int32_t least, std::int32_t most)
{
    const IntegerText number = parseInteger(at.value(), least, most);
    if (number.outOfRange)
        at.fail(Code::OutOfRange, "the number must lie from " + std::to_string(least) + " to " + std::to_string(most));
    if (!number.value)
        at.fail(Code::BadNumber, "\"" + printable(at.value()) + "\" is no number");
    return *number.value;
}

bool readBoolean(const AttributeAt& at)
{
    const auto value = parseBoolean(at.value());
    if (!value)
        at.fail(Code::BadBoolean, "\"" + printable(at.value()) + "\" is neither \"0\" nor \"1\"");
    return *value;
}

Colour readColour(const AttributeAt& at)
{
    if (const auto value = parseColour(at.value()))
        return {*value, {}};
    if (!isXmlName(at.value()))
        at.fail(Code::BadColour, "a colour is \"0x\" and eight hexadecimal digits, or the name of a predefined colour");
    return {0, std::string(at.value())};
}

RawElement readRaw(pugi::xml_node element)
{
    RawElement raw;
    raw.name = element.name();
    for (const pugi::xml_attribute attribute : element.attributes())
        raw.attributes.push_back({attribute.name(), attribute.value()});
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_element)
            raw.children.push_back(readRaw(child));
        else
            raw.text += child.value();
    }
    return raw;
}

} // namespace ambrel::skin
