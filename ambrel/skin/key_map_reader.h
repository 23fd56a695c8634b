#pragma once

#include "ambrel/skin/resource_reader.h"

namespace ambrel::skin {

/// Reads mapattrib.xml.
KeyMap readKeyMap(const XmlDocument& document, const ResourceIndex& index);

/// A property of a control type as the key map lists it.
struct KeyedProperty {
    std::string group;
    std::string name;
    ValueKind kind;
};

/// The properties of a type by their short keys.
std::unordered_map<std::string, KeyedProperty> propertiesByKey(const TypeKeys& keys);

} // namespace ambrel::skin
