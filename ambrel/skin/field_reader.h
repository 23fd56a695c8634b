#pragma once

#include "ambrel/skin/vocabulary.h"
#include "ambrel/skin/xml_document.h"

namespace ambrel::skin {

/// An attribute together with all that a complaint about it needs.
struct AttributeAt {
    const XmlDocument& document;
    pugi::xml_node element;
    pugi::xml_attribute attribute;

    std::string_view name() const { return attribute.name(); }
    std::string_view value() const { return attribute.value(); }
    [[noreturn]] void fail(Code code, std::string message) const
    {
        document.fail(code, element, attribute.name(), std::move(message));
    }
};

std::int32_t readInteger(const AttributeAt& at, std::int32_t least, std::int32_t most);
bool readBoolean(const AttributeAt& at);

/// A colour's number, or the name of a predefined colour whose value is found later.
Colour readColour(const AttributeAt& at);

/// The element as it stands. Its depth was checked when the document was read.
RawElement readRaw(pugi::xml_node element);

namespace detail {

inline void store(const AttributeAt& at, std::string& member, std::int32_t, std::int32_t)
{
    member = at.value();
}
inline void store(const AttributeAt& at, bool& member, std::int32_t, std::int32_t)
{
    member = readBoolean(at);
}
inline void store(const AttributeAt& at, std::int32_t& member, std::int32_t least, std::int32_t most)
{
    member = readInteger(at, least, most);
}
inline void store(const AttributeAt& at, Colour& member, std::int32_t, std::int32_t)
{
    member = readColour(at);
}
template <class Value>
void store(const AttributeAt& at, std::optional<Value>& member, std::int32_t least, std::int32_t most)
{
    store(at, member.emplace(), least, most);
}

} // namespace detail

/// The field that an attribute sets, null when the entry has no such attribute.
template <class Entry>
const Field<Entry>* findField(std::string_view attribute)
{
    for (const Field<Entry>& field : fieldsOf<Entry>()) {
        if (field.name == attribute || (!field.alias.empty() && field.alias == attribute))
            return &field;
    }
    return nullptr;
}

/// Sets the member that an attribute stands for; false when the entry has no such attribute.
template <class Entry>
bool readField(const AttributeAt& at, Entry& entry)
{
    const Field<Entry>* field = findField<Entry>(at.name());
    if (field == nullptr)
        return false;
    std::visit([&](auto member) { detail::store(at, entry.*member, field->least, field->most); }, field->member);
    return true;
}

} // namespace ambrel::skin
